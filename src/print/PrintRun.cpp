// The shared print run. Each step reports its own failures; the run as a
// whole is trapped under "mPrint".
#include "print/PrintRun.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/PeriodImport.h"
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

QString problemQuestionText(const QString& verb) {
    return QStringLiteral("データまたは選択した内容に問題があります") + kCrLf + verb +
           QStringLiteral("を中止し、問題箇所を訂正してから") + verb + QStringLiteral("してください") + kCrLf +
           kCrLf + QStringLiteral("書類の") + verb + QStringLiteral("を継続しますか？");
}

void PrintRun::PrintDocument() {
    try {
        mPrint();
    } catch (...) {
        gSetHourglass(Variant(false));
        ShowErrMsg(QStringLiteral("mPrint"), 0);
    }
}

bool PrintRun::mShowMenu(bool& preview, bool& printApplication, bool& printStatements) {
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

// Imports every chosen period with its repairs and payloads; false when a
// period's statements failed their check.
bool PrintRun::mImportPeriods(const QString& seed) {
    bool allPass = true;
    Recordset rs = gobjMakeRecordset(kPeriodQuery);
    if (rs.isNothing()) return allPass;
    for (int i = 0; !rs.eof() && !gblnQuitRequested() && i < mlngIndexID.size(); ++i, rs.moveNext()) {
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
        if (!mCheckPeriod(indexId)) {
            mblnPeriodProblem[i] = true;
            allPass = false;
        }
        mSymbolCounts[i] = mMakePeriodPayloads(i, indexId, seed);
    }
    return allPass;
}

void PrintRun::mPrintPages(frmPrintManager& manager, const QString& mode, const QString& verb, bool printApplication,
                           bool printStatements, bool applicationProblem) {
    if (mode == QStringLiteral("2")) {
        gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請書)"));
        mPrintApplicationPdf(manager, applicationProblem);
        return;
    }
    if (!isFullRunMode(mode)) return;
    if (printApplication) mPrintApplicationPages(manager, verb, applicationProblem);
    if (!printStatements) return;
    for (int i = 0; i < mlngIndexID.size() && !gblnQuitRequested(); ++i) {
        gMsgForm(2, verb + QStringLiteral("処理中(財務諸表[") + QString::number(i) + QStringLiteral("])"));
        mPrintFS(manager, i, mlngIndexID[i], mSymbolCounts[i], mblnPeriodProblem[i], mEdition());
        mPrintAfterPeriod(manager, i);
    }
}

void PrintRun::mPrint() {
    const QString mode = mOutputMode();
    const QString verb = verbFor(mode);

    bool preview = false;
    bool printApplication = false;
    bool printStatements = false;
    bool problem = false;
    bool applicationProblem = false;
    QString seed;

    if (isFullRunMode(mode)) {
        if (!mShowMenu(preview, printApplication, printStatements)) return;
        gSetHourglass(Variant(true));
        const Recordset periods = gobjMakeRecordset(kPeriodQuery);
        const long lastPeriod = periods.isNothing() ? -1 : periods.recordCount() - 1;
        seed = mMakeVerifySeed();
        if (printStatements) {
            mlngIndexID = QList<std::int32_t>(lastPeriod + 1, 0);
            mlngLinkCode = QList<std::int32_t>(lastPeriod + 1, 0);
            mSymbolCounts = QList<PeriodSymbolCounts>(lastPeriod + 1);
            mblnPeriodProblem = QList<bool>(lastPeriod + 1, false);
        }
        gMsgForm(2, verb + QStringLiteral("処理開始"));
        if (!mClearTempFolder()) return;
        gMsgForm(2, QStringLiteral("QRコード生成中"));
        if (printApplication) {
            mMakeApplicationPayloads(seed, lastPeriod);
            if (!mCheckApplication()) {
                applicationProblem = true;
                problem = true;
            }
        }
        if (printStatements && !mImportPeriods(seed)) problem = true;
        if (problem && !mAskToContinue(verb)) return;
    }
    if (gblnQuitRequested()) return;

    gSetHourglass(Variant(true));
    gMsgForm(2, verb + QStringLiteral("処理中"));
    frmPrintManager manager;
    manager.Init(mode);
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
