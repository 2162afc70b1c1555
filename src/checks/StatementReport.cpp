// The statement report composer. The equity grid is held as columns and rows;
// while a corporation's period is checked its cells stand as items, so that
// the relation and sum rules can name them by code like any other line.
#include "checks/StatementReport.h"

#include "checks/clsVerifyFSData.h"
#include "checks/frmCheckReport.h"
#include "db/clsSqlText.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "startup/frmMDIForm.h"
#include "startup/mdlFunctionStandard.h"

#include <memory>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kRule = QString(40, QChar(u'＝'));

// The row field that holds a column's amounts, by the column's item code.
QString rowFieldOf(std::int32_t columnCode) {
    switch (columnCode) {
    case 600: return QStringLiteral("Capital");
    case 610: return QStringLiteral("NewStockProposeDeposit");
    case 620: return QStringLiteral("CapitalReady");
    case 630: return QStringLiteral("CapitalOther");
    case 640: return QStringLiteral("CapitalOtherTotal");
    case 650: return QStringLiteral("BenefitReady");
    case 670: return QStringLiteral("BenefitOtherReadyFundSum");
    case 690: return QStringLiteral("BenefitOtherCarryOver");
    case 700: return QStringLiteral("BenefitTotal");
    case 710: return QStringLiteral("SelfStock");
    case 720: return QStringLiteral("SelfStockProposeDeposit");
    case 730: return QStringLiteral("CapitalTotal");
    case 740: return QStringLiteral("DiffOtherStock");
    case 750: return QStringLiteral("DiffCarryOverHedge");
    case 760: return QStringLiteral("DiffLand");
    case 770: return QStringLiteral("DiffTotal");
    case 780: return QStringLiteral("NewStockReserve");
    case 790: return QStringLiteral("AssetTotal");
    default: return QString();
    }
}

QString eraDate(const Variant& date) {
    if (date.isNull() || date.isEmpty()) return QString();
    return vbFormat(date, QStringLiteral("gggee年mm月dd日"));
}

void showReport(const QString& text) {
    auto window = std::make_unique<frmCheckReport>(frmMDIForm::loadedInstance());
    window->SetText(text);
    window->Dispose();
}

}  // namespace

void mCapitalDataConvert(std::int32_t fsDataCode) {
    trapped(QStringLiteral("mCapitalDataConvert"), 0, [&] {
        const QString key = QString::number(fsDataCode);
        Recordset columns = gobjMakeRecordset(QStringLiteral(" Select * From tmpFSCapitalCol") + QStringLiteral(" Where (FSDataCode = ") +
                                              key + QStringLiteral(") AND (ItemCode<>-1)") + QStringLiteral(" Order By ColNo"));
        for (; !columns.eof(); columns.moveNext()) {
            const std::int32_t columnCode = columns[QStringLiteral("ItemCode")].toLong();
            const QString field = rowFieldOf(columnCode);
            if (field.isEmpty()) continue;  // a column the grid does not know holds no amounts
            Recordset rows = gobjMakeRecordset(QStringLiteral(" Select * From tmpFSCapitalRow") + QStringLiteral(" Where (FSDataCode = ") +
                                               key + QStringLiteral(") AND (ItemType<>30)") + QStringLiteral(" Order By RowNo"));
            for (; !rows.eof(); rows.moveNext()) {
                // A row without a code (a note line the sibling program keeps
                // in the grid) has no cell any rule can name.
                const Variant& rowCode = rows[QStringLiteral("ItemCode")];
                if (rowCode.isNull() || rowCode.isEmpty()) continue;
                clsSqlText sql;
                sql.SetTable(QStringLiteral("tmpFSItemData"));
                sql.SetData(QStringLiteral("FSDataCode"), Variant(fsDataCode), 0);
                sql.SetData(QStringLiteral("ItemCode"), Variant(rowCode.toLong() + columnCode), 0);
                sql.SetData(QStringLiteral("DocCode"), Variant(8), 0);
                sql.SetData(QStringLiteral("ItemName"), Variant(field + QStringLiteral(" : ") + rows[QStringLiteral("RowName")].text()), 1);
                sql.SetData(QStringLiteral("SortNumber"), rows[QStringLiteral("RowNo")], 0);
                sql.SetData(QStringLiteral("ItemValue"), rows[field], 0);
                gblnExecuteSql(sql.GetInsertSql());
            }
        }
    });
}

void mCaplitalDataDelete(std::int32_t fsDataCode) {
    gblnExecuteSql(QStringLiteral(" delete From tmpFSItemData") + QStringLiteral(" Where (FSDataCode = ") +
                   QString::number(fsDataCode) + QStringLiteral(")") + QStringLiteral(" And (ItemCode>=600) And (ItemCode<800)"));
}

QString statementReportText(std::int32_t fsDataCode, const QString& message) {
    const QString where = QStringLiteral("FSDataCode=") + QString::number(fsDataCode);
    const QString table = QStringLiteral("tmpFSInfoData");
    auto field = [&](const char* name) { return gvarGetData(QString::fromLatin1(name), table, where, Variant(QString())); };
    return QStringLiteral("財務諸表の問題内容") + kCrLf + kRule + kCrLf + QStringLiteral("商号又は名称：") + field("ApplyerName").text() +
           kCrLf + QStringLiteral("決算期　　　：") + field("FYearNumber").text() + kCrLf + QStringLiteral("決算期間　　：自 ") +
           eraDate(field("FYearFrom")) + QStringLiteral(" ～ ") + QStringLiteral("至 ") + eraDate(field("FYearTo")) + kCrLf + kRule +
           kCrLf +
           QStringLiteral("※このまま提出されますと分析を行うに際して、下記の内容確認の問合せ等で分析結果通知が遅延する可能性があります。") +
           kCrLf + kCrLf + message;
}

bool mblnVaridateFSData(std::int32_t /*mainDataCode*/, std::int32_t fsDataCode, bool quiet, QString& report) {
    return trapped(QStringLiteral("mblnVaridateFSData"), 0, false, [&] {
        const QString where = QStringLiteral("FSDataCode=") + QString::number(fsDataCode);
        const std::int32_t distinction =
            gvarGetData(QStringLiteral("Distinction"), QStringLiteral("tmpFSInfoData"), where, Variant()).toLong();
        if (distinction == 1) mCapitalDataConvert(fsDataCode);
        bool errorFlag = false;
        {
            clsVerifyFSData checker;
            checker.setDistinction(distinction);
            checker.setFSDataCode(fsDataCode);
            checker.CheckItemSum();
            errorFlag = checker.ErrorFlag();
            report = checker.Message();
        }
        if (distinction == 1) mCaplitalDataDelete(fsDataCode);
        const QString title = QStringLiteral("財務諸表：不正な項目の確認");
        if (errorFlag) {
            gMsgbox(3, QStringLiteral("選択された財務諸表に不正な項目があります") + kCrLf + QStringLiteral("問題内容を確認してください"),
                    title);
            showReport(statementReportText(fsDataCode, report));
        } else if (!quiet) {
            gMsgbox(0, QStringLiteral("選択された財務諸表には不正な項目はありません"), title);
        }
        return !errorFlag;
    });
}

}  // namespace kelvary
