// A scratch program folder for the intake tests: a copy of the built program
// folder with the connection of the run opened on its SystemData.mdb and a
// recording user interface. What the tests expect is read back with the
// SQLite library directly, not through the data access layer under test.
#pragma once

#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFlags.h"
#include "platform/AppObject.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <sqlite3.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace kelvary::test {

class IntakeHome {
public:
    IntakeHome() : previousPath_(app::path()) {
        app::setPath(home_.path());
        gstrConnectionString =
            QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + database();
        gobjConnection = gobjOpenConnection();
        gblnRepresentation = false;
        glngSinseiType = 0;
    }
    ~IntakeHome() {
        gobjConnection.reset();
        app::setPath(previousPath_);
    }
    IntakeHome(const IntakeHome&) = delete;
    IntakeHome& operator=(const IntakeHome&) = delete;

    QString path() const { return home_.path(); }
    QString file(const QString& name) const { return home_.file(name); }
    QString database() const { return home_.file(QStringLiteral("SystemData.mdb")); }

    QString write(const QString& name, const QByteArray& bytes) const {
        const QString target = file(name);
        QFile out(target);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate)) << target.toStdString();
        out.write(bytes);
        return target;
    }

    QByteArray read(const QString& name) const {
        QFile in(file(name));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    // The places ("場所：" lines) of the error reports shown so far.
    QStringList errorPlaces() {
        QStringList places;
        for (const RecordedMessage& m : ui_->messages) {
            if (m.request.title != QStringLiteral("エラーが発生しました")) continue;
            for (const QString& line : m.request.text.split(QStringLiteral("\r\n"))) {
                if (line.startsWith(QStringLiteral("場所： "))) places << line.mid(4);
            }
        }
        return places;
    }

    // The whole text of every message shown so far, error reports included.
    QString messageTexts() {
        QString all;
        for (const RecordedMessage& m : ui_->messages) all += m.request.text + QLatin1Char('\n');
        return all;
    }

    // Each row of the query as its columns' texts joined by "|", Null as "NULL".
    QStringList rows(const QString& databasePath, const QString& query) const {
        QStringList result;
        sqlite3* db = nullptr;
        if (sqlite3_open_v2(databasePath.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) !=
            SQLITE_OK) {
            sqlite3_close(db);
            ADD_FAILURE() << "cannot open " << databasePath.toStdString();
            return result;
        }
        const QByteArray sql = query.toUtf8();
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db, sql.constData(), -1, &st, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db) << " in " << sql.constData();
        } else {
            while (sqlite3_step(st) == SQLITE_ROW) {
                QStringList cells;
                for (int i = 0; i < sqlite3_column_count(st); ++i) {
                    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
                    cells << (text ? QString::fromUtf8(text) : QStringLiteral("NULL"));
                }
                result << cells.join(QLatin1Char('|'));
            }
        }
        sqlite3_finalize(st);
        sqlite3_close(db);
        return result;
    }
    QStringList rows(const QString& query) const { return rows(database(), query); }

    // Runs a statement on the scratch database with the SQLite library.
    void exec(const QString& databasePath, const char* sql) const {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(databasePath.toUtf8().constData(), &db), SQLITE_OK);
        char* error = nullptr;
        const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &error);
        const std::string message = error ? error : "";
        sqlite3_free(error);
        sqlite3_close(db);
        ASSERT_EQ(rc, SQLITE_OK) << message;
    }

    RecordingUi& ui() { return *ui_; }

private:
    ScratchHome home_;
    RecordingUiGuard ui_;
    QString previousPath_;
};

}  // namespace kelvary::test
