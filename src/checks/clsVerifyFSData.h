// clsVerifyFSData: the checks of one fiscal period's financial statements
// (財務諸表) in the working tables — header information, the sign of each
// amount, relations between items (tblFSCheckMaster), sums defined in the
// rule files beside the program, and item names the analysing agency cannot
// interpret (tblFSInvalidItemList). Amounts are compared in thousands of yen.
#pragma once

#include "platform/Variant.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace kelvary {

class SequentialInput;

class clsVerifyFSData {
public:
    clsVerifyFSData();

    void setDistinction(std::int32_t distinction) { mlngDistinction = distinction; }
    // Also reads the statement's form edition (EnforceDate).
    void setFSDataCode(std::int32_t code);
    void CheckItemSum();
    bool ErrorFlag() const { return mblnErrorFlag; }
    const QString& Message() const { return mstrMessage; }
    const Variant& EnforceDate() const { return mvarEnforceDate; }

    // One sum of the rule file: true when it holds.
    bool gblnCheckItemSum(int checkNumber, const QString& fileName);

private:
    struct ItemTotal {
        Currency amount;    // thousands of yen, each row truncated
        bool present = false;
        long rows = 0;
    };

    std::int32_t mGetItemMax();
    void mMdbToDimension();
    void mCheckItemHeader();
    void mCheckInvalidItem();
    void mCheckMinusItem();
    void mCheckPlusItem();
    void mCheckSign(bool plusCheck);
    void mCheckItemMatch();
    bool mFileRestore(SequentialInput& file, const QString& key);
    void mAppendProgramError(const QString& place);
    void mAppend(const QString& problem);

    const ItemTotal& total(std::int32_t code) const;
    QString mstrSortColumn() const;
    QString mstrEditionDigits() const;
    QString mstrCondition() const;

    std::int32_t mlngDistinction = 1;
    std::int32_t mlngFSDataCode = 0;
    Variant mvarEnforceDate = Variant::null();
    bool mblnErrorFlag = false;
    bool mblnExists = true;
    QString mstrMessage;
    std::vector<ItemTotal> mItemTotals;
};

}  // namespace kelvary
