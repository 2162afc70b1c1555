// Whole runs of the program in batch mode that the case files of
// tests/data/runs cannot judge: runs compared with each other, where words
// lie on the page, and the working copies compared with SQLite's own.
#include "platform/PdfCheck.h"
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
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
    ProcessResult run(QStringList options) {
        options.prepend(home.path());
        options.prepend(QStringLiteral("--home"));
        options.prepend(QStringLiteral("--batch"));
        return runKelvary(options);
    }
    ScratchHome home;
};

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
    result.pages = pdfInfo(home.file("out.pdf"), QStringLiteral("Pages"));
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

// Two runs in one program folder on the same Jet file: the second takes the
// copy the first made rather than reading the file again.
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
