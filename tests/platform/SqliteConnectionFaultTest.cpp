// What the connection says when a database file is damaged or another
// connection holds it: the user reads Japanese, with SQLite's own words kept
// in brackets for whoever looks into it.
#include "platform/SqliteConnection.h"

#include "support/ConnectedHome.h"

#include <sqlite3.h>
#include "platform/VbError.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace kelvary {
namespace {

using test::sqlExec;

QString descriptionOf(const std::function<void()>& body) {
    const test::Raised r = test::raised(body);
    return r.number != 0 ? r.description : QStringLiteral("<no error>");
}

class SqliteConnectionFault : public ::testing::Test {
protected:
    void SetUp() override {
        sqlExec(main, "CREATE TABLE tblWork (ID INTEGER);");
        // Enough rows to fill several pages, so a cut file lacks some of them.
        sqlExec(sibling, "CREATE TABLE T_FS (FSDataCode INTEGER, Note TEXT);"
                              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 400) "
                              "INSERT INTO T_FS SELECT i, printf('%0200d', i) FROM n;");
    }
    QTemporaryDir dir;
    const QString main = dir.filePath(QStringLiteral("SystemData.mdb"));
    const QString sibling = dir.filePath(QStringLiteral("Ledra.mdb"));
};

TEST_F(SqliteConnectionFault, LinkedDatabaseHeldByAnotherConnectionIsNamedInJapanese) {
    SqliteConnection connection(main);
    connection.linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), sibling);
    EXPECT_EQ(connection.query(QStringLiteral("SELECT count(*) FROM T_FS")).value(0).toLong(), 400);

    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(sibling).constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    const QString whileHeld = descriptionOf([&] { connection.query(QStringLiteral("SELECT count(*) FROM T_FS")); });
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);

    EXPECT_TRUE(whileHeld.startsWith(QStringLiteral("データベースが他のプログラムに使用されているため、処理できませんでした。")))
        << whileHeld.toStdString();
    // Released, the link reads again.
    EXPECT_EQ(connection.query(QStringLiteral("SELECT count(*) FROM T_FS")).value(0).toLong(), 400);
}

// Another program writing the file: Python's own SQLite, in a process of its
// own. "locked" or "written".
QString anotherProgramWrites(const QString& path) {
    QProcess process;
    process.start(QStandardPaths::findExecutable(QStringLiteral("python3")), {QStringLiteral("-c"),
                           QStringLiteral("import sqlite3, sys\n"
                                          "db = sqlite3.connect(sys.argv[1], timeout=0.2, isolation_level=None)\n"
                                          "try:\n"
                                          "    db.execute('INSERT INTO tblWork VALUES (9)')\n"
                                          "    print('written')\n"
                                          "except sqlite3.OperationalError:\n"
                                          "    print('locked')\n"),
                           path});
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

TEST_F(SqliteConnectionFault, AnotherProgramCannotWriteWhileTheConnectionIsOpen) {
    if (QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty()) GTEST_SKIP() << "python3 is missing";
    {
        SqliteConnection connection(main);
        EXPECT_EQ(anotherProgramWrites(main), QStringLiteral("locked"));
        // The connection itself writes on.
        EXPECT_EQ(connection.execute(QStringLiteral("INSERT INTO tblWork VALUES (1)")), 1);
    }
    EXPECT_EQ(anotherProgramWrites(main), QStringLiteral("written"));
    EXPECT_EQ(test::storedValue(main, "SELECT group_concat(ID) FROM tblWork"), QStringLiteral("text:1,9"));
}

}  // namespace
}  // namespace kelvary
