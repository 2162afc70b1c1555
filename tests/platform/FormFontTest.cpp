// In a PDF file, a text whose every character the form's font has is drawn
// by that font alone, without Qt's fall-back fonts. These tests hold, through
// poppler's rendering at 300 dpi, that this changes no pixel of any character
// CP932 can carry against the same page drawn with fall-backs allowed, and
// that a text with a character the font lacks is still drawn by a fall-back.
#include "platform/Fonts.h"
#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "platform/PageReference.h"
#include "support/TestSupport.h"

#include <QFont>
#include <QImage>
#include <QRawFont>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

bool formFontHas(char32_t c) {
    static const QRawFont font = [] {
        QFont alone(formFontFamily());
        alone.setStyleStrategy(QFont::NoFontMerging);
        return QRawFont::fromFont(alone);
    }();
    return font.supportsCharacter(c);
}

// Rows of 80 characters at 6 points, 100 rows a page, each row a field.
constexpr int kRowLength = 80;
constexpr int kRowsPerPage = 100;

LayoutDocument rowsPage(const QString& characters) {
    const int rows = static_cast<int>((characters.size() + kRowLength - 1) / kRowLength);
    QByteArray json = R"({"paper": "A4", "pages": [{"items": [)";
    for (int r = 0; r < rows; ++r) {
        if (r > 0) json += ',';
        json += QStringLiteral(R"({"type": "field", "name": "R%1", "x": 10, "y": %2, "w": 190, "h": 2.7, "size": 6})")
                    .arg(r)
                    .arg(8 + r * 2.7)
                    .toUtf8();
    }
    json += "]}]}";
    LayoutDocument document = LayoutDocument::fromJson(json, QStringLiteral("Rows.w30"));
    for (int r = 0; r < rows; ++r) document.field(1, QStringLiteral("R%1").arg(r)).text = characters.mid(r * kRowLength, kRowLength);
    return document;
}

// The page drawn straight into a PDF file, as a run writes it, and the same
// page replayed from a recorded picture, where every text keeps Qt's
// fall-backs: the pixels poppler renders that differ.
qsizetype differingFromFallBackDrawing(const LayoutDocument& document, const QString& folder) {
    const QString straight = folder + QStringLiteral("/straight.pdf");
    const QString replayed = folder + QStringLiteral("/replayed.pdf");
    {
        PdfFileWriter writer(straight, QString(), QString());
        writer.addPage(document, 1);
        writer.commit();
    }
    test::writeAsOnePicture(document, replayed);
    const QImage expected = test::renderedAt300Dpi(replayed);
    const QImage got = test::renderedAt300Dpi(straight);
    if (expected.isNull() || expected.size() != got.size()) return -1;
    return test::differingPixels(expected, got);
}

TEST(FormFont, EveryCp932CharacterItHasDrawsAsWithFallBackFontsAllowed) {
    installFontSubstitutions();
    QString covered;
    QSet<QChar> seen;
    for (const QChar c : test::cp932Repertoire())
        if (!seen.contains(c) && formFontHas(c.unicode())) {
            seen.insert(c);
            covered += c;
        }
    // IPA Gothic has all of JIS X 0208 (6,879 characters) and more.
    ASSERT_GT(covered.size(), 6879);
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (qsizetype start = 0; start < covered.size(); start += kRowLength * kRowsPerPage) {
        const LayoutDocument page = rowsPage(covered.mid(start, kRowLength * kRowsPerPage));
        EXPECT_EQ(differingFromFallBackDrawing(page, dir.path()), 0)
            << "the page from " << covered.mid(start, 10).toStdString();
    }
}

TEST(FormFont, ACharacterTheFontLacksIsStillDrawnByAFallBack) {
    installFontSubstitutions();
    // A chess king: DejaVu Sans has it, the form's font does not.
    const char32_t king = 0x2654;
    ASSERT_FALSE(formFontHas(king));
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // Drawn by the font that has it, not as the missing-glyph box, which a
    // private-use character no font on the machine has is drawn as.
    const QString withKing = dir.filePath(QStringLiteral("king.pdf"));
    const QString withBox = dir.filePath(QStringLiteral("box.pdf"));
    for (const auto& [pdf, text] : {std::pair{withKing, QStringLiteral("王") + QString::fromUcs4(&king, 1)},
                                    std::pair{withBox, QStringLiteral("王") + QChar(0xE000)}}) {
        PdfFileWriter writer(pdf, QString(), QString());
        writer.addPage(rowsPage(text), 1);
        writer.commit();
    }
    EXPECT_GT(test::differingPixels(test::renderedAt300Dpi(withKing), test::renderedAt300Dpi(withBox)), 0);
}

}  // namespace
}  // namespace kelvary
