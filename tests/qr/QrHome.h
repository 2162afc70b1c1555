// A scratch program folder for the QR tests: the connection of the run on its
// SystemData.mdb, a Temp folder, a recording user interface, and helpers that
// fill the working tables with the SQLite library directly and read back the
// files the generators write, byte for byte. Every symbol left in Temp at the
// end of a test is decoded by zbar and compared with its payload copy.
#pragma once

#include "BuildInfo.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/Cp932.h"
#include "platform/AppObject.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <sqlite3.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace kelvary::test {

// What zbar reads from an image: the symbol's bytes as they were encoded.
inline QByteArray zbarDecode(const QString& imagePath) {
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"),
               {QStringLiteral("--raw"), QStringLiteral("-q"), QStringLiteral("-Sbinary"), imagePath});
    if (!zbar.waitForFinished(60000)) {
        zbar.kill();
        zbar.waitForFinished();
        return QByteArray("<zbarimg did not finish>");
    }
    return zbar.readAllStandardOutput();
}

class QrHome {
public:
    QrHome() : previousPath_(app::path()) {
        app::setPath(home_.path());
        QDir().mkpath(home_.file(QStringLiteral("Temp")));
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + database();
        gobjConnection = gobjOpenConnection();
    }
    // Every symbol a test leaves behind must read back as its payload copy.
    ~QrHome() {
        for (const QString& name : tempFiles()) {
            if (!name.endsWith(QStringLiteral(".bmp"))) continue;
            EXPECT_EQ(zbarDecode(temp(name)), read(temp(name + QStringLiteral(".Txt"))))
                << name.toStdString();
        }
        gobjConnection.reset();
        app::setPath(previousPath_);
    }
    QrHome(const QrHome&) = delete;
    QrHome& operator=(const QrHome&) = delete;

    QString path() const { return home_.path(); }
    QString file(const QString& name) const { return home_.file(name); }
    QString database() const { return home_.file(QStringLiteral("SystemData.mdb")); }
    QString siblingDatabase() const { return home_.file(QStringLiteral("Ledra_dummy.mdb")); }
    QString temp(const QString& name) const { return home_.file(QStringLiteral("Temp/") + name); }

    // The payload copy of a symbol, as bytes.
    QByteArray payload(const QString& symbol) const {
        return read(temp(symbol + QStringLiteral(".bmp.Txt")));
    }
    bool hasSymbol(const QString& symbol) const {
        return QFile::exists(temp(symbol + QStringLiteral(".bmp"))) &&
               QFile::exists(temp(symbol + QStringLiteral(".bmp.Txt")));
    }
    // Every file in Temp, sorted by name.
    QStringList tempFiles() const {
        return QDir(home_.file(QStringLiteral("Temp"))).entryList(QDir::Files, QDir::Name);
    }

    static QByteArray read(const QString& path) {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    // Runs statements (UTF-8 SQL) on the working database.
    void exec(const QString& sql) const { execOn(database(), sql); }
    // Runs statements on the sibling database the linked master tables read.
    void execSibling(const QString& sql) const { execOn(siblingDatabase(), sql); }

    static void execOn(const QString& databasePath, const QString& sql) {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(databasePath.toUtf8().constData(), &db), SQLITE_OK);
        char* error = nullptr;
        const int rc = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error);
        const std::string message = error ? error : "";
        sqlite3_free(error);
        sqlite3_close(db);
        ASSERT_EQ(rc, SQLITE_OK) << message << "\n" << sql.toStdString();
    }

    // The places of the error reports shown so far.
    QStringList errorPlaces() {
        QStringList places;
        for (const RecordedMessage& m : ui_->messages) {
            if (m.request.title != QStringLiteral("エラーが発生しました")) continue;
            for (const QString& line : m.request.text.split(QStringLiteral("\r\n")))
                if (line.startsWith(QStringLiteral("場所： "))) places << line.mid(4);
        }
        return places;
    }

    RecordingUi& ui() { return *ui_; }

private:
    ScratchHome home_;
    RecordingUiGuard ui_;
    QString previousPath_;
};

// An expected payload of tests/data/qr as the generator must write it: LF
// lines become CR LF, "{version}" the program's version, the text CP932.
inline QByteArray expectedPayload(const QString& name) {
    QFile in(testDataDir() + QStringLiteral("/qr/") + name + QStringLiteral(".txt"));
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << name.toStdString();
    QString text = QString::fromUtf8(in.readAll());
    text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    text.replace(QStringLiteral("{version}"), QStringLiteral("%1. %2. %3")
                                                  .arg(build::VersionMajor)
                                                  .arg(build::VersionMinor)
                                                  .arg(build::VersionPatch));
    return cp932Encode(text);
}

}  // namespace kelvary::test
