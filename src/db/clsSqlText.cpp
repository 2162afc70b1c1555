// Literal building and statement assembly of clsSqlText. Text literals double
// their single quotes, so a name such as O'Brien建設 is stored as written
// instead of breaking the statement.
#include "db/clsSqlText.h"

#include "platform/Recordset.h"
#include "db/DbErrorReport.h"

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

// Format(value, "yyyy/mm/dd"): dates, texts that read as dates and numbers
// (day serials) are formatted; any other text stays as it is.
QString dateText(const Variant& value) {
    if (value.isDate() || value.isNumber())
        return value.toDate().date.toString(QStringLiteral("yyyy/MM/dd"));
    return value.text();
}

void appendListItem(QString& list, const QString& item) {
    if (!list.isEmpty()) list += QLatin1Char(',');
    list += item;
}

}  // namespace

void clsSqlText::SetData(const QString& field, const Variant& value, int& fieldType, int adoType) {
    try {
        if (fieldType == kFromAdoType) fieldType = fieldTypeOfAdoType(field, adoType);
        const QString literal = mstrConvertValue(value, fieldType);
        appendListItem(setClause_, field + QLatin1Char('=') + literal);
        appendListItem(fields_, field);
        appendListItem(values_, literal);
    } catch (...) {
        reportDbError(QStringLiteral("SetData"), 0);
    }
}

void clsSqlText::SetData(const QString& field, const Variant& value, int&& fieldType, int adoType) {
    SetData(field, value, fieldType, adoType);
}

QString clsSqlText::mstrConvertValue(const Variant& value, int fieldType) const {
    try {
        switch (fieldType) {
        case kNumber: {
            const QString text = value.text();
            return text.isEmpty() ? QStringLiteral("null") : text;
        }
        case kText: {
            QString text = value.text();
            text.replace(QLatin1Char('\''), QLatin1String("''"));
            return QLatin1Char('\'') + text + QLatin1Char('\'');
        }
        case kDate:
            if (value.text().isEmpty()) return QStringLiteral("null");
            return QLatin1Char('#') + dateText(value) + QLatin1Char('#');
        default: return QString();
        }
    } catch (...) {
        reportDbError(QStringLiteral("mstrConvertValue"), 0);
        return QString();
    }
}

QString clsSqlText::GetInsertSql() const {
    try {
        return QStringLiteral("insert into ") + table_ + QLatin1Char('(') + fields_ +
               QStringLiteral(") values(") + values_ + QLatin1Char(')');
    } catch (...) {
        reportDbError(QStringLiteral("GetInsertSql"), 0);
        return QString();
    }
}

QString clsSqlText::GetUpdateSql() const {
    try {
        return QStringLiteral("update ") + table_ + QStringLiteral(" set ") + setClause_ +
               QStringLiteral(" where ") + where_;
    } catch (...) {
        reportDbError(QStringLiteral("GetUpdateSql"), 0);
        return QString();
    }
}

void clsSqlText::SetTable(const QString& table) {
    try {
        table_ = table;
    } catch (...) {
        reportDbError(QStringLiteral("SetTable"), 0);
    }
}

void clsSqlText::SetWhere(const QString& where) {
    try {
        where_ = where;
    } catch (...) {
        reportDbError(QStringLiteral("SetWhere"), 0);
    }
}

QString clsSqlText::GetNoWhereUpdateSql() const {
    try {
        return QStringLiteral("update ") + table_ + QStringLiteral(" set ") + setClause_;
    } catch (...) {
        reportDbError(QStringLiteral("GetNoWhereUpdateSql"), 1);
        return QString();
    }
}

}  // namespace kelvary
