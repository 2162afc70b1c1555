// The databases the build puts into the program folder: SystemData.mdb with
// its working, settings, master and link tables, and the empty sibling
// database Ledra_dummy.mdb. Expected names, columns and rows are written out
// here as the program's contract with the sibling program and the user, not
// read back from the SQL that made the files; the files are read with SQLite
// directly, so a fault in the data access layer cannot hide one here.
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary::test {
namespace {

QString systemData() { return templateDir() + QStringLiteral("/SystemData.mdb"); }
QString dummyLedra() { return templateDir() + QStringLiteral("/Ledra_dummy.mdb"); }

QString text(const QString& database, const QString& sql) {
    return sqlColumn(database, sql.toUtf8().constData()).value(0);
}
double number(const QString& sql) { return text(systemData(), sql).toDouble(); }

// A table's columns in order, as "Name TYPE, Name TYPE, …" (just the names
// when withTypes is false).
QString columns(const QString& database, const QString& table, bool withTypes = true) {
    return sqlColumn(database, QStringLiteral("SELECT name %1 FROM pragma_table_info('%2') ORDER BY cid")
                                   .arg(withTypes ? QStringLiteral("|| ' ' || type") : QString(), table)
                                   .toUtf8()
                                   .constData())
        .join(QStringLiteral(", "));
}

// "A, B" → "A TYPE, B TYPE".
QString typed(const char* type, const QString& names) {
    QStringList result;
    for (const QString& name : names.split(QStringLiteral(", ")))
        result << name + QLatin1Char(' ') + QLatin1String(type);
    return result.join(QStringLiteral(", "));
}

// The sibling program's twelve tables with their columns, in order.
const std::vector<std::pair<QString, QString>>& siblingContract() {
    static const std::vector<std::pair<QString, QString>> tables = {
        {QStringLiteral("T_MainData"), QStringLiteral("MainDataCode INTEGER, OtherSoftCode INTEGER, ApplyerName TEXT")},
        {QStringLiteral("T_FS"),
         QStringLiteral("FSDataCode INTEGER, MainDataCode INTEGER, FYearNumber DOUBLE, FYearFrom DATETIME, "
                        "FYearTo DATETIME, ApplyerName TEXT, Distinction INTEGER, TaxType INTEGER, "
                        "TaxFreeFlag BOOLEAN, UnitType INTEGER, CloseAccountType INTEGER, SideBusinessFlag BOOLEAN, "
                        "MeetingDate DATETIME, EnforceDate DATETIME, EnforceDatesub TEXT, VersionNumber TEXT, "
                        "OtherSoftPrefCode INTEGER, CapitalSubFlag BOOLEAN, NoteTrustDebt DOUBLE, "
                        "NoteReceiptBillDiscount DOUBLE, NoteReceiptBillGive DOUBLE, AccumulatedDepreciation DOUBLE")},
        {QStringLiteral("P_FSItemData"),
         QStringLiteral("ID INTEGER, FSDataCode INTEGER, FSItemID INTEGER, ItemCode INTEGER, ItemName TEXT, "
                        "ItemValue DOUBLE, NameChangeFlag BOOLEAN, DocCode INTEGER, SortNumber INTEGER")},
        {QStringLiteral("T_FSNote"),
         QStringLiteral("FSDataCode INTEGER, ") +
             typed("LONGTEXT",
                   QStringLiteral("AccountWayAssetsCriteria, AccountWayFixAssetsAccumulate, AccountWayReserveSum, "
                                  "AccountWayRevenuesExpensesSum, AccountWayConsumptionTax, AccountWayOther, "
                                  "StockTypeAndNumberAtEnd, StockSelfTypeAndNumberAtEnd, StockDividendAtMiddle, "
                                  "StockDividendAtEnd, StockNewReserveRightAtEnd, PLRealSales, Other"))},
        {QStringLiteral("T_FSCapitalRow"),
         QStringLiteral("FSDataCode INTEGER, RowNo INTEGER, RowName TEXT, ItemCode INTEGER, ItemType INTEGER, ") +
             typed("DOUBLE",
                   QStringLiteral("Capital, NewStockProposeDeposit, CapitalReady, CapitalOther, CapitalOtherTotal, "
                                  "BenefitReady, BenefitOtherReadyFundSum, BenefitOtherCarryOver, BenefitTotal, "
                                  "SelfStock, SelfStockProposeDeposit, CapitalTotal, DiffOtherStock, "
                                  "DiffCarryOverHedge, DiffLand, DiffTotal, NewStockReserve, AssetTotal, OtherReady1, "
                                  "OtherReady2, OtherReady3, OtherFundSum1, OtherFundSum2, OtherFundSum3, "
                                  "SeparatelyFundSum, CapitalData"))},
        {QStringLiteral("T_FSCapitalCol"),
         QStringLiteral("FSDataCode INTEGER, ColNo INTEGER, ColName TEXT, ColIndex INTEGER, GridIndex INTEGER, "
                        "ItemCode INTEGER, CapitalHeader TEXT")},
        {QStringLiteral("M_FSItem"),
         QStringLiteral("ItemCode INTEGER, ItemName TEXT, DocCode INTEGER, DocName TEXT, SectionName TEXT, "
                        "Segment1Name TEXT, Segment2Name TEXT, Segment3Name TEXT, SortNumber_H INTEGER, "
                        "SortNumber_K INTEGER, SortNumber_R INTEGER, ItemValueType INTEGER, EnforceDates TEXT")},
        {QStringLiteral("M_FSDoc"), QStringLiteral("DocCode INTEGER, DocName TEXT, SortNumber INTEGER")},
        {QStringLiteral("M_FSCapitalCol"),
         QStringLiteral("ColNo INTEGER, ColIndex INTEGER, ColName TEXT, GridIndex INTEGER, ItemCode INTEGER")},
        {QStringLiteral("M_FSCapitalRow"), QStringLiteral("RowNo INTEGER, RowName TEXT, ItemCode INTEGER, ItemType INTEGER")},
        {QStringLiteral("M_FSItemDetail"), QStringLiteral("ID INTEGER, FSItemID INTEGER, ItemDetailName TEXT")},
        {QStringLiteral("T_FSItemDetail"),
         QStringLiteral("FSDataCode INTEGER, FSItemID INTEGER, FSItemDetailID INTEGER, DataText TEXT, "
                        "SubjectText TEXT, ") +
             typed("TEXT", QStringLiteral("Col01, Col02, Col03, Col04, Col05, Col06, Col07, Col08"))},
    };
    return tables;
}

const char* const kWorkingTables[] = {"tblIndex",         "tmpAPData",        "tmpFSInfoData",   "tmpFSItemData",
                                      "tmpFSNoteData",    "tmpFSCapitalRow",  "tmpFSCapitalCol", "tmpOldFSInfoData",
                                      "tmpOldFSItemData", "tmpOldFSNoteData"};

// ------------------------------------------------------------------ files

TEST(AppDataFiles, TheThreeDatabasesAreSqliteFiles) {
    // Every .mdb of the program folder must begin with the 16-byte SQLite 3
    // header "SQLite format 3" and a NUL; a Jet file would begin otherwise.
    const QByteArray header = hexBytes("53 51 4c 69 74 65 20 66 6f 72 6d 61 74 20 33 00");
    for (const char* name : {"SystemData.mdb", "Ledra_dummy.mdb", "sample/Ledra.mdb"})
        EXPECT_EQ(readFile(appDir() + QLatin1Char('/') + QLatin1String(name)).first(16), header) << name;
}

// ---------------------------------------------------------- SystemData.mdb

TEST(AppDataSystemData, HoldsEveryTableTheProgramUses) {
    QStringList expected = {"tblWork",        "tblPref",          "tblHantoku",       "tblService",
                            "tblFSDocMaster", "tblFSDocMaster06", "tblFSCheckMaster", "tblFSInvalidItemList",
                            "tblLinkTable"};
    for (const char* table : kWorkingTables) expected << QLatin1String(table);
    expected.sort();
    EXPECT_EQ(sqlColumn(systemData(), "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"), expected);
}

TEST(AppDataSystemData, ShipsEmptyWorkingTablesAndOneSettingsRow) {
    for (const char* table : kWorkingTables)
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM ") + QLatin1String(table)), 0) << table;
    // The start rewrites tblWork with an UPDATE without condition: with no row
    // it would change nothing, with two both would be overwritten.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM tblWork")), 1);
}

// ------------------------------------------------------------ master rows

TEST(AppDataMasters, PrefecturesCarryTheirJisCodesAndSuffixes) {
    EXPECT_EQ(sqlRows(systemData(), QStringLiteral("SELECT COUNT(*), COUNT(DISTINCT PrefID), MIN(PrefID), MAX(PrefID) "
                                                   "FROM tblPref")),
              QStringList{QStringLiteral("48|48|0|47")});
    // JIS X 0401: fixed codes known from outside this program.
    const std::pair<int, const char*> known[] = {
        {0, "国土交通大臣"}, {1, "北海道"},  {2, "青森県"},   {13, "東京都"},
        {14, "神奈川県"},    {23, "愛知県"}, {26, "京都府"},  {27, "大阪府"},
        {30, "和歌山県"},    {40, "福岡県"}, {46, "鹿児島県"}, {47, "沖縄県"}};
    for (const auto& [code, name] : known)
        EXPECT_EQ(text(systemData(), QStringLiteral("SELECT PrefName FROM tblPref WHERE PrefID=%1").arg(code)),
                  QString::fromUtf8(name))
            << code;
    // Governors' titles are PrefName & "知事": one 都, one 道, two 府, 43 県.
    for (const auto& [suffix, count] : {std::pair{"都", 1}, {"道", 1}, {"府", 2}, {"県", 43}})
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM tblPref WHERE PrefName LIKE '%%1'")
                             .arg(QString::fromUtf8(suffix))),
                  count)
            << suffix;
}

// ------------------------------------------------------------------ links

TEST(AppDataLinks, TwelveSiblingTablesPointAtTheEmptyDummyDatabase) {
    QStringList expectedLinks, expectedTables;
    for (const auto& [table, contract] : siblingContract()) {
        expectedLinks << table + QStringLiteral("|Ledra_dummy.mdb");
        expectedTables << table;
        EXPECT_EQ(columns(dummyLedra(), table), contract) << table.toStdString();
        EXPECT_EQ(text(dummyLedra(), QStringLiteral("SELECT COUNT(*) FROM ") + table), QStringLiteral("0"))
            << table.toStdString();
    }
    QStringList links = sqlRows(systemData(), QStringLiteral("SELECT TableName, DataSource FROM tblLinkTable"));
    links.sort();
    expectedLinks.sort();
    expectedTables.sort();
    EXPECT_EQ(links, expectedLinks);
    EXPECT_EQ(sqlColumn(dummyLedra(), "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"),
              expectedTables);
}

}  // namespace
}  // namespace kelvary::test
