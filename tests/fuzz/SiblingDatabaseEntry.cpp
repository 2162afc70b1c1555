// The fuzz entry of the sibling database: the input describes a Ledra.mdb
// (tables, columns with declared types, rows of values) that the run links,
// indexes, copies into the working tables and turns into statement payloads
// and symbols, as a print run does with the newest period. Random tables and
// columns, missing and extra columns, wrong types and hostile values all come
// from the same few lines of text:
//
//   T name              a table (any name, quoted as an SQL identifier)
//   C name type         a column of the current table
//   R v|v|...           a row: "~" Null, "i:12" an integer, "f:1.5" a real,
//                       "x:414243" a blob of those bytes, anything else text
//
// Statements SQLite refuses while the file is made are skipped. The run must
// leave the sibling database byte for byte as it was, and every working row
// it writes must belong to a period of the index.
#include "fuzz/FuzzEntries.h"

#include "db/mdlFunctionDatabase.h"
#include "intake/clsAnlBasicInfo.h"
#include "platform/AppObject.h"
#include "platform/Recordset.h"
#include "platform/VbError.h"
#include "print/PeriodImport.h"
#include "qr/clsQRCode_200804.h"
#include "startup/UserInterface.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <memory>
#include <string>

namespace kelvary::fuzz {
namespace {

[[noreturn]] void finding(const QString& what) { throw FuzzFinding(what.toStdString()); }

// Reports and questions go nowhere: the run answers No and goes on.
class SilentUi : public UserInterface {
public:
    MsgAnswer showMessage(const MessageRequest& request) override {
        return request.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
    }
    void showReport(const QString&, const QString&) override {}
    bool isBatch() const override { return true; }
};

const char* const kWorkingTables[] = {"tblIndex",        "TmpAPData",       "TmpFSInfoData",   "TmpFSItemData",
                                      "TmpFSNoteData",   "TmpFSCapitalRow", "TmpFSCapitalCol", "TmpOldFSInfoData",
                                      "TmpOldFSItemData", "TmpOldFSNoteData"};

void execFile(sqlite3* db, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + path.toStdString());
    const QByteArray sql = file.readAll();
    char* error = nullptr;
    if (sqlite3_exec(db, sql.constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const std::string message = error ? error : "";
        sqlite3_free(error);
        throw std::runtime_error(path.toStdString() + ": " + message);
    }
}

void makeDatabase(const QString& path, const QString& sqlFolder) {
    QFile::remove(path);
    sqlite3* db = nullptr;
    if (sqlite3_open(QFile::encodeName(path).constData(), &db) != SQLITE_OK) throw std::runtime_error("cannot make " + path.toStdString());
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owned(db, sqlite3_close);
    const QDir folder(sqlFolder);
    for (const QString& name : folder.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name))
        execFile(db, folder.filePath(name));
}

// A program folder of its own (the databases made from the shipped SQL
// text), the application file that names the sibling folder, and the window
// system the progress window needs; made once per process.
struct Home {
    QTemporaryDir dir;
    QString sibling;
    QString application;

    Home() : dir((QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath()) +
                 QStringLiteral("/kelvary-sibling-XXXXXX")) {
        if (!dir.isValid()) throw std::runtime_error("cannot make a scratch program folder");
        if (!QCoreApplication::instance()) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static int argc = 1;
            static char name[] = "fuzz_sibling_database";
            static char* argv[] = {name, nullptr};
            new QApplication(argc, argv);  // lives as long as the process
        }
        setUserInterface(std::make_unique<SilentUi>());
        app::setPath(dir.path());
        const QString data = QStringLiteral(KELVARY_SOURCE_DIR "/data");
        makeDatabase(dir.filePath(QStringLiteral("SystemData.mdb")), data + QStringLiteral("/schema"));
        makeDatabase(dir.filePath(QStringLiteral("Ledra_dummy.mdb")), data + QStringLiteral("/ledra"));
        QDir(dir.path()).mkpath(QStringLiteral("Temp"));
        QDir(dir.path()).mkpath(QStringLiteral("sibling"));
        QFile ini(dir.filePath(QStringLiteral("UserData.ini")));
        if (!ini.open(QIODevice::WriteOnly) || ini.write("[System]\r\nShowErrMsg=0\r\n[UserInfo]\r\nUserID=1\r\n") < 0)
            throw std::runtime_error("cannot write UserData.ini");
        ini.close();
        sibling = dir.filePath(QStringLiteral("sibling/Ledra.mdb"));
        application = dir.filePath(QStringLiteral("app.dat"));
        QFile app(application);
        if (!app.open(QIODevice::WriteOnly) ||
            app.write("\"[BasicInfo]\"\r\n\"ApplyDataID\",1\r\n\"LedraDataPath\",\"" + QFile::encodeName(dir.path()) +
                      "/sibling/\"\r\n\"[End]\",\"\"\r\n") < 0)
            throw std::runtime_error("cannot write the application file");
        app.close();
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") +
                               dir.filePath(QStringLiteral("SystemData.mdb"));
        gobjConnection = gobjOpenConnection();
        if (!gobjConnection) throw std::runtime_error("cannot open the working database");
    }
};

Home& home() {
    static Home made;
    return made;
}

QByteArray quotedIdentifier(const QByteArray& name) {
    QByteArray quoted = name;
    quoted.replace('"', "\"\"");
    return '"' + quoted + '"';
}

void bindValue(sqlite3_stmt* statement, int index, const QByteArray& value) {
    if (value == "~") {
        sqlite3_bind_null(statement, index);
    } else if (value.startsWith("i:")) {
        sqlite3_bind_int64(statement, index, value.mid(2).toLongLong());
    } else if (value.startsWith("f:")) {
        sqlite3_bind_double(statement, index, value.mid(2).toDouble());
    } else if (value.startsWith("x:")) {
        const QByteArray bytes = QByteArray::fromHex(value.mid(2));
        sqlite3_bind_blob(statement, index, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    } else {
        sqlite3_bind_text(statement, index, value.constData(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    }
}

// The database the input describes; SQLite's refusals are skipped.
void writeSibling(const QString& path, const QByteArray& description) {
    QFile::remove(path);
    sqlite3* db = nullptr;
    if (sqlite3_open(QFile::encodeName(path).constData(), &db) != SQLITE_OK) throw std::runtime_error("cannot make the sibling");
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owned(db, sqlite3_close);
    sqlite3_exec(db, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN", nullptr, nullptr, nullptr);
    QByteArray table;
    QList<QByteArray> columns;
    const auto createTable = [&] {
        if (table.isEmpty()) return;
        QByteArray sql = "CREATE TABLE " + quotedIdentifier(table) + " (";
        if (columns.isEmpty()) sql += "\"_\"";
        sql += columns.join(", ") + ")";
        sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
    };
    bool created = true;
    for (const QByteArray& raw : description.split('\n')) {
        const QByteArray line = raw.endsWith('\r') ? raw.chopped(1) : raw;
        if (line.startsWith("T ")) {
            if (!created) createTable();
            table = line.mid(2);
            columns.clear();
            created = false;
        } else if (line.startsWith("C ") && !created) {
            const QList<QByteArray> parts = line.mid(2).split(' ');
            columns << quotedIdentifier(parts.value(0)) + ' ' + parts.mid(1).join(' ').replace(')', ' ').replace(',', ' ').replace('-', ' ');
        } else if (line.startsWith("R ") && !table.isEmpty()) {
            if (!created) {
                createTable();
                created = true;
            }
            const QList<QByteArray> values = line.mid(2).split('|');
            QByteArray sql = "INSERT INTO " + quotedIdentifier(table) + " VALUES (";
            for (qsizetype i = 0; i < values.size(); ++i) sql += i == 0 ? "?" : ", ?";
            sql += ")";
            sqlite3_stmt* statement = nullptr;
            if (sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr) == SQLITE_OK) {
                for (qsizetype i = 0; i < values.size(); ++i) bindValue(statement, static_cast<int>(i + 1), values[i]);
                sqlite3_step(statement);
            }
            sqlite3_finalize(statement);
        }
    }
    if (!created) createTable();
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
}

QByteArray digestOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&file);
    return hash.result();
}

long countOf(const QString& sql) {
    const Recordset rs = gobjMakeRecordset(sql);
    if (rs.isNothing() || rs.eof()) return -1;
    return rs.value(0).toLong();
}

}  // namespace

int fuzzSiblingDatabase(const std::uint8_t* data, std::size_t size) {
    Home& h = home();
    QFile::remove(h.dir.filePath(QStringLiteral("Temp/kelvary.log")));
    writeSibling(h.sibling, QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const QByteArray before = digestOf(h.sibling);

    for (const char* table : kWorkingTables) gInitTable(QString::fromLatin1(table));
    {
        clsAnlBasicInfo basicInfo;
        basicInfo.LoadData(h.application);
    }
    // The newest period, as the print driver takes it first.
    Recordset periods = gobjMakeRecordset(QStringLiteral("Select IndexID, LinkCode, FYearNumber From tblIndex Order By IndexID Desc"));
    if (!periods.isNothing() && !periods.eof()) {
        const std::int32_t indexId = periods.value(0).toLong();
        const Variant link = periods.value(1);
        const std::int32_t linkCode = link.isNumeric() && !link.isNull() ? link.toLong() : 0;
        mCopyZaimuData(indexId, linkCode);
        mPutSpecialItemCode(indexId);
        mReplaceFixedAssets(indexId);
        mPref01Special(indexId);
        clsQRCode_200804 qr;
        qr.setVerifyID(QStringLiteral("0000000120090715093000"));
        qr.MakeFSData(0, indexId);
    }

    if (digestOf(h.sibling) != before) finding(QStringLiteral("the run changed the sibling database"));
    for (const char* table : {"tmpFSInfoData", "tmpFSItemData", "tmpFSNoteData", "tmpFSCapitalRow", "tmpFSCapitalCol"}) {
        const long strays = countOf(QStringLiteral("Select Count(*) From ") + QLatin1String(table) +
                                    QStringLiteral(" Where FSDataCode Not In (Select IndexID From tblIndex)"));
        if (strays > 0) finding(QStringLiteral("%1 rows of %2 belong to no indexed period").arg(strays).arg(QLatin1String(table)));
    }
    return 0;
}

}  // namespace kelvary::fuzz
