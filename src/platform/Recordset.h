// Recordset: the rows of one query, read completely and detached from the
// connection, walked the way ADO recordsets are (EOF/BOF, MoveNext, fields by
// name or position). Each field carries the ADO data type that its declared
// column type stands for, so a row copy can turn values back into literals.
// A default-constructed Recordset is "Nothing": every use of it raises
// error 91, as using an unset object variable did.
#pragma once

#include "platform/Variant.h"

#include <QList>
#include <QString>

namespace kelvary {

// ADO data type numbers (DataTypeEnum).
namespace ado {
constexpr int adSmallInt = 2;
constexpr int adInteger = 3;
constexpr int adSingle = 4;
constexpr int adDouble = 5;
constexpr int adCurrency = 6;
constexpr int adDate = 7;
constexpr int adBoolean = 11;
constexpr int adUnsignedTinyInt = 17;
constexpr int adGUID = 72;
constexpr int adNumeric = 131;
constexpr int adVarWChar = 202;
constexpr int adLongVarWChar = 203;
constexpr int adVarBinary = 204;
constexpr int adLongVarBinary = 205;
}  // namespace ado

struct FieldInfo {
    QString name;
    int type = ado::adVarWChar;
};

class Recordset {
public:
    Recordset() = default;  // Nothing
    Recordset(QList<FieldInfo> fields, QList<QList<Variant>> rows);

    bool isNothing() const { return !open_; }

    // True on an empty set; the cursor starts on the first row otherwise and
    // only moves forward, which is all the program's reading needs.
    bool eof() const;
    long recordCount() const;

    void moveNext();  // at EOF raises 3021

    int fieldCount() const;
    const QString& fieldName(int index) const;
    int fieldType(int index) const;
    // Names compare without regard to case; a missing name raises 3265.
    int fieldIndex(const QString& name) const;
    bool hasField(const QString& name) const;

    // The current row's value; raises 3021 at EOF.
    const Variant& value(int index) const;
    const Variant& value(const QString& name) const;
    const Variant& operator[](const QString& name) const { return value(name); }

private:
    void requireOpen() const;
    void requireCurrentRow() const;
    void requireFieldIndex(int index) const;

    bool open_ = false;
    QList<FieldInfo> fields_;
    QList<QList<Variant>> rows_;
    qsizetype position_ = 0;  // rows_.size() is EOF
};

}  // namespace kelvary
