// A scratch program folder for the print-menu tests: a SystemData.mdb with
// the period index and the master lists (tests/data/startup/MenuHome.sql),
// made with the SQLite library itself (not through the code under test), a UserData.ini that lets error
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
        sqlExecFile(database(), QStringLiteral("startup/MenuHome.sql"));
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

    // Runs a .sql file of tests/data on the database file directly.
    void run(const char* sqlFile) { sqlExecFile(database(), QString::fromLatin1(sqlFile)); }

    // The first column of every row, as SQLite stores it, joined by ",".
    QString column(const char* sql) { return sqlColumn(database(), sql).join(QLatin1Char(',')); }

private:
    QString database() const { return folder_.file(QStringLiteral("SystemData.mdb")); }

    ProgramFolder folder_{"[System]\r\nShowErrMsg=-1\r\n"};
};

}  // namespace kelvary::test
