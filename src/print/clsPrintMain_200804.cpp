// The current print driver. The payload, check and page calls of the run are
// made at their steps by the QR, check and print modules.
#include "print/clsPrintMain_200804.h"

#include "checks/ProblemReport.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/ApplicationFormPages.h"
#include "print/EquitySideSheet.h"
#include "print/PeriodImport.h"
#include "print/SupplementPages.h"
#include "qr/clsQRCode_200804.h"
#include "print/frmPrintManager.h"
#include "startup/RunOutcome.h"
#include "startup/frmMDIForm.h"
#include "startup/frmPrintMenu.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>

#include <memory>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kPeriodQuery = QStringLiteral(" Select * From tblIndex ") + QStringLiteral(" Where PrintFlag=True ") +
                             QStringLiteral(" Order by FYearNumber Desc,IndexID Desc");

QString verbFor(const QString& mode) {
    if (mode == QStringLiteral("1")) return QStringLiteral("印刷");
    if (mode == QStringLiteral("2") || mode == QStringLiteral("3") || mode == QStringLiteral("4"))
        return QStringLiteral("出力");
    return QString();
}

bool isFullRunMode(const QString& mode) {
    return mode == QStringLiteral("1") || mode == QStringLiteral("3") || mode == QStringLiteral("4");
}

}  // namespace

QString mMakeVerifySeed() {
    const Variant userId = gvarGetIniData(QStringLiteral("UserID"), QStringLiteral("UserInfo"));
    return vbFormat(userId, QStringLiteral("00000000")) +
           vbFormat(Variant(QDateTime::currentDateTime()), QStringLiteral("yyyymmddhhnnss"));
}

void clsPrintMain_200804::PrintDocument() {
    try {
        mPrint();
    } catch (...) {
        gSetHourglass(Variant(false));
        ShowErrMsg(QStringLiteral("mPrint"), 0);
    }
}

bool clsPrintMain_200804::mShowMenu(bool& preview, bool& printApplication, bool& printStatements) {
    auto menu = std::make_unique<frmPrintMenu>(frmMDIForm::loadedInstance());
    menu->ShowModal();
    preview = menu->fldPreview()->isChecked();
    printApplication = menu->fldPrintAPData()->isChecked();
    printStatements = menu->fldPrintZaimuQR()->isChecked();
    mblnProxy = menu->fldProxy()->isChecked();
    mlngCourseNumber = gvarGetComboBoxValue(menu->fldCourseNumber()).toLong();
    mblnSendResult = menu->fldSendResult()->isChecked();
    const bool cancelled = menu->IsCancel();
    menu->Dispose();
    return !cancelled;
}

void clsPrintMain_200804::mMakeApplicationPayloads(const QString& seed, long lastPeriod) {
    clsQRCode_200804 qr;
    qr.setVerifyID(seed);
    qr.setCourseNumber(mlngCourseNumber);
    qr.setProxy(mblnProxy);
    qr.setSendResult(mblnSendResult);
    gMsgForm(2, QStringLiteral("QRコード生成中(ヘッダ)"));
    qr.MakeHeader(lastPeriod);
    gMsgForm(2, QStringLiteral("QRコード生成中(経営状況分析申請書)"));
    qr.MakeAPData(mlngAPDataCode);
}

void clsPrintMain_200804::mImportPeriods(const QString& periodQuery, const QString& seed) {
    Recordset rs = gobjMakeRecordset(periodQuery);
    if (rs.isNothing()) return;
    for (int i = 0; !rs.eof() && !gblnQuitRequested(); ++i, rs.moveNext()) {
        gMsgForm(2, QStringLiteral("QRコード生成中(財務諸表[") + QString::number(i) + QStringLiteral("])"));
        const std::int32_t indexId = rs[QStringLiteral("IndexID")].toLong();
        const std::int32_t linkCode = rs[QStringLiteral("LinkCode")].toLong();
        mlngIndexID[i] = indexId;
        mlngLinkCode[i] = linkCode;
        if (rs[QStringLiteral("DataType")].toLong() != 0) continue;
        mCopyZaimuData(indexId, linkCode);
        mPutSpecialItemCode(indexId);
        mReplaceFixedAssets(indexId);
        mPref01Special(indexId);
        mCheckExcelConvData(indexId, rs[QStringLiteral("FYearNumber")].text());

        clsQRCode_200804 qr;
        qr.setVerifyID(seed);
        qr.MakeFSData(i, indexId);
        mSymbolCounts[i] = PeriodSymbolCounts{qr.FSQRCodeCount(), qr.KamokuQRCodeCount(), qr.NListQRCodeCount(),
                                              qr.CapitalQRCodeCount()};
    }
}

bool clsPrintMain_200804::mAskToContinue(const QString& verb) {
    gSetHourglass(Variant(false));
    const bool goOn = gMsgbox(2,
                              QStringLiteral("データまたは選択した内容に問題があります") + kCrLf + verb +
                                  QStringLiteral("を中止し、問題箇所を訂正してから") + verb +
                                  QStringLiteral("してください") + kCrLf + kCrLf + QStringLiteral("書類の") +
                                  verb + QStringLiteral("を継続しますか？"),
                              QStringLiteral("注意"));
    if (!goOn) return false;
    gMsgbox(3,
            QStringLiteral("問題のある申請書を") + verb + QStringLiteral("します") + kCrLf + kCrLf +
                QStringLiteral("問題のある状態で申請を行った場合､書類の補正及び再提出を") + kCrLf +
                QStringLiteral("求められる場合がありますので充分にご注意ください"),
            QStringLiteral("警告"));
    return true;
}

void clsPrintMain_200804::mPrintPages(frmPrintManager& manager, const QString& mode, const QString& verb,
                                      bool printApplication, bool printStatements, bool applicationProblem) {
    if (mode == QStringLiteral("2")) {
        gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請書)"));
        mPdfPrintAP(manager, mlngAPDataCode, applicationProblem);
        return;
    }
    if (!isFullRunMode(mode)) return;
    if (printApplication) {
        gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請に関する補足書類)"));
        mPrintSubDoc(manager, mlngAPDataCode, SupplementChoices{mlngCourseNumber, mblnSendResult}, applicationProblem);
        gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請書)"));
        mPrintAP(manager, mlngAPDataCode, mblnProxy, applicationProblem);
    }
    if (!printStatements) return;
    for (int i = 0; i < mlngIndexID.size() && !gblnQuitRequested(); ++i) {
        gMsgForm(2, verb + QStringLiteral("処理中(財務諸表[") + QString::number(i) + QStringLiteral("])"));
        // Periods are never marked here: only the earlier driver checks statements.
        mPrintFS(manager, i, mlngIndexID[i], mSymbolCounts[i], false);
        mlngFSDataCode = mlngLinkCode[i];
        const Variant hasEquity = gvarGetData(QStringLiteral("CapitalSubFlag"), QStringLiteral("T_FS"),
                                              QStringLiteral("FSDataCode=") + QString::number(mlngFSDataCode),
                                              Variant(QString()));
        if (hasEquity.type() != VarType::Boolean || !hasEquity.toBool()) continue;
        const Recordset docs = gobjMakeRecordset(QStringLiteral("Select * From M_FSDoc Order By SortNumber,DocCode"));
        if (!docs.isNothing() && !docs.eof()) mPrintVariableTemp(manager, mlngFSDataCode);
    }
}

void clsPrintMain_200804::mPrint() {
    gCommandGet(mstrCommand[0], mstrCommand[1], mstrCommand[2], mstrCommand[3]);
    const QString mode = mstrCommand[3];
    const QString verb = verbFor(mode);

    bool preview = false;
    bool printApplication = false;
    bool printStatements = false;
    bool problem = false;
    bool applicationProblem = false;
    long lastPeriod = -1;
    QString seed;

    if (isFullRunMode(mode)) {
        if (!mShowMenu(preview, printApplication, printStatements)) return;
        gSetHourglass(Variant(true));
        const Recordset periods = gobjMakeRecordset(kPeriodQuery);
        lastPeriod = periods.isNothing() ? -1 : periods.recordCount() - 1;
        seed = mMakeVerifySeed();
        if (printStatements) {
            mlngIndexID = QList<std::int32_t>(lastPeriod + 1, 0);
            mlngLinkCode = QList<std::int32_t>(lastPeriod + 1, 0);
            mSymbolCounts = QList<PeriodSymbolCounts>(lastPeriod + 1);
        }
        gMsgForm(2, verb + QStringLiteral("処理開始"));
        mClearTempFolder();
        gMsgForm(2, QStringLiteral("QRコード生成中"));
        if (printApplication) {
            mMakeApplicationPayloads(seed, lastPeriod);
            if (!mblnVaridateAPData(ApplicationEdition::Form200804, mlngAPDataCode, true, true, mstrReportText)) {
                applicationProblem = true;
                problem = true;
            }
        }
        if (printStatements) mImportPeriods(kPeriodQuery, seed);
        if (problem && !mAskToContinue(verb)) return;
    }
    if (gblnQuitRequested()) return;

    gSetHourglass(Variant(true));
    gMsgForm(2, verb + QStringLiteral("処理中"));
    frmPrintManager manager;
    manager.Init();
    manager.setVerifyID(seed);
    mPrintPages(manager, mode, verb, printApplication, printStatements, applicationProblem);

    gSetHourglass(Variant(false));
    if (mode == QStringLiteral("1")) {
        if (preview) manager.OpenPreview();
        else manager.PrintNoPreview();
    } else if (!verb.isEmpty()) {
        manager.PrintNoPreview();
    }
    manager.EndPrint();
    if (mode == QStringLiteral("3") || mode == QStringLiteral("4")) manager.gPdfClose();
    gMsgForm(1);
    if (!verb.isEmpty() && !manager.IsCancel()) noteOutputProduced();
}

}  // namespace kelvary
