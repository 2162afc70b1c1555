// The databases the build puts into the program folder: SystemData.mdb with
// its working, settings, master and link tables, and the empty sibling
// database Ledra_dummy.mdb. Expected names, columns and rows are written out
// here as the program's contract with the sibling program and the user, not
// read back from the SQL that made the files.
#include "db/AppDataSqlite.h"
#include "support/TestSupport.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kelvary::test::appdata {
namespace {

std::string appFile(const char* name) { return (templateDir() + "/" + name).toStdString(); }

const Database& systemData() {
    static const Database db(appFile("SystemData.mdb"));
    return db;
}

const Database& dummyLedra() {
    static const Database db(appFile("Ledra_dummy.mdb"));
    return db;
}

std::vector<std::string> columnNames(const Database& db, const std::string& table) {
    std::vector<std::string> names;
    for (const auto& column : db.columns(table)) names.push_back(column.name);
    return names;
}

// The sibling program's twelve tables with their columns, in order.
struct SiblingTable {
    std::string name;
    std::vector<Column> columns;
};

std::vector<Column> longTexts(std::vector<Column> head, const std::vector<std::string>& names) {
    for (const auto& name : names) head.push_back({name, "LONGTEXT"});
    return head;
}

std::vector<Column> doubles(std::vector<Column> head, const std::vector<std::string>& names) {
    for (const auto& name : names) head.push_back({name, "DOUBLE"});
    return head;
}

const std::vector<SiblingTable>& siblingContract() {
    static const std::vector<SiblingTable> tables = {
        {"T_MainData",
         {{"MainDataCode", "INTEGER"}, {"OtherSoftCode", "INTEGER"}, {"ApplyerName", "TEXT"}}},
        {"T_FS",
         {{"FSDataCode", "INTEGER"},        {"MainDataCode", "INTEGER"},
          {"FYearNumber", "DOUBLE"},        {"FYearFrom", "DATETIME"},
          {"FYearTo", "DATETIME"},          {"ApplyerName", "TEXT"},
          {"Distinction", "INTEGER"},       {"TaxType", "INTEGER"},
          {"TaxFreeFlag", "BOOLEAN"},       {"UnitType", "INTEGER"},
          {"CloseAccountType", "INTEGER"},  {"SideBusinessFlag", "BOOLEAN"},
          {"MeetingDate", "DATETIME"},      {"EnforceDate", "DATETIME"},
          {"EnforceDatesub", "TEXT"},       {"VersionNumber", "TEXT"},
          {"OtherSoftPrefCode", "INTEGER"}, {"CapitalSubFlag", "BOOLEAN"},
          {"NoteTrustDebt", "DOUBLE"},      {"NoteReceiptBillDiscount", "DOUBLE"},
          {"NoteReceiptBillGive", "DOUBLE"}, {"AccumulatedDepreciation", "DOUBLE"}}},
        {"P_FSItemData",
         {{"ID", "INTEGER"}, {"FSDataCode", "INTEGER"}, {"FSItemID", "INTEGER"},
          {"ItemCode", "INTEGER"}, {"ItemName", "TEXT"}, {"ItemValue", "DOUBLE"},
          {"NameChangeFlag", "BOOLEAN"}, {"DocCode", "INTEGER"}, {"SortNumber", "INTEGER"}}},
        {"T_FSNote",
         longTexts({{"FSDataCode", "INTEGER"}},
                   {"AccountWayAssetsCriteria", "AccountWayFixAssetsAccumulate",
                    "AccountWayReserveSum", "AccountWayRevenuesExpensesSum",
                    "AccountWayConsumptionTax", "AccountWayOther", "StockTypeAndNumberAtEnd",
                    "StockSelfTypeAndNumberAtEnd", "StockDividendAtMiddle", "StockDividendAtEnd",
                    "StockNewReserveRightAtEnd", "PLRealSales", "Other"})},
        {"T_FSCapitalRow",
         doubles({{"FSDataCode", "INTEGER"},
                  {"RowNo", "INTEGER"},
                  {"RowName", "TEXT"},
                  {"ItemCode", "INTEGER"},
                  {"ItemType", "INTEGER"}},
                 {"Capital", "NewStockProposeDeposit", "CapitalReady", "CapitalOther",
                  "CapitalOtherTotal", "BenefitReady", "BenefitOtherReadyFundSum",
                  "BenefitOtherCarryOver", "BenefitTotal", "SelfStock", "SelfStockProposeDeposit",
                  "CapitalTotal", "DiffOtherStock", "DiffCarryOverHedge", "DiffLand", "DiffTotal",
                  "NewStockReserve", "AssetTotal", "OtherReady1", "OtherReady2", "OtherReady3",
                  "OtherFundSum1", "OtherFundSum2", "OtherFundSum3", "SeparatelyFundSum",
                  "CapitalData"})},
        {"T_FSCapitalCol",
         {{"FSDataCode", "INTEGER"}, {"ColNo", "INTEGER"}, {"ColName", "TEXT"},
          {"ColIndex", "INTEGER"}, {"GridIndex", "INTEGER"}, {"ItemCode", "INTEGER"},
          {"CapitalHeader", "TEXT"}}},
        {"M_FSItem",
         {{"ItemCode", "INTEGER"}, {"ItemName", "TEXT"}, {"DocCode", "INTEGER"},
          {"DocName", "TEXT"}, {"SectionName", "TEXT"}, {"Segment1Name", "TEXT"},
          {"Segment2Name", "TEXT"}, {"Segment3Name", "TEXT"}, {"SortNumber_H", "INTEGER"},
          {"SortNumber_K", "INTEGER"}, {"SortNumber_R", "INTEGER"}, {"ItemValueType", "INTEGER"},
          {"EnforceDates", "TEXT"}}},
        {"M_FSDoc", {{"DocCode", "INTEGER"}, {"DocName", "TEXT"}, {"SortNumber", "INTEGER"}}},
        {"M_FSCapitalCol",
         {{"ColNo", "INTEGER"}, {"ColIndex", "INTEGER"}, {"ColName", "TEXT"},
          {"GridIndex", "INTEGER"}, {"ItemCode", "INTEGER"}}},
        {"M_FSCapitalRow",
         {{"RowNo", "INTEGER"}, {"RowName", "TEXT"}, {"ItemCode", "INTEGER"},
          {"ItemType", "INTEGER"}}},
        {"M_FSItemDetail", {{"ID", "INTEGER"}, {"FSItemID", "INTEGER"}, {"ItemDetailName", "TEXT"}}},
        {"T_FSItemDetail",
         {{"FSDataCode", "INTEGER"}, {"FSItemID", "INTEGER"}, {"FSItemDetailID", "INTEGER"},
          {"DataText", "TEXT"}, {"SubjectText", "TEXT"}, {"Col01", "TEXT"}, {"Col02", "TEXT"},
          {"Col03", "TEXT"}, {"Col04", "TEXT"}, {"Col05", "TEXT"}, {"Col06", "TEXT"},
          {"Col07", "TEXT"}, {"Col08", "TEXT"}}},
    };
    return tables;
}

// ------------------------------------------------------------------ files

TEST(AppDataFiles, TheThreeDatabasesAreSqliteFiles) {
    // Every .mdb of the program folder must begin with the 16-byte SQLite 3
    // header "SQLite format 3" and a NUL; a Jet file would begin otherwise.
    const QByteArray header = hexBytes("53 51 4c 69 74 65 20 66 6f 72 6d 61 74 20 33 00");
    for (const char* name : {"SystemData.mdb", "Ledra_dummy.mdb", "sample/Ledra.mdb"}) {
        QFile file(appDir() + "/" + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        EXPECT_EQ(file.read(16), header) << name;
    }
}

TEST(AppDataFiles, ProgramFolderHoldsSettingsAndTempFolder) {
    QFile ini(appDir() + "/UserData.ini");
    ASSERT_TRUE(ini.open(QIODevice::ReadOnly));
    const QByteArray text = ini.readAll();
    // Errors are shown to the user: [System] ShowErrMsg=-1.
    EXPECT_TRUE(text.contains("[System]\r\nShowErrMsg=-1\r\n")) << text.constData();
    EXPECT_TRUE(text.contains("[UserInfo]"));
    EXPECT_TRUE(QFile::exists(appDir() + "/Temp"));
}

// ---------------------------------------------------------- SystemData.mdb

TEST(AppDataSystemData, HoldsEveryTableTheProgramUses) {
    ASSERT_TRUE(systemData().isOpen());
    const std::vector<std::string> expected = {
        "tblIndex",         "tmpAPData",        "tmpFSInfoData",    "tmpFSItemData",
        "tmpFSNoteData",    "tmpFSCapitalRow",  "tmpFSCapitalCol",  "tmpOldFSInfoData",
        "tmpOldFSItemData", "tmpOldFSNoteData", "tblWork",          "tblPref",
        "tblHantoku",       "tblService",       "tblFSDocMaster",   "tblFSDocMaster06",
        "tblFSCheckMaster", "tblFSInvalidItemList", "tblLinkTable"};
    std::vector<std::string> actual = systemData().tableNames();
    std::vector<std::string> sorted = expected;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(actual, sorted);
}

TEST(AppDataSystemData, EveryDeclaredTypeIsOneTheDataLayerKnows) {
    const std::set<std::string> known = {"INTEGER",  "SMALLINT", "DOUBLE", "CURRENCY",
                                         "DATETIME", "BOOLEAN",  "TEXT",   "LONGTEXT"};
    for (const Database* db : {&systemData(), &dummyLedra()}) {
        for (const auto& table : db->tableNames()) {
            for (const auto& column : db->columns(table)) {
                EXPECT_TRUE(known.count(column.declaredType))
                    << table << "." << column.name << " is " << column.declaredType;
            }
        }
    }
}

TEST(AppDataSystemData, WorkingCopiesRepeatTheirSourceColumnsInOrder) {
    // The period copy walks the source fields by name and writes each into the
    // column of the same name with the source's own type.
    const std::vector<std::pair<std::string, std::string>> pairs = {
        {"T_FS", "tmpFSInfoData"},
        {"P_FSItemData", "tmpFSItemData"},
        {"T_FSNote", "tmpFSNoteData"},
        {"T_FSCapitalRow", "tmpFSCapitalRow"},
        {"T_FSCapitalCol", "tmpFSCapitalCol"}};
    for (const auto& [source, copy] : pairs) {
        const auto sourceColumns = dummyLedra().columns(source);
        const auto copyColumns = systemData().columns(copy);
        ASSERT_FALSE(sourceColumns.empty()) << source;
        ASSERT_GE(copyColumns.size(), sourceColumns.size()) << copy;
        for (size_t i = 0; i < sourceColumns.size(); ++i) {
            EXPECT_EQ(copyColumns[i], sourceColumns[i]) << copy << " column " << i;
        }
    }
}

TEST(AppDataSystemData, ApplicationRecordHoldsEveryFormField) {
    // Every [DocData] column that a check, a payload or a printed form reads.
    const std::vector<std::string> fields = {
        "APDataCode", "MainDataCode", "EnforceDate", "ApplyDoc1", "ApplyDoc2",
        "ApplierColumnName", "ApplierColumnAddress", "ApplierColumnAddress1",
        "ApplierColumnPresident", "ApplierColumnCreName", "ContactPosition", "ContactName",
        "ContactTel", "ContactFax", "ApplyDate", "PrefCode1", "ClasCtgr1", "LcnsNum1A",
        "LcnsNum1B", "LcnsDate1", "PrefCode2", "ClasCtgr2", "LcnsNum2A", "LcnsNum2B",
        "LcnsDate2", "BaseDate", "FYearFrom1", "FYearTo1", "FYearCtgr1A", "FYearCtgr1B",
        "FYearFrom2", "FYearTo2", "FYearCtgr2A", "FYearCtgr2B", "FYearFrom3", "FYearTo3",
        "FYearCtgr3A", "FYearCtgr3B", "Distinction", "LastApl", "FCObgt1", "FCObgt2",
        "TRNameKana", "TRName", "PSNameKana", "PSName", "OfficeCityCode", "OfficeAddr",
        "OfficeZipCode", "OfficeTel", "Item01Single", "Item01Plural", "Item02Single",
        "Item02Plural", "Item03", "Remarks", "FType"};
    const auto columns = columnNames(systemData(), "tmpAPData");
    const std::set<std::string> present(columns.begin(), columns.end());
    for (const auto& field : fields) EXPECT_TRUE(present.count(field)) << field;
    EXPECT_EQ(present.size(), columns.size()) << "a column is declared twice";
}

TEST(AppDataSystemData, ApplicationDatesAndTextsHaveTypesTheirRulesNeed) {
    // Dates are tested for their era and printed as era dates; licence numbers
    // and the city code are tested as trimmed texts; codes compare with 0/-1.
    std::map<std::string, std::string> types;
    for (const auto& column : systemData().columns("tmpAPData")) types[column.name] = column.declaredType;
    for (const char* date : {"EnforceDate", "ApplyDate", "LcnsDate1", "LcnsDate2", "BaseDate",
                             "FYearFrom1", "FYearTo1", "FYearFrom2", "FYearTo2", "FYearFrom3",
                             "FYearTo3"}) {
        EXPECT_EQ(types[date], "DATETIME") << date;
    }
    for (const char* text : {"LcnsNum1A", "LcnsNum1B", "LcnsNum2A", "LcnsNum2B", "OfficeCityCode",
                             "OfficeZipCode", "TRName", "ApplierColumnAddress"}) {
        EXPECT_EQ(types[text], "TEXT") << text;
    }
    for (const char* code : {"PrefCode1", "PrefCode2", "ClasCtgr1", "ClasCtgr2", "Distinction",
                             "LastApl", "FType", "FCObgt1", "FYearCtgr1A"}) {
        EXPECT_EQ(types[code], "INTEGER") << code;
    }
    EXPECT_EQ(types["Remarks"], "LONGTEXT");
}

TEST(AppDataSystemData, PeriodIndexAndOldLayoutTablesHaveTheirColumns) {
    EXPECT_EQ(columnNames(systemData(), "tblIndex"),
              (std::vector<std::string>{"IndexID", "MainDataCode", "DataType", "LinkCode",
                                        "FileName", "ApplyerName", "FYearNumber", "FYearFrom",
                                        "FYearTo", "PrintFlag"}));
    EXPECT_EQ(columnNames(systemData(), "tmpOldFSInfoData"),
              (std::vector<std::string>{"FSDataCode", "MainDataCode", "ApplyerName",
                                        "FYearNumber", "FYearFrom", "FYearTo", "Distinction",
                                        "TaxType", "TaxFreeFlag", "UnitType", "RoundType",
                                        "KeisinFlag", "MeetingDate", "EnforceDate",
                                        "SideBusinessFlag", "StockDiv_Yen", "StockDiv_Sen",
                                        "OtherSoftData", "OtherSoftPrefCode", "VersionNumber"}));
    EXPECT_EQ(columnNames(systemData(), "tmpOldFSItemData"),
              (std::vector<std::string>{"ID", "FSDataCode", "ItemCode", "ItemName", "ItemValue",
                                        "DocCode", "SortNumber", "NameChangeFlag", "NoAddFlag",
                                        "OrgFlag", "InputFlag"}));
    EXPECT_EQ(columnNames(systemData(), "tmpOldFSNoteData"),
              (std::vector<std::string>{"FSDataCode", "DocCode", "NoteCode_Main",
                                        "NoteMasterID", "SortNumber", "NoteText"}));
}

TEST(AppDataSystemData, ShipsEmptyWorkingTables) {
    for (const char* table : {"tblIndex", "tmpAPData", "tmpFSInfoData", "tmpFSItemData",
                              "tmpFSNoteData", "tmpFSCapitalRow", "tmpFSCapitalCol",
                              "tmpOldFSInfoData", "tmpOldFSItemData", "tmpOldFSNoteData"}) {
        EXPECT_EQ(systemData().number(std::string("SELECT COUNT(*) FROM ") + table), 0) << table;
    }
}

TEST(AppDataSystemData, SettingsRowExistsExactlyOnce) {
    // The start rewrites tblWork with an UPDATE without condition: with no row
    // it would change nothing, with two both would be overwritten.
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblWork"), 1);
    EXPECT_EQ(columnNames(systemData(), "tblWork"),
              (std::vector<std::string>{"OldZaimuDataPath", "MainDataCode", "ExcelDataFolder",
                                        "NewZaimuDataPath", "NewZaimuProgram"}));
}

TEST(AppDataSystemData, PrintFlagStartsFalseWhenTheIndexBuilderLeavesItOut) {
    ScratchHome home;
    const Database db(home.file("SystemData.mdb").toStdString(), true);
    ASSERT_TRUE(db.isOpen());
    ASSERT_EQ(db.run("insert into tblIndex(ApplyerName,FYearNumber,FYearFrom,FYearTo,LinkCode,"
                     "MainDataCode,DataType,IndexID) values('x',40,'2008-04-01','2009-03-31',15,3,0,1)"),
              "");
    EXPECT_EQ(db.text("SELECT PrintFlag FROM tblIndex WHERE IndexID=1"), "0");
}

// ------------------------------------------------------------ master rows

TEST(AppDataMasters, PrefecturesCarryTheirJisCodesAndSuffixes) {
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblPref"), 48);
    EXPECT_EQ(systemData().number("SELECT COUNT(DISTINCT PrefID) FROM tblPref"), 48);
    EXPECT_EQ(systemData().number("SELECT MIN(PrefID) FROM tblPref"), 0);
    EXPECT_EQ(systemData().number("SELECT MAX(PrefID) FROM tblPref"), 47);
    // JIS X 0401: fixed codes known from outside this program.
    const std::vector<std::pair<int, std::string>> known = {
        {0, "国土交通大臣"}, {1, "北海道"},  {2, "青森県"},   {13, "東京都"},
        {14, "神奈川県"},    {23, "愛知県"}, {26, "京都府"},  {27, "大阪府"},
        {30, "和歌山県"},    {40, "福岡県"}, {46, "鹿児島県"}, {47, "沖縄県"}};
    for (const auto& [code, name] : known) {
        EXPECT_EQ(systemData().text("SELECT PrefName FROM tblPref WHERE PrefID=" +
                                    std::to_string(code)),
                  name)
            << code;
    }
    // Governors' titles are PrefName & "知事": one 都, one 道, two 府, 43 県.
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblPref WHERE PrefName LIKE '%都'"), 1);
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblPref WHERE PrefName LIKE '%道'"), 1);
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblPref WHERE PrefName LIKE '%府'"), 2);
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblPref WHERE PrefName LIKE '%県'"), 43);
}

TEST(AppDataMasters, CoursesAreRegularAndExpressInMenuOrder) {
    const auto rows =
        systemData().rows("Select ServiceID, ServiceName From tblService Order By SortNumber,ServiceID");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0][0], "1");
    EXPECT_EQ(rows[0][1], "レギュラー（10営業日以内）");
    EXPECT_EQ(rows[1][0], "3");
    EXPECT_EQ(rows[1][1], "エクスプレス（3営業日以内）");
}

TEST(AppDataMasters, LicenceClassesAndStatementNames) {
    EXPECT_EQ(systemData().rows("SELECT HantokuID FROM tblHantoku ORDER BY HantokuID").size(), 3u);
    EXPECT_EQ(systemData().text("SELECT DocName FROM tblFSDocMaster WHERE DocCode=1"), "貸借対照表");
    EXPECT_EQ(systemData().text("SELECT DocName FROM tblFSDocMaster06 WHERE DocCode=2"), "損益計算書");
    // The equity statement is folded into items under DocCode 8; it exists
    // only from the 2006-07-01 edition on.
    EXPECT_EQ(systemData().text("SELECT DocName FROM tblFSDocMaster06 WHERE DocCode=8"),
              "株主資本等変動計算書");
    EXPECT_EQ(systemData().number("SELECT COUNT(*) FROM tblFSDocMaster WHERE DocCode=8"), 0);
    EXPECT_EQ(systemData().number(
                  "SELECT COUNT(*) - COUNT(DISTINCT DocCode) FROM tblFSDocMaster06"),
              0);
}

TEST(AppDataMasters, RuleTablesExistWithTheColumnsTheChecksRead) {
    EXPECT_EQ(columnNames(systemData(), "tblFSCheckMaster"),
              (std::vector<std::string>{"TitleText", "LeftItemNum", "LeftItemText",
                                        "RightItemNum", "RightItemText", "SignNum", "TypeFlag_H",
                                        "TypeFlag_K", "EnforceDate", "SortNumber"}));
    EXPECT_EQ(columnNames(systemData(), "tblFSInvalidItemList"),
              (std::vector<std::string>{"Distinction", "EnforceDate", "DocCode", "ItemName"}));
}

// ------------------------------------------------------------------ links

TEST(AppDataLinks, TwelveSiblingTablesPointAtTheDummyDatabase) {
    const auto rows = systemData().rows("SELECT TableName, DataSource FROM tblLinkTable");
    std::set<std::string> linked;
    for (const auto& row : rows) {
        linked.insert(row.at(0).value_or(""));
        EXPECT_EQ(row.at(1), "Ledra_dummy.mdb") << row.at(0).value_or("");
    }
    std::set<std::string> expected;
    for (const auto& table : siblingContract()) expected.insert(table.name);
    EXPECT_EQ(rows.size(), 12u);
    EXPECT_EQ(linked, expected);
}

TEST(AppDataLinks, DummyDatabaseHoldsTheSiblingTablesEmpty) {
    ASSERT_TRUE(dummyLedra().isOpen());
    EXPECT_EQ(dummyLedra().tableNames().size(), 12u);
    for (const auto& table : siblingContract()) {
        EXPECT_EQ(dummyLedra().columns(table.name), table.columns) << table.name;
        EXPECT_EQ(dummyLedra().number("SELECT COUNT(*) FROM " + table.name), 0) << table.name;
    }
}

}  // namespace
}  // namespace kelvary::test::appdata
