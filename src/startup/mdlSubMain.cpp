// Main: one start prints one application and ends. Every step that can fail
// runs under Main's trap; a failing step is reported in mode 0 and the run
// resumes with the next step, as the parent program's users are used to.
#include "startup/mdlSubMain.h"

#include "db/mdlFunctionDatabase.h"
#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "platform/AppObject.h"
#include "platform/InstanceLock.h"
#include "platform/VbError.h"
#include "print/clsPrintMain.h"
#include "print/clsPrintMain_200804.h"
#include "startup/FormEdition.h"
#include "startup/SettingsFileCheck.h"
#include "startup/UserInterface.h"
#include "startup/frmMDIForm.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <QDir>

#include <memory>

namespace kelvary {
namespace {

const char* const kWorkingTables[] = {
    "tblIndex",        "TmpAPData",       "TmpFSInfoData",    "TmpFSItemData",
    "TmpFSNoteData",   "TmpFSCapitalRow", "TmpFSCapitalCol",  "TmpOldFSInfoData",
    "TmpOldFSItemData", "TmpOldFSNoteData",
};

// Raises a VbError naming the first working table that still holds rows
// after the emptying: they are an earlier run's, perhaps another applicant's.
// A table that cannot be read holds nothing this run could print.
void requireEmptyWorkingTables() {
    for (const char* table : kWorkingTables) {
        long rows = 0;
        try {
            rows = gobjConnection->query(QStringLiteral("SELECT count(*) FROM ") + QString::fromLatin1(table))
                       .value(0)
                       .toLong();
        } catch (const VbError&) {
            continue;
        }
        if (rows > 0)
            throw VbError(vberr::PermissionDenied,
                          QStringLiteral("作業用のテーブル「") + QString::fromLatin1(table) +
                              QStringLiteral("」を空にできませんでした。前回の処理のデータが残っているため、"
                                             "処理を中止します。"));
    }
}

}  // namespace

void Main() {
    // A check the run cannot go on without reports in mode 1 and ends it.
    const QString place = QStringLiteral("Main");
    std::unique_ptr<InstanceLock> instance;
    std::unique_ptr<frmMDIForm> mainWindow;
    bool secondInstance = false;
    trapped(place, 0, [&] {
        instance = std::make_unique<InstanceLock>(app::path());
        if (!instance->acquired()) {
            secondInstance = true;
            gMsgbox(0, QStringLiteral("既に") + app::title() + QStringLiteral("は、起動しています。"),
                    QStringLiteral("情報"));
        }
    });
    if (secondInstance) return;
    if (!trapped(place, 1, [] { requireReadableSettings(userDataIniPath()); })) return;

    const QString temp = app::path() + QStringLiteral("/Temp");
    if (!gblnCheckExistFile(temp, vbDirectory)) QDir().mkpath(temp);
    trapped(place, 0, [&] {
        mainWindow = std::make_unique<frmMDIForm>();
        // A batch run's windows are owners and holders of state; shown, they
        // would only be laid out and painted for nobody.
        if (!userInterface().isBatch()) mainWindow->show();
    });
    gMsgForm(0, QStringLiteral("しばらくお待ちください"));
    gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") + app::path() +
                           QStringLiteral("/SystemData.mdb");
    gobjConnection = gobjOpenConnection();
    // Without the working database every later step could only fail, each
    // with a report of its own that would bury the one that says why.
    if (!gobjConnection) {
        gQuitApplication(true);
        return;
    }
    QString applicationFile, pdfFile, agent;
    std::optional<OutputMode> mode;
    gCommandGet(applicationFile, pdfFile, agent, mode);
    for (const char* table : kWorkingTables) {
        if (gblnQuitRequested()) break;
        gInitTable(QString::fromLatin1(table));
    }
    if (!trapped(place, 1, [] { requireEmptyWorkingTables(); })) {
        gQuitApplication(true);
        return;
    }

    std::int32_t mainDataCode = 0;
    trapped(place, 0, [&] {
        clsAnlBasicInfo basicInfo;
        basicInfo.LoadData(applicationFile);
        mainDataCode = basicInfo.MainDataCode();
    });
    gMsgForm(2, QStringLiteral("申請書データ読み込み中"));
    trapped(place, 0, [&] {
        clsApply2Data applicationData;
        mainDataCode = applicationData.LoadData(applicationFile);
    });
    std::int32_t apDataCode = 0;
    Variant enforceDate(QString{});
    const QString where = QStringLiteral("MainDataCode=") + QString::number(mainDataCode);
    trapped(place, 0, [&] {
        apDataCode = gvarGetData(QStringLiteral("APDataCode"), QStringLiteral("tmpAPData"), where, Variant(QString()))
                         .toLong();
    });
    enforceDate = gvarGetData(QStringLiteral("EnforceDate"), QStringLiteral("tmpAPData"), where, Variant(QString()));
    if (!gblnQuitRequested())
        trapped(place, 0, [&] {
            if (formEditionFromEnforceDate(enforceDate) == FormEdition::Form200804) {
                clsPrintMain_200804 driver;
                driver.setAPDataCode(apDataCode);
                driver.setMainDataCode(mainDataCode);
                driver.PrintDocument();
            } else {
                clsPrintMain driver;
                driver.setAPDataCode(apDataCode);
                driver.setMainDataCode(mainDataCode);
                driver.PrintDocument();
            }
        });

    gQuitApplication(true);
}

}  // namespace kelvary
