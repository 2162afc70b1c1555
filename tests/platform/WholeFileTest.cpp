// Whole files: an earlier file is replaced in one step and nothing is left
// beside it; a file that cannot be written leaves the folder as it was and
// says why in the system's words.
#include "platform/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

TEST(WholeFile, ReplacesAnEarlierFileAndLeavesNothingBesideIt) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("ZaimuData0_1.bmp.Txt"));
    EXPECT_EQ(writeWholeFile(path, QByteArray("an earlier, longer payload\r\n")), QString());
    EXPECT_EQ(writeWholeFile(path, QByteArray("\"[ZaimuData0_1]\"\r\n")), QString());
    EXPECT_EQ(contentsOf(path), QByteArray("\"[ZaimuData0_1]\"\r\n"));
    EXPECT_EQ(writeWholeFile(dir.filePath(QStringLiteral("empty")), QByteArray()), QString());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden),
              (QStringList{QStringLiteral("empty"), QStringLiteral("ZaimuData0_1.bmp.Txt")}));
}

TEST(WholeFile, AFileThatCannotBeWrittenLeavesTheFolderAsItWas) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // A folder where the file should be: the part file is written, the
    // rename over a folder fails, and the part file goes again.
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("taken.bmp")));
    EXPECT_EQ(writeWholeFile(dir.filePath(QStringLiteral("taken.bmp")), QByteArray("BM")),
              QString::fromLocal8Bit(std::strerror(EISDIR)));
    // No folder at all.
    EXPECT_EQ(writeWholeFile(dir.filePath(QStringLiteral("Temp/s.bmp")), QByteArray("BM")),
              QString::fromLocal8Bit(std::strerror(ENOENT)));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("taken.bmp")});
    EXPECT_TRUE(QDir(dir.filePath(QStringLiteral("taken.bmp"))).isEmpty());
}

}  // namespace
}  // namespace kelvary
