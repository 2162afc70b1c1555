// The data access routines against small working databases made here: lookups
// with their defaults, statements refused or failing with their reports, values that must survive a round trip, a row copy driven by the
// source's field types, and linked tables re-pointed between sibling files.
#include "db/mdlFunctionDatabase.h"

#include "db/clsSqlText.h"
#include "platform/AppObject.h"
#include "platform/TestDatabase.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::makeDatabase;
using test::storedValue;
using test::writeFile;

const char* const kWorkingSchema =
    "CREATE TABLE tblIndex (IndexID INTEGER, ApplyerName TEXT, FYearNumber DOUBLE, FYearFrom DATETIME, "
    "PrintFlag BOOLEAN DEFAULT 0);"
    "CREATE TABLE tblWork (OldZaimuDataPath TEXT, MainDataCode INTEGER, ExcelDataFolder TEXT);"
    "INSERT INTO tblWork VALUES ('old', 5, NULL);"
    "CREATE TABLE tblLinkTable (TableName TEXT, DataSource TEXT);"
    "INSERT INTO tblLinkTable VALUES ('T_FS', 'Ledra_dummy.mdb');"
    "INSERT INTO tblLinkTable VALUES ('T_MainData', 'Ledra_dummy.mdb');";

const char* const kSiblingSchema =
    "CREATE TABLE T_FS (FSDataCode INTEGER, MainDataCode INTEGER, FYearNumber DOUBLE, "
    "FYearFrom DATETIME, ApplyerName TEXT, TaxFreeFlag BOOLEAN);"
    "CREATE TABLE T_MainData (MainDataCode INTEGER, OtherSoftCode INTEGER, ApplyerName TEXT);";

class DatabaseRoutines : public ::testing::Test {
protected:
    void SetUp() override {
        database = home.file(QStringLiteral("SystemData.mdb"));
        makeDatabase(database, kWorkingSchema);
        makeDatabase(home.file(QStringLiteral("Ledra_dummy.mdb")), kSiblingSchema);
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + database;
        gobjConnection = gobjOpenConnection();
        ASSERT_TRUE(gobjConnection);
    }
    void TearDown() override {
        gobjConnection.reset();
        gstrConnectionString.clear();
    }

    QStringList errorBoxes() {
        QStringList texts;
        for (const test::RecordedMessage& m : ui->messages)
            if (m.request.title == QStringLiteral("エラーが発生しました")) texts << m.request.text;
        return texts;
    }

    QString stored(const char* sql) const { return storedValue(database, sql); }

    test::ProgramFolder home{"[System]\r\nShowErrMsg=-1\r\n"};
    test::RecordingUiGuard ui;
    QString database;
};

TEST_F(DatabaseRoutines, GetDataDefaultOnlyWithoutARow) {
    ASSERT_TRUE(gblnExecuteSql(QStringLiteral("insert into tblIndex(IndexID,ApplyerName) values(1,null)")));
    ASSERT_TRUE(gblnExecuteSql(QStringLiteral("insert into tblIndex(IndexID,ApplyerName) values(2,'乙')")));
    const Variant noRow = gvarGetData(QStringLiteral("ApplyerName"), QStringLiteral("tblIndex"),
                                      QStringLiteral("IndexID=9"), Variant(QString()));
    EXPECT_EQ(noRow, Variant(QString()));
    const Variant nullField = gvarGetData(QStringLiteral("ApplyerName"), QStringLiteral("tblIndex"),
                                          QStringLiteral("IndexID=1"), Variant(QStringLiteral("default")));
    EXPECT_TRUE(nullField.isNull());
    EXPECT_EQ(gvarGetData(QStringLiteral("ApplyerName"), QStringLiteral("tblindex"), QStringLiteral("IndexID=2"),
                          Variant::fromLong(0)),
              Variant(QStringLiteral("乙")));
    // An empty condition reads the first row of the whole table.
    EXPECT_EQ(gvarGetData(QStringLiteral("MainDataCode"), QStringLiteral("tblWork"), QString(), Variant()),
              Variant::fromLong(5));
    EXPECT_TRUE(errorBoxes().isEmpty());
}

TEST_F(DatabaseRoutines, ExpressionsKeepJetMeaning) {
    // MainDataCode is 5: Jet divides integers to 2.5 and joins texts with &.
    EXPECT_EQ(gvarGetData(QStringLiteral("MainDataCode/2"), QStringLiteral("tblWork"), QString(), Variant()),
              Variant(2.5));
    EXPECT_EQ(gvarGetData(QStringLiteral("OldZaimuDataPath & '-' & MainDataCode"), QStringLiteral("tblWork"),
                          QString(), Variant()),
              Variant(QStringLiteral("old-5")));
    EXPECT_EQ(gvarGetData(QStringLiteral("MainDataCode"), QStringLiteral("tblWork"),
                          QStringLiteral("IsNull(ExcelDataFolder)=True And MainDataCode--1=6"), Variant()),
              Variant::fromLong(5));
}

TEST_F(DatabaseRoutines, MaxValueOfAnEmptyTableIsZero) {
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("tblIndex"), QString()), 0);
    for (const char* sql : {"insert into tblIndex(IndexID,FYearNumber) values(1,2.5)",
                            "insert into tblIndex(IndexID,FYearNumber) values(7,3.5)",
                            "insert into tblIndex(IndexID,FYearNumber) values(3,null)"})
        ASSERT_TRUE(gblnExecuteSql(QString::fromUtf8(sql)));
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("tblIndex"), QString()), 7);
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("tblIndex"), QStringLiteral("IndexID<5")), 3);
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("tblIndex"), QStringLiteral("IndexID>7")), 0);
    // A Double maximum is rounded as VB's CLng does: half to even.
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("FYearNumber"), QStringLiteral("tblIndex"), QStringLiteral("IndexID=1")), 2);
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("FYearNumber"), QStringLiteral("tblIndex"), QString()), 4);
    EXPECT_EQ(glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("NoSuchTable"), QString()), 0);
    ASSERT_EQ(errorBoxes().size(), 1);
    EXPECT_TRUE(errorBoxes()[0].contains(QStringLiteral("場所： glngGetMaxValue\r\n")));
}

TEST_F(DatabaseRoutines, FailedStatementReportsItsFirst255Characters) {
    const QString condition = QStringLiteral("ApplyerName='%1'").arg(QString(300, QChar(u'あ')));
    const QString sql = QStringLiteral("Delete From NoSuchTable Where ") + condition;
    EXPECT_FALSE(gblnExecuteSql(sql));
    ASSERT_EQ(errorBoxes().size(), 1);
    const QString kept = QStringLiteral("Delete From NoSuchTable Where ApplyerName='");
    const QString place = QStringLiteral("場所： gblnExecuteSql\r\n\r\nSQL文：") + kept +
                          QString(255 - kept.size(), QChar(u'あ')) + QStringLiteral("\r\n");
    EXPECT_TRUE(errorBoxes()[0].contains(place)) << errorBoxes()[0].toStdString();
    EXPECT_TRUE(errorBoxes()[0].endsWith(QStringLiteral("処理を中断します。")));
}

TEST_F(DatabaseRoutines, SecondStatementIsRefused) {
    ASSERT_TRUE(gblnExecuteSql(QStringLiteral("insert into tblIndex(IndexID) values(1)")));
    EXPECT_FALSE(gblnExecuteSql(QStringLiteral("Delete From tblIndex; Delete From tblWork")));
    EXPECT_EQ(stored("SELECT count(*) FROM tblIndex"), QStringLiteral("integer:1"));
    EXPECT_EQ(stored("SELECT count(*) FROM tblWork"), QStringLiteral("integer:1"));
    ASSERT_EQ(errorBoxes().size(), 1);
    EXPECT_TRUE(errorBoxes()[0].contains(QStringLiteral("SQL ステートメントの後に文字が見つかりました。")));
    // A closing ';' alone is one statement.
    EXPECT_TRUE(gblnExecuteSql(QStringLiteral("Delete From tblIndex;")));
}

TEST_F(DatabaseRoutines, RecordsetStaysWhileTheTableChanges) {
    for (const char* sql : {"insert into tblIndex(IndexID) values(1)", "insert into tblIndex(IndexID) values(2)"})
        ASSERT_TRUE(gblnExecuteSql(QString::fromUtf8(sql)));
    Recordset rs = gobjMakeRecordset(QStringLiteral("Select * From tblIndex Order By IndexID"));
    ASSERT_FALSE(rs.isNothing());
    long walked = 0;
    for (; !rs.eof(); rs.moveNext()) {
        ++walked;
        ASSERT_TRUE(gblnExecuteSql(QStringLiteral("Delete From tblIndex Where IndexID=") + rs[QStringLiteral("IndexID")].text()));
    }
    EXPECT_EQ(walked, 2);
    EXPECT_EQ(stored("SELECT count(*) FROM tblIndex"), QStringLiteral("integer:0"));
}

TEST_F(DatabaseRoutines, QuotesDatesAndBooleansRoundTrip) {
    clsSqlText sql;
    sql.SetData(QStringLiteral("IndexID"), Variant::fromLong(1), 0);
    sql.SetData(QStringLiteral("ApplyerName"), Variant(QStringLiteral("O'Brien建設")), 1);
    sql.SetData(QStringLiteral("FYearFrom"), Variant(QDate(2008, 4, 1)), 2);
    sql.SetData(QStringLiteral("PrintFlag"), Variant(true), 0);
    sql.SetTable(QStringLiteral("tblIndex"));
    ASSERT_TRUE(gblnExecuteSql(sql.GetInsertSql()));
    EXPECT_EQ(stored("SELECT ApplyerName FROM tblIndex"), QStringLiteral("text:O'Brien建設"));
    EXPECT_EQ(stored("SELECT FYearFrom FROM tblIndex"), QStringLiteral("text:2008-04-01"));
    EXPECT_EQ(stored("SELECT PrintFlag FROM tblIndex"), QStringLiteral("integer:1"));

    Recordset rs = gobjMakeRecordset(QStringLiteral(
        " Select * From tblIndex  Where PrintFlag=True And FYearFrom=#2008/04/01# And ApplyerName='O''Brien建設'"));
    ASSERT_EQ(rs.recordCount(), 1);
    EXPECT_EQ(rs[QStringLiteral("ApplyerName")], Variant(QStringLiteral("O'Brien建設")));
    EXPECT_EQ(rs[QStringLiteral("FYearFrom")], Variant(VbDate{QDate(2008, 4, 1), 0}));
    EXPECT_EQ(rs[QStringLiteral("PrintFlag")], Variant(true));

    clsSqlText update;
    update.SetData(QStringLiteral("PrintFlag"), Variant(false), 0);
    update.SetData(QStringLiteral("FYearFrom"), Variant(QString()), 2);
    update.SetTable(QStringLiteral("tblIndex"));
    update.SetWhere(QStringLiteral("IsNull(FYearNumber)"));
    ASSERT_TRUE(gblnExecuteSql(update.GetUpdateSql()));
    EXPECT_EQ(stored("SELECT PrintFlag FROM tblIndex"), QStringLiteral("integer:0"));
    EXPECT_EQ(stored("SELECT FYearFrom FROM tblIndex"), QStringLiteral("null:"));
    EXPECT_TRUE(errorBoxes().isEmpty());
}

TEST_F(DatabaseRoutines, RowCopyFollowsTheSourceFieldTypes) {
    makeDatabase(database,
                 "CREATE TABLE Src (Code INTEGER, Small SMALLINT, Amount DOUBLE, Price CURRENCY, "
                 "Made DATETIME, Flag BOOLEAN, Name TEXT, Note LONGTEXT, Ratio DECIMAL(10,2));"
                 "CREATE TABLE Dst (Code INTEGER, Small SMALLINT, Amount DOUBLE, Price CURRENCY, "
                 "Made DATETIME, Flag BOOLEAN, Name TEXT, Note LONGTEXT, Ratio DECIMAL(10,2));"
                 "INSERT INTO Src VALUES (42, 7, -1234.5, 99.5, '2007-03-31', 1, '山田''s', "
                 "'一行目\r\n二行目', 0.25);"
                 "INSERT INTO Src VALUES (NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);");
    for (Recordset src = gobjMakeRecordset(QStringLiteral("Select * From Src")); !src.eof(); src.moveNext()) {
        clsSqlText row;
        for (int i = 0; i < src.fieldCount(); ++i) {
            int fieldType = 3;
            row.SetData(src.fieldName(i), src.value(i), fieldType, src.fieldType(i));
        }
        row.SetTable(QStringLiteral("Dst"));
        ASSERT_TRUE(gblnExecuteSql(row.GetInsertSql())) << row.GetInsertSql().toStdString();
    }
    // The DECIMAL column has no field type the copy knows: one box per row.
    int unknownTypeBoxes = 0;
    for (const test::RecordedMessage& m : ui->messages)
        if (m.request.text.contains(QStringLiteral("不明なFieldTypeRatio(タイプ:131)"))) ++unknownTypeBoxes;
    EXPECT_EQ(unknownTypeBoxes, 2);
    EXPECT_TRUE(errorBoxes().isEmpty());
    EXPECT_EQ(stored("SELECT count(*) FROM Dst"), QStringLiteral("integer:2"));
    EXPECT_EQ(stored("SELECT count(*) FROM Src s JOIN Dst d ON s.Code = d.Code AND s.Small = d.Small "
                     "AND s.Amount = d.Amount AND s.Price = d.Price AND s.Made = d.Made AND s.Flag = d.Flag "
                     "AND s.Name = d.Name AND s.Note = d.Note"),
              QStringLiteral("integer:1"));
    EXPECT_EQ(stored("SELECT Ratio FROM Dst WHERE Code = 42"), QStringLiteral("real:0.25"));
    // Nulls stay Null, except that the text literal of Null is the empty text.
    EXPECT_EQ(stored("SELECT count(*) FROM Dst WHERE Code IS NULL AND Small IS NULL AND Amount IS NULL "
                     "AND Made IS NULL AND Flag IS NULL"),
              QStringLiteral("integer:1"));
    EXPECT_EQ(stored("SELECT Name FROM Dst WHERE Code IS NULL"), QStringLiteral("text:"));
}

TEST_F(DatabaseRoutines, OpenConnectionRefusesWhatItCannotRead) {
    const QString jet = home.file(QStringLiteral("Jet.mdb"));
    writeFile(jet, test::hexBytes("00 01 00 00 53 74 61 6E 64 61 72 64 20 4A 65 74 20 44 42 00") +
                       QByteArray(1024, '\0'));
    const QString strings[] = {
        QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + jet,
        QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + home.file(QStringLiteral("none.mdb")),
        QStringLiteral("provider=microsoft.jet.oledb.4.0"),
    };
    for (const QString& connectionString : strings) {
        gstrConnectionString = connectionString;
        EXPECT_FALSE(gobjOpenConnection()) << connectionString.toStdString();
    }
    ASSERT_EQ(errorBoxes().size(), 3);
    EXPECT_TRUE(errorBoxes()[0].contains(QStringLiteral("場所： gobjOpenConnection\r\n")));
    EXPECT_TRUE(errorBoxes()[0].contains(QStringLiteral("このプログラムで読み取れるデータベースではありません")));
    EXPECT_TRUE(errorBoxes()[0].endsWith(QStringLiteral("処理を続けます。")));
    EXPECT_TRUE(errorBoxes()[1].contains(QStringLiteral("見つかりません")));
    EXPECT_FALSE(QFile::exists(home.file(QStringLiteral("none.mdb"))));
}

class LinkedTables : public DatabaseRoutines {
protected:
    void SetUp() override {
        DatabaseRoutines::SetUp();
        ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("ledra data")));
        ledra = home.file(QStringLiteral("ledra data/Ledra.mdb"));
        makeDatabase(ledra, kSiblingSchema);
        makeDatabase(ledra,
                     "INSERT INTO T_FS VALUES (31, 7, 12, '2007-04-01', '甲建設', 1);"
                     "INSERT INTO T_FS VALUES (32, 7, 13, '2008-04-01', '甲建設', 0);"
                     "INSERT INTO T_MainData VALUES (7, 1001, '甲建設');");
    }
    QString periods() {
        QString text;
        for (Recordset rs = gobjMakeRecordset(QStringLiteral("Select * From T_FS Order By FYearNumber Desc"));
             !rs.eof(); rs.moveNext())
            text += rs[QStringLiteral("FSDataCode")].text() + QLatin1Char(';');
        return text;
    }
    QString ledra;
};

TEST_F(LinkedTables, RepointingReadsTheNewFileAndIsKept) {
    EXPECT_FALSE(gRefreshLinkTable(QStringLiteral("T_FS"), ledra));
    EXPECT_FALSE(gRefreshLinkTable(QStringLiteral("T_MainData"), ledra));
    EXPECT_TRUE(errorBoxes().isEmpty());
    EXPECT_EQ(periods(), QStringLiteral("32;31;"));
    EXPECT_EQ(gvarGetData(QStringLiteral("MainDataCode"), QStringLiteral("T_MainData"),
                          QStringLiteral("OtherSoftCode=1001"), Variant::fromLong(0)),
              Variant::fromLong(7));
    Recordset rs = gobjMakeRecordset(QStringLiteral("Select * From T_FS Where TaxFreeFlag=True"));
    ASSERT_EQ(rs.recordCount(), 1);
    EXPECT_EQ(rs[QStringLiteral("FYearFrom")], Variant(VbDate{QDate(2007, 4, 1), 0}));
    EXPECT_EQ(stored("SELECT DataSource FROM tblLinkTable WHERE TableName='T_FS'"),
              QStringLiteral("text:") + ledra);

    // A new connection finds the links where the last run left them.
    gobjConnection = gobjOpenConnection();
    ASSERT_TRUE(gobjConnection);
    EXPECT_EQ(periods(), QStringLiteral("32;31;"));

    // And back to the dummy beside the program.
    gRefreshLinkTable(QStringLiteral("T_FS"), home.file(QStringLiteral("Ledra_dummy.mdb")));
    EXPECT_EQ(periods(), QString());
}

}  // namespace
}  // namespace kelvary
