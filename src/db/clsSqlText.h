// clsSqlText: assembles one INSERT or UPDATE statement as Jet SQL text. Values
// become literals by a small field-type code (0 number, 1 text, 2 date, 3 take
// it from the ADO type of a source field), so a row read from one table can be
// written into another field by field. One object serves one statement.
#pragma once

#include "platform/SqliteConnection.h"
#include "platform/Variant.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace kelvary {

class clsSqlText {
public:
    // Appends the field and its literal. With field type 3 the ADO type
    // decides, and fieldType is overwritten with the code it maps to.
    void SetData(const QString& field, const Variant& value, int& fieldType, int adoType = 0);
    // The same for a field type given as a constant.
    void SetData(const QString& field, const Variant& value, int&& fieldType, int adoType = 0);

    // "insert into T(A,B) values(1,'x')"
    QString GetInsertSql() const;
    // "update T set A=1,B='x' where " + the condition (" where " even when it is empty)
    QString GetUpdateSql() const;
    void SetTable(const QString& table);
    void SetWhere(const QString& where);
    // "update T set A=1,B='x'"
    QString GetNoWhereUpdateSql() const;

    // The fields in the order they were set, and the values their literals
    // stand for, in the same order: what a statement prepared once for many
    // rows is run with, each stored as the literal would be. Nothing, after
    // the refusal is reported, when a value did not convert.
    const QStringList& GetFields() const { return fieldNames_; }
    const QString& GetTable() const { return table_; }
    std::optional<QList<SqlValue>> GetValues() const;

private:
    // The value by field type (a number by the ADO type of its column, when
    // one is given) as its literal stands for it; nothing when a number or a
    // date does not convert.
    std::optional<SqlValue> mstrConvertValue(const Variant& value, int fieldType, int adoType) const;
    // Raises the refusal of the first value that did not convert.
    void mRequireAllValues() const;

    QString table_;
    QString where_;
    QStringList fieldNames_;
    QList<SqlValue> values_;
    // Why the statement cannot be built (the column and its value), or empty.
    QString refused_;
};

}  // namespace kelvary
