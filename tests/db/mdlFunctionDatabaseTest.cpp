// The data access routines against small working databases made here: Jet
// expressions, statements refused, and connections that cannot be opened.
#include "db/mdlFunctionDatabase.h"

#include "db/clsSqlText.h"
#include "platform/AppObject.h"
#include "support/ConnectedHome.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::sqlExec;
using test::storedValue;
using test::writeFile;

const char* const kSiblingSchema =
    "CREATE TABLE T_FS (FSDataCode INTEGER, MainDataCode INTEGER, FYearNumber DOUBLE, "
    "FYearFrom DATETIME, ApplyerName TEXT, TaxFreeFlag BOOLEAN);"
    "CREATE TABLE T_MainData (MainDataCode INTEGER, OtherSoftCode INTEGER, ApplyerName TEXT);";

class DatabaseRoutines : public ::testing::Test {
protected:
    void SetUp() override {
        database = home.file(QStringLiteral("SystemData.mdb"));
        test::sqlExecFile(database, QStringLiteral("db/Routines.sql"));
        sqlExec(home.file(QStringLiteral("Ledra_dummy.mdb")), kSiblingSchema);
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

}  // namespace
}  // namespace kelvary
