// Reading helpers shared by the two readers of the application data file
// (clsApply2Data, clsAnlBasicInfo): finding a section header and reading one
// record of a section. The file is sectioned as "[BasicInfo]", "[UserInfo]"
// and "[DocData]", each a run of fixed-size records closed by "[End]".
#pragma once

#include "platform/SequentialInput.h"
#include "platform/Variant.h"

#include <QList>
#include <QString>
#include <QStringList>

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

// Reports, through the error display in mode 0 with the given place, the
// first record of a section whose key is blank (a blank line, which shifts
// every later record) or not one the section knows. Later ones in the same
// section are not reported again.
class SectionKeyCheck {
public:
    SectionKeyCheck(QString section, QStringList knownKeys, QString place);
    void check(const Variant& key, int line);

private:
    QString section_;
    QStringList knownKeys_;
    QString place_;
    bool reported_ = false;
};

// A folder or program path as the parent program writes it: backslashes are
// separators, and a relative path is taken from baseFolder (the folder of the
// application data file, so an application and its Ledra.mdb travel together).
QString resolvedPath(const QString& value, const QString& baseFolder);

// The sibling database the file's [BasicInfo] names through LedraDataPath;
// empty when it names none or the file cannot be read.
QString siblingDatabaseOf(const QString& applicationFile);

// True when the bytes hold a "[BasicInfo]" or "[DocData]" header line.
bool hasApplicationSections(const QByteArray& bytes);

}  // namespace kelvary::intake
