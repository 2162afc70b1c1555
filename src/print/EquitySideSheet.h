// The side sheet of the statement of changes in equity (株主資本等変動計算書,
// attached table to form 17): the reserve columns of each row of the period's
// statement, in thousands of yen. A sheet holds 15 rows; a longer statement
// goes on over further sheets with the same header and headings.
#pragma once

#include <QString>
#include <cstdint>

#include "platform/Variant.h"

namespace kelvary {

class frmPrintManager;

constexpr int kEquityRowsPerSheet = 15;

// Prints the side sheet(s) of the period whose sibling-database key is
// fsDataCode (the period's LinkCode). Nothing is printed for a statement
// without rows.
void mPrintVariableTemp(frmPrintManager& manager, std::int32_t fsDataCode);

// "（会社名）" for a corporation, "（商号又は名称）" for an individual,
// "（申請者名）" otherwise.
QString mstrMakeDistinctionLabel(const Variant& distinction);

// An amount in yen as the sheet shows it: thousands truncated toward zero,
// thousands separators, "△" for negative amounts, and nothing for zero.
QString mstrEquityAmountText(const Variant& yen);

// Writes one amount into a sub-field of a row group of page 1.
void mPrintVariableSub(frmPrintManager& manager, const QString& fieldName, const Variant& yen, const QString& group);

}  // namespace kelvary
