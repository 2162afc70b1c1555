// The SQLite connection: which files it refuses, how stored values come back
// as Variants and are stored from parameters, linked tables that follow a
// file, and walking the recordsets it gives.
#include "platform/Recordset.h"
#include "platform/SqliteConnection.h"
#include "platform/VbError.h"

#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>

namespace kelvary {
namespace {

using test::hexBytes;
using test::sqlExec;
using test::storedValue;
using test::writeFile;

QString openingError(const QString& path) {
    return test::raised([&] { SqliteConnection connection(path); }).description;
}

// The first bytes of a Jet 4.0 database: a page header and "Standard Jet DB".
const char* const kJetHeader = "00 01 00 00 53 74 61 6E 64 61 72 64 20 4A 65 74 20 44 42 00 01 00 00 00";

TEST(SqliteConnection, RefusesFilesThatAreNotSqliteDatabases) {
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("SystemData.mdb"));
    EXPECT_EQ(openingError(missing),
              QStringLiteral("ファイル '%1' が見つかりません。").arg(QDir::toNativeSeparators(missing)));
    EXPECT_FALSE(QFileInfo::exists(missing)) << "opening must not create the file";

    const QString jet = dir.filePath(QStringLiteral("Jet.mdb"));
    writeFile(jet, hexBytes(kJetHeader) + QByteArray(2048, '\0'));
    EXPECT_EQ(openingError(jet),
              QStringLiteral("ファイル '%1' はこのプログラムで読み取れるデータベースではありません。"
                             "SQLite 3 形式のデータベースファイルが必要です。")
                  .arg(QDir::toNativeSeparators(jet)));

    const QString empty = dir.filePath(QStringLiteral("empty.mdb"));
    writeFile(empty, QByteArray());
    EXPECT_TRUE(openingError(empty).contains(QStringLiteral("読み取れるデータベースではありません")));

    // The header without its closing NUL is not the header.
    const QString almost = dir.filePath(QStringLiteral("almost.mdb"));
    writeFile(almost, QByteArray("SQLite format 3!") + QByteArray(4096, '\0'));
    EXPECT_TRUE(openingError(almost).contains(QStringLiteral("読み取れるデータベースではありません")));

    EXPECT_EQ(openingError(dir.path()),
              QStringLiteral("'") + dir.path() + QStringLiteral("' はフォルダーです。データベースファイルではありません。"));
}

class SqliteConnectionTypes : public ::testing::Test {
protected:
    void SetUp() override {
        path = dir.filePath(QStringLiteral("types.mdb"));
        sqlExec(path, "CREATE TABLE T (W DATETIME, B BOOLEAN, X TEXT);");
        connection = std::make_unique<SqliteConnection>(path);
    }
    QTemporaryDir dir;
    QString path;
    std::unique_ptr<SqliteConnection> connection;
};

TEST_F(SqliteConnectionTypes, ParametersAreStoredInTheColumnForms) {
    EXPECT_EQ(connection->execute(QStringLiteral("INSERT INTO T (W, B, X) VALUES (?1, ?2, ?3)"),
                                  {Variant(VbDate{QDate(2008, 4, 1), 0}), Variant(true),
                                   Variant(QStringLiteral("甲'乙"))}),
              1);
    EXPECT_EQ(storedValue(path, "SELECT W FROM T WHERE X = '甲''乙'"), QStringLiteral("text:2008-04-01"));
    EXPECT_EQ(storedValue(path, "SELECT B FROM T WHERE X = '甲''乙'"), QStringLiteral("integer:1"));
}

// A number handed over as its literal's text is stored exactly as SQLite
// stores that literal written into a statement, in columns of every
// affinity: the type of an integer, the rounding of a real, the text a
// number takes in a text column.
TEST_F(SqliteConnectionTypes, NumberLiteralsAreStoredAsTheStatementTextWouldStoreThem) {
    connection->execute(QStringLiteral("CREATE TABLE N (K INTEGER, A, X TEXT, L INTEGER, D DOUBLE, C CURRENCY)"));
    QList<QStringList> cases = test::dataTable(QStringLiteral("platform/NumberLiterals.tsv"));
    ASSERT_EQ(cases.size(), 28);
    // Reals as the program writes them, fifteen digits and all magnitudes.
    std::uint64_t seed = 20090715;
    for (int i = 0; i < 300; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        const double mantissa = static_cast<double>(seed >> 11) / 9007199254740992.0;
        const int exponent = static_cast<int>((seed >> 3) % 80) - 40;
        cases.append({QStringLiteral("random"), vbDoubleText((i % 2 ? -1 : 1) * mantissa * std::pow(10.0, exponent)),
                      QStringLiteral("as-sqlite")});
    }
    PreparedStatement insert = connection->prepare(QStringLiteral("INSERT INTO N VALUES (2, ?1, ?2, ?3, ?4, ?5)"));
    const QString stored = QStringLiteral("SELECT typeof(A)||quote(A), typeof(X)||quote(X), typeof(L)||quote(L), "
                                          "typeof(D)||quote(D), typeof(C)||quote(C) FROM N WHERE K=%1");
    const auto row = [&](int key) {
        const Recordset rs = connection->query(stored.arg(key));
        QStringList values;
        for (int c = 0; c < rs.fieldCount(); ++c) values << rs.value(c).text();
        return values;
    };
    for (const QStringList& c : cases) {
        SCOPED_TRACE("NumberLiterals.tsv line " + c[0].toStdString() + ": " + c[1].toStdString());
        connection->execute(QStringLiteral("DELETE FROM N"));
        const SqlValue number{Variant(c[1]), true};
        if (c[2] == QLatin1String("refused")) {
            EXPECT_THROW(insert.run({number, number, number, number, number}), VbError);
            continue;
        }
        if (c[2] == QLatin1String("as-sqlite"))
            connection->execute(QStringLiteral("INSERT INTO N VALUES (1, %1, %1, %1, %1, %1)").arg(c[1]));
        EXPECT_EQ(insert.run({number, number, number, number, number}), 1);
        EXPECT_EQ(row(2).join(QLatin1Char(' ')), c[2] == QLatin1String("as-sqlite") ? row(1).join(QLatin1Char(' ')) : c[2]);
    }
    const auto single = [&](const char* literal) {
        connection->execute(QStringLiteral("DELETE FROM N"));
        const SqlValue number{Variant(QString::fromLatin1(literal)), true};
        insert.run({number, number, number, number, number});
        return row(2).join(QLatin1Char(' '));
    };
    // One past the largest integer is the real 2^63 in every number column.
    EXPECT_EQ(single("9223372036854775808").section(QLatin1Char(' '), 1, 1), QStringLiteral("text'9.22337203685478e+18'"));
    EXPECT_EQ(connection->query(QStringLiteral("SELECT count(*) FROM N WHERE typeof(A)='real' AND A=L AND L=D AND D=C "
                                               "AND A=9223372036854775807.0"))
                  .value(0)
                  .toLong(),
              1);
}

// A text run again is served by the statement compiled the first time. What
// must not show: values of the earlier run, columns of the schema it was
// compiled for, an earlier failure.
class SqliteConnectionKept : public ::testing::Test {
protected:
    void SetUp() override {
        path = dir.filePath(QStringLiteral("kept.mdb"));
        sqlExec(path, "CREATE TABLE T (K INTEGER PRIMARY KEY, A TEXT, B TEXT);");
        connection = std::make_unique<SqliteConnection>(path);
    }
    QString errorOf(const QString& sql) {
        return test::raised([&] { connection->query(sql); }).description;
    }
    QTemporaryDir dir;
    QString path;
    std::unique_ptr<SqliteConnection> connection;
};

TEST_F(SqliteConnectionKept, ARepeatedTextIsCompiledOnceAndForgetsItsValues) {
    const QString insert = QStringLiteral("INSERT INTO T (K, A, B) VALUES (?1, ?2, ?3)");
    const std::uint64_t compiled = connection->statementsCompiled();
    const std::uint64_t asked = connection->statementsPrepared();
    connection->execute(insert, {Variant(1), Variant(QStringLiteral("a1")), Variant(QStringLiteral("b1"))});
    // Fewer values: the rest are Null, as in a statement compiled afresh.
    connection->execute(insert, {Variant(2), Variant(QStringLiteral("a2"))});
    EXPECT_EQ(storedValue(path, "SELECT B FROM T WHERE K = 2"), QStringLiteral("null:"));
    EXPECT_EQ(storedValue(path, "SELECT A FROM T WHERE K = 2"), QStringLiteral("text:a2"));
    // A failed run (the key is taken) leaves the statement ready for the next.
    EXPECT_THROW(connection->execute(insert, {Variant(1), Variant(QStringLiteral("again"))}), VbError);
    EXPECT_EQ(connection->execute(insert, {Variant(3), Variant(QStringLiteral("a3")), Variant(QStringLiteral("b3"))}), 1);
    EXPECT_EQ(storedValue(path, "SELECT group_concat(A || '/' || ifnull(B, '-'), ' ') FROM T"),
              QStringLiteral("text:a1/b1 a2/- a3/b3"));
    EXPECT_EQ(connection->statementsPrepared() - asked, 4u);
    EXPECT_EQ(connection->statementsCompiled() - compiled, 1u);
}

TEST_F(SqliteConnectionKept, AChangedSchemaGivesTheNewColumnsOrTheCompilersError) {
    const QString all = QStringLiteral("SELECT * FROM T");
    connection->execute(QStringLiteral("INSERT INTO T VALUES (1, 'a', 'b')"));
    EXPECT_EQ(connection->query(all).fieldCount(), 3);
    // Changed by another program between two runs of the same text.
    sqlExec(path, "ALTER TABLE T ADD COLUMN C INTEGER DEFAULT 7;");
    Recordset widened = connection->query(all);
    ASSERT_EQ(widened.fieldCount(), 4);
    EXPECT_EQ(widened.fieldName(3), QStringLiteral("C"));
    EXPECT_EQ(widened.value(3).toLong(), 7);
    // Changed through the connection itself, and an empty result: the
    // columns come from the new table all the same.
    connection->execute(QStringLiteral("DROP TABLE T"));
    connection->execute(QStringLiteral("CREATE TABLE T (Only TEXT)"));
    Recordset narrowed = connection->query(all);
    ASSERT_EQ(narrowed.fieldCount(), 1);
    EXPECT_EQ(narrowed.fieldName(0), QStringLiteral("Only"));
    EXPECT_TRUE(narrowed.eof());
    connection->execute(QStringLiteral("DROP TABLE T"));
    EXPECT_EQ(errorOf(all), QStringLiteral("データベースの処理でエラーが発生しました。(no such table: T)"));
}

TEST_F(SqliteConnectionKept, TextsRunOnceDoNotPushOutTheOneRunOften) {
    const QString count = QStringLiteral("SELECT count(*) FROM T");
    const std::uint64_t compiled = connection->statementsCompiled();
    for (int i = 1; i <= 200; ++i) {
        connection->execute(QStringLiteral("INSERT INTO T (K, A) VALUES (%1, 'x')").arg(i));
        EXPECT_EQ(connection->query(count).value(0).toLong(), i);
    }
    EXPECT_EQ(connection->statementsCompiled() - compiled, 201u);
}

// Two sibling databases with the same tables and different rows, and a
// working database that links them.
class SqliteConnectionLinks : public ::testing::Test {
protected:
    void SetUp() override {
        // Blanks, '#' and Japanese in the folder name must survive the attachment.
        ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("財務 data#1")));
        first = dir.filePath(QStringLiteral("財務 data#1/Ledra.mdb"));
        second = dir.filePath(QStringLiteral("Ledra_dummy.mdb"));
        for (const QString& sibling : {first, second})
            test::sqlExecFile(sibling, QStringLiteral("platform/LinkedSiblings.sql"));
        sqlExec(first, "INSERT INTO T_FS VALUES (11, '2007-04-01', '第一建設', 1);"
                       "INSERT INTO M_FSDoc VALUES (1, '貸借対照表');");
        sqlExec(second, "INSERT INTO T_FS VALUES (22, '2008-04-01', '第二建設', 0);");
        working = dir.filePath(QStringLiteral("SystemData.mdb"));
        // A stand-in table of the same name in the working file must not be read.
        sqlExec(working, "CREATE TABLE T_FS (FSDataCode INTEGER); INSERT INTO T_FS VALUES (99);");
        connection = std::make_unique<SqliteConnection>(working);
    }

    QString codes() {
        Recordset rs = connection->query(QStringLiteral("SELECT FSDataCode FROM T_FS"));
        QString text;
        for (; !rs.eof(); rs.moveNext()) text += rs.value(0).text() + QLatin1Char(';');
        return text;
    }

    long attachedFilesNamed(const QString& path) {
        Recordset rs = connection->query(QStringLiteral("PRAGMA database_list"));
        long count = 0;
        for (; !rs.eof(); rs.moveNext())
            if (rs.value(QStringLiteral("file")).text() == QFileInfo(path).canonicalFilePath()) ++count;
        return count;
    }

    QTemporaryDir dir;
    QString first, second, working;
    std::unique_ptr<SqliteConnection> connection;
};

TEST_F(SqliteConnectionLinks, RepointingFollowsTheNewFileAndReleasesTheOld) {
    EXPECT_EQ(codes(), QStringLiteral("99;")) << "before linking, the working file's own table";
    connection->linkTable(QStringLiteral("t_fs"), QStringLiteral("T_FS"), first);
    EXPECT_EQ(codes(), QStringLiteral("11;"));
    EXPECT_EQ(connection->linkedFile(QStringLiteral("T_FS")), QFileInfo(first).canonicalFilePath());
    EXPECT_EQ(connection->linkedFile(QStringLiteral("M_FSDoc")), QString());
    connection->linkTable(QStringLiteral("M_FSDoc"), QStringLiteral("M_FSDoc"), first);
    EXPECT_EQ(attachedFilesNamed(first), 1) << "one attachment serves every table of a file";

    connection->linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), second);
    EXPECT_EQ(codes(), QStringLiteral("22;"));
    EXPECT_EQ(attachedFilesNamed(first), 1) << "M_FSDoc still reads the first file";
    EXPECT_EQ(connection->query(QStringLiteral("SELECT * FROM M_FSDoc")).recordCount(), 1);

    connection->linkTable(QStringLiteral("M_FSDoc"), QStringLiteral("M_FSDoc"), second);
    EXPECT_EQ(connection->query(QStringLiteral("SELECT * FROM M_FSDoc")).recordCount(), 0);
    EXPECT_EQ(attachedFilesNamed(first), 0);
    EXPECT_EQ(attachedFilesNamed(second), 1);

    connection->linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), first);
    EXPECT_EQ(codes(), QStringLiteral("11;"));
}

// Links put back at opening wait for the first statement that names their
// table: one pointed elsewhere before that never attaches the earlier file,
// and a table whose name only begins like another's does not count.
TEST_F(SqliteConnectionLinks, WaitingLinksAreMadeWhenAStatementNamesTheirTable) {
    connection->linkTableWhenNamed(QStringLiteral("T_FS"), QStringLiteral("T_FS"), first);
    connection->linkTableWhenNamed(QStringLiteral("M_FSDoc"), QStringLiteral("M_FSDoc"), first);
    EXPECT_EQ(attachedFilesNamed(first), 0);
    connection->execute(QStringLiteral("CREATE TABLE T_FSNote (A INTEGER)"));
    EXPECT_EQ(attachedFilesNamed(first), 0) << "T_FSNote is not T_FS";

    connection->linkTable(QStringLiteral("M_FSDoc"), QStringLiteral("M_FSDoc"), second);
    EXPECT_EQ(connection->query(QStringLiteral("select * from m_fsdoc")).recordCount(), 0);
    EXPECT_EQ(attachedFilesNamed(first), 0) << "the earlier file of M_FSDoc was never attached";

    EXPECT_EQ(codes(), QStringLiteral("11;"));
    EXPECT_EQ(attachedFilesNamed(first), 1);

    // Asking for the file makes the link as well; one that cannot be made
    // leaves the table as it is, without an error.
    connection->linkTableWhenNamed(QStringLiteral("T_FS"), QStringLiteral("T_FS"),
                                   dir.filePath(QStringLiteral("none/Ledra.mdb")));
    EXPECT_EQ(connection->linkedFile(QStringLiteral("t_fs")), QFileInfo(first).canonicalFilePath());
    connection->unlinkTable(QStringLiteral("T_FS"));
    connection->linkTableWhenNamed(QStringLiteral("T_FS"), QStringLiteral("T_FS"),
                                   dir.filePath(QStringLiteral("none/Ledra.mdb")));
    EXPECT_EQ(codes(), QStringLiteral("99;"));
    EXPECT_EQ(connection->linkedFile(QStringLiteral("T_FS")), QString());
}

TEST_F(SqliteConnectionLinks, FailedRepointingKeepsThePreviousLink) {
    connection->linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), first);

    const QString jet = dir.filePath(QStringLiteral("Ledra.mdb"));
    writeFile(jet, hexBytes(kJetHeader) + QByteArray(2048, '\0'));
    const QString damaged = test::raised([&] { connection->linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), jet); })
                                .description;
    EXPECT_TRUE(damaged.contains(QStringLiteral("は壊れているため読み込めません"))) << damaged.toStdString();
    EXPECT_TRUE(damaged.contains(QDir::toNativeSeparators(jet))) << damaged.toStdString();
    EXPECT_EQ(codes(), QStringLiteral("11;"));

    const QString missing = dir.filePath(QStringLiteral("none/Ledra.mdb"));
    EXPECT_THROW(connection->linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), missing), VbError);
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_EQ(codes(), QStringLiteral("11;"));

    // A database without the source table.
    const QString other = dir.filePath(QStringLiteral("other.mdb"));
    sqlExec(other, "CREATE TABLE Unrelated (A INTEGER);");
    EXPECT_TRUE(test::raised([&] { connection->linkTable(QStringLiteral("T_FS"), QStringLiteral("T_FS"), other); })
                    .description.contains(QStringLiteral("T_FS")));
    EXPECT_EQ(codes(), QStringLiteral("11;"));
    EXPECT_EQ(attachedFilesNamed(other), 0) << "the refused file is not left attached";
    EXPECT_EQ(connection->linkedFile(QStringLiteral("T_FS")), QFileInfo(first).canonicalFilePath());
}

// The working database is opened without file locks (it belongs to one run).
// What must hold all the same: statements of another connection in between
// are seen by the next statement, and what the connection writes is in the
// file for others at once.
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

// Walking a detached recordset and looking up its fields, with the errors
// ADO raised past its end, for a missing field and for an unset recordset.
long errorNumberOf(const std::function<void()>& action) { return test::raised(action).number; }

Recordset twoRows() {
    return Recordset({{QStringLiteral("IndexID"), ado::adInteger}, {QStringLiteral("ApplyerName"), ado::adVarWChar}},
                     {{Variant::fromLong(1), Variant(QStringLiteral("甲"))},
                      {Variant::fromLong(2), Variant::null()}});
}

// The program only walks forward, up to eof.
TEST(Recordset, WalksForwardToEofAndNoFurther) {
    Recordset rs = twoRows();
    EXPECT_FALSE(rs.eof());
    EXPECT_EQ(rs.value(0), Variant::fromLong(1));
    rs.moveNext();
    EXPECT_EQ(rs.value(QStringLiteral("IndexID")), Variant::fromLong(2));
    EXPECT_TRUE(rs.value(1).isNull());
    rs.moveNext();
    EXPECT_TRUE(rs.eof());
    EXPECT_EQ(errorNumberOf([&] { rs.value(0); }), 3021);
    EXPECT_EQ(errorNumberOf([&] { rs.moveNext(); }), 3021);
    EXPECT_EQ(rs.recordCount(), 2);
}

TEST(Recordset, MissingFieldRaisesItemNotFound) {
    const Recordset rs = twoRows();
    const test::Raised missing = test::raised([&] { rs.value(QStringLiteral("OtherSoftCode")); });
    EXPECT_EQ(missing.number, 3265);
    EXPECT_EQ(missing.description, QStringLiteral("要求された名前、または序数に対応する項目はコレクションで見つかりません。"));
    EXPECT_EQ(errorNumberOf([&] { rs.value(2); }), 3265);
    EXPECT_EQ(errorNumberOf([&] { rs.fieldName(-1); }), 3265);
}

TEST(Recordset, NothingRaisesObjectNotSet) {
    Recordset nothing;
    EXPECT_TRUE(nothing.isNothing());
    EXPECT_EQ(errorNumberOf([&] { nothing.eof(); }), 91);
    EXPECT_EQ(errorNumberOf([&] { nothing.moveNext(); }), 91);
    EXPECT_EQ(errorNumberOf([&] { nothing.value(QStringLiteral("A")); }), 91);
    EXPECT_EQ(errorNumberOf([&] { nothing.fieldCount(); }), 91);
}

}  // namespace
}  // namespace kelvary
