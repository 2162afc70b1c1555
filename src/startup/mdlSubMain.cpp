// Main: one start prints one application and ends. Every step runs under one
// trap; a failing step is reported in mode 0 and the run resumes with the
// next step, as the parent program's users are used to.
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

#include <functional>
#include <memory>

namespace kelvary {
namespace {

// Runs one step of Main under Main's trap: report in mode 0 and go on.
void step(const std::function<void()>& body) {
    try {
        body();
    } catch (...) {
        ShowErrMsg(QStringLiteral("Main"), 0);
    }
}

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
    std::unique_ptr<InstanceLock> instance;
    std::unique_ptr<frmMDIForm> mainWindow;
    bool secondInstance = false;
    step([&] {
        instance = std::make_unique<InstanceLock>(app::path());
        if (!instance->acquired()) {
            secondInstance = true;
            gMsgbox(0, QStringLiteral("既に") + app::title() + QStringLiteral("は、起動しています。"),
                    QStringLiteral("情報"));
        }
    });
    if (secondInstance) return;
    try {
        requireReadableSettings(userDataIniPath());
    } catch (...) {
        ShowErrMsg(QStringLiteral("Main"), 1);
        return;
    }

    step([&] {
        const QString temp = app::path() + QStringLiteral("/Temp");
        if (!gblnCheckExistFile(temp, vbDirectory)) QDir().mkpath(temp);
    });
    step([&] {
        mainWindow = std::make_unique<frmMDIForm>();
        // A batch run's windows are owners and holders of state; shown, they
        // would only be laid out and painted for nobody.
        if (!userInterface().isBatch()) mainWindow->show();
    });
    step([&] { gMsgForm(0, QStringLiteral("しばらくお待ちください")); });
    step([&] {
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") +
                               app::path() + QStringLiteral("/SystemData.mdb");
        gobjConnection = gobjOpenConnection();
    });
    // Without the working database every later step could only fail, each
    // with a report of its own that would bury the one that says why.
    if (!gobjConnection) {
        step([&] { gQuitApplication(true); });
        return;
    }
    QString applicationFile, pdfFile, agent;
    std::optional<OutputMode> mode;
    step([&] { gCommandGet(applicationFile, pdfFile, agent, mode); });
    for (const char* table : kWorkingTables) {
        if (gblnQuitRequested()) break;
        step([&] { gInitTable(QString::fromLatin1(table)); });
    }
    try {
        requireEmptyWorkingTables();
    } catch (...) {
        ShowErrMsg(QStringLiteral("Main"), 1);
        step([&] { gQuitApplication(true); });
        return;
    }

    std::int32_t mainDataCode = 0;
    step([&] {
        clsAnlBasicInfo basicInfo;
        basicInfo.LoadData(applicationFile);
        mainDataCode = basicInfo.MainDataCode();
    });
    step([&] { gMsgForm(2, QStringLiteral("申請書データ読み込み中")); });
    step([&] {
        clsApply2Data applicationData;
        mainDataCode = applicationData.LoadData(applicationFile);
    });
    std::int32_t apDataCode = 0;
    Variant enforceDate(QString{});
    const QString where = QStringLiteral("MainDataCode=") + QString::number(mainDataCode);
    step([&] {
        apDataCode = gvarGetData(QStringLiteral("APDataCode"), QStringLiteral("tmpAPData"), where, Variant(QString()))
                         .toLong();
    });
    step([&] {
        enforceDate = gvarGetData(QStringLiteral("EnforceDate"), QStringLiteral("tmpAPData"), where, Variant(QString()));
    });
    if (!gblnQuitRequested())
        step([&] {
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

    step([&] { gQuitApplication(true); });
}

}  // namespace kelvary
