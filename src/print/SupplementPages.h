// The supplementary document "経営状況分析申請に関する補足書類": one page
// with the applicant's licence number and contact, the submitter's own data,
// the chosen course and result-notice recipient, and the application's three
// QR symbols.
#pragma once

#include "qr/QrSymbolRecord.h"
#include "startup/FormEdition.h"

#include <QString>
#include <cstdint>

#include "platform/Variant.h"

namespace kelvary {

class frmPrintManager;

// The menu choices the page shows.
struct SupplementChoices {
    long courseNumber = 0;    // 1 regular, 3 express; other values mark none
    bool sendResult = false;  // the result notice goes to the agent
    // Earlier editions use their own layout, with the course as its number.
    FormEdition edition = FormEdition::Form200804;
};

// Fills "SubDoc_200804.w30" and ends its page; printed even when the
// application record is missing. symbols: what the application's QR
// generator made; each of its three slots is shown, made or not.
void mPrintSubDoc(frmPrintManager& manager, std::int32_t apDataCode, const qr::QrSymbolList& symbols,
                  const SupplementChoices& choices, bool problemMark);

// Opens the layout and writes every field of the page without ending it;
// mPrintSubDoc ends it.
void mWriteSubDoc(frmPrintManager& manager, std::int32_t apDataCode, const qr::QrSymbolList& symbols,
                  const SupplementChoices& choices);

// The licence number as one line, for example
// "東京都知事許可( 般 - 20)第012345号", from licence 1's four values.
QString mstrLicenceNumberText(const Variant& prefCode, const Variant& classCode, const Variant& numberA,
                              const Variant& numberB);

}  // namespace kelvary
