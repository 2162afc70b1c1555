// The problem window on the offscreen platform: printing lists into PDFs that
// poppler's tools read back (pages, words and their boxes), a print that
// cannot start, and the keyboard.
#include "checks/frmCheckReport.h"

#include "platform/PdfCheck.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QFont>
#include <QPlainTextEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::RecordingUiGuard;

TEST(FrmCheckReportTest, LongListPrintsOnSeveralPagesWithEveryLine) {
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("list.pdf"));
    ui->target = PrintTarget::pdfFile(pdf);
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic"));

    QString text;
    for (int i = 1; i <= 200; ++i)
        text += QStringLiteral("LINE%1 ■問題点\r\n").arg(i, 3, 10, QLatin1Char('0'));

    frmCheckReport form;
    form.loadText(text);
    form.cmdPrint()->click();

    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_EQ(ui->messages[0].request.title, QStringLiteral("確認"));
    EXPECT_EQ(ui->messages[0].request.text, QStringLiteral("印刷を実行しますか？"));
    ASSERT_TRUE(QFile::exists(pdf));
    // About seventy lines of 10 points fit an A4 page: 201 lines need three.
    EXPECT_GE(test::pdfInfo(pdf, QStringLiteral("Pages")).toInt(), 3);
    EXPECT_EQ(test::pdfPageSize(pdf, 1), QStringLiteral("595 x 842 pts (A4)"));
    const QString printed = test::pdfText(pdf);
    for (int i = 1; i <= 200; ++i) {
        const QString label = QStringLiteral("LINE%1").arg(i, 3, 10, QLatin1Char('0'));
        EXPECT_TRUE(printed.contains(label + QStringLiteral(" ■問題点"))) << label.toStdString();
    }
    // The list runs down the pages in order: page 2 starts after page 1 ends.
    const QStringList pages = printed.split(QLatin1Char('\f'));
    ASSERT_GE(pages.size(), 3);
    EXPECT_TRUE(pages[0].contains(QStringLiteral("LINE001")));
    EXPECT_FALSE(pages[0].contains(QStringLiteral("LINE200")));
    EXPECT_TRUE(pages[1].contains(QStringLiteral("LINE") +
                                  QString::number(pages[0].count(QStringLiteral("LINE")) + 1).rightJustified(3, QLatin1Char('0'))));
}

using test::findWord;
using test::pdfWords;
using test::PdfWord;

TEST(FrmCheckReportTest, ValueLinesKeepTheirAmountsBesideTheirLabels) {
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    QTemporaryDir dir;
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic"));
    // Value lines as the statement checks write them: the label padded with
    // "_" to 100 bytes, the amount right-aligned in 16 columns.
    const QString sumLine = QStringLiteral("　計算値：") + QString(90, QLatin1Char('_')) + QStringLiteral("__ 1,234,567,890");
    const QString targetLine = QStringLiteral("　TARGET：") + QString(90, QLatin1Char('_')) + QStringLiteral("_____ 98,765,432");
    ASSERT_EQ(sumLine.size(), 5 + 90 + 16);
    const QString list = QStringLiteral("■TITLE\r\n\r\n") + sumLine + QStringLiteral("\r\n") + targetLine + QStringLiteral("\r\n\r\n\r\n");
    {
        SCOPED_TRACE("lines of 116 columns");
        const QString pdf = dir.filePath(QStringLiteral("values.pdf"));
        ui->target = PrintTarget::pdfFile(pdf);
        frmCheckReport form;
        form.loadText(list);
        form.cmdPrint()->click();
        const QList<PdfWord> words = pdfWords(pdf);
        const PdfWord* amount = findWord(words, QStringLiteral("1,234,567,890"));
        const PdfWord* label = findWord(words, QStringLiteral("計算値：") + QString(92, QLatin1Char('_')));
        ASSERT_TRUE(amount && label) << test::pdfText(pdf).toStdString();
        // On the label's line, to its right, and on the paper (A4: 595 points wide).
        EXPECT_NEAR(amount->yMax, label->yMax, 0.5);
        EXPECT_GT(amount->xMin, label->xMax);
        EXPECT_LT(amount->xMax, 595.0);
        // Smaller than the usual ten points, still readable.
        EXPECT_LT(amount->yMax - amount->yMin, 10.0);
        EXPECT_GT(amount->yMax - amount->yMin, 6.0);
        const PdfWord* second = findWord(words, QStringLiteral("98,765,432"));
        ASSERT_TRUE(second);
        EXPECT_NEAR(second->xMax, amount->xMax, 0.5);
    }
    {
        SCOPED_TRACE("short lines");
        const QString pdf = dir.filePath(QStringLiteral("short.pdf"));
        ui->target = PrintTarget::pdfFile(pdf);
        frmCheckReport form;
        form.loadText(QStringLiteral("■SHORT\r\n"));
        form.cmdPrint()->click();
        const QList<PdfWord> words = pdfWords(pdf);
        const PdfWord* word = findWord(words, QStringLiteral("■SHORT"));
        ASSERT_TRUE(word);
        EXPECT_NEAR(word->yMax - word->yMin, 10.0, 0.6);
    }
    {
        SCOPED_TRACE("a line too wide at any readable size");
        const QString pdf = dir.filePath(QStringLiteral("wide.pdf"));
        ui->target = PrintTarget::pdfFile(pdf);
        const QString wide = QStringLiteral("0123456789").repeated(30);
        frmCheckReport form;
        form.loadText(wide + QStringLiteral("\r\n"));
        form.cmdPrint()->click();
        // It continues on the next line, nothing cut.
        QString joined = test::pdfText(pdf);
        joined.remove(QRegularExpression(QStringLiteral("\\s")));
        EXPECT_TRUE(joined.contains(wide));
        for (const PdfWord& w : pdfWords(pdf)) EXPECT_LT(w.xMax, 595.0) << w.text.toStdString();
    }
}

TEST(FrmCheckReportTest, APrintThatCannotStartIsReported) {
    if (!QPrinterInfo::availablePrinters().isEmpty()) GTEST_SKIP() << "this machine has a printer; nothing to refuse";
    test::ProgramFolder folder("[System]\r\nShowErrMsg=-1\r\n");
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    frmCheckReport form;
    form.loadText(QStringLiteral("■問題\r\n"));
    form.cmdPrint()->click();
    ASSERT_EQ(ui->messages.size(), 2);
    EXPECT_EQ(ui->messages[1].request.title, QStringLiteral("エラーが発生しました"));
    EXPECT_TRUE(ui->messages[1].request.text.contains(QStringLiteral("場所： mPrintOutError\r\n")))
        << ui->messages[1].request.text.toStdString();
    EXPECT_TRUE(ui->messages[1].request.text.contains(QStringLiteral("内容： 通常使うプリンタが設定されていません。")));
}

TEST(FrmCheckReportTest, EnterClosesTheListAndPrintsNothing) {
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    QTemporaryDir dir;
    ui->target = PrintTarget::pdfFile(dir.filePath(QStringLiteral("list.pdf")));
    frmCheckReport form;
    form.loadText(QStringLiteral("■問題\r\n"));
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    form.txtMessage()->setFocus();
    EXPECT_TRUE(form.cmdClose()->isDefault());
    QTest::keyClick(form.txtMessage(), Qt::Key_Return);
    EXPECT_TRUE(ui->messages.isEmpty());
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("list.pdf"))));
    // The print button still prints when it is the one pressed.
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    form.cmdPrint()->setFocus();
    QTest::keyClick(form.cmdPrint(), Qt::Key_Space);
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_EQ(ui->messages[0].request.text, QStringLiteral("印刷を実行しますか？"));
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("list.pdf"))));
}

}  // namespace
}  // namespace kelvary
