// The data access routines over the shared SQLite connection. Statement texts
// arrive in the Jet dialect and are translated just before they run. Linked
// tables are listed in the registry table of SystemData.mdb (name and file; a
// relative file lies beside the database) and are put in place again whenever
// a connection opens, as Jet kept its links in the file.
#include "db/mdlFunctionDatabase.h"

#include "db/DbErrorReport.h"
#include "platform/JetSql.h"
#include "platform/VbError.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace kelvary {

QString gstrConnectionString;
std::shared_ptr<SqliteConnection> gobjConnection;

namespace {

const QString kRegistry = QString::fromLatin1(kLinkTableRegistry);

SqliteConnection& requireConnection() {
    if (!gobjConnection) throw VbError::standard(vberr::ObjectNotSet);
    return *gobjConnection;
}

// The place text of a failed statement: the routine, then the statement's beginning.
QString statementPlace(const char* routine, const QString& sql) {
    return QString::fromLatin1(routine) + QStringLiteral("\r\n\r\nSQL文：") + sql.left(255) +
           QStringLiteral("\r\n");
}

QString withWhere(QString sql, const QString& where) {
    if (!where.isEmpty()) sql += QStringLiteral(" Where ") + where;
    return sql;
}

// The value after "data source=" in a connection string of key=value pairs.
QString dataSourceOf(const QString& connectionString) {
    for (const QString& part : connectionString.split(QLatin1Char(';'))) {
        const qsizetype equals = part.indexOf(QLatin1Char('='));
        if (equals < 0) continue;
        if (part.left(equals).trimmed().compare(QLatin1String("data source"), Qt::CaseInsensitive) != 0)
            continue;
        QString value = part.mid(equals + 1).trimmed();
        if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
            value = value.mid(1, value.size() - 2);
        return value;
    }
    throw VbError(vberr::DatabaseError,
                  QStringLiteral("接続文字列にデータベースのパス (data source) がありません。"));
}

// Links whose file is missing or unreadable stay unresolved, as a broken Jet
// link did: opening succeeds and only a query of that table fails, until
// start-up points the link at the file of this run. Each is made only when a
// statement first names its table: start-up points most of them at the
// run's own file before that.
void restoreLinks(SqliteConnection& connection) {
    const Recordset registry = connection.query(
        QStringLiteral("SELECT count(*) FROM main.sqlite_master WHERE type = 'table' AND name = ?1 "
                       "COLLATE NOCASE"),
        {Variant(kRegistry)});
    if (registry.value(0).toLong() == 0) return;
    Recordset links =
        connection.query(QStringLiteral("SELECT TableName, DataSource FROM %1").arg(kRegistry));
    const QDir databaseFolder = QFileInfo(connection.path()).absoluteDir();
    for (; !links.eof(); links.moveNext()) {
        const QString name = links.value(0).text();
        const QString file = links.value(1).text();
        if (name.isEmpty() || file.isEmpty()) continue;
        connection.linkTableWhenNamed(name, name, databaseFolder.absoluteFilePath(file));
    }
}

}  // namespace

std::shared_ptr<SqliteConnection> gobjOpenConnection() {
    return dbTrapped(QStringLiteral("gobjOpenConnection"), 0, nullptr, [&] {
        auto connection = std::make_shared<SqliteConnection>(dataSourceOf(gstrConnectionString));
        restoreLinks(*connection);
        return connection;
    });
}

Recordset gobjMakeRecordset(const QString& sql) {
    return dbTrapped([&] { return statementPlace("gobjMakeRecordset", sql); }, 1, Recordset(), [&] {
        return requireConnection().query(translateJetSql(sql));
    });
}

bool gblnExecuteSql(const QString& sql) {
    // An empty text is a statement clsSqlText refused to build; that refusal
    // has been reported with the value that caused it.
    if (sql.isEmpty()) return false;
    return dbTrapped([&] { return statementPlace("gblnExecuteSql", sql); }, 1, false, [&] {
        requireConnection().execute(translateJetSql(sql));
        return true;
    });
}

clsInsertRows::~clsInsertRows() { Commit(); }

bool clsInsertRows::Insert(const clsSqlText& row) {
    const std::optional<QList<SqlValue>> values = row.GetValues();
    if (!values) return false;  // reported with the value that caused it
    // The row as a statement, so that the user sees which one it was.
    const auto place = [&] { return statementPlace("clsInsertRows.Insert", row.GetInsertSql()); };
    return dbTrapped(place, 1, false, [&] {
        if (!connection_) {
            connection_ = gobjConnection;  // kept until the transaction is closed
            if (!connection_) throw VbError::standard(vberr::ObjectNotSet);
            began_ = connection_->begin();
        }
        if (!statement_ || row.GetTable() != table_ || row.GetFields() != fields_) {
            statement_.reset();
            QString sql = QStringLiteral("insert into ") + row.GetTable() + QLatin1Char('(') +
                          row.GetFields().join(QLatin1Char(',')) + QStringLiteral(") values(");
            for (qsizetype i = 0; i < row.GetFields().size(); ++i) sql += i == 0 ? QStringLiteral("?") : QStringLiteral(",?");
            statement_.emplace(connection_->prepare(translateJetSql(sql + QLatin1Char(')'))));
            table_ = row.GetTable();
            fields_ = row.GetFields();
        }
        statement_->run(*values);
        return true;
    });
}

void clsInsertRows::Commit() {
    statement_.reset();
    const std::shared_ptr<SqliteConnection> connection = std::move(connection_);
    connection_.reset();
    if (!connection || !std::exchange(began_, false)) return;
    dbTrapped(QStringLiteral("clsInsertRows.Commit"), 1, [&] {
        connection->commit();
    });
}

Variant gvarGetData(const QString& field, const QString& table, const QString& where,
                    const Variant& defaultValue) {
    return dbTrapped(QStringLiteral("gvarGetData"), 1, Variant(), [&] {
        const QString sql = withWhere(QStringLiteral("Select ") + field + QStringLiteral(" From ") + table, where);
        const Recordset rows = requireConnection().query(translateJetSql(sql));
        if (rows.eof()) return defaultValue;
        return rows.value(0);
    });
}

std::int32_t glngGetMaxValue(const QString& field, const QString& table, const QString& where) {
    return dbTrapped(QStringLiteral("glngGetMaxValue"), 1, 0, [&] {
        const QString column = field + QStringLiteral("_MaxValue");
        const QString sql = withWhere(QStringLiteral("Select Max(") + field + QStringLiteral(") as ") +
                                          column + QStringLiteral(" From ") + table,
                                      where);
        const Recordset rows = requireConnection().query(translateJetSql(sql));
        const Variant& maximum = rows.value(column);
        return maximum.isNull() ? 0 : maximum.toLong();
    });
}

bool gRefreshLinkTable(const QString& tableName, const QString& databasePath) {
    dbTrapped(QStringLiteral("gRefreshLinkTable"), 1, [&] {
        SqliteConnection& connection = requireConnection();
        const Recordset entry = connection.query(
            QStringLiteral("SELECT TableName FROM %1 WHERE TableName = ?1 COLLATE NOCASE").arg(kRegistry),
            {Variant(tableName)});
        if (entry.eof()) throw VbError::standard(vberr::ItemNotFound);
        // A linked table has the name of its source table.
        const QString name = entry.value(0).text();
        try {
            connection.linkTable(name, name, databasePath);
        } catch (...) {
            // The link must not stay on the file of an earlier run, whose
            // rows would pass for this one's: it reads nothing until it is
            // pointed at a file again.
            connection.unlinkTable(name);
            connection.execute(
                QStringLiteral("UPDATE %1 SET DataSource = '' WHERE TableName = ?1 COLLATE NOCASE").arg(kRegistry),
                {Variant(tableName)});
            throw;
        }
        connection.execute(
            QStringLiteral("UPDATE %1 SET DataSource = ?1 WHERE TableName = ?2 COLLATE NOCASE").arg(kRegistry),
            {Variant(databasePath), Variant(tableName)});
    });
    return false;
}

// gblnExecuteSql reports its own failure.
void gInitTable(const QString& tableName) { gblnExecuteSql(QStringLiteral("Delete From ") + tableName); }

}  // namespace kelvary
