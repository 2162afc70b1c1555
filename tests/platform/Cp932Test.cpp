// CP932 codec: bytes of known characters written out by hand from the
// Windows-31J table, the characters where it differs from plain Shift_JIS,
// the best-fit and "?" behaviour of Windows, and the strict decode.
#include "platform/Cp932.h"

#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <thread>

namespace kelvary {
namespace {

using test::hexBytes;

TEST(Cp932, EncodesKanaKanjiAndAscii) {
    EXPECT_EQ(cp932Encode(QStringLiteral("あ")), hexBytes("82 a0"));
    EXPECT_EQ(cp932Encode(QStringLiteral("ｱ")), hexBytes("b1"));
    EXPECT_EQ(cp932Encode(QStringLiteral("ｶﾞ")), hexBytes("b6 de"));
    EXPECT_EQ(cp932Encode(QStringLiteral("第1号")), hexBytes("91 e6 31 8d 86"));
    EXPECT_EQ(cp932Encode(QStringLiteral("（株）　ＡＢ")), hexBytes("81 69 8a 94 81 6a 81 40 82 60 82 61"));
    EXPECT_EQ(cp932Encode(QStringLiteral("a,\"b\"\r\n")), hexBytes("61 2c 22 62 22 0d 0a"));
    EXPECT_TRUE(cp932Encode(QString()).isEmpty());
}

// The characters a plain Shift_JIS table maps elsewhere.
TEST(Cp932, MicrosoftVariantsEncodeAndRoundTrip) {
    const struct {
        const char16_t* text;
        const char* bytes;
    } cases[] = {
        {u"\uFF0D", "81 7c"},  // － FULLWIDTH HYPHEN-MINUS
        {u"\uFF5E", "81 60"},  // ～ FULLWIDTH TILDE
        {u"\u2225", "81 61"},  // ∥ PARALLEL TO
        {u"\u3231", "87 8a"},  // ㈱ NEC row 13
        {u"\u2015", "81 5c"},  // ― HORIZONTAL BAR
        {u"\uFFE2", "81 ca"},  // ￢ NEC row 2 rather than the IBM duplicate
        {u"\u2235", "81 e6"},  // ∵ likewise
        {u"\u2170", "fa 40"},  // ⅰ IBM extension rather than the NEC-selected copy
    };
    for (const auto& c : cases) {
        const QString text = QString::fromUtf16(c.text);
        EXPECT_EQ(cp932Encode(text), hexBytes(c.bytes)) << c.bytes;
        EXPECT_EQ(cp932Decode(hexBytes(c.bytes)), text) << c.bytes;
    }
    const QString mixed = QStringLiteral("㈱山田－東京～大阪∥");
    EXPECT_EQ(cp932Decode(cp932Encode(mixed)), mixed);
}

TEST(Cp932, DecodesDuplicateCodesToOneCharacter) {
    // NEC-selected IBM extensions (ED/EE rows) read as the IBM ones (FA row).
    EXPECT_EQ(cp932Decode(hexBytes("ee ef")), QString(QChar(0x2170)));
    EXPECT_EQ(cp932Decode(hexBytes("ed 40")), QString(QChar(0x7E8A)));
    EXPECT_EQ(cp932Decode(hexBytes("fa 40")), QString(QChar(0x2170)));
}

TEST(Cp932, CharactersOutsideTheCodePageBecomeQuestionMarks) {
    EXPECT_EQ(cp932Encode(QStringLiteral("a한b")), hexBytes("61 3f 62"));
    EXPECT_EQ(cp932ByteLength(QStringLiteral("a한b")), 3);
}

// Windows' best fit turns the JIS-style code points into their CP932 look-alikes.
TEST(Cp932, BestFitOfJisStyleCharacters) {
    EXPECT_EQ(cp932Encode(QString(QChar(0x301C))), hexBytes("81 60"));  // 〜 WAVE DASH
    EXPECT_EQ(cp932Encode(QString(QChar(0x2212))), hexBytes("81 7c"));  // − MINUS SIGN
    EXPECT_EQ(cp932Encode(QString(QChar(0x2016))), hexBytes("81 61"));  // ‖ DOUBLE VERTICAL LINE
    EXPECT_EQ(cp932Encode(QString(QChar(0x00A5))), hexBytes("5c"));     // ¥
    EXPECT_EQ(cp932Encode(QString(QChar(0x00A2))), hexBytes("81 91"));  // ¢
    EXPECT_EQ(cp932Encode(QString(QChar(0x00AC))), hexBytes("81 ca"));  // ¬
}

TEST(Cp932, LenientDecodeMarksBrokenBytesWithMiddleDot) {
    // A lead byte with nothing after it.
    EXPECT_EQ(cp932Decode(hexBytes("41 82")), QStringLiteral("A・"));
    EXPECT_TRUE(cp932Decode(QByteArray()).isEmpty());
}

TEST(Cp932, StrictDecodeAcceptsOnlyValidBytes) {
    QString text;
    EXPECT_TRUE(cp932DecodeStrict(hexBytes("82 a0 81 7c 41"), text));
    EXPECT_EQ(text, QStringLiteral("あ－A"));

    // A UTF-8 byte order mark: EF is not a CP932 lead byte row.
    EXPECT_FALSE(cp932DecodeStrict(hexBytes("ef bb bf 41"), text));
    EXPECT_TRUE(text.isEmpty());
    // Cut off after a lead byte.
    EXPECT_FALSE(cp932DecodeStrict(hexBytes("82 a0 82"), text));

    // The lenient decoder still works after a strict failure on the same thread.
    EXPECT_EQ(cp932Decode(hexBytes("82 a0")), QStringLiteral("あ"));
}

TEST(Cp932, WorksOnOtherThreads) {
    QByteArray encoded;
    long length = 0;
    std::thread worker([&] {
        encoded = cp932Encode(QStringLiteral("㈱"));
        length = cp932ByteLength(QStringLiteral("ｱあ"));
    });
    worker.join();
    EXPECT_EQ(encoded, hexBytes("87 8a"));
    EXPECT_EQ(length, 3);
}

}  // namespace
}  // namespace kelvary
