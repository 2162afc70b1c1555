// Report composers. The header lines are part of what users print and file
// away with their corrections, so their wording and padding are fixed.
#include "checks/ProblemReport.h"

#include "checks/frmCheckReport.h"
#include "db/mdlFunctionDatabase.h"
#include "startup/frmMDIForm.h"
#include "startup/mdlFunctionStandard.h"

#include <memory>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kRule = QString(40, QChar(u'＝'));

void showReport(const QString& text) {
    auto window = std::make_unique<frmCheckReport>(frmMDIForm::loadedInstance());
    window->SetText(text);
    window->Dispose();
}

}  // namespace

QString applicationReportText(std::int32_t apDataCode, const QString& message) {
    const QString where = QStringLiteral("APDataCode=") + QString::number(apDataCode);
    const QString name = gvarGetData(QStringLiteral("TRName"), QStringLiteral("tmpAPData"), where, Variant(QString())).text();
    const QString baseDate =
        gvarGetData(QStringLiteral("BaseDate"), QStringLiteral("tmpAPData"), where, Variant(QString())).text();
    return QStringLiteral("経営状況分析申請書の問題内容") + kCrLf + kRule + kCrLf + QStringLiteral("商号又は名称：") + name +
           kCrLf + QStringLiteral("審査基準日　：") + baseDate + kCrLf + kRule + kCrLf + kCrLf + message;
}

bool mblnVaridateAPData(FormEdition edition, std::int32_t apDataCode, bool quiet, bool fsDataCheck,
                        QString& report) {
    return trapped(QStringLiteral("mblnVaridateAPData"), 0, false, [&] {
        bool errorFlag = false;
        {
            ApplicationChecker checker(edition);
            checker.setAPDataCode(apDataCode);
            checker.setFSDataCheck(fsDataCheck);
            checker.CheckItemSum();
            errorFlag = checker.ErrorFlag();
            report = checker.Message();
        }
        const QString title = QStringLiteral("申請書：不正な項目の確認");
        if (errorFlag) {
            gSetHourglass(Variant(false));
            gMsgbox(3,
                    QStringLiteral("経営状況分析申請書の入力欄に不正な項目があります") + kCrLf +
                        QStringLiteral("問題内容を確認してください"),
                    title);
            showReport(applicationReportText(apDataCode, report));
        } else if (!quiet) {
            gMsgbox(0, QStringLiteral("経営状況分析申請書の入力欄に不正な項目はありません"), title);
        }
        gSetHourglass(Variant(true));
        return !errorFlag;
    });
}

}  // namespace kelvary
