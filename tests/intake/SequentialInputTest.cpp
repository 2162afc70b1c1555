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
        test::writeFile(path, bytes);
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

// The error number raised by one read, or 0 when the read succeeds.
template <typename Read>
long readError(Read&& read) {
    try {
        read();
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

TEST_F(SequentialInputTest, ReadingPastTheEndRaises62) {
    SequentialInput in(write("\"[End]\""));
    EXPECT_EQ(in.input(), Variant(QStringLiteral("[End]")));
    EXPECT_TRUE(in.eof());
    EXPECT_EQ(readError([&] { in.input(); }), 62);
    EXPECT_EQ(readError([&] { in.lineInput(); }), 62);

    // A text whose closing quote never comes meets the end of the file too.
    SequentialInput cut(write("\"ApplierColumnName\",\"cut off here\r\n"));
    EXPECT_EQ(cut.input(), Variant(QStringLiteral("ApplierColumnName")));
    EXPECT_EQ(readError([&] { cut.input(); }), 62);
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

TEST_F(SequentialInputTest, EmptyBinaryCutAndForeignFilesAreRefused) {
    struct Case {
        QByteArray bytes;
        long number;
        QString says;
    };
    const Case cases[] = {
        {QByteArray(), 62, QStringLiteral("空")},
        {hexBytes("22 41 22 00 01 02"), 54, QStringLiteral("バイナリ")},
        // 申請書 in UTF-8 happens to pair up into valid CP932 characters.
        {hexBytes("22 e7 94 b3 e8 ab 8b e6 9b b8 22 0d 0a"), 54, QStringLiteral("文字コード")},
        {hexBytes("ef bb bf 22 41 22 0d 0a"), 54, QStringLiteral("UTF-8")},
        // A lead byte followed by a blank is no CP932 character.
        {hexBytes("22 82 20 22 0d 0a"), 54, QStringLiteral("文字コード")},
        // "佐藤 with the second byte of 藤 missing: cut off, not foreign.
        {hexBytes("22 8d b2 93"), 62, QStringLiteral("途中で切れて")},
    };
    for (const Case& c : cases) {
        const VbError e = openError(write(c.bytes));
        EXPECT_EQ(e.number(), c.number) << c.bytes.toHex().constData();
        EXPECT_TRUE(e.description().contains(c.says)) << e.description().toStdString();
    }
}

}  // namespace
}  // namespace kelvary
