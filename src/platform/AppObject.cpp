// The application object: program folder, file name and title.
#include "platform/AppObject.h"

#include "BuildInfo.h"

#include <QCoreApplication>
#include <QDir>

namespace kelvary::app {
namespace {
QString& folderOverride() {
    static QString folder;
    return folder;
}

QString& commandLineText() {
    static QString text;
    return text;
}
}  // namespace

QString path() {
    if (!folderOverride().isEmpty()) return folderOverride();
    if (QCoreApplication::instance()) return QDir::cleanPath(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(QDir::currentPath());
}

void setPath(const QString& folder) {
    folderOverride() = folder.isEmpty() ? QString() : QDir::cleanPath(QDir(folder).absolutePath());
}

QString commandLine() { return commandLineText(); }
void setCommandLine(const QString& text) { commandLineText() = text; }

QString exeName() { return QStringLiteral("kelvary"); }

QString title() { return QString::fromUtf8(build::ApplicationTitle); }

}  // namespace kelvary::app
