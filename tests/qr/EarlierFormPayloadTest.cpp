// The generator of the form editions before 2008-04: its shorter application
// header, its ApplyDoc2 ending at the enforcement date, its 24-record period
// header with the stored enforcement date, against payloads written out by
// hand.
#include <gtest/gtest.h>

#include "QrHome.h"
#include "platform/Cp932.h"
#include "qr/clsQRCode.h"

namespace kelvary {
namespace {

using test::expectedPayload;
using test::QrHome;

const QString kId = QStringLiteral("0000001520070910093000");

QByteArray bytes(const QString& text) { return cp932Encode(text); }

class EarlierForm : public ::testing::Test {
protected:
    // tests/data/qr/EarlierPeriod.sql, item 7 renamed against the master.
    void insertPeriod() {
        home.execFile(QStringLiteral("qr/EarlierPeriod.sql"));
        home.execSibling(QStringLiteral("DELETE FROM M_FSItem WHERE ItemCode=7;"
                                        "INSERT INTO M_FSItem (ItemCode, ItemName, SortNumber_H, SortNumber_K) "
                                        "VALUES (7, 'master7', 7, 7)"));
    }
    void SetUp() override { qr.setVerifyID(kId); }

    QrHome home;
    clsQRCode qr;
};

TEST_F(EarlierForm, ApplicationHeaderHasFiveRecordsWithoutAgentFlags) {
    qr.setCourseNumber(3);
    qr.MakeHeader(1);  // two periods selected
    EXPECT_EQ(home.payload(QStringLiteral("ApplyHeader")),
              expectedPayload(QStringLiteral("EarlierApplyHeader")));

    // Record 4 stays 1 whatever the course and the periods are.
    clsQRCode none;
    none.setVerifyID(QStringLiteral("X"));
    none.setCourseNumber(1);
    none.MakeHeader(-1);
    const QString version = QStringLiteral("%1. %2. %3")
                                .arg(build::VersionMajor)
                                .arg(build::VersionMinor)
                                .arg(build::VersionPatch);
    EXPECT_EQ(home.payload(QStringLiteral("ApplyHeader")),
              bytes(QStringLiteral("\"[ApplyHeader]\",\"X\",5,2\r\n1,\"X\"\r\n2,\"") + version +
                    QStringLiteral("\"\r\n3,\"-1\"\r\n4,\"1\"\r\n5,\"1\"\r\n")));
}

TEST_F(EarlierForm, ApplicationSymbolsEndWithTheEnforcementDate) {
    home.execFile(QStringLiteral("qr/EarlierApplication.sql"));
    qr.MakeAPData(3);
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc1")), expectedPayload(QStringLiteral("EarlierApplyDoc1")));
    EXPECT_EQ(home.payload(QStringLiteral("ApplyDoc2")), expectedPayload(QStringLiteral("EarlierApplyDoc2")));
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(EarlierForm, PeriodHeaderHasTwentyFourRecordsAndTheStoredDate) {
    insertPeriod();
    qr.MakeFSData(1, 21);
    EXPECT_EQ(home.payload(QStringLiteral("ZaimuHeader1")),
              expectedPayload(QStringLiteral("EarlierZaimuHeader")));
    EXPECT_EQ(qr.FSQRCodeCount(), 2);
    EXPECT_EQ(qr.KamokuQRCodeCount(), 1);
    EXPECT_EQ(qr.NListQRCodeCount(), 1);
    EXPECT_EQ(qr.CapitalQRCodeCount(), 1);
}

}  // namespace
}  // namespace kelvary
