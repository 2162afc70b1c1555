// The reader of VB's sequential text files, fed with byte sequences written
// out by hand: CP932 Japanese (including trail bytes that look like ASCII
// signs), every field form Write # produces, and the files it must refuse.
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
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    // The VbError raised when the file is opened, or number 0 when none is.
    static VbError openError(const QString& path) {
        try {
            SequentialInput input(path);
        } catch (const VbError& e) {
            return e;
        }
        return VbError(0, QString());
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

TEST_F(SequentialInputTest, BlanksAroundFieldsAndTextAfterClosingQuote) {
    SequentialInput in(write("   \"x\"  ,\t 12  ,abc def  \r\n\"q\"junk,last\r\n"));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("x")));
    EXPECT_EQ(in.input(), Variant::fromLong(12));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("abc def")));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("q")));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("last")));
    EXPECT_TRUE(in.eof());
}

TEST_F(SequentialInputTest, BareNumbersBecomeNumbers) {
    SequentialInput in(write("12,-3.5,1E3,007,2147483648,+4,1-2\r\n"));
    EXPECT_EQ(in.input(), Variant::fromLong(12));
    EXPECT_EQ(in.input(), Variant(-3.5));
    EXPECT_EQ(in.input(), Variant(1000.0));
    EXPECT_EQ(in.input(), Variant::fromLong(7));
    EXPECT_EQ(in.input(), Variant(2147483648.0));  // beyond a Long
    EXPECT_EQ(in.input(), Variant::fromLong(4));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("1-2")));  // not a number: text
}

TEST_F(SequentialInputTest, HashFieldsAreDatesNullAndBooleans) {
    SequentialInput in(write("#2008-04-01#,#2009-12-31 10:20:30#,#NULL#,#TRUE#,#FALSE#,#2008-02-30#\r\n"));
    EXPECT_EQ(in.input(), Variant(QDate(2008, 4, 1)));
    EXPECT_EQ(in.input(), Variant(VbDate{QDate(2009, 12, 31), 10 * 3600 + 20 * 60 + 30}));
    EXPECT_TRUE(in.input().isNull());
    EXPECT_EQ(in.input(), Variant(true));
    EXPECT_EQ(in.input(), Variant(false));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("#2008-02-30#")));  // no such day: left as text
}

TEST_F(SequentialInputTest, DelimitingCommaAndBlankLineGiveEmpty) {
    SequentialInput in(write("a,,b\r\n\r\nc,\r\nd"));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("a")));
    EXPECT_TRUE(in.input().isEmpty());
    EXPECT_EQ(in.input(), Variant(QStringLiteral("b")));
    EXPECT_TRUE(in.input().isEmpty());  // the blank line
    EXPECT_EQ(in.input(), Variant(QStringLiteral("c")));
    EXPECT_TRUE(in.input().isEmpty());  // after the closing comma
    EXPECT_EQ(in.input(), Variant(QStringLiteral("d")));
    EXPECT_TRUE(in.eof());
}

TEST_F(SequentialInputTest, LineBreaksMayBeCrLfCrOrLf) {
    SequentialInput in(write("1\n2\r3\r\n4"));
    for (int expected = 1; expected <= 4; ++expected) EXPECT_EQ(in.input(), Variant::fromLong(expected));
    EXPECT_TRUE(in.eof());
}

TEST_F(SequentialInputTest, ReadingPastTheEndRaises62) {
    SequentialInput in(write("\"[End]\""));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("[End]")));
    EXPECT_TRUE(in.eof());
    try {
        in.input();
        FAIL() << "no error past the end";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 62);
    }
    try {
        in.lineInput();
        FAIL() << "no error past the end";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 62);
    }
}

TEST_F(SequentialInputTest, UnclosedQuoteRaises62) {
    SequentialInput in(write("\"ApplierColumnName\",\"cut off here\r\n"));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("ApplierColumnName")));
    try {
        in.input();
        FAIL() << "an unclosed text was accepted";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 62);
    }
}

TEST_F(SequentialInputTest, LineInputReadsWholeLinesThenInputGoesOn) {
    SequentialInput in(write("\"[DocData]\",x\r\n\"Col\",5,1\r\n"));
    EXPECT_EQ(in.lineInput(), QStringLiteral("\"[DocData]\",x"));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("Col")));
    EXPECT_EQ(in.input(), Variant::fromLong(5));
    EXPECT_EQ(in.input(), Variant::fromLong(1));
    EXPECT_TRUE(in.eof());
}

TEST_F(SequentialInputTest, Cp932TextIncludingTrailBytesThatLookLikeSigns) {
    // ソフト,表 with the trail byte 0x5C (a backslash in ASCII) in ソ and 表,
    // then the wave dash 81 60, which CP932 maps to U+FF5E (Shift_JIS: U+301C).
    SequentialInput in(write(hexBytes("22 83 5c 83 74 83 67 2c 95 5c 22 2c 81 60 0d 0a")));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("ソフト,表")));
    EXPECT_EQ(in.input(), Variant(QString(QChar(0xFF5E))));
}

TEST_F(SequentialInputTest, FilesThatCannotBeOpened) {
    EXPECT_EQ(openError(QString()).number(), 75);
    EXPECT_EQ(openError(dir_.path()).number(), 75);
    const VbError missing = openError(dir_.filePath(QStringLiteral("nothing.dat")));
    EXPECT_EQ(missing.number(), 53);
    EXPECT_TRUE(missing.description().contains(QStringLiteral("nothing.dat")));
}

TEST_F(SequentialInputTest, EmptyBinaryAndForeignFilesAreRefused) {
    const VbError empty = openError(write(QByteArray()));
    EXPECT_EQ(empty.number(), 62);
    EXPECT_TRUE(empty.description().contains(QStringLiteral("空")));

    const VbError binary = openError(write(hexBytes("22 41 22 00 01 02")));
    EXPECT_EQ(binary.number(), 54);
    EXPECT_TRUE(binary.description().contains(QStringLiteral("バイナリ")));

    // 申請書 in UTF-8 (e7 94 b3 e8 ab 8b e6 9b b8) happens to pair up into
    // valid CP932 characters; it must still be refused.
    const VbError utf8 = openError(write(hexBytes("22 e7 94 b3 e8 ab 8b e6 9b b8 22 0d 0a")));
    EXPECT_EQ(utf8.number(), 54);
    EXPECT_TRUE(utf8.description().contains(QStringLiteral("文字コード")));

    const VbError bom = openError(write(hexBytes("ef bb bf 22 41 22 0d 0a")));
    EXPECT_EQ(bom.number(), 54);

    // A lead byte followed by a blank is no CP932 character.
    const VbError broken = openError(write(hexBytes("22 82 20 22 0d 0a")));
    EXPECT_EQ(broken.number(), 54);
    EXPECT_TRUE(broken.description().contains(QStringLiteral("文字コード")));
}

TEST_F(SequentialInputTest, FileCutInsideACharacterIsTruncatedNotForeign) {
    // "佐藤 with the second byte of 藤 missing.
    const VbError cut = openError(write(hexBytes("22 8d b2 93")));
    EXPECT_EQ(cut.number(), 62);
    EXPECT_TRUE(cut.description().contains(QStringLiteral("途中で切れて")));
}

}  // namespace
}  // namespace kelvary
