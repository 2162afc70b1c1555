// The QR pages of one fiscal period ("FSQRCode.w30"): twelve symbol slots a
// page, each page headed with the applicant, the fiscal term and the form
// edition. The symbols are the images the QR generator left in Temp; a
// missing image leaves its slot empty but numbered and captioned.
#pragma once

#include "startup/FormEdition.h"

#include <QString>
#include <cstdint>

namespace kelvary {

class frmPrintManager;

// Symbol counts of one period, as the QR generator returned them.
struct PeriodSymbolCounts {
    long statements = 0;    // FSQRCodeCount
    long renamedItems = 0;  // KamokuQRCodeCount
    long noteList = 0;      // NListQRCodeCount
    long equity = 0;        // CapitalQRCodeCount
};

constexpr long kSymbolsPerPage = 12;

// The image file of a symbol: Temp/<file base>.bmp in the program folder.
QString mstrSymbolImageFile(const QString& fileBase);

// Fills slot n (1 to 12) of page 1: image, number (n when number is 0) and
// the file base as caption. No trap of its own.
void mPutQRSymbol(frmPrintManager& manager, long slot, const QString& fileBase, long number = 0);

// The QR pages of period i (its index in the run's selection).
void mPrintFS(frmPrintManager& manager, long periodIndex, std::int32_t indexId, const PeriodSymbolCounts& counts,
              bool problemMark, FormEdition edition = FormEdition::Form200804);

// Places one group of symbols from the next free slot on, ending full pages
// and heading the next. single: one symbol named base & i, without "_k".
void mPrintFSSub(frmPrintManager& manager, const QString& fileBase, long count, long periodIndex, long pageTotal,
                 std::int32_t indexId, long& slot, long& page, bool single, FormEdition edition = FormEdition::Form200804);

// The header of a QR page.
void mPrintFSHeader(frmPrintManager& manager, std::int32_t indexId, long page, long pageTotal,
                    FormEdition edition = FormEdition::Form200804);

}  // namespace kelvary
