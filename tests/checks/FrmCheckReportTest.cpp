// The problem window on the offscreen platform: printing a long list into a
// PDF that poppler's tools read back page by page, and the batch report block.
#include "checks/frmCheckReport.h"

#include "platform/PdfCheck.h"
#include "startup/CommandLine.h"
#include "support/RecordingUi.h"

#include <QFile>
#include <QFont>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::RecordingUiGuard;

// Batch options naming the PDF file the print button writes, for one test.
class PrintToGuard {
public:
    explicit PrintToGuard(const QString& file) : previous_(batchOptions()) {
        BatchOptions options = previous_;
        options.printTo = file;
        setBatchOptions(options);
    }
    ~PrintToGuard() { setBatchOptions(previous_); }

private:
    BatchOptions previous_;
};

TEST(FrmCheckReportTest, LongListPrintsOnSeveralPagesWithEveryLine) {
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("list.pdf"));
    PrintToGuard printTo(pdf);
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic"));

    QString text;
    for (int i = 1; i <= 200; ++i)
        text += QStringLiteral("LINE%1 ■問題点\r\n").arg(i, 3, 10, QLatin1Char('0'));
    // Wider than the page: it must continue on the next line, not be cut.
    const QString wide = QStringLiteral("0123456789").repeated(30);
    text += wide + QStringLiteral("\r\n");

    frmCheckReport form;
    form.loadText(text);
    form.cmdPrint()->click();

    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_EQ(ui->messages[0].request.title, QStringLiteral("確認"));
    EXPECT_EQ(ui->messages[0].request.text, QStringLiteral("印刷を実行しますか？"));
    ASSERT_TRUE(QFile::exists(pdf));
    // About seventy lines of 10 points fit an A4 page: 202 lines need three.
    EXPECT_GE(test::pdfInfo(pdf, QStringLiteral("Pages")).toInt(), 3);
    EXPECT_EQ(test::pdfPageSize(pdf, 1), QStringLiteral("595 x 842 pts (A4)"));
    const QString printed = test::pdfText(pdf);
    for (int i = 1; i <= 200; ++i) {
        const QString label = QStringLiteral("LINE%1").arg(i, 3, 10, QLatin1Char('0'));
        EXPECT_TRUE(printed.contains(label + QStringLiteral(" ■問題点"))) << label.toStdString();
    }
    QString joined = printed;
    joined.remove(QRegularExpression(QStringLiteral("\\s")));
    EXPECT_TRUE(joined.contains(wide));
    // The list runs down the pages in order: page 2 starts after page 1 ends.
    const QStringList pages = printed.split(QLatin1Char('\f'));
    ASSERT_GE(pages.size(), 3);
    EXPECT_TRUE(pages[0].contains(QStringLiteral("LINE001")));
    EXPECT_FALSE(pages[0].contains(QStringLiteral("LINE200")));
    EXPECT_TRUE(pages[1].contains(QStringLiteral("LINE") +
                                  QString::number(pages[0].count(QStringLiteral("LINE")) + 1).rightJustified(3, QLatin1Char('0'))));
}

TEST(FrmCheckReportTest, BatchSetTextWritesTheReportBlock) {
    RecordingUiGuard ui;
    frmCheckReport form;
    form.SetText(QStringLiteral("■問題\r\n\r\n"));
    EXPECT_EQ(ui->reports, QList<QString>{QStringLiteral("入力内容の問題点一覧\n■問題\r\n\r\n")});
    EXPECT_FALSE(form.isVisible());
}

}  // namespace
}  // namespace kelvary
