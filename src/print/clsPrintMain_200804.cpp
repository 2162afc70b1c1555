// The current edition's hooks of the print run.
#include "print/clsPrintMain_200804.h"

#include "checks/ProblemReport.h"
#include "db/mdlFunctionDatabase.h"
#include "print/ApplicationFormPages.h"
#include "print/EquitySideSheet.h"
#include "print/SupplementPages.h"
#include "qr/clsQRCode_200804.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {

qr::QrSymbolList clsPrintMain_200804::mMakeApplicationPayloads(const QString& seed, long lastPeriod) {
    clsQRCode_200804 qr;
    qr.setVerifyID(seed);
    qr.setCourseNumber(mlngCourseNumber);
    qr.setProxy(mblnProxy);
    qr.setSendResult(mblnSendResult);
    gMsgForm(2, QStringLiteral("QRコード生成中(ヘッダ)"));
    qr.MakeHeader(lastPeriod);
    gMsgForm(2, QStringLiteral("QRコード生成中(経営状況分析申請書)"));
    qr.MakeAPData(mlngAPDataCode);
    return qr.Symbols();
}

bool clsPrintMain_200804::mCheckApplication() {
    return mblnVaridateAPData(FormEdition::Form200804, mlngAPDataCode, true, true, mstrReportText);
}

qr::QrSymbolList clsPrintMain_200804::mMakePeriodPayloads(long page, std::int32_t indexId, const QString& seed) {
    clsQRCode_200804 qr;
    qr.setVerifyID(seed);
    qr.MakeFSData(page, indexId);
    return qr.Symbols();
}

bool clsPrintMain_200804::mAskToContinue(const QString& verb) {
    gSetHourglass(Variant(false));
    if (!gMsgbox(2, problemQuestionText(verb), QStringLiteral("注意"))) return false;
    gMsgbox(3,
            QStringLiteral("問題のある申請書を") + verb + QStringLiteral("します\r\n\r\n") +
                QStringLiteral("問題のある状態で申請を行った場合､書類の補正及び再提出を\r\n") +
                QStringLiteral("求められる場合がありますので充分にご注意ください"),
            QStringLiteral("警告"));
    return true;
}

void clsPrintMain_200804::mPrintApplicationPages(frmPrintManager& manager, const QString& verb,
                                                 bool applicationProblem) {
    gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請に関する補足書類)"));
    mPrintSubDoc(manager, mlngAPDataCode, mApplicationSymbols, SupplementChoices{mlngCourseNumber, mblnSendResult},
                 applicationProblem);
    gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請書)"));
    mPrintAP(manager, mlngAPDataCode, mblnProxy, applicationProblem);
}

void clsPrintMain_200804::mPrintAfterPeriod(frmPrintManager& manager, int period) {
    mlngFSDataCode = mlngLinkCode[period];
    const Variant hasEquity =
        gvarGetData(QStringLiteral("CapitalSubFlag"), QStringLiteral("T_FS"),
                    QStringLiteral("FSDataCode=") + QString::number(mlngFSDataCode), Variant(QString()));
    if (hasEquity.type() != VarType::Boolean || !hasEquity.toBool()) return;
    const Recordset docs = gobjMakeRecordset(QStringLiteral("Select * From M_FSDoc Order By SortNumber,DocCode"));
    if (!docs.isNothing() && !docs.eof()) mPrintVariableTemp(manager, mlngFSDataCode);
}

void clsPrintMain_200804::mPrintApplicationPdf(frmPrintManager& manager, bool applicationProblem) {
    mPdfPrintAP(manager, mlngAPDataCode, applicationProblem);
}

}  // namespace kelvary
