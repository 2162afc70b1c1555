// The settings file check.
#include "startup/SettingsFileCheck.h"

#include "platform/SequentialInput.h"
#include "platform/VbError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kelvary {

QString settingsFileProblem(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return {};
    const QString named = QStringLiteral("設定ファイル「") + QDir::toNativeSeparators(path) + QStringLiteral("」");
    if (info.isDir()) return named + QStringLiteral("がフォルダーになっています。");
    // Opening a FIFO would wait for ever, and a device may never end.
    if (const FileKind kind = fileKindOf(path); kind != FileKind::Regular)
        return named + QStringLiteral("が") + fileKindName(kind) + QStringLiteral("になっています。");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return named + QStringLiteral("を読み込めません。読み取る権限があるか確認してください。");
    if (file.size() == 0) return {};
    try {
        SequentialInput text(path);
    } catch (const VbError&) {
        return named + QStringLiteral("の文字コードが Shift_JIS (CP932) ではないため、読み込めません。");
    }
    return {};
}

void requireReadableSettings(const QString& path) {
    const QString problem = settingsFileProblem(path);
    if (!problem.isEmpty())
        throw VbError(vberr::PermissionDenied, problem + QStringLiteral("設定ファイルを直してから、もう一度実行してください。"));
}

}  // namespace kelvary
