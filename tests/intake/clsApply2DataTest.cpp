// Reading the application data file into tmpAPData, UserData.ini and the two
// agent flags: the three value types, the settings in CP932, and damaged
// files and column names, which must be refused before any SQL runs; and the
// sequential file reader beneath it.
#include "intake/clsApply2Data.h"
#include "platform/SequentialInput.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include "IntakeHome.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::hexBytes;
using test::IntakeHome;

const QByteArray kBasicInfo = "\"[BasicInfo]\"\r\n"
                              "\"ApplyDataID\",77\r\n"
                              "\"ZaimuDataPath\",\"old\\data\\\"\r\n"
                              "\"[End]\",\"\"\r\n";

// 佐藤 (8d b2 93 a1) as the user's name.
const QByteArray kUserInfo = "\"[UserInfo]\"\r\n"
                             "\"UserName\",\"" + hexBytes("8d b2 93 a1") + "\",\"\"\r\n"
                             "\"UserFax\",#NULL#,\"\"\r\n"
                             "\"UserID\",\"1234\",\"\"\r\n"
                             "\"[End]\",\"\",\"\"\r\n";

QByteArray docData(const QByteArray& records) {
    return "\"[DocData]\"\r\n" + records + "\"[End]\"\r\n";
}

class Apply2DataTest : public ::testing::Test {
protected:
    std::int32_t load(const QByteArray& bytes) {
        return clsApply2Data().LoadData(home.write(QStringLiteral("app.dat"), bytes));
    }
    QStringList apData(const char* columns) {
        return home.rows(QStringLiteral("SELECT ") + QLatin1String(columns) +
                         QStringLiteral(" FROM tmpAPData ORDER BY APDataCode"));
    }

    IntakeHome home;
};

TEST_F(Apply2DataTest, WritesOneRowWithTypedValuesAndTheDefaultEdition) {
    const QByteArray records =
        "\"ApplierColumnName\",\"O'Brien" + hexBytes("8c 9a 90 dd") + "\",2\r\n"  // O'Brien建設
        "\"ApplyDate\",#2008-04-01#,3\r\n"
        "\"LcnsDate1\",\"2007/10/05\",3\r\n"
        "\"PrefCode1\",13,1\r\n"
        "\"LcnsNum1B\",4321,2\r\n"
        "\"FType\",1,9\r\n"          // an unknown type code is a number
        "\"Item01Single\",\"\",1\r\n"  // an empty number is null
        "\"BaseDate\",\"\",3\r\n";     // an empty date is null
    EXPECT_EQ(load(kBasicInfo + kUserInfo + docData(records)), 77);
    EXPECT_EQ(home.errorPlaces(), QStringList());
    EXPECT_EQ(apData("APDataCode, MainDataCode, EnforceDate, ApplierColumnName, ApplyDate, LcnsDate1, "
                     "typeof(PrefCode1), PrefCode1, typeof(LcnsNum1B), LcnsNum1B, FType, Item01Single, "
                     "BaseDate"),
              QStringList{QStringLiteral("1|77|2004-03-01|O'Brien建設|2008-04-01|2007-10-05|integer|13|"
                                         "text|4321|1|NULL|NULL")});
}

TEST_F(Apply2DataTest, UserInfoGoesToTheSettingsFileInCp932) {
    // A key the section does not know is named, and not written.
    QByteArray userInfo = kUserInfo;
    userInfo.replace("\"[End]\"", "\"Unknown\",\"ignored\",\"\"\r\n\"[End]\"");
    load(kBasicInfo + userInfo);
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mLoadUserInfo")});
    const QByteArray ini = home.read(QStringLiteral("UserData.ini"));
    EXPECT_TRUE(ini.contains("UserName=" + hexBytes("8d b2 93 a1") + "\r\n")) << ini.toStdString();
    EXPECT_TRUE(ini.contains("UserID=1234\r\n"));
    EXPECT_TRUE(ini.contains("UserFax=\r\n"));  // Null is written as an empty text
    EXPECT_FALSE(ini.contains("Unknown"));
}

TEST_F(Apply2DataTest, TruncatedDocDataCostsTheRowButNotTheUserInfo) {
    load(kBasicInfo + kUserInfo + "\"[DocData]\"\r\n\"TRName\",\"A\",2\r\n\"ContactTel\"");
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mLoadAPData")});
    EXPECT_EQ(apData("*"), QStringList());
    EXPECT_TRUE(home.read(QStringLiteral("UserData.ini")).contains("UserID=1234\r\n"));
}

// The records of tests/data/intake/RefusedRecords.tsv, each reported once
// where it is refused; the row is not written and no statement ran.
TEST_F(Apply2DataTest, RefusedRecordsAreNamedBeforeAnySql) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("intake/RefusedRecords.tsv"));
    ASSERT_EQ(rows.size(), 9);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        SCOPED_TRACE("RefusedRecords.tsv line " + row[0].toStdString());
        home.ui().messages.clear();
        load(kBasicInfo + docData("\"TRName\",\"A\",2\r\n" + row[1].toLatin1() + "\r\n"));
        EXPECT_EQ(home.errorPlaces(), QStringList{row[2]});
        EXPECT_TRUE(home.messageTexts().contains(row[3])) << home.messageTexts().toStdString();
        EXPECT_EQ(apData("*"), QStringList());
        EXPECT_EQ(home.rows(QStringLiteral("SELECT COUNT(*) FROM tblWork")), QStringList{QStringLiteral("1")});
    }
}

TEST_F(Apply2DataTest, NumbersAsAJapaneseInputMethodTypesThem) {
    // １２ (82 50 82 51) is 12; a field of one full-width space (81 40) holds nothing.
    load(kBasicInfo + docData("\"PrefCode1\",\"" + hexBytes("82 50 82 51") + "\",1\r\n"
                              "\"ClasCtgr1\",\"" + hexBytes("81 40") + "\",1\r\n"
                              "\"LcnsDate1\",\"" + hexBytes("81 40 81 40") + "\",3\r\n"
                              "\"FType\",\" -1,000 \",1\r\n"));
    EXPECT_EQ(home.errorPlaces(), QStringList());
    EXPECT_EQ(apData("typeof(PrefCode1), PrefCode1, ClasCtgr1, LcnsDate1, FType"),
              QStringList{QStringLiteral("integer|12|NULL|NULL|-1000")});
}

// The reader of VB's sequential text files, fed with byte sequences written
// out by hand: CP932 Japanese (including trail bytes that look like ASCII
// signs), quoted texts, the end of the file, and the files it must refuse.
class SequentialInputTest : public ::testing::Test {
protected:
    QString write(const QByteArray& bytes) {
        const QString path = dir_.filePath(QStringLiteral("app%1.dat").arg(++count_));
        test::writeFile(path, bytes);
        return path;
    }

    QTemporaryDir dir_;
    int count_ = 0;
};

TEST_F(SequentialInputTest, QuotedTextKeepsCommasAndLineBreaks) {
    SequentialInput in(write("\"a,b\r\nc\",\"\"\r\n"));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("a,b\r\nc")));
    const Variant empty = in.input();
    EXPECT_EQ(empty.type(), VarType::String);  // "" is an empty text, not Empty
    EXPECT_TRUE(in.eof());
}

TEST_F(SequentialInputTest, ReadingPastTheEndRaises62) {
    SequentialInput in(write("\"[End]\""));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("[End]")));
    EXPECT_TRUE(in.eof());
    EXPECT_EQ(test::raised([&] { in.input(); }).number, 62);
    EXPECT_EQ(test::raised([&] { in.lineInput(); }).number, 62);

    // A text whose closing quote never comes meets the end of the file too.
    SequentialInput cut(write("\"ApplierColumnName\",\"cut off here\r\n"));
    EXPECT_EQ(cut.input(), Variant(QStringLiteral("ApplierColumnName")));
    EXPECT_EQ(test::raised([&] { cut.input(); }).number, 62);
}

TEST_F(SequentialInputTest, Cp932TextIncludingTrailBytesThatLookLikeSigns) {
    // ソフト,表 with the trail byte 0x5C (a backslash in ASCII) in ソ and 表,
    // then the wave dash 81 60, which CP932 maps to U+FF5E (Shift_JIS: U+301C).
    SequentialInput in(write(hexBytes("22 83 5c 83 74 83 67 2c 95 5c 22 2c 81 60 0d 0a")));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("ソフト,表")));
    EXPECT_EQ(in.input(), Variant(QString(QChar(0xFF5E))));
}

// The files of tests/data/intake/RefusedFiles.tsv.
TEST_F(SequentialInputTest, EmptyBinaryCutAndForeignFilesAreRefused) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("intake/RefusedFiles.tsv"));
    ASSERT_EQ(rows.size(), 6);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        const QString file = write(hexBytes(row[1].toLatin1().constData()));
        const test::Raised e = test::raised([&] { SequentialInput input(file); });
        EXPECT_EQ(e.number, row[2].toLong()) << "line " << row[0].toStdString();
        EXPECT_TRUE(e.description.contains(row[3])) << e.description.toStdString();
    }
}

}  // namespace
}  // namespace kelvary
