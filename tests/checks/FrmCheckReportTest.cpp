// The problem window on the offscreen platform: its captions, the layout
// kept while resizing, and printing a long list into a PDF that poppler's
// tools read back page by page.
#include "checks/frmCheckReport.h"

#include "platform/PdfCheck.h"
#include "startup/CommandLine.h"
#include "support/RecordingUi.h"

#include <QCoreApplication>
#include <QFile>
#include <QFont>
#include <QLabel>
#include <QPlainTextEdit>
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

TEST(FrmCheckReportTest, CaptionsAndControls) {
    frmCheckReport form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("入力内容の問題点一覧"));
    EXPECT_EQ(form.cmdPrint()->text(), QStringLiteral("問題点の印刷(&P)"));
    EXPECT_EQ(form.cmdClose()->text(), QStringLiteral("閉じる(&C)"));
    EXPECT_EQ(form.Label1()->text(),
              QStringLiteral("※問題点を確認し、正しい内容に訂正してください。（「問題点の印刷」ボタンをクリックすると上記の内容が印刷されます）"));
    EXPECT_EQ(form.txtMessage()->font().family(), QStringLiteral("ＭＳ ゴシック"));
    EXPECT_EQ(form.txtMessage()->font().pointSize(), 9);
    EXPECT_TRUE(form.txtMessage()->isReadOnly());
    form.loadText(QStringLiteral("■一\r\n\r\n■二\r\n"));
    EXPECT_EQ(form.txtMessage()->toPlainText(), QStringLiteral("■一\n\n■二\n"));
}

TEST(FrmCheckReportTest, ResizingKeepsTheListFillingAndButtonsInTheCorners) {
    frmCheckReport form;
    form.show();
    QCoreApplication::processEvents();
    const int textRight = form.width() - form.txtMessage()->geometry().right();
    const int textBottom = form.height() - form.txtMessage()->geometry().bottom();
    const int buttonBottom = form.height() - form.cmdClose()->geometry().bottom();
    const int closeRight = form.width() - form.cmdClose()->geometry().right();
    for (const QSize size : {QSize(1100, 720), QSize(500, 300), QSize(807, 458)}) {
        form.resize(size);
        QCoreApplication::processEvents();
        ASSERT_EQ(form.size(), size);
        const QRect text = form.txtMessage()->geometry();
        EXPECT_EQ(text.topLeft(), QPoint(8, 12));
        EXPECT_EQ(size.width() - text.right(), textRight);
        EXPECT_EQ(size.height() - text.bottom(), textBottom);
        EXPECT_EQ(form.cmdPrint()->x(), 8);
        EXPECT_EQ(size.height() - form.cmdPrint()->geometry().bottom(), buttonBottom);
        EXPECT_EQ(size.height() - form.cmdClose()->geometry().bottom(), buttonBottom);
        EXPECT_EQ(size.width() - form.cmdClose()->geometry().right(), closeRight);
        // Nothing overlaps: the label sits between the list and the buttons.
        EXPECT_LT(text.bottom(), form.Label1()->geometry().top());
        EXPECT_LT(form.Label1()->geometry().bottom(), form.cmdPrint()->geometry().top());
    }
    EXPECT_EQ(textRight, 9);   // 8 pixels of margin beyond the last pixel column
    EXPECT_EQ(closeRight, 9);
    EXPECT_EQ(buttonBottom, 9);
}

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

TEST(FrmCheckReportTest, NothingToPrintOrNoAnswerPrintsNothing) {
    RecordingUiGuard ui;
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("list.pdf"));
    PrintToGuard printTo(pdf);
    frmCheckReport form;

    form.loadText(QStringLiteral("■問題\r\n\r\n"));
    form.cmdPrint()->click();  // answered No
    EXPECT_FALSE(QFile::exists(pdf));

    ui->yesNoAnswer = MsgAnswer::Yes;
    form.loadText(QStringLiteral("   \r\n  "));
    form.cmdPrint()->click();
    EXPECT_FALSE(QFile::exists(pdf));
    ASSERT_EQ(ui->messages.size(), 3);
    EXPECT_EQ(ui->messages[2].request.kindLabel, QStringLiteral("0"));
    EXPECT_EQ(ui->messages[2].request.title, QStringLiteral("情報"));
    EXPECT_EQ(ui->messages[2].request.text, QStringLiteral("印刷する内容がありません"));
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
