// Every SQL text the program runs against its working database, as the
// routines build them, run on a scratch copy of the program folder with the
// sample sibling database linked in: each must prepare and run against the
// shipped schema. The concatenated parts carry example values (IndexID 1,
// APDataCode 1, the sample's FSDataCode 15 and applicant key 3).
//
// The texts are written in their SQLite form: the program translates the Jet
// dialect before SQLite sees it (#yyyy/mm/dd# → 'yyyy-mm-dd', IsNull(x) →
// ((x) IS NULL), True/False → 1/0), so a text with those spellings appears
// here translated. Links are made as the data layer makes them: the sibling
// file attached and a temporary view per linked table.
#include "db/AppDataSqlite.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace kelvary::test::appdata {
namespace {

class AppDataSqlTexts : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(db_.isOpen());
        // A scratch file: no need to wait for the disk after every row.
        ASSERT_EQ(db_.run("PRAGMA synchronous = OFF"), "");
        ASSERT_EQ(db_.run("ATTACH DATABASE '" + home_.file("sample/Ledra.mdb").toStdString() +
                          "' AS ledra"),
                  "");
        for (const auto& row : db_.rows("SELECT TableName FROM tblLinkTable")) {
            const std::string name = row.at(0).value();
            ASSERT_EQ(db_.run("CREATE TEMP VIEW " + name + " AS SELECT * FROM ledra." + name), "");
        }
    }

    // Runs each text in order; every one must succeed.
    void runAll(const std::vector<std::string>& texts) {
        for (const auto& sql : texts) EXPECT_EQ(db_.run(sql), "") << sql;
    }

    std::vector<Database::Row> rows(const std::string& sql) { return db_.rows(sql); }
    double number(const std::string& sql) { return db_.number(sql); }

    // Copies one period of the sibling tables into the working copies under
    // IndexID 1, one INSERT per row with literals by field type, the way the
    // print driver copies through clsSqlText.
    void copyPeriod(int linkCode) {
        const std::vector<std::pair<std::string, std::string>> pairs = {
            {"T_FS", "TmpFSInfoData"},
            {"P_FSItemData", "TmpFSItemData"},
            {"T_FSNote", "TmpFSNoteData"},
            {"T_FSCapitalRow", "TmpFSCapitalRow"},
            {"T_FSCapitalCol", "TmpFSCapitalCol"}};
        for (const auto& [source, target] : pairs) {
            const auto columns = db_.columns(source);
            for (const auto& row : rows(" Select * From " + source +
                                        " Where FSDataCode=" + std::to_string(linkCode))) {
                std::ostringstream fields, values;
                for (size_t i = 0; i < columns.size(); ++i) {
                    const auto& column = columns[i];
                    fields << (i ? "," : "") << column.name;
                    values << (i ? "," : "");
                    if (column.name == "FSDataCode") {
                        values << 1;
                    } else if (column.name == "VersionNumber") {
                        values << "'Ledra:2.1.0.0(" << row[i].value_or("") << ")'";
                    } else if (!row[i]) {
                        values << "null";
                    } else if (column.declaredType == "TEXT" || column.declaredType == "LONGTEXT" ||
                               column.declaredType == "DATETIME") {
                        std::string text = *row[i];
                        for (size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 2) {
                            text.insert(at, 1, '\'');
                        }
                        values << "'" << text << "'";
                    } else {
                        values << *row[i];
                    }
                }
                EXPECT_EQ(db_.run("insert into " + target + "(" + fields.str() + ") values(" +
                                  values.str() + ")"),
                          "")
                    << target;
            }
        }
    }

    ScratchHome home_;
    Database db_{home_.file("SystemData.mdb").toStdString(), true};
};

TEST_F(AppDataSqlTexts, StartUpEmptiesTheWorkingTablesByTheirSpelling) {
    // Names are compared without regard to case: TmpAPData is tmpAPData.
    runAll({"Delete From tblIndex", "Delete From TmpAPData", "Delete From TmpFSInfoData",
            "Delete From TmpFSItemData", "Delete From TmpFSNoteData", "Delete From TmpFSCapitalRow",
            "Delete From TmpFSCapitalCol", "Delete From TmpOldFSInfoData",
            "Delete From TmpOldFSItemData", "Delete From TmpOldFSNoteData"});
}

TEST_F(AppDataSqlTexts, IntakeWritesTheApplicationIndexAndSettings) {
    runAll({
        // Application record: every [DocData] type code, then the keys.
        "Select Max(APDataCode) as APDataCode_MaxValue From tmpAPData",
        "insert into tmpAPData(ApplierColumnName,ApplierColumnAddress,ApplyDate,PrefCode1,"
        "ClasCtgr1,LcnsNum1A,LcnsNum1B,LcnsDate1,BaseDate,FYearCtgr1A,Distinction,TRName,"
        "Item01Single,Remarks,EnforceDate,MainDataCode,APDataCode) values('（株）北斗建設',"
        "'北海道札幌市中央区北一条西２丁目','2009-07-15',1,1,'01','012345','2005-06-01',"
        "'2009-03-31',1,1,'（株）北斗建設',23012,'',"
        "'2008-04-01',1001,1)",
        "Select APDataCode From tmpAPData Where MainDataCode=1001",
        "Select EnforceDate From tmpAPData Where MainDataCode=1001",
        // Period index from the linked sibling tables.
        "Select MainDataCode From T_MainData Where OtherSoftCode=1001",
        " Select * From T_FS  Where MainDataCode=3 Order By FYearNumber,FSDataCode",
        "Select Max(IndexID) as IndexID_MaxValue From tblIndex",
        "insert into tblIndex(ApplyerName,FYearNumber,FYearFrom,FYearTo,LinkCode,MainDataCode,"
        "DataType,IndexID) values('（株）北斗建設',40,'2008-04-01','2009-03-31',15,3,0,1)",
        "update tblWork set OldZaimuDataPath='',MainDataCode='1001',ExcelDataFolder='',"
        "NewZaimuDataPath='sample/',NewZaimuProgram=''",
    });
    EXPECT_EQ(number("Select MainDataCode From T_MainData Where OtherSoftCode=1001"), 3);
    const auto periods = rows(" Select FSDataCode From T_FS  Where MainDataCode=3 Order By FYearNumber,FSDataCode");
    ASSERT_EQ(periods.size(), 3u);
    EXPECT_EQ(periods.back().at(0), "15");
    EXPECT_EQ(number("SELECT COUNT(*) FROM tblWork"), 1);
    EXPECT_EQ(number("SELECT MainDataCode FROM tblWork"), 1001);
}

TEST_F(AppDataSqlTexts, MenuFillsItsListsAndStoresTheSelection) {
    runAll({
        "insert into tblIndex(ApplyerName,FYearNumber,FYearFrom,FYearTo,LinkCode,MainDataCode,"
        "DataType,IndexID) values('x',40,'2008-04-01','2009-03-31',15,3,0,1)",
        " Select * From tblIndex Order by FYearFrom Desc, FYearNumber Desc,IndexID Desc",
        "Select * From tblHantoku Order By HantokuID",
        "Select * From tblPref Order By PrefID",
        "Select * From tblService Order By SortNumber,ServiceID",
        "update tblIndex set PrintFlag=1 where IndexID=1",
    });
    EXPECT_EQ(rows(" Select * From tblIndex  Where PrintFlag=1  Order by FYearNumber Desc,IndexID Desc").size(),
              1u);
}

TEST_F(AppDataSqlTexts, PrintDriverCopiesAndRepairsAPeriod) {
    runAll({"Select NewZaimuProgram From tblWork", "Select * From TmpFSInfoData",
            "Select * From TmpFSCapitalCol"});
    copyPeriod(15);
    EXPECT_EQ(number("SELECT COUNT(*) FROM tmpFSItemData WHERE FSDataCode=1"),
              number("SELECT COUNT(*) FROM P_FSItemData WHERE FSDataCode=15"));
    EXPECT_EQ(number("SELECT TOTAL(ItemValue) FROM tmpFSItemData WHERE FSDataCode=1"),
              number("SELECT TOTAL(ItemValue) FROM P_FSItemData WHERE FSDataCode=15"));
    EXPECT_EQ(number("SELECT COUNT(*) FROM tmpFSCapitalRow WHERE FSDataCode=1"),
              number("SELECT COUNT(*) FROM T_FSCapitalRow WHERE FSDataCode=15"));
    EXPECT_EQ(number("SELECT COUNT(*) FROM tmpFSNoteData WHERE FSDataCode=1"), 1);

    runAll({
        // Special items from the period's header row.
        "Select Max(FSItemID) as FSItemID_MaxValue From tmpFSItemData",
        "Select NoteReceiptBillDiscount From tmpFSInfoData Where FSDataCode=1",
        "Select NoteReceiptBillGive From tmpFSInfoData Where FSDataCode=1",
        "Select AccumulatedDepreciation From tmpFSInfoData Where FSDataCode=1",
        "insert into tmpFSItemData(FSDataCode,FSItemID,ItemCode,ItemName,ItemValue) "
        "values(1,767,208,'受取手形割引高',12600000)",
        // Fixed-asset pairs.
        "Select ItemValue From tmpFSItemData Where FSDataCode=1 And ItemCode=22",
        "Select ItemValue From tmpFSItemData Where FSDataCode=1 And ItemCode=23",
        "update tmpFSItemData set ItemValue=5066144 where FSDataCode=1 And ItemCode=22",
        "update tmpFSItemData set ItemValue=0 where FSDataCode=1 And ItemCode=23",
        // Data of another program.
        "Select OtherSoftPrefCode From tmpFSInfoData Where FSDataCode=1",
        "Select Distinction From tmpFSInfoData Where FSDataCode=1",
        "update tmpFSItemData set NameChangeFlag=1 where FSDataCode=1 And FSItemID=508 And ItemValue<>0",
        "update tmpFSItemData set ItemCode=222,NameChangeFlag=1 where FSDataCode=1 And ItemCode=9 And ItemValue<>0",
        "Delete From tmpFSItemData Where FSDataCode=1 And ItemCode=16",
        "Select VersionNumber From tmpFSInfoData Where FSDataCode=1",
        // The side sheet test reads the sibling table itself.
        "Select CapitalSubFlag From T_FS Where FSDataCode=15",
        "Select * From M_FSDoc Order By SortNumber,DocCode",
    });
    EXPECT_EQ(db_.text("Select VersionNumber From tmpFSInfoData Where FSDataCode=1"),
              "Ledra:2.1.0.0(2.1.0)");
    EXPECT_EQ(number("Select CapitalSubFlag From T_FS Where FSDataCode=15"), 1);
}

TEST_F(AppDataSqlTexts, ChecksReadTheApplicationAndTheStatements) {
    copyPeriod(15);
    runAll({
        "insert into tmpAPData(TRName,BaseDate,EnforceDate,MainDataCode,APDataCode) "
        "values('（株）北斗建設','2009-03-31','2008-04-01',1001,1)",
        "Select * From tmpAPData Where APDataCode=1",
        "Select TRName From tmpAPData Where APDataCode=1",
        "Select BaseDate From tmpAPData Where APDataCode=1",
        // Statement checks.
        "Select Max(ItemCode) as ItemCode_MaxValue From M_FSItem",
        "Select EnforceDate From tmpFSInfoData Where FSDataCode=1",
        " Select * From tmpFSItemData  Where FSDataCode=1 Order By SortNumber",
        " Select * From tmpFSInfoData  Where FSDataCode=1",
        "Select ItemValue From tmpFSItemData Where (FSDataCode=1) AND (ItemCode=102)",
        "Select ItemValue From tmpFSItemData Where (FSDataCode=1) AND (ItemCode=99)",
        " Select * From tblFSCheckMaster  Where (TypeFlag_H=1) And (EnforceDate='2006-07-01') "
        "Order By SortNumber",
        " Select * From tblFSInvalidItemList  Where (Distinction=1) And (EnforceDate='2006-07-01')",
        // Problem report headers and the equity statement as items.
        "Select Distinction From tmpFSInfoData Where FSDataCode=1",
        "Select ApplyerName From tmpFSInfoData Where FSDataCode=1",
        "Select FYearNumber From tmpFSInfoData Where FSDataCode=1",
        "Select FYearFrom From tmpFSInfoData Where FSDataCode=1",
        "Select FYearTo From tmpFSInfoData Where FSDataCode=1",
        " Select * From tmpFSCapitalCol Where (FSDataCode = 1) AND (ItemCode<>-1) Order By ColNo",
        " Select * From tmpFSCapitalRow Where (FSDataCode = 1) AND (ItemType<>30) Order By RowNo",
        "insert into tmpFSItemData(FSDataCode,ItemCode,DocCode,ItemName,SortNumber,ItemValue) "
        "values(1,601,8,'Capital : 前期末残高',1,60000000)",
        " delete From tmpFSItemData Where (FSDataCode = 1) And (ItemCode>=600) And (ItemCode<800)",
    });
    // Sign checks: the sample's amounts keep the signs their master fixes.
    const std::string minus =
        " Select tmpFSItemData.FSDataCode as FSDataCode,  tmpFSItemData.ItemValue as ItemValue, "
        "tmpFSItemData.ItemCode as ItemCode,  tmpFSItemData.ItemName as ItemName,  "
        "M_FSItem.DocName as DocName From M_FSItem Inner Join tmpFSItemData On "
        "(M_FSItem.ItemCode = tmpFSItemData.ItemCode  AND ((M_FSItem.SortNumber_H) IS NULL) = 0) "
        "Where  (FSDataCode=1)  AND (ItemValue<0)  AND (M_FSItem.ItemValueType=0) AND "
        "(M_FSItem.EnforceDates Like '%20060701%') And (tmpFSItemData.ItemCode<10000) "
        "Order By SortNumber";
    const std::string plus =
        " Select tmpFSItemData.FSDataCode as FSDataCode,  tmpFSItemData.ItemValue as ItemValue, "
        "tmpFSItemData.ItemCode as ItemCode,  tmpFSItemData.ItemName as ItemName,  "
        "M_FSItem.EnforceDates as EnforceDate, M_FSItem.DocName as DocName From M_FSItem Inner "
        "Join tmpFSItemData On (M_FSItem.ItemCode = tmpFSItemData.ItemCode  AND "
        "((M_FSItem.SortNumber_H) IS NULL) = 0) Where  (FSDataCode=1)  AND (ItemValue>0)  AND "
        "(M_FSItem.ItemValueType=2) AND (M_FSItem.EnforceDates Like '%20060701%') And "
        "(tmpFSItemData.ItemCode<10000) Order By SortNumber";
    EXPECT_TRUE(rows(minus).empty());
    EXPECT_TRUE(rows(plus).empty());
    // The positive-only items are there to be tested: the join finds them.
    EXPECT_GT(number("SELECT COUNT(*) FROM M_FSItem Inner Join tmpFSItemData On "
                     "M_FSItem.ItemCode = tmpFSItemData.ItemCode WHERE M_FSItem.ItemValueType=0"),
              50);
    // Unsuitable item names: a renamed line joined with its statement name.
    const auto invalid = rows(
        "SELECT tblFSDocMaster06.DocName, M_FSItem.SectionName, M_FSItem.Segment1Name, "
        "M_FSItem.Segment2Name, M_FSItem.Segment3Name, tmpFSItemData.ItemName, "
        "tmpFSItemData.FSDataCode  FROM (tmpFSItemData INNER JOIN M_FSItem ON "
        "tmpFSItemData.ItemCode = M_FSItem.ItemCode) INNER JOIN tblFSDocMaster06 ON "
        "M_FSItem.DocCode = tblFSDocMaster06.DocCode  WHERE (tmpFSItemData.FSDataCode=1) AND "
        "((tmpFSItemData.DocCode=1 AND tmpFSItemData.ItemName='保険積立金')) AND "
        "(((M_FSItem.SortNumber_H) IS NULL)=0) Order By tmpFSItemData.SortNumber");
    ASSERT_EQ(invalid.size(), 1u);
    EXPECT_EQ(invalid[0][0], "貸借対照表");
    EXPECT_EQ(invalid[0][1], "資産の部");
    EXPECT_EQ(invalid[0][2], "投資その他の資産");
    EXPECT_EQ(invalid[0][3], "NV");
}

TEST_F(AppDataSqlTexts, PayloadsReadTheWorkingCopies) {
    copyPeriod(15);
    runAll({
        "insert into tmpAPData(EnforceDate,MainDataCode,APDataCode) values('2008-04-01',1001,1)",
        "Select * From tmpAPData Where APDataCode=1",
        "Select Distinction From tmpFSInfoData Where FSDataCode=1",
        "Select * From tmpFSCapitalCol Where FSDataCode=1",
        "Select * From tmpFSCapitalRow Where FSDataCode=1",
        "Select * From tmpFSNoteData Where FSDataCode=1",
        "Select FYearNumber From tmpFSInfoData Where FSDataCode=1",
        "Select * From tmpFSInfoData Where FSDataCode=1",
    });
    const auto amounts = rows(
        " Select * From tmpFSItemData  Where FSDataCode=1 And ItemCode<10000 And (ItemCode=159 Or "
        " ItemCode=162 Or  ItemCode=204 Or  ItemCode=207 Or  ItemCode=208 Or  NameChangeFlag=1 Or "
        " ItemValue<>0)  Order By ItemCode, SortNumber, FSItemID ");
    EXPECT_EQ(amounts.size(), number("SELECT COUNT(*) FROM tmpFSItemData WHERE FSDataCode=1 AND "
                                     "(ItemValue<>0 OR ItemCode IN (159,162))"));
    // Changed names: a corporation's renamed lines are all on its statements;
    // the individual filter hides the corporate-only ones among them.
    const auto renamedUnder = [&](const std::string& filter) {
        size_t count = 0;
        for (const auto& row : rows(
                 " SELECT tmpFSItemData.ItemCode, tmpFSItemData.ItemName, M_FSItem.ItemName, "
                 "tmpFSItemData.NameChangeFlag, tmpFSItemData.ItemValue FROM M_FSItem INNER JOIN "
                 "tmpFSItemData ON M_FSItem.ItemCode = tmpFSItemData.ItemCode WHERE "
                 "tmpFSItemData.FSDataCode=1" + filter +
                 " Order By tmpFSItemData.DocCode,tmpFSItemData.SortNumber")) {
            if (row.at(3) == "1") ++count;
        }
        return count;
    };
    const double renamed = number("SELECT COUNT(*) FROM tmpFSItemData WHERE FSDataCode=1 AND NameChangeFlag=1");
    EXPECT_GE(renamed, 1);
    EXPECT_EQ(renamedUnder(""), renamed);
    EXPECT_EQ(renamedUnder(" And M_FSItem.SortNumber_H Is Not Null "), renamed);
    EXPECT_LT(renamedUnder(" And M_FSItem.SortNumber_K Is Not Null "), renamed);
    // The notes row: the period's texts after FSDataCode, in table order.
    const auto notes = db_.columns("tmpFSNoteData");
    ASSERT_EQ(notes.size(), 14u);
    EXPECT_EQ(notes.front().name, "FSDataCode");
}

TEST_F(AppDataSqlTexts, PagesReadTheApplicationIndexAndSiblingTables) {
    runAll({
        "insert into tmpAPData(PrefCode1,EnforceDate,MainDataCode,APDataCode) "
        "values(13,'2008-04-01',1001,1)",
        "insert into tblIndex(ApplyerName,FYearNumber,FYearFrom,FYearTo,LinkCode,MainDataCode,"
        "DataType,IndexID) values('x',40,'2008-04-01','2009-03-31',15,3,0,1)",
        "Select * From tmpAPData Where APDataCode= 1",
        "Select * From tblIndex Where IndexID= 1",
        "Select EnforceDate From tmpFSInfoData Where FSDataCode=1",
        "Select EnforceDatesub From tmpFSInfoData Where FSDataCode=1",
        "Select * From T_FS Where FSDataCode=15",
    });
    // The governor's title on the application form.
    EXPECT_EQ(db_.text("Select PrefName From tblPref Where PrefID=13") + "知事", "東京都知事");
    EXPECT_EQ(db_.text("Select PrefName From tblPref Where PrefID=0") + "許可", "国土交通大臣許可");
    // The equity side sheet of the period with the sub flag.
    EXPECT_EQ(rows("Select * From T_FSCapitalCol Where FSDataCode=15 AND ItemCode IN(650,690,700)"
                   " Order By ColNo")
                  .size(),
              3u);
    EXPECT_EQ(rows("SELECT * FROM M_FSItemDetail WHERE FSItemID IN(89,90) ORDER BY ID ").size(), 6u);
    const auto details = rows(
        "Select FSItemDetailID, DataText From T_FSItemDetail WHERE FSDataCode = 15 AND "
        "FSItemID IN(89 ,90) ORDER BY FSItemDetailID");
    ASSERT_FALSE(details.empty());
    const auto sheetRows = rows("Select RowName From T_FSCapitalRow Where FSDataCode=15 Order By RowNo");
    ASSERT_FALSE(sheetRows.empty());
    EXPECT_LE(sheetRows.size(), 15u);
    // The indent of the side sheet runs from this heading to this total.
    bool heading = false, total = false;
    for (const auto& row : sheetRows) {
        heading = heading || row.at(0) == "当期変動額";
        total = total || row.at(0) == "当期変動額合計";
    }
    EXPECT_TRUE(heading);
    EXPECT_TRUE(total);
}

}  // namespace
}  // namespace kelvary::test::appdata
