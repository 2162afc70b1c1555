// Reading and binding values between SQLite statements and Variants.
#include "platform/SqliteValues.h"

#include "platform/Recordset.h"

#include <sqlite3.h>

#include <QStringDecoder>
#include <QTime>

#include <limits>

namespace kelvary::sqlite {

namespace {

QString columnText(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    // A stored text that begins with U+FEFF keeps it: it is a character of
    // the value here, not a byte order mark to skip.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(text, sqlite3_column_bytes(statement, column)));
}

// An integer as a Long when it fits, as VB widened to Double otherwise.
Variant integerValue(sqlite3_int64 value) {
    if (value >= std::numeric_limits<std::int32_t>::min() &&
        value <= std::numeric_limits<std::int32_t>::max())
        return Variant::fromLong(static_cast<std::int32_t>(value));
    return Variant(static_cast<double>(value));
}

Variant naturalValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL: return Variant::null();
    case SQLITE_INTEGER: return integerValue(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT: return Variant(sqlite3_column_double(statement, column));
    default: return Variant(columnText(statement, column));
    }
}

bool isNumberStored(int storage) { return storage == SQLITE_INTEGER || storage == SQLITE_FLOAT; }

}  // namespace

int adoTypeOfDeclaredType(const QString& declaredType) {
    QString type = declaredType.trimmed().toUpper();
    if (const qsizetype parenthesis = type.indexOf(QLatin1Char('(')); parenthesis >= 0)
        type = type.left(parenthesis).trimmed();
    if (type.isEmpty()) return 0;
    if (type == QLatin1String("INTEGER")) return ado::adInteger;
    if (type == QLatin1String("SMALLINT")) return ado::adSmallInt;
    if (type == QLatin1String("DOUBLE")) return ado::adDouble;
    if (type == QLatin1String("CURRENCY")) return ado::adCurrency;
    if (type == QLatin1String("DATETIME")) return ado::adDate;
    if (type == QLatin1String("BOOLEAN")) return ado::adBoolean;
    if (type == QLatin1String("TEXT")) return ado::adVarWChar;
    if (type == QLatin1String("LONGTEXT")) return ado::adLongVarWChar;
    // The further types of a Jet database's copy.
    if (type == QLatin1String("BYTE")) return ado::adUnsignedTinyInt;
    if (type == QLatin1String("SINGLE")) return ado::adSingle;
    if (type == QLatin1String("DECIMAL")) return ado::adNumeric;
    if (type == QLatin1String("GUID")) return ado::adGUID;
    if (type == QLatin1String("BINARY")) return ado::adVarBinary;
    if (type == QLatin1String("LONGBINARY")) return ado::adLongVarBinary;
    // Other names by SQLite's own affinity rules, so a foreign table still reads.
    if (type.contains(QLatin1String("INT"))) return ado::adInteger;
    if (type.contains(QLatin1String("CHAR")) || type.contains(QLatin1String("CLOB")) ||
        type.contains(QLatin1String("TEXT")))
        return ado::adVarWChar;
    if (type.contains(QLatin1String("REAL")) || type.contains(QLatin1String("FLOA")) ||
        type.contains(QLatin1String("DOUB")))
        return ado::adDouble;
    if (type == QLatin1String("BLOB")) return 0;
    return ado::adNumeric;
}

int adoTypeOfValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL: return 0;
    case SQLITE_INTEGER: {
        const sqlite3_int64 v = sqlite3_column_int64(statement, column);
        return v >= std::numeric_limits<std::int32_t>::min() &&
                       v <= std::numeric_limits<std::int32_t>::max()
                   ? ado::adInteger
                   : ado::adDouble;
    }
    case SQLITE_FLOAT: return ado::adDouble;
    default: return ado::adVarWChar;
    }
}

Variant readValue(sqlite3_stmt* statement, int column, int adoType) {
    const int storage = sqlite3_column_type(statement, column);
    if (storage == SQLITE_NULL) return Variant::null();
    switch (adoType) {
    case ado::adSmallInt:
    case ado::adUnsignedTinyInt:
        if (storage == SQLITE_INTEGER) {
            const sqlite3_int64 v = sqlite3_column_int64(statement, column);
            if (v >= std::numeric_limits<std::int16_t>::min() &&
                v <= std::numeric_limits<std::int16_t>::max())
                return Variant::fromInteger(static_cast<std::int16_t>(v));
        }
        break;
    case ado::adSingle:
    case ado::adDouble:
    case ado::adNumeric:
        if (isNumberStored(storage)) return Variant(sqlite3_column_double(statement, column));
        break;
    case ado::adCurrency:
        if (storage == SQLITE_INTEGER) return Variant(Currency{sqlite3_column_int64(statement, column) * 10000});
        if (storage == SQLITE_FLOAT)
            return Variant(Currency::fromDouble(sqlite3_column_double(statement, column)));
        break;
    case ado::adDate:
        if (storage == SQLITE_TEXT) {
            VbDate date;
            if (vbParseDate(columnText(statement, column), date)) return Variant(date);
        }
        break;
    case ado::adBoolean:
        if (isNumberStored(storage)) return Variant(sqlite3_column_double(statement, column) != 0.0);
        break;
    case ado::adVarWChar:
    case ado::adLongVarWChar:
    case ado::adGUID: return Variant(columnText(statement, column));
    default: break;
    }
    return naturalValue(statement, column);
}

QString storedDateText(const VbDate& date) {
    QString text = date.date.toString(QStringLiteral("yyyy-MM-dd"));
    if (date.secondsOfDay != 0)
        text += QLatin1Char(' ') +
                QTime(0, 0).addSecs(date.secondsOfDay).toString(QStringLiteral("HH:mm:ss"));
    return text;
}

int bindValue(sqlite3_stmt* statement, int index, const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Null: return sqlite3_bind_null(statement, index);
    case VarType::Integer:
    case VarType::Long: return sqlite3_bind_int64(statement, index, value.toLong());
    case VarType::Boolean: return sqlite3_bind_int(statement, index, value.toBool() ? 1 : 0);
    case VarType::Double:
    case VarType::Currency: return sqlite3_bind_double(statement, index, value.toDouble());
    case VarType::Date: {
        const QByteArray text = storedDateText(value.toDate()).toUtf8();
        return sqlite3_bind_text(statement, index, text.constData(), static_cast<int>(text.size()),
                                 SQLITE_TRANSIENT);
    }
    case VarType::String: {
        const QByteArray text = value.toString().toUtf8();
        return sqlite3_bind_text(statement, index, text.constData(), static_cast<int>(text.size()),
                                 SQLITE_TRANSIENT);
    }
    }
    return SQLITE_MISUSE;
}

}  // namespace kelvary::sqlite
