// Cursor walking and field lookup of a detached recordset, with the errors
// ADO raised for a missing field or a cursor beyond either end.
#include "platform/Recordset.h"

#include "platform/VbError.h"

namespace kelvary {

namespace {

[[noreturn]] void raiseObjectNotSet() { throw VbError::standard(vberr::ObjectNotSet); }

[[noreturn]] void raiseNoCurrentRecord() { throw VbError::standard(vberr::NoCurrentRecord); }

// Names that differ only in case are of one length; comparing the lengths
// first spares the case-blind comparison of nearly every other column.
bool sameName(const QString& a, const QString& b) {
    return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

}  // namespace

Recordset::Recordset(QList<FieldInfo> fields, QList<QList<Variant>> rows)
    : open_(true), fields_(std::move(fields)), rows_(std::move(rows)) {}

void Recordset::requireOpen() const {
    if (!open_) raiseObjectNotSet();
}

void Recordset::requireCurrentRow() const {
    requireOpen();
    if (position_ >= rows_.size()) raiseNoCurrentRecord();
}

void Recordset::requireFieldIndex(int index) const {
    requireOpen();
    if (index < 0 || index >= fields_.size()) throw VbError::standard(vberr::ItemNotFound);
}

bool Recordset::eof() const {
    requireOpen();
    return rows_.isEmpty() || position_ >= rows_.size();
}

long Recordset::recordCount() const {
    requireOpen();
    return static_cast<long>(rows_.size());
}

void Recordset::moveNext() {
    if (eof()) raiseNoCurrentRecord();
    ++position_;
}

int Recordset::fieldCount() const {
    requireOpen();
    return static_cast<int>(fields_.size());
}

const QString& Recordset::fieldName(int index) const {
    requireFieldIndex(index);
    return fields_[index].name;
}

int Recordset::fieldType(int index) const {
    requireFieldIndex(index);
    return fields_[index].type;
}

int Recordset::fieldIndex(const QString& name) const {
    requireOpen();
    for (qsizetype i = 0; i < fields_.size(); ++i) {
        if (sameName(fields_[i].name, name)) return static_cast<int>(i);
    }
    throw VbError::standard(vberr::ItemNotFound);
}

bool Recordset::hasField(const QString& name) const {
    requireOpen();
    for (const FieldInfo& field : fields_) {
        if (sameName(field.name, name)) return true;
    }
    return false;
}

const Variant& Recordset::value(int index) const {
    requireFieldIndex(index);
    requireCurrentRow();
    return rows_[position_][index];
}

const Variant& Recordset::value(const QString& name) const {
    return value(fieldIndex(name));
}

}  // namespace kelvary
