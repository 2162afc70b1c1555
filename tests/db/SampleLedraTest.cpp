// The sample sibling database (sample/Ledra.mdb): one corporation whose three
// fiscal periods must read as real statements do. The sums below are the
// accounting identities of the Japanese construction-business statements,
// written out line by line, and the item codes are those the print driver and
// the checks name; neither is taken from the script that wrote the data.
// The file is read with SQLite directly, not through the data access layer.
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace kelvary::test {
namespace {

QString sample() { return templateDir() + QStringLiteral("/sample/Ledra.mdb"); }
QStringList column(const QString& sql) { return sqlColumn(sample(), sql.toUtf8().constData()); }
QStringList rows(const QString& sql) { return sqlRows(sample(), sql); }
QString text(const QString& sql) { return column(sql).value(0); }
double number(const QString& sql) { return text(sql).toDouble(); }

QString join(const std::vector<int>& codes) {
    QStringList texts;
    for (int code : codes) texts << QString::number(code);
    return texts.join(QLatin1Char(','));
}

std::vector<int> periodCodes() {
    std::vector<int> codes;
    for (const QString& code : column(QStringLiteral("SELECT FSDataCode FROM T_FS ORDER BY FYearNumber")))
        codes.push_back(code.toInt());
    return codes;
}

// Amounts are whole yen; as integers a failure prints them in full.
long long yen(double amount) { return std::llround(amount); }

long long item(int period, int code) {
    return yen(number(QStringLiteral("SELECT ItemValue FROM P_FSItemData WHERE FSDataCode=%1 AND ItemCode=%2")
                          .arg(period)
                          .arg(code)));
}

long long sumOf(int period, const std::vector<int>& codes) {
    return yen(number(QStringLiteral("SELECT TOTAL(ItemValue) FROM P_FSItemData WHERE FSDataCode=%1 "
                                     "AND ItemCode IN (%2)")
                          .arg(period)
                          .arg(join(codes))));
}

long long equity(int period, int rowCode, const char* field) {
    return yen(number(QStringLiteral("SELECT TOTAL(%1) FROM T_FSCapitalRow WHERE FSDataCode=%2 AND ItemCode=%3 "
                                     "AND ItemType<>30")
                          .arg(QLatin1String(field))
                          .arg(period)
                          .arg(rowCode)));
}

// Balance sheet lines by section (codes of the item master).
const std::vector<int> kCurrentAssets = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
const std::vector<int> kTangible = {16, 17, 18, 19, 20, 21, 22, 23, 24, 25,
                                    26, 27, 28, 31, 371, 372, 373};
const std::vector<int> kIntangible = {29, 34, 36, 223, 374};
const std::vector<int> kInvestments = {37, 38, 39, 40, 41, 42, 43, 44};
const std::vector<int> kDeferred = {47, 48, 49, 50, 224};
const std::vector<int> kCurrentLiabilities = {53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 375};
const std::vector<int> kFixedLiabilities = {66, 67, 68, 69, 70, 71, 376};
const std::vector<int> kSellingAndAdmin = {110, 111, 112, 113, 114, 115, 116, 117, 118, 119, 120,
                                           121, 122, 123, 124, 125, 126, 127, 128, 129, 130};

TEST(AppDataSample, OneCorporationKnownByTheSampleApplicationKey) {
    // The sample application file names ApplyDataID 1001.
    const QStringList applicant = column(QStringLiteral("SELECT MainDataCode FROM T_MainData WHERE OtherSoftCode=1001"));
    ASSERT_EQ(applicant.size(), 1);
    EXPECT_NE(applicant[0], QStringLiteral("1001")) << "the sibling key should differ from ours, so a mix-up shows";
    EXPECT_EQ(column(QStringLiteral(" Select Distinction From T_FS  Where MainDataCode=%1 Order By FYearNumber,FSDataCode")
                         .arg(applicant[0])),
              (QStringList{QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1")}));
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM T_FS")), 3);
}

TEST(AppDataSample, PeriodsFollowEachOtherInTheHeiseiEra) {
    const QStringList periods = rows(QStringLiteral("SELECT FYearFrom, FYearTo, MeetingDate FROM T_FS ORDER BY FYearNumber"));
    ASSERT_EQ(periods.size(), 3);
    for (qsizetype i = 0; i < periods.size(); ++i) {
        const QStringList dates = periods[i].split(QLatin1Char('|'));
        // Heisei ran from 1989-01-08 to 2019-04-30; the checks want its dates.
        for (const QString& date : dates) {
            EXPECT_GE(date, QStringLiteral("1989-01-08"));
            EXPECT_LE(date, QStringLiteral("2019-04-30"));
        }
        EXPECT_LT(dates[0], dates[1]);
        if (i > 0) {
            EXPECT_EQ(number(QStringLiteral("SELECT julianday('%1') - julianday('%2')")
                                 .arg(dates[0], periods[i - 1].section(QLatin1Char('|'), 1, 1))),
                      1)
                << "a period must start the day after the previous one ends";
        }
    }
}

TEST(AppDataSample, BalanceSheetsBalance) {
    for (int p : periodCodes()) {
        SCOPED_TRACE("FSDataCode " + std::to_string(p));
        EXPECT_EQ(sumOf(p, kCurrentAssets), item(p, 12));
        EXPECT_EQ(sumOf(p, kTangible), item(p, 30));
        EXPECT_EQ(sumOf(p, kIntangible), item(p, 35));
        EXPECT_EQ(sumOf(p, kInvestments), item(p, 45));
        EXPECT_EQ(item(p, 30) + item(p, 35) + item(p, 45), item(p, 46));
        EXPECT_EQ(sumOf(p, kDeferred), item(p, 51));
        EXPECT_EQ(item(p, 12) + item(p, 46) + item(p, 51), item(p, 52));
        EXPECT_EQ(sumOf(p, kCurrentLiabilities), item(p, 65));
        EXPECT_EQ(sumOf(p, kFixedLiabilities), item(p, 72));
        EXPECT_EQ(item(p, 65) + item(p, 72), item(p, 73));
        // Net assets: shareholders' equity, valuation differences, warrants.
        EXPECT_EQ(item(p, 76) + item(p, 77), item(p, 78));
        EXPECT_EQ(sumOf(p, {79, 89, 90, 91, 92}), item(p, 80));
        EXPECT_EQ(sumOf(p, {74, 75, 78, 80, 81, 82}), item(p, 83));
        EXPECT_EQ(sumOf(p, {84, 85, 86}), item(p, 87));
        EXPECT_EQ(sumOf(p, {83, 87, 88}), item(p, 93));
        EXPECT_EQ(item(p, 73) + item(p, 93), item(p, 94));
        // Assets = liabilities + net assets.
        EXPECT_EQ(item(p, 52), item(p, 94));
        EXPECT_GT(item(p, 1), 0) << "cash";
    }
}

TEST(AppDataSample, IncomeStatementsRunFromSalesToNetIncome) {
    for (int p : periodCodes()) {
        SCOPED_TRACE("FSDataCode " + std::to_string(p));
        EXPECT_EQ(item(p, 101) + item(p, 102), item(p, 103));
        EXPECT_EQ(item(p, 98) + item(p, 99), item(p, 100));
        EXPECT_EQ(item(p, 101) - item(p, 98), item(p, 104));
        EXPECT_EQ(item(p, 102) - item(p, 99), item(p, 105));
        EXPECT_EQ(item(p, 103) - item(p, 100), item(p, 106));
        EXPECT_EQ(sumOf(p, kSellingAndAdmin), item(p, 131));
        EXPECT_EQ(item(p, 106) - item(p, 131), item(p, 132));
        EXPECT_EQ(item(p, 159) + item(p, 160), item(p, 161));
        EXPECT_EQ(sumOf(p, {162, 163, 164, 165}), item(p, 166));
        EXPECT_EQ(item(p, 132) + item(p, 161) - item(p, 166), item(p, 167));
        EXPECT_EQ(item(p, 168) + item(p, 169), item(p, 170));
        EXPECT_EQ(item(p, 171) + item(p, 172), item(p, 173));
        EXPECT_EQ(item(p, 167) + item(p, 170) - item(p, 173), item(p, 174));
        EXPECT_EQ(item(p, 174) - item(p, 175) - item(p, 176), item(p, 177));
        // Cost of completed construction: materials, labour, subcontracting,
        // expenses; the "of which" lines are inside labour and expenses.
        EXPECT_EQ(sumOf(p, {180, 181, 183, 184}), item(p, 186));
        EXPECT_LE(item(p, 182), item(p, 181));
        EXPECT_LE(item(p, 185), item(p, 184));
        EXPECT_EQ(item(p, 186), item(p, 98));
        // The statement check insists on the side-business flag once 102 or 99 is above zero.
        if (item(p, 102) > 0 || item(p, 99) > 0)
            EXPECT_EQ(text(QStringLiteral("SELECT SideBusinessFlag FROM T_FS WHERE FSDataCode=%1").arg(p)),
                      QStringLiteral("1"));
    }
}

TEST(AppDataSample, EquityStatementRollsForwardIntoTheBalanceSheet) {
    const char* const fields[] = {
        "Capital", "NewStockProposeDeposit", "CapitalReady", "CapitalOther", "CapitalOtherTotal",
        "BenefitReady", "BenefitOtherReadyFundSum", "BenefitOtherCarryOver", "BenefitTotal",
        "SelfStock", "SelfStockProposeDeposit", "CapitalTotal", "DiffOtherStock",
        "DiffCarryOverHedge", "DiffLand", "DiffTotal", "NewStockReserve", "AssetTotal"};
    // Row codes: 1 opening balance, 2..7 changes, 8 total of changes, 9 closing.
    const auto periods = periodCodes();
    for (size_t i = 0; i < periods.size(); ++i) {
        const int p = periods[i];
        SCOPED_TRACE("FSDataCode " + std::to_string(p));
        for (const char* f : fields) {
            const long long changes = yen(number(
                QStringLiteral("SELECT TOTAL(%1) FROM T_FSCapitalRow WHERE FSDataCode=%2 AND ItemType=20")
                    .arg(QLatin1String(f))
                    .arg(p)));
            EXPECT_EQ(changes, equity(p, 8, f)) << f;
            EXPECT_EQ(equity(p, 1, f) + equity(p, 8, f), equity(p, 9, f)) << f;
            if (i > 0) EXPECT_EQ(equity(p, 1, f), equity(periods[i - 1], 9, f)) << f;
        }
        EXPECT_EQ(equity(p, 9, "CapitalReady") + equity(p, 9, "CapitalOther"),
                  equity(p, 9, "CapitalOtherTotal"));
        EXPECT_EQ(equity(p, 9, "BenefitReady") + equity(p, 9, "BenefitOtherReadyFundSum") +
                      equity(p, 9, "BenefitOtherCarryOver"),
                  equity(p, 9, "BenefitTotal"));
        EXPECT_EQ(equity(p, 9, "CapitalTotal") + equity(p, 9, "DiffTotal") +
                      equity(p, 9, "NewStockReserve"),
                  equity(p, 9, "AssetTotal"));
        // The reserve detail of the side sheet adds up to its column.
        const long long reserves =
            equity(p, 9, "OtherReady1") + equity(p, 9, "OtherReady2") + equity(p, 9, "OtherReady3") +
            equity(p, 9, "OtherFundSum1") + equity(p, 9, "OtherFundSum2") +
            equity(p, 9, "OtherFundSum3") + equity(p, 9, "SeparatelyFundSum");
        EXPECT_EQ(reserves, equity(p, 9, "BenefitOtherReadyFundSum"));
        // Closing balances are the balance sheet's net assets.
        EXPECT_EQ(equity(p, 9, "Capital"), item(p, 74));
        EXPECT_EQ(equity(p, 9, "BenefitOtherCarryOver"), item(p, 92));
        EXPECT_EQ(equity(p, 9, "SelfStock"), item(p, 81));
        EXPECT_EQ(equity(p, 9, "AssetTotal"), item(p, 93));
        // The net income row carries the income statement's net income.
        EXPECT_EQ(equity(p, 6, "BenefitOtherCarryOver"), item(p, 177));
    }
}

TEST(AppDataSample, EquityGridFitsTheComposerAndTheSideSheet) {
    // The composer's column codes, each naming one amount field of a row.
    EXPECT_EQ(column(QStringLiteral("SELECT ItemCode FROM M_FSCapitalCol ORDER BY ItemCode")).join(QLatin1Char(',')),
              QStringLiteral("600,610,620,630,640,650,670,690,700,710,720,730,740,750,760,770,780,790"));
    // Row codes stay below 10 so that row code + column code names one cell,
    // and every such cell is an item of DocCode 8.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSCapitalRow WHERE ItemCode >= 10 OR ItemCode < 0")), 0);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSCapitalRow WHERE ItemType = 30")), 1);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSCapitalCol c, M_FSCapitalRow r "
                                    "WHERE r.ItemType <> 30 AND NOT EXISTS (SELECT 1 FROM M_FSItem i "
                                    "WHERE i.ItemCode = c.ItemCode + r.ItemCode AND i.DocCode = 8)")),
              0);
    // The side sheet has at most 15 rows and three headed columns.
    for (int p : periodCodes()) {
        EXPECT_LE(number(QStringLiteral("SELECT COUNT(*) FROM T_FSCapitalRow WHERE FSDataCode=%1").arg(p)), 15);
        EXPECT_EQ(rows(QStringLiteral("Select * From T_FSCapitalCol Where FSDataCode=%1 AND ItemCode IN(650,690,700) "
                                      "Order By ColNo")
                           .arg(p))
                      .size(),
                  3);
    }
    // The indent of the side sheet runs from this heading to this total.
    const QStringList sheetRows = column(QStringLiteral("SELECT RowName FROM T_FSCapitalRow WHERE FSDataCode = "
                                                        "(SELECT FSDataCode FROM T_FS WHERE CapitalSubFlag = 1)"));
    EXPECT_TRUE(sheetRows.contains(QStringLiteral("当期変動額")));
    EXPECT_TRUE(sheetRows.contains(QStringLiteral("当期変動額合計")));
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM T_FS WHERE CapitalSubFlag = 1")), 1);
    // Heading IDs the side sheet maps to its columns 2 to 7.
    EXPECT_EQ(rows(QStringLiteral("SELECT ID FROM M_FSItemDetail WHERE FSItemID IN(89,90) "
                                  "AND ID IN (234,763,764,235,765,766)"))
                  .size(),
              6);
}

TEST(AppDataSample, ItemCodesTheProgramNamesHaveTheirMeaning) {
    const std::pair<int, const char*> named[] = {
        {99, "兼業事業売上原価"},    {102, "兼業事業売上高"},   {204, "受取手形裏書譲渡高"},
        {207, "当期減価償却実施額"}, {208, "受取手形割引高"},   {159, "受取利息及び配当金"},
        {162, "支払利息"},           {89, "準備金"},           {90, "積立金"}};
    for (const auto& [code, name] : named)
        EXPECT_EQ(text(QStringLiteral("SELECT ItemName FROM M_FSItem WHERE ItemCode=%1").arg(code)),
                  QString::fromUtf8(name))
            << code;
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) - COUNT(DISTINCT ItemCode) FROM M_FSItem")), 0);
    EXPECT_LT(number(QStringLiteral("SELECT MAX(ItemCode) FROM M_FSItem")), 10000);
}

TEST(AppDataSample, FixedAssetPairsHoldTheSameAssetTwice) {
    // The print driver moves the second code's amount onto the first when the
    // first is empty: the second is the same asset, not on any form.
    for (const auto& [first, second] : {std::pair{16, 17}, {19, 20}, {22, 23}, {27, 28}, {371, 372}}) {
        SCOPED_TRACE(first);
        const QStringList pair = rows(QStringLiteral("SELECT ItemName, DocCode, SortNumber_H, SortNumber_K FROM M_FSItem "
                                                     "WHERE ItemCode IN (%1,%2) ORDER BY ItemCode")
                                          .arg(first)
                                          .arg(second));
        ASSERT_EQ(pair.size(), 2);
        const QStringList a = pair[0].split(QLatin1Char('|')), b = pair[1].split(QLatin1Char('|'));
        EXPECT_TRUE(b[0].startsWith(a[0])) << b[0].toStdString() << " names " << a[0].toStdString();
        EXPECT_EQ(a[1], b[1]);
        EXPECT_NE(a[2], QStringLiteral("NULL"));
        EXPECT_EQ(b[2] + b[3], QStringLiteral("NULLNULL"));
    }
    // One period enters a fixed asset by direct deduction, so the move is
    // exercised by the sample.
    EXPECT_GE(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData a JOIN P_FSItemData b "
                                    "ON a.FSDataCode = b.FSDataCode AND b.ItemCode = a.ItemCode + 1 "
                                    "WHERE a.ItemCode IN (16,19,22,27,371) AND a.ItemValue = 0 AND b.ItemValue <> 0")),
              1);
}

TEST(AppDataSample, IndividualRecodingsLandOnIndividualLines) {
    // Data of another program for an individual is recoded onto lines that
    // only an individual's statements show, and corporate-only lines dropped.
    EXPECT_EQ(rows(QStringLiteral("SELECT ItemCode, SortNumber_H, SortNumber_K IS NOT NULL, DocCode FROM M_FSItem "
                                  "WHERE ItemCode IN (222,225,227) ORDER BY ItemCode")),
              (QStringList{QStringLiteral("222|NULL|1|1"), QStringLiteral("225|NULL|1|1"),
                           QStringLiteral("227|NULL|1|1")}));
    const QString sources = QStringLiteral("9,62,223,224,34,36,40,29,16,17,19,20,22,23,30,35,45,27,28");
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSItem WHERE ItemCode IN (%1)").arg(sources)), 19);
    EXPECT_EQ(column(QStringLiteral("SELECT ItemCode FROM M_FSItem WHERE ItemCode IN (%1) AND SortNumber_K IS NOT NULL")
                         .arg(sources)),
              QStringList())
        << "not on an individual's statements";
}

TEST(AppDataSample, MasterCoversBothKindsOfStatements) {
    // Corporations: balance sheet, income statement, cost report, equity
    // statement; individuals: balance sheet and income statement.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(DISTINCT DocCode) FROM M_FSItem "
                                    "WHERE SortNumber_H IS NOT NULL AND DocCode IN (1,2,3,8)")),
              4);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(DISTINCT DocCode) FROM M_FSItem "
                                    "WHERE SortNumber_K IS NOT NULL AND DocCode IN (1,2)")),
              2);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSItem WHERE SortNumber_K IS NOT NULL AND DocCode IN (3,8)")),
              0);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSItem WHERE ItemValueType NOT IN (0,1,2)")), 0);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM M_FSItem WHERE EnforceDates IS NULL OR EnforceDates = ''")), 0);
}

TEST(AppDataSample, ItemsAgreeWithTheirMaster) {
    // Every stored item is known to the master, under its statement, and of
    // the edition of its period, with the sign the master fixes.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData d LEFT JOIN M_FSItem m "
                                    "ON m.ItemCode = d.ItemCode WHERE m.ItemCode IS NULL OR m.DocCode <> d.DocCode")),
              0);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData d JOIN T_FS f USING (FSDataCode) "
                                    "JOIN M_FSItem m ON m.ItemCode = d.ItemCode WHERE m.EnforceDates "
                                    "NOT LIKE '%' || replace(f.EnforceDate, '-', '') || '%'")),
              0);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData d JOIN M_FSItem m USING (ItemCode) "
                                    "WHERE (m.ItemValueType = 0 AND d.ItemValue < 0) "
                                    "OR (m.ItemValueType = 2 AND d.ItemValue > 0)")),
              0);
    // The three note figures come from T_FS columns, never from stored items.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData WHERE ItemCode IN (204,207,208)")), 0);
    // Renamed lines carry the flag; unrenamed ones their master name.
    EXPECT_GE(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData WHERE NameChangeFlag = 1")), 3);
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM P_FSItemData d JOIN M_FSItem m USING (ItemCode) "
                                    "WHERE d.NameChangeFlag = 0 AND d.ItemName <> m.ItemName")),
              0);
}

TEST(AppDataSample, NotesFitTheirSymbols) {
    // One notes row per period. A note over 800 bytes of code page 932 cannot
    // be put into a symbol; UTF-8 never takes fewer bytes than code page 932
    // for these texts, so staying within 800 UTF-8 bytes is enough.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM T_FSNote")), 3);
    for (const QString& name : column(QStringLiteral("SELECT name FROM pragma_table_info('T_FSNote') WHERE cid > 0")))
        EXPECT_LE(number(QStringLiteral("SELECT MAX(length(CAST(%1 AS BLOB))) FROM T_FSNote").arg(name)), 800)
            << name.toStdString();
    // Lines within a note are separated by CR LF, as the sibling program keeps them.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM T_FSNote WHERE AccountWayAssetsCriteria "
                                    "NOT LIKE '%' || char(13,10) || '%'")),
              0);
}

}  // namespace
}  // namespace kelvary::test
