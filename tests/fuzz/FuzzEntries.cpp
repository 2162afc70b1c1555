// The fuzz entries. Readers that take a path get the bytes as a file in a
// folder made once per process (in memory under /dev/shm where there is one,
// so a long run does not wear the disk). Each entry reads the file the way the
// program does and then checks what the reader promises about the result.
#include "fuzz/FuzzEntries.h"

#include "checks/RuleFile.h"
#include "db/clsSqlText.h"
#include "intake/ApplicationFile.h"
#include "platform/AppObject.h"
#include "platform/Cp932.h"
#include "platform/JetSql.h"
#include "platform/LayoutDocument.h"
#include "platform/ProfileFile.h"
#include "platform/SequentialInput.h"
#include "platform/SqliteConnection.h"
#include "platform/VbError.h"
#include "startup/RunOutcome.h"
#include "startup/UserInterface.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <string>

namespace kelvary::fuzz {
namespace {

[[noreturn]] void finding(const QString& what) { throw FuzzFinding(what.toStdString()); }

const QTemporaryDir& scratchFolder() {
    static const auto folder = [] {
        const QString base = QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath();
        auto made = std::make_unique<QTemporaryDir>(base + QStringLiteral("/kelvary-fuzz-XXXXXX"));
        if (!made->isValid()) throw std::runtime_error("cannot make a scratch folder for the fuzz inputs");
        // Routines that trap their own errors log them under the program
        // folder; here that is the scratch folder, not wherever we started.
        app::setPath(made->path());
        return made;
    }();
    return *folder;
}

// The fuzz bytes as a file of the given name; a file of the same name from
// the previous input is replaced.
QString asFile(const std::uint8_t* data, std::size_t size, const QString& name) {
    // The error log of the previous input goes, so a long run does not fill memory.
    QFile::remove(scratchFolder().filePath(QStringLiteral("Temp/kelvary.log")));
    const QString path = scratchFolder().filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) != static_cast<qint64>(size))
        throw std::runtime_error("cannot write the fuzz input to " + path.toStdString());
    return path;
}

// Every successful read consumes at least one character, so a file of n
// bytes can give no more than n + 1 reads; more means a read that stands still.
void requireProgress(long& reads, std::size_t size, const char* what) {
    if (++reads > static_cast<long>(size) + 1)
        finding(QStringLiteral("%1 does not advance through the file").arg(QLatin1String(what)));
}

// ---- application data file -------------------------------------------------

// Reads the whole file field by field or line by line, as far as it goes.
void readAll(const QString& path, std::size_t size, bool byLine) {
    try {
        SequentialInput file(path);
        long reads = 0;
        while (!file.eof()) {
            requireProgress(reads, size, byLine ? "lineInput()" : "input()");
            if (!byLine) {
                (void)file.input().text();
                continue;
            }
            const QString line = file.lineInput();
            if (line.contains(QLatin1Char('\n')) || line.contains(QLatin1Char('\r')))
                finding(QStringLiteral("lineInput() returned a line break: ") + line);
        }
    } catch (const VbError&) {
    }
}

// One section as the intake classes read it: its header, then records of
// fieldCount fields up to "[End]". The [DocData] records go on into an INSERT
// statement and its SQLite form, as the program does with them.
void readSection(const QString& path, std::size_t size, const QString& header, int fieldCount) {
    try {
        SequentialInput file(path);
        intake::searchHeader(file, header);
        clsSqlText sql;
        long reads = 0;
        while (!file.eof()) {
            requireProgress(reads, size, "readRecord()");
            const QList<Variant> record = intake::readRecord(file, fieldCount);
            if (intake::isEndRecord(record)) break;
            if (record.size() != fieldCount)
                finding(QStringLiteral("a record of %1 fields instead of %2").arg(record.size()).arg(fieldCount));
            const QString key = record[0].text();
            if (fieldCount == 2) {
                (void)record[1].toLong();
            } else if (header == QLatin1String("[DocData]")) {
                const double code = record[2].isNumeric() && !record[2].isEmpty() ? record[2].toDouble() : 0;
                sql.SetData(key, record[1], code == 2 ? 1 : code == 3 ? 2 : 0);
            }
        }
        if (header == QLatin1String("[DocData]")) {
            sql.SetTable(QStringLiteral("tmpAPData"));
            (void)translateJetSql(sql.GetInsertSql());
        }
    } catch (const VbError&) {
    }
}

// ---- profile files ---------------------------------------------------------

struct NamePair {
    QString section;
    QString key;
};

// The first section header and the first entry after it, as names to look up,
// so that the lookups meet the file's own names and not only the fixed ones.
NamePair firstNamesOf(const QByteArray& bytes) {
    NamePair names;
    for (const QString& raw : cp932Decode(bytes).split(QLatin1Char('\n'))) {
        const QString line = raw.trimmed();
        if (names.section.isEmpty()) {
            const qsizetype close = line.indexOf(QLatin1Char(']'));
            if (line.startsWith(QLatin1Char('[')) && close > 0) names.section = line.mid(1, close - 1);
        } else if (const qsizetype equals = line.indexOf(QLatin1Char('=')); equals > 0) {
            names.key = line.left(equals);
            break;
        }
    }
    return names;
}

// ---- rule files ------------------------------------------------------------

void readRule(const QString& path, const QString& key) {
    try {
        SequentialInput file(path);
        seekSumRule(file, key);
        const SumRule rule = readSumRule(file);
        const auto count = static_cast<long>(rule.terms.size());
        if (count > std::max(rule.termCount, 0L))
            finding(QStringLiteral("%1 terms read for a rule of %2").arg(count).arg(rule.termCount));
        if (rule.cutShort && count >= rule.termCount)
            finding(QStringLiteral("a complete rule marked as cut short"));
    } catch (const VbError&) {
    }
}

// ---- Jet SQL ---------------------------------------------------------------

struct SqliteClose {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
struct StatementFinalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

// An in-memory database with tables of the names and column types the
// program's statements use, so that many translations get past name lookup.
sqlite3* scratchDatabase() {
    static const std::unique_ptr<sqlite3, SqliteClose> db = [] {
        sqlite3* raw = nullptr;
        if (sqlite3_open(":memory:", &raw) != SQLITE_OK) throw std::runtime_error("cannot open an in-memory database");
        std::unique_ptr<sqlite3, SqliteClose> owned(raw);
        const char* schema =
            "create table tmpAPData(APDataCode INTEGER, MainDataCode INTEGER, EnforceDate DATETIME, "
            "ApplierColumnName TEXT, Flag BOOLEAN, Amount DOUBLE);"
            "create table tblIndex(IndexID INTEGER, ApplyerName TEXT, FYearNumber DOUBLE, FYearFrom DATETIME, "
            "FYearTo DATETIME, LinkCode INTEGER, MainDataCode INTEGER, DataType INTEGER);"
            "create table tmpFSItemData(FSDataCode INTEGER, ItemCode INTEGER, ItemName TEXT, ItemValue DOUBLE, "
            "DocCode INTEGER, SortNumber INTEGER);"
            "create table M_FSItem(ItemCode INTEGER, ItemName TEXT, DocName TEXT, EnforceDates TEXT, "
            "SortNumber_H INTEGER, ItemValueType INTEGER);";
        if (sqlite3_exec(owned.get(), schema, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error("cannot create the scratch tables");
        return owned;
    }();
    return db.get();
}

// Where SQLite would see a comment in the text: "--" or "/*" outside quoted
// texts and names. The translation must never make one, since it would hide
// the rest of the statement.
qsizetype commentOpening(const QString& sql) {
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql[i];
        const char16_t close = c == u'\'' ? u'\'' : c == u'"' ? u'"' : c == u'`' ? u'`' : c == u'[' ? u']' : 0;
        if (close != 0) {
            const qsizetype end = sql.indexOf(QChar(close), i + 1);
            if (end < 0) return -1;  // SQLite refuses an unclosed one anyway
            i = end;
            continue;
        }
        if (i + 1 < sql.size() && ((c == u'-' && sql[i + 1] == u'-') || (c == u'/' && sql[i + 1] == u'*'))) return i;
    }
    return -1;
}

// ---- statement builder -----------------------------------------------------

// The columns a fuzz input writes, one of each type the working tables use.
struct BuilderColumn {
    const char* name;
    int adoType;
};
constexpr BuilderColumn kBuilderColumns[] = {
    {"N1", ado::adInteger},  {"N2", ado::adDouble},     {"N3", ado::adCurrency},      {"N4", ado::adBoolean},
    {"D1", ado::adDate},     {"T1", ado::adVarWChar},   {"T2", ado::adLongVarWChar},
};
constexpr int kBuilderColumnCount = static_cast<int>(std::size(kBuilderColumns));

// Nobody answers a fuzz run: every message is closed unread, as a user who
// clicks every box away would.
class SilentUserInterface : public UserInterface {
public:
    MsgAnswer showMessage(const MessageRequest&) override { return MsgAnswer::No; }
    void showReport(const QString&, const QString&) override {}
    bool isBatch() const override { return true; }
};

// A database file of the program's kind with the table the builder writes
// and a second table no statement of the builder may touch.
SqliteConnection& builderDatabase() {
    static const std::unique_ptr<SqliteConnection> connection = [] {
        const QString path = scratchFolder().filePath(QStringLiteral("Builder.mdb"));
        QFile::remove(path);
        sqlite3* raw = nullptr;
        if (sqlite3_open(QFile::encodeName(path).constData(), &raw) != SQLITE_OK)
            throw std::runtime_error("cannot make the builder's database");
        const std::unique_ptr<sqlite3, SqliteClose> db(raw);
        const char* schema =
            "create table tmpFuzz(N1 INTEGER, N2 DOUBLE, N3 CURRENCY, N4 BOOLEAN, D1 DATETIME, T1 TEXT, "
            "T2 LONGTEXT);"
            "create table tblKeep(Word TEXT); insert into tblKeep values('kept');";
        if (sqlite3_exec(db.get(), schema, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error("cannot create the builder's tables");
        // Reports go to the silent boxes rather than, one screen each, to
        // standard error, which would bury libFuzzer's own output.
        QFile ini(scratchFolder().filePath(QStringLiteral("UserData.ini")));
        if (!ini.open(QIODevice::WriteOnly | QIODevice::Truncate) || ini.write("[System]\r\nShowErrMsg=-1\r\n") < 0)
            throw std::runtime_error("cannot write the settings of the builder's fuzz runs");
        ini.close();
        setUserInterface(std::make_unique<SilentUserInterface>());
        return std::make_unique<SqliteConnection>(path);
    }();
    return *connection;
}

bool isBlankText(const QString& text) {
    for (const QChar c : text)
        if (c != QLatin1Char(' ') && c != QChar(u'\u3000')) return false;
    return true;
}

// Whether the value of a number or date column was a value the runtime
// converts: the statement is refused exactly when one was not.
bool converts(const Variant& value, int adoType) {
    if (adoType == ado::adVarWChar || adoType == ado::adLongVarWChar) return true;
    if (value.isNull() || isBlankText(value.text())) return true;
    const QString word = value.text().trimmed();
    if (adoType == ado::adDate) {
        VbDate date;
        double serial = 0;
        if (vbParseDate(value.text(), date)) return date.date.year() >= 100;
        // The serials of 100-01-01 and 9999-12-31.
        return vbParseNumber(value.text(), serial) && serial >= -657434.0 && serial < 2958466.0;
    }
    if (word.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ||
        word.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return true;
    double number = 0;
    if (!vbParseNumber(value.text(), number) || !std::isfinite(number)) return false;
    // What a Long and a Currency (four decimals in 64 bits) hold.
    if (adoType == ado::adInteger) return std::fabs(std::nearbyint(number)) <= 2147483647.0 ||
                                          std::nearbyint(number) == -2147483648.0;
    if (adoType == ado::adCurrency) return std::fabs(std::nearbyint(number * 10000.0)) <= 9.2e18;
    return true;
}

void mCheckWrittenRow(SqliteConnection& db, const QList<std::pair<int, Variant>>& written, const QString& statement);

}  // namespace

int fuzzSqlText(const std::uint8_t* data, std::size_t size) {
    QFile::remove(scratchFolder().filePath(QStringLiteral("Temp/kelvary.log")));
    SqliteConnection& db = builderDatabase();
    db.execute(QStringLiteral("delete from tmpFuzz"));

    // One value a line: the first byte picks the column ("0" to "6" name
    // them in order), the rest is the value's text. A column takes the first value given for it.
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QList<std::pair<int, Variant>> written;
    clsSqlText sql;
    for (const QByteArray& line : bytes.split('\n')) {
        if (line.isEmpty()) continue;
        const int column = ((static_cast<unsigned char>(line[0]) - '0') % kBuilderColumnCount + kBuilderColumnCount) %
                           kBuilderColumnCount;
        if (std::any_of(written.begin(), written.end(), [&](const auto& w) { return w.first == column; })) continue;
        const QString text = QString::fromUtf8(line.mid(1));
        const Variant value = text == QLatin1String("#NULL#") ? Variant::null() : Variant(text);
        int fieldType = 3;
        int adoType = kBuilderColumns[column].adoType;
        sql.SetData(QLatin1String(kBuilderColumns[column].name), value, fieldType, adoType);
        written.append({column, value});
    }
    if (written.isEmpty()) return 0;
    sql.SetTable(QStringLiteral("tmpFuzz"));

    const long errorsBefore = errorsReported();
    const QString statement = sql.GetInsertSql();
    const bool allConvert = std::all_of(written.begin(), written.end(), [](const auto& w) {
        return converts(w.second, kBuilderColumns[w.first].adoType);
    });
    if (statement.isEmpty()) {
        if (allConvert) finding(QStringLiteral("a statement of convertible values was refused"));
        if (errorsReported() != errorsBefore + 1) finding(QStringLiteral("a refusal not reported exactly once"));
        return 0;
    }
    if (!allConvert) finding(QStringLiteral("a value that does not convert was written: ") + statement);
    if (const qsizetype at = commentOpening(statement); at >= 0)
        finding(QStringLiteral("the statement opens a comment at %1: %2").arg(at).arg(statement));
    try {
        if (db.execute(translateJetSql(statement)) != 1) finding(QStringLiteral("not one row written: ") + statement);
    } catch (const VbError& e) {
        finding(QStringLiteral("the built statement failed (%1): %2").arg(e.description(), statement));
    }

    try {
        mCheckWrittenRow(db, written, statement);
    } catch (const VbError& e) {
        finding(QStringLiteral("the row cannot be read back (%1): %2").arg(e.description(), statement));
    }
    return 0;
}

namespace {

// Nothing but the one row: the other table is as it was, and every value
// reads back as the literal of its column's type.
void mCheckWrittenRow(SqliteConnection& db, const QList<std::pair<int, Variant>>& written, const QString& statement) {
    const Recordset kept = db.query(QStringLiteral("select count(*), max(Word) from tblKeep"));
    if (kept.value(0).toLong() != 1 || kept.value(1).text() != QLatin1String("kept"))
        finding(QStringLiteral("the statement reached another table: ") + statement);
    static const QRegularExpression storedDate(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    for (const auto& [column, value] : written) {
        const QString name = QLatin1String(kBuilderColumns[column].name);
        const int adoType = kBuilderColumns[column].adoType;
        const Recordset rows = db.query(QStringLiteral("select typeof(%1), %1, cast(%1 as text) from tmpFuzz").arg(name));
        if (rows.recordCount() != 1) finding(QStringLiteral("%1 rows after one insert").arg(rows.recordCount()));
        const QString storage = rows.value(0).text();
        const Variant& stored = rows.value(1);
        if (adoType == ado::adVarWChar || adoType == ado::adLongVarWChar) {
            // A NUL cannot stand in statement text; the rest is kept as written.
            if (storage != QLatin1String("text") || stored.text() != QString(value.text()).remove(QChar(u'\0')))
                finding(QStringLiteral("%1 holds \"%2\" (%3) for \"%4\"").arg(name, stored.text(), storage, value.text()));
        } else if (value.isNull() || isBlankText(value.text())) {
            if (storage != QLatin1String("null")) finding(QStringLiteral("%1 holds %2 for a blank").arg(name, storage));
        } else if (adoType == ado::adDate) {
            const QString storedText = rows.value(2).text();
            if (storage != QLatin1String("text") || !storedDate.match(storedText).hasMatch())
                finding(QStringLiteral("%1 holds \"%2\" for the date \"%3\"").arg(name, storedText, value.text()));
        } else {
            if (storage != QLatin1String("integer") && storage != QLatin1String("real"))
                finding(QStringLiteral("%1 holds a %2 for the number \"%3\"").arg(name, storage, value.text()));
            double number = 0;
            if (adoType != ado::adBoolean && vbParseNumber(value.text(), number)) {
                const double got = stored.toDouble();
                // A Long is rounded half to even, a Currency to four
                // decimals; CStr keeps fifteen significant digits.
                const double wanted = adoType == ado::adInteger ? std::nearbyint(number) : number;
                const double slack = std::fabs(wanted) * 1e-14 + (adoType == ado::adCurrency ? 5e-5 : 0);
                if (std::fabs(got - wanted) > slack)
                    finding(QStringLiteral("%1 holds %2 for the number \"%3\"").arg(name).arg(got).arg(value.text()));
            }
        }
    }
}

}  // namespace

int fuzzSequentialInput(const std::uint8_t* data, std::size_t size) {
    const QString path = asFile(data, size, QStringLiteral("app.dat"));
    readAll(path, size, false);
    readAll(path, size, true);
    readSection(path, size, QStringLiteral("[BasicInfo]"), 2);
    readSection(path, size, QStringLiteral("[DocData]"), 3);
    readSection(path, size, QStringLiteral("[UserInfo]"), 3);
    return 0;
}

int fuzzProfile(const std::uint8_t* data, std::size_t size) {
    const QString path = asFile(data, size, QStringLiteral("UserData.ini"));
    try {
        const NamePair own = firstNamesOf(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
        (void)readProfileString(path, QStringLiteral("System"), QStringLiteral("ShowErrMsg"), QStringLiteral("-1"));
        (void)readProfileString(path, QStringLiteral("UserInfo"), QStringLiteral("UserName"));
        (void)readProfileString(path, own.section, QStringLiteral("UserName"));
        const QString ownBefore = readProfileString(path, own.section, own.key, QStringLiteral("(none)"));

        // A value written must read back as written, and must leave the
        // file's other entries as they were.
        const QString written = QStringLiteral("検査値-123");
        writeProfileString(path, QStringLiteral("UserInfo"), QStringLiteral("UserName"), written);
        const QString readBack = readProfileString(path, QStringLiteral("UserInfo"), QStringLiteral("UserName"));
        if (readBack != written) finding(QStringLiteral("wrote \"%1\", read back \"%2\"").arg(written, readBack));
        // The file's own entry may only change by being the one written.
        const QString ownAfter = readProfileString(path, own.section, own.key, QStringLiteral("(none)"));
        if (ownAfter != ownBefore && ownAfter != written)
            finding(QStringLiteral("[%1] %2 changed from \"%3\" to \"%4\" by a write elsewhere")
                        .arg(own.section, own.key, ownBefore, ownAfter));
    } catch (const VbError&) {
    }
    return 0;
}

int fuzzRuleFile(const std::uint8_t* data, std::size_t size) {
    const QString path = asFile(data, size, QStringLiteral("DbtData0607H.txt"));
    for (const char* key : {"A400", "A401", "A660"}) readRule(path, QLatin1String(key));
    // The first header of the file itself, so mutated headers are read too.
    const QString text = cp932Decode(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(QLatin1Char(':'))) {
            readRule(path, trimmed.mid(1));
            break;
        }
    }
    return 0;
}

int fuzzLayout(const std::uint8_t* data, std::size_t size) {
    const QString path = asFile(data, size, QStringLiteral("Layout.w30"));
    try {
        LayoutDocument layout = LayoutDocument::load(path);
        if (layout.pageCount() < 1 || layout.pageCount() > LayoutDocument::maxPages)
            finding(QStringLiteral("a layout of %1 pages").arg(layout.pageCount()));
        // Every field the layout has must be found again by its own name,
        // as the page builders address them.
        for (int number = 1; number <= layout.pageCount(); ++number) {
            QStringList names;
            for (const LayoutField& f : layout.page(number).fields) names << f.name;
            for (const QString& name : names) {
                LayoutField& found = layout.field(number, name);
                if (found.name.compare(name, Qt::CaseInsensitive) != 0)
                    finding(QStringLiteral("field \"%1\" found as \"%2\"").arg(name, found.name));
                QStringList subNames;
                for (const LayoutField& sub : found.subFields) subNames << sub.name;
                for (const QString& subName : subNames) {
                    if (layout.field(number, subName, name).name.compare(subName, Qt::CaseInsensitive) != 0)
                        finding(QStringLiteral("sub-field \"%1.%2\" not found as itself").arg(name, subName));
                }
            }
        }
        layout.clearData();
        const LayoutDocument copy = layout;
        (void)copy.page(1);
    } catch (const VbError&) {
    }
    return 0;
}

int fuzzJetSql(const std::uint8_t* data, std::size_t size) {
    const QString jet = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString translated;
    try {
        translated = translateJetSql(jet);
    } catch (const VbError&) {
        return 0;
    }
    if (const qsizetype at = commentOpening(translated); at >= 0)
        finding(QStringLiteral("the translation opens a comment at %1: %2").arg(at).arg(translated));

    const std::string utf8 = translated.toStdString();
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    const int rc = sqlite3_prepare_v2(scratchDatabase(), utf8.c_str(), static_cast<int>(utf8.size()), &raw, &tail);
    const std::unique_ptr<sqlite3_stmt, StatementFinalize> statement(raw);
    // One text is one statement: whatever SQLite leaves over must be blank.
    if (rc == SQLITE_OK && tail != nullptr && !QString::fromUtf8(tail).trimmed().isEmpty())
        finding(QStringLiteral("a second statement after the translation: ") + translated);
    return 0;
}

}  // namespace kelvary::fuzz
