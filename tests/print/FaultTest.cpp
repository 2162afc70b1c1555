// Whole runs that meet a fault in what the user hands over or in the machine:
// a folder or file the program may not write or read, a database another
// program holds, a broken database, layout, rule or settings file. Each run
// must say so in Japanese through the error display, answer with its exit
// status, and leave the user's files (the settings, the sibling database, an
// earlier PDF) byte for byte as they were.
#include "support/ConnectedHome.h"
#include "support/Restricted.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <map>

using namespace kelvary::test;

namespace {

constexpr int kError = 3;
constexpr int kNoOutput = 1;

// Holds a database file the way another program in the middle of writing
// does: an open exclusive transaction.
class HeldByAnotherProgram {
public:
    explicit HeldByAnotherProgram(const QString& path) {
        EXPECT_EQ(sqlite3_open_v2(QFile::encodeName(path).constData(), &db_, SQLITE_OPEN_READWRITE, nullptr),
                  SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
    }
    ~HeldByAnotherProgram() {
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db_);
    }
    HeldByAnotherProgram(const HeldByAnotherProgram&) = delete;
    HeldByAnotherProgram& operator=(const HeldByAnotherProgram&) = delete;

private:
    sqlite3* db_ = nullptr;
};

class Fault : public ::testing::Test {
protected:
    void SetUp() override {
        // A good run first: the settings then hold this application's user
        // details, which a later run writes again with the same bytes, and
        // the PDF it leaves is the user's earlier one.
        const ProcessResult good = runKelvary(arguments(pdf()));
        ASSERT_EQ(good.exitCode, 0) << good.standardError.toStdString();
        ASSERT_TRUE(readFile(pdf()).startsWith("%PDF-"));
        QFile::remove(file("Temp/kelvary.log"));
    }

    QString file(const QString& name) const { return home.file(name); }
    QString pdf() const { return file(QStringLiteral("out.pdf")); }
    QString sampleApp() const { return file(QStringLiteral("sample/app.dat")); }

    QStringList arguments(const QString& pdfFile, const QString& application = QString()) const {
        return {QStringLiteral("--batch"), QStringLiteral("--home"), home.path(), QStringLiteral("--mode"),
                QStringLiteral("3"), QStringLiteral("--periods"), QStringLiteral("all"), QStringLiteral("--pdf"),
                pdfFile, application.isEmpty() ? sampleApp() : application};
    }

    // The bytes of the files a run must leave alone.
    void keep(const QStringList& names) {
        for (const QString& name : names) {
            kept[name] = readFile(file(name));
            ASSERT_FALSE(kept[name].isEmpty()) << name.toStdString();
        }
    }
    void expectKept() const {
        for (const auto& [name, bytes] : kept) EXPECT_TRUE(readFile(file(name)) == bytes) << name.toStdString() << " changed";
    }

    // The message on standard error (the batch form of the box) and in the log.
    void expectReported(const ProcessResult& r, const QString& message, bool logWritable = true) const {
        EXPECT_TRUE(r.standardError.contains(message)) << r.standardError.toStdString();
        if (logWritable)
            EXPECT_TRUE(QString::fromUtf8(readFile(file(QStringLiteral("Temp/kelvary.log")))).contains(message));
    }

    void requireRestrictedRuns() const {
        const QString why = restrictedRunUnavailable();
        if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
    }

    ScratchHome home;
    std::map<QString, QByteArray> kept;
};

const QStringList kUserFilesButThePdf{QStringLiteral("UserData.ini"), QStringLiteral("sample/Ledra.mdb"),
                                      QStringLiteral("Ledra_dummy.mdb")};
const QStringList kUserFiles = kUserFilesButThePdf + QStringList{QStringLiteral("out.pdf")};

// The number of pages poppler reads in a PDF; 0 when it reads none.
int pdfPageCount(const QString& path) {
    const ProcessResult info = runProgram(QStringLiteral("pdfinfo"), {path});
    for (const QString& line : info.standardOutput.split(QLatin1Char('\n')))
        if (line.startsWith(QStringLiteral("Pages:"))) return line.mid(6).trimmed().toInt();
    return 0;
}

}  // namespace

TEST_F(Fault, PdfFolderThatCannotBeWrittenOrACancelledRunKeepsTheEarlierPdf) {
    requireRestrictedRuns();
    const QString locked = file(QStringLiteral("locked"));
    ASSERT_TRUE(QDir().mkpath(locked));
    ASSERT_TRUE(QFile::copy(pdf(), locked + QStringLiteral("/out.pdf")));
    keep(kUserFiles + QStringList{QStringLiteral("locked/out.pdf")});

    const ProcessResult failed =
        runKelvaryWithout(Right::Write, locked, home.path(), arguments(locked + QStringLiteral("/out.pdf")));
    EXPECT_EQ(failed.exitCode, kError);
    expectReported(failed, QStringLiteral("PDFファイル「") + locked +
                               QStringLiteral("/out.pdf」を作成できません。保存先のフォルダーに書き込む権限がありません。"));
    expectReported(failed, QStringLiteral("「") + locked +
                               QStringLiteral("/out.pdf」にあるファイルは以前に作成されたもので、今回の出力ではありません。"));
    EXPECT_EQ(QDir(locked).entryList(QDir::Files), QStringList{QStringLiteral("out.pdf")});  // no temporary left

    // Nothing chosen in the menu, and No to the question about an application
    // with problems: both end without output and leave the earlier PDF.
    QStringList nothing = arguments(pdf());
    nothing[nothing.indexOf(QStringLiteral("all"))] = QStringLiteral("none");
    EXPECT_EQ(runKelvary(nothing).exitCode, kNoOutput);
    ASSERT_TRUE(QFile::copy(testDataDir() + QStringLiteral("/checks/problem_app.dat"), file("sample/problem_app.dat")));
    const ProcessResult refused = runKelvary(arguments(pdf(), file("sample/problem_app.dat")));
    EXPECT_EQ(refused.exitCode, kNoOutput);
    EXPECT_TRUE(refused.standardError.contains(QStringLiteral("書類の出力を継続しますか？\n--- No\n")))
        << refused.standardError.toStdString();
    expectKept();
    EXPECT_EQ(QDir(home.path()).entryList({QStringLiteral("*.pdf*")}, QDir::Files), QStringList{QStringLiteral("out.pdf")});
}

TEST_F(Fault, WorkingDatabaseThatCannotBeWrittenIsReportedBeforeAnythingIsTouched) {
    requireRestrictedRuns();
    keep(kUserFiles + QStringList{QStringLiteral("SystemData.mdb")});
    const ProcessResult r =
        runKelvaryWithout(Right::Write, file("SystemData.mdb"), home.path(), arguments(pdf()));
    EXPECT_EQ(r.exitCode, kError);
    expectReported(r, QStringLiteral("データベース '") + file("SystemData.mdb") +
                          QStringLiteral("' に書き込めません。ファイルが読み取り専用になっているか、書き込む権限がありません。"));
    // One report: the run ends instead of failing at every later step.
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
    expectKept();
}

TEST_F(Fault, WorkingDatabaseHeldByAnotherProgramIsReportedAndLeftAlone) {
    keep(kUserFiles + QStringList{QStringLiteral("SystemData.mdb")});
    ProcessResult r;
    {
        const HeldByAnotherProgram other(file("SystemData.mdb"));
        r = runKelvary(arguments(pdf()));
    }
    EXPECT_EQ(r.exitCode, kError);
    expectReported(r, QStringLiteral("データベース '") + file("SystemData.mdb") +
                          QStringLiteral("' は他のプログラムが使用中です。"));
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
    expectKept();
}

TEST_F(Fault, TempThatCannotBeWrittenStopsTheRunAndStillTellsTheUser) {
    requireRestrictedRuns();
    keep(kUserFiles);
    // The good run's symbols are still in Temp: they must not pass for this run's.
    const QByteArray earlierSymbol = readFile(file("Temp/ApplyDoc1.bmp"));
    ASSERT_FALSE(earlierSymbol.isEmpty());

    const ProcessResult r = runKelvaryWithout(Right::Write, file("Temp"), home.path(), arguments(pdf()));
    EXPECT_EQ(r.exitCode, kError);
    expectReported(r, QStringLiteral("作業フォルダー「") + file("Temp") + QStringLiteral("」に書き込めません。"),
                   /*logWritable=*/false);
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
    EXPECT_FALSE(QFile::exists(file("Temp/kelvary.log")));
    EXPECT_EQ(readFile(file("Temp/ApplyDoc1.bmp")), earlierSymbol);
    expectKept();
}

TEST_F(Fault, SiblingDatabaseCutShortHeldOrForeignIsReportedOnceAndNothingIsWritten) {
    const QString sibling = file("sample/Ledra.mdb");
    const QByteArray whole = readFile(sibling);
    ASSERT_GT(whole.size(), 8192);
    const QString cannotRead = QStringLiteral("財務諸表データ (LedraDataPath) を読み込めません。データベース '") + sibling;
    const auto runOn = [&](const QByteArray& siblingBytes, bool held) {
        writeFile(sibling, siblingBytes);
        kept.clear();
        keep(kUserFiles);
        if (!held) return runKelvary(arguments(pdf()));
        const HeldByAnotherProgram other(sibling);
        return runKelvary(arguments(pdf()));
    };
    struct Case {
        const char* name;
        QByteArray bytes;
        bool held;
        QString message;
    };
    const Case cases[] = {
        {"cut in the middle", whole.left(whole.size() / 2), false,
         cannotRead + QStringLiteral("' は壊れているため読み込めません。ファイルが途中で切れているか、内容が損なわれています。")},
        {"held by another program", whole, true, cannotRead + QStringLiteral("' は他のプログラムが使用中です。")},
        // A Jet database, as the sibling program's older versions wrote it.
        {"not SQLite", hexBytes("00 01 00 00 53 74 61 6E 64 61 72 64 20 4A 65 74 20 44 42 00") + QByteArray(4096, '\0'),
         false, QStringLiteral("財務諸表データ (LedraDataPath) を読み込めません。ファイル '") + sibling +
                    QStringLiteral("' はこのプログラムで読み取れるデータベースではありません。")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QFile::remove(file("Temp/kelvary.log"));
        const ProcessResult r = runOn(c.bytes, c.held);
        EXPECT_EQ(r.exitCode, kError);
        expectReported(r, c.message);
        EXPECT_TRUE(r.standardError.contains(QStringLiteral("財務諸表データのない申請として続けます。")));
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
        expectKept();
    }
}

TEST_F(Fault, BrokenLayoutIsReportedOnceAPeriodAndTheOtherPagesAreDelivered) {
    const QString layout = file("PrintFile/FSQRCode.w30");
    const QByteArray whole = readFile(layout);
    ASSERT_FALSE(whole.isEmpty());
    const QByteArray broken[] = {
        whole.left(whole.size() / 2),                                      // cut short: no longer JSON
        "{\"paper\": \"A4\", \"pages\": 5}",                                // JSON, but no page list
        "{\"paper\": \"A4\", \"pages\": [{\"items\": [{\"type\": \"field\", \"x\": \"left\"}]}]}",  // a field without a name
    };
    for (const QByteArray& bytes : broken) {
        SCOPED_TRACE(bytes.left(60).toStdString());
        writeFile(layout, bytes);
        kept.clear();
        keep(kUserFilesButThePdf);
        writeFile(pdf(), "the user's earlier PDF");
        QFile::remove(file("Temp/kelvary.log"));
        const ProcessResult r = runKelvary(arguments(pdf()));
        EXPECT_EQ(r.exitCode, kError);
        expectReported(r, QStringLiteral("帳票ファイル「FSQRCode.w30」を読み込めません。"));
        // The sample's three periods each open the layout once.
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 3) << r.standardError.toStdString();
        EXPECT_FALSE(r.standardError.contains(QStringLiteral("は作成しませんでした。")));
        // Supplement, application form and the newest period's side sheet.
        EXPECT_EQ(pdfPageCount(pdf()), 3);
        expectKept();
    }
}

TEST_F(Fault, SettingsFileThatCannotBeReadStopsTheRunBeforeAnythingIsWritten) {
    requireRestrictedRuns();
    const QString ini = file("UserData.ini");
    const QString named = QStringLiteral("設定ファイル「") + ini + QStringLiteral("」");
    const QStringList others{QStringLiteral("sample/Ledra.mdb"), QStringLiteral("out.pdf"),
                             QStringLiteral("Ledra_dummy.mdb"), QStringLiteral("SystemData.mdb")};
    // The box shows although the setting that could hide it cannot be read.
    const auto expectStopped = [&](const ProcessResult& r, const QString& message) {
        EXPECT_EQ(r.exitCode, kError);
        expectReported(r, message);
        EXPECT_TRUE(r.standardError.contains(QStringLiteral("=== 3 エラーが発生しました\n")));
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== ")), 1) << r.standardError.toStdString();
        expectKept();
    };

    {
        SCOPED_TRACE("no right to read it");
        keep(others + QStringList{QStringLiteral("UserData.ini")});
        expectStopped(runKelvaryWithout(Right::Read, ini, home.path(), arguments(pdf())),
                      named + QStringLiteral("を読み込めません。"));
    }
    {
        SCOPED_TRACE("saved as UTF-8 by another editor");
        // "[System]", "ShowErrMsg=0", "[UserInfo]", "UserName=佐藤" in UTF-8.
        writeFile(ini, QByteArray("[System]\r\nShowErrMsg=0\r\n[UserInfo]\r\nUserName=") + hexBytes("E4 BD 90 E8 97 A4") +
                           "\r\n");
        kept.clear();
        keep(others + QStringList{QStringLiteral("UserData.ini")});
        QFile::remove(file("Temp/kelvary.log"));
        expectStopped(runKelvary(arguments(pdf())), named + QStringLiteral("の文字コードが Shift_JIS (CP932) ではない"));
    }
    {
        SCOPED_TRACE("a folder of that name");
        ASSERT_TRUE(QFile::remove(ini));
        ASSERT_TRUE(QDir().mkpath(ini));
        kept.clear();
        keep(others);
        QFile::remove(file("Temp/kelvary.log"));
        expectStopped(runKelvary(arguments(pdf())), named + QStringLiteral("がフォルダーになっています。"));
        EXPECT_TRUE(QDir(ini).isEmpty());
    }
}

TEST_F(Fault, RuleFileMissingOrCutShortIsReportedOnceAPeriod) {
    // The earlier form edition checks each period's statements against the
    // rule files; the sample without its edition record is one.
    QByteArray application = readFile(sampleApp());
    const qsizetype edition = application.indexOf("\"EnforceDate\"");
    ASSERT_GE(edition, 0);
    application.remove(edition, application.indexOf('\n', edition) - edition + 1);
    const QString earlier = file("sample/earlier.dat");
    writeFile(earlier, application);
    QStringList printToPdf = arguments(pdf(), earlier);
    printToPdf[printToPdf.indexOf(QStringLiteral("3"))] = QStringLiteral("1");
    printToPdf[printToPdf.indexOf(QStringLiteral("--pdf"))] = QStringLiteral("--print-to");

    const QString rules = file("DbtData0607H.txt");
    const QByteArray whole = readFile(rules);
    // Cut right after a comma of the terms of check 470, the record before 471.
    const qsizetype next = whole.indexOf(":A471");
    ASSERT_GT(next, 0);
    const QByteArray cut = whole.left(whole.lastIndexOf(',', next) + 1);

    const auto expectOnceAPeriod = [&](const ProcessResult& r, const QString& message) {
        EXPECT_EQ(r.exitCode, kError);
        expectReported(r, message);
        // The sample's three periods, one report each, and the problem list says a check could not run.
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 エラーが発生しました")), 3) << r.standardError.toStdString();
        EXPECT_TRUE(r.standardError.contains(QStringLiteral("■プログラムのエラーが発生しました。(場所:gblnCheckItemSum)")));
        expectKept();
    };
    {
        SCOPED_TRACE("missing");
        ASSERT_TRUE(QFile::remove(rules));
        keep(kUserFiles);
        expectOnceAPeriod(runKelvary(printToPdf),
                          QStringLiteral("ファイル「") + rules + QStringLiteral("」が見つかりません。"));
    }
    {
        SCOPED_TRACE("cut short");
        writeFile(rules, cut);
        kept.clear();
        keep(kUserFiles + QStringList{QStringLiteral("DbtData0607H.txt")});
        QFile::remove(file("Temp/kelvary.log"));
        const ProcessResult r = runKelvary(printToPdf);
        expectOnceAPeriod(r, QStringLiteral("ファイル「") + rules +
                                 QStringLiteral("」は途中で切れています。項番 471 から 540 の検査ができません。"));
        // The check the file ends inside meets its end, as it always did.
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 中止\nファイルの終端に達しました\n項番：470\n")), 3);
    }
}

TEST_F(Fault, PdfOnADiskThatFillsUpIsReportedAndTheEarlierPdfStays) {
    const QString why = fullDiskRunUnavailable();
    if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
    keep(kUserFiles);
    const QString folder = file("small-disk");
    ASSERT_TRUE(QDir().mkpath(folder));
    // The sample's pages take well over 100 KiB; the disk holds 64 KiB.
    const FullDiskRun run = runKelvaryOnFullDisk(folder, 64 * 1024, QStringLiteral("out.pdf"), "the user's earlier PDF",
                                                 arguments(folder + QStringLiteral("/out.pdf")));
    EXPECT_EQ(run.process.exitCode, kError);
    expectReported(run.process, QStringLiteral("PDFファイル「") + folder +
                                    QStringLiteral("/out.pdf」を保存できません。ディスクの空き容量を確認してください。"));
    expectReported(run.process, QStringLiteral("「") + folder +
                                    QStringLiteral("/out.pdf」にあるファイルは以前に作成されたもので、今回の出力ではありません。"));
    EXPECT_EQ(run.filesLeft, QStringList{QStringLiteral("out.pdf")});  // no half-written temporary
    EXPECT_EQ(run.fileLeft, QByteArray("the user's earlier PDF"));
    expectKept();
}

TEST_F(Fault, TempOnADiskThatFillsUpLeavesNoHalfWrittenSymbol) {
    const QString why = fullDiskRunUnavailable();
    if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
    // The run goes on past the symbols it could not save, so its PDF replaces the earlier one.
    keep(kUserFilesButThePdf);
    // Room for two or three of the sample's symbol images.
    const FullDiskRun run = runKelvaryOnFullDisk(file("Temp"), 24 * 1024, QStringLiteral("kelvary.log"), QByteArray(),
                                                 arguments(pdf()));
    EXPECT_EQ(run.process.exitCode, kError);
    EXPECT_TRUE(run.process.standardError.contains(
        QStringLiteral("を保存できません。ディスクの空き容量と、作業フォルダーに書き込めるかを確認してください。")))
        << run.process.standardError.toStdString();
    // At most once for the application's symbols and once for each period's.
    const qsizetype reports = run.process.standardError.count(QStringLiteral("=== 3 "));
    EXPECT_GE(reports, 1);
    EXPECT_LE(reports, 4) << run.process.standardError.toStdString();
    // Whole files only: images, payload copies each beside its image, the log.
    ASSERT_FALSE(run.filesLeft.isEmpty());
    for (const QString& name : run.filesLeft) {
        if (name == QStringLiteral("kelvary.log")) continue;
        if (name.endsWith(QStringLiteral(".bmp.Txt"))) {
            EXPECT_TRUE(run.filesLeft.contains(name.chopped(4))) << name.toStdString();
            continue;
        }
        EXPECT_TRUE(name.endsWith(QStringLiteral(".bmp"))) << name.toStdString();
    }
    expectKept();
}
