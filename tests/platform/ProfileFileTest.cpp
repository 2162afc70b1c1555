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

TEST_F(ProfileFileTest, JapaneseValueIsWrittenAsCp932AndOtherLinesKeepTheirBytes) {
    const QByteArray before =
        "; installation settings\r\n[System]\r\nShowErrMsg=-1\r\n\r\n[UserInfo]\r\nUserID=12\r\n";
    put(before);

    write("UserInfo", "UserName", QStringLiteral("山田太郎"));

    EXPECT_EQ(bytes(), before + "UserName=" + hexBytes(kYamadaTaro) + "\r\n");
    EXPECT_EQ(read("UserInfo", "UserName"), QStringLiteral("山田太郎"));
    EXPECT_EQ(read("System", "ShowErrMsg"), "-1");

    // Characters where plain Shift_JIS differs from the Windows code page.
    write("UserInfo", "UserName", QStringLiteral("～－∥"));
    EXPECT_EQ(bytes(), before + "UserName=" + hexBytes("81 60 81 7C 81 61") + "\r\n");
    EXPECT_EQ(read("UserInfo", "UserName"), QStringLiteral("～－∥"));
}

TEST_F(ProfileFileTest, ReplacingAValueChangesOnlyItsLineAndKeepsLineEndings) {
    put("[UserInfo]\nUserName=old\nUserTel=0312345678\nno equals sign here\n\n[Other]\r\nUserTel=9\r\n");

    write("UserInfo", "UserName", QStringLiteral("山田"));
    write("UserInfo", "UserTel", "1");

    EXPECT_EQ(bytes(), "[UserInfo]\nUserName=" + hexBytes("8E 52 93 63") +
                           "\nUserTel=1\nno equals sign here\n\n[Other]\r\nUserTel=9\r\n");
    EXPECT_EQ(read("Other", "UserTel"), "9");
}

TEST_F(ProfileFileTest, NewKeyGoesAfterTheLastLineOfItsSectionBeforeSeparatingBlankLines) {
    put("[System]\r\nShowErrMsg=0\r\n; keep me\r\n\r\n\r\n[UserInfo]\r\nUserID=12\r\n");

    write("System", "Extra", "1");

    EXPECT_EQ(bytes(),
              "[System]\r\nShowErrMsg=0\r\n; keep me\r\nExtra=1\r\n\r\n\r\n[UserInfo]\r\nUserID=12\r\n");
}

TEST_F(ProfileFileTest, AnUnterminatedLastLineIsEndedBeforeAnythingIsAdded) {
    put("[A]\r\nk=1");
    write("B", "n", "2");
    EXPECT_EQ(bytes(), "[A]\r\nk=1\r\n[B]\r\nn=2\r\n");

    put("[A]\r\nk=1");
    write("A", "m", "3");
    EXPECT_EQ(bytes(), "[A]\r\nk=1\r\nm=3\r\n");

    put("[A]");
    write("A", "k", "1");
    EXPECT_EQ(bytes(), "[A]\r\nk=1\r\n");

    put("[A]\r\nk=old");
    write("A", "k", "new");
    EXPECT_EQ(bytes(), "[A]\r\nk=new");

    put("[A]\r\n[B]\r\nx=1\r\n");
    write("A", "k", "1");
    EXPECT_EQ(bytes(), "[A]\r\nk=1\r\n[B]\r\nx=1\r\n");
}

TEST_F(ProfileFileTest, NamesMatchRegardlessOfAsciiCaseAndSurroundingBlanks) {
    put("[userinfo]\r\n   USERNAME   =x\r\n");
    EXPECT_EQ(read("UserInfo", "UserName"), "x");
    EXPECT_EQ(read(" UserInfo ", "\tusername "), "x");

    write("USERINFO", "username", "y");
    EXPECT_EQ(bytes(), "[userinfo]\r\nUSERNAME=y\r\n");
}

TEST_F(ProfileFileTest, SectionNameWhoseTrailBytesLookLikeBrackets) {
    // ゾーン = 83 5D 81 5B 83 93: the trail bytes are "]" and "[".
    put("[" + hexBytes("83 5D 81 5B 83 93") + "]\r\nKey=1\r\n");
    EXPECT_EQ(read(QStringLiteral("ゾーン"), "Key"), "1");

    write(QStringLiteral("ゾーン"), "Key", "2");
    EXPECT_EQ(bytes(), "[" + hexBytes("83 5D 81 5B 83 93") + "]\r\nKey=2\r\n");
}

TEST_F(ProfileFileTest, MissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(read("UserInfo", "UserName"), "");
    EXPECT_FALSE(QFile::exists(path())) << "reading must not create the file";

    put("Orphan=before any section\r\n[UserInfo]\r\nUserName=x\r\nBare\r\n[System]\r\nShowErrMsg=-1\r\n");
    EXPECT_EQ(read("UserInfo", "ShowErrMsg"), "") << "a key of the next section";
    EXPECT_EQ(read("UserInfo", "Orphan"), "");
    EXPECT_EQ(read("UserInfo", "Bare", "d"), "d") << "a line without = is no key";
}

TEST_F(ProfileFileTest, ValuesAreTrimmedAndSurroundingQuotesRemoved) {
    put("[S]\r\n"
        "Plain=  Yamada Taro \t \r\n"
        "Double=\"  padded  \"\r\n"
        "Open=\"abc\r\n"
        "Mixed=\"a'\r\n"
        "Equals=a=b\r\n");
    EXPECT_EQ(read("S", "Plain"), "Yamada Taro");
    EXPECT_EQ(read("S", "Double"), "  padded") << "trailing blanks inside the quotes are cut too";
    EXPECT_EQ(read("S", "Open"), "\"abc");
    EXPECT_EQ(read("S", "Mixed"), "\"a'");
    EXPECT_EQ(read("S", "Equals"), "a=b");
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
    try {
        writeProfileString(file, "S", "k", "v");
        FAIL() << "no error";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), vberr::PathNotFound);
        EXPECT_TRUE(e.description().contains(QDir::toNativeSeparators(file))) << e.description().toStdString();
    }
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
