// Whole runs of the program in batch mode on a scratch copy of the program
// folder: what the run leaves in the working tables, UserData.ini and the
// transcript, and what it answers with its exit status.
#include "platform/Cp932.h"
#include "platform/PdfCheck.h"
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QLockFile>
#include <QTextStream>
#include <gtest/gtest.h>

#include <map>
#include <memory>

#include <sqlite3.h>

using namespace kelvary::test;

namespace {

const auto column = sqlColumn;

class SampleRun : public ::testing::Test {
protected:
    QString db() const { return home.file(QStringLiteral("SystemData.mdb")); }
    QString sampleApp() const { return home.file(QStringLiteral("sample/app.dat")); }
    ProcessResult run(QStringList options) {
        options.prepend(home.path());
        options.prepend(QStringLiteral("--home"));
        options.prepend(QStringLiteral("--batch"));
        return runKelvary(options);
    }
    ScratchHome home;
};

}  // namespace

TEST_F(SampleRun, AllPeriodsAreIndexedMarkedAndImportedNewestFirst) {
    const ProcessResult r = run({"--mode", "3", "--periods", "all", "--pdf", home.file("out.pdf"), sampleApp()});
    EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
    // The sample's three periods (第38-40期, sibling codes 7, 12, 15) in year order.
    EXPECT_EQ(column(db(), "SELECT IndexID || ':' || LinkCode || ':' || CAST(FYearNumber AS INTEGER) || ':' || PrintFlag "
                           "FROM tblIndex ORDER BY IndexID"),
              (QStringList{"1:7:38:1", "2:12:39:1", "3:15:40:1"}));
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpAPData"), QStringList{"1"});
    EXPECT_EQ(column(db(), "SELECT APDataCode FROM tmpAPData"), QStringList{"1"});
    // Each period lands under its IndexID, stamped with the sibling program's version text.
    EXPECT_EQ(column(db(), "SELECT FSDataCode FROM tmpFSInfoData ORDER BY FSDataCode"), (QStringList{"1", "2", "3"}));
    for (const QString& version : column(db(), "SELECT VersionNumber FROM tmpFSInfoData"))
        EXPECT_TRUE(version.startsWith(QStringLiteral("Ledra:")) && version.endsWith(QStringLiteral(")")))
            << version.toStdString();
    // The three special items are added to every period, one row each.
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpFSItemData WHERE ItemCode IN (204, 207, 208) GROUP BY FSDataCode"),
              (QStringList{"3", "3", "3"}));
    // No item row keeps a sibling key: every copy is keyed by its IndexID.
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpFSItemData WHERE FSDataCode NOT IN (1, 2, 3)"), QStringList{"0"});
    EXPECT_FALSE(r.standardError.contains(QStringLiteral("エラーが発生しました")));
}

namespace {
// The symbol names left in Temp, each image with its payload copy beside it.
QStringList symbolsIn(const QString& temp) {
    const QDir dir(temp);
    QStringList symbols;
    for (const QString& image : dir.entryList({QStringLiteral("*.bmp")}, QDir::Files, QDir::Name)) {
        EXPECT_TRUE(dir.exists(image + QStringLiteral(".Txt"))) << image.toStdString();
        symbols << image.chopped(4);
    }
    EXPECT_EQ(dir.entryList({QStringLiteral("*.Txt")}, QDir::Files).size(), symbols.size());
    return symbols;
}

QByteArray decoded(const QString& image) {
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"),
               zbarQrOnly() << QStringLiteral("--raw") << QStringLiteral("-Sbinary") << QStringLiteral("-q") << image);
    zbar.waitForFinished(30000);
    return zbar.readAllStandardOutput();
}
}  // namespace

TEST_F(SampleRun, EverySymbolOfTheRunIsInTempAndReadsBackAsItsPayload) {
    ASSERT_EQ(run({"--mode", "3", "--periods", "all", "--pdf", home.file("out.pdf"), sampleApp()}).exitCode, 0);
    const QStringList symbols = symbolsIn(home.file("Temp"));
    for (const char* name : {"ApplyHeader", "ApplyDoc1", "ApplyDoc2"})
        EXPECT_TRUE(symbols.contains(QString::fromLatin1(name))) << name;
    for (int period = 0; period < 3; ++period) {
        EXPECT_TRUE(symbols.contains(QStringLiteral("ZaimuHeader%1").arg(period)));
        EXPECT_TRUE(symbols.contains(QStringLiteral("ZaimuData%1_1").arg(period)));
    }
    EXPECT_FALSE(symbols.contains(QStringLiteral("ZaimuHeader3")));
    for (const QString& symbol : symbols) {
        const QString image = home.file(QStringLiteral("Temp/") + symbol + QStringLiteral(".bmp"));
        EXPECT_EQ(decoded(image), readFile(image + QStringLiteral(".Txt"))) << symbol.toStdString();
    }

    // A second run clears the first one's symbols before it writes its own.
    ASSERT_EQ(run({"--mode", "3", "--periods", "1", "--pdf", home.file("out.pdf"), sampleApp()}).exitCode, 0);
    const QStringList second = symbolsIn(home.file("Temp"));
    EXPECT_TRUE(second.contains(QStringLiteral("ZaimuHeader0")));
    EXPECT_FALSE(second.contains(QStringLiteral("ZaimuHeader1")));
    EXPECT_FALSE(second.contains(QStringLiteral("ZaimuData2_1")));
}

TEST_F(SampleRun, ParentProgramsOneTextGivesTheFields) {
    // The parent's text is lower-cased and split at "/", so it names the
    // application file relative to the folder the program starts in.
    const ProcessResult r = runKelvary({"--batch", "--home", home.path(), "--periods", "all", "--command-line",
                                        " /APP.DAT/OUT.PDF/N/3 "},
                                       60000, home.file("sample"));
    EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
    // Field 4 "3" is the send-file mode: the regular course is set and every period imported.
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpFSInfoData"), QStringList{"3"});
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpAPData"), QStringList{"1"});
}

// A field 4 the program does not know starts no menu and no output: the run
// ends quietly without a PDF, and nothing is reported as an error.
TEST_F(SampleRun, ParentProgramsUnknownModeProducesNothing) {
    const ProcessResult r = runKelvary({"--batch", "--home", home.path(), "--periods", "all", "--command-line",
                                        "/app.dat/out.pdf/n/5"},
                                       60000, home.file("sample"));
    EXPECT_EQ(r.exitCode, 1) << r.standardError.toStdString();
    EXPECT_FALSE(QFile::exists(home.file("sample/out.pdf")));
    EXPECT_FALSE(r.standardError.contains(QStringLiteral("=== report "))) << r.standardError.toStdString();
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpFSInfoData"), QStringList{"0"});
}

TEST_F(SampleRun, SecondInstanceIsRefusedWithoutTouchingTheDatabase) {
    QLockFile running(home.file("kelvary.lock"));
    ASSERT_TRUE(running.tryLock(0));
    QFile database(db());
    ASSERT_TRUE(database.open(QIODevice::ReadOnly));
    const QByteArray before = database.readAll();
    database.close();

    const ProcessResult r = run({"--mode", "3", "--pdf", home.file("out.pdf"), sampleApp()});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("=== 0 情報\n既にKelvaryは、起動しています。\n--- OK\n")))
        << r.standardError.toStdString();
    ASSERT_TRUE(database.open(QIODevice::ReadOnly));
    EXPECT_EQ(database.readAll(), before);
}


TEST_F(SampleRun, EarlierEditionMarksThePeriodWhoseStatementsFail) {
    // A million yen more cash in the newest period: its balance sheet no longer adds up.
    sqlExec(home.file("sample/Ledra.mdb"),
                 "UPDATE P_FSItemData SET ItemValue = ItemValue + 1000000 WHERE FSDataCode=15 AND ItemCode=1");
    const QString earlier = writeEarlierApplication(home);

    const ProcessResult refused = run({"--mode", "1", "--periods", "all", "--print-to", home.file("no.pdf"), earlier});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.standardError.contains(QStringLiteral("=== 2 注意\nデータまたは選択した内容に問題があります\n"
                                                              "印刷を中止し、問題箇所を訂正してから印刷してください\n\n"
                                                              "書類の印刷を継続しますか？\n--- No\n")))
        << refused.standardError.toStdString();
    EXPECT_FALSE(QFile::exists(home.file("no.pdf")));
    EXPECT_TRUE(refused.standardError.contains(QStringLiteral("=== report ")));

    const ProcessResult r =
        run({"--mode", "1", "--periods", "all", "--yes", "--print-to", home.file("marked.pdf"), earlier});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("=== 3 警告\n問題のある申請書及び財務諸表を印刷します\n")));
    const QStringList pages = pdfText(home.file("marked.pdf")).split(QLatin1Char('\f'), Qt::SkipEmptyParts);
    ASSERT_EQ(pages.size(), 5);
    EXPECT_TRUE(pages[2].contains(QStringLiteral(" ※")));   // the newest period, first
    EXPECT_FALSE(pages[3].contains(QStringLiteral("※")));
    EXPECT_FALSE(pages[1].contains(QStringLiteral("※")));   // the application itself passed
}

TEST_F(SampleRun, EarlierEditionStartedForASendFileSaysOnceThatItPrints) {
    const QString earlier = writeEarlierApplication(home);
    const ProcessResult r = run({"--mode", "3", "--periods", "all", "--yes", "--pdf", home.file("sent.pdf"),
                                 "--print-to", home.file("printed.pdf"), earlier});
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 0 情報\nこの申請書は平成20年4月1日より前の様式です。"
                                                   "この様式の書類は送信ファイルを作成できないため、用紙に印刷します。\n--- OK\n")),
              1)
        << r.standardError.toStdString();
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_TRUE(readFile(home.file("printed.pdf")).startsWith("%PDF-"));
    EXPECT_FALSE(QFile::exists(home.file("sent.pdf")));
}

TEST_F(SampleRun, PrintingIntoAFileGivesTheSamePagesAsThePdfMode) {
    ASSERT_EQ(run({"--mode", "3", "--periods", "all", "--pdf", home.file("sent.pdf"), sampleApp()}).exitCode, 0);
    ASSERT_EQ(run({"--mode", "1", "--periods", "all", "--print-to", home.file("printed.pdf"), sampleApp()}).exitCode, 0);
    // The document ID carries the start time of its run; everything else matches.
    static const QRegularExpression idLine(QStringLiteral("\\[ID\\]\\d+"));
    const QString sent = pdfText(home.file("sent.pdf")).replace(idLine, QStringLiteral("[ID]"));
    const QString printed = pdfText(home.file("printed.pdf")).replace(idLine, QStringLiteral("[ID]"));
    EXPECT_EQ(sent.count(QLatin1Char('\f')), 6);
    EXPECT_EQ(printed, sent);
}

TEST_F(SampleRun, APdfFolderThatDoesNotExistIsReported) {
    const ProcessResult r = run({"--mode", "3", "--periods", "all", "--pdf", home.file("no-such-folder/out.pdf"),
                                 sampleApp()});
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("場所： Init\n"))) << r.standardError.toStdString();
    EXPECT_FALSE(QFile::exists(home.file("no-such-folder/out.pdf")));
}

namespace {
// The pages of a PDF, each by the first of the given headings it shows.
QStringList pageHeadings(const QString& pdf) {
    static const char* const headings[] = {"経営状況分析申請に関する補足書類", "経営状況分析申請書",
                                           "株主資本等変動計算書", "財務諸表ＱＲコード"};
    QStringList pages;
    for (const QString& page : pdfText(pdf).split(QLatin1Char('\f'), Qt::SkipEmptyParts)) {
        QString found = QStringLiteral("?");
        for (const char* heading : headings) {
            if (page.contains(QString::fromUtf8(heading))) {
                found = QString::fromUtf8(heading);
                break;
            }
        }
        pages << found;
    }
    return pages;
}

const QString kSupplement = QStringLiteral("経営状況分析申請に関する補足書類");
const QString kApplication = QStringLiteral("経営状況分析申請書");
const QString kEquity = QStringLiteral("株主資本等変動計算書");
const QString kStatementQr = QStringLiteral("財務諸表ＱＲコード");
}  // namespace

TEST_F(SampleRun, AMissingLayoutIsReportedOnceAPeriodAndTheOtherPagesAreDelivered) {
    writeFile(home.file("out.pdf"), "the user's earlier PDF");
    ASSERT_TRUE(QFile::remove(home.file("PrintFile/FSQRCode.w30")));

    const ProcessResult r = run({"--mode", "3", "--periods", "all", "--pdf", home.file("out.pdf"), sampleApp()});
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_EQ(r.standardError.count(QStringLiteral("帳票ファイル「FSQRCode.w30」が見つかりません。")), 3);
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 3) << r.standardError.toStdString();
    EXPECT_FALSE(r.standardError.contains(QStringLiteral("は作成しませんでした。")));
    // The newest period's side sheet still follows the application's two pages.
    EXPECT_EQ(pageHeadings(home.file("out.pdf")), (QStringList{kSupplement, kApplication, kEquity}));
}

// Errors reported in mode 0, or in mode 2 and answered Yes, let the run go
// on; the PDF is then written with what the run made, and the exit status
// still says that an error was reported.
TEST_F(SampleRun, ARunThatGoesOnPastAnErrorDeliversItsPdf) {
    const QByteArray sample = readFile(sampleApp());
    const QStringList allSix{kSupplement, kApplication, kStatementQr, kEquity, kStatementQr, kStatementQr};
    struct Case {
        const char* name;
        QByteArray from, to;  // the change to the application file
        const char* siblingSql;  // a change to the sibling database, or nullptr
        const char* mode;
        QStringList pages;
        QString report;
    };
    const Case cases[] = {
        // The application form alone (mode 2) of an applicant whose sibling folder is not there.
        {"a sibling folder that does not exist", "\"LedraDataPath\",\".\\\"", "\"LedraDataPath\",\"no-such\\\"", nullptr,
         "2", {kApplication}, QStringLiteral("財務諸表データのない申請として続けます。")},
        {"an empty PrefID", "\"PrefID\",1", "\"PrefID\",\"\"", nullptr, "3", allSix, QStringLiteral("場所： LoadData\n")},
        // A column of the newest period's equity statement without its number,
        // past which the user goes on.
        {"a Null in a statement column", "", "",
         "UPDATE T_FSCapitalCol SET ColNo=NULL WHERE FSDataCode=15 AND "
         "ColNo=(SELECT MIN(ColNo) FROM T_FSCapitalCol WHERE FSDataCode=15)",
         "3", allSix, QStringLiteral("場所： mMakeQRCodeFSCapital\n")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ScratchHome fresh;
        const QString app = fresh.file(QStringLiteral("sample/app.dat"));
        QByteArray changed = sample;
        if (!c.from.isEmpty()) {
            ASSERT_TRUE(changed.contains(c.from));
            changed.replace(c.from, c.to);
        }
        writeFile(app, changed);
        if (c.siblingSql) sqlExec(fresh.file(QStringLiteral("sample/Ledra.mdb")), c.siblingSql);
        const QString pdf = fresh.file(QStringLiteral("out.pdf"));
        writeFile(pdf, "the user's earlier PDF");

        const ProcessResult r = runKelvary({"--batch", "--yes", "--home", fresh.path(), "--mode",
                                            QString::fromLatin1(c.mode), "--periods", "all", "--pdf", pdf, app});
        EXPECT_EQ(r.exitCode, 3);
        EXPECT_TRUE(r.standardError.contains(c.report)) << r.standardError.toStdString();
        EXPECT_FALSE(r.standardError.contains(QStringLiteral("は作成しませんでした。"))) << r.standardError.toStdString();
        EXPECT_EQ(pageHeadings(pdf), c.pages);
    }
}

namespace {
// Every payload text the run left in Temp (in CP932, as the symbols carry them), joined.
QString payloadTexts(const QString& temp) {
    QString all;
    const QDir dir(temp);
    for (const QString& name : dir.entryList({QStringLiteral("*.Txt")}, QDir::Files, QDir::Name))
        all += kelvary::cp932Decode(readFile(dir.filePath(name)));
    return all;
}
}  // namespace

// Two applicants one after the other in one program folder: whatever the
// second one's sibling database lacks is read from the empty database, never
// from the first one's.
TEST_F(SampleRun, NothingOfTheApplicantBeforeReachesTheNextOne) {
    const QString firstSibling = home.file("sample/Ledra.mdb");
    const QString marker = QStringLiteral("北斗建設の注記");
    sqlExec(firstSibling, QStringLiteral("UPDATE T_FSNote SET Other = '%1'").arg(marker));
    ASSERT_EQ(run({"--mode", "3", "--periods", "all", "--pdf", home.file("first.pdf"), sampleApp()}).exitCode, 0);
    ASSERT_TRUE(payloadTexts(home.file("Temp")).contains(marker));

    // The second applicant's folder holds its own application and sibling database.
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("second")));
    const QString secondApp = home.file("second/app.dat");
    const QString secondSibling = home.file("second/Ledra.mdb");
    writeFile(secondApp, readFile(sampleApp()));
    {
        SCOPED_TRACE("a table missing in the second one's database");
        writeFile(secondSibling, readFile(firstSibling));
        sqlExec(secondSibling, "DROP TABLE T_FSNote");
        const ProcessResult r = run({"--mode", "3", "--periods", "all", "--pdf", home.file("second.pdf"), secondApp});
        EXPECT_EQ(r.exitCode, 3);
        EXPECT_TRUE(r.standardError.contains(QStringLiteral("データベース '") + secondSibling +
                                             QStringLiteral("' にテーブル 'T_FSNote' が見つかりません。")))
            << r.standardError.toStdString();
        EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
        EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpFSNoteData"), QStringList{"0"});
        EXPECT_FALSE(payloadTexts(home.file("Temp")).contains(marker));
        // The other tables are the second one's: its three periods are there.
        EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpFSInfoData"), QStringList{"3"});
    }
    {
        SCOPED_TRACE("the second one's database unreadable");
        writeFile(secondSibling, QByteArray("SQLite format 3") + QByteArray(4096, 'x'));
        const ProcessResult r = run({"--mode", "2", "--pdf", home.file("second.pdf"), secondApp});
        EXPECT_EQ(r.exitCode, 3);
        EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tblIndex"), QStringList{"0"});
        // Every link reads the empty database beside the program.
        EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tblLinkTable WHERE DataSource NOT LIKE '%Ledra_dummy.mdb'"),
                  QStringList{"0"});
    }
}

TEST_F(SampleRun, AWorkingTableThatKeepsAnEarlierRunsRowsStopsTheRun) {
    ASSERT_EQ(run({"--mode", "3", "--periods", "all", "--pdf", home.file("first.pdf"), sampleApp()}).exitCode, 0);
    // Another program's trigger keeps the period index from being emptied.
    sqlExec(db(), "CREATE TRIGGER keep BEFORE DELETE ON tblIndex BEGIN SELECT RAISE(ABORT, 'kept'); END");
    // The next applicant has no statements of its own.
    QByteArray second = readFile(sampleApp());
    second.replace("\"LedraDataPath\",\".\\\"", "\"LedraDataPath\",\"\"");
    writeFile(home.file("sample/second.dat"), second);

    const ProcessResult r =
        run({"--mode", "3", "--periods", "all", "--pdf", home.file("second.pdf"), home.file("sample/second.dat")});
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_TRUE(r.standardError.contains(
        QStringLiteral("作業用のテーブル「tblIndex」を空にできませんでした。前回の処理のデータが残っているため、処理を中止します。")))
        << r.standardError.toStdString();
    EXPECT_FALSE(QFile::exists(home.file("second.pdf")));
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tmpAPData"), QStringList{"0"});
}

// Digits typed full-width with a Japanese input method are numbers; a field
// of nothing but a full-width space is not filled in.
TEST_F(SampleRun, InputAsAClerkTypesIt) {
    QByteArray application = readFile(sampleApp());
    const auto change = [&](const QByteArray& from, const QByteArray& to) {
        ASSERT_TRUE(application.contains(from)) << from.toStdString();
        application.replace(from, to);
    };
    change("\"LcnsNum1A\",\"20\",2", "\"LcnsNum1A\",\"" + hexBytes("82 56") + "\",2");           // ７
    change("\"PrefCode1\",1,1", "\"PrefCode1\",\"" + hexBytes("82 50 82 51") + "\",1");            // １２
    change("\"OfficeTel\",\"011-231-4567\",2", "\"OfficeTel\",\"" + hexBytes("81 40") + "\",2");  // one 　
    writeFile(home.file("sample/typed.dat"), application);

    const ProcessResult r = runKelvary({"--batch", "--yes", "--home", home.path(), "--mode", "3", "--periods", "newest",
                                        "--pdf", home.file("typed.pdf"), home.file("sample/typed.dat")});
    EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
    // The telephone is the only rule that fails.
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("■申請書の「主たる営業所の所在地の電話番号」が未入力（又は未設定）です\n")))
        << r.standardError.toStdString();
    EXPECT_EQ(r.standardError.count(QStringLiteral("■")), 1) << r.standardError.toStdString();
    // The agency reads prefecture 12 (Chiba) and licence number 07.
    const QString payload = kelvary::cp932Decode(decoded(home.file("Temp/ApplyDoc2.bmp")));
    EXPECT_TRUE(payload.contains(QStringLiteral("\r\n9,\"12\"\r\n10,\"1\"\r\n11,\"07\"\r\n"))) << payload.toStdString();
    EXPECT_TRUE(pdfText(home.file("typed.pdf")).contains(QStringLiteral("千葉県知事許可( 般 - 07)第012345号")));
}

// Amounts another program stored as text in the sibling database: a number
// typed full-width is a number, an expression is refused by name and value.
TEST_F(SampleRun, SiblingTextsInAmountColumnsAreDataNeverSql) {
    sqlExec(home.file("sample/Ledra.mdb"),
            "UPDATE P_FSItemData SET ItemValue = CASE ItemCode WHEN 1 THEN '(select 1)' ELSE '８４２１０５００' END "
            "WHERE FSDataCode=15 AND ItemCode IN (1, 2)");
    const ProcessResult r =
        run({"--mode", "3", "--periods", "newest", "--pdf", home.file("out.pdf"), sampleApp()});
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_EQ(r.standardError.count(QStringLiteral("=== 3 ")), 1) << r.standardError.toStdString();
    EXPECT_TRUE(r.standardError.contains(QStringLiteral(
        "テーブル「TmpFSItemData」の項目「ItemValue」の値「(select 1)」は数値として読めません。この行は書き込みません。")))
        << r.standardError.toStdString();
    EXPECT_EQ(column(db(), "SELECT ItemCode || ':' || typeof(ItemValue) || ':' || CAST(ItemValue AS INTEGER) "
                           "FROM tmpFSItemData WHERE ItemCode IN (1, 2)"),
              QStringList{"2:real:84210500"});
}

TEST_F(SampleRun, MissingApplicationFileIsReportedWithErrorStatus) {
    const ProcessResult r = run({"--mode", "3", "--pdf", home.file("out.pdf"), home.file("no-such.dat")});
    EXPECT_EQ(r.exitCode, 3);
    EXPECT_TRUE(r.standardError.contains(QStringLiteral("エラーが発生しました"))) << r.standardError.toStdString();
    EXPECT_EQ(column(db(), "SELECT COUNT(*) FROM tblIndex"), QStringList{"0"});
}

namespace {
// What a run leaves for the agency and the user: every payload text (the
// run's document ID taken out), the number of pages, and every working table
// with the storage class of each value.
struct RunResult {
    std::map<QString, QByteArray> payloads;
    QString pages;
    std::map<QString, QStringList> tables;
};

RunResult sampleRunOn(const QByteArray& siblingDatabase) {
    ScratchHome home;
    if (!siblingDatabase.isNull()) writeFile(home.file("sample/Ledra.mdb"), siblingDatabase);
    RunResult result;
    const ProcessResult r = runKelvary({"--batch", "--home", home.path(), "--mode", "3", "--periods", "all", "--pdf",
                                        home.file("out.pdf"), home.file("sample/app.dat")});
    EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
    const QDir temp(home.file("Temp"));
    static const QRegularExpression documentId(QStringLiteral("\"[0-9]{22}\""));
    for (const QString& name : temp.entryList({QStringLiteral("*.Txt")}, QDir::Files)) {
        QString text = QString::fromLatin1(readFile(temp.filePath(name)));
        EXPECT_GE(text.count(documentId), 1) << name.toStdString();
        result.payloads[name] = text.replace(documentId, QStringLiteral("\"ID\"")).toLatin1();
    }
    QProcess pdfinfo;
    pdfinfo.start(QStringLiteral("pdfinfo"), {home.file("out.pdf")});
    pdfinfo.waitForFinished(30000);
    static const QRegularExpression pages(QStringLiteral("Pages:\\s*(\\d+)"));
    result.pages = pages.match(QString::fromUtf8(pdfinfo.readAllStandardOutput())).captured(1);
    const QString db = home.file("SystemData.mdb");
    for (const char* table : {"tblIndex", "tmpAPData", "tmpFSInfoData", "tmpFSItemData", "tmpFSNoteData",
                              "tmpFSCapitalRow", "tmpFSCapitalCol"}) {
        QStringList quoted;
        for (const QString& name :
             column(db, QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table).toUtf8().constData()))
            quoted << QStringLiteral("quote(\"%1\")").arg(name);
        result.tables[QString::fromLatin1(table)] =
            sqlRows(db, QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid").arg(quoted.join(','), table));
    }
    return result;
}
}  // namespace

TEST(SampleJetRun, JetTwinsOfTheSiblingDatabaseGiveTheSamePayloadsPagesAndTables) {
    const RunResult sqlite = sampleRunOn(QByteArray());
    // The sample's three periods, each with its QR symbols.
    ASSERT_GT(sqlite.payloads.size(), 20u);
    ASSERT_EQ(sqlite.pages, QStringLiteral("6"));
    ASSERT_EQ(sqlite.tables.at("tmpFSItemData").size(), 474);
    for (const char* twin : {"Ledra-V2000.mdb", "Ledra-V2003.mdb"}) {
        SCOPED_TRACE(twin);
        const RunResult jet = sampleRunOn(readFile(testDataDir() + QStringLiteral("/jet/") + twin));
        EXPECT_EQ(jet.pages, sqlite.pages);
        EXPECT_TRUE(jet.payloads == sqlite.payloads);
        for (const auto& [name, rows] : sqlite.payloads) EXPECT_EQ(jet.payloads.at(name), rows) << name.toStdString();
        for (const auto& [table, rows] : sqlite.tables) EXPECT_EQ(jet.tables.at(table), rows) << table.toStdString();
    }
}

TEST(SampleJetRun, ASecondRunTakesTheCopyOfTheFirst) {
    ScratchHome home;
    writeFile(home.file("sample/Ledra.mdb"), readFile(testDataDir() + QStringLiteral("/jet/Ledra-V2000.mdb")));
    const QStringList arguments{"--batch", "--home", home.path(), "--mode", "3", "--periods", "all", "--pdf",
                                home.file("out.pdf"), home.file("sample/app.dat")};
    ASSERT_EQ(runKelvary(arguments).exitCode, 0);
    const QDir temp(home.file("Temp"));
    const QStringList copies = temp.entryList({QStringLiteral("*.sqlite")}, QDir::Files);
    ASSERT_EQ(copies.size(), 1);
    const QFileInfo copy(temp.filePath(copies.first()));
    const QDateTime made = copy.lastModified();
    const ProcessResult second = runKelvary(arguments);
    EXPECT_EQ(second.exitCode, 0) << second.standardError.toStdString();
    EXPECT_EQ(temp.entryList({QStringLiteral("*.sqlite")}, QDir::Files), copies);
    EXPECT_EQ(QFileInfo(copy.filePath()).lastModified(), made);
    EXPECT_EQ(column(home.file("SystemData.mdb"), "SELECT COUNT(*) FROM tmpFSInfoData"), QStringList{"3"});
}

namespace {

// The sample application with some of its values replaced (a null text
// leaves the record out), written beside it under the given name.
QString writeSampleWith(const ScratchHome& home, const QString& name, const QMap<QString, QString>& values) {
    QStringList lines = kelvary::cp932Decode(readFile(home.file(QStringLiteral("sample/app.dat")))).split(QStringLiteral("\r\n"));
    for (QString& line : lines) {
        for (auto it = values.begin(); it != values.end(); ++it) {
            const QString key = QLatin1Char('"') + it.key() + QStringLiteral("\",");
            if (!line.startsWith(key)) continue;
            const qsizetype end = line.indexOf(QStringLiteral(","), key.size());
            line = it.value().isNull() ? QString() : key + QLatin1Char('"') + it.value() + QLatin1Char('"') + line.mid(end);
        }
    }
    lines.removeAll(QString());
    const QString path = home.file(QStringLiteral("sample/") + name);
    writeFile(path, kelvary::cp932Encode(lines.join(QStringLiteral("\r\n"))));
    return path;
}

// Whether every word lies inside the box (millimetres), give or take the
// font's ascent above the glyphs that pdftotext counts in.
::testing::AssertionResult inside(const PdfWord& w, double left, double top, double right, double bottom) {
    const double slack = 1.0;
    if (w.xMin >= mmToPt(left) - slack && w.xMax <= mmToPt(right) + slack && w.yMin >= mmToPt(top) - slack &&
        w.yMax <= mmToPt(bottom) + slack)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << w.text.toStdString() << " at " << w.xMin << "," << w.yMin << "-" << w.xMax
                                         << "," << w.yMax << " pt, outside " << mmToPt(left) << "," << mmToPt(top) << "-"
                                         << mmToPt(right) << "," << mmToPt(bottom);
}

// The lines of a long text, as pdftotext finds them: the words of the page
// that are pieces of it, long enough not to be some other field's.
QList<PdfWord> wordsOf(const QList<PdfWord>& words, const QString& text) {
    QList<PdfWord> found;
    for (const PdfWord& w : words)
        if (w.text.size() >= 8 && text.contains(w.text)) found << w;
    return found;
}

const QString kRegistered = QStringLiteral("北海道札幌市中央区北三条西四丁目１番地１北斗ビル十二階");  // 54 bytes
const QString kActual = QStringLiteral("北海道札幌市中央区北三条西四丁目１番地１北斗ビル十二階一二三四");  // 62 bytes
const QString kOffice = QStringLiteral("東京都千代田区霞が関二丁目１番３号中央合同庁舎第三号館").repeated(3);
const QString kRemarks = QStringLiteral("平成21年3月期決算に基づき申請します。").repeated(12);
}  // namespace

TEST_F(SampleRun, LongTextsStayInsideTheirBoxesOfTheApplicationForm) {
    const QString application = writeSampleWith(home, QStringLiteral("long.dat"),
                                                {{QStringLiteral("ApplierColumnAddress1"), kRegistered},
                                                 {QStringLiteral("ApplierColumnAddress"), kActual},
                                                 {QStringLiteral("OfficeAddr"), kOffice},
                                                 {QStringLiteral("Remarks"), kRemarks}});
    const auto expectInsideTheForm = [&](const QList<PdfWord>& words) {
        // 所在地 (C41) below the dashed rule of its row, 備考 (C48) in its row,
        // both right of their captions and left of the frame.
        const QList<PdfWord> office = wordsOf(words, kOffice);
        ASSERT_FALSE(office.isEmpty());
        for (const PdfWord& w : office) EXPECT_TRUE(inside(w, 77, 234, 198, 241.5));
        const QList<PdfWord> remarks = wordsOf(words, kRemarks);
        ASSERT_FALSE(remarks.isEmpty());
        for (const PdfWord& w : remarks) EXPECT_TRUE(inside(w, 62, 256.5, 198, 269.5));
        for (const PdfWord& w : words) EXPECT_TRUE(inside(w, 0, 0, 210, 297));
    };
    {
        SCOPED_TRACE("the form to PDF (mode 2)");
        const ProcessResult r = run({"--mode", "2", "--pdf", home.file("form.pdf"), application});
        ASSERT_EQ(r.exitCode, 0) << r.standardError.toStdString();
        const QList<PdfWord> words = pdfWords(home.file("form.pdf"));
        expectInsideTheForm(words);
        // Both addresses take two lines of the column, and each label stays
        // on the line its line breaks give it: 事実上の住所 beside the first
        // line of the actual address, 申　請　者 two lines under it
        // (beside the president's line), 作　成　者 beside the creator.
        const PdfWord* actual = findWord(words, QStringLiteral("北海道札幌市中央区北三条西四丁目１番地１"));
        const PdfWord* registeredLabel = findWord(words, QStringLiteral("登記上の住所"));
        const PdfWord* actualLabel = findWord(words, QStringLiteral("事実上の住所"));
        const PdfWord* applicant = findWord(words, QStringLiteral("申"));
        const PdfWord* president = findWord(words, QStringLiteral("代表取締役"));
        const PdfWord* creator = findWord(words, QStringLiteral("作"));
        const PdfWord* creatorLine = findWord(words, QStringLiteral("経理部長"));
        ASSERT_TRUE(actual && registeredLabel && actualLabel && applicant && president && creator && creatorLine);
        EXPECT_TRUE(findWord(words, QStringLiteral("北斗ビル十二階")));
        EXPECT_TRUE(findWord(words, QStringLiteral("北斗ビル十二階一二三四")));
        const QList<PdfWord> firstLines = wordsOf(words, QStringLiteral("北海道札幌市中央区北三条西四丁目１番地１"));
        ASSERT_EQ(firstLines.size(), 2);
        EXPECT_NEAR(registeredLabel->yMin, firstLines[0].yMin, 0.5);
        EXPECT_NEAR(actualLabel->yMin, firstLines[1].yMin, 0.5);
        EXPECT_NEAR(applicant->yMin, president->yMin, 0.5);
        EXPECT_NEAR(creator->yMin, creatorLine->yMin, 0.5);
    }
    {
        SCOPED_TRACE("the sample's own address, one line");
        const ProcessResult r = run({"--mode", "2", "--pdf", home.file("sample.pdf"), sampleApp()});
        ASSERT_EQ(r.exitCode, 0) << r.standardError.toStdString();
        const QList<PdfWord> words = pdfWords(home.file("sample.pdf"));
        const PdfWord* applicant = findWord(words, QStringLiteral("申"));
        const PdfWord* name = findWord(words, QStringLiteral("株式会社北斗建設"));
        ASSERT_TRUE(applicant && name);
        EXPECT_NEAR(applicant->yMin, name->yMin, 0.5);
    }
    {
        SCOPED_TRACE("the earlier edition's form");
        QMap<QString, QString> earlier{{QStringLiteral("OfficeAddr"), kOffice},
                                       {QStringLiteral("Remarks"), kRemarks},
                                       {QStringLiteral("EnforceDate"), QString()}};
        const ProcessResult r = run({"--mode", "1", "--periods", "newest", "--yes", "--print-to", home.file("earlier.pdf"),
                                     writeSampleWith(home, QStringLiteral("earlier.dat"), earlier)});
        ASSERT_EQ(r.exitCode, 0) << r.standardError.toStdString();
        expectInsideTheForm(pdfWords(home.file("earlier.pdf"), 2));
    }
    {
        SCOPED_TRACE("the printed form (mode 3)");
        const ProcessResult r =
            run({"--mode", "3", "--periods", "newest", "--pdf", home.file("all.pdf"), application});
        ASSERT_EQ(r.exitCode, 0) << r.standardError.toStdString();
        // The supplementary document, then the form.
        expectInsideTheForm(pdfWords(home.file("all.pdf"), 2));
    }
}

TEST_F(SampleRun, SideSheetKeepsTenDigitAmountsInTheirCellsAndTheMasterHeadingOfAnUnnamedReserve) {
    const QString ledra = home.file(QStringLiteral("sample/Ledra.mdb"));
    // The closing balances of the newest period in the thousands of millions
    // of yen, and its first reserve left without a name of its own.
    sqlExec(ledra, "UPDATE T_FSCapitalRow SET BenefitTotal=-1234567890123, BenefitOtherCarryOver=9876543210987 "
                   "WHERE FSDataCode=15 AND RowNo=10");
    sqlExec(ledra, "UPDATE T_FSItemDetail SET DataText='' WHERE FSDataCode=15 AND FSItemDetailID=234");
    const ProcessResult r = run({"--mode", "3", "--periods", "newest", "--pdf", home.file("out.pdf"), sampleApp()});
    ASSERT_EQ(r.exitCode, 0) << r.standardError.toStdString();
    const int pages = pdfInfo(home.file("out.pdf"), QStringLiteral("Pages")).toInt();
    const QList<PdfWord> words = pdfWords(home.file("out.pdf"), pages);
    ASSERT_TRUE(findWord(words, QStringLiteral("株主資本等変動計算書")));
    // Row 10, between the rules of the last two columns and inside the frame.
    const PdfWord* total = findWord(words, QStringLiteral("△1,234,567,890"));
    const PdfWord* carriedOver = findWord(words, QStringLiteral("9,876,543,210"));
    ASSERT_TRUE(total && carriedOver) << pdfText(home.file("out.pdf"), pages).toStdString();
    EXPECT_TRUE(inside(*total, 263.7, 143, 285, 152));
    EXPECT_TRUE(inside(*carriedOver, 242.4, 143, 263.7, 152));
    // The master's name of reserve 234 stands over the second column; the
    // other reserve keeps the period's own name.
    const PdfWord* heading = findWord(words, QStringLiteral("準備金１"));
    ASSERT_TRUE(heading) << pdfText(home.file("out.pdf"), pages).toStdString();
    EXPECT_TRUE(inside(*heading, 93.3, 46, 114.6, 62));
    EXPECT_TRUE(findWord(words, QStringLiteral("圧縮積立金")));
    for (const PdfWord& w : words) EXPECT_TRUE(inside(w, 0, 0, 297, 210));
}

TEST_F(SampleRun, SampleRegistrationNumberReadsOnceOnTheForm) {
    // An agent's own filing prints the agent block with the number between
    // "登録" and "号"; filing for a client prints it after "登録番号".
    QByteArray ini = readFile(home.file("UserData.ini"));
    ASSERT_TRUE(ini.contains("UserClass=0"));
    writeFile(home.file("UserData.ini"), ini.replace("UserClass=0", "UserClass=1"));
    ASSERT_EQ(run({"--mode", "2", "--pdf", home.file("own.pdf"), sampleApp()}).exitCode, 0);
    ASSERT_EQ(run({"--mode", "2", "--agent", "--pdf", home.file("agent.pdf"), sampleApp()}).exitCode, 0);
    const QString own = pdfText(home.file("own.pdf"));
    const QString agent = pdfText(home.file("agent.pdf"));
    EXPECT_TRUE(own.contains(QRegularExpression(QStringLiteral("登録第01234567号\\s+TEL:011-756-1234")))) << own.toStdString();
    EXPECT_TRUE(agent.contains(QRegularExpression(QStringLiteral("登録番号\\s+第01234567\n")))) << agent.toStdString();
    EXPECT_FALSE(own.contains(QStringLiteral("号号")));
    EXPECT_FALSE(agent.contains(QStringLiteral("号号")));
}

namespace {
// Rows of one statement on a connection the test opens itself, each row's
// columns joined by '|'.
QStringList rowsOf(sqlite3* db, const QString& sql) {
    QStringList rows;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        ADD_FAILURE() << sqlite3_errmsg(db) << " in " << sql.toStdString();
        return rows;
    }
    while (sqlite3_step(statement) == SQLITE_ROW) {
        QStringList row;
        for (int c = 0; c < sqlite3_column_count(statement); ++c)
            row << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, c)));
        rows << row.join(QLatin1Char('|'));
    }
    sqlite3_finalize(statement);
    return rows;
}
}  // namespace

// The working copies of a large application's five periods hold what SQLite
// itself stores when it copies the sibling rows into columns of the working
// tables' types: value, storage class and order, column by column. Only the
// key and the version stamp are the run's own, and the item rows the repairs
// touch (fixed-asset pairs, the three items made from the header row).
TEST_F(SampleRun, LargeApplicationsWorkingCopiesHoldTheSiblingRowsAsStored) {
    QProcess make;
    make.start(QStringLiteral("python3"), {QStringLiteral(KELVARY_SOURCE_DIR "/bench/make_large_application.py"),
                                           home.file("large"), QStringLiteral("--items"), QStringLiteral("600")});
    ASSERT_TRUE(make.waitForFinished(120000));
    ASSERT_EQ(make.exitCode(), 0) << make.readAllStandardError().toStdString();
    const ProcessResult r =
        run({"--mode", "3", "--periods", "all", "--pdf", home.file("large.pdf"), home.file("large/app.dat")});
    ASSERT_EQ(r.exitCode, 0) << r.standardError.toStdString();

    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(db()).constData(), &raw), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> conn(raw, sqlite3_close);
    sqlite3* c = conn.get();
    ASSERT_TRUE(rowsOf(c, QStringLiteral("ATTACH DATABASE '%1' AS sib").arg(home.file("large/Ledra.mdb"))).isEmpty());
    const QStringList periods = rowsOf(c, QStringLiteral("SELECT IndexID || '|' || LinkCode FROM tblIndex ORDER BY IndexID"));
    ASSERT_EQ(periods.size(), 5);
    const QString untouchedItems = QStringLiteral(" AND ItemCode NOT IN (16,17,19,20,22,23,27,28,371,372,204,207,208)");
    const std::pair<const char*, const char*> tables[] = {{"T_FS", "TmpFSInfoData"},
                                                          {"P_FSItemData", "TmpFSItemData"},
                                                          {"T_FSNote", "TmpFSNoteData"},
                                                          {"T_FSCapitalRow", "TmpFSCapitalRow"},
                                                          {"T_FSCapitalCol", "TmpFSCapitalCol"}};
    int compared = 0;
    for (const auto& [sourceName, targetName] : tables) {
        const QString source = QString::fromLatin1(sourceName);
        const QString target = QString::fromLatin1(targetName);
        const QString items = target == QLatin1String("TmpFSItemData") ? untouchedItems : QString();
        // Columns both tables have, in the working table's order.
        const QStringList columns = rowsOf(c, QStringLiteral("SELECT t.name FROM pragma_table_info('%1') t "
                                                             "JOIN pragma_table_info('%2', 'sib') s ON s.name = t.name COLLATE NOCASE "
                                                             "WHERE t.name NOT IN ('FSDataCode', 'VersionNumber') ORDER BY t.cid")
                                                  .arg(target, source));
        ASSERT_GT(columns.size(), 2) << targetName;
        // SQLite's own copy into columns of the same types.
        rowsOf(c, QStringLiteral("DROP TABLE IF EXISTS temp.expected"));
        ASSERT_TRUE(rowsOf(c, QStringLiteral("CREATE TEMP TABLE expected AS SELECT * FROM main.%1 WHERE 0").arg(target)).isEmpty());
        for (const QString& period : periods) {
            const QString indexId = period.section(QLatin1Char('|'), 0, 0);
            const QString linkCode = period.section(QLatin1Char('|'), 1, 1);
            rowsOf(c, QStringLiteral("DELETE FROM temp.expected"));
            rowsOf(c, QStringLiteral("INSERT INTO temp.expected (%1) SELECT %1 FROM sib.%2 WHERE FSDataCode=%3")
                          .arg(columns.join(QLatin1Char(',')), source, linkCode));
            for (const QString& column : columns) {
                const QString values = QStringLiteral("SELECT group_concat(typeof(%1) || ':' || quote(%1), ' ') FROM "
                                                      "(SELECT %1 FROM %2 WHERE 1%3 ORDER BY rowid)");
                const QStringList expected =
                    rowsOf(c, values.arg(column, QStringLiteral("temp.expected"), items));
                const QStringList copied = rowsOf(
                    c, values.arg(column, QStringLiteral("main.") + target, QStringLiteral(" AND FSDataCode=") + indexId + items));
                EXPECT_EQ(copied, expected) << targetName << "." << column.toStdString() << " period " << indexId.toStdString();
                ++compared;
            }
            // Every row came over under the period's own key, none twice.
            EXPECT_EQ(rowsOf(c, QStringLiteral("SELECT count(*) FROM main.%1 WHERE FSDataCode=%2%3").arg(target, indexId, items)),
                      rowsOf(c, QStringLiteral("SELECT count(*) FROM temp.expected WHERE 1%1").arg(items)))
                << targetName;
        }
    }
    EXPECT_GT(compared, 100);
    // Some items per period really are compared.
    EXPECT_EQ(rowsOf(c, QStringLiteral("SELECT min(n) > 500 FROM (SELECT count(*) n FROM main.TmpFSItemData GROUP BY FSDataCode)")),
              QStringList{"1"});
}
