// A scratch program folder for the intake tests: the shared connected home
// with the application flags of a plain run, and short names for the SQLite
// helpers the tests read their expectations back with.
#pragma once

#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFlags.h"
#include "platform/AppObject.h"
#include "support/ConnectedHome.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace kelvary::test {

class IntakeHome : public ConnectedHome {
public:
    IntakeHome() {
        gblnRepresentation = false;
        glngSinseiType = 0;
    }

    QString write(const QString& name, const QByteArray& bytes) const {
        writeFile(file(name), bytes);
        return file(name);
    }
    QByteArray read(const QString& name) const { return readFile(file(name)); }
    QStringList errorPlaces() { return test::errorPlaces(ui()); }
    QString messageTexts() { return test::messageTexts(ui()); }
    QStringList rows(const QString& databasePath, const QString& query) const { return sqlRows(databasePath, query); }
    QStringList rows(const QString& query) const { return sqlRows(database(), query); }
    void exec(const QString& databasePath, const char* sql) const { test::sqlExec(databasePath, sql); }
};

}  // namespace kelvary::test
