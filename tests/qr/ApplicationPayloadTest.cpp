// The application's symbols (ApplyHeader, ApplyDoc1, ApplyDoc2) from a
// tmpAPData row, compared as whole texts with the payloads of tests/data/qr.
#include "qr/clsQRCode_200804.h"

#include "QrHome.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::expectedPayload;
using test::QrHome;

const QString kId = QStringLiteral("0000004220081105143012");

class ApplicationData : public ::testing::Test {
protected:
    void insertApplication() { home.execFile(QStringLiteral("qr/Application.sql")); }
    // A table changed from outside is seen as changed by a new connection.
    static void reopen() { gobjConnection = gobjOpenConnection(); }
    void makeApplication(std::int32_t code) {
        clsQRCode_200804 qr;
        qr.setVerifyID(kId);
        qr.MakeAPData(code);
    }
    QrHome home;
};

TEST_F(ApplicationData, HeaderWithAndWithoutAgentAndPeriods) {
    {
        clsQRCode_200804 qr;
        qr.setVerifyID(kId);
        qr.setCourseNumber(3);
        qr.setProxy(true);
        qr.setSendResult(true);
        qr.MakeHeader(2);  // three periods selected
    }
    EXPECT_EQ(home.payload(QStringLiteral("ApplyHeader")),
              expectedPayload(QStringLiteral("ApplyHeader_agent")));
    clsQRCode_200804 qr;
    qr.setVerifyID(QStringLiteral("20081105143012"));
    qr.setCourseNumber(1);
    qr.setProxy(false);
    qr.setSendResult(false);
    qr.MakeHeader(-1);  // none selected
    EXPECT_EQ(home.payload(QStringLiteral("ApplyHeader")),
              expectedPayload(QStringLiteral("ApplyHeader_own")));
}

TEST_F(ApplicationData, BothSymbolsRecordByRecord) {
    insertApplication();
    makeApplication(5);
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc1")), expectedPayload(QStringLiteral("ApplyDoc1")));
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc2")), expectedPayload(QStringLiteral("ApplyDoc2")));
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(ApplicationData, MissingColumnAndYesLeavesOnlyThatRecordOut) {
    insertApplication();
    // A working table from an older data file, without the last column.
    home.exec(QStringLiteral("ALTER TABLE tmpAPData RENAME COLUMN Item03 TO Item03Old"));
    reopen();
    home.ui().yesNoAnswer = MsgAnswer::Yes;
    makeApplication(5);
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mMakeQRCodeAPData")});
    QByteArray withoutLast = expectedPayload(QStringLiteral("ApplyDoc2"));
    withoutLast.chop(QByteArray("51,\"77\"\r\n").size());
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc2")), withoutLast);
}

}  // namespace
}  // namespace kelvary
