// Where a run works: a user's own copy works in its folder; an installed copy
// makes each user a folder of their own, fills it at first start, refreshes it
// when another version is installed and never writes to the installed files.
#include "startup/ProgramFolder.h"
#include "support/TestSupport.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace kelvary;
using kelvary::test::readFile;
using kelvary::test::writeFile;

namespace {

// Every file under a folder with a digest of its bytes, to see that nothing
// in it changed.
QMap<QString, QByteArray> fingerprint(const QString& folder) {
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(QDir(folder).relativeFilePath(path),
                     QCryptographicHash::hash(readFile(path), QCryptographicHash::Sha256));
    }
    return files;
}

// An installed program folder: the built data, the program, and the mark
// with the version that was installed.
class Installed : public ::testing::Test {
protected:
    void SetUp() override {
        installed = root.filePath(QStringLiteral("opt/kelvary"));
        dataHome = root.filePath(QStringLiteral("home/.local/share"));
        user = dataHome + QStringLiteral("/kelvary");
        ASSERT_TRUE(QDir().mkpath(installed));
        QDirIterator it(test::templateDir(), QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString from = it.next();
            const QString to = installed + QLatin1Char('/') + QDir(test::templateDir()).relativeFilePath(from);
            QDir().mkpath(QFileInfo(to).path());
            ASSERT_TRUE(QFile::copy(from, to)) << to.toStdString();
        }
        installProgram("#!/bin/sh\n");
        install("1.0.0");
    }
    void installProgram(const QByteArray& bytes) {
        const QString program = installed + QStringLiteral("/kelvary");
        writeFile(program, bytes);
        QFile::setPermissions(program, QFile::permissions(program) | QFileDevice::ExeOwner);
    }
    void install(const char* version) { writeFile(installed + QLatin1Char('/') + kInstalledMark, QByteArray(version) + "\n"); }
    ProgramFolderChoice choose() const { return chooseProgramFolder(installed, dataHome); }

    QTemporaryDir root;
    QString installed, dataHome, user;
};

}  // namespace

TEST(ProgramFolderChoice, AUsersOwnCopyWorksInItsFolder) {
    QTemporaryDir own;
    writeFile(own.filePath(QStringLiteral("UserData.ini")), "[System]\r\n");
    QTemporaryDir data;
    const ProgramFolderChoice choice = chooseProgramFolder(own.path(), data.path());
    EXPECT_EQ(choice.folder, QDir::cleanPath(own.path()));
    EXPECT_TRUE(choice.error.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(data.filePath(QStringLiteral("kelvary"))));
}

TEST_F(Installed, FirstStartFillsTheUsersFolderAndLeavesTheInstalledOneAlone) {
    const auto before = fingerprint(installed);
    const ProgramFolderChoice choice = choose();
    ASSERT_TRUE(choice.error.isEmpty()) << choice.error.toStdString();
    EXPECT_EQ(choice.folder, user);

    const auto copied = fingerprint(user);
    for (const char* name : {"SystemData.mdb", "Ledra_dummy.mdb", "UserData.ini", "DbtData0607H.txt",
                             "DbtData0607K.txt", "PrintFile/FSQRCode.w30", "sample/app.dat"})
        EXPECT_EQ(copied.value(QString::fromLatin1(name)), before.value(QString::fromLatin1(name))) << name;
    EXPECT_FALSE(copied.contains(QStringLiteral("kelvary")));
    EXPECT_FALSE(copied.contains(QString::fromLatin1(kInstalledMark)));
    EXPECT_EQ(readFile(user + QLatin1Char('/') + kCopiedMark), QByteArray("1.0.0\n"));
    EXPECT_TRUE(QFileInfo(user + QStringLiteral("/Temp")).isDir());
    // Nothing half-made is left beside it.
    EXPECT_EQ(QDir(dataHome).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"kelvary"});
    EXPECT_EQ(fingerprint(installed), before);
}

TEST_F(Installed, TheUsersSettingsOutliveANewVersionAndTheProgramFilesAreRenewed) {
    ASSERT_TRUE(choose().error.isEmpty());
    writeFile(user + QStringLiteral("/UserData.ini"), "[User]\r\nName=mine\r\n");
    writeFile(user + QStringLiteral("/PrintFile/FSQRCode.w30"), "stale layout");
    QFile::remove(user + QStringLiteral("/DbtData0607K.txt"));

    // The same version again: only what is missing comes back.
    ASSERT_TRUE(choose().error.isEmpty());
    EXPECT_EQ(readFile(user + QStringLiteral("/PrintFile/FSQRCode.w30")), QByteArray("stale layout"));
    EXPECT_EQ(readFile(user + QStringLiteral("/DbtData0607K.txt")), readFile(installed + QStringLiteral("/DbtData0607K.txt")));

    // Another version: the program's files are renewed, the settings are kept.
    install("1.1.0");
    ASSERT_TRUE(choose().error.isEmpty());
    EXPECT_EQ(readFile(user + QStringLiteral("/PrintFile/FSQRCode.w30")),
              readFile(installed + QStringLiteral("/PrintFile/FSQRCode.w30")));
    EXPECT_EQ(readFile(user + QStringLiteral("/UserData.ini")), QByteArray("[User]\r\nName=mine\r\n"));
    EXPECT_EQ(readFile(user + QLatin1Char('/') + kCopiedMark), QByteArray("1.1.0\n"));
}

TEST_F(Installed, AFolderThatCannotBeMadeIsExplainedInJapanese) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(dataHome).path()));
    writeFile(dataHome, "a file where the data folder should be");
    const ProgramFolderChoice choice = choose();
    EXPECT_TRUE(choice.folder.isEmpty());
    EXPECT_TRUE(choice.error.startsWith(QStringLiteral("作業用フォルダ「"))) << choice.error.toStdString();
    EXPECT_TRUE(choice.error.contains(QStringLiteral("書き込み権限")));
}
