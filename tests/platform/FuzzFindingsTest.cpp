// Faults the fuzz targets found in the readers, each pinned with its
// expected result written out by hand: the profile write after a last line
// ending in a lone CR, and the Jet translations that SQLite would have read
// as a comment or as a second statement.
#include "platform/JetSql.h"
#include "platform/ProfileFile.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <QTemporaryDir>

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
    EXPECT_EQ(jet("Select a/*b From T"), QStringLiteral("Select a*1.0/ *b From T"));
    EXPECT_EQ(jet("Select a//2 From T"), QStringLiteral("Select a*1.0/ *1.0/2 From T"));
    EXPECT_EQ(jet("Select a/b From T"), QStringLiteral("Select a*1.0/b From T"));
    // SQLite reads "1/*b ..." as "Select 1" and a comment; the translation
    // is a statement with a syntax error instead, as the Jet text was.
    EXPECT_EQ(sqliteStatementCount(QStringLiteral("Select 1/*b From T")), 1);
    EXPECT_EQ(sqliteStatementCount(jet("Select 1/*b From T")), 0);
}

TEST(FuzzFindings, BackquotedNamesAreKeptWhole) {
    EXPECT_EQ(jet("Select `a--b`/2 From T"), QStringLiteral("Select `a--b`*1.0/2 From T"));
    EXPECT_EQ(jet("Select `x``y` From T"), QStringLiteral("Select `x``y` From T"));
    // A quote inside backquotes hid the ';' from the one-statement check.
    try {
        jet("select `x'` ; delete from T; '");
        FAIL() << "a second statement got through";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), -2147217900L);
    }
    EXPECT_THROW(jet("Select `unclosed From T"), VbError);
}

TEST(FuzzFindings, AWriteAfterALastLineEndingInALoneCrStartsItsOwnLine) {
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("UserData.ini"));
    test::writeFile(ini, QByteArray("[System]\r\nShowErrMsg=0\r"));
    writeProfileString(ini, QStringLiteral("UserInfo"), QStringLiteral("UserName"), QStringLiteral("x"));
    EXPECT_EQ(test::readFile(ini), QByteArray("[System]\r\nShowErrMsg=0\r\n[UserInfo]\r\nUserName=x\r\n"));
    EXPECT_EQ(readProfileString(ini, QStringLiteral("UserInfo"), QStringLiteral("UserName")), QStringLiteral("x"));
    EXPECT_EQ(readProfileString(ini, QStringLiteral("System"), QStringLiteral("ShowErrMsg")), QStringLiteral("0"));

    // The same inside a section: the new key goes after a lone-CR last line.
    test::writeFile(ini, QByteArray("[UserInfo]\r\nUserTel=1\r"));
    writeProfileString(ini, QStringLiteral("UserInfo"), QStringLiteral("UserName"), QStringLiteral("y"));
    EXPECT_EQ(test::readFile(ini), QByteArray("[UserInfo]\r\nUserTel=1\r\nUserName=y\r\n"));
}

}  // namespace
}  // namespace kelvary
