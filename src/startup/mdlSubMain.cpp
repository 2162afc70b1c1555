// Main: one start prints one application and ends. Every step runs under one
// trap; a failing step is reported in mode 0 and the run resumes with the
// next step, as the parent program's users are used to.
#include "startup/mdlSubMain.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/AppObject.h"
#include "platform/InstanceLock.h"
#include "startup/frmMDIForm.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <QDir>

#include <functional>
#include <memory>

namespace kelvary {
namespace {

CommandFields& fields() {
    static CommandFields f;
    return f;
}

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

}  // namespace

const CommandFields& commandFields() { return fields(); }

void Main(const CommandFields& fromOptions) {
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

    step([&] {
        const QString temp = app::path() + QStringLiteral("/Temp");
        if (!gblnCheckExistFile(temp, vbDirectory)) QDir().mkpath(temp);
    });
    step([&] {
        mainWindow = std::make_unique<frmMDIForm>();
        mainWindow->show();
    });
    step([&] { gMsgForm(0, QStringLiteral("しばらくお待ちください")); });
    step([&] {
        gstrConnectionString = QStringLiteral("provider=microsoft.jet.oledb.4.0;data source=") +
                               app::path() + QStringLiteral("/SystemData.mdb");
        gobjConnection = gobjOpenConnection();
    });
    step([&] {
        fields() = fromOptions;
        if (!app::commandLine().isEmpty())
            gCommandGet(fields().applicationFile, fields().pdfFile, fields().agent, fields().mode);
    });
    for (const char* table : kWorkingTables) {
        if (gblnQuitRequested()) break;
        step([&] { gInitTable(QString::fromLatin1(table)); });
    }

    if (!gblnQuitRequested())
        step([&] {
            // Reading the application data file and printing arrive with the
            // intake and print modules; until then the run says so and ends.
            gMsgbox(0, QStringLiteral("申請書データ「") + fields().applicationFile +
                           QStringLiteral("」の読み込みと印刷は、このバージョンではまだ使えません。"),
                    QStringLiteral("情報"));
        });

    step([&] { gQuitApplication(true); });
}

}  // namespace kelvary
