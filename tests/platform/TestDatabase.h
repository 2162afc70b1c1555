// Small database files for the data access tests, made and read with the
// SQLite library directly, so what the tests expect does not pass through the
// code under test.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

namespace kelvary::test {

// Creates (or extends) a database file by running the SQL script in it.
inline void makeDatabase(const QString& path, const char* script) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    // Scratch files: no need to wait for the disk.
    sqlite3_exec(db, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    char* error = nullptr;
    const int rc = sqlite3_exec(db, script, nullptr, nullptr, &error);
    const QString message = QString::fromUtf8(error ? error : "");
    sqlite3_free(error);
    sqlite3_close(db);
    ASSERT_EQ(rc, SQLITE_OK) << message.toStdString();
}

// The first column of the first row as SQLite stores it, written as
// "typeof:value" (for example "text:2008-04-01", "integer:1", "null:").
inline QString storedValue(const QString& path, const char* sql) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        return QStringLiteral("<cannot open>");
    }
    sqlite3_stmt* st = nullptr;
    QString result = QStringLiteral("<no row>");
    if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) == SQLITE_OK && sqlite3_step(st) == SQLITE_ROW) {
        static const char* const kinds[] = {"", "integer", "real", "text", "blob", "null"};
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
        result = QString::fromLatin1(kinds[sqlite3_column_type(st, 0)]) + QLatin1Char(':') +
                 QString::fromUtf8(text ? text : "");
    }
    sqlite3_finalize(st);
    sqlite3_close(db);
    return result;
}

inline void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

}  // namespace kelvary::test
