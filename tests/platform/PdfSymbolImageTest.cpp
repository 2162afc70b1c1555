// QR symbol images as the symbol writer saves them (1-bit BMP, white as
// colour 0) placed on a page and written to PDF: pdfimages must find them
// kept as 1-bit images without JPEG compression, so no module is blurred and
// the file stays small, and zbar must read them back off the rendered page,
// so their black and white are not swapped on the way.
#include "platform/Fonts.h"
#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "platform/PageReference.h"
#include "platform/PdfCheck.h"
#include "platform/QrSymbol.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

// The columns of pdfimages -list after its two heading lines, one row per image.
QList<QStringList> imageRows(const QString& pdf) {
    QList<QStringList> rows;
    const QStringList lines =
        test::runTool(QStringLiteral("pdfimages"), {QStringLiteral("-list"), pdf}).out.split(QLatin1Char('\n'));
    for (qsizetype i = 2; i < lines.size(); ++i) {
        const QStringList columns = lines[i].split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (columns.size() >= 9) rows << columns;
    }
    return rows;
}

TEST(PdfSymbolImage, OneBitSymbolsStayOneBitLosslessAndReadable) {
    installFontSubstitutions();
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray payloads[] = {QByteArray("\"[ApplyHeader]\",\"0000123420090715093000\",1,5"),
                                   QByteArray("\"101\",\"1284731\",").repeated(40)};
    LayoutDocument doc = LayoutDocument::load(test::testDataDir() + QStringLiteral("/platform/layouts/Qr.w30"));
    for (int n = 0; n < 2; ++n) {
        const auto symbol = qr::encodeSymbol(payloads[n]);
        ASSERT_TRUE(symbol);
        const QString file = dir.filePath(QStringLiteral("s%1.bmp").arg(n + 1));
        ASSERT_TRUE(qr::symbolImage(*symbol).save(file, "BMP"));
        doc.field(1, QStringLiteral("WrImage%1").arg(n + 1)).imageFile = file;
    }
    const QString pdf = dir.filePath(QStringLiteral("qr.pdf"));
    PdfFileWriter writer(pdf, QString(), QString());
    writer.addPage(doc, 1);
    writer.commit();

    const QList<QStringList> rows = imageRows(pdf);
    ASSERT_EQ(rows.size(), 2);
    for (const QStringList& row : rows) {
        // page num type width height color comp bpc enc ...
        EXPECT_EQ(row[7], QStringLiteral("1")) << row.join(QLatin1Char(' ')).toStdString();
        EXPECT_NE(row[8], QStringLiteral("jpeg")) << row.join(QLatin1Char(' ')).toStdString();
    }
    QStringList expected{QString::fromLatin1(payloads[0]), QString::fromLatin1(payloads[1])};
    expected.sort();
    EXPECT_EQ(test::decodeQrOnPage(pdf, 1), expected);
}

// Fills every field of the page: a symbol per image, a line of text per text.
void fill(LayoutDocument& doc, const QString& folder) {
    int n = 0;
    const auto fillField = [&](LayoutField& field, auto& self) -> void {
        if (field.kind == LayoutField::Kind::Group) {
            for (LayoutField& sub : field.subFields) self(sub, self);
        } else if (field.kind == LayoutField::Kind::Image) {
            const auto symbol = qr::encodeSymbol(QByteArray("\"[FSData]\",\"0000123420090715093000\",") +
                                                 QByteArray::number(++n).repeated(n * 7));
            ASSERT_TRUE(symbol);
            field.imageFile = QDir(folder).filePath(QStringLiteral("s%1.bmp").arg(n));
            ASSERT_TRUE(qr::symbolImage(*symbol).save(field.imageFile, "BMP"));
        } else {
            field.text = QStringLiteral("経営状況分析 %1 ＡＢＣ（株）山田建設 1,234,567").arg(field.name);
            field.strikeLine = field.name == QStringLiteral("Struck");
            field.strikeWidth = 3;
        }
    };
    for (LayoutField& field : doc.page(1).fields) fillField(field, fillField);
}

// The page drawn straight into the file as a PDF run does, and the page kept
// for the preview and written later (its fields cleared and its symbol files
// written over by then, as the next pages do), both against the page replayed
// from one recorded picture.
// Layered.w30 is a page drawn over its images: a caption across a symbol, a
// struck field and a framed one after it, and a symbol inside a group. Its
// bold heading sits where its letters fall across pixel edges at 300 dpi:
// set a fraction of a unit higher or lower, it renders differently.
TEST(PdfSymbolImage, PagesDrawnStraightOrKeptRenderPixelForPixelAsOneRecordedPicture) {
    installFontSubstitutions();
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString qrLayout = QStringLiteral(KELVARY_TEST_TEMPLATE_DIR "/PrintFile/FSQRCode.w30");
    const QList<LayoutDocument> docs{LayoutDocument::load(test::testDataDir() + QStringLiteral("/platform/layouts/Layered.w30")),
                                     LayoutDocument::load(qrLayout)};
    for (qsizetype d = 0; d < docs.size(); ++d) {
        LayoutDocument doc = docs[d];
        fill(doc, dir.path());
        const QString before = dir.filePath(QStringLiteral("before%1.pdf").arg(d));
        const QString straight = dir.filePath(QStringLiteral("straight%1.pdf").arg(d));
        const QString kept = dir.filePath(QStringLiteral("kept%1.pdf").arg(d));
        test::writeAsOnePicture(doc, before);
        {
            PdfFileWriter writer(straight, QString(), QString());
            writer.addPage(doc, 1);
            writer.commit();
        }
        const RecordedPage page = recordLayoutPage(doc, 1);
        const QStringList symbols = QDir(dir.path()).entryList({QStringLiteral("s*.bmp")});
        ASSERT_EQ(symbols.size(), d == 0 ? 2 : 12);
        const auto other = qr::encodeSymbol(QByteArray("\"[FSData]\",\"written over\""));
        ASSERT_TRUE(other);
        for (const QString& symbol : symbols) ASSERT_TRUE(qr::symbolImage(*other).save(dir.filePath(symbol), "BMP"));
        doc.clearData();
        {
            PdfFileWriter writer(kept, QString(), QString());
            writer.addPage(page);
            writer.commit();
        }

        const QImage expected = test::renderedAt300Dpi(before);
        // A4 is 595 x 842 points: 2480 x 3509 pixels at 300 dpi.
        ASSERT_EQ(expected.size(), QSize(2480, 3509)) << d;
        for (const QString& pdf : {straight, kept}) {
            const QImage got = test::renderedAt300Dpi(pdf);
            ASSERT_EQ(got.size(), expected.size()) << pdf.toStdString();
            EXPECT_EQ(test::differingPixels(expected, got), 0) << pdf.toStdString();
            // The symbols are there and readable, and the kept page's are its own.
            const QStringList read = test::decodeQrOnPage(pdf, 1);
            EXPECT_EQ(read.size(), d == 0 ? 2 : 12) << pdf.toStdString();
            EXPECT_FALSE(read.contains(QStringLiteral("\"[FSData]\",\"written over\""))) << pdf.toStdString();
        }
    }
}

}  // namespace
}  // namespace kelvary
