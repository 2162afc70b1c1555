// StrConv's width and case conversions. ICU's Halfwidth-Fullwidth and
// Fullwidth-Halfwidth transliterators do the bulk of the mapping; around them
// sit the few places where VB on a Japanese system differs from Unicode's
// width pairs, because VB's conversion works within code page 932:
// - "\" (0x5C, shown as ¥ on Japanese systems) has two full-width partners,
//   "＼" and "￥", so it is not widened, and "￥" is not narrowed;
// - a half-width voiced mark joins the kana before it only where CP932 has
//   the joined character (ｶﾞ → ガ, ﾊﾟ → パ, ｳﾞ → ヴ); elsewhere it becomes the
//   spacing mark ゛ or ゜, never a combining one, and back again;
// - the typographic quotes ’ and ” narrow to ' and ".
#include "platform/StrConv.h"

#include "platform/VbError.h"

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <memory>

namespace kelvary {
namespace {

constexpr char16_t kHalfVoiced = 0xFF9E;      // ﾞ
constexpr char16_t kHalfSemiVoiced = 0xFF9F;  // ﾟ
constexpr char16_t kWideVoiced = 0x309B;      // ゛
constexpr char16_t kWideSemiVoiced = 0x309C;  // ゜

bool takesVoicedMark(char16_t kana) {
    return kana == 0xFF73                        // ｳ
           || (kana >= 0xFF76 && kana <= 0xFF84)  // ｶ..ｺ ｻ..ｿ ﾀ..ﾄ
           || (kana >= 0xFF8A && kana <= 0xFF8E);  // ﾊ..ﾎ
}

bool takesSemiVoicedMark(char16_t kana) { return kana >= 0xFF8A && kana <= 0xFF8E; }

// Marks that ICU would turn into combining characters become spacing ones first.
QString withSpacingMarks(const QString& text) {
    QString result = text;
    for (qsizetype i = 0; i < result.size(); ++i) {
        const char16_t c = result.at(i).unicode();
        const char16_t before = i > 0 ? text.at(i - 1).unicode() : 0;
        if (c == kHalfVoiced && !takesVoicedMark(before)) result[i] = QChar(kWideVoiced);
        if (c == kHalfSemiVoiced && !takesSemiVoicedMark(before)) result[i] = QChar(kWideSemiVoiced);
    }
    return result;
}

QString narrowMarksAndQuotes(const QString& text) {
    QString result = text;
    result.replace(QChar(kWideVoiced), QChar(kHalfVoiced));
    result.replace(QChar(kWideSemiVoiced), QChar(kHalfSemiVoiced));
    result.replace(QChar(0x2019), QChar(u'\''));
    result.replace(QChar(0x201D), QChar(u'"'));
    return result;
}

using TransliteratorPtr = std::unique_ptr<icu::Transliterator>;

TransliteratorPtr openTransliterator(const char16_t* id) {
    UErrorCode status = U_ZERO_ERROR;
    TransliteratorPtr transliterator(
        icu::Transliterator::createInstance(icu::UnicodeString(id), UTRANS_FORWARD, status));
    if (U_FAILURE(status) || !transliterator) {
        throw VbError(vberr::InternalError,
                      QStringLiteral("全角・半角変換を準備できません: %1")
                          .arg(QString::fromLatin1(u_errorName(status))));
    }
    return transliterator;
}

// Transliterators are expensive to build and not safe to share between threads.
icu::Transliterator& widener() {
    thread_local TransliteratorPtr instance = openTransliterator(u"[^\\u005C\\u00A5] Halfwidth-Fullwidth");
    return *instance;
}

icu::Transliterator& narrower() {
    thread_local TransliteratorPtr instance = openTransliterator(u"[^\\uFFE5] Fullwidth-Halfwidth");
    return *instance;
}

QString transliterate(icu::Transliterator& transliterator, const QString& text) {
    icu::UnicodeString buffer(reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()));
    transliterator.transliterate(buffer);
    return QString(reinterpret_cast<const QChar*>(buffer.getBuffer()), buffer.length());
}

}  // namespace

QString vbStrConv(const QString& text, int flags) {
    constexpr int known = vbLowerCase | vbWide | vbNarrow;
    if ((flags & ~known) != 0 || ((flags & vbWide) && (flags & vbNarrow))) {
        throw VbError::standard(vberr::InvalidProcedureCall);
    }
    QString result = text;
    if (flags & vbWide) result = transliterate(widener(), withSpacingMarks(result));
    if (flags & vbNarrow) result = narrowMarksAndQuotes(transliterate(narrower(), result));
    if (flags & vbLowerCase) result = result.toLower();
    return result;
}

}  // namespace kelvary
