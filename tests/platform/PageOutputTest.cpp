// Layout pages drawn into PDF files, judged by qpdf, poppler and pdffonts:
// the file is sound, holds the filled texts in order, embeds only the glyphs
// it uses, and appears only when complete.
#include "platform/Fonts.h"
#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "platform/PdfCheck.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace kelvary {
namespace {

using test::pdfInfo;
using test::pdfText;
using test::qpdfCheck;

class PageOutput : public ::testing::Test {
protected:
    void SetUp() override {
        installFontSubstitutions();
        ASSERT_TRUE(dir_.isValid());
    }
    QString path(const QString& name) const { return dir_.filePath(name); }
    QStringList folderEntries() const { return QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden); }

    static LayoutDocument form() { return LayoutDocument::load(test::testDataDir() + QStringLiteral("/platform/layouts/Form.w30")); }

    QTemporaryDir dir_;
};

TEST_F(PageOutput, WritesASoundPdfWithTheFilledTextsOnTheirPages) {
    LayoutDocument doc = form();
    const QString pdf = path(QStringLiteral("out.pdf"));
    {
        PdfFileWriter writer(pdf, QStringLiteral("申請書"), QStringLiteral("kelvary test"));
        doc.field(1, QStringLiteral("C37")).text = QStringLiteral("株式会社ケルバリー建設");
        doc.field(1, QStringLiteral("VerifyID")).text = QStringLiteral("[ID]0000012320081010093000");
        writer.addPage(doc, 1);
        // The second page as the preview keeps it, written once the document
        // has gone on to other data.
        doc.clearData();
        doc.field(1, QStringLiteral("C37")).text = QStringLiteral("有限会社二頁目");
        const RecordedPage kept = recordLayoutPage(doc, 1);
        doc.clearData();
        doc.field(1, QStringLiteral("C37")).text = QStringLiteral("合同会社三頁目");
        writer.addPage(kept);
        EXPECT_EQ(writer.pageCount(), 2);
        writer.commit();
    }
    EXPECT_EQ(qpdfCheck(pdf), 0);
    EXPECT_EQ(pdfInfo(pdf, QStringLiteral("Pages")), QStringLiteral("2"));
    EXPECT_EQ(pdfInfo(pdf, QStringLiteral("Title")), QStringLiteral("申請書"));
    EXPECT_EQ(pdfInfo(pdf, QStringLiteral("Creator")), QStringLiteral("kelvary test"));
    // A4 is 595.276 x 841.89 points.
    EXPECT_EQ(test::pdfPageSize(pdf, 1), QStringLiteral("595 x 842 pts (A4)"));

    const QString first = pdfText(pdf, 1);
    EXPECT_TRUE(first.contains(QStringLiteral("経営状況分析申請書")));
    EXPECT_TRUE(first.contains(QStringLiteral("株式会社ケルバリー建設")));
    EXPECT_TRUE(first.contains(QStringLiteral("[ID]0000012320081010093000")));
    const QString second = pdfText(pdf, 2);
    EXPECT_TRUE(second.contains(QStringLiteral("有限会社二頁目")));
    EXPECT_FALSE(second.contains(QStringLiteral("株式会社ケルバリー建設")));
    EXPECT_FALSE(second.contains(QStringLiteral("[ID]")));
    EXPECT_FALSE(second.contains(QStringLiteral("合同会社三頁目")));
    // The layout's own text of a field is printed when nothing replaced it.
    EXPECT_TRUE(second.contains(QStringLiteral("9")));
    EXPECT_EQ(folderEntries(), QStringList{QStringLiteral("out.pdf")});
}

TEST_F(PageOutput, EmbedsOnlyTheUsedGlyphsOfTheSubstitutedGothic) {
    LayoutDocument doc = form();
    const QString pdf = path(QStringLiteral("fonts.pdf"));
    PdfFileWriter writer(pdf, QString(), QString());
    writer.addPage(doc, 1);
    writer.commit();
    const QString fonts = test::runTool(QStringLiteral("pdffonts"), {pdf}).out;
    // After the two heading lines: one font, IPA Gothic, embedded.
    const QStringList lines = fonts.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(2);
    ASSERT_EQ(lines.size(), 1) << fonts.toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("IPAGothic"))) << fonts.toStdString();
    EXPECT_TRUE(lines[0].contains(QRegularExpression(QStringLiteral("Identity-H\\s+yes\\s")))) << fonts.toStdString();
    // The whole face is several megabytes; a page of a few dozen glyphs
    // carries only those.
    EXPECT_LT(QFileInfo(pdf).size(), 100 * 1024);
}

TEST_F(PageOutput, LineBreaksOfEveryKindStartALineAndWrappingGoesOnWithinEach) {
    LayoutDocument doc = form();
    // CR LF, CR and LF each end a line; a line longer than the field wraps at
    // 8 full-width characters and its rest comes before the next line.
    doc.field(1, QStringLiteral("Memo")).text =
        QStringLiteral("一二\r\n三四\r五六\n\n七八九十壱弐参肆伍陸漆\r\n捌");
    const QString pdf = path(QStringLiteral("lines.pdf"));
    PdfFileWriter writer(pdf, QString(), QString());
    writer.addPage(doc, 1);
    writer.commit();
    QStringList lines;
    for (const QString& line : pdfText(pdf, 1).split(QLatin1Char('\n'))) {
        const QString t = line.trimmed();
        if (t.contains(QRegularExpression(QStringLiteral("^[一二三四五六七八九十壱弐参肆伍陸漆捌]+$")))) lines << t;
    }
    const QStringList expected{QStringLiteral("一二"), QStringLiteral("三四"), QStringLiteral("五六"),
                               QStringLiteral("七八九十壱弐参肆"), QStringLiteral("伍陸漆"), QStringLiteral("捌")};
    EXPECT_EQ(lines, expected) << pdfText(pdf, 1).toStdString();
}

TEST_F(PageOutput, AnUnfinishedFileNeverReplacesAnEarlierOne) {
    const QString pdf = path(QStringLiteral("keep.pdf"));
    test::writeFile(pdf, "%PDF-1.4 earlier run\n");
    LayoutDocument doc = form();
    {
        PdfFileWriter writer(pdf, QString(), QString());
        writer.addPage(doc, 1);
        // The run fails here: the writer goes without commit().
    }
    EXPECT_EQ(test::readFile(pdf), QByteArray("%PDF-1.4 earlier run\n"));
    EXPECT_EQ(folderEntries(), QStringList{QStringLiteral("keep.pdf")});

    // Committing without pages leaves the earlier file too.
    {
        PdfFileWriter writer(pdf, QString(), QString());
        writer.commit();
    }
    EXPECT_EQ(test::readFile(pdf), QByteArray("%PDF-1.4 earlier run\n"));

    {
        PdfFileWriter writer(pdf, QString(), QString());
        writer.addPage(doc, 1);
        writer.commit();
    }
    EXPECT_EQ(qpdfCheck(pdf), 0);
    EXPECT_EQ(folderEntries(), QStringList{QStringLiteral("keep.pdf")});
}

}  // namespace
}  // namespace kelvary
