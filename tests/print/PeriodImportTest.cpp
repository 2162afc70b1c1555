// The repairs made to an imported period before its payloads are built.
#include "print/PeriodImport.h"
#include "support/ConnectedHome.h"

#include "db/mdlFunctionDatabase.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace kelvary;
using namespace kelvary::test;

namespace {

class PeriodImport : public ::testing::Test {
protected:
    QStringList items(const char* sql) const { return sqlColumn(home.database(), sql); }
    ConnectedHome home;
};

}  // namespace

TEST_F(PeriodImport, FixedAssetAmountsMoveToTheFirstCodeOnlyWhenItIsZero) {
    home.sqlExec(
        "INSERT INTO tmpFSItemData (FSDataCode, FSItemID, ItemCode, ItemValue) VALUES"
        " (1, 1, 16, 0), (1, 2, 17, 5000),"        // moved
        " (1, 3, 19, 100), (1, 4, 20, 200),"       // first not zero: kept
        " (1, 5, 22, 0), (1, 6, 23, 0),"           // both zero: kept
        " (1, 7, 371, 0), (1, 8, 372, -700),"      // negative counts as not zero
        " (2, 9, 16, 0), (2, 10, 17, 900);");      // another period: untouched
    mReplaceFixedAssets(1);
    EXPECT_EQ(items("SELECT ItemCode || '=' || CAST(ItemValue AS INTEGER) FROM tmpFSItemData ORDER BY FSItemID"),
              (QStringList{"16=5000", "17=0", "19=100", "20=200", "22=0", "23=0", "371=-700", "372=0", "16=0",
                           "17=900"}));
}

TEST_F(PeriodImport, OtherProgramsIndividualsAreRecodedAndPruned) {
    home.sqlExec(
        "INSERT INTO tmpFSInfoData (FSDataCode, OtherSoftPrefCode, Distinction) VALUES (1, 1, 2);"
        "INSERT INTO tmpFSItemData (FSDataCode, FSItemID, ItemCode, ItemValue, NameChangeFlag) VALUES"
        " (1, 508, 500, 10, 0), (1, 509, 501, 0, 0),"   // renamed flag only where there is a value
        " (1, 1, 9, 300, 0), (1, 2, 62, 0, 0),"         // 9 -> 222 with a value; 62 without stays
        " (1, 3, 34, 50, 0), (1, 4, 16, 70, 0), (1, 5, 30, 0, 0);");
    mPref01Special(1);
    EXPECT_EQ(items("SELECT FSItemID || ':' || ItemCode || ':' || NameChangeFlag FROM tmpFSItemData ORDER BY FSItemID"),
              (QStringList{"1:222:1", "2:62:0", "3:225:1", "508:500:1", "509:501:0"}));
}

TEST_F(PeriodImport, ExcelConversionsAreToldOnce) {
    home.sqlExec(
        "INSERT INTO tmpFSInfoData (FSDataCode, VersionNumber) VALUES (1, 'Ledra:2.1.0.0(from excel 3.0)'),"
        " (2, 'Ledra:2.1.0.0(2.1)');");
    mCheckExcelConvData(1, QStringLiteral("38"));
    mCheckExcelConvData(2, QStringLiteral("39"));
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.title, QStringLiteral("情報"));
    EXPECT_TRUE(home.ui().messages[0].request.text.startsWith(
        QStringLiteral("第38期の決算期データは「Tessaro」から「Orvane」にコンバートしたものです。\r\n\r\n")));
}

// A period costs the same statements however many rows it has: twice the
// item rows in the sibling database, the same count, and every row copied.
TEST_F(PeriodImport, StatementsOfAnImportDoNotGrowWithItsRows) {
    const QString sibling = home.file(QStringLiteral("sample/Ledra.mdb"));
    for (const char* table : {"T_FS", "P_FSItemData", "T_FSNote", "T_FSCapitalRow", "T_FSCapitalCol"})
        gRefreshLinkTable(QString::fromLatin1(table), sibling);
    const auto statementsOfImport = [&](std::int32_t indexId) {
        const std::uint64_t before = gobjConnection->statementsPrepared();
        mCopyZaimuData(indexId, 15);
        return gobjConnection->statementsPrepared() - before;
    };
    const std::uint64_t once = statementsOfImport(1);
    const QStringList rows = items("SELECT count(*) FROM tmpFSItemData WHERE FSDataCode=1");
    ASSERT_EQ(rows.size(), 1);
    ASSERT_GT(rows[0].toInt(), 50);
    sqlExec(sibling, "INSERT INTO P_FSItemData SELECT * FROM P_FSItemData WHERE FSDataCode=15");
    EXPECT_EQ(statementsOfImport(2), once);
    EXPECT_EQ(items("SELECT count(*) FROM tmpFSItemData WHERE FSDataCode=2"), QStringList{QString::number(2 * rows[0].toInt())});
    // The whole period in well under a statement per row.
    EXPECT_LT(once, 40u);
    EXPECT_TRUE(errorPlaces(home.ui()).isEmpty()) << messageTexts(home.ui()).toStdString();
}
