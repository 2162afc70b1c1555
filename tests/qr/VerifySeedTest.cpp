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

// Each user ID must give its user part followed by a time between the
// moments before and after the call.
TEST(DocumentId, UserPartThenStartTime) {
    const struct {
        const char* userId;
        const char* userPart;
    } cases[] = {{"42", "00000042"},            // padded to eight digits
                 {"1234567890", "1234567890"},  // longer: every digit kept
                 {"", ""},                      // none: the time alone
                 {"AB12", "AB12"}};             // not a number: unchanged
    for (const auto& c : cases) {
        QrHome home;
        gWriteIniData(QStringLiteral("UserID"), Variant(QString::fromLatin1(c.userId)),
                      QStringLiteral("UserInfo"));
        const QString userPart = QString::fromLatin1(c.userPart);
        const QString before = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
        const QString id = mMakeVerifySeed();
        const QString after = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
        EXPECT_EQ(id.left(userPart.size()), userPart) << c.userId;
        const QString time = id.mid(userPart.size());
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]{14}$")).match(time).hasMatch())
            << id.toStdString();
        EXPECT_GE(time, before);
        EXPECT_LE(time, after);
    }
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
