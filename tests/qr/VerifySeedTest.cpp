// The document ID of a run: the user ID from UserData.ini as eight digits,
// then the start time to the second, as every QR header carries it.
#include "print/clsPrintMain_200804.h"
#include "qr/clsQRCode_200804.h"

#include "QrHome.h"
#include "startup/mdlFunctionStandard.h"

#include <QDateTime>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::QrHome;

// The ID made with the given user ID must be that user part followed by a
// time between the moments before and after the call.
void expectSeed(const QString& userId, const QString& userPart) {
    QrHome home;
    gWriteIniData(QStringLiteral("UserID"), Variant(userId), QStringLiteral("UserInfo"));
    const QString before = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
    const QString id = mMakeVerifySeed();
    const QString after = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
    ASSERT_EQ(id.size(), userPart.size() + 14) << id.toStdString();
    EXPECT_EQ(id.left(userPart.size()), userPart);
    const QString time = id.mid(userPart.size());
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]{14}$")).match(time).hasMatch());
    EXPECT_GE(time, before);
    EXPECT_LE(time, after);
}

TEST(DocumentId, UserPartPaddedToEightDigits) {
    expectSeed(QStringLiteral("42"), QStringLiteral("00000042"));
}

TEST(DocumentId, LongerUserIdKeepsAllItsDigits) {
    expectSeed(QStringLiteral("1234567890"), QStringLiteral("1234567890"));
}

TEST(DocumentId, EmptyUserIdLeavesTheTimeAlone) {
    expectSeed(QString(), QString());
}

TEST(DocumentId, NonNumericUserIdIsTakenUnchanged) {
    expectSeed(QStringLiteral("AB12"), QStringLiteral("AB12"));
}

TEST(DocumentId, EveryHeaderCarriesItUnchanged) {
    QrHome home;
    home.exec(QStringLiteral("INSERT INTO tmpFSInfoData (FSDataCode, Distinction) VALUES (1, 1)"));
    clsQRCode_200804 qr;
    qr.setVerifyID(QStringLiteral("0000004220081105143012"));
    qr.MakeHeader(0);
    qr.MakeFSData(0, 1);
    for (const QString& symbol :
         {QStringLiteral("ApplyHeader"), QStringLiteral("CapitalHeader0"), QStringLiteral("ZaimuHeader0")}) {
        const QByteArray text = home.payload(symbol);
        EXPECT_TRUE(text.startsWith("\"[" + symbol.toLatin1() + "]\",\"0000004220081105143012\","))
            << text.constData();
    }
    EXPECT_TRUE(home.payload(QStringLiteral("ApplyHeader")).contains("\r\n1,\"0000004220081105143012\"\r\n"));
}

}  // namespace
}  // namespace kelvary
