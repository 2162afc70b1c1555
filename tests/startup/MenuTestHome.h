// A scratch program folder for the print-menu tests: a SystemData.mdb with
// the period index and the master lists, made here with the SQLite library
// itself (not through the code under test), a UserData.ini that lets error
// reports show, and the run's connection opened on it. Everything global it
// touches is put back when it goes.
#pragma once

#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFlags.h"
#include "platform/AppObject.h"

#include <sqlite3.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary::test {

class MenuTestHome {
public:
    MenuTestHome() {
        app::setPath(dir_.path());
        app::setCommandLine(QString());
        gblnRepresentation = false;
        glngSinseiType = 0;
        QFile ini(dir_.filePath(QStringLiteral("UserData.ini")));
        if (ini.open(QIODevice::WriteOnly)) ini.write("[System]\r\nShowErrMsg=-1\r\n");
        run(kSchema);
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") +
                               dir_.filePath(QStringLiteral("SystemData.mdb"));
        gobjConnection = gobjOpenConnection();
    }
    ~MenuTestHome() {
        gobjConnection.reset();
        gstrConnectionString.clear();
        gblnRepresentation = false;
        glngSinseiType = 0;
        app::setCommandLine(QString());
        app::setPath(QString());
    }
    MenuTestHome(const MenuTestHome&) = delete;
    MenuTestHome& operator=(const MenuTestHome&) = delete;

    // Runs SQL on the database file directly.
    void run(const char* sql) {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(databasePath().constData(), &db), SQLITE_OK);
        char* error = nullptr;
        const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &error);
        const std::string message = error ? error : "";
        sqlite3_free(error);
        sqlite3_close(db);
        ASSERT_EQ(rc, SQLITE_OK) << message;
    }

    // The first column of every row, as SQLite stores it, joined by ",".
    QString column(const char* sql) {
        sqlite3* db = nullptr;
        QString result;
        if (sqlite3_open(databasePath().constData(), &db) == SQLITE_OK) {
            sqlite3_stmt* st = nullptr;
            if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) == SQLITE_OK) {
                while (sqlite3_step(st) == SQLITE_ROW) {
                    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(st, 0));
                    if (!result.isEmpty()) result += QLatin1Char(',');
                    result += text ? QString::fromUtf8(text) : QStringLiteral("NULL");
                }
            }
            sqlite3_finalize(st);
        }
        sqlite3_close(db);
        return result;
    }

private:
    QByteArray databasePath() const { return dir_.filePath(QStringLiteral("SystemData.mdb")).toUtf8(); }

    // The tables as the program's database declares them; the two courses
    // are the codes the menu's buttons stand for.
    static constexpr const char* kSchema = R"sql(
        CREATE TABLE tblIndex (IndexID INTEGER, MainDataCode INTEGER, DataType INTEGER,
            LinkCode INTEGER, FileName TEXT, ApplyerName TEXT, FYearNumber DOUBLE,
            FYearFrom DATETIME, FYearTo DATETIME, PrintFlag BOOLEAN DEFAULT 0);
        CREATE TABLE tblService (ServiceID INTEGER, ServiceName TEXT, SortNumber INTEGER);
        INSERT INTO tblService VALUES (1, 'レギュラー（10営業日以内）', 1);
        INSERT INTO tblService VALUES (3, 'エクスプレス（3営業日以内）', 2);
        CREATE TABLE tblPref (PrefID INTEGER, PrefName TEXT);
        CREATE TABLE tblHantoku (HantokuID INTEGER, HantokuText TEXT);
    )sql";

    QTemporaryDir dir_;
};

}  // namespace kelvary::test
