// Running the built program without one right on one file or folder of a
// scratch program folder: the folder it may not write, the file it may not
// read. Permission bits do not stop root, so under root the program runs as
// the unprivileged user "nobody" with the scratch folder given to that user,
// except the one path under test; otherwise plain permission bits do it.
// And running it with one folder on a disk that fills up: a small memory
// file system mounted there in a namespace of its own, so no privilege is
// needed and nothing of it outlives the run.
#pragma once

#include "support/TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelvary::test {

enum class Right { Write, Read };

namespace restricted_detail {

constexpr uid_t kNobody = 65534;
constexpr int kTimeoutMs = 60000;

inline bool runningAsRoot() { return ::geteuid() == 0; }

inline QString setpriv() { return QStandardPaths::findExecutable(QStringLiteral("setpriv")); }

inline void changeOwner(const QString& path, uid_t owner) {
    const QByteArray name = QFile::encodeName(path);
    EXPECT_EQ(::lchown(name.constData(), owner, owner), 0) << name.constData();
}

// Every file and folder of home, home itself included.
inline QStringList everythingIn(const QString& home) {
    QStringList paths{home};
    QDirIterator it(home, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) paths << it.next();
    return paths;
}

// The permission bits that take the right away from everyone but root.
inline mode_t withoutRight(mode_t mode, Right right) {
    return right == Right::Write ? (mode & ~mode_t(0222)) : (mode & ~mode_t(0444));
}

inline ProcessResult run(const QString& program, const QStringList& arguments) {
    return runProgram(program, arguments, kTimeoutMs);
}

}  // namespace restricted_detail

// Why the program cannot be run restricted on this machine; empty when it can.
inline QString restrictedRunUnavailable() {
    using namespace restricted_detail;
    if (!runningAsRoot()) return {};
    if (setpriv().isEmpty())
        return QStringLiteral("running as root without setpriv (util-linux) to drop to an unprivileged user");
    // The unprivileged user must reach the built program through its folders.
    const ProcessResult probe =
        run(setpriv(), {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups"),
                        appDir() + QStringLiteral("/kelvary"), QStringLiteral("--version")});
    if (probe.exitCode != 0)
        return QStringLiteral("the user nobody cannot run the built program: ") + probe.standardError;
    return {};
}

// Runs kelvary with `arguments` while it lacks `right` on `path`, which lies
// inside `home`. Afterwards the test owns every file of `home` again, with its
// rights restored, so it can compare and remove them.
inline ProcessResult runKelvaryWithout(Right right, const QString& path, const QString& home,
                                       const QStringList& arguments) {
    using namespace restricted_detail;
    const QByteArray name = QFile::encodeName(path);
    struct stat before {};
    EXPECT_EQ(::stat(name.constData(), &before), 0) << name.constData();
    const QString kelvary = appDir() + QStringLiteral("/kelvary");
    ProcessResult result;
    if (runningAsRoot()) {
        // The run's user owns the scratch folder; root keeps the one path,
        // and the bits then deny the right to everyone else.
        for (const QString& entry : everythingIn(home)) changeOwner(entry, kNobody);
        changeOwner(path, 0);
        ::chmod(name.constData(), withoutRight(before.st_mode, right));
        result = run(setpriv(), QStringList{QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                            QStringLiteral("--clear-groups"), kelvary} +
                                    arguments);
        for (const QString& entry : everythingIn(home)) changeOwner(entry, 0);
    } else {
        ::chmod(name.constData(), withoutRight(before.st_mode, right));
        result = run(kelvary, arguments);
    }
    ::chmod(name.constData(), before.st_mode & 07777);
    return result;
}

// Why a folder cannot be put on a small disk of its own here; empty when it can.
inline QString fullDiskRunUnavailable() {
    if (QStandardPaths::findExecutable(QStringLiteral("unshare")).isEmpty())
        return QStringLiteral("unshare (util-linux) is missing");
    const ProcessResult probe = restricted_detail::run(QStringLiteral("unshare"),
                                                       {QStringLiteral("-rm"), QStringLiteral("true")});
    if (probe.exitCode != 0) return QStringLiteral("user namespaces are not allowed: ") + probe.standardError;
    return {};
}

struct FullDiskRun {
    ProcessResult process;
    QStringList filesLeft;  // in the folder when the run ended
    QByteArray fileLeft;    // the bytes of `name` then
};

// Runs kelvary with `folder` on a disk of `bytes` bytes that holds only the
// file `name` with the bytes `earlier`. The disk goes with the run; what was
// on it at its end comes back in the result.
inline FullDiskRun runKelvaryOnFullDisk(const QString& folder, int bytes, const QString& name,
                                        const QByteArray& earlier, const QStringList& arguments) {
    using namespace restricted_detail;
    // The listing and the file's bytes follow the program's own output on
    // standard output, after a line of their own.
    static const QString script = QStringLiteral(
        "dir=$1; name=$2; size=$3; earlier=$4; shift 4\n"
        "mount -t tmpfs -o size=$size kelvary-full \"$dir\" || exit 97\n"
        "printf %s \"$earlier\" > \"$dir/$name\"\n"
        "\"$@\"; status=$?\n"
        "echo '--- left on the disk'; ls -A \"$dir\"; echo '--- bytes'; cat \"$dir/$name\"\n"
        "exit $status\n");
    FullDiskRun result;
    result.process = run(QStringLiteral("unshare"),
                         QStringList{QStringLiteral("-rm"), QStringLiteral("sh"), QStringLiteral("-c"), script,
                                     QStringLiteral("sh"), folder, name, QString::number(bytes),
                                     QString::fromLatin1(earlier), appDir() + QStringLiteral("/kelvary")} +
                             arguments);
    const QString out = result.process.standardOutput;
    const qsizetype listing = out.indexOf(QStringLiteral("--- left on the disk\n"));
    const qsizetype content = out.indexOf(QStringLiteral("--- bytes\n"));
    if (listing >= 0 && content > listing) {
        result.filesLeft = out.mid(listing + 21, content - listing - 21).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        result.fileLeft = out.mid(content + 10).toLatin1();
    }
    return result;
}

}  // namespace kelvary::test
