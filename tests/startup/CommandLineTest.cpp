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
    QString f1, f2, f3;
    std::optional<OutputMode> f4;
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
    EXPECT_EQ(r.commandLine->mode, OutputMode::Print);
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

TEST(ParseCommandLine, MistakesAreSaidInJapanese) {
    const auto error = [](QStringList args) { return parse(std::move(args)).error; };
    EXPECT_EQ(error({"--frobnicate", "a.dat"}), QStringLiteral("不明なオプションがあります: frobnicate。使い方は --help で表示できます。"));
    EXPECT_EQ(error({"a.dat", "--pdf"}), QStringLiteral("オプション --pdf の値が指定されていません。"));
    EXPECT_EQ(error({"--mode", "5", "a.dat"}), QStringLiteral("--mode には 1、2、3 または 4 を指定してください。"));
    // An empty --home is not the executable's folder, nor an empty file the desktop's file dialog.
    EXPECT_EQ(error({"--home", "", "a.dat"}), QStringLiteral("--home にプログラムフォルダーが指定されていません。"));
    const QString noFile = QStringLiteral("申請データファイルが指定されていません。使い方は --help で表示できます。");
    EXPECT_EQ(error({"--batch", ""}), noFile);
    EXPECT_EQ(error({""}), noFile);
    EXPECT_EQ(error({"--batch", "--mode", "4", "a.dat"}), QStringLiteral("出力モード 4 では --pdf で PDF ファイルを指定してください。"));
    EXPECT_TRUE(parse({"--batch", "--mode", "3", "--pdf", "o.pdf", "a.dat"}).commandLine);
    // The desktop start without a file still asks for one.
    EXPECT_TRUE(parse({}).commandLine);
}

TEST(refuseCommandLine, DesktopSessionShowsTheSentenceInABox) {
    struct DesktopUi : test::RecordingUi {
        bool isBatch() const override { return false; }
    };
    auto ui = std::make_unique<DesktopUi>();
    DesktopUi* desktop = ui.get();
    setUserInterface(std::move(ui));
    EXPECT_EQ(refuseCommandLine(QStringLiteral("申請データファイルが指定されていません。")), 2);
    ASSERT_EQ(desktop->messages.size(), 1);
    EXPECT_EQ(desktop->messages[0].request.icon, MsgIcon::Critical);
    EXPECT_EQ(desktop->messages[0].request.text, QStringLiteral("申請データファイルが指定されていません。"));
    EXPECT_EQ(desktop->messages[0].request.title, QStringLiteral("起動できません"));
    setUserInterface(nullptr);
}

TEST(gCommandGet, WholeTextWithoutSlashIsFieldOne) {
    const Fields f = split(QStringLiteral("  Ｃ:Ｄａｔａ\\ＡＰＰ.dat  "), {"", "keep2", "keep3", OutputMode::SendFileCourse3});
    EXPECT_EQ(f.f1, QStringLiteral("c:data\\app.dat"));
    EXPECT_EQ(f.f2, QStringLiteral("keep2"));
    EXPECT_EQ(f.f4, OutputMode::SendFileCourse3);
}

TEST(gCommandGet, TooFewFieldsIsReportedInModeOne) {
    const test::ProgramFolder home("[System]\r\nShowErrMsg=-1\r\n");
    test::RecordingUiGuard ui;
    const Fields f = split(QStringLiteral("/a.dat/b.pdf"));
    EXPECT_EQ(f.f1, QStringLiteral("a.dat"));
    EXPECT_EQ(f.f2, QStringLiteral("b.pdf"));
    EXPECT_EQ(f.f3, QString());
    EXPECT_EQ(f.f4, std::nullopt);
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_TRUE(ui->messages[0].request.text.contains(QStringLiteral("場所： gCommandGet\r\n")));
    EXPECT_TRUE(ui->messages[0].request.text.endsWith(QStringLiteral("処理を中断します。")));
}

// Field 4 of the parent's text is read as it is typed: narrowed, then only
// the four digits are modes; anything else runs as no mode at all.
TEST(gCommandGet, FieldFourIsReadAsAnOutputMode) {
    EXPECT_EQ(split(QStringLiteral("/a.dat/b.pdf//３")).f4, OutputMode::SendFileCourse1);
    EXPECT_EQ(split(QStringLiteral("/a.dat/b.pdf/y/2/more")).f4, OutputMode::ApplicationPdf);
    const Fields four = split(QStringLiteral("/A.DAT/B.PDF//4"));
    EXPECT_EQ(four.f1, QStringLiteral("a.dat"));
    EXPECT_EQ(four.f4, OutputMode::SendFileCourse3);
    EXPECT_EQ(split(QStringLiteral("/a.dat/b.pdf//5")).f4, std::nullopt);
    EXPECT_EQ(split(QStringLiteral("/a.dat/b.pdf//")).f4, std::nullopt);
    EXPECT_EQ(split(QStringLiteral("/a.dat/b.pdf//1 1")).f4, std::nullopt);
}

TEST(OutputMode, OnlyTheFourDigitsAreModes) {
    EXPECT_EQ(outputModeFromString(u"1"), OutputMode::Print);
    EXPECT_EQ(outputModeFromString(u"2"), OutputMode::ApplicationPdf);
    EXPECT_EQ(outputModeFromString(u"3"), OutputMode::SendFileCourse1);
    EXPECT_EQ(outputModeFromString(u"4"), OutputMode::SendFileCourse3);
    for (const char16_t* text : {u"", u"0", u"5", u" 1", u"1 ", u"01", u"１", u"print"})
        EXPECT_EQ(outputModeFromString(text), std::nullopt) << QString::fromUtf16(text).toStdString();
    for (const char16_t* text : {u"1", u"2", u"3", u"4"})
        EXPECT_EQ(toString(*outputModeFromString(text)), QString::fromUtf16(text));
}

TEST(OutputMode, WhatEachModeMeans) {
    struct Meaning {
        OutputMode mode;
        bool pdf, menu, sendFile;
        int course;
        const char16_t* verb;
    };
    const Meaning meanings[] = {
        {OutputMode::Print, false, true, false, 0, u"印刷"},
        {OutputMode::ApplicationPdf, true, false, false, 0, u"出力"},
        {OutputMode::SendFileCourse1, true, true, true, 1, u"出力"},
        {OutputMode::SendFileCourse3, true, true, true, 3, u"出力"},
    };
    for (const Meaning& m : meanings) {
        SCOPED_TRACE(toString(m.mode).toStdString());
        EXPECT_EQ(writesPdf(m.mode), m.pdf);
        EXPECT_EQ(showsMenu(m.mode), m.menu);
        EXPECT_EQ(isSendFile(m.mode), m.sendFile);
        EXPECT_EQ(sendFileCourse(m.mode), m.course);
        EXPECT_EQ(outputVerb(m.mode), QString::fromUtf16(m.verb));
    }
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
