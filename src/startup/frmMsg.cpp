// The progress window and gMsgForm, which loads, updates and unloads it.
#include "startup/frmMsg.h"

#include "platform/AppObject.h"
#include "startup/frmMDIForm.h"
#include "startup/UserInterface.h"
#include "startup/mdlFunctionStandard.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QStyle>

namespace kelvary {
namespace {
// The one loaded instance, as a VB form's default instance is.
QPointer<frmMsg>& loadedInstance() {
    static QPointer<frmMsg> form;
    return form;
}
}  // namespace

frmMsg::frmMsg(QWidget* owner) : QWidget(owner, Qt::Tool | Qt::WindowTitleHint | Qt::CustomizeWindowHint) {
    setObjectName(QStringLiteral("frmMsg"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(app::title());
    auto* layout = new QHBoxLayout(this);
    auto* picture = new QLabel(this);
    picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(32, 32));
    layout->addWidget(picture);
    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("MsgText"));
    text_->setMinimumWidth(280);
    text_->setWordWrap(true);
    layout->addWidget(text_, 1);
}

// Centred on the main window, where the user is looking; a tool window is
// otherwise left wherever the window manager puts new windows.
void frmMsg::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    adjustSize();
    QRect area;
    if (const QWidget* owner = parentWidget(); owner && owner->isVisible()) area = owner->frameGeometry();
    else if (const QScreen* screen = this->screen()) area = screen->availableGeometry();
    if (area.isValid()) move(area.center() - QPoint(width() / 2, height() / 2));
}

void frmMsg::setMsgText(const QString& text) { text_->setText(text); }
QString frmMsg::msgText() const { return text_->text(); }

void gMsgForm(int mode, const QString& text) {
    trapped(QStringLiteral("gMsgForm"), 1, [&] {
        if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return;
        QPointer<frmMsg>& form = loadedInstance();
        switch (mode) {
        case 0:
            if (!form) form = new frmMsg(frmMDIForm::loadedInstance());
            form->setMsgText(text);
            // In batch mode nobody sees the window: it keeps its text, but
            // laying it out and painting it at every step would cost a run
            // more than some of its real work.
            if (userInterface().isBatch()) break;
            form->show();
            form->raise();
            break;
        case 1:
            if (form) form->close();
            break;
        case 2:
            if (!form) form = new frmMsg(frmMDIForm::loadedInstance());
            form->setMsgText(text);
            if (!userInterface().isBatch()) form->raise();
            break;
        default: break;
        }
        QCoreApplication::processEvents();
    });
}

}  // namespace kelvary
