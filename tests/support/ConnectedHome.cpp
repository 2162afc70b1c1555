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
    ASSERT_EQ(sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr),
              SQLITE_OK);
    // Scratch files: no need to wait for the disk.
    sqlite3_exec(db, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    char* message = nullptr;
    EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, &message), SQLITE_OK) << (message ? message : "") << " in " << sql;
    sqlite3_free(message);
    sqlite3_close(db);
}

void sqlExecFile(const QString& database, const QString& relative) {
    const QByteArray sql = readFile(testDataDir() + QLatin1Char('/') + relative);
    ASSERT_FALSE(sql.isEmpty()) << relative.toStdString();
    sqlExec(database, sql.constData());
}

namespace {

// Every row of a query, each as the texts of its first `columns` columns
// (all of them when negative).
QList<QStringList> sqlQuery(const QString& database, const char* sql, int columns) {
    QList<QStringList> rows;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        ADD_FAILURE() << "cannot open " << database.toStdString();
        return rows;
    }
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
        ADD_FAILURE() << sqlite3_errmsg(db) << " in " << sql;
    } else {
        const int count = columns < 0 ? sqlite3_column_count(stmt) : columns;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < count; ++i) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, i));
                cells << (text ? QString::fromUtf8(text) : QStringLiteral("NULL"));
            }
            rows << cells;
        }
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return rows;
}

}  // namespace

QStringList sqlColumn(const QString& database, const char* sql) {
    QStringList values;
    for (const QStringList& row : sqlQuery(database, sql, 1)) values << row.first();
    return values;
}

QStringList sqlRows(const QString& database, const QString& query) {
    QStringList values;
    for (const QStringList& row : sqlQuery(database, query.toUtf8().constData(), -1)) values << row.join(QLatin1Char('|'));
    return values;
}

QStringList errorPlaces(const RecordingUi& ui) {
    QStringList places;
    for (const RecordedMessage& m : ui.messages) {
        if (m.request.title != QStringLiteral("エラーが発生しました")) continue;
        for (const QString& line : m.request.text.split(QStringLiteral("\r\n")))
            if (line.startsWith(QStringLiteral("場所： "))) places << line.mid(4);
    }
    return places;
}

QString messageTexts(const RecordingUi& ui) {
    QString all;
    for (const RecordedMessage& m : ui.messages) all += m.request.text + QLatin1Char('\n');
    return all;
}

}  // namespace kelvary::test
