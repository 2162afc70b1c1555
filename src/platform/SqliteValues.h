// How values cross between SQLite and the program: a column's declared type
// names its ADO type (INTEGER, SMALLINT, DOUBLE, CURRENCY, DATETIME, BOOLEAN,
// TEXT, LONGTEXT, and for the copy of a Jet database also BYTE, SINGLE,
// DECIMAL, GUID, BINARY and LONGBINARY), and a stored value is read back as the Variant of that type
// (dates from their 'YYYY-MM-DD[ HH:MM:SS]' text, Booleans from 1/0).
// A value stored against its column's type comes back as what it is.
#pragma once

#include "platform/Variant.h"

#include <QString>

struct sqlite3_stmt;

namespace kelvary::sqlite {

// ADO type of a declared column type; 0 when the text names none (an
// expression column has no declared type: its values decide).
int adoTypeOfDeclaredType(const QString& declaredType);

// ADO type of a stored value (for columns without a declared type); 0 for NULL.
int adoTypeOfValue(sqlite3_stmt* statement, int column);

Variant readValue(sqlite3_stmt* statement, int column, int adoType);

// Binds a Variant to parameter index (from 1): dates as their stored text,
// Booleans as 1/0, Empty and Null as NULL.
int bindValue(sqlite3_stmt* statement, int index, const Variant& value);

// The stored text of a date: 'YYYY-MM-DD', with ' HH:MM:SS' when it has a time.
QString storedDateText(const VbDate& date);

}  // namespace kelvary::sqlite
