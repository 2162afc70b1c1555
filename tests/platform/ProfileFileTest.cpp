// Settings-file reads and writes checked against file bytes written out by
// hand: CP932 values, the lines a write must leave alone, and the trimming,
// quoting and buffer rules of the Windows profile functions.
#include "platform/ProfileFile.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

#include <ostream>


// Readable failure output: file bytes with the non-ASCII ones as hex escapes.
static void PrintTo(const QByteArray& bytes, std::ostream* os) {
    *os << '"';
    for (const char c : bytes) {
        const auto u = static_cast<unsigned char>(c);
        if (u >= 0x20 && u < 0x7F) *os << c;
        else *os << "\\x" << QByteArray(1, c).toHex().toUpper().constData();
    }
    *os << '"';
}

namespace kelvary {
namespace {

using test::hexBytes;

class ProfileFileTest : public ::testing::Test {
protected:
    QString path(const QString& name = QStringLiteral("UserData.ini")) const { return dir_.filePath(name); }

    void put(const QByteArray& bytes) const { test::writeFile(path(), bytes); }

    QByteArray bytes() const {
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly)) return "<missing>";
        return file.readAll();
    }

    QString read(const QString& section, const QString& key, const QString& defaultValue = {}) const {
        return readProfileString(path(), section, key, defaultValue);
    }

    void write(const QString& section, const QString& key, const QString& value) const {
        writeProfileString(path(), section, key, value);
    }

private:
    QTemporaryDir dir_;
};

// 山田太郎 in CP932.
const char* const kYamadaTaro = "8E 52 93 63 91 BE 98 59";

// The cases of tests/data/platform/ProfileFile.tsv, each in a fresh folder.
TEST(ProfileFile, EveryCaseOfTheTable) {
    std::unique_ptr<QTemporaryDir> dir;
    QString file, name;
    int cases = 0;
    for (const QStringList& row : test::dataTable(QStringLiteral("platform/ProfileFile.tsv"))) {
        SCOPED_TRACE("ProfileFile.tsv line " + row[0].toStdString() + ", case " + name.toStdString());
        if (row[1] == QLatin1String("case")) {
            dir = std::make_unique<QTemporaryDir>();
            file = dir->filePath(QStringLiteral("UserData.ini"));
            name = row.value(2);
            ++cases;
        } else if (row[1] == QLatin1String("put")) {
            test::writeFile(file, row.value(2).toLatin1());
        } else if (row[1] == QLatin1String("write")) {
            writeProfileString(file, row.value(2), row.value(3), row.value(4));
        } else if (row[1] == QLatin1String("read")) {
            ASSERT_EQ(row.size(), 6);
            EXPECT_EQ(readProfileString(file, row[2], row[3], row[4]), row[5]);
        } else if (row[1] == QLatin1String("bytes")) {
            EXPECT_EQ(test::readFile(file), row.value(2).toLatin1());
        } else {
            ADD_FAILURE() << "unknown step " << row[1].toStdString();
        }
    }
    EXPECT_EQ(cases, 14);
}

TEST_F(ProfileFileTest, ReadingAMissingFileGivesTheDefaultAndMakesNoFile) {
    EXPECT_EQ(read("UserInfo", "UserName"), "");
    EXPECT_FALSE(QFile::exists(path())) << "reading must not create the file";
}

TEST_F(ProfileFileTest, LongValuesAreCutTo1023Bytes) {
    put("[S]\r\nAscii=" + QByteArray(2000, 'a') + "\r\n" +
        "Kanji=" + hexBytes("8A BF").repeated(600) + "\r\n" +  // 漢 x 600
        "OddFits=a" + hexBytes("8A BF").repeated(600) + "\r\n" +
        "EvenSplit=ab" + hexBytes("8A BF").repeated(600) + "\r\n");

    EXPECT_EQ(read("S", "Ascii"), QString(1023, u'a'));
    // 511 characters take 1022 bytes; the 512th would need 1024.
    EXPECT_EQ(read("S", "Kanji"), QString(511, u'漢'));
    EXPECT_EQ(read("S", "OddFits"), u'a' + QString(511, u'漢'));
    EXPECT_EQ(read("S", "EvenSplit"), "ab" + QString(510, u'漢'));
    EXPECT_EQ(read("S", "missing", QString(1500, u'z')), QString(1023, u'z'));
}

TEST_F(ProfileFileTest, WriteIntoAMissingFolderFailsWithPathNotFound) {
    const QString file = path("no such folder/UserData.ini");
    const test::Raised r = test::raised([&] { writeProfileString(file, "S", "k", "v"); });
    EXPECT_EQ(r.number, vberr::PathNotFound);
    EXPECT_TRUE(r.description.contains(QDir::toNativeSeparators(file))) << r.description.toStdString();
}

// A batch leaves the file alone until it is committed, reads see its
// entries meanwhile, and the bytes it saves are those the single writes
// would have left.
TEST_F(ProfileFileTest, BatchedWritesSaveOnceWhatTheSingleWritesWouldHaveSaved) {
    const QByteArray before = "[System]\r\nShowErrMsg=-1\r\n[UserInfo]\r\nUserName=old\r\n";
    put(before);
    {
        ProfileWriteBatch batch(path());
        write("UserInfo", "UserName", QStringLiteral("山田太郎"));
        write("UserInfo", "UserTel", "0312345678");
        write("System", "ShowErrMsg", "-1");  // as it stands: nothing to save for it
        EXPECT_EQ(bytes(), before);
        EXPECT_EQ(read("UserInfo", "UserName"), QStringLiteral("山田太郎"));
        // Another file is written at once.
        writeProfileString(path("Other.ini"), "S", "k", "v");
        EXPECT_EQ(readProfileString(path("Other.ini"), "S", "k"), "v");
        batch.commit();
        EXPECT_EQ(bytes(), "[System]\r\nShowErrMsg=-1\r\n[UserInfo]\r\nUserName=" + hexBytes(kYamadaTaro) +
                               "\r\nUserTel=0312345678\r\n");
        write("UserInfo", "UserID", "7");
    }
    // Left uncommitted when the batch went: saved then.
    EXPECT_TRUE(bytes().endsWith("UserTel=0312345678\r\nUserID=7\r\n")) << bytes().toStdString();
    // The checks of a single write still come with each write of a batch.
    ProfileWriteBatch missing(path("no such folder/UserData.ini"));
    EXPECT_THROW(writeProfileString(path("no such folder/UserData.ini"), "S", "k", "v"), VbError);
}

}  // namespace
}  // namespace kelvary
