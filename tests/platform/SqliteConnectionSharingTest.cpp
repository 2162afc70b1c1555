// The working database is opened without file locks (it belongs to one run).
// What must hold all the same: statements of another connection in between
// are seen by the next statement, and what the connection writes is in the
// file for others at once.
#include "platform/SqliteConnection.h"

#include "support/ConnectedHome.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::sqlExec;
using test::storedValue;

TEST(SqliteConnectionSharing, WritesOfAnotherConnectionBetweenStatementsAreSeen) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("SystemData.mdb"));
    sqlExec(path, "CREATE TABLE tblWork (ID INTEGER, Name TEXT); INSERT INTO tblWork VALUES (1, 'a');");

    SqliteConnection connection(path);
    EXPECT_EQ(connection.query(QStringLiteral("SELECT Count(*) FROM tblWork")).value(0).toLong(), 1);

    // Another writer between two statements: the cached pages must not win.
    sqlExec(path, "INSERT INTO tblWork VALUES (2, 'b'); UPDATE tblWork SET Name = 'z' WHERE ID = 1;");
    EXPECT_EQ(connection.query(QStringLiteral("SELECT Count(*) FROM tblWork")).value(0).toLong(), 2);
    EXPECT_EQ(connection.query(QStringLiteral("SELECT Name FROM tblWork WHERE ID = 1")).value(0).text(),
              QStringLiteral("z"));

    // And the other way round: each statement is in the file when it returns.
    EXPECT_EQ(connection.execute(QStringLiteral("DELETE FROM tblWork WHERE ID = 2")), 1);
    EXPECT_EQ(storedValue(path, "SELECT Count(*) FROM tblWork"), QStringLiteral("integer:1"));
    sqlExec(path, "INSERT INTO tblWork VALUES (3, 'c');");
    EXPECT_EQ(connection.query(QStringLiteral("SELECT Max(ID) FROM tblWork")).value(0).toLong(), 3);
}

}  // namespace
}  // namespace kelvary
