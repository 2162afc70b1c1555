// StrConv's width and case conversions, from tables of the width pairs
// instead of ICU's Halfwidth-Fullwidth and Fullwidth-Halfwidth transliterators,
// whose registry alone costs more than the rest of a small run. The tables
// hold the same pairs those transliterators use; where VB on a Japanese
// system differs from Unicode's width pairs, because VB's conversion works
// within code page 932, the difference is kept:
// - "\" (0x5C, shown as ¥ on Japanese systems) has two full-width partners,
//   "＼" and "￥", so it is not widened, and "￥" is not narrowed; "¥" is not
//   widened either;
// - a half-width voiced mark joins the kana before it only where CP932 has
//   the joined character (ｶﾞ → ガ, ﾊﾟ → パ, ｳﾞ → ヴ); elsewhere it becomes the
//   spacing mark ゛ or ゜, never a combining one, and back again;
// - the typographic quotes ’ and ” narrow to ' and ".
#include "platform/StrConv.h"

#include "platform/VbError.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace kelvary {
namespace {

using namespace std::string_view_literals;

constexpr char16_t kHalfVoiced = 0xFF9E;      // ﾞ
constexpr char16_t kHalfSemiVoiced = 0xFF9F;  // ﾟ
constexpr char16_t kWideVoiced = 0x309B;      // ゛
constexpr char16_t kWideSemiVoiced = 0x309C;  // ゜
constexpr char16_t kCombiningVoiced = 0x3099;
constexpr char16_t kCombiningSemiVoiced = 0x309A;

// Half-width katakana U+FF61 to U+FF9D and their full-width forms, in order.
constexpr char16_t kHalfKanaFrom = 0xFF61;
constexpr std::u16string_view kWideKana =
    u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン";

struct WidthPair {
    char16_t half;
    char16_t wide;
};

// The pairs that are not a fixed offset apart (ASCII is: U+0021 + 0xFEE0).
constexpr std::array<WidthPair, 6 + 61 + 52 + 7> makePairs() {
    std::array<WidthPair, 6 + 61 + 52 + 7> pairs{};
    size_t n = 0;
    for (const WidthPair p : {WidthPair{0x00A2, 0xFFE0}, WidthPair{0x00A3, 0xFFE1}, WidthPair{0x00A6, 0xFFE4},
                              WidthPair{0x00AC, 0xFFE2}, WidthPair{0x00AF, 0xFFE3}, WidthPair{0x20A9, 0xFFE6}})
        pairs[n++] = p;
    for (size_t i = 0; i < kWideKana.size(); ++i)
        pairs[n++] = {static_cast<char16_t>(kHalfKanaFrom + i), kWideKana[i]};
    // Half-width Hangul U+FFA0 to U+FFDC pair with the conjoining jamo; the
    // gaps of the block have no partner.
    constexpr std::u16string_view hangul =
        u"\u1160\u1100\u1101\u11AA\u1102\u11AC\u11AD\u1103\u1104\u1105\u11B0\u11B1\u11B2\u11B3\u11B4\u11B5"
        u"\u111A\u1106\u1107\u1108\u1121\u1109\u110A\u110B\u110C\u110D\u110E\u110F\u1110\u1111\u1112\0\0\0"
        u"\u1161\u1162\u1163\u1164\u1165\u1166\0\0\u1167\u1168\u1169\u116A\u116B\u116C\0\0"
        u"\u116D\u116E\u116F\u1170\u1171\u1172\0\0\u1173\u1174\u1175"sv;
    for (size_t i = 0; i < hangul.size(); ++i)
        if (hangul[i] != 0) pairs[n++] = {static_cast<char16_t>(0xFFA0 + i), hangul[i]};
    // The half-width box line, arrows and shapes, whose partners are the ordinary ones.
    constexpr std::u16string_view forms = u"\u2502\u2190\u2191\u2192\u2193\u25A0\u25CB";
    for (size_t i = 0; i < forms.size(); ++i)
        pairs[n++] = {static_cast<char16_t>(0xFFE8 + i), forms[i]};
    return pairs;
}

constexpr auto kPairs = makePairs();

template <typename Key>
constexpr auto sortedBy(Key key) {
    auto pairs = kPairs;
    std::sort(pairs.begin(), pairs.end(), [key](const WidthPair& a, const WidthPair& b) { return key(a) < key(b); });
    return pairs;
}

constexpr auto kByHalf = sortedBy([](const WidthPair& p) { return p.half; });
constexpr auto kByWide = sortedBy([](const WidthPair& p) { return p.wide; });

// The partner of c in pairs sorted by from, or 0.
template <typename From, typename To>
char16_t lookUp(const std::array<WidthPair, kPairs.size()>& pairs, char16_t c, From from, To to) {
    const auto it = std::lower_bound(pairs.begin(), pairs.end(), c,
                                     [from](const WidthPair& p, char16_t value) { return from(p) < value; });
    return it != pairs.end() && from(*it) == c ? to(*it) : 0;
}

bool takesVoicedMark(char16_t kana) {
    return kana == 0xFF73                        // ｳ
           || (kana >= 0xFF76 && kana <= 0xFF84)  // ｶ..ｺ ｻ..ｿ ﾀ..ﾄ
           || (kana >= 0xFF8A && kana <= 0xFF8E);  // ﾊ..ﾎ
}

bool takesSemiVoicedMark(char16_t kana) { return kana >= 0xFF8A && kana <= 0xFF8E; }

char16_t wideOf(char16_t c) {
    if (c == u' ') return 0x3000;
    if (c > u' ' && c <= u'~') return c == u'\\' ? c : static_cast<char16_t>(c + 0xFEE0);
    if (c == kHalfVoiced) return kCombiningVoiced;
    if (c == kHalfSemiVoiced) return kCombiningSemiVoiced;
    const char16_t w = lookUp(kByHalf, c, [](const WidthPair& p) { return p.half; },
                              [](const WidthPair& p) { return p.wide; });
    return w ? w : c;
}

QString widen(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        const char16_t next = i + 1 < text.size() ? text.at(i + 1).unicode() : 0;
        // The joined kana sits one (voiced) or two (semi-voiced) places after its base;
        // ｳﾞ is the one exception.
        if (next == kHalfVoiced && takesVoicedMark(c)) {
            result += QChar(c == 0xFF73 ? char16_t{0x30F4} : static_cast<char16_t>(wideOf(c) + 1));
            ++i;
        } else if (next == kHalfSemiVoiced && takesSemiVoicedMark(c)) {
            result += QChar(static_cast<char16_t>(wideOf(c) + 2));
            ++i;
        } else if (c == kHalfVoiced) {
            result += QChar(kWideVoiced);
        } else if (c == kHalfSemiVoiced) {
            result += QChar(kWideSemiVoiced);
        } else {
            result += QChar(wideOf(c));
        }
    }
    return result;
}

// The half-width kana and mark of a joined full-width kana, or 0.
std::pair<char16_t, char16_t> splitJoined(char16_t c) {
    if (c == 0x30F4) return {0xFF73, kHalfVoiced};  // ヴ
    if (c == 0x30F7) return {0xFF9C, kHalfVoiced};  // ヷ
    if (c == 0x30FA) return {0xFF66, kHalfVoiced};  // ヺ
    if (c < 0x30AC || c > 0x30DD) return {0, 0};
    const auto half = [](char16_t wide) {
        return lookUp(kByWide, wide, [](const WidthPair& p) { return p.wide; },
                      [](const WidthPair& p) { return p.half; });
    };
    const char16_t voicedBase = half(static_cast<char16_t>(c - 1));
    if (takesVoicedMark(voicedBase) && voicedBase != 0xFF73) return {voicedBase, kHalfVoiced};
    const char16_t semiBase = half(static_cast<char16_t>(c - 2));
    if (takesSemiVoicedMark(semiBase)) return {semiBase, kHalfSemiVoiced};
    return {0, 0};
}

QString narrow(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c == 0x3000) {
            result += QLatin1Char(' ');
        } else if (c >= 0xFF01 && c <= 0xFF5E) {
            result += QChar(static_cast<char16_t>(c - 0xFEE0));
        } else if (c == kCombiningVoiced || c == kWideVoiced) {
            result += QChar(kHalfVoiced);
        } else if (c == kCombiningSemiVoiced || c == kWideSemiVoiced) {
            result += QChar(kHalfSemiVoiced);
        } else if (c == 0x2019) {
            result += QLatin1Char('\'');
        } else if (c == 0x201D) {
            result += QLatin1Char('"');
        } else if (const auto [base, mark] = splitJoined(c); base != 0) {
            result += QChar(base);
            result += QChar(mark);
        } else {
            const char16_t h = lookUp(kByWide, c, [](const WidthPair& p) { return p.wide; },
                                      [](const WidthPair& p) { return p.half; });
            result += QChar(h ? h : c);
        }
    }
    return result;
}

}  // namespace

QString vbStrConv(const QString& text, int flags) {
    constexpr int known = vbLowerCase | vbWide | vbNarrow;
    if ((flags & ~known) != 0 || ((flags & vbWide) && (flags & vbNarrow))) {
        throw VbError::standard(vberr::InvalidProcedureCall);
    }
    QString result = text;
    if (flags & vbWide) result = widen(result);
    if (flags & vbNarrow) result = narrow(result);
    if (flags & vbLowerCase) result = result.toLower();
    return result;
}

}  // namespace kelvary
