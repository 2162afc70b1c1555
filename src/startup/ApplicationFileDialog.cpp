#include "startup/ApplicationFileDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace kelvary {
namespace {

// The last folder while it still exists; before the first choice the user's
// documents, where the parent program's exports usually land.
QString startFolder(const QSettings& settings) {
    const QString last = settings.value(QLatin1String(kLastApplicationFolderKey)).toString();
    if (!last.isEmpty() && QFileInfo(last).isDir()) return last;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!documents.isEmpty() && QFileInfo(documents).isDir()) return documents;
    return QDir::homePath();
}

}  // namespace

QString askForApplicationFile(QSettings& settings) {
    // Qt's own dialog: the platform's would speak the system's language.
    QFileDialog dialog(nullptr, QStringLiteral("申請データファイルを開く"), startFolder(settings),
                       QStringLiteral("申請データ (*.dat *.txt);;すべてのファイル (*)"));
    dialog.setObjectName(QStringLiteral("ApplicationFileDialog"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return QString();
    const QString file = dialog.selectedFiles().constFirst();
    settings.setValue(QLatin1String(kLastApplicationFolderKey), QFileInfo(file).absolutePath());
    settings.sync();
    return file;
}

}  // namespace kelvary
