// Common services: message boxes, the error display, the settings file, the
// program folder and small value helpers. The progress window and the list
// helpers live beside this file (frmMsg.cpp, ListControls.cpp).
#include "startup/mdlFunctionStandard.h"

#include "platform/AppObject.h"
#include "platform/Cp932.h"
#include "platform/ProfileFile.h"
#include "platform/VbError.h"
#include "startup/RunOutcome.h"
#include "startup/SettingsFileCheck.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/UserInterface.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

struct MsgboxKind {
    MsgIcon icon;
    MsgButtons buttons;
    bool defaultIsNo;
    const char* defaultMessage;
    const char* defaultTitle;
};

const MsgboxKind kMsgboxKinds[] = {
    {MsgIcon::Information, MsgButtons::Ok, false, "", "情報"},
    {MsgIcon::Question, MsgButtons::YesNo, false, "よろしいですか？", "確認"},
    {MsgIcon::Warning, MsgButtons::YesNo, true, "よろしいですか？", "警告"},
    {MsgIcon::Critical, MsgButtons::Ok, false, "中止します", "中止"},
    {MsgIcon::Question, MsgButtons::YesNo, false, "キャンセルします。よろしいですか？",
     "キャンセルの確認"},
};

QString modeText(int mode) {
    switch (mode) {
    case 0: return QStringLiteral("処理を続けます。");
    case 1: return QStringLiteral("処理を中断します。");
    case 2: return QStringLiteral("処理を続けますか？");
    default: return QString();
    }
}

// A setting that cannot be read cannot keep an error quiet.
bool errorBoxesVisible() {
    if (!settingsFileProblem(userDataIniPath()).isEmpty()) return true;
    return gvarGetIniData(QStringLiteral("ShowErrMsg"), QStringLiteral("System")).text().trimmed() ==
           QStringLiteral("-1");
}

// Every report also goes to the log and to standard error, whether or not the
// settings let the box show, so that no failure is ever lost.
void recordError(const QString& report, bool shownInTranscript) {
    const QString folder = app::path() + QStringLiteral("/Temp");
    QDir().mkpath(folder);
    QFile log(folder + QStringLiteral("/kelvary.log"));
    if (log.open(QIODevice::Append | QIODevice::Text)) {
        QString entry = QDateTime::currentDateTime().toString(Qt::ISODate) + QLatin1Char('\n') +
                        QString(report).replace(kCrLf, QStringLiteral("\n")) + QStringLiteral("\n\n");
        log.write(entry.toUtf8());
    }
    if (!shownInTranscript) {
        const QByteArray bytes =
            (QStringLiteral("kelvary: ") + QString(report).replace(kCrLf, QStringLiteral("\n  ")) +
             QLatin1Char('\n'))
                .toUtf8();
        std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
        std::fflush(stderr);
    }
}

}  // namespace

bool gMsgbox(int kind, const QString& message, const QString& title) {
    return trapped(QStringLiteral("gMsgbox"), 0, false, [&] {
        if (kind < 0 || kind > 4) throw VbError::standard(vberr::InvalidProcedureCall);
        // The user has closed the program: nothing more is asked.
        if (gblnQuitRequested()) return false;
        const MsgboxKind& k = kMsgboxKinds[kind];
        MessageRequest request;
        request.kindLabel = QString::number(kind);
        request.icon = k.icon;
        request.buttons = k.buttons;
        request.defaultIsNo = k.defaultIsNo;
        request.text = message.isEmpty() ? QString::fromUtf8(k.defaultMessage) : message;
        request.title = title.isEmpty() ? QString::fromUtf8(k.defaultTitle) : title;
        return userInterface().showMessage(request) == MsgAnswer::Yes;
    });
}

QString errorReportText(const QString& place, int mode, long number, const QString& description,
                        const std::optional<int>& position) {
    const QString first = number == vberr::ItemNotFound
                              ? QStringLiteral("データファイルのバージョンが古いため必要な項目が足りません")
                              : QStringLiteral("プログラムの実行中にエラーが発生しました。");
    const QString where = position ? QString::number(*position)
                                   : QStringLiteral("位置情報は設定されていません");
    return first + kCrLf + QStringLiteral("場所： ") + place + kCrLf + kCrLf +
           QStringLiteral("番号： ") + QString::number(number) + kCrLf + kCrLf +
           QStringLiteral("内容： ") + description + kCrLf + kCrLf + QStringLiteral("位置： ") + where +
           kCrLf + kCrLf + kCrLf + modeText(mode);
}

bool ShowErrMsg(const QString& place, int mode) {
    const ErrInfo err = currentError();
    noteErrorReported();
    try {
        const QString text = errorReportText(place, mode, err.number, err.description, err.position);
        const bool visible = errorBoxesVisible() && !gblnQuitRequested();
        recordError(text, visible && userInterface().isBatch());
        if (!visible) return false;
        MessageRequest request;
        request.kindLabel = QStringLiteral("3");
        request.icon = MsgIcon::Critical;
        request.buttons = mode == 2 ? MsgButtons::YesNo : MsgButtons::Ok;
        request.text = text;
        request.title = QStringLiteral("エラーが発生しました");
        const MsgAnswer answer = userInterface().showMessage(request);
        return mode == 2 && answer == MsgAnswer::Yes;
    } catch (...) {
        MessageRequest plain;
        plain.kindLabel = QStringLiteral("0");
        plain.text = QStringLiteral("gErrMsgでエラーが発生しました") + kCrLf +
                     QString::number(currentError().number);
        try {
            userInterface().showMessage(plain);
        } catch (...) {
            // Nothing is left to report through.
        }
        return false;
    }
}

QString userDataIniPath() { return app::path() + QStringLiteral("/UserData.ini"); }

Variant gvarGetIniData(const QString& key, const QString& section) {
    QString value = readProfileString(userDataIniPath(), section, key, QString()).left(1024);
    value.remove(QChar(u'\0'));
    while (value.endsWith(QLatin1Char(' '))) value.chop(1);
    return Variant(value);
}

void gWriteIniData(const QString& key, const Variant& value, const QString& section) {
    writeProfileString(userDataIniPath(), section, key, value.text());
}

QString gstrProgramInfo(int kind) {
    const QString folder = app::path();
    switch (kind) {
    case 0: return folder + QLatin1Char('/');
    case 1: return folder + QLatin1Char('/') + app::exeName();
    case 2: return app::exeName();
    case 3: return folder;
    case 4: return folder.left(folder.lastIndexOf(QLatin1Char('/')) + 1);
    default: return QString();
    }
}

bool gblnCheckExistFile(const QString& path, int attributes) {
    if (path.isEmpty()) return false;
    const QFileInfo info(path);
    if (path.contains(QLatin1Char('*')) || path.contains(QLatin1Char('?'))) {
        QDir::Filters filters = QDir::Files | QDir::Hidden;
        if (attributes & vbDirectory) filters |= QDir::Dirs | QDir::NoDotAndDotDot;
        return !QDir(info.path()).entryList({info.fileName()}, filters).isEmpty();
    }
    if (!info.exists()) return false;
    return info.isFile() || (info.isDir() && (attributes & vbDirectory));
}

void gSetHourglass(const Variant& flag) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return;
    if (flag.type() != VarType::Boolean && !flag.isNumber()) return;
    const double v = flag.toDouble();
    if (v == -1.0) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (v == 0.0) {
        while (QGuiApplication::overrideCursor()) QGuiApplication::restoreOverrideCursor();
    }
}

Variant gvarCheckData(int mode, const Variant& value, const Variant& defaultValue) {
    return trapped(QStringLiteral("gvarCheckData"), 0, Variant(), [&] {
        switch (mode) {
        case 0: return value.isNull() ? defaultValue : value;
        case 1: return !value.isNull() && value.text().isEmpty() ? defaultValue : value;
        case 2: return value.isNull() || value.text().isEmpty() ? defaultValue : value;
        case 3:
            // VB's "value = 0": Null compares as unknown, texts must be numbers.
            if (value.isNull()) return value;
            return value.toDouble() == 0.0 ? defaultValue : value;
        default: return value;
        }
    });
}

long glngLen(const Variant& value) {
    return trapped(QStringLiteral("glngLen"), 0, 0, [&] {
        return cp932ByteLength(value.text());
    });
}

}  // namespace kelvary
