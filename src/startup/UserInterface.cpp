// The port in use for this run.
#include "startup/UserInterface.h"

#include "startup/BatchUserInterface.h"
#include "startup/QtUserInterface.h"

#include <QGuiApplication>

namespace kelvary {
namespace {
std::unique_ptr<UserInterface>& installed() {
    static std::unique_ptr<UserInterface> ui;
    return ui;
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
    }
    return *ui;
}

void setUserInterface(std::unique_ptr<UserInterface> ui) { installed() = std::move(ui); }

}  // namespace kelvary
