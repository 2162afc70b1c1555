// The application's symbols (ApplyHeader, ApplyDoc1, ApplyDoc2) from a
// tmpAPData row, compared as whole texts with payloads written out by hand.
#include "qr/clsQRCode_200804.h"

#include "BuildInfo.h"
#include "QrHome.h"
#include "platform/Cp932.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::QrHome;

const QString kId = QStringLiteral("0000004220081105143012");

// The program's version as the header records write it: "major. minor. revision".
QString version() {
    return QStringLiteral("%1. %2. %3")
        .arg(build::VersionMajor)
        .arg(build::VersionMinor)
        .arg(build::VersionPatch);
}

QByteArray bytes(const QString& text) {
    return cp932Encode(text);
}

TEST(ApplyHeaderPayload, AgentWithResultNoticeAndThreePeriods) {
    QrHome home;
    clsQRCode_200804 qr;
    qr.setVerifyID(kId);
    qr.setCourseNumber(3);
    qr.setProxy(true);
    qr.setSendResult(true);
    qr.MakeHeader(2);
    EXPECT_EQ(home.payload(QStringLiteral("ApplyHeader")),
              bytes(QStringLiteral("\"[ApplyHeader]\",\"0000004220081105143012\",7,2\r\n"
                                   "1,\"0000004220081105143012\"\r\n"
                                   "2,\"") +
                    version() +
                    QStringLiteral("\"\r\n"
                                   "3,\"2\"\r\n"
                                   "4,\"1\"\r\n"
                                   "5,\"3\"\r\n"
                                   "6,\"-1\"\r\n"
                                   "7,\"-1\"\r\n")));
    EXPECT_EQ(test::zbarDecode(home.temp(QStringLiteral("ApplyHeader.bmp"))),
              home.payload(QStringLiteral("ApplyHeader")));
}

TEST(ApplyHeaderPayload, OwnApplicationWithoutPeriods) {
    QrHome home;
    clsQRCode_200804 qr;
    qr.setVerifyID(QStringLiteral("20081105143012"));
    qr.setCourseNumber(1);
    qr.setProxy(false);
    qr.setSendResult(false);
    qr.MakeHeader(-1);
    EXPECT_EQ(home.payload(QStringLiteral("ApplyHeader")),
              bytes(QStringLiteral("\"[ApplyHeader]\",\"20081105143012\",7,2\r\n"
                                   "1,\"20081105143012\"\r\n"
                                   "2,\"") +
                    version() +
                    QStringLiteral("\"\r\n"
                                   "3,\"-1\"\r\n"
                                   "4,\"1\"\r\n"
                                   "5,\"1\"\r\n"
                                   "6,\"0\"\r\n"
                                   "7,\"0\"\r\n")));
}

class ApplicationData : public ::testing::Test {
protected:
    void insertApplication() {
        home.exec(QStringLiteral(
            "INSERT INTO tmpAPData (APDataCode, MainDataCode, EnforceDate, ApplierColumnName, "
            "ApplierColumnAddress,"
            " ApplierColumnPresident, ContactPosition, ContactName, ContactTel, ContactFax, ApplyDate,"
            " PrefCode1, ClasCtgr1, LcnsNum1A, LcnsNum1B, LcnsDate1, PrefCode2, ClasCtgr2, LcnsNum2A, "
            "LcnsNum2B,"
            " LcnsDate2, BaseDate, FYearFrom1, FYearTo1, FYearCtgr1A, FYearCtgr1B, FYearFrom2, FYearTo2,"
            " FYearCtgr2A, FYearCtgr2B, FYearFrom3, FYearTo3, FYearCtgr3A, FYearCtgr3B, Distinction, LastApl,"
            " FCObgt1, FCObgt2, TRNameKana, TRName, PSNameKana, PSName, OfficeCityCode, OfficeAddr,"
            " OfficeZipCode, OfficeTel, Item01Single, Item01Plural, Item02Single, Item02Plural, Item03,"
            " Remarks, FType) VALUES ("
            "5, 9, '2008-04-01', 'ABC,1', 'Tokyo \"1-2\"', '代表 太郎', '経理部長', '山田,花子', "
            "'03-1234-5678',"
            " NULL, '2008-11-05',"
            " 13, 1, '7', '4321', '2006-03-31', 0, 3, NULL, 'AB',"
            " '2001-04-01', '2008-03-31', '2007-04-01', '2008-03-31', 1, 0, '2006-04-01', '2007-03-31',"
            " 1, 1, NULL, NULL, 0, NULL, 1, 2,"
            " 10, 0, 'ｱｲｳ', '株式会社ＡＢＣ', 'ﾔﾏﾀ', '山田', '13101', '千代田区1-1',"
            " '100-0001', '03-0000-0000', 1234, 0, -5.5, 1000000, 77,"
            " 'line1' || char(13) || char(10) || 'line2', 2)"));
    }
    // A table changed from outside is seen as changed by a new connection.
    static void reopen() { gobjConnection = gobjOpenConnection(); }
    QrHome home;
};

TEST_F(ApplicationData, BothSymbolsRecordByRecord) {
    insertApplication();
    clsQRCode_200804 qr;
    qr.setVerifyID(kId);
    qr.MakeAPData(5);
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc1")),
              bytes(QStringLiteral("\"[ApplyDoc1]\",\"0000004220081105143012\",7,2\r\n"
                                   "1,\"ＡＢＣ，１\"\r\n"
                                   "2,\"Ｔｏｋｙｏ　＂１－２＂\"\r\n"
                                   "3,\"代表 太郎\"\r\n"
                                   "4,\"経理部長\"\r\n"
                                   "5,\"山田.花子\"\r\n"
                                   "6,\"03-1234-5678\"\r\n"
                                   "7,\"\"\r\n")));
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc2")),
              bytes(QStringLiteral("\"[ApplyDoc2]\",\"0000004220081105143012\",44,2\r\n"
                                   "8,\"2008/11/05\"\r\n"
                                   "9,\"13\"\r\n"
                                   "10,\"1\"\r\n"
                                   "11,\"07\"\r\n"
                                   "12,\"004321\"\r\n"
                                   "13,\"2006/03/31\"\r\n"
                                   "14,\"0\"\r\n"
                                   "15,\"3\"\r\n"
                                   "16,\"\"\r\n"
                                   "17,\"AB\"\r\n"
                                   "18,\"2001/04/01\"\r\n"
                                   "19,\"2008/03/31\"\r\n"
                                   "20,\"2007/04/01\"\r\n"
                                   "21,\"2008/03/31\"\r\n"
                                   "22,\"1\"\r\n"
                                   "23,\"0\"\r\n"
                                   "24,\"2006/04/01\"\r\n"
                                   "25,\"2007/03/31\"\r\n"
                                   "26,\"1\"\r\n"
                                   "27,\"1\"\r\n"
                                   "28,\"\"\r\n"
                                   "29,\"\"\r\n"
                                   "30,\"0\"\r\n"
                                   "31,\"\"\r\n"
                                   "32,\"1\"\r\n"
                                   "33,\"2\"\r\n"
                                   "34,\"10\"\r\n"
                                   "35,\"0\"\r\n"
                                   "36,\"アイウ\"\r\n"
                                   "37,\"株式会社ＡＢＣ\"\r\n"
                                   "38,\"ヤマタ\"\r\n"
                                   "39,\"山田\"\r\n"
                                   "40,\"13101\"\r\n"
                                   "41,\"千代田区１－１\"\r\n"
                                   "42,\"100-0001\"\r\n"
                                   "43,\"03-0000-0000\"\r\n"
                                   "44,\"1234\"\r\n"
                                   "45,\"0\"\r\n"
                                   "46,\"-5.5\"\r\n"
                                   "47,\"1000000\"\r\n"
                                   "48,\"line1\tline2\"\r\n"
                                   "49,\"2008/04/01\"\r\n"
                                   "50,\"2\"\r\n"
                                   "51,\"77\"\r\n")));
    for (const QString& name : {QStringLiteral("ApplyDoc1"), QStringLiteral("ApplyDoc2")})
        EXPECT_EQ(test::zbarDecode(home.temp(name + QStringLiteral(".bmp"))), home.payload(name))
            << name.toStdString();
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(ApplicationData, NoRowForTheCodeMakesNoSymbolAndNoMessage) {
    insertApplication();
    clsQRCode_200804 qr;
    qr.setVerifyID(kId);
    qr.MakeAPData(6);
    EXPECT_TRUE(home.tempFiles().isEmpty());
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(ApplicationData, MissingColumnAsksAndYesLeavesOnlyThatRecordOut) {
    insertApplication();
    // A working table from an older data file, without the last column.
    home.exec(QStringLiteral("ALTER TABLE tmpAPData RENAME COLUMN Item03 TO Item03Old"));
    reopen();
    home.ui().yesNoAnswer = MsgAnswer::Yes;
    clsQRCode_200804 qr;
    qr.setVerifyID(kId);
    qr.MakeAPData(5);
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mMakeQRCodeAPData")});
    const QByteArray doc2 = home.payload(QStringLiteral("ApplyDoc2"));
    EXPECT_TRUE(doc2.startsWith("\"[ApplyDoc2]\",\"0000004220081105143012\",44,2\r\n8,\"2008/11/05\"\r\n"));
    EXPECT_TRUE(doc2.endsWith("\r\n49,\"2008/04/01\"\r\n50,\"2\"\r\n"));
}

TEST_F(ApplicationData, MissingColumnAndNoEndsBeforeTheSymbol) {
    insertApplication();
    home.exec(QStringLiteral("ALTER TABLE tmpAPData RENAME COLUMN ContactFax TO ContactFaxOld"));
    reopen();
    clsQRCode_200804 qr;
    qr.setVerifyID(kId);
    qr.MakeAPData(5);
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mMakeQRCodeAPData")});
    // Only the error log: no symbol of the application.
    EXPECT_EQ(home.tempFiles(), QStringList{QStringLiteral("kelvary.log")});
}

}  // namespace
}  // namespace kelvary
