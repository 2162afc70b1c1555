// A scratch program folder for the print-menu tests: a SystemData.mdb with
// the period index and the master lists, made here with the SQLite library
// itself (not through the code under test), a UserData.ini that lets error
// reports show, and the run's connection opened on it. Everything global it
// touches is put back when it goes.
#pragma once

#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFlags.h"
#include "platform/AppObject.h"

#include "support/ConnectedHome.h"


namespace kelvary::test {

class MenuTestHome {
public:
    MenuTestHome() {
        app::setCommandLine(QString());
        gblnRepresentation = false;
        glngSinseiType = 0;
        run(kSchema);
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + database();
        gobjConnection = gobjOpenConnection();
    }
    ~MenuTestHome() {
        gobjConnection.reset();
        gstrConnectionString.clear();
        gblnRepresentation = false;
        glngSinseiType = 0;
        app::setCommandLine(QString());
    }
    MenuTestHome(const MenuTestHome&) = delete;
    MenuTestHome& operator=(const MenuTestHome&) = delete;

    // Runs SQL on the database file directly.
    void run(const char* sql) { sqlExec(database(), sql); }

    // The first column of every row, as SQLite stores it, joined by ",".
    QString column(const char* sql) { return sqlColumn(database(), sql).join(QLatin1Char(',')); }

private:
    QString database() const { return folder_.file(QStringLiteral("SystemData.mdb")); }

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

    ProgramFolder folder_{"[System]\r\nShowErrMsg=-1\r\n"};
};

}  // namespace kelvary::test
