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

// Every field the application form builders write, in both layouts.
QStringList applicationFormFields() {
    QStringList names{QStringLiteral("ApplierColumn"), QStringLiteral("RegistNumber"), QStringLiteral("MakeDate"),
                      QStringLiteral("ProxyColumn"), QStringLiteral("VerifyID")};
    for (int n = 4; n <= 48; ++n)
        // C10 and C15 exist only as their two class labels, a and b.
        if (n != 10 && n != 15 && n != 35 && n != 46 && n != 47) names << QStringLiteral("C%1").arg(n);
    names << QStringLiteral("C9b1") << QStringLiteral("C9b2") << QStringLiteral("C10a") << QStringLiteral("C10b")
          << QStringLiteral("C14b1") << QStringLiteral("C14b2") << QStringLiteral("C15a") << QStringLiteral("C15b");
    return names;
}

class ApplicationFormLayout : public ::testing::TestWithParam<const char*> {};

TEST_P(ApplicationFormLayout, HasEveryFieldOfTheFormAndNoneOfTheOldEdition) {
    LayoutDocument doc = shipped(QString::fromUtf8(GetParam()));
    EXPECT_EQ(doc.paperSize(), QSizeF(210, 297));
    for (const QString& name : applicationFormFields()) EXPECT_TRUE(hasField(doc, name)) << name.toStdString();
    for (const char* gone : {"C35", "C46", "C47", "C49"}) EXPECT_FALSE(hasField(doc, QString::fromUtf8(gone))) << gone;
}

TEST_P(ApplicationFormLayout, TheLabelsThatAreStruckOutAreFieldsWithTheirPrintedText) {
    LayoutDocument doc = shipped(QString::fromUtf8(GetParam()));
    for (const char* prefix : {"C9", "C14"}) {
        EXPECT_EQ(doc.field(1, QString::fromUtf8(prefix) + QStringLiteral("b1")).text, QStringLiteral("国土交通大臣"));
        EXPECT_EQ(doc.field(1, QString::fromUtf8(prefix) + QStringLiteral("b2")).text, QStringLiteral("知事"));
    }
    for (const char* prefix : {"C10", "C15"}) {
        EXPECT_EQ(doc.field(1, QString::fromUtf8(prefix) + QStringLiteral("a")).text, QStringLiteral("般"));
        EXPECT_EQ(doc.field(1, QString::fromUtf8(prefix) + QStringLiteral("b")).text, QStringLiteral("特"));
    }
}

TEST_P(ApplicationFormLayout, AFilledFormPrintsItsTitleTextsAndIdLine) {
    installFontSubstitutions();
    QTemporaryDir dir;
    LayoutDocument doc = shipped(QString::fromUtf8(GetParam()));
    doc.field(1, QStringLiteral("C37")).text = QStringLiteral("株式会社ケルバリー建設");
    doc.field(1, QStringLiteral("C9b2")).text = QStringLiteral("東京都知事");
    doc.field(1, QStringLiteral("C9b1")).strikeLine = true;
    doc.field(1, QStringLiteral("C44")).text = QStringLiteral("12,345");
    doc.field(1, QStringLiteral("VerifyID")).text = QStringLiteral("[ID]0000012320260101120000 ※");
    const QString pdf = dir.filePath(QStringLiteral("form.pdf"));
    PdfFileWriter writer(pdf, QString(), QString());
    writer.addPage(recordLayoutPage(doc, 1));
    writer.commit();
    EXPECT_EQ(test::qpdfCheck(pdf), 0);
    const QString text = test::pdfText(pdf, 1);
    for (const char* expected : {"経営状況分析申請書", "株式会社ケルバリー建設", "東京都知事", "国土交通大臣", "12,345",
                                 "審査対象事業年度", "[ID]0000012320260101120000 ※"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(expected))) << expected;
}

INSTANTIATE_TEST_SUITE_P(Shipped, ApplicationFormLayout,
                         ::testing::Values("ApplyDoc_200804.w30", "ApplyDocPdf_200804.w30"),
                         [](const ::testing::TestParamInfo<const char*>& info) {
                             return info.index == 0 ? std::string("Print") : std::string("Pdf");
                         });

TEST(ApplicationFormPdfLayout, TitleColumnSitsBesideTheApplicantColumnAtOneLineHeight) {
    LayoutDocument doc = shipped(QStringLiteral("ApplyDocPdf_200804.w30"));
    const LayoutField& title = doc.field(1, QStringLiteral("ApplierTitle"));
    const LayoutField& column = doc.field(1, QStringLiteral("ApplierColumn"));
    EXPECT_GT(title.style.lineHeight, 0.0);
    EXPECT_EQ(title.style.lineHeight, column.style.lineHeight);
    EXPECT_EQ(title.style.size, column.style.size);
    EXPECT_EQ(title.rect.top(), column.rect.top());
    EXPECT_EQ(title.style.valign, VAlign::Top);
    EXPECT_EQ(column.style.valign, VAlign::Top);
    // No wrapping: a wrapped line would put the labels out of step.
    EXPECT_FALSE(column.style.wrap);
    EXPECT_LE(title.rect.right(), column.rect.left());
    // Twelve lines (both addresses, applicant, agent, creator) fit.
    EXPECT_GE(column.rect.height(), 12 * column.style.lineHeight);

    LayoutDocument print = shipped(QStringLiteral("ApplyDoc_200804.w30"));
    EXPECT_FALSE(hasField(print, QStringLiteral("ApplierTitle")));
}

}  // namespace
}  // namespace kelvary
