// The data access routines on a copy of the program folder as the build makes
// it: the shipped links open, the working tables empty in start-up order, and
// all twelve links follow the sample sibling database.
#include "db/mdlFunctionDatabase.h"

#include "platform/AppObject.h"
#include "platform/TestDatabase.h"
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

const char* const kLinkedTables[] = {"T_FS",     "T_FSCapitalCol", "T_FSCapitalRow", "T_FSNote",
                                     "P_FSItemData", "M_FSItem",   "M_FSCapitalRow", "M_FSCapitalCol",
                                     "T_MainData", "M_FSDoc",      "M_FSItemDetail", "T_FSItemDetail"};

class ShippedDatabase : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(gobjConnection) << "the program folder's SystemData.mdb does not open"; }
    test::ConnectedHome home;
};

TEST_F(ShippedDatabase, EveryLinkedTableReadsTheEmptyDummy) {
    for (const char* table : kLinkedTables) {
        const Recordset rs = gobjMakeRecordset(QStringLiteral("Select * From ") + QString::fromLatin1(table));
        ASSERT_FALSE(rs.isNothing()) << table;
        EXPECT_EQ(rs.recordCount(), 0) << table;
        EXPECT_GT(rs.fieldCount(), 0) << table;
    }
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(ShippedDatabase, WorkingTablesEmptyInStartUpOrder) {
    for (const char* table : {"tblIndex", "TmpAPData", "TmpFSInfoData", "TmpFSItemData", "TmpFSNoteData",
                              "TmpFSCapitalRow", "TmpFSCapitalCol", "TmpOldFSInfoData", "TmpOldFSItemData",
                              "TmpOldFSNoteData"})
        gInitTable(QString::fromLatin1(table));
    EXPECT_TRUE(home.ui().messages.isEmpty());
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("tblIndex"), QString()), 0);
}

TEST_F(ShippedDatabase, AllLinksFollowTheSampleSiblingDatabase) {
    const QString sample = home.file(QStringLiteral("sample/Ledra.mdb"));
    for (const char* table : kLinkedTables) gRefreshLinkTable(QString::fromLatin1(table), sample);
    EXPECT_TRUE(home.ui().messages.isEmpty());
    Recordset rs = gobjMakeRecordset(QStringLiteral("Select * From T_FS Order By FSDataCode Desc"));
    ASSERT_FALSE(rs.isNothing());
    EXPECT_EQ(QStringLiteral("integer:%1").arg(rs.recordCount()),
              test::storedValue(sample, "SELECT count(*) FROM T_FS"));
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(QStringLiteral("integer:") + rs[QStringLiteral("FSDataCode")].text(),
              test::storedValue(sample, "SELECT max(FSDataCode) FROM T_FS"));
    EXPECT_TRUE(rs[QStringLiteral("FYearFrom")].isDateValue());
    EXPECT_EQ(rs.fieldType(rs.fieldIndex(QStringLiteral("TaxFreeFlag"))), ado::adBoolean);
    // The re-pointed links are what the next start finds.
    EXPECT_EQ(test::storedValue(home.file(QStringLiteral("SystemData.mdb")),
                                "SELECT count(*) FROM tblLinkTable WHERE DataSource LIKE '%sample/Ledra.mdb'"),
              QStringLiteral("integer:12"));
}

}  // namespace
}  // namespace kelvary
