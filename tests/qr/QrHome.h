// A scratch program folder for the QR tests: the shared connected home with
// helpers that read back the files the generators write, byte for byte. Every symbol left in Temp at the
// end of a test is decoded by zbar and compared with its payload copy.
#pragma once

#include "BuildInfo.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/AppObject.h"
#include "platform/Cp932.h"
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace kelvary::test {

class QrHome : public ConnectedHome {
public:
    // Every symbol a test leaves behind must read back as its payload copy.
    ~QrHome() {
        for (const QString& name : tempFiles()) {
            if (!name.endsWith(QStringLiteral(".bmp"))) continue;
            EXPECT_EQ(zbarDecode(temp(name)), read(temp(name + QStringLiteral(".Txt")))) << name.toStdString();
        }
    }

    QString siblingDatabase() const { return file(QStringLiteral("Ledra_dummy.mdb")); }
    QString temp(const QString& name) const { return file(QStringLiteral("Temp/") + name); }

    // The payload copy of a symbol, as bytes.
    QByteArray payload(const QString& symbol) const { return read(temp(symbol + QStringLiteral(".bmp.Txt"))); }
    bool hasSymbol(const QString& symbol) const {
        return QFile::exists(temp(symbol + QStringLiteral(".bmp"))) &&
               QFile::exists(temp(symbol + QStringLiteral(".bmp.Txt")));
    }
    // Every file in Temp, sorted by name.
    QStringList tempFiles() const { return QDir(file(QStringLiteral("Temp"))).entryList(QDir::Files, QDir::Name); }

    static QByteArray read(const QString& path) { return readFile(path); }
    void exec(const QString& sql) const { test::sqlExec(database(), sql); }
    // Statements on the sibling database the linked master tables read.
    void execSibling(const QString& sql) const { test::sqlExec(siblingDatabase(), sql); }
    // Runs a .sql file of tests/data on the working database.
    void execFile(const QString& relative) const { sqlExecFile(database(), relative); }
    QStringList errorPlaces() { return test::errorPlaces(ui()); }
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
