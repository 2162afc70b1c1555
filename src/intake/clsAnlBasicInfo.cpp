// The fiscal-period index of the run. The parent program writes Windows
// paths; here a backslash is a separator, and a relative folder or program
// path is taken from the folder of the application data file itself, so an
// application and its Ledra.mdb can travel together.
//
// Every step of LoadData runs under its own trap and the run goes on with
// what it has: an unreadable file or a broken sibling database must not stop
// the application form from being printed.
#include "intake/clsAnlBasicInfo.h"

#include "db/clsSqlText.h"
#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFile.h"
#include "platform/JetDatabase.h"
#include "platform/Recordset.h"
#include "platform/SequentialInput.h"
#include "platform/SqliteConnection.h"
#include "platform/VbError.h"
#include "startup/mdlFunctionStandard.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace kelvary {
namespace {

// The linked tables of the sibling database, in the order they are re-pointed.
constexpr const char* kLinkedTables[] = {
    "T_FS",     "T_FSCapitalCol", "T_FSCapitalRow", "T_FSNote",   "P_FSItemData",   "M_FSItem",
    "M_FSCapitalRow", "M_FSCapitalCol", "T_MainData", "M_FSDoc", "M_FSItemDetail", "T_FSItemDetail",
};

QString withClosingSeparator(QString folder) {
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    return folder;
}

// The sibling database is checked before any link moves: a missing, foreign,
// damaged or busy file is reported once, and the links go to the empty
// database instead of staying on whatever the previous run linked.
void requireSiblingDatabase(const QString& path) {
    try {
        SqliteConnection::requireReadableDatabase(jet::attachableFile(path));
    } catch (const VbError& e) {
        throw VbError(e.number(), QStringLiteral("財務諸表データ (LedraDataPath) を読み込めません。") +
                                      e.description() +
                                      QStringLiteral(" 財務諸表データのない申請として続けます。"));
    }
}

// Points the table at the database; a table that cannot be linked there (the
// failure is reported) reads the empty database beside the program instead.
void linkOrEmpty(const QString& table, const QString& database) {
    gRefreshLinkTable(table, database);
    const QString empty = gstrProgramInfo(0) + QStringLiteral("Ledra_dummy.mdb");
    if (gobjConnection && gobjConnection->linkedFile(table).isEmpty() && database != empty)
        gRefreshLinkTable(table, empty);
}

}  // namespace

void clsAnlBasicInfo::LoadData(const QString& file) {
    const QString place = QStringLiteral("LoadData");
    trapped(place, 0, [&] {
        SequentialInput input(file);
        const QString baseFolder = QFileInfo(file).absolutePath();
        mstrSearchHeader(QStringLiteral("[BasicInfo]"), input);
        intake::SectionKeyCheck keys(QStringLiteral("[BasicInfo]"),
                                     {QStringLiteral("ApplyDataID"), QStringLiteral("ZaimuDataPath"),
                                      QStringLiteral("ExcelDataFolder"), QStringLiteral("LedraDataPath"),
                                      QStringLiteral("LedraProgram"), QStringLiteral("PrefID")},
                                     QStringLiteral("LoadData"));
        while (!input.eof()) {
            const int line = input.lineNumber();
            const QList<Variant> record = intake::readRecord(input, 2);
            if (intake::isEndRecord(record)) break;
            keys.check(record[0], line);
            const QString key = record[0].text();
            const Variant& value = record[1];
            if (key == QLatin1String("ApplyDataID"))
                mlngMainDataCode = value.toLong();
            else if (key == QLatin1String("ZaimuDataPath"))
                mstrZaimuDataPath = value.text();
            else if (key == QLatin1String("ExcelDataFolder"))
                mstrExcelDataFolder = value.text();
            else if (key == QLatin1String("LedraDataPath"))
                mstrLedraDataPath = withClosingSeparator(intake::resolvedPath(value.text(), baseFolder));
            else if (key == QLatin1String("LedraProgram"))
                mstrLedraProgram = intake::resolvedPath(value.text(), baseFolder);
            else if (key == QLatin1String("PrefID"))
                mlngPrefID = value.toLong();
        }
    });

    QString database = gstrProgramInfo(0) + QStringLiteral("Ledra_dummy.mdb");
    trapped(place, 0, [&] {
        if (mstrLedraDataPath.isEmpty()) return;
        const QString sibling = mstrLedraDataPath + QStringLiteral("Ledra.mdb");
        requireSiblingDatabase(sibling);
        database = sibling;
    });
    gMsgForm(2, QStringLiteral("新財務諸表データのリンク情報更新中"));
    for (const char* table : kLinkedTables)
        trapped(place, 0, [&] { linkOrEmpty(QString::fromLatin1(table), database); });
    QCoreApplication::processEvents();
    if (!mstrLedraDataPath.isEmpty()) mMakeIndexNew();
    mSaveWork();
}

QString clsAnlBasicInfo::mstrSearchHeader(const QString& header, SequentialInput& file) {
    return trapped(QStringLiteral("mstrSearchHeader"), 1, {}, [&] { return intake::searchHeader(file, header); });
}

// Each statement that can fail runs under the routine's trap and a failing
// one is skipped, so a period with one unreadable column is still indexed
// with the others. The database routines trap their own errors.
void clsAnlBasicInfo::mMakeIndexNew() {
    const QString place = QStringLiteral("mMakeIndexNew");
    gMsgForm(2, QStringLiteral("新財務諸表データのインデックス作成中"));

    std::int32_t siblingKey = 0;
    trapped(place, 0, [&] {
        siblingKey = gvarGetData(QStringLiteral("MainDataCode"), QStringLiteral("T_MainData"),
                                 QStringLiteral("OtherSoftCode=") + QString::number(mlngMainDataCode),
                                 Variant::fromLong(0))
                         .toLong();
    });

    Recordset periods =
        gobjMakeRecordset(QStringLiteral(" Select * From T_FS ") + QStringLiteral(" Where MainDataCode=") +
                          QString::number(siblingKey) + QStringLiteral(" Order By FYearNumber,FSDataCode"));
    if (periods.isNothing()) return;

    for (; !periods.eof(); periods.moveNext()) {
        clsSqlText sql;
        trapped(place, 0, [&] { sql.SetData(QStringLiteral("ApplyerName"), periods[QStringLiteral("ApplyerName")], 1); });
        trapped(place, 0, [&] { sql.SetData(QStringLiteral("FYearNumber"), periods[QStringLiteral("FYearNumber")], 0); });
        trapped(place, 0, [&] { sql.SetData(QStringLiteral("FYearFrom"), periods[QStringLiteral("FYearFrom")], 2); });
        trapped(place, 0, [&] { sql.SetData(QStringLiteral("FYearTo"), periods[QStringLiteral("FYearTo")], 2); });
        trapped(place, 0, [&] { sql.SetData(QStringLiteral("LinkCode"), periods[QStringLiteral("FSDataCode")], 0); });
        sql.SetData(QStringLiteral("MainDataCode"), Variant::fromLong(siblingKey), 0);
        sql.SetData(QStringLiteral("DataType"), Variant::fromLong(0), 0);
        sql.SetTable(QStringLiteral("tblIndex"));
        const std::int32_t indexId = glngGetMaxValue(QStringLiteral("IndexID"), QStringLiteral("tblIndex"), QString()) + 1;
        sql.SetData(QStringLiteral("IndexID"), Variant::fromLong(indexId), 0);
        gblnExecuteSql(sql.GetInsertSql());
    }
}

// The statement builder and the database routines trap their own errors.
void clsAnlBasicInfo::mSaveWork() {
    clsSqlText sql;
    sql.SetData(QStringLiteral("OldZaimuDataPath"), Variant(mstrZaimuDataPath), 1);
    sql.SetData(QStringLiteral("MainDataCode"), Variant::fromLong(mlngMainDataCode), 1);
    sql.SetData(QStringLiteral("ExcelDataFolder"), Variant(mstrExcelDataFolder), 1);
    sql.SetData(QStringLiteral("NewZaimuDataPath"), Variant(mstrLedraDataPath), 1);
    sql.SetData(QStringLiteral("NewZaimuProgram"), Variant(mstrLedraProgram), 1);
    sql.SetTable(QStringLiteral("tblWork"));
    gblnExecuteSql(sql.GetNoWhereUpdateSql());
}

}  // namespace kelvary
