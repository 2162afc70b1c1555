// The edition of the application form, read once from the application's
// EnforceDate, and what it decides: which layouts the pages use, where its
// QR header payloads end, and whether it has the PDF and send-file outputs.
#pragma once

#include <QString>

namespace kelvary {

class Variant;

enum class FormEdition {
    Form200804,  // the 2008-04-01 edition
    Earlier,     // every edition before it
};

// 2008-04-01 is the current edition; every other date, the 2004-03-01 default
// of a file without an edition included, is an earlier one.
FormEdition formEditionFromEnforceDate(const Variant& enforceDate);

// The earlier editions have neither a PDF form nor a send file: they print.
bool offersPdf(FormEdition edition);

// The layout files of the application form and of the supplementary sheet.
QString applicationLayoutFile(FormEdition edition);
QString supplementLayoutFile(FormEdition edition);

// Where the edition's header payloads end. The earlier payloads are the
// current ones cut short: the application header before the agent flags,
// the second application symbol before its last two columns, the period
// header before the two stored edition fields.
struct HeaderRecords {
    long applyHeader;   // 7 with the agent flags, 5 without
    long applyDoc2;     // ApplyDoc2 records, numbered on from 8
    long periodHeader;  // ZaimuHeader records
    // Record 20 of the period header: the date the edition code stands for,
    // or the stored EnforceDate.
    bool enforceDateFromEditionCode;
};
HeaderRecords headerRecords(FormEdition edition);

}  // namespace kelvary
