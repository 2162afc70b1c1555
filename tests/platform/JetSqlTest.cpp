// The Jet-to-SQLite translation, case by case from tests/data/platform/JetSql.tsv:
// what changes, what must not change inside quoted texts, and the texts that
// are refused.
#include "platform/JetSql.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace kelvary {
namespace {

TEST(JetSql, EveryCaseOfTheTable) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/JetSql.tsv"));
    ASSERT_EQ(rows.size(), 41);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 3) << "line " << row[0].toStdString();
        SCOPED_TRACE("JetSql.tsv line " + row[0].toStdString() + ": " + row[1].toStdString());
        QString got;
        const test::Raised r = test::raised([&] { got = translateJetSql(row[1]); });
        if (r.number != 0) got = QStringLiteral("refused:") + r.description;
        const QString& expected = row[2];
        if (expected.startsWith(QStringLiteral("refused~"))) {
            EXPECT_TRUE(got.startsWith(QStringLiteral("refused:")) && got.contains(expected.mid(8))) << got.toStdString();
        } else if (expected.startsWith(QStringLiteral("refused="))) {
            EXPECT_EQ(got, QStringLiteral("refused:") + expected.mid(8));
        } else {
            EXPECT_EQ(got, expected);
        }
    }
}

// Faults the fuzz targets found that need SQLite or the error number to
// judge; their other findings are rows of JetSql.tsv and ProfileFile.tsv.
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
