// Reading the application data file into tmpAPData, UserData.ini and the two
// agent flags: the three value types, the settings in CP932, and damaged
// files and column names, which must be refused before any SQL runs.
#include "intake/clsApply2Data.h"

#include "IntakeHome.h"

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

struct BadColumnName {
    const char* hex;  // the name's bytes in the file
    const char16_t* shown;  // as the report names it
};

void PrintTo(const BadColumnName& name, std::ostream* os) { *os << '[' << name.hex << ']'; }

class BadColumnNameTest : public Apply2DataTest, public ::testing::WithParamInterface<BadColumnName> {};

TEST_P(BadColumnNameTest, IsRefusedBeforeAnySql) {
    load(kBasicInfo + docData("\"TRName\",\"A\",2\r\n\"" + hexBytes(GetParam().hex) + "\",1,1\r\n"));
    // Refused by the reader itself: no statement ran, so none failed.
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mLoadAPData")});
    const QString named = QStringLiteral("項目名「") + QString::fromUtf16(GetParam().shown) + QStringLiteral("」");
    EXPECT_TRUE(home.messageTexts().contains(named)) << home.messageTexts().toStdString();
    EXPECT_EQ(apData("*"), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Names, BadColumnNameTest,
    ::testing::Values(BadColumnName{"41 29 20 76 61 6c 75 65 73 28 31 29 3b 2d 2d", u"A) values(1);--"},
                      BadColumnName{"58 3b 44 52 4f 50 20 54 41 42 4c 45 20 74 62 6c 57 6f 72 6b",
                                    u"X;DROP TABLE tblWork"},
                      BadColumnName{"4e 61 6d 65 20 4b 61 6e 61", u"Name Kana"},
                      BadColumnName{"", u""}));

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

TEST_F(Apply2DataTest, ValuesThatAreNotNumbersOrDatesAreRefusedWithTableColumnAndValue) {
    struct Case {
        QByteArray record;
        QString message;
    };
    const Case cases[] = {
        {"\"PrefCode1\",\"13); DELETE FROM tblWork; --\",1",
         QStringLiteral("テーブル「tmpAPData」の項目「PrefCode1」の値「13); DELETE FROM tblWork; --」は数値として読めません。")},
        {"\"PrefCode1\",\"1+1\",1", QStringLiteral("の項目「PrefCode1」の値「1+1」は数値として読めません。")},
        {"\"ClasCtgr1\",\"(select max(APDataCode) from tmpAPData)\",1",
         QStringLiteral("の項目「ClasCtgr1」の値「(select max(APDataCode) from tmpAPData)」は数値として読めません。")},
        {"\"FType\",\"1e999\",1", QStringLiteral("の項目「FType」の値「1e999」は数値として読めません。")},
        {"\"ApplyDate\",\"2008/04/01# or 1=1 --\",3",
         QStringLiteral("テーブル「tmpAPData」の項目「ApplyDate」の値「2008/04/01# or 1=1 --」は日付として読めません。")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.record.toStdString());
        home.ui().messages.clear();
        load(kBasicInfo + docData("\"TRName\",\"A\",2\r\n" + c.record + "\r\n"));
        // Reported once, where the statement would have been built; nothing ran.
        EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("GetInsertSql")});
        EXPECT_TRUE(home.messageTexts().contains(c.message)) << home.messageTexts().toStdString();
        EXPECT_EQ(apData("*"), QStringList());
        EXPECT_EQ(home.rows(QStringLiteral("SELECT COUNT(*) FROM tblWork")), QStringList{QStringLiteral("1")});
    }
}

}  // namespace
}  // namespace kelvary
