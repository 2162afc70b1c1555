// The QR pages of one fiscal period ("FSQRCode.w30"): twelve symbol slots a
// page, each page headed with the applicant, the fiscal term and the form
// edition. The symbols are those the period's QR generator made; a symbol
// whose image is missing leaves its slot empty but numbered and captioned.
#pragma once

#include "qr/QrSymbolRecord.h"
#include "startup/FormEdition.h"

#include <QString>
#include <cstdint>

namespace kelvary {

class frmPrintManager;

constexpr long kSymbolsPerPage = 12;

// Fills slot n (1 to 12) of page 1: the symbol's image, number (n when number
// is 0) and name as caption. No trap of its own.
void mPutQRSymbol(frmPrintManager& manager, long slot, const qr::QrSymbolRecord& symbol, long number = 0);

// The QR pages of period i (its index in the run's selection) from the
// symbols its generator made. The period header's slot is always there.
void mPrintFS(frmPrintManager& manager, long periodIndex, std::int32_t indexId, const qr::QrSymbolList& symbols,
              bool problemMark, FormEdition edition = FormEdition::Form200804);

// Places one group of symbols from the next free slot on, ending full pages
// and heading the next.
void mPrintFSSub(frmPrintManager& manager, const qr::QrSymbolList& group, long pageTotal, std::int32_t indexId,
                 long& slot, long& page, FormEdition edition = FormEdition::Form200804);

// The header of a QR page.
void mPrintFSHeader(frmPrintManager& manager, std::int32_t indexId, long page, long pageTotal,
                    FormEdition edition = FormEdition::Form200804);

}  // namespace kelvary
