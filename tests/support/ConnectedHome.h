// A scratch program folder with the run's connection open on its
// SystemData.mdb and a recording user interface, for tests of routines that
// work on the working tables. Expected values are read back with SQLite
// directly (sqlColumn), not through the data access layer.
#pragma once

#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QStringList>

namespace kelvary::test {

class ConnectedHome {
public:
    ConnectedHome();
    ~ConnectedHome();
    ConnectedHome(const ConnectedHome&) = delete;
    ConnectedHome& operator=(const ConnectedHome&) = delete;

    QString path() const { return home_.path(); }
    QString file(const QString& name) const { return home_.file(name); }
    QString database() const { return home_.file(QStringLiteral("SystemData.mdb")); }
    RecordingUi& ui() { return *ui_; }

    // Runs statements on the database with SQLite directly.
    void sqlExec(const char* sql) const;

private:
    ScratchHome home_;
    QString previousPath_;
    RecordingUiGuard ui_;
};

// Runs statements on a database file with SQLite directly, making the file
// if it is not there yet.
void sqlExec(const QString& database, const char* sql);
inline void sqlExec(const QString& database, const QString& sql) { sqlExec(database, sql.toUtf8().constData()); }

// Runs the statements of a .sql file of tests/data (its path relative to
// that folder) on a database file.
void sqlExecFile(const QString& database, const QString& relative);

// The first column of every row of a query, as text ("NULL" for Null).
QStringList sqlColumn(const QString& database, const char* sql);

// Each row of a query as its columns' texts joined by "|", Null as "NULL".
QStringList sqlRows(const QString& database, const QString& query);

// The first column of the first row as SQLite stores it, written as
// "typeof:value" (for example "text:2008-04-01", "integer:1", "null:").
inline QString storedValue(const QString& database, const char* sql) {
    const QByteArray typed = "WITH q(v) AS (" + QByteArray(sql) + ") SELECT typeof(v) || ':' || ifnull(v, '') FROM q";
    return sqlColumn(database, typed.constData()).value(0);
}

// The places ("場所：" lines) of the error reports shown so far.
QStringList errorPlaces(const RecordingUi& ui);

// The whole text of every message shown so far, error reports included.
QString messageTexts(const RecordingUi& ui);

}  // namespace kelvary::test
