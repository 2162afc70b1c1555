// Symbols as the agency's reader sees them: every image is decoded by zbar and
// must give back the bytes of its .Txt copy, which in turn must be the CP932
// bytes of the payload written out here by hand.
#include "platform/QrSymbol.h"
#include "qr/frmQRCode.h"

#include "QrHome.h"
#include "startup/RunOutcome.h"
#include "platform/Cp932.h"

#include <QImage>
#include <QtEndian>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::hexBytes;
using test::QrHome;
using test::zbarDecode;

// Renders one payload and checks the files against the expected bytes.
void expectRoundTrip(QrHome& home, const QString& name, const QString& payload, const QByteArray& expected) {
    frmQRCode renderer;
    const QString image = home.temp(name + QStringLiteral(".bmp"));
    renderer.MakeQRCode(image, payload);
    EXPECT_EQ(QrHome::read(image + QStringLiteral(".Txt")), expected) << name.toStdString();
    EXPECT_EQ(zbarDecode(image), expected) << name.toStdString();
}

TEST(QrSymbolRoundTrip, JapaneseTextInCodePage932) {
    QrHome home;
    // ～ 81 60, － 81 7C (CP932, not the JIS mappings), ㈱ 87 8A (NEC row 13),
    // ｱ B1 ｶﾞ B6 DE (half-width katakana, one byte each); the copy ends with
    // the payload's own line end and no other.
    expectRoundTrip(home, QStringLiteral("Marks"), QStringLiteral("1,\"～－㈱ｱｶﾞ\"\r\n"),
                    hexBytes("31 2c 22 81 60 81 7c 87 8a b1 b6 de 22 0d 0a"));
    // 髙 FB FC and ⅰ FA 40 (the IBM rows Windows writes) lie outside Kanji mode; 夋 FA 9F followed by a
    // digit must not be read as the pair 9F 31.
    expectRoundTrip(home, QStringLiteral("Ibm"), QStringLiteral("髙ⅰ夋1漢字"),
                    hexBytes("fb fc fa 40 fa 9f 31 8a bf 8e 9a"));
    EXPECT_TRUE(home.errorPlaces().isEmpty());
}

TEST(QrSymbolRoundTrip, LongKanjiAndMixedRuns) {
    QrHome home;
    QString payload;
    QByteArray expected;
    for (int i = 0; i < 120; ++i) {
        payload += QStringLiteral("株式会社ABC-12,");
        expected += hexBytes("8a 94 8e ae 89 ef 8e d0 41 42 43 2d 31 32 2c");
    }
    expectRoundTrip(home, QStringLiteral("Mixed"), payload, expected);
}

TEST(QrSymbolLevels, SmallestVersionAtLevelMAndLOnlyWhenMCannotHold) {
    const auto tiny = qr::encodeSymbol(QByteArray("A"));
    ASSERT_TRUE(tiny);
    EXPECT_EQ(tiny->version, 1);
    EXPECT_EQ(tiny->level, qr::EcLevel::M);
    EXPECT_EQ(tiny->width, 21);

    // Version 40 holds 2331 bytes at M and 2953 at L in byte mode.
    const auto fullM = qr::encodeSymbol(QByteArray(2331, 'x'));
    ASSERT_TRUE(fullM);
    EXPECT_EQ(fullM->version, 40);
    EXPECT_EQ(fullM->level, qr::EcLevel::M);
    // At L version 35 holds 2303 bytes, so 2332 need version 36.
    const auto needsL = qr::encodeSymbol(QByteArray(2332, 'x'));
    ASSERT_TRUE(needsL);
    EXPECT_EQ(needsL->version, 36);
    EXPECT_EQ(needsL->level, qr::EcLevel::L);
    EXPECT_FALSE(qr::encodeSymbol(QByteArray(2954, 'x')));
}

TEST(QrSymbolImage, OneBitBmpWithWholePixelModulesAndQuietZone) {
    QrHome home;
    frmQRCode renderer;
    const QString image = home.temp(QStringLiteral("Bits.bmp"));
    renderer.MakeQRCode(image, QStringLiteral("A"));
    const QByteArray bmp = QrHome::read(image);
    ASSERT_GE(bmp.size(), 54);
    EXPECT_EQ(bmp.left(2), QByteArray("BM"));
    const auto u32 = [&](int offset) { return qFromLittleEndian<quint32>(bmp.constData() + offset); };
    const auto u16 = [&](int offset) { return qFromLittleEndian<quint16>(bmp.constData() + offset); };
    // Version 1: 21 modules and 4 on each side, 4 pixels a module.
    EXPECT_EQ(u32(18), 116u);
    EXPECT_EQ(u32(22), 116u);
    EXPECT_EQ(u16(28), 1);
    // 16000 dots a metre: a module of 4 pixels measures 0.25 mm.
    EXPECT_EQ(u32(38), 16000u);
    const QImage loaded(image);
    ASSERT_FALSE(loaded.isNull());
    // Quiet zone white; the finder's top-left module dark over its 4x4 pixels.
    EXPECT_EQ(loaded.pixel(15, 15), qRgb(255, 255, 255));
    for (int d = 0; d < 4; ++d)
        EXPECT_EQ(loaded.pixel(16 + d, 16 + d), qRgb(0, 0, 0));
}

TEST(QrSymbolFailure, TooLargeIsReportedAndWritesNothing) {
    QrHome home;
    resetRunOutcome();
    frmQRCode renderer;
    const QString image = home.temp(QStringLiteral("NListData0_1.bmp"));
    renderer.MakeQRCode(image, QString(3000, QLatin1Char('x')));
    EXPECT_EQ(runExitStatus(), ExitError);
    EXPECT_FALSE(QFile::exists(image));
    EXPECT_FALSE(QFile::exists(image + QStringLiteral(".Txt")));
    ASSERT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mMakeQRCode")});
    const QString text = home.ui().messages.front().request.text;
    EXPECT_TRUE(text.contains(QStringLiteral("NListData0_1"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("3000"))) << text.toStdString();
}

}  // namespace
}  // namespace kelvary
