// Whole runs that meet a fault in what the user hands over or in the machine:
// a folder or file the program may not write or read, a database another
// program holds, a broken database, layout, rule or settings file. Each run
// must say so in Japanese through the error display, answer with its exit
// status, and leave the user's files (the settings, the sibling database, an
// earlier PDF) byte for byte as they were.
#include "support/ConnectedHome.h"
#include "support/Restricted.h"
#include "qr/QrHome.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>

#include <QFileInfo>

#include <sqlite3.h>
#include <sys/stat.h>

#include <fcntl.h>
#include <unistd.h>

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

// Holds a Jet file the way a program writing it does: a write lock over the
// file (when `held`).
class JetHeldByAnotherProgram {
public:
    JetHeldByAnotherProgram(const QString& path, bool held) {
        if (!held) return;
        fd_ = ::open(QFile::encodeName(path).constData(), O_RDWR);
        EXPECT_GE(fd_, 0);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        EXPECT_EQ(fcntl(fd_, F_SETLK, &lock), 0);
    }
    ~JetHeldByAnotherProgram() {
        if (fd_ >= 0) ::close(fd_);
    }
    JetHeldByAnotherProgram(const JetHeldByAnotherProgram&) = delete;
    JetHeldByAnotherProgram& operator=(const JetHeldByAnotherProgram&) = delete;

private:
    int fd_ = -1;
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
        // A workbook saved under the database's name.
        {"not a database", hexBytes("D0 CF 11 E0 A1 B1 1A E1") + QByteArray(4096, '\0'), false,
         QStringLiteral("財務諸表データ (LedraDataPath) を読み込めません。ファイル '") + sibling +
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

TEST_F(Fault, JetSiblingDatabaseCutShortOrHeldIsReportedOnceAndNoCopyIsLeft) {
    const QString sibling = file("sample/Ledra.mdb");
    const QByteArray whole = readFile(testDataDir() + QStringLiteral("/jet/Ledra-V2000.mdb"));
    ASSERT_GT(whole.size(), 8192);
    const QString cannotRead = QStringLiteral("財務諸表データ (LedraDataPath) を読み込めません。データベース '") + sibling;
    struct Case {
        const char* name;
        QByteArray bytes;
        bool held;
        QString message;
    };
    const Case cases[] = {
        {"cut in half", whole.left(whole.size() / 2), false,
         cannotRead + QStringLiteral("' は壊れているため読み込めません。ファイルが途中で切れているか、内容が損なわれています。")},
        {"held by another program", whole, true, cannotRead + QStringLiteral("' は他のプログラムが使用中です。")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        writeFile(sibling, c.bytes);
        kept.clear();
        keep(kUserFiles);
        QFile::remove(file("Temp/kelvary.log"));
        ProcessResult r;
        {
            const JetHeldByAnotherProgram other(sibling, c.held);
            r = runKelvary(arguments(pdf()));
        }
        EXPECT_EQ(r.exitCode, kError);
        expectReported(r, c.message);
        EXPECT_TRUE(r.standardError.contains(QStringLiteral("財務諸表データのない申請として続けます。")));
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
        // Nothing but the report: no reader's chatter about the pages it missed.
        EXPECT_TRUE(r.standardError.startsWith(QStringLiteral("=== 3 "))) << r.standardError.toStdString();
        // The application is still printed, without statements.
        EXPECT_TRUE(readFile(pdf()).startsWith("%PDF-"));
        EXPECT_EQ(sqlColumn(file("SystemData.mdb"), "SELECT COUNT(*) FROM tblIndex"), QStringList{"0"});
        expectKept();
        EXPECT_EQ(QDir(file("Temp")).entryList({QStringLiteral("Ledra-*")}, QDir::Files), QStringList());
    }
}

// A Jet file without one of the tables, and a Jet 3 file of another program
// with none of them, fare as SQLite files in the same state: the same reports,
// the same exit status, the same working tables.
TEST_F(Fault, JetSiblingDatabaseWithoutTablesFaresAsAnSqliteOne) {
    const QString sibling = file("sample/Ledra.mdb");
    const QByteArray sqliteSample = readFile(sibling);
    const auto runOn = [&](const QByteArray& bytes) {
        writeFile(sibling, bytes);
        QFile::remove(file("Temp/kelvary.log"));
        return runKelvary(arguments(pdf()));
    };
    const auto workingTables = [&] {
        return sqlRows(file("SystemData.mdb"), QStringLiteral("SELECT (SELECT COUNT(*) FROM tblIndex) || ',' || "
                                                              "(SELECT COUNT(*) FROM tmpFSInfoData) || ',' || "
                                                              "(SELECT COUNT(*) FROM tmpFSItemData) || ',' || "
                                                              "(SELECT COUNT(*) FROM tmpFSNoteData)"));
    };
    struct Case {
        const char* name;
        QByteArray jet;
        bool fromSample;           // the SQLite twin starts as the sample, or empty
        const char* sqliteScript;  // then this makes it the Jet file's twin
        const char* missingTable;
    };
    const Case cases[] = {
        {"without T_FSNote", readFile(testDataDir() + QStringLiteral("/jet/Ledra-NoNote.mdb")), true,
         "DROP TABLE T_FSNote;", "T_FSNote"},
        {"Jet 3, other tables", readFile(testDataDir() + QStringLiteral("/jet/access/test2V1997.mdb")), false,
         "CREATE TABLE MSP_PROJECTS (PROJ_ID INTEGER);", "T_MainData"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString sqliteTwin = file(QStringLiteral("twin-%1.sqlite").arg(&c - cases));
        if (c.fromSample) writeFile(sqliteTwin, sqliteSample);
        sqlExec(sqliteTwin, c.sqliteScript);
        const ProcessResult fromSqlite = runOn(readFile(sqliteTwin));
        const QStringList sqliteTables = workingTables();
        const ProcessResult fromJet = runOn(c.jet);
        EXPECT_TRUE(fromJet.standardError.contains(QStringLiteral("データベース '") + sibling +
                                                   QStringLiteral("' にテーブル '") +
                                                   QString::fromLatin1(c.missingTable) +
                                                   QStringLiteral("' が見つかりません。")))
            << fromJet.standardError.toStdString();
        EXPECT_EQ(fromJet.exitCode, fromSqlite.exitCode);
        EXPECT_EQ(fromJet.standardError, fromSqlite.standardError);
        EXPECT_EQ(workingTables(), sqliteTables);
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

namespace {

// A program folder's own sample application, changed by one edit of its text.
QByteArray editedSample(const QByteArray& sample, const QByteArray& before, const QByteArray& after) {
    QByteArray edited = sample;
    EXPECT_GE(edited.indexOf(before), 0) << before.toStdString();
    edited.replace(edited.indexOf(before), before.size(), after);
    return edited;
}

void makeFifo(const QString& path) { ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0); }

}  // namespace

TEST_F(Fault, PdfTargetThatIsNoPlainFileOrOneOfTheRunsOwnIsRefusedBeforeTheRun) {
    makeFifo(file("fifo"));
    ASSERT_TRUE(QFile::link(file("sample/Ledra.mdb"), file("link-to-ledra.pdf")));
    const QString refused = QStringLiteral("です。上書きすると元の内容が失われるため、処理を開始しません。別のファイル名を指定してください。");
    const auto target = [&](const QString& path, const QString& what) {
        return QStringLiteral("PDFファイルの出力先「") + path + QStringLiteral("」は") + what + refused;
    };
    const QString longName = file(QString(300, QLatin1Char('a')) + QStringLiteral(".pdf"));
    struct Case {
        QString option;
        QString path;
        QString message;
    };
    const Case cases[] = {
        {"--pdf", file("sample/Ledra.mdb"), target(file("sample/Ledra.mdb"), "財務諸表データ (Ledra.mdb)")},
        {"--pdf", file("link-to-ledra.pdf"), target(file("link-to-ledra.pdf"), "財務諸表データ (Ledra.mdb)")},
        {"--pdf", sampleApp(), target(sampleApp(), "申請データファイル")},
        {"--pdf", file("UserData.ini"), target(file("UserData.ini"), "プログラムのファイル UserData.ini")},
        {"--pdf", file("SystemData.mdb"), target(file("SystemData.mdb"), "プログラムのファイル SystemData.mdb")},
        {"--pdf", file("Temp/out.pdf"), target(file("Temp/out.pdf"), "プログラムフォルダーの Temp フォルダーの中")},
        {"--pdf", file("DbtData0607K.txt"), target(file("DbtData0607K.txt"), "プログラムのファイル DbtData0607K.txt")},
        {"--pdf", file("sample"), target(file("sample"), "フォルダー")},
        {"--pdf", file("fifo"), target(file("fifo"), "名前付きパイプ (FIFO)")},
        {"--pdf", QStringLiteral("/dev/null"), target(QStringLiteral("/dev/null"), "デバイス")},
        {"--pdf", longName, QStringLiteral("ファイル名が長すぎます。PDFファイルの出力先「") + longName +
                                QStringLiteral("」には、もっと短い名前を指定してください。")},
        {"--print-to", file("sample/Ledra.mdb"), target(file("sample/Ledra.mdb"), "財務諸表データ (Ledra.mdb)")},
    };
    keep(kUserFiles + QStringList{QStringLiteral("sample/app.dat"), QStringLiteral("SystemData.mdb"),
                                  QStringLiteral("DbtData0607K.txt")});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path.left(120).toStdString());
        QStringList args = arguments(c.path);
        if (c.option == QLatin1String("--print-to")) {
            args[args.indexOf(QStringLiteral("3"))] = QStringLiteral("1");
            args[args.indexOf(QStringLiteral("--pdf"))] = QStringLiteral("--print-to");
        }
        const ProcessResult r = runKelvary(args, 20000);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.standardError, QStringLiteral("kelvary: ") + c.message + QLatin1Char('\n'));
        // Refused before the run: not even the log was opened.
        EXPECT_FALSE(QFile::exists(file("Temp/kelvary.log")));
        expectKept();
    }
    EXPECT_TRUE(QFileInfo(file("fifo")).isFile() == false && QFileInfo::exists(file("fifo")));

    // An earlier PDF beside the program, and a link to a PDF elsewhere, are
    // plain places for the output.
    const QString elsewhere = file("sample/elsewhere.pdf");
    ASSERT_TRUE(QFile::copy(pdf(), elsewhere));
    ASSERT_TRUE(QFile::link(elsewhere, file("link.pdf")));
    EXPECT_EQ(runKelvary(arguments(file("link.pdf"))).exitCode, 0);
    EXPECT_EQ(runKelvary(arguments(pdf())).exitCode, 0);
}

TEST_F(Fault, ApplicationFileThatIsNoFileOrFarTooLargeIsRefusedAtOnce) {
    makeFifo(file("sample/fifo.dat"));
    const QString large = file("sample/large.dat");
    writeFile(large, readFile(sampleApp()) + QByteArray(17 * 1024 * 1024, ' '));
    const QString notes = file("sample/notes.txt");
    writeFile(notes, "memo\r\nnothing of an application here\r\n");
    const auto named = [](const QString& path) { return QStringLiteral("kelvary: 申請データファイル「") + path + QStringLiteral("」"); };
    struct Case {
        QString path;
        QString message;
    };
    const Case cases[] = {
        {file("sample/fifo.dat"), named(file("sample/fifo.dat")) + QStringLiteral("は名前付きパイプ (FIFO)です。申請データファイルを指定してください。\n")},
        {QStringLiteral("/dev/zero"), named(QStringLiteral("/dev/zero")) + QStringLiteral("はデバイスです。申請データファイルを指定してください。\n")},
        {file("sample"), named(file("sample")) + QStringLiteral("はフォルダーです。申請データファイルを指定してください。\n")},
        {large, named(large) + QStringLiteral("は大きすぎます (") + QString::number(QFileInfo(large).size()) +
                    QStringLiteral(" バイト)。申請データファイルとして読み込めるのは 16 MB までです。\n")},
        {notes, named(notes) + QStringLiteral("は申請データファイルではありません。([BasicInfo] と [DocData] のどちらの見出しもありません)\n")},
    };
    keep(kUserFiles + QStringList{QStringLiteral("SystemData.mdb"), QStringLiteral("sample/notes.txt")});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        // A FIFO or a device read to its end would never let the run finish.
        const ProcessResult r = runKelvary(arguments(pdf(), c.path), 20000);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.standardError, c.message);
        EXPECT_FALSE(QFile::exists(file("Temp/kelvary.log")));
        expectKept();
    }
}

TEST_F(Fault, SettingsFileThatIsAFifoIsNamedInsteadOfWaitedFor) {
    const QString ini = file("UserData.ini");
    ASSERT_TRUE(QFile::remove(ini));
    makeFifo(ini);
    keep(QStringList{QStringLiteral("sample/Ledra.mdb"), QStringLiteral("out.pdf"), QStringLiteral("SystemData.mdb")});
    const ProcessResult r = runKelvary(arguments(pdf()), 20000);
    EXPECT_EQ(r.exitCode, kError);
    expectReported(r, QStringLiteral("設定ファイル「") + ini +
                          QStringLiteral("」が名前付きパイプ (FIFO)になっています。設定ファイルを直してから、もう一度実行してください。"));
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== ")), 1) << r.standardError.toStdString();
    expectKept();
}

TEST_F(Fault, ProgramFolderThatIsMissingOrCannotBeWrittenIsNamed) {
    QStringList args = arguments(pdf());
    const qsizetype homeAt = args.indexOf(QStringLiteral("--home")) + 1;
    {
        SCOPED_TRACE("missing");
        args[homeAt] = file("no-such-folder");
        const ProcessResult r = runKelvary(args);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.standardError, QStringLiteral("kelvary: プログラムフォルダー「") + file("no-such-folder") +
                                       QStringLiteral("」が見つかりません。\n"));
        EXPECT_FALSE(QFileInfo::exists(file("no-such-folder")));
    }
    {
        SCOPED_TRACE("named as empty");
        args[homeAt] = QString();
        const ProcessResult r = runKelvary(args);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.standardError, QStringLiteral("kelvary: --home にプログラムフォルダーが指定されていません。\n"));
    }
    requireRestrictedRuns();
    {
        SCOPED_TRACE("not writable");
        keep(kUserFiles + QStringList{QStringLiteral("SystemData.mdb")});
        const ProcessResult r = runKelvaryWithout(Right::Write, home.path(), home.path(), arguments(pdf()));
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.standardError, QStringLiteral("kelvary: プログラムフォルダー「") + home.path() +
                                       QStringLiteral("」に書き込めません。フォルダーに書き込む権限があるか確認してください。\n"));
        expectKept();
    }
}

TEST_F(Fault, ClearingTempLeavesTheUsersOwnFilesThereAndBehindALink) {
    // The user's files beside the program's symbols in Temp.
    writeFile(file("Temp/photo.bmp"), "the user's picture");
    writeFile(file("Temp/notes.TXT"), "the user's notes");
    writeFile(file("Temp/ApplyDoc1.bmp.bak"), "the user's copy of a symbol");
    keep(QStringList{QStringLiteral("UserData.ini"), QStringLiteral("sample/Ledra.mdb"), QStringLiteral("Temp/photo.bmp"), QStringLiteral("Temp/notes.TXT"),
                                  QStringLiteral("Temp/ApplyDoc1.bmp.bak")});
    writeFile(file("Temp/ZaimuData7_3.bmp"), "a symbol of an earlier, longer run");
    EXPECT_EQ(runKelvary(arguments(pdf())).exitCode, 0);
    expectKept();
    EXPECT_FALSE(QFile::exists(file("Temp/ZaimuData7_3.bmp")));

    // Temp as a link to a folder of the user's.
    const QString pictures = file("pictures");
    ASSERT_TRUE(QDir().mkpath(pictures));
    writeFile(pictures + QStringLiteral("/holiday.bmp"), "a holiday picture");
    writeFile(pictures + QStringLiteral("/letter.txt"), "a letter");
    ASSERT_TRUE(QDir(file("Temp")).removeRecursively());
    ASSERT_TRUE(QFile::link(pictures, file("Temp")));
    kept.clear();
    keep(QStringList{QStringLiteral("UserData.ini"), QStringLiteral("sample/Ledra.mdb"), QStringLiteral("pictures/holiday.bmp"), QStringLiteral("pictures/letter.txt")});
    EXPECT_EQ(runKelvary(arguments(pdf())).exitCode, 0);
    expectKept();
    EXPECT_TRUE(QFile::exists(pictures + QStringLiteral("/ApplyDoc1.bmp")));
}

TEST_F(Fault, SiblingColumnsOfAnOlderVersionAreReportedOncePerTableAndColumn) {
    const QString sibling = file("sample/Ledra.mdb");
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(sibling).constData(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, "ALTER TABLE P_FSItemData DROP COLUMN ItemValue; "
                                   "ALTER TABLE T_FSNote DROP COLUMN PLRealSales;",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(db);
        sqlite3_close(db);
    }
    keep(kUserFilesButThePdf);
    const ProcessResult r = runKelvary(arguments(pdf()));
    EXPECT_EQ(r.exitCode, kError);
    // The run went on past the reports, so it delivers its pages.
    EXPECT_TRUE(readFile(pdf()).startsWith("%PDF-"));
    // The sample has three periods; each column is named once.
    const QString older = QStringLiteral("=== 3 エラーが発生しました\nデータファイルのバージョンが古いため必要な項目が足りません\n"
                                         "場所： mCopyZaimuData\n\n番号： 3265\n\n内容： 財務諸表データ (Ledra.mdb) のテーブル ");
    EXPECT_EQ(r.standardError.count(older + QStringLiteral("P_FSItemData に項目 ItemValue がありません。この項目は空のまま出力されます。\n")), 1)
        << r.standardError.toStdString();
    EXPECT_EQ(r.standardError.count(older + QStringLiteral("T_FSNote に項目 PLRealSales がありません。この項目は空のまま出力されます。\n")), 1);
    EXPECT_EQ(r.standardError.count(QStringLiteral("番号： 3265")), 2);
    expectKept();
}

TEST_F(Fault, DocDataColumnTwiceOrUnknownIsNamedInOneMessage) {
    const QByteArray sample = readFile(sampleApp());
    const QString edited = file("sample/edited.dat");
    // "ContactName" and "Remark9" in the CP932 records of [DocData].
    const QByteArray contact = "\"ContactName\",";
    struct Case {
        QByteArray file;
        QString message;
    };
    const Case cases[] = {
        {editedSample(sample, contact, "\"ContactName\",\"X\",2\r\n" + contact),
         QStringLiteral("内容： 申請書データ [DocData] の項目「ContactName」が2回書かれています。"
                        "最初の値を使い、2回目の値は読み込まずに続けます。\n")},
        {editedSample(sample, contact, "\"Remark9\",\"X\",2\r\n" + contact),
         QStringLiteral("内容： 申請書データ [DocData] の項目「Remark9」は申請書の項目にありません。この項目は読み込まずに続けます。\n")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message.toStdString());
        writeFile(edited, c.file);
        kept.clear();
        keep({QStringLiteral("sample/Ledra.mdb"), QStringLiteral("sample/edited.dat")});
        const ProcessResult r = runKelvary(arguments(pdf(), edited));
        EXPECT_EQ(r.exitCode, kError);
        // The one report of the run: the application record is written without that record.
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
        EXPECT_EQ(r.standardError.count(QStringLiteral("場所： mLoadAPData\n")), 1);
        EXPECT_EQ(r.standardError.count(c.message), 1);
        // Not in the database's own words.
        EXPECT_FALSE(r.standardError.contains(QStringLiteral("no such")) || r.standardError.contains(QStringLiteral("has no")));
        expectKept();
    }
}

TEST_F(Fault, BlankLineOrUnknownKeyInASectionIsReportedWithItsLine) {
    const QByteArray sample = readFile(sampleApp());
    const QString edited = file("sample/edited.dat");
    // Line 7 of the sample is "PrefID" in [BasicInfo]; line 10 "UserName" in [UserInfo].
    writeFile(edited, editedSample(editedSample(sample, "\"PrefID\",1", "\"PrefId\",1"), "\"UserName2\"", "\r\n\"UserName2\""));
    keep({QStringLiteral("sample/Ledra.mdb"), QStringLiteral("sample/edited.dat")});
    const ProcessResult r = runKelvary(arguments(pdf(), edited));
    expectKept();
    EXPECT_EQ(r.exitCode, kError);
    EXPECT_EQ(r.standardError.count(QStringLiteral(
                  "内容： 申請書データの [BasicInfo] の 7 行目に知らない項目「PrefId」があります。"
                  "これ以降の項目が正しく読み込まれていない可能性があります。\n")),
              1)
        << r.standardError.toStdString();
    EXPECT_EQ(r.standardError.count(QStringLiteral(
                  "内容： 申請書データの [UserInfo] の 11 行目に空の行または項目名のない記録があります。"
                  "これ以降の項目が正しく読み込まれていない可能性があります。\n")),
              1);
}

TEST_F(Fault, LineBreakInAUserDetailBecomesABlankAndKeepsTheSettingsSectioned) {
    const QByteArray sample = readFile(sampleApp());
    const QString edited = file("sample/edited.dat");
    // "北海道" (CP932 96 6B 8A 43 93 B9) then a line break and what would be a
    // section and a key of their own in UserData.ini.
    const QByteArray address = hexBytes("96 6B 8A 43 93 B9");
    writeFile(edited, editedSample(sample, "\"UserAddress\",\"", "\"UserAddress\",\"" + address + "\r\n[System]\r\nUserClass=1\r\n"));
    keep({QStringLiteral("sample/Ledra.mdb"), QStringLiteral("sample/edited.dat")});
    const ProcessResult r = runKelvary(arguments(pdf(), edited));
    EXPECT_EQ(r.exitCode, 0);
    expectKept();
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("=== 0 情報\n申請書データ [UserInfo] の UserAddress に改行が含まれていたため、"
                                                        "改行を空白に置き換えました。\n北海道 [System] UserClass=1")))
        << r.standardError.toStdString();
    const QByteArray ini = readFile(file("UserData.ini"));
    EXPECT_TRUE(ini.contains("\r\nUserAddress=" + address + " [System] UserClass=1 " + address)) << ini.toStdString();
    // Still one [System] section, and the installation's UserClass alone in [UserInfo].
    EXPECT_TRUE(ini.startsWith("[System]\r\n"));
    EXPECT_FALSE(ini.contains("\n[System]"));
    EXPECT_FALSE(ini.contains("\nUserClass=1"));
    EXPECT_TRUE(ini.contains("\nUserClass=0"));
}

TEST_F(Fault, RemarksOfTenMegabytesEndTheRunWithItsMessage) {
    // "あ" (CP932 82 A0) five million times: 10 MB where a few hundred bytes are expected.
    const QByteArray sample = readFile(sampleApp());
    const qsizetype start = sample.indexOf("\"Remarks\",");
    ASSERT_GE(start, 0);
    const qsizetype end = sample.indexOf("\r\n", start);
    const QByteArray remarks = "\"Remarks\",\"" + QByteArray(5 * 1024 * 1024, '\0').replace('\0', "\x82\xa0") + "\",2";
    const QString large = file("sample/remarks.dat");
    writeFile(large, sample.left(start) + remarks + sample.mid(end));
    keep(QStringList{QStringLiteral("UserData.ini"), QStringLiteral("sample/Ledra.mdb"), QStringLiteral("sample/remarks.dat")});
    const ProcessResult r = runKelvary(arguments(pdf(), large));
    EXPECT_EQ(r.exitCode, kError);
    // 10 MB of Remarks, with the other fields of the second application symbol.
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("内容： QRコードに収まらないデータ量です。（ApplyDoc2、")))
        << r.standardError.left(2000).toStdString();
    expectKept();
}

TEST_F(Fault, SiblingThatIsAFolderAFifoOrHalfWrittenIsNamedForWhatItIs) {
    const QString sibling = file("sample/Ledra.mdb");
    const QString cannotRead = QStringLiteral("財務諸表データ (LedraDataPath) を読み込めません。");
    const QString goesOn = QStringLiteral(" 財務諸表データのない申請として続けます。");
    const QByteArray whole = readFile(sibling);
    const auto expectNamed = [&](const QString& message) {
        QFile::remove(file("Temp/kelvary.log"));
        // A FIFO opened for reading would wait for a writer for ever.
        const ProcessResult r = runKelvary(arguments(pdf()), 20000);
        EXPECT_EQ(r.exitCode, kError);
        expectReported(r, cannotRead + message + goesOn);
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
        expectKept();
    };
    keep(QStringList{QStringLiteral("UserData.ini"), QStringLiteral("out.pdf")});
    {
        SCOPED_TRACE("a folder");
        ASSERT_TRUE(QFile::remove(sibling));
        ASSERT_TRUE(QDir().mkpath(sibling));
        expectNamed(QStringLiteral("'") + sibling + QStringLiteral("' はフォルダーです。データベースファイルではありません。"));
        ASSERT_TRUE(QDir().rmdir(sibling));
    }
    {
        SCOPED_TRACE("a FIFO");
        makeFifo(sibling);
        expectNamed(QStringLiteral("'") + sibling + QStringLiteral("' は名前付きパイプ (FIFO)です。データベースファイルではありません。"));
        ASSERT_TRUE(QFile::remove(sibling));
    }
    {
        SCOPED_TRACE("a rollback journal left by a write that stopped");
        const QString writing = file("sample/writing.mdb");
        writeFile(writing, whole);
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(writing).constData(), &db), SQLITE_OK);
        // A cache of two pages spills the update into the file half-way.
        EXPECT_EQ(sqlite3_exec(db, "PRAGMA journal_mode=DELETE; PRAGMA cache_size=2; BEGIN; "
                                   "UPDATE P_FSItemData SET ItemName = ItemName || 'x';",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        // The database and its journal as the writing program left them when it stopped.
        ASSERT_TRUE(QFile::copy(writing, sibling));
        ASSERT_TRUE(QFile::copy(writing + QStringLiteral("-journal"), sibling + QStringLiteral("-journal")));
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db);
        keep({QStringLiteral("sample/Ledra.mdb"), QStringLiteral("sample/Ledra.mdb-journal")});
        expectNamed(QStringLiteral("データベース '") + sibling +
                    QStringLiteral("' は書き込みの途中で中断されたままです (ジャーナルファイル '") + sibling +
                    QStringLiteral("-journal' が残っています)。作成したプログラムで一度開いて修復してから、もう一度実行してください。"));
    }
}

TEST_F(Fault, CharactersTheCodePageCannotCarryAreNamedOncePerFieldAndPrintedAsTheAgencyReadsThem) {
    const QString sibling = file("sample/Ledra.mdb");
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(sibling).constData(), &db), SQLITE_OK);
        // 吉野 then 𠮷 (U+20BB7), an emoji (U+1F600) and a no-break space (U+00A0), then 注記.
        EXPECT_EQ(sqlite3_exec(db, "UPDATE T_FSNote SET Other = '吉野𠮷😀' || char(160) || '注記'", nullptr, nullptr,
                               nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(db);
        sqlite3_close(db);
    }
    keep(QStringList{QStringLiteral("UserData.ini"), QStringLiteral("sample/Ledra.mdb")});
    const ProcessResult r = runKelvary(arguments(pdf()));
    EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
    // Three periods hold the note; it is named once.
    const QString message = QStringLiteral(
        "=== 0 文字の置き換え\n財務諸表データ (Ledra.mdb) のテーブル T_FSNote の項目 Other に、"
        "QRコードの文字コード (Shift_JIS) で表せない文字「𠮷」「😀」「\u00a0」があります。"
        "審査機関には「?」として届くため、書類にも「?」と印字します。\n--- OK\n");
    EXPECT_EQ(r.standardError.count(message), 1) << r.standardError.toStdString();
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 0 文字の置き換え")), 1);
    // The symbol of the notes reads back with one "?" for each: 吉野 is 8B 67 96 EC, 注記 92 8D 8B 4C.
    QByteArray symbol;
    for (const QString& name : QDir(file("Temp")).entryList({QStringLiteral("NListData0_*.bmp")}, QDir::Files))
        symbol += zbarDecode(file("Temp/") + name);
    EXPECT_TRUE(symbol.contains(",\"Other\",\"" + hexBytes("8B 67 96 EC 3F 3F 3F 92 8D 8B 4C") + "\"\r\n"))
        << symbol.toHex(' ').toStdString();
    expectKept();
}
