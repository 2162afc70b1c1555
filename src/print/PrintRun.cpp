// The shared print run. Each step reports its own failures; the run as a
// whole is trapped under "mPrint".
#include "print/PrintRun.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/PeriodImport.h"
#include "print/QrPages.h"
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

// A mode the program does not know has no verb: the run shows its messages
// without one and produces nothing.
QString verbFor(std::optional<OutputMode> mode) { return mode ? outputVerb(*mode) : QString(); }

bool isFullRunMode(std::optional<OutputMode> mode) { return mode && showsMenu(*mode); }

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
    trapped(QStringLiteral("mPrint"), 0, [&] {
        try {
            mPrint();
        } catch (...) {
            // The report is no time to look busy.
            gSetHourglass(Variant(false));
            throw;
        }
    });
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
        mPeriodSymbols[i] = mMakePeriodPayloads(i, indexId, seed);
    }
    return allPass;
}

std::optional<OutputMode> PrintRun::mOutputMode() {
    QString fields[3];
    std::optional<OutputMode> mode;
    gCommandGet(fields[0], fields[1], fields[2], mode);
    if (offersPdf(mEdition())) return mode;
    // Started for a send file, the user is told so before the paper comes out.
    if (mode && isSendFile(*mode))
        gMsgbox(0,
                QStringLiteral("この申請書は平成20年4月1日より前の様式です。"
                               "この様式の書類は送信ファイルを作成できないため、用紙に印刷します。"),
                QStringLiteral("情報"));
    return OutputMode::Print;
}

void PrintRun::mPrintPages(frmPrintManager& manager, std::optional<OutputMode> mode, const QString& verb,
                           bool printApplication, bool printStatements, bool applicationProblem) {
    if (mode == OutputMode::ApplicationPdf) {
        gMsgForm(2, verb + QStringLiteral("処理中(経営状況分析申請書)"));
        mPrintApplicationPdf(manager, applicationProblem);
        return;
    }
    if (!isFullRunMode(mode)) return;
    if (printApplication) mPrintApplicationPages(manager, verb, applicationProblem);
    if (!printStatements) return;
    for (int i = 0; i < mlngIndexID.size() && !gblnQuitRequested(); ++i) {
        gMsgForm(2, verb + QStringLiteral("処理中(財務諸表[") + QString::number(i) + QStringLiteral("])"));
        mPrintFS(manager, i, mlngIndexID[i], mPeriodSymbols[i], mblnPeriodProblem[i], mEdition());
        mPrintAfterPeriod(manager, i);
    }
}

void PrintRun::mPrint() {
    const std::optional<OutputMode> mode = mOutputMode();
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
            mPeriodSymbols = QList<qr::QrSymbolList>(lastPeriod + 1);
            mblnPeriodProblem = QList<bool>(lastPeriod + 1, false);
        }
        gMsgForm(2, verb + QStringLiteral("処理開始"));
        if (!mClearTempFolder()) return;
        gMsgForm(2, QStringLiteral("QRコード生成中"));
        if (printApplication) {
            mApplicationSymbols = mMakeApplicationPayloads(seed, lastPeriod);
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
    if (mode == OutputMode::Print) {
        if (preview) manager.OpenPreview();
        else manager.PrintNoPreview();
    } else if (!verb.isEmpty()) {
        manager.PrintNoPreview();
    }
    manager.EndPrint();
    if (mode && isSendFile(*mode)) manager.gPdfClose();
    gMsgForm(1);
    if (!verb.isEmpty() && !manager.IsCancel()) noteOutputProduced();
}

}  // namespace kelvary
