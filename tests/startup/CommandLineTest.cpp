// The command line: options, output modes, and the program's answers to
// mistakes; and the small value routines every payload and printed form leans on.
#include "platform/AppObject.h"
#include "startup/CommandLine.h"
#include "startup/FormEdition.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

using namespace kelvary;

namespace {
CommandLineResult parse(QStringList args) {
    args.prepend(QStringLiteral("kelvary"));
    return parseCommandLine(args);
}
}  // namespace

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

TEST(glngLen, CountsCp932Bytes) {
    EXPECT_EQ(glngLen(Variant(QStringLiteral("ＡＢ"))), 4);
    EXPECT_EQ(glngLen(Variant(QStringLiteral("AB"))), 2);
    EXPECT_EQ(glngLen(Variant(QStringLiteral("ｱｲ"))), 2);  // half-width katakana: one byte each
    EXPECT_EQ(glngLen(Variant::null()), 0);
    EXPECT_EQ(glngLen(Variant(1234)), 4);
}

// Only the date 2008-04-01 itself, held as a date, is the current edition;
// the same day as text or with a time, and every other date, are earlier.
TEST(FormEdition, ReadFromTheEnforceDate) {
    EXPECT_EQ(formEditionFromEnforceDate(Variant(QDate(2008, 4, 1))), FormEdition::Form200804);
    for (const Variant& other : {Variant(QDate(2004, 3, 1)), Variant(QDate(2008, 3, 31)), Variant(QDate(2010, 4, 1)),
                                 Variant(VbDate{QDate(2008, 4, 1), 1}), Variant(QStringLiteral("2008/04/01")),
                                 Variant::null(), Variant()})
        EXPECT_EQ(formEditionFromEnforceDate(other), FormEdition::Earlier) << other.text().toStdString();
}
