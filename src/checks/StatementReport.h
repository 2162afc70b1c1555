// The statement report composer of the earlier-form driver and the two
// routines that lend the statement of changes in equity to the checks as
// items of DocCode 8 for the time of one check.
#pragma once

#include <QString>

#include <cstdint>

namespace kelvary {

// One period's statements (the quiet flag suppresses only the box that
// reports no problem); report receives the checker's texts. True when free
// of problems. mainDataCode is not used.
bool mblnVaridateFSData(std::int32_t mainDataCode, std::int32_t fsDataCode, bool quiet, QString& report);

// The list as the problem window shows it for one period.
QString statementReportText(std::int32_t fsDataCode, const QString& message);

// Adds one tmpFSItemData row per cell of the period's equity grid (column
// code + row code as ItemCode); mCaplitalDataDelete removes them again.
void mCapitalDataConvert(std::int32_t fsDataCode);
void mCaplitalDataDelete(std::int32_t fsDataCode);

}  // namespace kelvary
