// Bringing one fiscal period from the linked sibling tables into the working
// tables, and the repairs its item rows need before payloads are built. Both
// print drivers import periods the same way.
#pragma once

#include <QString>

#include <cstdint>

namespace kelvary {

// Copies the period LinkCode of the sibling database into the five working
// copies under the key IndexID.
void mCopyZaimuData(std::int32_t indexId, std::int32_t linkCode);
// True when the table has a column of that name.
bool mblnCheckExistField(const QString& table, const QString& field);
// Turns three columns of the period's header row into item rows 208, 204, 207.
void mPutSpecialItemCode(std::int32_t indexId);
// Moves amounts of fixed-asset pairs kept under the second code to the first.
void mReplaceFixedAssets(std::int32_t indexId);
// Adjusts periods that came from another program (OtherSoftPrefCode 1).
void mPref01Special(std::int32_t indexId);
// Tells the user once when the period was converted from the Excel edition.
void mCheckExcelConvData(std::int32_t indexId, const QString& fiscalYearNumber);
// Deletes the QR images and texts of an earlier run from Temp. False, after
// reporting it, when Temp cannot take this run's symbols: an image left from
// an earlier run would otherwise be printed as this run's.
bool mClearTempFolder();

}  // namespace kelvary
