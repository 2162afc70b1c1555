// The sample sibling database (sample/Ledra.mdb): one corporation whose three
// fiscal periods must read as real statements do. The sums below are the
// accounting identities of the Japanese construction-business statements,
// written out line by line, and the item codes are those the print driver and
// the checks name; neither is taken from the script that wrote the data.
#include "db/AppDataSqlite.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace kelvary::test::appdata {
namespace {

const Database& sample() {
    static const Database db((templateDir() + "/sample/Ledra.mdb").toStdString());
    return db;
}

std::string join(const std::vector<int>& codes) {
    std::ostringstream out;
    for (size_t i = 0; i < codes.size(); ++i) out << (i ? "," : "") << codes[i];
    return out.str();
}

std::vector<int> periodCodes() {
    std::vector<int> codes;
    for (const auto& row : sample().rows("SELECT FSDataCode FROM T_FS ORDER BY FYearNumber")) {
        codes.push_back(std::stoi(row.at(0).value()));
    }
    return codes;
}

// Amounts are whole yen; as integers a failure prints them in full.
long long yen(double amount) { return std::llround(amount); }

long long item(int period, int code) {
    return yen(sample().number("SELECT ItemValue FROM P_FSItemData WHERE FSDataCode=" +
                           std::to_string(period) + " AND ItemCode=" + std::to_string(code)));
}

long long sumOf(int period, const std::vector<int>& codes) {
    return yen(sample().number("SELECT TOTAL(ItemValue) FROM P_FSItemData WHERE FSDataCode=" +
                               std::to_string(period) + " AND ItemCode IN (" + join(codes) + ")"));
}

long long equity(int period, int rowCode, const std::string& field) {
    return yen(sample().number("SELECT TOTAL(" + field + ") FROM T_FSCapitalRow WHERE FSDataCode=" +
                               std::to_string(period) + " AND ItemCode=" + std::to_string(rowCode) +
                               " AND ItemType<>30"));
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
    const auto applicant = sample().rows("SELECT MainDataCode FROM T_MainData WHERE OtherSoftCode=1001");
    ASSERT_EQ(applicant.size(), 1u);
    const std::string key = applicant[0].at(0).value();
    EXPECT_NE(key, "1001") << "the sibling key should differ from ours, so a mix-up shows";
    const auto periods = sample().rows(
        " Select FYearNumber, Distinction From T_FS  Where MainDataCode=" + key +
        " Order By FYearNumber,FSDataCode");
    ASSERT_EQ(periods.size(), 3u);
    for (const auto& period : periods) EXPECT_EQ(period.at(1), "1");
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM T_FS"), 3);
}

TEST(AppDataSample, PeriodsFollowEachOtherInTheHeiseiEra) {
    const auto rows = sample().rows("SELECT FYearFrom, FYearTo, MeetingDate FROM T_FS ORDER BY FYearNumber");
    ASSERT_EQ(rows.size(), 3u);
    for (size_t i = 0; i < rows.size(); ++i) {
        // Heisei ran from 1989-01-08 to 2019-04-30; the checks want its dates.
        for (const auto& date : rows[i]) {
            ASSERT_TRUE(date.has_value());
            EXPECT_GE(*date, "1989-01-08");
            EXPECT_LE(*date, "2019-04-30");
        }
        EXPECT_LT(*rows[i][0], *rows[i][1]);
        if (i > 0) {
            EXPECT_EQ(sample().number("SELECT julianday('" + *rows[i][0] + "') - julianday('" +
                                      *rows[i - 1][1] + "')"),
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
    }
}

TEST(AppDataSample, SideBusinessIsFlaggedWhereItHasSales) {
    // The statement check insists on the flag once 102 or 99 is above zero.
    for (int p : periodCodes()) {
        if (item(p, 102) > 0 || item(p, 99) > 0) {
            EXPECT_EQ(sample().text("SELECT SideBusinessFlag FROM T_FS WHERE FSDataCode=" +
                                    std::to_string(p)),
                      "1")
                << p;
        }
    }
}

TEST(AppDataSample, EquityStatementRollsForwardIntoTheBalanceSheet) {
    const std::vector<std::string> fields = {
        "Capital", "NewStockProposeDeposit", "CapitalReady", "CapitalOther", "CapitalOtherTotal",
        "BenefitReady", "BenefitOtherReadyFundSum", "BenefitOtherCarryOver", "BenefitTotal",
        "SelfStock", "SelfStockProposeDeposit", "CapitalTotal", "DiffOtherStock",
        "DiffCarryOverHedge", "DiffLand", "DiffTotal", "NewStockReserve", "AssetTotal"};
    // Row codes: 1 opening balance, 2..7 changes, 8 total of changes, 9 closing.
    const auto periods = periodCodes();
    for (size_t i = 0; i < periods.size(); ++i) {
        const int p = periods[i];
        SCOPED_TRACE("FSDataCode " + std::to_string(p));
        for (const auto& f : fields) {
            const long long changes = yen(sample().number(
                "SELECT TOTAL(" + f + ") FROM T_FSCapitalRow WHERE FSDataCode=" +
                std::to_string(p) + " AND ItemType=20"));
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
    EXPECT_EQ(sample().rows("SELECT ItemCode FROM M_FSCapitalCol ORDER BY ColNo").size(), 18u);
    std::set<std::string> codes;
    for (const auto& row : sample().rows("SELECT ItemCode FROM M_FSCapitalCol")) codes.insert(*row[0]);
    EXPECT_EQ(codes, (std::set<std::string>{"600", "610", "620", "630", "640", "650", "670", "690",
                                            "700", "710", "720", "730", "740", "750", "760", "770",
                                            "780", "790"}));
    // Row codes stay below 10 so that row code + column code names one cell,
    // and every such cell is an item of DocCode 8.
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM M_FSCapitalRow WHERE ItemCode >= 10 OR ItemCode < 0"), 0);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM M_FSCapitalRow WHERE ItemType = 30"), 1);
    EXPECT_EQ(sample().number(
                  "SELECT COUNT(*) FROM M_FSCapitalCol c, M_FSCapitalRow r "
                  "WHERE r.ItemType <> 30 AND NOT EXISTS (SELECT 1 FROM M_FSItem i "
                  "WHERE i.ItemCode = c.ItemCode + r.ItemCode AND i.DocCode = 8)"),
              0);
    // The side sheet has 15 rows and three headed columns.
    for (int p : periodCodes()) {
        EXPECT_LE(sample().number("SELECT COUNT(*) FROM T_FSCapitalRow WHERE FSDataCode=" +
                                  std::to_string(p)),
                  15);
        EXPECT_EQ(sample().rows("Select * From T_FSCapitalCol Where FSDataCode=" +
                                std::to_string(p) + " AND ItemCode IN(650,690,700) Order By ColNo")
                      .size(),
                  3u);
    }
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM T_FS WHERE CapitalSubFlag = 1"), 1);
    // Heading IDs the side sheet maps to its columns 2 to 7.
    EXPECT_EQ(sample().rows("SELECT ID FROM M_FSItemDetail WHERE FSItemID IN(89,90) "
                            "AND ID IN (234,763,764,235,765,766)")
                  .size(),
              6u);
}

TEST(AppDataSample, ItemCodesTheProgramNamesHaveTheirMeaning) {
    const std::vector<std::pair<int, std::string>> named = {
        {99, "兼業事業売上原価"},   {102, "兼業事業売上高"},     {204, "受取手形裏書譲渡高"},
        {207, "当期減価償却実施額"}, {208, "受取手形割引高"},     {159, "受取利息及び配当金"},
        {162, "支払利息"},           {89, "準備金"},             {90, "積立金"}};
    for (const auto& [code, name] : named) {
        EXPECT_EQ(sample().text("SELECT ItemName FROM M_FSItem WHERE ItemCode=" + std::to_string(code)),
                  name)
            << code;
    }
    EXPECT_EQ(sample().number("SELECT COUNT(*) - COUNT(DISTINCT ItemCode) FROM M_FSItem"), 0);
    EXPECT_LT(sample().number("SELECT MAX(ItemCode) FROM M_FSItem"), 10000);
}

TEST(AppDataSample, FixedAssetPairsHoldTheSameAssetTwice) {
    // The print driver moves the second code's amount onto the first when the
    // first is empty: the second is the same asset, not on any form.
    for (const auto& [first, second] : std::vector<std::pair<int, int>>{
             {16, 17}, {19, 20}, {22, 23}, {27, 28}, {371, 372}}) {
        const auto rows = sample().rows("SELECT ItemName, DocCode, SortNumber_H, SortNumber_K FROM M_FSItem "
                                        "WHERE ItemCode IN (" + std::to_string(first) + "," +
                                        std::to_string(second) + ") ORDER BY ItemCode");
        ASSERT_EQ(rows.size(), 2u) << first;
        EXPECT_EQ(rows[1][0]->rfind(*rows[0][0], 0), 0u) << *rows[1][0] << " names " << *rows[0][0];
        EXPECT_EQ(rows[0][1], rows[1][1]);
        EXPECT_TRUE(rows[0][2].has_value());
        EXPECT_FALSE(rows[1][2].has_value());
        EXPECT_FALSE(rows[1][3].has_value());
    }
    // One period enters a fixed asset by direct deduction, so the move is
    // exercised by the sample.
    EXPECT_GE(sample().number("SELECT COUNT(*) FROM P_FSItemData a JOIN P_FSItemData b "
                              "ON a.FSDataCode = b.FSDataCode AND b.ItemCode = a.ItemCode + 1 "
                              "WHERE a.ItemCode IN (16,19,22,27,371) AND a.ItemValue = 0 "
                              "AND b.ItemValue <> 0"),
              1);
}

TEST(AppDataSample, IndividualRecodingsLandOnIndividualLines) {
    // Data of another program for an individual is recoded onto lines that
    // only an individual's statements show, and corporate-only lines dropped.
    for (int target : {222, 225, 227}) {
        const auto row = sample().rows("SELECT SortNumber_H, SortNumber_K, DocCode FROM M_FSItem WHERE ItemCode=" +
                                       std::to_string(target));
        ASSERT_EQ(row.size(), 1u) << target;
        EXPECT_FALSE(row[0][0].has_value()) << target;
        EXPECT_TRUE(row[0][1].has_value()) << target;
        EXPECT_EQ(row[0][2], "1") << target;
    }
    for (int source : {9, 62, 223, 224, 34, 36, 40, 29, 16, 17, 19, 20, 22, 23, 30, 35, 45, 27, 28}) {
        const auto row = sample().rows("SELECT SortNumber_K FROM M_FSItem WHERE ItemCode=" +
                                       std::to_string(source));
        ASSERT_EQ(row.size(), 1u) << source;
        EXPECT_FALSE(row[0][0].has_value()) << source << " is not on an individual's statements";
    }
}

TEST(AppDataSample, MasterCoversBothKindsOfStatements) {
    // Corporations: balance sheet, income statement, cost report, equity
    // statement; individuals: balance sheet and income statement.
    EXPECT_EQ(sample().number("SELECT COUNT(DISTINCT DocCode) FROM M_FSItem "
                              "WHERE SortNumber_H IS NOT NULL AND DocCode IN (1,2,3,8)"),
              4);
    EXPECT_EQ(sample().number("SELECT COUNT(DISTINCT DocCode) FROM M_FSItem "
                              "WHERE SortNumber_K IS NOT NULL AND DocCode IN (1,2)"),
              2);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM M_FSItem WHERE SortNumber_K IS NOT NULL "
                              "AND DocCode IN (3,8)"),
              0);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM M_FSItem WHERE ItemValueType NOT IN (0,1,2)"), 0);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM M_FSItem WHERE EnforceDates IS NULL "
                              "OR EnforceDates = ''"),
              0);
}

TEST(AppDataSample, ItemsAgreeWithTheirMaster) {
    // Every stored item is known to the master, under its statement, and of
    // the edition of its period, with the sign the master fixes.
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM P_FSItemData d LEFT JOIN M_FSItem m "
                              "ON m.ItemCode = d.ItemCode WHERE m.ItemCode IS NULL "
                              "OR m.DocCode <> d.DocCode"),
              0);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM P_FSItemData d JOIN T_FS f USING (FSDataCode) "
                              "JOIN M_FSItem m ON m.ItemCode = d.ItemCode WHERE m.EnforceDates "
                              "NOT LIKE '%' || replace(f.EnforceDate, '-', '') || '%'"),
              0);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM P_FSItemData d JOIN M_FSItem m USING (ItemCode) "
                              "WHERE (m.ItemValueType = 0 AND d.ItemValue < 0) "
                              "OR (m.ItemValueType = 2 AND d.ItemValue > 0)"),
              0);
    // The three note figures come from T_FS columns, never from stored items.
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM P_FSItemData WHERE ItemCode IN (204,207,208)"), 0);
    // Renamed lines carry the flag; unrenamed ones their master name.
    EXPECT_GE(sample().number("SELECT COUNT(*) FROM P_FSItemData WHERE NameChangeFlag = 1"), 3);
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM P_FSItemData d JOIN M_FSItem m USING (ItemCode) "
                              "WHERE d.NameChangeFlag = 0 AND d.ItemName <> m.ItemName"),
              0);
}

TEST(AppDataSample, NotesFitTheirSymbols) {
    // One notes row per period. A note over 800 bytes of code page 932 cannot
    // be put into a symbol; UTF-8 never takes fewer bytes than code page 932
    // for these texts, so staying within 800 UTF-8 bytes is enough.
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM T_FSNote"), 3);
    for (const auto& column : sample().columns("T_FSNote")) {
        if (column.name == "FSDataCode") continue;
        EXPECT_LE(sample().number("SELECT MAX(length(CAST(" + column.name +
                                  " AS BLOB))) FROM T_FSNote"),
                  800)
            << column.name;
    }
    // Lines within a note are separated by CR LF, as the sibling program keeps them.
    EXPECT_EQ(sample().number("SELECT COUNT(*) FROM T_FSNote WHERE AccountWayAssetsCriteria "
                              "NOT LIKE '%' || char(13,10) || '%'"),
              0);
}

}  // namespace
}  // namespace kelvary::test::appdata
