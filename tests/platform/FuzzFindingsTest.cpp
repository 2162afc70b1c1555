// Faults the fuzz targets found in the Jet translation that need SQLite or
// the error number to judge; their translations and the profile finding are
// rows of tests/data/platform/JetSql.tsv and ProfileFile.tsv.
#include "platform/JetSql.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <sqlite3.h>


namespace kelvary {
namespace {

QString jet(const char* sql) { return translateJetSql(QString::fromUtf8(sql)); }

// The number of statements SQLite finds in the text (0 when it refuses it).
int sqliteStatementCount(const QString& sql) {
    sqlite3* db = nullptr;
    sqlite3_open(":memory:", &db);
    sqlite3_exec(db, "create table T(a INTEGER, b INTEGER)", nullptr, nullptr, nullptr);
    const QByteArray utf8 = sql.toUtf8();
    const char* rest = utf8.constData();
    int count = 0;
    while (rest != nullptr && *rest != '\0') {
        sqlite3_stmt* statement = nullptr;
        const char* tail = nullptr;
        if (sqlite3_prepare_v2(db, rest, -1, &statement, &tail) != SQLITE_OK) {
            count = 0;
            break;
        }
        if (statement != nullptr) ++count;
        sqlite3_finalize(statement);
        rest = tail;
    }
    sqlite3_close(db);
    return count;
}

TEST(FuzzFindings, ADivisionBeforeAnAsteriskOrASlashOpensNoComment) {
    // SQLite reads "1/*b ..." as "Select 1" and a comment; the translation
    // is a statement with a syntax error instead, as the Jet text was.
    EXPECT_EQ(sqliteStatementCount(QStringLiteral("Select 1/*b From T")), 1);
    EXPECT_EQ(sqliteStatementCount(jet("Select 1/*b From T")), 0);
}

TEST(FuzzFindings, BackquotedNamesAreKeptWhole) {
    // A quote inside backquotes hid the ';' from the one-statement check.
    EXPECT_EQ(test::raised([] { jet("select `x'` ; delete from T; '"); }).number, -2147217900L);
    EXPECT_THROW(jet("Select `unclosed From T"), VbError);
}

}  // namespace
}  // namespace kelvary
