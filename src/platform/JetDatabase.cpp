// The Jet reader: libmdb walks the tables, and each row goes into an SQLite
// copy with the declared types that stand for Jet's column types.
//
// libmdb hands out every value as text. Text and memo columns are taken that
// way (libmdb undoes Jet 4's compressed UTF-16 and Jet 3's code page), but
// numbers and dates are decoded from the row's own bytes, so that no digit is
// lost to a printf format, and the row's null mask tells Null from a
// zero-length text, which look alike in the text form.
#include "platform/JetDatabase.h"

#include "platform/AppObject.h"
#include "platform/SqliteValues.h"
#include "platform/VbError.h"

// glib first: mdbtools.h includes it inside its extern "C" block.
#include <glib.h>
#include <mdbtools.h>
#include <sqlite3.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QtEndian>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kelvary::jet {

namespace {

constexpr int kHeldWaitMs = 5000;
constexpr int kRetryMs = 50;
// Large enough for any memo of a statement note; a longer value is refused
// rather than cut.
constexpr std::size_t kBindSize = 1 << 20;
constexpr int kJet3PageSize = 2048;
constexpr int kJet4PageSize = 4096;
// The low bits of a row offset; the high bits flag deleted and moved rows.
constexpr int kRowOffsetMask = 0x1FFF;

QString shownPath(const QString& path) { return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()); }

[[noreturn]] void raiseDatabase(const QString& description) {
    throw VbError(vberr::DatabaseError, description);
}

[[noreturn]] void raiseDamaged(const QString& jetFile, const QString& finding) {
    raiseDatabase(QStringLiteral("データベース '%1' は壊れているため読み込めません。"
                                 "ファイルが途中で切れているか、内容が損なわれています。(%2)")
                      .arg(shownPath(jetFile), finding));
}

[[noreturn]] void raiseHeld(const QString& jetFile) {
    raiseDatabase(QStringLiteral("データベース '%1' は他のプログラムが使用中です。"
                                 "そのプログラムを終了してから、もう一度実行してください。")
                      .arg(shownPath(jetFile)));
}

// Keeps the Jet file open with a shared lock over all of it while it is
// read: a program writing the file holds a write lock on some of its bytes,
// and one that starts writing meanwhile waits for us.
class ReadLock {
public:
    explicit ReadLock(const QString& jetFile) {
#ifdef Q_OS_UNIX
        fd_ = ::open(QFile::encodeName(jetFile).constData(), O_RDONLY | O_CLOEXEC);
        if (fd_ < 0)
            raiseDatabase(QStringLiteral("ファイル '%1' を開けません。(%2)")
                              .arg(shownPath(jetFile), QString::fromLocal8Bit(std::strerror(errno))));
        for (int waited = 0;; waited += kRetryMs) {
            struct flock lock {};
            lock.l_type = F_RDLCK;
            lock.l_whence = SEEK_SET;
            lock.l_start = 0;
            lock.l_len = 0;  // to the end of every possible offset
            if (fcntl(fd_, F_SETLK, &lock) == 0) return;
            // A file system without such locks leaves the file unguarded.
            if (errno != EAGAIN && errno != EACCES) return;
            if (waited >= kHeldWaitMs) {
                ::close(fd_);
                fd_ = -1;
                raiseHeld(jetFile);
            }
            QThread::msleep(kRetryMs);
        }
#else
        QFile probe(jetFile);
        if (!probe.open(QIODevice::ReadOnly)) raiseHeld(jetFile);
#endif
    }
    ~ReadLock() {
#ifdef Q_OS_UNIX
        if (fd_ >= 0) ::close(fd_);
#endif
    }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    int fd_ = -1;
};

// libmdb tells of every page it misses on standard error, where the batch
// run's reports go; the damage is reported once, as a whole, instead.
class QuietStandardError {
public:
    QuietStandardError() {
#ifdef Q_OS_UNIX
        std::fflush(stderr);
        saved_ = ::dup(STDERR_FILENO);
        const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (saved_ >= 0 && null >= 0) ::dup2(null, STDERR_FILENO);
        if (null >= 0) ::close(null);
#endif
    }
    ~QuietStandardError() {
#ifdef Q_OS_UNIX
        std::fflush(stderr);
        if (saved_ >= 0) {
            ::dup2(saved_, STDERR_FILENO);
            ::close(saved_);
        }
#endif
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;

private:
    int saved_ = -1;
};

struct MdbCloser {
    void operator()(MdbHandle* mdb) const { mdb_close(mdb); }
};
struct TableFreer {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
struct SqliteCloser {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct StatementFinalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

QString quotedName(const QString& name) {
    QString inner = name;
    inner.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

// Declared types whose ADO types (SqliteValues) are the ones Jet's provider
// gave these columns.
QString declaredType(int jetType) {
    switch (jetType) {
    case MDB_BOOL: return QStringLiteral("BOOLEAN");
    case MDB_BYTE: return QStringLiteral("BYTE");
    case MDB_INT: return QStringLiteral("SMALLINT");
    case MDB_LONGINT: return QStringLiteral("INTEGER");
    case MDB_MONEY: return QStringLiteral("CURRENCY");
    case MDB_FLOAT: return QStringLiteral("SINGLE");
    case MDB_DOUBLE: return QStringLiteral("DOUBLE");
    case MDB_DATETIME: return QStringLiteral("DATETIME");
    case MDB_BINARY: return QStringLiteral("BINARY");
    case MDB_OLE: return QStringLiteral("LONGBINARY");
    case MDB_MEMO: return QStringLiteral("LONGTEXT");
    case MDB_REPID: return QStringLiteral("GUID");
    case MDB_NUMERIC: return QStringLiteral("DECIMAL");
    default: return QStringLiteral("TEXT");
    }
}

template <typename T>
T littleEndian(const void* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return qFromLittleEndian(value);
}

// A Jet date is days since 1899-12-30 with the time of day as the fraction,
// which counts forward from the day even before 1899-12-30.
QString dateText(double days) {
    double whole = std::trunc(days);
    int seconds = static_cast<int>(std::llround(std::fabs(days - whole) * 86400.0));
    if (seconds >= 86400) {
        seconds = 0;
        whole += 1;
    }
    return sqlite::storedDateText(VbDate{QDate(1899, 12, 30).addDays(static_cast<qint64>(whole)), seconds});
}

class Copier {
public:
    Copier(const QString& jetFile, sqlite3* db) : jetFile_(jetFile), db_(db) {}

    void copyTables(MdbHandle* mdb) {
        if (!mdb_read_catalog(mdb, MDB_TABLE)) raiseDamaged(jetFile_, QStringLiteral("catalog"));
        for (unsigned i = 0; i < mdb->num_catalog; ++i) {
            auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
            if (entry->object_type != MDB_TABLE || !mdb_is_user_table(entry)) continue;
            copyTable(mdb, entry);
        }
    }

private:
    struct Column {
        MdbColumn* column;
        std::unique_ptr<char[]> text;
        int length = 0;
    };

    void sqlite(const QString& sql) {
        char* error = nullptr;
        if (sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
            const QString detail = QString::fromUtf8(error ? error : sqlite3_errmsg(db_));
            sqlite3_free(error);
            raiseDatabase(QStringLiteral("データベースの処理でエラーが発生しました。(%1)").arg(detail));
        }
    }

    void copyTable(MdbHandle* mdb, MdbCatalogEntry* entry) {
        const QString name = QString::fromUtf8(entry->object_name);
        const std::unique_ptr<MdbTableDef, TableFreer> table(mdb_read_table(entry));
        if (!table || !mdb_read_columns(table.get()) || table->num_cols == 0)
            raiseDamaged(jetFile_, QStringLiteral("table ") + name);
        mdb_rewind_table(table.get());

        std::vector<Column> columns(table->num_cols);
        QStringList definitions;
        QStringList places;
        for (unsigned c = 0; c < table->num_cols; ++c) {
            Column& column = columns[c];
            column.column = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, c));
            column.text.reset(new char[kBindSize]);
            column.text[0] = '\0';
            mdb_bind_column(table.get(), static_cast<int>(c) + 1, column.text.get(), &column.length);
            definitions << quotedName(QString::fromUtf8(column.column->name)) + QLatin1Char(' ') +
                               declaredType(column.column->col_type);
            places << QStringLiteral("?%1").arg(c + 1);
        }
        sqlite(QStringLiteral("CREATE TABLE %1 (%2)").arg(quotedName(name), definitions.join(QStringLiteral(", "))));

        sqlite3_stmt* raw = nullptr;
        const QByteArray insert = QStringLiteral("INSERT INTO %1 VALUES (%2)")
                                      .arg(quotedName(name), places.join(QLatin1Char(',')))
                                      .toUtf8();
        if (sqlite3_prepare_v2(db_, insert.constData(), -1, &raw, nullptr) != SQLITE_OK)
            raiseDatabase(QStringLiteral("データベースの処理でエラーが発生しました。(%1)")
                              .arg(QString::fromUtf8(sqlite3_errmsg(db_))));
        const Statement statement(raw);

        std::vector<MdbField> fields(std::max<unsigned>(table->num_cols, MDB_MAX_COLS));
        unsigned rows = 0;
        while (mdb_fetch_row(table.get())) {
            ++rows;
            // The null mask of the row just fetched; a row written before a
            // column was added ends early, and its later columns are Null.
            int cracked = 0;
            int start = 0;
            size_t length = 0;
            if (mdb_find_row(mdb, static_cast<int>(table->cur_row) - 1, &start, &length) == 0)
                cracked = mdb_crack_row(table.get(), start & kRowOffsetMask, length, fields.data());
            for (unsigned c = 0; c < table->num_cols; ++c) {
                const MdbField* field = static_cast<int>(c) < cracked ? &fields[c] : nullptr;
                bindValue(mdb, statement.get(), static_cast<int>(c) + 1, columns[c], field, cracked > 0, name);
            }
            if (sqlite3_step(statement.get()) != SQLITE_DONE)
                raiseDatabase(QStringLiteral("データベースの処理でエラーが発生しました。(%1)")
                                  .arg(QString::fromUtf8(sqlite3_errmsg(db_))));
            sqlite3_reset(statement.get());
            sqlite3_clear_bindings(statement.get());
        }
        // Pages that are missing or unreadable end the table early.
        if (rows != table->num_rows)
            raiseDamaged(jetFile_, QStringLiteral("%1: %2/%3").arg(name).arg(rows).arg(table->num_rows));
    }

    void bindText(sqlite3_stmt* statement, int index, const Column& column) {
        sqlite3_bind_text(statement, index, column.text.get(), column.length, SQLITE_TRANSIENT);
    }

    void bindValue(MdbHandle* mdb, sqlite3_stmt* statement, int index, Column& column, const MdbField* field,
                   bool cracked, const QString& table) {
        MdbColumn* col = column.column;
        // A Yes/No value lives in the null mask itself and is never Null.
        if (col->col_type == MDB_BOOL) {
            sqlite3_bind_int(statement, index, column.length > 0 && column.text[0] == '1' ? 1 : 0);
            return;
        }
        const bool isNull = cracked ? (!field || field->is_null) : column.length == 0;
        if (isNull) {
            sqlite3_bind_null(statement, index);
            return;
        }
        if (static_cast<std::size_t>(column.length) >= kBindSize - 1)
            raiseDatabase(QStringLiteral("データベース '%1' のテーブル '%2' の列 '%3' の値が長すぎるため読み込めません。")
                              .arg(shownPath(jetFile_), table, QString::fromUtf8(col->name)));
        // Fixed-size values from their bytes when the row could be cracked.
        const void* bytes = field && field->value ? static_cast<const char*>(field->value) : nullptr;
        const int size = field ? field->siz : 0;
        switch (col->col_type) {
        case MDB_BYTE:
            if (bytes && size >= 1) return void(sqlite3_bind_int(statement, index, *static_cast<const quint8*>(bytes)));
            break;
        case MDB_INT:
            if (bytes && size >= 2) return void(sqlite3_bind_int(statement, index, littleEndian<qint16>(bytes)));
            break;
        case MDB_LONGINT:
            if (bytes && size >= 4) return void(sqlite3_bind_int(statement, index, littleEndian<qint32>(bytes)));
            break;
        case MDB_FLOAT:
            if (bytes && size >= 4) {
                const quint32 bits = littleEndian<quint32>(bytes);
                float value;
                std::memcpy(&value, &bits, sizeof value);
                return void(sqlite3_bind_double(statement, index, value));
            }
            break;
        case MDB_DOUBLE:
        case MDB_DATETIME:
            if (bytes && size >= 8) {
                const quint64 bits = littleEndian<quint64>(bytes);
                double value;
                std::memcpy(&value, &bits, sizeof value);
                if (col->col_type == MDB_DOUBLE) return void(sqlite3_bind_double(statement, index, value));
                const QByteArray text = dateText(value).toUtf8();
                return void(sqlite3_bind_text(statement, index, text.constData(), static_cast<int>(text.size()),
                                              SQLITE_TRANSIENT));
            }
            break;
        case MDB_MONEY:
            if (bytes && size >= 8) {
                // Whole amounts stay exact integers; others keep their four decimals.
                const qint64 scaled = littleEndian<qint64>(bytes);
                if (scaled % 10000 == 0) return void(sqlite3_bind_int64(statement, index, scaled / 10000));
                return void(sqlite3_bind_double(statement, index, static_cast<double>(scaled) / 10000.0));
            }
            break;
        case MDB_BINARY:
            if (bytes) return void(sqlite3_bind_blob(statement, index, bytes, size, SQLITE_TRANSIENT));
            break;
        case MDB_REPID:
            if (bytes && size >= 16) {
                // In the registry form ADO gave a GUID, its first three parts little-endian.
                const auto* b = static_cast<const unsigned char*>(bytes);
                const QByteArray text =
                    QStringLiteral("{%1-%2-%3-%4-%5}")
                        .arg(littleEndian<quint32>(b), 8, 16, QLatin1Char('0'))
                        .arg(littleEndian<quint16>(b + 4), 4, 16, QLatin1Char('0'))
                        .arg(littleEndian<quint16>(b + 6), 4, 16, QLatin1Char('0'))
                        .arg(QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(b + 8), 2).toHex()))
                        .arg(QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(b + 10), 6).toHex()))
                        .toUpper()
                        .toUtf8();
                return void(sqlite3_bind_text(statement, index, text.constData(), static_cast<int>(text.size()),
                                              SQLITE_TRANSIENT));
            }
            break;
        case MDB_OLE: {
            size_t length = 0;
            void* data = mdb_ole_read_full(mdb, col, &length);
            sqlite3_bind_blob(statement, index, data ? data : "", static_cast<int>(length), SQLITE_TRANSIENT);
            g_free(data);
            return;
        }
        default: break;
        }
        // Text, memo, GUID and decimal values, and numbers of a row that
        // could not be cracked: libmdb's text, which the column's type turns
        // back into a number where it is one.
        if (col->col_type == MDB_DATETIME) {
            VbDate date;
            if (vbParseDate(QString::fromUtf8(column.text.get(), column.length), date)) {
                const QByteArray text = sqlite::storedDateText(date).toUtf8();
                return void(sqlite3_bind_text(statement, index, text.constData(), static_cast<int>(text.size()),
                                              SQLITE_TRANSIENT));
            }
        }
        bindText(statement, index, column);
    }

    QString jetFile_;
    sqlite3* db_;
};

int pageSizeOf(const QByteArray& header) {
    return header.size() > 0x14 && header.at(0x14) == 0 ? kJet3PageSize : kJet4PageSize;
}

// The copies made in this run, so that the many links to one file read it once.
struct Made {
    qint64 size;
    qint64 modified;
    QString copy;
    std::optional<VbError> failure;
};
std::map<QString, Made>& madeCopies() {
    static std::map<QString, Made> copies;
    return copies;
}

}  // namespace

bool isJetFile(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return false;
    const QByteArray header = file.read(19);
    return header.size() == 19 && header.startsWith(QByteArray("\x00\x01\x00\x00", 4)) &&
           header.mid(4) == QByteArray("Standard Jet DB");
}

void copyToSqlite(const QString& jetFile, const QString& sqliteFile) {
    const ReadLock lock(jetFile);
    QFile file(jetFile);
    if (!file.open(QIODevice::ReadOnly))
        raiseDatabase(QStringLiteral("ファイル '%1' を開けません。(%2)").arg(shownPath(jetFile), file.errorString()));
    const int pageSize = pageSizeOf(file.read(0x20));
    const qint64 size = file.size();
    file.close();
    // Jet writes whole pages; anything else was cut on its way here.
    if (size < 3 * pageSize || size % pageSize != 0)
        raiseDamaged(jetFile, QStringLiteral("%1 bytes").arg(size));

    const QuietStandardError quiet;
    const std::unique_ptr<MdbHandle, MdbCloser> mdb(mdb_open(QFile::encodeName(jetFile).constData(), MDB_NOFLAGS));
    if (!mdb) raiseDamaged(jetFile, QStringLiteral("header"));
    mdb_set_bind_size(mdb.get(), kBindSize);
    mdb_set_date_fmt(mdb.get(), "%Y-%m-%d %H:%M:%S");
    mdb_set_boolean_fmt_numbers(mdb.get());

    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(QFile::encodeName(sqliteFile).constData(), &raw,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE, nullptr);
    const std::unique_ptr<sqlite3, SqliteCloser> db(raw);
    if (opened != SQLITE_OK)
        raiseDatabase(QStringLiteral("データベース '%1' を作成できません。(%2)")
                          .arg(QDir::toNativeSeparators(sqliteFile),
                               QString::fromUtf8(db ? sqlite3_errmsg(db.get()) : sqlite3_errstr(opened))));
    Copier copier(jetFile, db.get());
    // The copy is renamed into place only when complete, so it needs no journal.
    sqlite3_exec(db.get(), "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN", nullptr, nullptr, nullptr);
    copier.copyTables(mdb.get());
    if (sqlite3_exec(db.get(), "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        raiseDatabase(QStringLiteral("データベースの処理でエラーが発生しました。(%1)")
                          .arg(QString::fromUtf8(sqlite3_errmsg(db.get()))));
}

QString sqliteCopy(const QString& jetFile, const QString& folder) {
    const QFileInfo info(jetFile);
    const QString source = info.canonicalFilePath().isEmpty() ? info.absoluteFilePath() : info.canonicalFilePath();
    const qint64 size = info.size();
    const qint64 modified = info.lastModified().toMSecsSinceEpoch();
    auto& made = madeCopies();
    if (const auto earlier = made.find(source);
        earlier != made.end() && earlier->second.size == size && earlier->second.modified == modified) {
        if (earlier->second.failure) throw *earlier->second.failure;
        if (QFileInfo(earlier->second.copy).isFile()) return earlier->second.copy;
    }

    // One copy per Jet file, named for its path; its size and time are in the
    // name, so a copy of an older state is never taken for the current one.
    const QString stem = info.completeBaseName() + QLatin1Char('-') +
                         QString::fromLatin1(QCryptographicHash::hash(source.toUtf8(), QCryptographicHash::Sha1)
                                                 .toHex()
                                                 .left(12));
    const QDir dir(folder);
    const QString copy = dir.filePath(QStringLiteral("%1-%2-%3.sqlite").arg(stem).arg(size).arg(modified));
    try {
        if (!QFileInfo(copy).isFile()) {
            if (!QDir().mkpath(folder))
                raiseDatabase(QStringLiteral("作業フォルダー「%1」を作成できません。").arg(QDir::toNativeSeparators(folder)));
            const QString part = copy + QStringLiteral(".part%1").arg(QCoreApplication::applicationPid());
            QFile::remove(part);
            try {
                copyToSqlite(jetFile, part);
            } catch (...) {
                QFile::remove(part);
                throw;
            }
            if (!QFile::rename(part, copy)) {
                QFile::remove(part);
                raiseDatabase(QStringLiteral("ファイル '%1' を作成できません。").arg(QDir::toNativeSeparators(copy)));
            }
            // Copies of the file's earlier states are of no further use, nor
            // is a copy that an earlier run left half written.
            for (const QString& old : dir.entryList({stem + QStringLiteral("-*.sqlite"), stem + QStringLiteral("-*.sqlite.part*")},
                                                    QDir::Files)) {
                if (dir.filePath(old) != copy) QFile::remove(dir.filePath(old));
            }
        } else {
            // The copy stands for the file as it is: a program writing it now
            // makes the copy as doubtful as the file.
            const ReadLock lock(jetFile);
        }
    } catch (const VbError& e) {
        made[source] = Made{size, modified, copy, e};
        throw;
    }
    made[source] = Made{size, modified, copy, std::nullopt};
    return copy;
}

QString attachableFile(const QString& file) {
    if (!isJetFile(file)) return file;
    return sqliteCopy(file, app::path() + QStringLiteral("/Temp"));
}

}  // namespace kelvary::jet
