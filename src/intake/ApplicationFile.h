// Reading helpers shared by the two readers of the application data file
// (clsApply2Data, clsAnlBasicInfo): finding a section header and reading one
// record of a section. The file is sectioned as "[BasicInfo]", "[UserInfo]"
// and "[DocData]", each a run of fixed-size records closed by "[End]".
#pragma once

#include "platform/SequentialInput.h"
#include "platform/Variant.h"

#include <QList>
#include <QString>

namespace kelvary::intake {

// The first field of the record that closes a section.
inline constexpr char kEndRecord[] = "[End]";

// Reads whole lines until one whose first comma-separated field, with every
// double quote removed, begins with the header; returns that line (the file
// then stands right after it), or an empty text at the end of the file.
QString searchHeader(SequentialInput& file, const QString& header);

// Reads one record of fieldCount fields. A record whose first field is
// "[End]" is returned with that field alone: the parent program may end its
// file right after it, without the record's other fields.
QList<Variant> readRecord(SequentialInput& file, int fieldCount);

bool isEndRecord(const QList<Variant>& record);

}  // namespace kelvary::intake
