// The SQLite connection: opening with the file checked first, statements run
// one at a time into detached recordsets, and linked tables as attached files
// seen through temporary views.
#include "platform/SqliteConnection.h"

#include "platform/JetDatabase.h"
#include "platform/SequentialInput.h"
#include "platform/SqliteValues.h"
#include "platform/VbError.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace kelvary {

namespace {

constexpr int kBusyTimeoutMs = 5000;
// How many compiled statements a connection keeps for their texts. A run
// repeats a few dozen texts (the links' savepoints and schema look-ups, the
// registry, each period's queries); a text with its values written in passes
// through and pushes out the one unused longest.
constexpr std::size_t kKeptStatements = 64;

struct StatementDeleter {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

struct ConnectionCloser {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};

QString shownPath(const QString& path) { return QDir::toNativeSeparators(path); }

[[noreturn]] void raiseDatabase(const QString& description) {
    throw VbError(vberr::DatabaseError, description);
}

[[noreturn]] void raiseSqlite(sqlite3* db) {
    const QString detail = QString::fromUtf8(sqlite3_errmsg(db));
    switch (sqlite3_errcode(db)) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        // A linked database the sibling program began to write during the run.
        raiseDatabase(QStringLiteral("データベースが他のプログラムに使用されているため、処理できませんでした。(%1)")
                          .arg(detail));
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        raiseDatabase(QStringLiteral("データベースが壊れているため、処理できませんでした。(%1)").arg(detail));
    case SQLITE_FULL:
        raiseDatabase(QStringLiteral("ディスクの空き容量が足りないため、データベースに書き込めませんでした。(%1)").arg(detail));
    default:
        raiseDatabase(QStringLiteral("データベースの処理でエラーが発生しました。(%1)").arg(detail));
    }
}

QString quotedName(const QString& name) {
    QString inner = name;
    inner.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

// Only blanks and statement ends may follow the statement that was prepared.
bool onlyStatementEndsLeft(const char* tail) {
    for (; *tail != '\0'; ++tail) {
        const char c = *tail;
        if (c != ';' && c != ' ' && c != '\t' && c != '\r' && c != '\n') return false;
    }
    return true;
}

void bindParameters(sqlite3* db, sqlite3_stmt* statement, const QList<Variant>& parameters) {
    for (int i = 0; i < parameters.size(); ++i) {
        if (sqlite::bindValue(statement, i + 1, parameters[i]) != SQLITE_OK) raiseSqlite(db);
    }
}

// The number a numeric literal of a statement's text stands for, bound as
// SQLite stores that literal: digits alone make an integer while they fit 64
// bits (the negative limit included), anything else a real.
int bindNumberLiteral(sqlite3_stmt* statement, int index, const QString& literal) {
    const QByteArray text = literal.toLatin1();
    const bool negative = text.startsWith('-');
    const QByteArray digits = negative ? text.mid(1) : text;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (!digits.isEmpty() && std::all_of(digits.begin(), digits.end(), isDigit)) {
        bool ok = false;
        const qulonglong magnitude = digits.toULongLong(&ok);
        constexpr qulonglong largest = static_cast<qulonglong>(std::numeric_limits<qint64>::max());
        if (ok && magnitude <= largest)
            return sqlite3_bind_int64(statement, index,
                                      negative ? -static_cast<qint64>(magnitude) : static_cast<qint64>(magnitude));
        if (ok && negative && magnitude == largest + 1)
            return sqlite3_bind_int64(statement, index, std::numeric_limits<qint64>::min());
    }
    // Converted without the user's locale; only the characters of a literal
    // are let through (no blanks, hexadecimal or words such as "inf").
    const bool numeric = !digits.isEmpty() && (isDigit(digits.front()) || digits.front() == '.') &&
                         std::all_of(digits.begin(), digits.end(), [&](char c) {
                             return isDigit(c) || c == '.' || c == 'e' || c == 'E' || c == '+' || c == '-';
                         });
    bool converted = false;
    const double number = numeric ? text.toDouble(&converted) : 0.0;
    if (!converted)
        raiseDatabase(QStringLiteral("「%1」は数値として書き込めません。").arg(literal));
    return sqlite3_bind_double(statement, index, number);
}

}  // namespace

PreparedStatement::PreparedStatement(PreparedStatement&& other) noexcept
    : db_(std::exchange(other.db_, nullptr)), statement_(std::exchange(other.statement_, nullptr)) {}

PreparedStatement& PreparedStatement::operator=(PreparedStatement&& other) noexcept {
    if (this != &other) {
        sqlite3_finalize(statement_);
        db_ = std::exchange(other.db_, nullptr);
        statement_ = std::exchange(other.statement_, nullptr);
    }
    return *this;
}

PreparedStatement::~PreparedStatement() { sqlite3_finalize(statement_); }

long PreparedStatement::run(const QList<SqlValue>& values) {
    if (!statement_) throw VbError::standard(vberr::ObjectNotSet);
    // Whatever happens, the statement is ready for the next row afterwards.
    struct Reset {
        sqlite3_stmt* statement;
        ~Reset() {
            sqlite3_reset(statement);
            sqlite3_clear_bindings(statement);
        }
    } reset{statement_};
    if (values.size() != sqlite3_bind_parameter_count(statement_))
        raiseDatabase(QStringLiteral("パラメーターの数が一致しません。"));
    for (int i = 0; i < values.size(); ++i) {
        const SqlValue& v = values[i];
        const int bound = v.numberLiteral ? bindNumberLiteral(statement_, i + 1, v.value.text())
                                          : sqlite::bindValue(statement_, i + 1, v.value);
        if (bound != SQLITE_OK) raiseSqlite(db_);
    }
    int stepped = SQLITE_ROW;
    while ((stepped = sqlite3_step(statement_)) == SQLITE_ROW) {
    }
    if (stepped != SQLITE_DONE) raiseSqlite(db_);
    return static_cast<long>(sqlite3_changes64(db_));
}

// A statement lent out for one run of it: reset and unbound afterwards,
// whatever happened, and then back among the kept ones (or finalized when
// it was compiled for this run alone).
class SqliteConnection::Lease {
public:
    Lease(SqliteConnection& owner, int slot, sqlite3_stmt* statement)
        : owner_(owner), slot_(slot), statement_(statement) {}
    ~Lease() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
        if (slot_ >= 0) owner_.cache_[static_cast<std::size_t>(slot_)].inUse = false;
        else sqlite3_finalize(statement_);
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    sqlite3_stmt* get() const { return statement_; }

private:
    SqliteConnection& owner_;
    int slot_;
    sqlite3_stmt* statement_;
};

sqlite3_stmt* SqliteConnection::compile(const QByteArray& text, bool kept) {
    ++statementsCompiled_;
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    if (sqlite3_prepare_v3(db_, text.constData(), static_cast<int>(text.size()) + 1,
                           kept ? SQLITE_PREPARE_PERSISTENT : 0, &raw, &tail) != SQLITE_OK)
        raiseSqlite(db_);
    Statement statement(raw);
    if (!statement)
        raiseDatabase(QStringLiteral("無効な SQL ステートメントです。'DELETE'、'INSERT'、'PROCEDURE'、"
                                     "'SELECT'、または 'UPDATE' を使用してください。"));
    if (!onlyStatementEndsLeft(tail))
        raiseDatabase(QStringLiteral("SQL ステートメントの後に文字が見つかりました。"));
    return statement.release();
}

SqliteConnection::Lease SqliteConnection::statementFor(const QString& sql) {
    const QByteArray text = sql.toUtf8();
    ++uses_;
    int slot = -1;
    for (std::size_t i = 0; i < cache_.size(); ++i) {
        if (!cache_[i].inUse && cache_[i].text == text) {
            slot = static_cast<int>(i);
            break;
        }
    }
    if (slot < 0) {
        sqlite3_stmt* compiled = compile(text, true);
        if (cache_.size() < kKeptStatements) {
            cache_.push_back({text, compiled, 0, false});
            slot = static_cast<int>(cache_.size() - 1);
        } else {
            for (std::size_t i = 0; i < cache_.size(); ++i) {
                if (!cache_[i].inUse && (slot < 0 || cache_[i].lastUse < cache_[static_cast<std::size_t>(slot)].lastUse))
                    slot = static_cast<int>(i);
            }
            if (slot < 0) return Lease(*this, -1, compiled);
            CachedStatement& evicted = cache_[static_cast<std::size_t>(slot)];
            sqlite3_finalize(evicted.statement);
            evicted = {text, compiled, 0, false};
        }
    }
    CachedStatement& entry = cache_[static_cast<std::size_t>(slot)];
    entry.inUse = true;
    entry.lastUse = uses_;
    return Lease(*this, slot, entry.statement);
}

void SqliteConnection::requireDatabaseFile(const QString& path) {
    // Asked before anything opens it: opening a FIFO would wait for ever.
    const FileKind kind = path.isEmpty() ? FileKind::Missing : fileKindOf(path);
    if (kind == FileKind::Missing)
        raiseDatabase(QStringLiteral("ファイル '%1' が見つかりません。").arg(shownPath(path)));
    if (kind != FileKind::Regular)
        raiseDatabase(QStringLiteral("'%1' は%2です。データベースファイルではありません。")
                          .arg(shownPath(path), fileKindName(kind)));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        raiseDatabase(QStringLiteral("ファイル '%1' を開けません。(%2)")
                          .arg(shownPath(path), file.errorString()));
    static const QByteArray header("SQLite format 3", 16);  // with its closing NUL
    if (file.read(header.size()) != header)
        raiseDatabase(QStringLiteral("ファイル '%1' はこのプログラムで読み取れるデータベースではありません。"
                                     "SQLite 3 形式のデータベースファイルが必要です。")
                          .arg(shownPath(path)));
}

void SqliteConnection::requireReadableDatabase(const QString& path) {
    requireDatabaseFile(path);
    const QString absolute = QFileInfo(path).absoluteFilePath();
    // A rollback journal left by a program that stopped in the middle of a
    // write: only a program that writes the database may roll it back, and
    // this one reads it only, so the half-written file cannot be read here.
    const auto hotJournal = [&] {
        return raiseDatabase(QStringLiteral("データベース '%1' は書き込みの途中で中断されたままです (ジャーナルファイル '%2' が残っています)。"
                                            "作成したプログラムで一度開いて修復してから、もう一度実行してください。")
                                 .arg(shownPath(absolute), shownPath(absolute + QStringLiteral("-journal"))));
    };
    const QString uri = QUrl::fromLocalFile(absolute).toString(QUrl::FullyEncoded) + QStringLiteral("?mode=ro");
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(uri.toUtf8().constData(), &raw, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    const std::unique_ptr<sqlite3, ConnectionCloser> db(raw);
    int result = opened;
    QString finding;
    if (opened == SQLITE_OK) {
        sqlite3_busy_timeout(db.get(), kBusyTimeoutMs);
        sqlite3_stmt* check = nullptr;
        result = sqlite3_prepare_v2(db.get(), "PRAGMA quick_check(1)", -1, &check, nullptr);
        const Statement statement(check);
        if (result == SQLITE_OK) result = sqlite3_step(check);
        if (result == SQLITE_ROW) {
            finding = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(check, 0)));
            if (finding == QLatin1String("ok")) return;
        }
    }
    if (db && sqlite3_extended_errcode(db.get()) == SQLITE_READONLY_ROLLBACK) hotJournal();
    if (result == SQLITE_BUSY || result == SQLITE_LOCKED)
        raiseDatabase(QStringLiteral("データベース '%1' は他のプログラムが使用中です。"
                                     "そのプログラムを終了してから、もう一度実行してください。")
                          .arg(shownPath(absolute)));
    if (finding.isEmpty())
        finding = db ? QString::fromUtf8(sqlite3_errmsg(db.get())) : QString::fromUtf8(sqlite3_errstr(result));
    raiseDatabase(QStringLiteral("データベース '%1' は壊れているため読み込めません。"
                                 "ファイルが途中で切れているか、内容が損なわれています。(%2)")
                      .arg(shownPath(absolute), finding));
}

SqliteConnection::SqliteConnection(const QString& path) {
    requireDatabaseFile(path);
    path_ = QFileInfo(path).absoluteFilePath();
    // The working database belongs to this one run: the instance lock keeps a
    // second Kelvary out of the program folder and the file lock below keeps
    // every other program out, so SQLite's own locks would guard nothing;
    // taking and dropping them around every statement cost a run several
    // system calls per statement. Without them SQLite still rereads the
    // file's change counter before each statement, so a change made through
    // another connection of this process between two statements is seen.
    const QString uri = QUrl::fromLocalFile(path_).toString(QUrl::FullyEncoded) + QStringLiteral("?nolock=1");
    const int opened = sqlite3_open_v2(uri.toUtf8().constData(), &db_,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI, nullptr);
    if (opened != SQLITE_OK) {
        const QString message = db_ ? QString::fromUtf8(sqlite3_errmsg(db_))
                                    : QString::fromUtf8(sqlite3_errstr(opened));
        sqlite3_close_v2(db_);
        db_ = nullptr;
        raiseDatabase(QStringLiteral("データベース '%1' を開けません。(%2)").arg(shownPath(path_), message));
    }
    sqlite3_busy_timeout(db_, kBusyTimeoutMs);
    try {
        // SQLite falls back to reading when the file cannot be written; the
        // run would then fail at its first statement that writes.
        if (sqlite3_db_readonly(db_, "main") == 1)
            raiseDatabase(QStringLiteral("データベース '%1' に書き込めません。ファイルが読み取り専用になっているか、"
                                         "書き込む権限がありません。")
                              .arg(shownPath(path_)));
        fileLock_ = std::make_unique<DatabaseFileLock>(path_, kBusyTimeoutMs);
        if (!fileLock_->acquired())
            raiseDatabase(QStringLiteral("データベース '%1' は他のプログラムが使用中です。"
                                         "そのプログラムを終了してから、もう一度実行してください。")
                              .arg(shownPath(path_)));
        // The working data is rebuilt at every start, so no durability is needed.
        execute(QStringLiteral("PRAGMA journal_mode=MEMORY"));
        execute(QStringLiteral("PRAGMA synchronous=OFF"));
        // Reading the schema now turns a damaged file into an error at opening.
        query(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    } catch (...) {
        dropKeptStatements();
        sqlite3_close_v2(db_);
        db_ = nullptr;
        throw;
    }
}

SqliteConnection::~SqliteConnection() {
    dropKeptStatements();
    if (db_) sqlite3_close_v2(db_);
}

void SqliteConnection::dropKeptStatements() {
    for (const CachedStatement& kept : cache_) sqlite3_finalize(kept.statement);
    cache_.clear();
}

Recordset SqliteConnection::query(const QString& sql, const QList<Variant>& parameters) {
    makeLinksNamedIn(sql);
    ++statementsPrepared_;
    const Lease statement = statementFor(sql);
    sqlite3_stmt* st = statement.get();
    bindParameters(db_, st, parameters);
    // The columns are read after the first step: a kept statement is
    // compiled again there when the schema changed since it was kept.
    int stepped = sqlite3_step(st);
    if (stepped != SQLITE_ROW && stepped != SQLITE_DONE) raiseSqlite(db_);
    const int columns = sqlite3_column_count(st);
    QList<FieldInfo> fields;
    QList<int> declaredTypes;
    for (int c = 0; c < columns; ++c) {
        const int declared =
            sqlite::adoTypeOfDeclaredType(QString::fromUtf8(sqlite3_column_decltype(st, c)));
        fields.append({QString::fromUtf8(sqlite3_column_name(st, c)), declared});
        declaredTypes.append(declared);
    }
    QList<QList<Variant>> rows;
    for (; stepped == SQLITE_ROW; stepped = sqlite3_step(st)) {
        QList<Variant> row;
        row.reserve(columns);
        for (int c = 0; c < columns; ++c) {
            // An expression has no declared type; its first value names one.
            if (fields[c].type == 0) fields[c].type = sqlite::adoTypeOfValue(st, c);
            row.append(sqlite::readValue(st, c, declaredTypes[c]));
        }
        rows.append(std::move(row));
    }
    if (stepped != SQLITE_DONE) raiseSqlite(db_);
    // An expression that is Null in every row writes as a number ("null").
    for (FieldInfo& field : fields) {
        if (field.type == 0) field.type = ado::adInteger;
    }
    return Recordset(std::move(fields), std::move(rows));
}

long SqliteConnection::execute(const QString& sql, const QList<Variant>& parameters) {
    makeLinksNamedIn(sql);
    ++statementsPrepared_;
    const Lease statement = statementFor(sql);
    bindParameters(db_, statement.get(), parameters);
    int stepped = SQLITE_ROW;
    while ((stepped = sqlite3_step(statement.get())) == SQLITE_ROW) {
    }
    if (stepped != SQLITE_DONE) raiseSqlite(db_);
    return static_cast<long>(sqlite3_changes64(db_));
}

PreparedStatement SqliteConnection::prepare(const QString& sql) {
    makeLinksNamedIn(sql);
    ++statementsPrepared_;
    return PreparedStatement(db_, compile(sql.toUtf8(), false));
}

bool SqliteConnection::begin() {
    if (sqlite3_get_autocommit(db_) == 0) return false;
    execute(QStringLiteral("BEGIN"));
    return true;
}

void SqliteConnection::commit() {
    if (sqlite3_get_autocommit(db_) == 0) execute(QStringLiteral("COMMIT"));
}

bool SqliteConnection::schemaHasTable(const QString& alias, const QString& table) {
    const Recordset found = query(QStringLiteral("SELECT count(*) FROM %1.sqlite_master "
                                                 "WHERE type IN ('table','view') AND name = ?1 "
                                                 "COLLATE NOCASE")
                                      .arg(quotedName(alias)),
                                  {Variant(table)});
    return found.value(0).toLong() > 0;
}

QString SqliteConnection::attachmentFor(const QString& file) {
    const auto existing = std::find_if(attachments_.begin(), attachments_.end(),
                                       [&](const Attachment& a) { return a.file == file; });
    if (existing != attachments_.end()) return existing->alias;
    QString alias;
    for (int n = 1; alias.isEmpty(); ++n) {
        const QString candidate = QStringLiteral("lnk%1").arg(n);
        if (std::none_of(attachments_.begin(), attachments_.end(),
                         [&](const Attachment& a) { return a.alias == candidate; }))
            alias = candidate;
    }
    // Read-only: the linked files belong to the sibling program.
    const QString uri = QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded) +
                        QStringLiteral("?mode=ro");
    execute(QStringLiteral("ATTACH DATABASE ?1 AS %1").arg(quotedName(alias)), {Variant(uri)});
    attachments_.push_back({alias, file});
    return alias;
}

void SqliteConnection::detachIfUnused(const QString& alias) {
    for (const auto& [key, link] : links_) {
        if (link.alias == alias) return;
    }
    try {
        execute(QStringLiteral("DETACH DATABASE %1").arg(quotedName(alias)));
    } catch (const VbError&) {
        return;  // still attached: it is kept and used again for the same file
    }
    std::erase_if(attachments_, [&](const Attachment& a) { return a.alias == alias; });
}

void SqliteConnection::linkTableWhenNamed(const QString& name, const QString& sourceTable,
                                          const QString& file) {
    waitingLinks_[name.toLower()] = {name, sourceTable, file};
}

void SqliteConnection::makeLinksNamedIn(const QString& sql) {
    if (waitingLinks_.empty()) return;
    const QString text = sql.toLower();
    const auto isNamePart = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    const auto names = [&](const QString& name) {
        for (qsizetype at = text.indexOf(name); at >= 0; at = text.indexOf(name, at + 1)) {
            const qsizetype end = at + name.size();
            if ((at == 0 || !isNamePart(text[at - 1])) && (end == text.size() || !isNamePart(text[end])))
                return true;
        }
        return false;
    };
    std::vector<WaitingLink> due;
    for (auto it = waitingLinks_.begin(); it != waitingLinks_.end();) {
        if (names(it->first)) {
            due.push_back(std::move(it->second));
            it = waitingLinks_.erase(it);
        } else {
            ++it;
        }
    }
    // Work left over from the opening, not the statements of the routine
    // that happens to meet it first.
    const std::uint64_t asked = statementsPrepared_;
    for (const WaitingLink& link : due) {
        try {
            linkTable(link.name, link.sourceTable, link.file);
        } catch (const VbError&) {
        }
    }
    statementsPrepared_ = asked;
}

void SqliteConnection::linkTable(const QString& name, const QString& sourceTable,
                                 const QString& file) {
    waitingLinks_.erase(name.toLower());
    const QString attached = jet::attachableFile(file);
    requireDatabaseFile(attached);
    const QString canonical = QFileInfo(attached).canonicalFilePath();
    const QString alias = attachmentFor(canonical);
    try {
        if (!schemaHasTable(alias, sourceTable))
            raiseDatabase(QStringLiteral("データベース '%1' にテーブル '%2' が見つかりません。")
                              .arg(shownPath(QFileInfo(file).canonicalFilePath()), sourceTable));
        execute(QStringLiteral("SAVEPOINT relink"));
        try {
            execute(QStringLiteral("DROP VIEW IF EXISTS temp.%1").arg(quotedName(name)));
            execute(QStringLiteral("CREATE TEMP VIEW %1 AS SELECT * FROM %2.%3")
                        .arg(quotedName(name), quotedName(alias), quotedName(sourceTable)));
        } catch (...) {
            execute(QStringLiteral("ROLLBACK TO relink"));
            execute(QStringLiteral("RELEASE relink"));
            throw;
        }
        execute(QStringLiteral("RELEASE relink"));
    } catch (...) {
        detachIfUnused(alias);
        throw;
    }
    const QString key = name.toLower();
    const auto previous = links_.find(key);
    const QString previousAlias = previous != links_.end() ? previous->second.alias : QString();
    links_[key] = {name, alias};
    if (!previousAlias.isEmpty() && previousAlias != alias) detachIfUnused(previousAlias);
}

void SqliteConnection::unlinkTable(const QString& name) {
    waitingLinks_.erase(name.toLower());
    execute(QStringLiteral("DROP VIEW IF EXISTS temp.%1").arg(quotedName(name)));
    const auto link = links_.find(name.toLower());
    if (link == links_.end()) return;
    const QString alias = link->second.alias;
    links_.erase(link);
    detachIfUnused(alias);
}

QString SqliteConnection::linkedFile(const QString& name) {
    if (waitingLinks_.count(name.toLower()) > 0) makeLinksNamedIn(name);
    const auto link = links_.find(name.toLower());
    if (link == links_.end()) return {};
    for (const Attachment& a : attachments_) {
        if (a.alias == link->second.alias) return a.file;
    }
    return {};
}

}  // namespace kelvary
