// Checks of the files named on the command line. They run before any window
// or database is opened, so a refused run has touched nothing.
#include "startup/RunFiles.h"

#include "intake/ApplicationFile.h"
#include "platform/StrConv.h"
#include "startup/ProgramFolder.h"
#include "platform/SequentialInput.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <climits>

#include <sys/stat.h>

namespace kelvary {
namespace {

QString quoted(const QString& path) { return QStringLiteral("「") + QDir::toNativeSeparators(path) + QStringLiteral("」"); }

// The files of the program folder by name: the run's own, whether they
// exist yet or not.
const char* const kProgramFiles[] = {"kelvary",          "SystemData.mdb",   "Ledra_dummy.mdb",
                                     "UserData.ini",     "DbtData0607H.txt", "DbtData0607K.txt"};
const char* const kProgramFolders[] = {"Temp", "PrintFile"};

struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    bool exists = false;
};

Identity identityOf(const QString& path) {
    struct stat st {};
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &st) != 0) return {};
    return {st.st_dev, st.st_ino, true};
}

bool sameFile(const QString& a, const QString& b) {
    const Identity x = identityOf(a), y = identityOf(b);
    if (x.exists && y.exists) return x.device == y.device && x.inode == y.inode;
    return !a.isEmpty() && !b.isEmpty() && QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

// The folder a path lies in, with its symbolic links resolved; the path's
// own name is kept, so a file that does not exist yet has a place too.
QString placeOf(const QString& path) {
    const QFileInfo info(path);
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    if (folder.isEmpty()) return QDir::cleanPath(info.absoluteFilePath());
    return folder + QLatin1Char('/') + info.fileName();
}

// The name too long for the file system: one part longer than NAME_MAX
// bytes, or the whole longer than PATH_MAX.
bool nameTooLong(const QString& path) {
    const QByteArray bytes = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    if (bytes.size() >= PATH_MAX) return true;
    for (const QByteArray& part : bytes.split('/'))
        if (part.size() > NAME_MAX) return true;
    return false;
}

// Where the target lies in the program folder, relative to it; empty when
// outside. Asked both as written (Temp may be a link to elsewhere) and with
// links resolved (the target or a folder on its way may be a link into it).
QString programFolderPart(const QString& target, const QString& programFolder) {
    const auto relative = [](const QString& root, const QString& place) {
        return !root.isEmpty() && place.startsWith(root + QLatin1Char('/')) ? place.mid(root.size() + 1) : QString();
    };
    const QString written = relative(QDir::cleanPath(QFileInfo(programFolder).absoluteFilePath()),
                                     QDir::cleanPath(QFileInfo(target).absoluteFilePath()));
    if (!written.isEmpty()) return written;
    return relative(QFileInfo(programFolder).canonicalFilePath(), placeOf(target));
}

QString refused(const QString& target, const QString& what) {
    return QStringLiteral("PDFファイルの出力先") + quoted(target) + QStringLiteral("は") + what +
           QStringLiteral("です。上書きすると元の内容が失われるため、処理を開始しません。別のファイル名を指定してください。");
}

}  // namespace

QString applicationFileRefusal(const QString& applicationFile) {
    if (applicationFile.isEmpty()) return QStringLiteral("申請データファイルが指定されていません。");
    const FileKind kind = fileKindOf(applicationFile);
    // A missing or unreadable file is the run's own first report, as always.
    if (kind == FileKind::Missing) return {};
    const QString named = QStringLiteral("申請データファイル") + quoted(applicationFile);
    if (kind != FileKind::Regular)
        return named + QStringLiteral("は") + fileKindName(kind) + QStringLiteral("です。申請データファイルを指定してください。");
    if (QFileInfo(applicationFile).size() > kLargestTextFile)
        return named + QStringLiteral("は大きすぎます (") + QString::number(QFileInfo(applicationFile).size()) +
               QStringLiteral(" バイト)。申請データファイルとして読み込めるのは ") +
               QString::number(kLargestTextFile / (1024 * 1024)) + QStringLiteral(" MB までです。");
    QFile file(applicationFile);
    if (!file.open(QIODevice::ReadOnly)) return {};
    if (!intake::hasApplicationSections(file.read(kLargestTextFile)))
        return named + QStringLiteral("は申請データファイルではありません。"
                                      "([BasicInfo] と [DocData] のどちらの見出しもありません)");
    return {};
}

QString outputTargetRefusal(const QString& target, const RunFiles& own) {
    if (target.isEmpty()) return {};
    if (nameTooLong(target))
        return QStringLiteral("ファイル名が長すぎます。PDFファイルの出力先") + quoted(target) +
               QStringLiteral("には、もっと短い名前を指定してください。");
    const FileKind kind = fileKindOf(target);
    if (kind != FileKind::Missing && kind != FileKind::Regular) return refused(target, fileKindName(kind));
    if (sameFile(target, own.applicationFile)) return refused(target, QStringLiteral("申請データファイル"));
    if (sameFile(target, own.siblingDatabase)) return refused(target, QStringLiteral("財務諸表データ (Ledra.mdb)"));

    const QString part = programFolderPart(target, own.programFolder);
    if (part.isEmpty()) return {};
    for (const char* folder : kProgramFolders)
        if (part.startsWith(QLatin1String(folder) + QLatin1Char('/')))
            return refused(target, QStringLiteral("プログラムフォルダーの ") + QLatin1String(folder) +
                                       QStringLiteral(" フォルダーの中"));
    for (const char* name : kProgramFiles)
        if (part == QLatin1String(name))
            return refused(target, QStringLiteral("プログラムのファイル ") + QLatin1String(name));
    return {};
}

QString namedFolderRefusal(const QString& folder) {
    const QString named = QStringLiteral("プログラムフォルダー「") + QDir::toNativeSeparators(folder) + QStringLiteral("」");
    const QFileInfo info(folder);
    if (!info.exists()) return named + QStringLiteral("が見つかりません。");
    if (!info.isDir()) return named + QStringLiteral("はフォルダーではありません。");
    if (!info.isWritable() && !QFileInfo::exists(folder + QLatin1Char('/') + QLatin1String(kInstalledMark)))
        return named + QStringLiteral("に書き込めません。フォルダーに書き込む権限があるか確認してください。");
    return {};
}

CommandFields parentTextFields(const QString& parentText) {
    const QString text = vbStrConv(parentText.trimmed(), vbLowerCase + vbNarrow);
    if (!text.contains(QLatin1Char('/'))) return {text, {}, {}, {}};
    const QStringList parts = text.split(QLatin1Char('/'));
    return {parts.value(1), parts.value(2), {}, {}};
}

QString runFilesRefusal(const CommandFields& fields, const QString& printTo, const QString& programFolder) {
    const QString application = applicationFileRefusal(fields.applicationFile);
    if (!application.isEmpty()) return application;
    const RunFiles own{programFolder, fields.applicationFile, intake::siblingDatabaseOf(fields.applicationFile)};
    for (const QString& target : {fields.pdfFile, printTo}) {
        const QString refusal = outputTargetRefusal(target, own);
        if (!refusal.isEmpty()) return refusal;
    }
    return {};
}

}  // namespace kelvary
