// QR symbol images as the symbol writer saves them (1-bit BMP, white as
// colour 0) placed on a page and written to PDF: pdfimages must find them
// kept as 1-bit images without JPEG compression, so no module is blurred and
// the file stays small, and zbar must read them back off the rendered page,
// so their black and white are not swapped on the way.
#include "platform/Fonts.h"
#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "platform/PdfCheck.h"
#include "qr/QrSymbol.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

const char* kPage = R"({"paper": "A4", "pages": [{"items": [
    {"type": "image", "name": "WrImage1", "x": 20, "y": 20, "w": 56, "h": 50},
    {"type": "image", "name": "WrImage2", "x": 100, "y": 20, "w": 56, "h": 50}]}]})";

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
    LayoutDocument doc = LayoutDocument::fromJson(kPage, QStringLiteral("Qr.w30"));
    for (int n = 0; n < 2; ++n) {
        const auto symbol = qr::encodeSymbol(payloads[n]);
        ASSERT_TRUE(symbol);
        const QString file = dir.filePath(QStringLiteral("s%1.bmp").arg(n + 1));
        ASSERT_TRUE(qr::symbolImage(*symbol).save(file, "BMP"));
        doc.field(1, QStringLiteral("WrImage%1").arg(n + 1)).imageFile = file;
    }
    const QString pdf = dir.filePath(QStringLiteral("qr.pdf"));
    PdfFileWriter writer(pdf, QString(), QString());
    writer.addPage(recordLayoutPage(doc, 1));
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

}  // namespace
}  // namespace kelvary
