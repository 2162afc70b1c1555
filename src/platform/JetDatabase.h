// JetDatabase: reads the sibling program's own Jet database (Access 97,
// 2000 and 2002-2003 files) through libmdb. The rest of the program only knows
// SQLite, so a Jet file is turned into an SQLite copy with the same tables,
// columns and rows, and that copy is attached where the Jet file was named.
// Declared column types of the copy are chosen so that the fields read back
// with the ADO types Jet's provider reported (see SqliteValues.h).
#pragma once

#include <QString>

namespace kelvary::jet {

// True when the file begins with a Jet database header ("Standard Jet DB").
bool isJetFile(const QString& path);

// Writes every user table of the Jet database `jetFile` into a new SQLite
// database at `sqliteFile` (which must not exist). Raises a VbError, with the
// Jet file named, when the file is held by another program, cut short or
// damaged.
void copyToSqlite(const QString& jetFile, const QString& sqliteFile);

// The SQLite copy of `jetFile` in `folder`, made under a temporary name and
// renamed into place; an existing copy is used again while the Jet file keeps
// its size and modification time.
QString sqliteCopy(const QString& jetFile, const QString& folder);

// The file to attach for a database file named by the user: the file itself,
// or for a Jet file its copy in the program folder's Temp.
QString attachableFile(const QString& file);

}  // namespace kelvary::jet
