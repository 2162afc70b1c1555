// VB Variant conversions. The rules here are the VB runtime's in a Japanese
// locale: banker's rounding for CLng/CInt, "True"/"False" for Booleans,
// "yyyy/mm/dd" for dates, 15 significant digits for Doubles.
#include "platform/Variant.h"

#include "platform/VbError.h"

#include <QRegularExpression>

#include <cmath>
#include <cstdio>
#include <limits>

namespace kelvary {
namespace {

constexpr int kSecondsPerDay = 86400;
// VB's date serial 0 is 1899-12-30.
const QDate kSerialEpoch(1899, 12, 30);

[[noreturn]] void raise(long number) { throw VbError::standard(number); }

double roundHalfEven(double value) { return std::nearbyint(value); }

template <typename T>
T checkedRound(double value) {
    if (std::isnan(value)) raise(vberr::Overflow);
    const double r = roundHalfEven(value);
    if (r < static_cast<double>(std::numeric_limits<T>::min()) ||
        r > static_cast<double>(std::numeric_limits<T>::max()))
        raise(vberr::Overflow);
    return static_cast<T>(r);
}

double dateSerial(const VbDate& d) {
    return static_cast<double>(kSerialEpoch.daysTo(d.date)) +
           static_cast<double>(d.secondsOfDay) / kSecondsPerDay;
}

VbDate dateFromSerial(double serial) {
    if (std::isnan(serial) || std::fabs(serial) > 2958465.0) raise(vberr::Overflow);
    double days = std::floor(serial);
    // VB stores times before 1899-12-30 as negative day with positive fraction
    // of the day's time; the common case (positive serials) is a plain split.
    double fraction = std::fabs(serial - std::trunc(serial));
    if (serial < 0) days = std::ceil(serial);
    int seconds = static_cast<int>(std::llround(fraction * kSecondsPerDay));
    if (seconds >= kSecondsPerDay) {
        seconds -= kSecondsPerDay;
        days += 1;
    }
    return VbDate{kSerialEpoch.addDays(static_cast<qint64>(days)), seconds};
}

QString twoDigits(int v) { return QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0')); }

QString dateText(const VbDate& d) {
    const int h = d.secondsOfDay / 3600;
    const int m = (d.secondsOfDay / 60) % 60;
    const int s = d.secondsOfDay % 60;
    const QString time = QStringLiteral("%1:%2:%3").arg(h).arg(twoDigits(m)).arg(twoDigits(s));
    if (d.date == kSerialEpoch && d.secondsOfDay != 0) return time;
    const QString day = QStringLiteral("%1/%2/%3")
                            .arg(d.date.year(), 4, 10, QLatin1Char('0'))
                            .arg(twoDigits(d.date.month()))
                            .arg(twoDigits(d.date.day()));
    return d.secondsOfDay == 0 ? day : day + QLatin1Char(' ') + time;
}

QString currencyText(Currency c) {
    const bool negative = c.scaled < 0;
    const std::uint64_t magnitude =
        negative ? 0 - static_cast<std::uint64_t>(c.scaled) : static_cast<std::uint64_t>(c.scaled);
    QString text = QString::number(magnitude / 10000);
    std::uint64_t fraction = magnitude % 10000;
    if (fraction != 0) {
        QString digits = QStringLiteral("%1").arg(fraction, 4, 10, QLatin1Char('0'));
        while (digits.endsWith(QLatin1Char('0'))) digits.chop(1);
        text += QLatin1Char('.') + digits;
    }
    return negative ? QLatin1Char('-') + text : text;
}

}  // namespace

Currency Currency::fromDouble(double value) {
    const double scaled = roundHalfEven(value * 10000.0);
    if (std::isnan(scaled) || std::fabs(scaled) > 9.2e18) raise(vberr::Overflow);
    return Currency{static_cast<std::int64_t>(scaled)};
}

QDateTime VbDate::toDateTime() const {
    return QDateTime(date, QTime(0, 0).addSecs(secondsOfDay));
}

VbDate VbDate::fromDateTime(const QDateTime& dt) {
    return VbDate{dt.date(), dt.time().msecsSinceStartOfDay() / 1000};
}

Variant Variant::null() { return Variant(Storage(NullTag{})); }
Variant Variant::fromInteger(std::int16_t value) { return Variant(Storage(IntegerValue{value})); }
Variant Variant::fromLong(std::int32_t value) { return Variant(Storage(value)); }

VarType Variant::type() const {
    switch (value_.index()) {
    case 0: return VarType::Empty;
    case 1: return VarType::Null;
    case 2: return VarType::Integer;
    case 3: return VarType::Long;
    case 4: return VarType::Double;
    case 5: return VarType::Currency;
    case 6: return VarType::Date;
    case 7: return VarType::String;
    default: return VarType::Boolean;
    }
}

bool Variant::isNumber() const {
    const VarType t = type();
    return t == VarType::Integer || t == VarType::Long || t == VarType::Double ||
           t == VarType::Currency;
}

bool Variant::isNumeric() const {
    switch (type()) {
    case VarType::Empty:
    case VarType::Boolean:
    case VarType::Integer:
    case VarType::Long:
    case VarType::Double:
    case VarType::Currency: return true;
    case VarType::String: {
        double ignored = 0;
        return vbParseNumber(std::get<QString>(value_), ignored);
    }
    default: return false;
    }
}

bool Variant::isDate() const {
    if (type() == VarType::Date) return true;
    if (type() != VarType::String) return false;
    VbDate ignored;
    return vbParseDate(std::get<QString>(value_), ignored);
}

QString Variant::toString() const {
    switch (type()) {
    case VarType::Empty: return QString();
    case VarType::Null: raise(vberr::InvalidUseOfNull);
    case VarType::Integer: return QString::number(std::get<IntegerValue>(value_).v);
    case VarType::Long: return QString::number(std::get<std::int32_t>(value_));
    case VarType::Double: return vbDoubleText(std::get<double>(value_));
    case VarType::Currency: return currencyText(std::get<Currency>(value_));
    case VarType::Date: return dateText(std::get<VbDate>(value_));
    case VarType::String: return std::get<QString>(value_);
    case VarType::Boolean:
        return std::get<bool>(value_) ? QStringLiteral("True") : QStringLiteral("False");
    }
    return QString();
}

QString Variant::text() const { return isNull() ? QString() : toString(); }

double Variant::toDouble() const {
    switch (type()) {
    case VarType::Empty: return 0.0;
    case VarType::Null: raise(vberr::InvalidUseOfNull);
    case VarType::Integer: return std::get<IntegerValue>(value_).v;
    case VarType::Long: return std::get<std::int32_t>(value_);
    case VarType::Double: return std::get<double>(value_);
    case VarType::Currency: return std::get<Currency>(value_).toDouble();
    case VarType::Date: return dateSerial(std::get<VbDate>(value_));
    case VarType::Boolean: return std::get<bool>(value_) ? -1.0 : 0.0;
    case VarType::String: {
        const QString& s = std::get<QString>(value_);
        double number = 0;
        if (vbParseNumber(s, number)) return number;
        raise(vberr::TypeMismatch);
    }
    }
    return 0.0;
}

std::int32_t Variant::toLong() const {
    if (type() == VarType::Long) return std::get<std::int32_t>(value_);
    if (type() == VarType::Currency) {
        // Currency keeps four exact decimals; round from the exact value.
        return checkedRound<std::int32_t>(std::get<Currency>(value_).toDouble());
    }
    return checkedRound<std::int32_t>(toDouble());
}

std::int16_t Variant::toInteger() const { return checkedRound<std::int16_t>(toDouble()); }

Currency Variant::toCurrency() const {
    if (type() == VarType::Currency) return std::get<Currency>(value_);
    return Currency::fromDouble(toDouble());
}

bool Variant::toBool() const {
    switch (type()) {
    case VarType::Boolean: return std::get<bool>(value_);
    case VarType::Null: raise(vberr::InvalidUseOfNull);
    case VarType::String: {
        const QString s = std::get<QString>(value_).trimmed();
        if (s.compare(QStringLiteral("True"), Qt::CaseInsensitive) == 0) return true;
        if (s.compare(QStringLiteral("False"), Qt::CaseInsensitive) == 0) return false;
        return toDouble() != 0.0;
    }
    default: return toDouble() != 0.0;
    }
}

VbDate Variant::toDate() const {
    switch (type()) {
    case VarType::Date: return std::get<VbDate>(value_);
    case VarType::Null: raise(vberr::InvalidUseOfNull);
    case VarType::String: {
        VbDate d;
        if (vbParseDate(std::get<QString>(value_), d)) return d;
        double serial = 0;
        if (vbParseNumber(std::get<QString>(value_), serial)) return dateFromSerial(serial);
        raise(vberr::TypeMismatch);
    }
    default: return dateFromSerial(toDouble());
    }
}

QString vbDoubleText(double value) {
    if (value == 0.0) return QStringLiteral("0");
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15G", value);
    QString text = QString::fromLatin1(buffer);
    // C writes exponents with at least two digits, as VB does ("1E+15", "1E-05").
    return text;
}

namespace {

// The runtime of a Japanese system reads the full-width forms of digits,
// signs, point, comma and letters (as typed with an input method) as their
// ASCII forms, and the ideographic space as a blank.
QString asciiForms(const QString& input) {
    QString s = input;
    for (QChar& c : s) {
        const char16_t u = c.unicode();
        if (u >= 0xFF01 && u <= 0xFF5E) c = QChar(static_cast<char16_t>(u - 0xFF01 + 0x21));
        else if (u == 0x3000) c = QLatin1Char(' ');
    }
    return s;
}

}  // namespace

bool vbParseNumber(const QString& input, double& out) {
    QString s = asciiForms(input).trimmed();
    if (s.isEmpty()) return false;
    if (s.startsWith(QLatin1String("&H"), Qt::CaseInsensitive)) {
        bool ok = false;
        const qlonglong v = s.mid(2).toLongLong(&ok, 16);
        if (!ok) return false;
        out = static_cast<double>(v);
        return true;
    }
    bool negative = false;
    if (s.startsWith(QLatin1Char('(')) && s.endsWith(QLatin1Char(')'))) {
        negative = true;
        s = s.mid(1, s.size() - 2).trimmed();
    }
    s.remove(QLatin1Char(','));
    static const QRegularExpression number(
        QStringLiteral("^[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eEdD][+-]?[0-9]+)?$"));
    if (!number.match(s).hasMatch()) return false;
    s.replace(QLatin1Char('d'), QLatin1Char('e')).replace(QLatin1Char('D'), QLatin1Char('e'));
    bool ok = false;
    const double v = s.toDouble(&ok);
    if (!ok) return false;
    out = negative ? -v : v;
    return true;
}

bool vbParseDate(const QString& input, VbDate& out) {
    static const QRegularExpression pattern(QStringLiteral(
        "^\\s*(\\d{4})[/-](\\d{1,2})[/-](\\d{1,2})(?:[ T]+(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}))?)?\\s*$"));
    const QRegularExpressionMatch m = pattern.match(input);
    if (!m.hasMatch()) return false;
    const QDate date(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    if (!date.isValid()) return false;
    int seconds = 0;
    if (m.hasCaptured(4)) {
        const int h = m.captured(4).toInt();
        const int mi = m.captured(5).toInt();
        const int se = m.hasCaptured(6) ? m.captured(6).toInt() : 0;
        if (h > 23 || mi > 59 || se > 59) return false;
        seconds = h * 3600 + mi * 60 + se;
    }
    out = VbDate{date, seconds};
    return true;
}

}  // namespace kelvary
