// VB's Format for user-defined number and date patterns, as a Japanese system
// formats them. The printed forms and the document ID depend on the exact
// text, so the behaviour follows the VB runtime rather than Qt's formatting:
//
// Numbers. A pattern has up to four sections separated by ";": positive,
// negative, zero, Empty. A negative value without its own section is written
// with a leading "-" in the first section; the section is chosen from the
// value before rounding, so -0.4 with "0" gives "-0", as VB does. Rounding is
// half away from zero on the decimal digits of the value (a Double as its 15
// significant digits), so 2.5 gives 3 and 1.005 with "0.00" gives 1.01.
// "0" is a digit that is always written, "#" one written only when
// significant, "," between digits groups thousands, "." places the decimal
// point. Text before and after the digits is copied; text between them is not
// supported. Empty formats as a zero without digits ("00" gives "00", "#"
// gives ""); Null gives "". A text that reads as a number is formatted as
// that number, any other text comes back unchanged. A date is its serial
// number (days since 1899-12-30).
//
// Dates. yyyy yy y (day of year), m mm (minutes right after an hour), d dd,
// h hh, n nn, s ss, and the Japanese calendar: g the era's Latin initial,
// gg the first character of its name, ggg its name, e ee the era year.
// "/" and ":" are the Japanese separators "/" and ":". A text that reads as
// a date, or as a serial number, is converted first; other texts come back
// unchanged; Empty is day 0 (1899-12-30).
//
// Anything else in a pattern raises error 5 instead of being guessed at.
#include "platform/VbFormat.h"

#include "platform/EraCalendar.h"
#include "platform/VbError.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace kelvary {
namespace {

[[noreturn]] void unknownPattern() { throw VbError::standard(vberr::InvalidProcedureCall); }

// ---------------------------------------------------------------- pattern text

// One character of a pattern; quoted and backslash-escaped characters are
// always copied as they are.
struct PatternChar {
    QChar ch;
    bool quoted = false;
};
using Section = std::vector<PatternChar>;

std::vector<Section> splitSections(const QString& pattern) {
    std::vector<Section> sections(1);
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == u'"') {
            const qsizetype close = pattern.indexOf(u'"', i + 1);
            if (close < 0) unknownPattern();
            for (qsizetype j = i + 1; j < close; ++j) sections.back().push_back({pattern.at(j), true});
            i = close;
        } else if (c == u'\\') {
            if (i + 1 >= pattern.size()) unknownPattern();
            sections.back().push_back({pattern.at(++i), true});
        } else if (c == u';') {
            sections.emplace_back();
        } else {
            sections.back().push_back({c, false});
        }
    }
    if (sections.size() > 4) unknownPattern();
    return sections;
}

bool isDateLetter(QChar c) {
    switch (c.toLower().unicode()) {
    case u'y': case u'm': case u'd': case u'h': case u'n': case u's': case u'g': case u'e':
        return true;
    default:
        return false;
    }
}

bool isDigitPlaceholder(QChar c) { return c == u'0' || c == u'#'; }

// Characters a pattern may hold as plain text: anything beyond ASCII (年, 第,
// △ …) and a few signs; ASCII letters and the remaining signs have meanings
// in VB patterns that this program never needs.
bool isPlainText(QChar c, const char* asciiAllowed) {
    if (c.unicode() >= 0x80) return true;
    for (const char* a = asciiAllowed; *a; ++a) {
        if (c == QLatin1Char(*a)) return true;
    }
    return false;
}

bool isDatePattern(const std::vector<Section>& sections) {
    bool date = false;
    bool number = false;
    for (const Section& section : sections) {
        for (const PatternChar& pc : section) {
            if (pc.quoted) continue;
            date = date || isDateLetter(pc.ch);
            number = number || isDigitPlaceholder(pc.ch);
        }
    }
    if (date && number) unknownPattern();
    if (date && sections.size() > 1) unknownPattern();
    return date;
}

// ---------------------------------------------------------------- numbers

struct NumberSection {
    QString prefix;
    QString integerDigits;   // placeholders before the point, '0' or '#'
    bool grouping = false;   // "," between integer placeholders
    bool point = false;
    QString fractionDigits;  // placeholders after the point
    QString suffix;
    bool hasPlaceholders() const { return !integerDigits.isEmpty() || point; }
};

NumberSection parseNumberSection(const Section& section) {
    enum class Part { Prefix, Integer, Fraction, Suffix };
    NumberSection result;
    Part part = Part::Prefix;
    for (std::size_t i = 0; i < section.size(); ++i) {
        const PatternChar& pc = section[i];
        const QChar c = pc.ch;
        if (!pc.quoted && isDigitPlaceholder(c)) {
            if (part == Part::Prefix) part = Part::Integer;
            if (part == Part::Suffix) unknownPattern();  // text between digits
            (part == Part::Integer ? result.integerDigits : result.fractionDigits).append(c);
        } else if (!pc.quoted && c == u',') {
            // Only a separator between digits; a trailing "," (scaling by 1000) is not supported.
            const bool nextIsDigit =
                i + 1 < section.size() && !section[i + 1].quoted && isDigitPlaceholder(section[i + 1].ch);
            if (part != Part::Integer || !nextIsDigit) unknownPattern();
            result.grouping = true;
        } else if (!pc.quoted && c == u'.') {
            if (part == Part::Fraction || part == Part::Suffix) unknownPattern();
            result.point = true;
            part = Part::Fraction;
        } else if (pc.quoted || isPlainText(c, " -+()")) {
            if (part == Part::Prefix) {
                result.prefix.append(c);
            } else {
                part = Part::Suffix;
                result.suffix.append(c);
            }
        } else {
            unknownPattern();
        }
    }
    return result;
}

// A value as decimal digits: integer digits without leading zeros ("" for
// zero) and fraction digits without trailing zeros.
struct DecimalDigits {
    bool negative = false;
    std::string integer;
    std::string fraction;
    bool isZero() const { return integer.empty() && fraction.empty(); }
};

void trimDigits(DecimalDigits& d) {
    const auto firstNonZero = d.integer.find_first_not_of('0');
    d.integer.erase(0, firstNonZero == std::string::npos ? d.integer.size() : firstNonZero);
    const auto lastNonZero = d.fraction.find_last_not_of('0');
    d.fraction.erase(lastNonZero == std::string::npos ? 0 : lastNonZero + 1);
}

DecimalDigits digitsOfInteger(std::int64_t value) {
    DecimalDigits d;
    d.negative = value < 0;
    const std::uint64_t magnitude =
        d.negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    d.integer = std::to_string(magnitude);
    trimDigits(d);
    return d;
}

DecimalDigits digitsOfCurrency(Currency value) {
    DecimalDigits d;
    d.negative = value.scaled < 0;
    const std::uint64_t magnitude = d.negative ? 0 - static_cast<std::uint64_t>(value.scaled)
                                               : static_cast<std::uint64_t>(value.scaled);
    d.integer = std::to_string(magnitude / 10000);
    std::string fraction = std::to_string(magnitude % 10000);
    d.fraction = std::string(4 - fraction.size(), '0') + fraction;
    trimDigits(d);
    return d;
}

// A Double as VB sees it when formatting: its 15 significant digits.
DecimalDigits digitsOfDouble(double value) {
    if (!std::isfinite(value)) throw VbError::standard(vberr::Overflow);
    DecimalDigits d;
    if (value == 0.0) return d;  // also -0.0, which VB writes without a sign
    d.negative = value < 0;
    char text[32];
    std::snprintf(text, sizeof text, "%.14e", std::fabs(value));
    // text is "d.dddddddddddddde±x…"
    const std::string all(text);
    const auto e = all.find('e');
    const std::string mantissa = all.substr(0, 1) + all.substr(2, e - 2);
    const int exponent = std::stoi(all.substr(e + 1));
    if (exponent >= 0) {
        const std::size_t integerLength = static_cast<std::size_t>(exponent) + 1;
        if (integerLength >= mantissa.size()) {
            d.integer = mantissa + std::string(integerLength - mantissa.size(), '0');
        } else {
            d.integer = mantissa.substr(0, integerLength);
            d.fraction = mantissa.substr(integerLength);
        }
    } else {
        d.fraction = std::string(static_cast<std::size_t>(-exponent - 1), '0') + mantissa;
    }
    trimDigits(d);
    return d;
}

// Rounds half away from zero to the given number of fraction digits.
void roundDigits(DecimalDigits& d, std::size_t fractionDigits) {
    if (d.fraction.size() <= fractionDigits) return;
    const bool up = d.fraction[fractionDigits] >= '5';
    d.fraction.resize(fractionDigits);
    if (up) {
        std::string all = d.integer + d.fraction;
        auto i = all.size();
        while (i > 0 && all[i - 1] == '9') all[--i] = '0';
        if (i == 0) {
            all.insert(all.begin(), '1');
        } else {
            ++all[i - 1];
        }
        d.integer = all.substr(0, all.size() - fractionDigits);
        d.fraction = all.substr(all.size() - fractionDigits);
    }
    trimDigits(d);
}

QString groupThousands(const QString& digits) {
    QString grouped;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) grouped.append(u',');
        grouped.append(digits.at(i));
    }
    return grouped;
}

QString renderNumber(const NumberSection& section, const DecimalDigits& value, bool withMinus) {
    if (!section.hasPlaceholders()) return section.prefix + section.suffix;

    DecimalDigits d = value;
    roundDigits(d, static_cast<std::size_t>(section.fractionDigits.size()));

    // Every placeholder from the first "0" on is written, zero or not.
    const qsizetype firstZero = section.integerDigits.indexOf(u'0');
    const qsizetype forced = firstZero < 0 ? 0 : section.integerDigits.size() - firstZero;
    QString integer = QString::fromStdString(d.integer);
    if (integer.size() < forced) integer = QString(forced - integer.size(), u'0') + integer;
    if (section.grouping) integer = groupThousands(integer);

    QString fraction;
    for (qsizetype i = 0; i < section.fractionDigits.size(); ++i) {
        if (i < static_cast<qsizetype>(d.fraction.size())) {
            fraction.append(QLatin1Char(d.fraction[static_cast<std::size_t>(i)]));
        } else if (section.fractionDigits.at(i) == u'0') {
            fraction.append(u'0');
        }
    }

    QString text = section.prefix;
    if (withMinus) text.append(u'-');
    text.append(integer);
    if (section.point) text.append(u'.');
    text.append(fraction);
    text.append(section.suffix);
    return text;
}

std::optional<DecimalDigits> numberOf(const Variant& value) {
    switch (value.type()) {
    case VarType::Integer:
    case VarType::Long:
        return digitsOfInteger(value.toLong());
    case VarType::Currency:
        return digitsOfCurrency(value.toCurrency());
    case VarType::Double:
    case VarType::Date:  // the serial number
        return digitsOfDouble(value.toDouble());
    case VarType::Boolean:
        return digitsOfInteger(value.toBool() ? -1 : 0);
    case VarType::String: {
        double parsed = 0;
        if (!vbParseNumber(value.toString(), parsed)) return std::nullopt;
        return digitsOfDouble(parsed);
    }
    case VarType::Empty:  // a zero; Null never reaches here
    case VarType::Null:
        break;
    }
    return DecimalDigits{};
}

QString formatNumber(const Variant& value, const std::vector<Section>& sections,
                     const std::vector<NumberSection>& parsed) {
    const auto sectionOr = [&](std::size_t index) -> std::optional<NumberSection> {
        if (index < sections.size() && !sections[index].empty()) return parsed[index];
        return std::nullopt;
    };

    const std::optional<DecimalDigits> number = numberOf(value);
    if (!number) return value.toString();  // a text that is not a number

    if (value.isEmpty()) return renderNumber(sectionOr(3).value_or(parsed[0]), *number, false);
    if (number->negative) {
        if (auto negative = sectionOr(1)) return renderNumber(*negative, *number, false);
        return renderNumber(parsed[0], *number, true);
    }
    if (number->isZero()) return renderNumber(sectionOr(2).value_or(parsed[0]), *number, false);
    return renderNumber(parsed[0], *number, false);
}

// ---------------------------------------------------------------- dates

enum class DateField {
    Literal, Year4, Year2, DayOfYear, Month, Day, Hour, Minute, Second,
    EraInitial, EraFirstCharacter, EraName, EraYear
};

struct DateToken {
    DateField field = DateField::Literal;
    int width = 1;  // 2 for the zero-padded forms
    QString text;   // the literal text
};

std::vector<DateToken> parseDatePattern(const Section& section) {
    std::vector<DateToken> tokens;
    const auto addLiteral = [&](QChar c) {
        if (tokens.empty() || tokens.back().field != DateField::Literal) tokens.push_back({});
        tokens.back().text.append(c);
    };
    DateField lastField = DateField::Literal;
    for (std::size_t i = 0; i < section.size();) {
        const PatternChar& pc = section[i];
        if (pc.quoted || !isDateLetter(pc.ch)) {
            if (!pc.quoted && !isPlainText(pc.ch, " /:-.,()")) unknownPattern();
            addLiteral(pc.ch);
            ++i;
            continue;
        }
        const QChar letter = pc.ch.toLower();
        std::size_t run = 1;
        while (i + run < section.size() && !section[i + run].quoted &&
               section[i + run].ch.toLower() == letter) {
            ++run;
        }
        i += run;
        DateToken token;
        token.width = run == 2 ? 2 : 1;
        switch (letter.unicode()) {
        case u'y':
            if (run == 4) token.field = DateField::Year4;
            else if (run == 2) token.field = DateField::Year2;
            else if (run == 1) token.field = DateField::DayOfYear;
            else unknownPattern();
            break;
        case u'm':
            if (run > 2) unknownPattern();  // month names
            token.field = lastField == DateField::Hour ? DateField::Minute : DateField::Month;
            break;
        case u'd':
            if (run > 2) unknownPattern();  // weekday names, locale date forms
            token.field = DateField::Day;
            break;
        case u'h':
            if (run > 2) unknownPattern();
            token.field = DateField::Hour;
            break;
        case u'n':
            if (run > 2) unknownPattern();
            token.field = DateField::Minute;
            break;
        case u's':
            if (run > 2) unknownPattern();
            token.field = DateField::Second;
            break;
        case u'g':
            if (run == 1) token.field = DateField::EraInitial;
            else if (run == 2) token.field = DateField::EraFirstCharacter;
            else if (run == 3) token.field = DateField::EraName;
            else unknownPattern();
            break;
        case u'e':
            if (run > 2) unknownPattern();
            token.field = DateField::EraYear;
            break;
        default:
            unknownPattern();
        }
        lastField = token.field;
        tokens.push_back(token);
    }
    return tokens;
}

// A VB date from a value, or nothing for a text that is neither a date nor a number.
std::optional<VbDate> dateOf(const Variant& value) {
    switch (value.type()) {
    case VarType::Date:
        return value.toDate();
    case VarType::Empty:
        return VbDate{QDate(1899, 12, 30), 0};
    case VarType::String: {
        const QString text = value.toString();
        VbDate date;
        if (vbParseDate(text, date)) return date;
        double serial = 0;
        if (vbParseNumber(text, serial)) return Variant(serial).toDate();
        return std::nullopt;
    }
    default:
        return Variant(value.toDouble()).toDate();
    }
}

QString padded(int number, int width) { return QString::number(number).rightJustified(width, u'0'); }

QString formatDate(const Variant& value, const std::vector<DateToken>& tokens) {
    const std::optional<VbDate> date = dateOf(value);
    if (!date) return value.toString();  // a text that is not a date

    const QDate& day = date->date;
    const int seconds = date->secondsOfDay;
    std::optional<JapaneseEra> era;
    const auto eraOfDay = [&]() -> const JapaneseEra& {
        if (!era) era = japaneseEraOf(day);
        return *era;
    };

    QString text;
    for (const DateToken& token : tokens) {
        switch (token.field) {
        case DateField::Literal: text.append(token.text); break;
        case DateField::Year4: text.append(padded(day.year(), 4)); break;
        case DateField::Year2: text.append(padded(day.year() % 100, 2)); break;
        case DateField::DayOfYear: text.append(QString::number(day.dayOfYear())); break;
        case DateField::Month: text.append(padded(day.month(), token.width)); break;
        case DateField::Day: text.append(padded(day.day(), token.width)); break;
        case DateField::Hour: text.append(padded(seconds / 3600, token.width)); break;
        case DateField::Minute: text.append(padded(seconds / 60 % 60, token.width)); break;
        case DateField::Second: text.append(padded(seconds % 60, token.width)); break;
        case DateField::EraInitial: text.append(eraOfDay().initial); break;
        case DateField::EraFirstCharacter: text.append(eraOfDay().name.left(1)); break;
        case DateField::EraName: text.append(eraOfDay().name); break;
        case DateField::EraYear: text.append(padded(eraOfDay().year, token.width)); break;
        }
    }
    return text;
}

}  // namespace

QString vbFormat(const Variant& value, const QString& pattern) {
    if (pattern.isEmpty()) return value.text();
    // The pattern is checked before the value, so that a wrong pattern fails
    // even on the Null values that would not have used it.
    const std::vector<Section> sections = splitSections(pattern);
    if (isDatePattern(sections)) {
        const std::vector<DateToken> tokens = parseDatePattern(sections.front());
        return value.isNull() ? QString() : formatDate(value, tokens);
    }
    std::vector<NumberSection> parsed;
    for (const Section& section : sections) parsed.push_back(parseNumberSection(section));
    return value.isNull() ? QString() : formatNumber(value, sections, parsed);
}

}  // namespace kelvary
