// The statement report composer: the equity grid lent to the checks as items,
// the report header written out by hand, and the sample's three periods
// checked against the shipped rule files and tables.
#include "checks/StatementReport.h"

#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "print/PeriodImport.h"

#include "StatementHome.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::IntakeHome;
using test::StatementHome;

const QString kRule = QStringLiteral("＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝");

TEST(StatementReportTest, SamplePeriodsPassEveryCheck) {
    IntakeHome home;
    const QString file = home.file(QStringLiteral("sample/app.dat"));
    clsAnlBasicInfo().LoadData(file);
    clsApply2Data().LoadData(file);
    const QStringList periods = home.rows("SELECT IndexID, LinkCode FROM tblIndex ORDER BY IndexID");
    ASSERT_EQ(periods.size(), 3);
    for (const QString& period : periods) {
        const QStringList keys = period.split(QLatin1Char('|'));
        const std::int32_t indexId = keys[0].toInt();
        mCopyZaimuData(indexId, keys[1].toInt());
        mPutSpecialItemCode(indexId);
        mReplaceFixedAssets(indexId);
        const int items = home.rows(QStringLiteral("SELECT ItemCode FROM tmpFSItemData WHERE FSDataCode=%1").arg(indexId)).size();
        ASSERT_GT(items, 100) << period.toStdString();
        QString report = QStringLiteral("left over");
        EXPECT_TRUE(mblnVaridateFSData(0, indexId, true, report)) << period.toStdString();
        EXPECT_EQ(report, QString()) << report.toStdString();
        // The equity cells were only lent to the checks.
        EXPECT_EQ(home.rows(QStringLiteral("SELECT ItemCode FROM tmpFSItemData WHERE FSDataCode=%1").arg(indexId)).size(), items);
    }
    EXPECT_EQ(home.messageTexts(), QString());
    // The shipped rules are really there: cash and total assets raised alike
    // break the relation of the two totals and the sum of the current assets.
    home.exec(home.database(),
              "UPDATE tmpFSItemData SET ItemValue=ItemValue+5000000 WHERE FSDataCode=3 AND ItemCode IN (1, 52)");
    QString report;
    EXPECT_FALSE(mblnVaridateFSData(0, 3, true, report));
    EXPECT_TRUE(report.startsWith(QStringLiteral("■資産合計と負債純資産合計が一致していません\r\n"))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("■貸借対照表の流動資産合計が各科目の合計と一致していません\r\n")));
}

// A small individual's statement that adds up by hand: the shipped rules for
// individuals pass it, and one wrong owner's profit breaks a relation and a sum.
TEST(StatementReportTest, IndividualStatementAgainstShippedRules) {
    IntakeHome home;
    gRefreshLinkTable(QStringLiteral("M_FSItem"), home.file(QStringLiteral("sample/Ledra.mdb")));
    home.exec(home.database(),
              "INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, FYearFrom, FYearTo, ApplyerName, Distinction, TaxType, "
              "EnforceDate) VALUES (1, 12, '2008-01-01', '2008-12-31', '山田　太郎', 2, 2, '2006-07-01')");
    // Balance sheet: cash 5,000 = assets = equity (3,000 opening capital + 2,000 profit).
    // Income statement: sales 10,000, cost 8,000, no expenses, profit 2,000.
    const int items[][2] = {{1, 5000000},   {12, 5000000},  {52, 5000000},  {230, 3000000}, {233, 2000000},
                            {93, 5000000},  {94, 5000000},  {101, 10000000}, {103, 10000000}, {98, 8000000},
                            {100, 8000000}, {104, 2000000}, {106, 2000000}, {131, 0},        {132, 2000000},
                            {167, 2000000}, {234, 2000000}};
    for (const auto& item : items) {
        home.exec(home.database(), QStringLiteral("INSERT INTO tmpFSItemData (FSDataCode, ItemCode, ItemName, ItemValue, "
                                                  "DocCode, SortNumber) VALUES (1, %1, '項目', %2, 1, %1)")
                                       .arg(item[0])
                                       .arg(item[1])
                                       .toUtf8()
                                       .constData());
    }
    QString report;
    EXPECT_TRUE(mblnVaridateFSData(0, 1, true, report)) << report.toStdString();
    EXPECT_EQ(report, QString());

    home.exec(home.database(), "UPDATE tmpFSItemData SET ItemValue=2500000 WHERE ItemCode=233");
    EXPECT_FALSE(mblnVaridateFSData(0, 1, true, report));
    // "　「事業主利益（貸借対照表）」の金額：" is 38 bytes, "　「事業主利益（損益計算書）」の金額：" 38,
    // "　純資産合計（各科目の合計）：" 30, "　貸借対照表の純資産合計：" 26, "　差額：" 8.
    EXPECT_EQ(report, QStringLiteral("■事業主利益が貸借対照表と損益計算書で一致していません\r\n\r\n") +
                          QStringLiteral("　「事業主利益（貸借対照表）」の金額：") + QString(62 + 10, QLatin1Char('_')) +
                          QStringLiteral(" 2,500\r\n") + QStringLiteral("　「事業主利益（損益計算書）」の金額：") +
                          QString(62 + 10, QLatin1Char('_')) + QStringLiteral(" 2,000\r\n\r\n\r\n") +
                          QStringLiteral("■貸借対照表の純資産合計が各科目の合計と一致していません\r\n\r\n") +
                          QStringLiteral("　純資産合計（各科目の合計）：") + QString(70 + 10, QLatin1Char('_')) +
                          QStringLiteral(" 5,500\r\n") + QStringLiteral("　貸借対照表の純資産合計：") +
                          QString(74 + 10, QLatin1Char('_')) + QStringLiteral(" 5,000\r\n") + QStringLiteral("　差額：") +
                          QString(92 + 12, QLatin1Char('_')) + QStringLiteral(" 500\r\n\r\n\r\n"));
}

TEST(StatementReportTest, ProblemsGoToTheListUnderThePeriodHeader) {
    StatementHome home;
    home.sql(QStringLiteral("UPDATE tmpFSInfoData SET TaxType=NULL"));
    QString report;
    EXPECT_FALSE(mblnVaridateFSData(0, 1, true, report));
    EXPECT_EQ(report, QStringLiteral("■基本情報の「税処理」が未設定です\r\n\r\n"));
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.kindLabel, QStringLiteral("3"));
    EXPECT_EQ(home.ui().messages[0].request.title, QStringLiteral("財務諸表：不正な項目の確認"));
    EXPECT_EQ(home.ui().messages[0].request.text, QStringLiteral("選択された財務諸表に不正な項目があります\r\n問題内容を確認してください"));
    ASSERT_EQ(home.ui().reports.size(), 1);
    EXPECT_EQ(home.ui().reports[0],
              QStringLiteral("入力内容の問題点一覧\n財務諸表の問題内容\r\n") + kRule +
                  QStringLiteral("\r\n商号又は名称：（株）北斗建設\r\n"
                                 "決算期　　　：40\r\n"
                                 "決算期間　　：自 平成20年04月01日 ～ 至 平成21年03月31日\r\n") +
                  kRule +
                  QStringLiteral("\r\n※このまま提出されますと分析を行うに際して、下記の内容確認の問合せ等で分析結果通知が遅延する可能性があります。\r\n"
                                 "\r\n"
                                 "■基本情報の「税処理」が未設定です\r\n\r\n"));
}

TEST(StatementReportTest, NoProblemBoxOnlyWhenNotQuiet) {
    StatementHome home;
    QString report;
    EXPECT_TRUE(mblnVaridateFSData(0, 1, true, report));
    EXPECT_TRUE(home.ui().messages.isEmpty());
    EXPECT_TRUE(mblnVaridateFSData(0, 1, false, report));
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.kindLabel, QStringLiteral("0"));
    EXPECT_EQ(home.ui().messages[0].request.text, QStringLiteral("選択された財務諸表には不正な項目はありません"));
    EXPECT_TRUE(home.ui().reports.isEmpty());
}

TEST(StatementReportTest, MissingPeriodIsAProblem) {
    StatementHome home;
    QString report;
    EXPECT_FALSE(mblnVaridateFSData(0, 9, true, report));
    EXPECT_EQ(report, QStringLiteral("■選択された決算期の財務諸表は存在しません\r\n\r\n"));
}

TEST(StatementReportTest, EquityGridBecomesItemsAndGoesAgain) {
    StatementHome home;
    home.item(1, QStringLiteral("現金預金"), 1, 1000, 10);
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (1, 1, '資本金', 600)"));
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (1, 2, '純資産合計', 790)"));
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (1, 3, '未使用', -1)"));
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType, Capital, AssetTotal) "
                            "VALUES (1, 1, '前期末残高', 1, 10, 50000000, 80000000)"));
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType) "
                            "VALUES (1, 2, '当期変動額', 0, 30)"));
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType, Capital, AssetTotal) "
                            "VALUES (1, 10, NULL, 9, 10, 50000000, NULL)"));
    // Another period's grid stays out.
    home.sql(QStringLiteral("INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (2, 1, '資本金', 600)"));
    mCapitalDataConvert(1);
    EXPECT_EQ(home.rows("SELECT FSDataCode, ItemCode, DocCode, ItemName, SortNumber, ItemValue FROM tmpFSItemData "
                        "ORDER BY ItemCode"),
              (QStringList{QStringLiteral("1|1|1|現金預金|10|1000.0"), QStringLiteral("1|601|8|Capital : 前期末残高|1|50000000.0"),
                           QStringLiteral("1|609|8|Capital : |10|50000000.0"),
                           QStringLiteral("1|791|8|AssetTotal : 前期末残高|1|80000000.0"),
                           QStringLiteral("1|799|8|AssetTotal : |10|NULL")}));
    mCaplitalDataDelete(1);
    EXPECT_EQ(home.rows("SELECT ItemCode FROM tmpFSItemData"), QStringList{QStringLiteral("1")});
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

}  // namespace
}  // namespace kelvary
