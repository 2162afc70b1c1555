// Variant: the VB runtime's dynamically typed value, reduced to the kinds this
// program handles (Empty, Null, Integer, Long, Double, Currency, Date, String,
// Boolean). Conversions follow VB: CStr of an integral Double has no decimals,
// Booleans read "True"/"False", dates read in the Japanese short form
// "yyyy/mm/dd". Every payload and printed text is built from these forms, so
// they are an external format, not a matter of taste.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <variant>

namespace kelvary {

enum class VarType { Empty, Null, Integer, Long, Double, Currency, Date, String, Boolean };

// Currency: a fixed-point amount with four decimals, stored as value * 10000.
struct Currency {
    std::int64_t scaled = 0;
    static Currency fromDouble(double value);  // rounds half to even at 4 decimals
    double toDouble() const { return static_cast<double>(scaled) / 10000.0; }
    bool operator==(const Currency&) const = default;
};

// A date with an optional time of day, with no time zone (VB dates are local).
struct VbDate {
    QDate date;
    int secondsOfDay = 0;  // 0..86399
    bool operator==(const VbDate&) const = default;
    QDateTime toDateTime() const;
    static VbDate fromDateTime(const QDateTime& dt);
};

class Variant {
public:
    Variant() = default;  // Empty
    Variant(const QString& text) : value_(text) {}
    Variant(const char* utf8) : value_(QString::fromUtf8(utf8)) {}
    Variant(int value) : value_(static_cast<std::int32_t>(value)) {}  // Long
    Variant(double value) : value_(value) {}
    Variant(bool value) : value_(value) {}
    Variant(Currency value) : value_(value) {}
    Variant(VbDate value) : value_(value) {}
    Variant(const QDate& date) : value_(VbDate{date, 0}) {}
    Variant(const QDateTime& dt) : value_(VbDate::fromDateTime(dt)) {}

    static Variant null();
    static Variant fromInteger(std::int16_t value);
    static Variant fromLong(std::int32_t value);

    VarType type() const;
    bool isEmpty() const { return type() == VarType::Empty; }
    bool isNull() const { return type() == VarType::Null; }
    bool isString() const { return type() == VarType::String; }
    bool isDateValue() const { return type() == VarType::Date; }
    bool isNumber() const;  // Integer, Long, Double, Currency

    // VB IsNumeric: numbers, Booleans, Empty and texts that parse as numbers.
    bool isNumeric() const;
    // VB IsDate: dates and texts that parse as dates.
    bool isDate() const;

    // VB CStr: Null raises error 94.
    QString toString() const;
    // value & "": Null and Empty give "".
    QString text() const;

    // VB CLng/CInt round half to even and raise 13 (type mismatch) or 6 (overflow).
    std::int32_t toLong() const;
    std::int16_t toInteger() const;
    double toDouble() const;
    Currency toCurrency() const;
    bool toBool() const;
    VbDate toDate() const;

    // Exact comparison of kind and value (not VB's "=" with its coercions).
    bool operator==(const Variant& other) const { return value_ == other.value_; }

private:
    struct NullTag {
        bool operator==(const NullTag&) const = default;
    };
    struct EmptyTag {
        bool operator==(const EmptyTag&) const = default;
    };
    struct IntegerValue {
        std::int16_t v;
        bool operator==(const IntegerValue&) const = default;
    };
    using Storage = std::variant<EmptyTag, NullTag, IntegerValue, std::int32_t, double, Currency,
                                 VbDate, QString, bool>;
    explicit Variant(Storage s) : value_(std::move(s)) {}

    Storage value_;
};

// VB's text form of a Double (up to 15 significant digits, E notation outside
// the plain range), shared by CStr and the number formats.
QString vbDoubleText(double value);

// Parses a text as VB's numeric conversions do on a Japanese system (blanks,
// sign, thousands separators, decimal point, exponent, &H hexadecimal, each
// also in its full-width form). False when it is not a number.
bool vbParseNumber(const QString& text, double& out);

// Parses a text as VB's CDate does in a Japanese locale: y/m/d or y-m-d, with
// an optional h:nn[:ss] time. False when it is not a date.
bool vbParseDate(const QString& text, VbDate& out);

}  // namespace kelvary
