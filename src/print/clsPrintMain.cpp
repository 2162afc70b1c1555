// The earlier editions' hooks of the print run.
#include "print/clsPrintMain.h"

#include "checks/ProblemReport.h"
#include "checks/StatementReport.h"
#include "print/ApplicationFormPages.h"
#include "print/SupplementPages.h"
#include "qr/clsQRCode.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {

qr::QrSymbolList clsPrintMain::mMakeApplicationPayloads(const QString& seed, long /*lastPeriod: no header payload*/) {
    clsQRCode qr;
    qr.setVerifyID(seed);
    qr.setCourseNumber(mlngCourseNumber);
    gMsgForm(2, QStringLiteral("QRコード生成中(経営状況分析申請書)"));
    qr.MakeAPData(mlngAPDataCode);
    return qr.Symbols();
}

bool clsPrintMain::mCheckApplication() {
    return mblnVaridateAPData(FormEdition::Earlier, mlngAPDataCode, true, true, mstrReportText);
}

qr::QrSymbolList clsPrintMain::mMakePeriodPayloads(long page, std::int32_t indexId, const QString& seed) {
    clsQRCode qr;
    qr.setVerifyID(seed);
    qr.MakeFSData(page, indexId);
    return qr.Symbols();
}

bool clsPrintMain::mCheckPeriod(std::int32_t indexId) {
    return mblnVaridateFSData(mlngMainDataCode, indexId, true, mstrReportText);
}

bool clsPrintMain::mAskToContinue(const QString& verb) {
    gSetHourglass(Variant(false));
    if (!gMsgbox(2, problemQuestionText(verb), QStringLiteral("注意"))) return false;
    gMsgbox(3,
            QStringLiteral("問題のある申請書及び財務諸表を印刷します\r\n\r\n") +
                QStringLiteral("問題のある状態で申請を行った場合､書類の補正及び再提出を\r\n") +
                QStringLiteral("求められる場合がありますので充分にご注意ください"),
            QStringLiteral("警告"));
    return true;
}

void clsPrintMain::mPrintApplicationPages(frmPrintManager& manager, const QString& verb, bool applicationProblem) {
    gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請に関する補足書類)"));
    mPrintSubDoc(manager, mlngAPDataCode, mApplicationSymbols,
                 SupplementChoices{mlngCourseNumber, mblnSendResult, FormEdition::Earlier},
                 applicationProblem);
    gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請書)"));
    mPrintAP(manager, mlngAPDataCode, mblnProxy, applicationProblem, FormEdition::Earlier);
}

}  // namespace kelvary
