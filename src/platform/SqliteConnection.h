// SqliteConnection: the one connection to an SQLite 3 database that stands in
// for an ADO connection to a Jet database. It runs statements written for
// SQLite (the Jet dialect is translated beforehand, see JetSql.h), hands back
// detached Recordsets, and links tables of other database files the way Jet's
// linked tables did: the file is attached under an alias and a temporary view
// with the linked table's name reads the source table through it.
#pragma once

#include "platform/DatabaseFileLock.h"
#include "platform/Recordset.h"
#include "platform/Variant.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace kelvary {

// A value as the literal of a statement's text would give it: a Variant bound
// as query() binds its parameters, or, flagged, the text of a numeric literal,
// stored as SQLite reads that literal (an integer when it has neither point
// nor exponent and fits 64 bits, a real otherwise). A value bound this way is
// stored with the same storage class as the literal would be.
struct SqlValue {
    Variant value;
    bool numberLiteral = false;
};

// One statement prepared once and run again and again with other values, so
// that writing many rows costs one statement, not one per row.
class PreparedStatement {
public:
    PreparedStatement(PreparedStatement&&) noexcept;
    PreparedStatement& operator=(PreparedStatement&&) noexcept;
    ~PreparedStatement();

    // Runs the statement once with these values for ?1, ?2 …; returns the
    // number of rows it changed. A failure leaves the statement ready for the
    // next values.
    long run(const QList<SqlValue>& values);

private:
    friend class SqliteConnection;
    PreparedStatement(sqlite3* db, sqlite3_stmt* statement) : db_(db), statement_(statement) {}
    sqlite3* db_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

class SqliteConnection {
public:
    // Opens an existing database file for reading and writing. A missing file,
    // one that is not an SQLite 3 database, one that cannot be written and one
    // that another program holds open in a transaction raise a VbError.
    explicit SqliteConnection(const QString& path);
    ~SqliteConnection();
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;

    const QString& path() const { return path_; }

    // One statement of SQLite SQL; values bound to ?1, ?2 … in order.
    Recordset query(const QString& sql, const QList<Variant>& parameters = {});
    // Runs one statement and returns the number of rows it changed.
    long execute(const QString& sql, const QList<Variant>& parameters = {});

    // Prepares one statement of SQLite SQL for PreparedStatement::run.
    PreparedStatement prepare(const QString& sql);
    // Groups the writes that follow until commit() into one transaction, so
    // that they reach the file together. False, and nothing begun, when a
    // transaction is open already: its writes go with that one.
    bool begin();
    // Ends the transaction begun; nothing when SQLite already ended it (a full
    // disk rolls a transaction back).
    void commit();

    // How many statements were asked of this connection so far (run or
    // prepared): what a routine costs in statements, whatever it runs them
    // for, and however many of them were compiled already.
    std::uint64_t statementsPrepared() const { return statementsPrepared_; }
    // How many of those SQLite had to compile from their text: query() and
    // execute() keep the statements of the texts they ran last and run such
    // a text again without compiling it anew.
    std::uint64_t statementsCompiled() const { return statementsCompiled_; }

    // Points the linked table `name` at `sourceTable` in the database `file`
    // (a Jet file is read through its SQLite copy, see JetDatabase.h).
    // The file is checked first, so a failure leaves the previous link working.
    void linkTable(const QString& name, const QString& sourceTable, const QString& file);
    // A link as linkTable() makes it, put in place only when a statement
    // first names the table (or its file is asked for): a run that points
    // the table elsewhere first never attaches the earlier file. A link that
    // cannot be made then stays unmade, without an error; the statement
    // meets the table as it is without the link.
    void linkTableWhenNamed(const QString& name, const QString& sourceTable, const QString& file);
    // The absolute path the linked table reads from; empty when not linked.
    QString linkedFile(const QString& name);
    // Takes the linked table away: a query of it fails until it is linked again.
    void unlinkTable(const QString& name);

    // Raises a VbError unless the path names a file that begins with the
    // SQLite 3 header.
    static void requireDatabaseFile(const QString& path);
    // Raises a VbError unless the database file can also be read through:
    // no other program holds it in the middle of a write, and none of its
    // pages is missing or damaged (a file cut short on its way over a
    // network, say).
    static void requireReadableDatabase(const QString& path);

private:
    struct Attachment {
        QString alias;
        QString file;
    };
    struct Link {
        QString name;
        QString alias;
    };

    // A compiled statement kept for its text, ready to run again.
    struct CachedStatement {
        QByteArray text;
        sqlite3_stmt* statement = nullptr;
        std::uint64_t lastUse = 0;
        bool inUse = false;
    };
    class Lease;

    // The compiled statement of the text, from the kept ones when it is
    // there; the lease puts it back, reset and unbound, when it goes.
    Lease statementFor(const QString& sql);
    sqlite3_stmt* compile(const QByteArray& text, bool kept);
    void dropKeptStatements();

    // Makes the waiting links of the tables the statement names.
    void makeLinksNamedIn(const QString& sql);

    QString attachmentFor(const QString& file);
    void detachIfUnused(const QString& alias);
    bool schemaHasTable(const QString& alias, const QString& table);

    sqlite3* db_ = nullptr;
    QString path_;
    std::unique_ptr<DatabaseFileLock> fileLock_;
    std::vector<Attachment> attachments_;
    std::map<QString, Link> links_;  // by lower-case name
    struct WaitingLink {
        QString name;
        QString sourceTable;
        QString file;
    };
    std::map<QString, WaitingLink> waitingLinks_;  // by lower-case name
    std::uint64_t statementsPrepared_ = 0;
    std::uint64_t statementsCompiled_ = 0;
    std::vector<CachedStatement> cache_;
    std::uint64_t uses_ = 0;
};

}  // namespace kelvary
