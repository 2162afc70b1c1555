// Application routines.
#include "startup/mdlFunctionApplication.h"

#include "BuildInfo.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/AppObject.h"
#include "platform/StrConv.h"
#include "platform/VbError.h"
#include "platform/VbFormat.h"
#include "startup/CommandLine.h"
#include "startup/mdlFunctionStandard.h"

#include <QApplication>
#include <QWidget>

#include <cmath>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

bool& quitRequested() {
    static bool quit = false;
    return quit;
}

QString padLeft(const QString& text, long width) {
    return text.rightJustified(static_cast<int>(width), QLatin1Char(' '));
}

}  // namespace

QString gstrEraChar(const Variant& date) {
    return trapped(QStringLiteral("gstrEraChar"), 0, QString(), [&] {
        if (date.isNull()) return QString();
        return vbFormat(date, QStringLiteral("g"));
    });
}

// No trap of its own: a bad date reaches the caller's trap.
Variant gvarEraDateText(const Variant& date, long width) {
    const QString blanks = QString(static_cast<int>(width), QLatin1Char(' '));
    if (date.isNull())
        return Variant(QStringLiteral("    ") + blanks + QStringLiteral("年") + blanks +
                       QStringLiteral("月") + blanks + QStringLiteral("日"));
    const VbDate d = date.toDate();
    const Variant asDate(d);
    return Variant(vbFormat(asDate, QStringLiteral("ggg")) +
                   padLeft(vbFormat(asDate, QStringLiteral("e")), width) + QStringLiteral("年") +
                   padLeft(QString::number(d.date.month()), width) + QStringLiteral("月") +
                   padLeft(QString::number(d.date.day()), width) + QStringLiteral("日"));
}

Variant gvarConvUnitType(Variant& amount) {
    return trapped(QStringLiteral("gvarConvUnitType"), 0, Variant(), [&] {
        if (amount.isNull() || amount.text().isEmpty()) return amount;
        amount = Variant(std::trunc(amount.toDouble() / 1000.0));
        return amount;
    });
}

// No trap of its own.
long glngCeilDiv(long count, long size) {
    if (size == 0) return 0;
    return count / size + (count % size != 0 ? 1 : 0);
}

QString gstrGetFileNameFromFullPath(const QString& path) {
    const qsizetype cut = std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
    return path.mid(cut + 1);
}

QString gstrFSDocMaster(const Variant& dateText) {
    return trapped(QStringLiteral("gstrFSDocMaster"), 0, QString(), [&] {
        if (dateText.isNull()) return QStringLiteral("tblFSDocMaster");
        const QString text = dateText.text();
        if (text.isEmpty() || text == QStringLiteral("2004/04/01")) return QStringLiteral("tblFSDocMaster");
        if (text == QStringLiteral("2006/07/01")) return QStringLiteral("tblFSDocMaster06");
        return QString();
    });
}

Variant gvarCalcEnforceDate(const Variant& defaultValue, const Variant& editionCode) {
    return trapped(QStringLiteral("gvarCalcEnforceDate"), 0, Variant(), [&] {
        const QString code = editionCode.text();
        if (code == QStringLiteral("200804")) return Variant(QDate(2008, 4, 1));
        if (code == QStringLiteral("201004")) return Variant(QDate(2010, 4, 1));
        if (code == QStringLiteral("201304")) return Variant(QDate(2013, 4, 1));
        return defaultValue;
    });
}

QString gstrMakeProxyString() {
    return trapped(QStringLiteral("gstrMakeProxyString"), 0, QString(), [&] {
        const QString section = QStringLiteral("UserInfo");
        QString text = QStringLiteral("(上記代理人)") + kCrLf +
                       gvarGetIniData(QStringLiteral("UserAddress"), section).text() + kCrLf +
                       gvarGetIniData(QStringLiteral("UserName"), section).text() + kCrLf;
        const QString name2 = gvarGetIniData(QStringLiteral("UserName2"), section).text();
        if (!name2.isEmpty()) text += name2 + kCrLf;
        return text + QStringLiteral("電話番号  ") + gvarGetIniData(QStringLiteral("UserTel"), section).text();
    });
}

QString gstrAppVersion() {
    return QStringLiteral("%1. %2. %3")
        .arg(build::VersionMajor)
        .arg(build::VersionMinor)
        .arg(build::VersionPatch);
}

void gCommandGet(QString& field1, QString& field2, QString& field3, std::optional<OutputMode>& mode) {
    trapped(QStringLiteral("gCommandGet"), 1, [&] {
        if (app::commandLine().isEmpty()) {
            // Started with options rather than the parent's one text.
            const CommandFields& options = optionFields();
            field1 = options.applicationFile;
            field2 = options.pdfFile;
            field3 = options.agent;
            mode = options.mode;
            return;
        }
        const QString text = vbStrConv(app::commandLine().trimmed(), vbLowerCase + vbNarrow);
        if (!text.contains(QLatin1Char('/'))) {
            field1 = text;
            return;
        }
        const QStringList parts = text.split(QLatin1Char('/'));
        QString* fields[] = {&field1, &field2, &field3};
        for (int i = 0; i < 4; ++i) {
            // VB's array bound check: fewer than four fields after the first
            // "/" is an error, and the fields not yet filled stay empty.
            if (i + 1 >= parts.size()) throw VbError::standard(vberr::SubscriptOutOfRange);
            if (i < 3) *fields[i] = parts[i + 1];
            else mode = outputModeFromString(parts[i + 1]);
        }
    });
}

void gQuitApplication(bool /*skipQuestion: every caller skips the question*/) {
    if (quitRequested()) return;
    quitRequested() = true;
    gobjConnection.reset();
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return;
    for (QWidget* form : QApplication::topLevelWidgets()) form->close();
}

bool gblnQuitRequested() { return quitRequested(); }

}  // namespace kelvary
