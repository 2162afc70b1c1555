// The shipped layouts: each has the fields its page builder writes, and a
// filled QR page prints readable symbols in its first and last slots.
#include "platform/Fonts.h"
#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "platform/PdfCheck.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace kelvary {
namespace {

LayoutDocument shipped(const QString& name) {
    return LayoutDocument::load(test::templateDir() + QStringLiteral("/PrintFile/") + name);
}

bool hasField(LayoutDocument& doc, const QString& name) {
    try {
        doc.field(1, name);
        return true;
    } catch (const VbError&) {
        return false;
    }
}

TEST(QrPageLayout, HasTheHeaderAndTwelveSlotTriples) {
    LayoutDocument doc = shipped(QStringLiteral("FSQRCode.w30"));
    EXPECT_EQ(doc.paperSize(), QSizeF(210, 297));
    for (const char* name : {"PageInfo", "FiscalTerm", "ApplierName", "VersionNumber", "EnforceDate", "VerifyID"})
        EXPECT_TRUE(hasField(doc, QString::fromUtf8(name))) << name;
    for (int n = 1; n <= 12; ++n) {
        EXPECT_EQ(doc.field(1, QStringLiteral("WrImage%1").arg(n)).kind, LayoutField::Kind::Image) << n;
        EXPECT_TRUE(hasField(doc, QStringLiteral("Num%1").arg(n))) << n;
        EXPECT_TRUE(hasField(doc, QStringLiteral("WrText%1").arg(n))) << n;
    }
    EXPECT_FALSE(hasField(doc, QStringLiteral("WrImage13")));
}

TEST(QrPageLayout, SlotsDoNotOverlapAndStayOnThePaper) {
    LayoutDocument doc = shipped(QStringLiteral("FSQRCode.w30"));
    const QRectF paper(QPointF(0, 0), doc.paperSize());
    for (int a = 1; a <= 12; ++a) {
        const QRectF ra = doc.field(1, QStringLiteral("WrImage%1").arg(a)).rect;
        EXPECT_TRUE(paper.contains(ra)) << a;
        for (int b = a + 1; b <= 12; ++b)
            EXPECT_FALSE(ra.intersects(doc.field(1, QStringLiteral("WrImage%1").arg(b)).rect)) << a << " " << b;
    }
}

TEST(QrPageLayout, AFilledPageReadsBackItsSymbolsAndTexts) {
    installFontSubstitutions();
    QTemporaryDir dir;
    LayoutDocument doc = shipped(QStringLiteral("FSQRCode.w30"));
    // A statements symbol near the size limit, and a short header symbol.
    const QByteArray big = QByteArray("\"ZH\",") + QByteArray(900, '7');
    ASSERT_TRUE(test::writeQrBmp(big, dir.filePath(QStringLiteral("ZaimuData0_1.bmp"))));
    ASSERT_TRUE(test::writeQrBmp("ZaimuHeader0", dir.filePath(QStringLiteral("ZaimuHeader0.bmp"))));
    doc.field(1, QStringLiteral("WrImage1")).imageFile = dir.filePath(QStringLiteral("ZaimuHeader0.bmp"));
    doc.field(1, QStringLiteral("WrImage12")).imageFile = dir.filePath(QStringLiteral("ZaimuData0_1.bmp"));
    doc.field(1, QStringLiteral("Num12")).text = QStringLiteral("24");
    doc.field(1, QStringLiteral("WrText12")).text = QStringLiteral("ZaimuData0_1");
    doc.field(1, QStringLiteral("PageInfo")).text = QStringLiteral("Page 2/2");
    doc.field(1, QStringLiteral("ApplierName")).text = QStringLiteral("(申請者名)　株式会社ケルバリー建設");
    doc.field(1, QStringLiteral("VerifyID")).text = QStringLiteral("[ID]0000012320260101120000");
    const QString pdf = dir.filePath(QStringLiteral("qr.pdf"));
    PdfFileWriter writer(pdf, QString(), QString());
    writer.addPage(recordLayoutPage(doc, 1));
    writer.commit();

    EXPECT_EQ(test::qpdfCheck(pdf), 0);
    const QStringList payloads = test::decodeQrOnPage(pdf, 1);
    ASSERT_EQ(payloads.size(), 2) << payloads.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(payloads[0], QString::fromLatin1(big));
    EXPECT_EQ(payloads[1], QStringLiteral("ZaimuHeader0"));
    const QString text = test::pdfText(pdf, 1);
    for (const char* expected : {"Page 2/2", "ZaimuData0_1", "24", "株式会社ケルバリー建設", "[ID]0000012320260101120000"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(expected))) << expected;
}

}  // namespace
}  // namespace kelvary
