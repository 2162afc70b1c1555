// StrConv wide, narrow and lower case on mixed Japanese text, and the CP932
// codec beneath it.
#include "platform/Cp932.h"
#include "platform/StrConv.h"

#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <memory>
#include <random>
#include <thread>

namespace kelvary {
namespace {

// The texts of tests/data/platform/StrConv.tsv.
TEST(StrConv, EveryCaseOfTheTable) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/StrConv.tsv"));
    ASSERT_EQ(rows.size(), 10);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        const int flags = row[2] == QLatin1String("wide") ? int{vbWide}
                          : row[2] == QLatin1String("lower") ? int{vbLowerCase}
                                                             : vbLowerCase + vbNarrow;
        EXPECT_EQ(vbStrConv(row[1], flags), row[3]) << "StrConv.tsv line " << row[0].toStdString();
    }
}

// ICU's own width transliterators with VB's code page 932 differences around
// them: what the conversion tables must give for every text.
class IcuWidth {
public:
    IcuWidth() {
        UErrorCode status = U_ZERO_ERROR;
        wide_.reset(icu::Transliterator::createInstance(icu::UnicodeString(u"[^\\u005C\\u00A5] Halfwidth-Fullwidth"),
                                                        UTRANS_FORWARD, status));
        narrow_.reset(icu::Transliterator::createInstance(icu::UnicodeString(u"[^\\uFFE5] Fullwidth-Halfwidth"),
                                                          UTRANS_FORWARD, status));
        EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
    }

    QString wide(const QString& text) const {
        // A half-width mark with no joined form in the code page stays a spacing mark.
        QString marked = text;
        for (qsizetype i = 0; i < marked.size(); ++i) {
            const char16_t c = marked.at(i).unicode();
            const char16_t before = i > 0 ? text.at(i - 1).unicode() : 0;
            const bool voiceable = before == 0xFF73 || (before >= 0xFF76 && before <= 0xFF84) ||
                                   (before >= 0xFF8A && before <= 0xFF8E);
            if (c == 0xFF9E && !voiceable) marked[i] = QChar(0x309B);
            if (c == 0xFF9F && !(before >= 0xFF8A && before <= 0xFF8E)) marked[i] = QChar(0x309C);
        }
        return run(*wide_, marked);
    }

    QString narrow(const QString& text) const {
        QString result = run(*narrow_, text);
        result.replace(QChar(0x309B), QChar(0xFF9E));
        result.replace(QChar(0x309C), QChar(0xFF9F));
        result.replace(QChar(0x2019), QChar(u'\''));
        result.replace(QChar(0x201D), QChar(u'"'));
        return result;
    }

private:
    static QString run(icu::Transliterator& t, const QString& text) {
        icu::UnicodeString buffer(reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()));
        t.transliterate(buffer);
        return QString(reinterpret_cast<const QChar*>(buffer.getBuffer()), buffer.length());
    }
    std::unique_ptr<icu::Transliterator> wide_;
    std::unique_ptr<icu::Transliterator> narrow_;
};

TEST(StrConvTables, EveryCp932CharacterAloneAndBesideTheMarksAsIcu) {
    const IcuWidth icu;
    const QString repertoire = test::cp932Repertoire();
    // The single bytes, JIS X 0208 and the NEC and IBM extensions: some 7,900 characters.
    ASSERT_GT(repertoire.size(), 7800);
    ASSERT_TRUE(repertoire.contains(QChar(0xFF76)) && repertoire.contains(QChar(0x2252)));
    int differences = 0;
    for (const QChar c : repertoire) {
        for (const QString& text : {QString(c), QString(c) + QChar(0xFF9E), QString(c) + QChar(0xFF9F),
                                    QChar(0xFF9E) + QString(c), QString(c) + QChar(0x309B)}) {
            const QString wide = vbStrConv(text, vbWide);
            const QString narrow = vbStrConv(text, vbNarrow);
            if (wide != icu.wide(text) && ++differences < 20)
                ADD_FAILURE() << "wide U+" << QString::number(c.unicode(), 16).toStdString() << ": "
                              << wide.toStdString() << " against " << icu.wide(text).toStdString();
            if (narrow != icu.narrow(text) && ++differences < 20)
                ADD_FAILURE() << "narrow U+" << QString::number(c.unicode(), 16).toStdString() << ": "
                              << narrow.toStdString() << " against " << icu.narrow(text).toStdString();
        }
    }
    EXPECT_EQ(differences, 0);
}

TEST(StrConvTables, EveryOtherBmpCharacterAndMixedTextsAsIcu) {
    const IcuWidth icu;
    int differences = 0;
    for (char32_t u = 1; u < 0x10000; ++u) {
        if (u >= 0xD800 && u < 0xE000) continue;
        const QString text(QChar(static_cast<char16_t>(u)));
        if (vbStrConv(text, vbWide) != icu.wide(text) && ++differences < 20)
            ADD_FAILURE() << "wide U+" << QString::number(u, 16).toStdString();
        if (vbStrConv(text, vbNarrow) != icu.narrow(text) && ++differences < 20)
            ADD_FAILURE() << "narrow U+" << QString::number(u, 16).toStdString();
    }
    // Runs of kana, marks, Latin letters, Hangul and symbols in every order.
    const QString alphabet = QString::fromUtf8("ｱｳｶﾊﾎﾜｦﾞﾟﾞﾟ゛゜アウカガハバパヴヷヺワ\u3099\u309A aZ~\\¥￥＼’”ﾡﾤ\uFFC2ｰ漢");
    std::mt19937 random(19);
    for (int n = 0; n < 5000; ++n) {
        QString text;
        const int length = 1 + static_cast<int>(random() % 8);
        for (int i = 0; i < length; ++i) text += alphabet.at(static_cast<qsizetype>(random() % alphabet.size()));
        for (const int flags : {int{vbWide}, int{vbNarrow}, vbWide + vbLowerCase, vbNarrow + vbLowerCase}) {
            const QString expected = (flags & vbWide) ? icu.wide(text) : icu.narrow(text);
            const QString got = vbStrConv(text, flags);
            if (got != ((flags & vbLowerCase) ? expected.toLower() : expected) && ++differences < 20)
                ADD_FAILURE() << flags << " " << text.toStdString() << ": " << got.toStdString();
        }
    }
    EXPECT_EQ(differences, 0);
}

TEST(StrConv, RefusesConversionsItDoesNotSupport) {
    for (int flags : {1, 3, 16, 32, vbWide + vbNarrow})
        EXPECT_EQ(test::raised([&] { vbStrConv(QStringLiteral("a"), flags); }).number, vberr::InvalidProcedureCall)
            << flags;
}

// CP932 codec: bytes of known characters written out by hand from the
// Windows-31J table, the characters where it differs from plain Shift_JIS,
// the best-fit and "?" behaviour of Windows, and the strict decode.
using test::hexBytes;

// The cases of tests/data/platform/Cp932.tsv.
TEST(Cp932, EveryCaseOfTheTable) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/Cp932.tsv"));
    ASSERT_EQ(rows.size(), 25);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        SCOPED_TRACE("Cp932.tsv line " + row[0].toStdString());
        const bool decode = row[1] == QLatin1String("decode");
        const QString text = decode ? row[3] : row[2];
        const QByteArray bytes = hexBytes((decode ? row[2] : row[3]).toLatin1().constData());
        if (row[1] != QLatin1String("decode")) EXPECT_EQ(cp932Encode(text), bytes);
        if (row[1] != QLatin1String("encode")) EXPECT_EQ(cp932Decode(bytes), text);
    }
}

TEST(Cp932, EmptyTextsAndByteLengths) {
    EXPECT_TRUE(cp932Encode(QString()).isEmpty());
    EXPECT_TRUE(cp932Decode(QByteArray()).isEmpty());
    EXPECT_EQ(cp932ByteLength(QStringLiteral("a한b")), 3);
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
