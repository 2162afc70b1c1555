// The main window.
#include "startup/frmMDIForm.h"

#include "platform/AppObject.h"
#include "startup/mdlFunctionApplication.h"

#include <QCloseEvent>
#include <QPointer>

namespace kelvary {
namespace {
QPointer<frmMDIForm>& instance() {
    static QPointer<frmMDIForm> form;
    return form;
}
}  // namespace

frmMDIForm::frmMDIForm(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("frmMDIForm"));
    setWindowTitle(app::title() + QStringLiteral("(") + gstrAppVersion() + QStringLiteral(")"));
    resize(800, 600);
    instance() = this;
}

frmMDIForm::~frmMDIForm() = default;

frmMDIForm* frmMDIForm::loadedInstance() { return instance().data(); }

void frmMDIForm::closeEvent(QCloseEvent* event) {
    // Closing is the user's way to stop: no question, everything is released.
    event->accept();
    gQuitApplication(true);
}

}  // namespace kelvary
