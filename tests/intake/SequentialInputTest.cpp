// The reader of VB's sequential text files, fed with byte sequences written
// out by hand: CP932 Japanese (including trail bytes that look like ASCII
// signs), quoted texts, the end of the file, and the files it must refuse.
#include "platform/SequentialInput.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::hexBytes;

class SequentialInputTest : public ::testing::Test {
protected:
    QString write(const QByteArray& bytes) {
        const QString path = dir_.filePath(QStringLiteral("app%1.dat").arg(++count_));
        test::writeFile(path, bytes);
        return path;
    }

    QTemporaryDir dir_;
    int count_ = 0;
};

TEST_F(SequentialInputTest, QuotedTextKeepsCommasAndLineBreaks) {
    SequentialInput in(write("\"a,b\r\nc\",\"\"\r\n"));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("a,b\r\nc")));
    const Variant empty = in.input();
    EXPECT_EQ(empty.type(), VarType::String);  // "" is an empty text, not Empty
    EXPECT_TRUE(in.eof());
}

TEST_F(SequentialInputTest, ReadingPastTheEndRaises62) {
    SequentialInput in(write("\"[End]\""));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("[End]")));
    EXPECT_TRUE(in.eof());
    EXPECT_EQ(test::raised([&] { in.input(); }).number, 62);
    EXPECT_EQ(test::raised([&] { in.lineInput(); }).number, 62);

    // A text whose closing quote never comes meets the end of the file too.
    SequentialInput cut(write("\"ApplierColumnName\",\"cut off here\r\n"));
    EXPECT_EQ(cut.input(), Variant(QStringLiteral("ApplierColumnName")));
    EXPECT_EQ(test::raised([&] { cut.input(); }).number, 62);
}

TEST_F(SequentialInputTest, Cp932TextIncludingTrailBytesThatLookLikeSigns) {
    // ソフト,表 with the trail byte 0x5C (a backslash in ASCII) in ソ and 表,
    // then the wave dash 81 60, which CP932 maps to U+FF5E (Shift_JIS: U+301C).
    SequentialInput in(write(hexBytes("22 83 5c 83 74 83 67 2c 95 5c 22 2c 81 60 0d 0a")));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("ソフト,表")));
    EXPECT_EQ(in.input(), Variant(QString(QChar(0xFF5E))));
}

// The files of tests/data/intake/RefusedFiles.tsv.
TEST_F(SequentialInputTest, EmptyBinaryCutAndForeignFilesAreRefused) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("intake/RefusedFiles.tsv"));
    ASSERT_EQ(rows.size(), 6);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        const QString file = write(hexBytes(row[1].toLatin1().constData()));
        const test::Raised e = test::raised([&] { SequentialInput input(file); });
        EXPECT_EQ(e.number, row[2].toLong()) << "line " << row[0].toStdString();
        EXPECT_TRUE(e.description.contains(row[3])) << e.description.toStdString();
    }
}

}  // namespace
}  // namespace kelvary
