// The program's data access routines: one shared connection to the working
// database SystemData.mdb, queries that return detached recordsets, statements
// run as complete texts in the Jet dialect, single-value lookups, new keys,
// emptying a working table and re-pointing the linked tables of the sibling
// financial-statements database. Each routine reports its own errors through
// ShowErrMsg and then returns its empty result.
#pragma once

#include "db/clsSqlText.h"
#include "platform/Recordset.h"
#include "platform/SqliteConnection.h"
#include "platform/Variant.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace kelvary {

// "provider=microsoft.jet.oledb.4.0;data source=" + the path of SystemData.mdb.
extern QString gstrConnectionString;
// The connection of the run; empty before start-up opens it and after the end.
extern std::shared_ptr<SqliteConnection> gobjConnection;

// The table that lists the linked tables (TableName) and the file each reads (DataSource).
inline constexpr char kLinkTableRegistry[] = "tblLinkTable";

// Opens a connection on gstrConnectionString with its linked tables in place;
// empty after an error.
std::shared_ptr<SqliteConnection> gobjOpenConnection();

// The rows of one query on gobjConnection; Nothing after an error.
Recordset gobjMakeRecordset(const QString& sql);

// Runs one statement on gobjConnection; true on success.
bool gblnExecuteSql(const QString& sql);

// Rows written into one table through one statement on gobjConnection,
// prepared for the fields of the first row (and again only when a row brings
// others), all in one transaction that Commit or the end of the object
// closes. A row that clsSqlText refused or the database did not take is
// reported and left out; the others are written.
class clsInsertRows {
public:
    clsInsertRows() = default;
    ~clsInsertRows();
    clsInsertRows(const clsInsertRows&) = delete;
    clsInsertRows& operator=(const clsInsertRows&) = delete;

    // True when the row was written.
    bool Insert(const clsSqlText& row);
    void Commit();

private:
    std::shared_ptr<SqliteConnection> connection_;
    std::optional<PreparedStatement> statement_;
    QString table_;
    QStringList fields_;
    bool began_ = false;
};

// The field's value in the first row of table (where the condition holds);
// defaultValue when there is no row, Null when the row holds Null.
Variant gvarGetData(const QString& field, const QString& table, const QString& where,
                    const Variant& defaultValue);

// The largest value of the field (0 for no rows); a new key is this + 1.
std::int32_t glngGetMaxValue(const QString& field, const QString& table, const QString& where);

// Points the linked table at the database file. Its result is always false.
bool gRefreshLinkTable(const QString& tableName, const QString& databasePath);

// Deletes every row of a working table.
void gInitTable(const QString& tableName);

}  // namespace kelvary
