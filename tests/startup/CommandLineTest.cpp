// The command line: options, the parent's one text split by gCommandGet, and
// the program's answers to --help, --version and mistakes.
#include "platform/AppObject.h"
#include "startup/CommandLine.h"
#include "startup/mdlFunctionApplication.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace kelvary;

namespace {
CommandLineResult parse(QStringList args) {
    args.prepend(QStringLiteral("kelvary"));
    return parseCommandLine(args);
}

struct Fields {
    QString f1, f2, f3, f4;
};
Fields split(const QString& text, Fields start = {}) {
    app::setCommandLine(text);
    gCommandGet(start.f1, start.f2, start.f3, start.f4);
    app::setCommandLine(QString());
    return start;
}
}  // namespace

TEST(ParseCommandLine, DefaultsAndBatchOptions) {
    const auto r = parse({"--batch", "--periods", "1,3", "--course", "3", "--yes", "a.dat"});
    ASSERT_TRUE(r.commandLine);
    EXPECT_EQ(r.commandLine->mode, QStringLiteral("1"));
    EXPECT_TRUE(r.commandLine->batch.enabled);
    EXPECT_EQ(r.commandLine->batch.periods, QStringLiteral("1,3"));
    EXPECT_EQ(r.commandLine->batch.course, QStringLiteral("3"));
    EXPECT_TRUE(r.commandLine->batch.answerYes);
}

TEST(ParseCommandLine, MistakesAreRefused) {
    EXPECT_FALSE(parse({"--frobnicate", "a.dat"}).commandLine);
    EXPECT_FALSE(parse({"--mode", "5", "a.dat"}).commandLine);
    EXPECT_FALSE(parse({"--periods", "latest", "a.dat"}).commandLine);
    EXPECT_FALSE(parse({"--course", "2", "a.dat"}).commandLine);
    EXPECT_FALSE(parse({"--batch"}).commandLine);
    EXPECT_FALSE(parse({"a.dat", "b.dat"}).commandLine);
}

TEST(gCommandGet, WholeTextWithoutSlashIsFieldOne) {
    const Fields f = split(QStringLiteral("  Ｃ:Ｄａｔａ\\ＡＰＰ.dat  "), {"", "keep2", "keep3", "keep4"});
    EXPECT_EQ(f.f1, QStringLiteral("c:data\\app.dat"));
    EXPECT_EQ(f.f2, QStringLiteral("keep2"));
    EXPECT_EQ(f.f4, QStringLiteral("keep4"));
}

TEST(gCommandGet, TooFewFieldsIsReportedInModeOne) {
    const test::ProgramFolder home("[System]\r\nShowErrMsg=-1\r\n");
    test::RecordingUiGuard ui;
    const Fields f = split(QStringLiteral("/a.dat/b.pdf"));
    EXPECT_EQ(f.f1, QStringLiteral("a.dat"));
    EXPECT_EQ(f.f2, QStringLiteral("b.pdf"));
    EXPECT_EQ(f.f3, QString());
    EXPECT_EQ(f.f4, QString());
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_TRUE(ui->messages[0].request.text.contains(QStringLiteral("場所： gCommandGet\r\n")));
    EXPECT_TRUE(ui->messages[0].request.text.endsWith(QStringLiteral("処理を中断します。")));
}

TEST(Program, LayoutProofPrintsTheFieldNames) {
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("proof.pdf"));
    const auto proof = test::runKelvary({"--home", test::templateDir(), "--layout-proof", "FSQRCode.w30", pdf});
    ASSERT_EQ(proof.exitCode, 0) << proof.standardError.toStdString();
    QProcess text;
    text.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    text.waitForFinished(30000);
    const QString page = QString::fromUtf8(text.readAllStandardOutput());
    EXPECT_TRUE(page.contains(QStringLiteral("WrText12"))) << page.toStdString();
    EXPECT_TRUE(page.contains(QStringLiteral("FiscalTerm")));

    const auto missing = test::runKelvary({"--home", test::templateDir(), "--layout-proof", "None.w30", pdf + "2"});
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_TRUE(missing.standardError.contains(QStringLiteral("None.w30")));
}

// The program itself, on a C locale, words Qt's own file dialog in Japanese.
TEST(Program, QtTextsAreJapaneseOnAnyLocale) {
    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", "C");
    const auto run = test::runKelvary({"--qt-texts"});
    if (before.isNull()) qunsetenv("LC_ALL");
    else qputenv("LC_ALL", before);
    ASSERT_EQ(run.exitCode, 0) << run.standardError.toStdString();
    const QStringList lines = run.standardOutput.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const char* expected : {"lookInLabel: アドレス:", "fileNameLabel: ファイル名(&N):",
                                 "fileTypeLabel: ファイルの種類:", "button: 開く(&O)", "button: キャンセル",
                                 "column: 名前", "column: サイズ", "column: タイプ", "column: 更新日",
                                 "menu: コピー(&C)", "menu: すべてを選択"})
        EXPECT_TRUE(lines.contains(QString::fromUtf8(expected))) << expected << "\n" << run.standardOutput.toStdString();
}
