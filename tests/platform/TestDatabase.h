// Small database files for the data access tests, made and read with the
// SQLite library directly, so what the tests expect does not pass through the
// code under test.
#pragma once

#include "support/ConnectedHome.h"

#include <sqlite3.h>

#include <QString>

namespace kelvary::test {

// Creates (or extends) a database file by running the SQL script in it.
inline void makeDatabase(const QString& path, const char* script) { sqlExec(path, script); }

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

}  // namespace kelvary::test
