// Jet databases read through their SQLite copy: what a linked table yields
// against what an independent reader read from the same files written by
// Access, the ADO types the copy reports for Jet's column kinds, the copy's
// reuse, and files that cannot be read.
#include "db/clsSqlText.h"
#include "platform/JetDatabase.h"
#include "platform/SqliteConnection.h"
#include "platform/VbError.h"

#include "support/ConnectedHome.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>

namespace kelvary {
namespace {

using test::readFile;
using test::testDataDir;
using test::writeFile;

QString jetData(const QString& name) { return testDataDir() + QStringLiteral("/jet/") + name; }

// The ADO field types Jet's provider gave each kind of column.
int adoTypeOfJetKind(const QString& kind) {
    static const std::map<QString, int> types{
        {"long", 3},     {"integer", 2}, {"double", 5},   {"text", 202}, {"memo", 203},
        {"boolean", 11}, {"datetime", 7}, {"ole", 205},  {"currency", 6}, {"byte", 17},
        {"float", 4},    {"numeric", 131}, {"repid", 72}, {"binary", 204},
    };
    const auto found = types.find(kind);
    return found == types.end() ? -1 : found->second;
}

QString dateText(const Variant& value) {
    const VbDate date = value.toDate();
    return date.date.toString(QStringLiteral("yyyy-MM-dd")) + QLatin1Char(' ') +
           QTime(0, 0).addSecs(date.secondsOfDay).toString(QStringLiteral("HH:mm:ss"));
}

class JetReading : public ::testing::Test {
public:
    void SetUp() override {
        const QString working = folder.file(QStringLiteral("SystemData.mdb"));
        test::sqlExec(working, "CREATE TABLE Unused (A INTEGER);");
        connection = std::make_unique<SqliteConnection>(working);
    }

    // A copy of a test file in the program folder, so that it can be changed.
    QString scratchCopy(const QString& name, const QString& as) {
        const QString path = folder.file(as);
        writeFile(path, readFile(jetData(name)));
        return path;
    }

    Recordset linked(const QString& jetFile, const QString& table) {
        connection->linkTable(table, table, jetFile);
        return connection->query(QStringLiteral("SELECT * FROM \"%1\"").arg(table));
    }

    QString copyFolder() const { return folder.file(QStringLiteral("Temp")); }
    QStringList copies() const {
        return QDir(copyFolder()).entryList({QStringLiteral("*.sqlite")}, QDir::Files, QDir::Name);
    }

    // The error a link to the file raises; empty when it links.
    QString linkError(const QString& jetFile, const QString& table) {
        return test::raised([&] { connection->linkTable(table, table, jetFile); }).description;
    }

    test::ProgramFolder folder;
    std::unique_ptr<SqliteConnection> connection;
};

// Every table, column, type and value, against the reader's JSON.
void expectAsTheIndependentReaderReadIt(JetReading& t, SqliteConnection& connection, const QString& name) {
    SCOPED_TRACE(name.toStdString());
    const QString jetFile = jetData(QStringLiteral("access/") + name + QStringLiteral(".mdb"));
    const QJsonObject expected =
        QJsonDocument::fromJson(readFile(jetData(QStringLiteral("access/") + name + QStringLiteral(".json")))).object();
    ASSERT_FALSE(expected.isEmpty());
    for (auto table = expected.begin(); table != expected.end(); ++table) {
        SCOPED_TRACE(table.key().toStdString());
        const QJsonArray columns = table.value().toObject().value(QStringLiteral("columns")).toArray();
        const QJsonArray rows = table.value().toObject().value(QStringLiteral("rows")).toArray();
        Recordset rs = t.linked(jetFile, table.key());
        ASSERT_EQ(rs.fieldCount(), columns.size());
        for (int c = 0; c < columns.size(); ++c) {
            const QJsonObject column = columns[c].toObject();
            EXPECT_EQ(rs.fieldName(c), column.value(QStringLiteral("name")).toString());
            EXPECT_EQ(rs.fieldType(c), adoTypeOfJetKind(column.value(QStringLiteral("type")).toString()))
                << rs.fieldName(c).toStdString();
        }
        ASSERT_EQ(rs.recordCount(), rows.size());
        for (int r = 0; r < rows.size(); ++r, rs.moveNext()) {
            const QJsonArray row = rows[r].toArray();
            for (int c = 0; c < columns.size(); ++c) {
                const QJsonValue want = row[c];
                const Variant& got = rs.value(c);
                const QString where = QStringLiteral("row %1 %2").arg(r).arg(rs.fieldName(c));
                if (want.isNull()) {
                    EXPECT_TRUE(got.isNull()) << where.toStdString();
                } else if (want.isBool()) {
                    EXPECT_EQ(got, Variant(want.toBool())) << where.toStdString();
                } else if (want.isDouble()) {
                    EXPECT_TRUE(got.isNumber()) << where.toStdString();
                    EXPECT_EQ(got.toDouble(), want.toDouble()) << where.toStdString();
                } else if (want.isObject()) {
                    // A binary value: its byte count.
                    const Recordset length = connection.query(
                        QStringLiteral("SELECT length(\"%1\") FROM \"%2\" LIMIT 1 OFFSET %3")
                            .arg(rs.fieldName(c), table.key())
                            .arg(r));
                    EXPECT_EQ(length.value(0).toLong(), want.toObject().value(QStringLiteral("bytes")).toInt())
                        << where.toStdString();
                } else if (rs.fieldType(c) == 7) {
                    EXPECT_EQ(dateText(got), want.toString()) << where.toStdString();
                } else {
                    EXPECT_EQ(got, Variant(want.toString())) << where.toStdString();
                }
            }
        }
    }
}

TEST_F(JetReading, FilesWrittenByAccessReadAsAnIndependentReaderReadsThem) {
    for (const char* name : {"test2V1997", "test2V2000", "testUnicodeCompV2003", "overflowTestV2000"})
        expectAsTheIndependentReaderReadIt(*this, *connection, QString::fromLatin1(name));
}

// Every kind of column with its ADO type, then the values of tests/data/jet/Kinds.tsv.
TEST_F(JetReading, EveryKindKeepsItsValueItsNullAndItsAdoType) {
    const std::map<QString, QList<int>> types{{QStringLiteral("Kinds"), {3, 2, 5, 6, 7, 11, 202, 203}},
                                              {QStringLiteral("MoreKinds"), {17, 4, 131, 72, 204}}};
    std::map<QString, QList<QList<Variant>>> records;
    for (const auto& [table, kinds] : types) {
        Recordset rs = linked(jetData(table + QStringLiteral(".mdb")), table);
        ASSERT_EQ(rs.fieldCount(), kinds.size());
        for (int c = 0; c < kinds.size(); ++c) EXPECT_EQ(rs.fieldType(c), kinds[c]) << c;
        for (; !rs.eof(); rs.moveNext()) {
            records[table].append(QList<Variant>());
            for (int c = 0; c < kinds.size(); ++c) records[table].back().append(rs.value(c));
        }
    }
    ASSERT_EQ(records[QStringLiteral("Kinds")].size(), 5);
    ASSERT_EQ(records[QStringLiteral("MoreKinds")].size(), 3);
    const QList<QStringList> rows = test::dataTable(QStringLiteral("jet/Kinds.tsv"));
    ASSERT_EQ(rows.size(), 39);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 5) << "line " << row[0].toStdString();
        SCOPED_TRACE("Kinds.tsv line " + row[0].toStdString());
        EXPECT_EQ(records[row[1]].value(row[2].toInt() - 1).value(row[3].toInt()), test::variantCell(row[4]));
    }
    // A memo over many pages comes back whole; a byte is a number, binary its bytes.
    EXPECT_EQ(records[QStringLiteral("Kinds")][2][7], Variant(QString(20000, QChar(0x6F22))));
    EXPECT_EQ(records[QStringLiteral("MoreKinds")][0][0].toLong(), 200);
    EXPECT_EQ(records[QStringLiteral("MoreKinds")][1][0].toLong(), 0);
    const Recordset raw = connection->query(QStringLiteral("SELECT hex(Raw) FROM MoreKinds WHERE Tiny = 200"));
    EXPECT_EQ(raw.value(0), Variant(QStringLiteral("01020300FF")));
}

TEST_F(JetReading, ARowCopyOfTheseKindsMeetsTheUnknownTypeBoxAsUnderAdo) {
    const Recordset rs = linked(jetData(QStringLiteral("MoreKinds.mdb")), QStringLiteral("MoreKinds"));
    test::RecordingUiGuard ui;
    clsSqlText sql;
    for (int c = 0; c < 4; ++c) {
        int fieldType = 3;
        int adoType = rs.fieldType(c);
        sql.SetData(rs.fieldName(c), rs.value(c), fieldType, adoType);
    }
    sql.SetTable(QStringLiteral("T"));
    EXPECT_EQ(sql.GetInsertSql(), QStringLiteral("insert into T(Tiny,Ratio,Exact,Guid) values('200',0.5,"
                                                 "'12345678901234.6','{6F9619FF-8B86-D011-B42D-00C04FC964FF}')"));
    QStringList boxes;
    for (const auto& message : ui->messages) boxes << message.request.text;
    EXPECT_EQ(boxes, (QStringList{QStringLiteral("clsSqlText(SetData)\r\n不明なFieldTypeTiny(タイプ:17)"),
                                  QStringLiteral("clsSqlText(SetData)\r\n不明なFieldTypeExact(タイプ:131)"),
                                  QStringLiteral("clsSqlText(SetData)\r\n不明なFieldTypeGuid(タイプ:72)")}));
}

TEST_F(JetReading, Jet3TextIsReadInTheCodePageOfTheFile) {
    // The Access 97 file again, its header's code page (at 0x3C, under the
    // header's mask) turned from 1252 to 932: the byte A3 of the currency
    // symbol, "£" in 1252, is the half-width "｣" in 932.
    QByteArray bytes = readFile(jetData(QStringLiteral("access/test2V1997.mdb")));
    ASSERT_EQ(bytes.at(0x14), 0) << "not a Jet 3 file";
    const int change = 1252 ^ 932;
    bytes[0x3C] = static_cast<char>(bytes.at(0x3C) ^ (change & 0xFF));
    bytes[0x3D] = static_cast<char>(bytes.at(0x3D) ^ (change >> 8));
    const QString jet3 = folder.file(QStringLiteral("Jet3.mdb"));
    writeFile(jet3, bytes);
    const Recordset rs = linked(jet3, QStringLiteral("MSP_PROJECTS"));
    EXPECT_EQ(rs.value(QStringLiteral("PROJ_OPT_CURRENCY_SYMBOL")), Variant(QStringLiteral("\uFF63")));
    EXPECT_EQ(rs.value(QStringLiteral("PROJ_NAME")), Variant(QStringLiteral("Project1")));
}

TEST_F(JetReading, TheCopyIsMadeOnceAndMadeAgainWhenTheFileChanges) {
    const QString jet = scratchCopy(QStringLiteral("Ledra-V2000.mdb"), QStringLiteral("Ledra.mdb"));
    EXPECT_TRUE(jet::isJetFile(jet));
    EXPECT_FALSE(jet::isJetFile(folder.file(QStringLiteral("SystemData.mdb"))));

    const QString copy = jet::attachableFile(jet);
    EXPECT_EQ(QFileInfo(copy).absolutePath(), copyFolder());
    ASSERT_EQ(copies().size(), 1);
    EXPECT_TRUE(copy.endsWith(QStringLiteral(".sqlite")));  // not a name the print run clears from Temp
    EXPECT_EQ(test::storedValue(copy, "SELECT count(*) FROM P_FSItemData"), QStringLiteral("integer:465"));
    // Nothing of the writing is left beside it.
    EXPECT_EQ(QDir(copyFolder()).entryList(QDir::Files).size(), 1);

    // An SQLite file is attached as it is.
    EXPECT_EQ(jet::attachableFile(folder.file(QStringLiteral("SystemData.mdb"))),
              folder.file(QStringLiteral("SystemData.mdb")));

    // Again, as another run would: the same file, not written again.
    const QDateTime written = QFileInfo(copy).lastModified();
    EXPECT_EQ(jet::sqliteCopy(jet, copyFolder()), copy);
    EXPECT_EQ(QFileInfo(copy).lastModified(), written);

    // The sibling program writes the file: a new copy replaces the old one,
    // and a copy an interrupted run left half written goes with it.
    writeFile(copy + QStringLiteral(".part99999"), "half written");
    QFile file(jet);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();
    const QString renewed = jet::attachableFile(jet);
    EXPECT_NE(renewed, copy);
    EXPECT_FALSE(QFileInfo::exists(copy));
    EXPECT_EQ(QDir(copyFolder()).entryList(QDir::Files), QStringList{QFileInfo(renewed).fileName()});
}

TEST_F(JetReading, CutShortOrDamagedFilesAreRefusedWithTheFileNamed) {
    const QByteArray whole = readFile(jetData(QStringLiteral("Ledra-V2000.mdb")));
    const QString damagedText = QStringLiteral("は壊れているため読み込めません。ファイルが途中で切れているか、内容が損なわれています。");
    const struct {
        const char* name;
        QByteArray bytes;
    } cases[] = {
        // Whole pages, but the later tables' pages are gone.
        {"cut in half", whole.left(whole.size() / 2)},
        {"cut inside a page", whole.left(whole.size() - 100)},
        {"header only", whole.left(4096)},
        {"a data page overwritten", whole.left(40 * 4096) + QByteArray(4096, '\xFF') + whole.mid(41 * 4096)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QString jet = folder.file(QStringLiteral("%1.mdb").arg(QString::fromLatin1(c.name)));
        writeFile(jet, c.bytes);
        const QString error = linkError(jet, QStringLiteral("T_FS")) + linkError(jet, QStringLiteral("T_FSNote")) +
                              linkError(jet, QStringLiteral("T_FSItemDetail"));
        EXPECT_TRUE(error.contains(QStringLiteral("データベース '") + QDir::toNativeSeparators(jet) +
                                   QStringLiteral("' ") + damagedText))
            << error.toStdString();
    }
    // No copy of a damaged file is left to be taken for a good one.
    EXPECT_EQ(copies(), QStringList());
    EXPECT_EQ(QDir(copyFolder()).entryList(QDir::Files), QStringList());
}

}  // namespace
}  // namespace kelvary
