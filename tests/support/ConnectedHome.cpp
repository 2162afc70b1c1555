// Scratch program folder with an open connection.
#include "support/ConnectedHome.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/AppObject.h"

#include <sqlite3.h>

#include <gtest/gtest.h>

namespace kelvary::test {

ConnectedHome::ConnectedHome() : previousPath_(app::path()) {
    app::setPath(home_.path());
    gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + database();
    gobjConnection = gobjOpenConnection();
}

ConnectedHome::~ConnectedHome() {
    gobjConnection.reset();
    app::setPath(previousPath_);
}

void ConnectedHome::sqlExec(const char* sql) const { test::sqlExec(database(), sql); }

void sqlExec(const QString& database, const char* sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    char* message = nullptr;
    EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, &message), SQLITE_OK) << (message ? message : "") << " in " << sql;
    sqlite3_free(message);
    sqlite3_close(db);
}

QStringList sqlColumn(const QString& database, const char* sql) {
    QStringList values;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        ADD_FAILURE() << "cannot open " << database.toStdString();
        return values;
    }
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
        ADD_FAILURE() << sqlite3_errmsg(db) << " in " << sql;
    } else {
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
            values << (text ? QString::fromUtf8(text) : QStringLiteral("NULL"));
        }
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return values;
}

}  // namespace kelvary::test
