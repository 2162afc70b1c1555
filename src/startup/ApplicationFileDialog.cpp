// The start-up file dialog and the listing of its Qt-worded texts.
#include "startup/ApplicationFileDialog.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTreeView>

#include <memory>

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

void prepare(QFileDialog& dialog) {
    dialog.setObjectName(QStringLiteral("ApplicationFileDialog"));
    dialog.setWindowTitle(QStringLiteral("申請データファイルを開く"));
    dialog.setNameFilter(QStringLiteral("申請データ (*.dat *.txt);;すべてのファイル (*)"));
    // Qt's own dialog: the platform's would speak the system's language.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
}

}  // namespace

QStringList applicationFileDialogTexts() {
    QFileDialog dialog;
    prepare(dialog);
    QStringList lines;
    const auto add = [&](const QString& name, const QString& text) { lines << name + QStringLiteral(": ") + text; };
    for (const char* name : {"lookInLabel", "fileNameLabel", "fileTypeLabel"})
        if (const auto* label = dialog.findChild<QLabel*>(QLatin1String(name))) add(QLatin1String(name), label->text());
    if (const auto* box = dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox")))
        for (const QAbstractButton* b : box->buttons()) add(QStringLiteral("button"), b->text());
    if (const auto* view = dialog.findChild<QTreeView*>(QStringLiteral("treeView")))
        for (int c = 0; c < view->model()->columnCount(); ++c)
            add(QStringLiteral("column"), view->model()->headerData(c, Qt::Horizontal).toString());
    if (auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
        const std::unique_ptr<QMenu> menu(edit->createStandardContextMenu());
        for (const QAction* a : menu->actions())
            if (!a->isSeparator()) add(QStringLiteral("menu"), a->text().section(QLatin1Char('\t'), 0, 0));
    }
    return lines;
}

QString askForApplicationFile(QSettings& settings) {
    QFileDialog dialog(nullptr, QString(), startFolder(settings));
    prepare(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return QString();
    const QString file = dialog.selectedFiles().constFirst();
    settings.setValue(QLatin1String(kLastApplicationFolderKey), QFileInfo(file).absolutePath());
    settings.sync();
    return file;
}

}  // namespace kelvary
