// Literal building and statement assembly of clsSqlText. Text literals double
// their single quotes, so a name such as O'Brien建設 is stored as written
// instead of breaking the statement.
//
// Values arrive from the application file and the sibling database, both
// written by other programs, so a number or a date is never spliced in as
// its text: it is converted as the VB runtime converts it (CDbl, CDate) and
// written in the literal form of its type. A value that does not convert
// leaves the statement unbuilt; the member that would have returned it
// reports the table, the column and the value, once.
#include "db/clsSqlText.h"

#include "platform/Recordset.h"
#include "db/DbErrorReport.h"
#include "platform/VbError.h"

#include <cmath>
#include <optional>

namespace kelvary {

namespace {

constexpr int kNumber = 0;
constexpr int kText = 1;
constexpr int kDate = 2;
constexpr int kFromAdoType = 3;

int fieldTypeOfAdoType(const QString& field, int adoType) {
    switch (adoType) {
    case ado::adSmallInt:
    case ado::adInteger:
    case ado::adSingle:
    case ado::adDouble:
    case ado::adCurrency:
    case ado::adBoolean: return kNumber;
    case ado::adDate: return kDate;
    case ado::adVarWChar:
    case ado::adLongVarWChar: return kText;
    default:
        reportDbNotice(QStringLiteral("clsSqlText(SetData)\r\n不明なFieldType") + field +
                       QStringLiteral("(タイプ:") + QString::number(adoType) + QStringLiteral(")"));
        return kText;
    }
}

// Blanks at either end, the ideographic space of an input method included:
// a field of nothing else holds no value.
QString withoutBlanks(const QString& text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    const auto blank = [](QChar c) { return c == QLatin1Char(' ') || c == QChar(u'\u3000'); };
    while (first < last && blank(text[first])) ++first;
    while (last > first && blank(text[last - 1])) --last;
    return text.mid(first, last - first);
}

bool holdsNoValue(const Variant& value) {
    return value.isNull() || value.isEmpty() || (value.isString() && withoutBlanks(value.text()).isEmpty());
}

// The value converted to the column's type as CInt, CLng, CCur, CBool or
// CDbl do, written as CStr writes it; nothing when it does not convert or
// lies outside what the column holds. Without a column type, CDbl.
std::optional<QString> numberLiteral(const Variant& value, int adoType) {
    if (value.isString()) {
        // Blanks around the word go, as they do around a number.
        const QString word = withoutBlanks(value.text().trimmed());
        if (word.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) return QStringLiteral("True");
        if (word.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) return QStringLiteral("False");
    }
    try {
        switch (adoType) {
        case ado::adSmallInt: return QString::number(value.toInteger());
        case ado::adInteger: return QString::number(value.toLong());
        case ado::adCurrency: return Variant(value.toCurrency()).text();
        case ado::adBoolean: return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        default: break;
        }
        if (value.type() == VarType::Boolean) return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        if (value.type() == VarType::Integer || value.type() == VarType::Long) return value.text();
        const double number = value.toDouble();  // a date gives its serial
        if (!std::isfinite(number)) return std::nullopt;
        if (adoType == ado::adSingle && std::fabs(number) > 3.402823466e38) return std::nullopt;
        // digits, a sign, a point and an exponent, nothing else
        return vbDoubleText(number);
    } catch (const VbError&) {
        return std::nullopt;  // not a number, or too large for the column
    }
}

// The day of a date, a text that reads as a date, or a number taken as a day
// serial; nothing for anything else.
std::optional<QDate> dateValue(const Variant& value) {
    try {
        QDate date;
        double serial = 0;
        if (value.isDate() || value.isNumber()) date = value.toDate().date;
        else if (value.isString() && vbParseNumber(value.text(), serial)) date = Variant(serial).toDate().date;
        // VB's dates run from the year 100 to 9999.
        if (date.isValid() && date.year() >= 100 && date.year() <= 9999) return date;
    } catch (const VbError&) {
        // a serial beyond the calendar
    }
    return std::nullopt;
}

// A value as the refusal shows it: a long text cut, line breaks as blanks.
QString shownValue(const Variant& value) {
    QString text = value.text();
    const qsizetype limit = 60;
    if (text.size() > limit) text = text.left(limit) + QStringLiteral("…");
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

// The literal a converted value is written as: Format(date, "yyyy/mm/dd")
// between #, texts quoted, numbers as CStr writes them.
QString literalOf(const SqlValue& converted) {
    const Variant& value = converted.value;
    if (converted.numberLiteral) return value.text();
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Null: return QStringLiteral("null");
    case VarType::Boolean: return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case VarType::Date:
        return QLatin1Char('#') + value.toDate().date.toString(QStringLiteral("yyyy/MM/dd")) + QLatin1Char('#');
    default: {
        QString text = value.text();
        text.replace(QLatin1Char('\''), QLatin1String("''"));
        return QLatin1Char('\'') + text + QLatin1Char('\'');
    }
    }
}

QString listOf(const QStringList& names, const QList<SqlValue>& values, bool assignments) {
    QString list;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (i > 0) list += QLatin1Char(',');
        if (assignments) list += names[i] + QLatin1Char('=') + literalOf(values[i]);
        else list += literalOf(values[i]);
    }
    return list;
}

}  // namespace

void clsSqlText::SetData(const QString& field, const Variant& value, int& fieldType, int adoType) {
    dbTrapped(QStringLiteral("SetData"), 0, [&] {
        if (fieldType == kFromAdoType) fieldType = fieldTypeOfAdoType(field, adoType);
        const std::optional<SqlValue> converted = mstrConvertValue(value, fieldType, adoType);
        if (!converted && refused_.isEmpty())
            refused_ = QStringLiteral("の項目「") + field + QStringLiteral("」の値「") + shownValue(value) +
                       (fieldType == kNumber ? QStringLiteral("」は数値として読めません。")
                                             : QStringLiteral("」は日付として読めません。"));
        fieldNames_.append(field);
        values_.append(converted.value_or(SqlValue{Variant::null()}));
    });
}

void clsSqlText::SetData(const QString& field, const Variant& value, int&& fieldType, int adoType) {
    SetData(field, value, fieldType, adoType);
}

std::optional<SqlValue> clsSqlText::mstrConvertValue(const Variant& value, int fieldType, int adoType) const {
    // What an unknown field type, or a failure here, used to leave in the
    // statement: nothing between the commas, which no database takes.
    const SqlValue nothing{Variant(QString()), true};
    return dbTrapped(QStringLiteral("mstrConvertValue"), 0, nothing, [&]() -> std::optional<SqlValue> {
        switch (fieldType) {
        case kNumber: {
            if (holdsNoValue(value)) return SqlValue{Variant::null()};
            const std::optional<QString> number = numberLiteral(value, adoType);
            if (!number) return std::nullopt;
            if (*number == QLatin1String("True")) return SqlValue{Variant(true)};
            if (*number == QLatin1String("False")) return SqlValue{Variant(false)};
            return SqlValue{Variant(*number), true};
        }
        case kText: {
            QString text = value.text();
            // A NUL would end the statement text inside the literal.
            text.remove(QChar(u'\0'));
            return SqlValue{Variant(text)};
        }
        case kDate: {
            if (holdsNoValue(value)) return SqlValue{Variant::null()};
            const std::optional<QDate> date = dateValue(value);
            if (!date) return std::nullopt;
            return SqlValue{Variant(*date)};
        }
        default: return nothing;
        }
    });
}

void clsSqlText::mRequireAllValues() const {
    if (!refused_.isEmpty())
        throw VbError(vberr::TypeMismatch, QStringLiteral("テーブル「") + table_ + QStringLiteral("」") + refused_ +
                                               QStringLiteral("この行は書き込みません。"));
}

QString clsSqlText::GetInsertSql() const {
    return dbTrapped(QStringLiteral("GetInsertSql"), 0, QString(), [&] {
        mRequireAllValues();
        return QStringLiteral("insert into ") + table_ + QLatin1Char('(') + fieldNames_.join(QLatin1Char(',')) +
               QStringLiteral(") values(") + listOf(fieldNames_, values_, false) + QLatin1Char(')');
    });
}

QString clsSqlText::GetUpdateSql() const {
    return dbTrapped(QStringLiteral("GetUpdateSql"), 0, QString(), [&] {
        mRequireAllValues();
        return QStringLiteral("update ") + table_ + QStringLiteral(" set ") + listOf(fieldNames_, values_, true) +
               QStringLiteral(" where ") + where_;
    });
}

void clsSqlText::SetTable(const QString& table) { table_ = table; }

void clsSqlText::SetWhere(const QString& where) { where_ = where; }

std::optional<QList<SqlValue>> clsSqlText::GetValues() const {
    return dbTrapped(QStringLiteral("GetValues"), 0, std::nullopt, [&]() -> std::optional<QList<SqlValue>> {
        mRequireAllValues();
        return values_;
    });
}

QString clsSqlText::GetNoWhereUpdateSql() const {
    return dbTrapped(QStringLiteral("GetNoWhereUpdateSql"), 1, QString(), [&] {
        mRequireAllValues();
        return QStringLiteral("update ") + table_ + QStringLiteral(" set ") + listOf(fieldNames_, values_, true);
    });
}

}  // namespace kelvary
