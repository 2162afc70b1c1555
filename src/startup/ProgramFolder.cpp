// Choosing, filling and refreshing the per-user program folder.
#include "startup/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace kelvary {
namespace {

const QString kUserSettings = QStringLiteral("UserData.ini");
const QString kTemp = QStringLiteral("Temp");

QString readStamp(const QString& file) {
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly)) return QString();
    return QString::fromUtf8(f.readAll()).trimmed();
}

bool writeStamp(const QString& file, const QString& stamp) {
    QSaveFile f(file);
    if (!f.open(QIODevice::WriteOnly)) return false;
    f.write(stamp.toUtf8() + '\n');
    return f.commit();
}

// The installed files a user's folder takes, as paths relative to the
// installed folder: everything but programs, the marks and the installed
// Temp (each user has an empty one of their own).
QStringList programFiles(const QString& installed) {
    QStringList files;
    const QDir root(installed);
    QDirIterator it(installed, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo file(it.next());
        const QString relative = root.relativeFilePath(file.filePath());
        if (relative == QLatin1String(kInstalledMark) || relative == QLatin1String(kCopiedMark)) continue;
        if (relative.startsWith(kTemp + QLatin1Char('/'))) continue;
        if (file.permissions() & QFileDevice::ExeOwner) continue;
        files << relative;
    }
    return files;
}

// Replaces (or creates) one file so that a reader never sees it half-copied.
bool copyFileInPlace(const QString& from, const QString& to) {
    if (!QDir().mkpath(QFileInfo(to).absolutePath())) return false;
    const QString part = to + QStringLiteral(".part");
    QFile::remove(part);
    if (!QFile::copy(from, part)) return false;
    // Installed files are read-only; the user's copies are theirs to write.
    QFile::setPermissions(part, QFile::permissions(part) | QFileDevice::WriteOwner | QFileDevice::ReadOwner);
    QFile::remove(to);
    return QFile::rename(part, to);
}

// Copies the files the user's folder lacks, and, when a different version
// was installed since, every program file again except the user's settings.
bool bringUpToDate(const QString& installed, const QString& user, const QString& stamp) {
    const bool refresh = readStamp(user + QLatin1Char('/') + QLatin1String(kCopiedMark)) != stamp;
    for (const QString& relative : programFiles(installed)) {
        const QString target = user + QLatin1Char('/') + relative;
        const bool missing = !QFileInfo::exists(target);
        const bool replace = refresh && relative != kUserSettings;
        if ((missing || replace) && !copyFileInPlace(installed + QLatin1Char('/') + relative, target)) return false;
    }
    if (!QDir().mkpath(user + QLatin1Char('/') + kTemp)) return false;
    return !refresh || writeStamp(user + QLatin1Char('/') + QLatin1String(kCopiedMark), stamp);
}

// First start: the whole folder is made under a temporary name and renamed
// into place, so a start that is cut short leaves nothing half-filled.
bool makeUserFolder(const QString& installed, const QString& user, const QString& stamp) {
    const QString part = user + QStringLiteral(".part-%1").arg(QCoreApplication::applicationPid());
    QDir(part).removeRecursively();
    if (!bringUpToDate(installed, part, stamp)) {
        QDir(part).removeRecursively();
        return false;
    }
    if (QDir().rename(part, user)) return true;
    // Another start made it meanwhile; theirs is as good as ours.
    QDir(part).removeRecursively();
    return QFileInfo(user).isDir();
}

QString failure(const QString& user) {
    return QStringLiteral("作業用フォルダ「%1」を準備できませんでした。"
                          "フォルダの書き込み権限と空き容量を確認してください。")
        .arg(QDir::toNativeSeparators(user));
}

}  // namespace

bool isInstalledCopy(const QString& programFolder) {
    const QFileInfo folder(programFolder);
    return QFileInfo::exists(programFolder + QLatin1Char('/') + QLatin1String(kInstalledMark)) ||
           !folder.isWritable();
}

ProgramFolderChoice chooseProgramFolder(const QString& programFolder, const QString& userDataHome) {
    const QString installed = QDir::cleanPath(programFolder);
    if (!isInstalledCopy(installed)) return {installed, QString()};
    if (userDataHome.isEmpty())
        return {QString(), QStringLiteral("利用者ごとの作業用フォルダの場所がわかりません。"
                                          "環境変数 HOME を確認してください。")};

    const QString user = QDir::cleanPath(userDataHome + QStringLiteral("/kelvary"));
    const QString stamp = readStamp(installed + QLatin1Char('/') + QLatin1String(kInstalledMark));
    if (!QDir().mkpath(QDir::cleanPath(userDataHome))) return {QString(), failure(user)};
    const bool ready = QFileInfo(user).isDir() ? bringUpToDate(installed, user, stamp)
                                               : makeUserFolder(installed, user, stamp);
    if (!ready) return {QString(), failure(user)};
    return {user, QString()};
}

}  // namespace kelvary
