// The port in use for this run.
#include "startup/UserInterface.h"

#include "db/DbErrorReport.h"
#include "startup/BatchUserInterface.h"
#include "startup/QtUserInterface.h"
#include "startup/mdlFunctionStandard.h"

#include <QGuiApplication>

namespace kelvary {
namespace {
std::unique_ptr<UserInterface>& installed() {
    static std::unique_ptr<UserInterface> ui;
    return ui;
}

// The database routines own their reporting seam; whichever port speaks to
// the user, their failures and notices reach it through the error display
// and the message box as everyone else's do.
void connectDbReporting() {
    setDbReporting({&ShowErrMsg, [](const QString& text) { gMsgbox(0, text); }});
}
}  // namespace

UserInterface& userInterface() {
    auto& ui = installed();
    if (!ui) {
        // Without a window system there is nobody to click: speak on stderr.
        if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
            ui = std::make_unique<QtUserInterface>();
        else
            ui = std::make_unique<BatchUserInterface>(false);
        connectDbReporting();
    }
    return *ui;
}

void setUserInterface(std::unique_ptr<UserInterface> ui) {
    installed() = std::move(ui);
    connectDbReporting();
}

}  // namespace kelvary
