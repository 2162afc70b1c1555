// Message boxes as the platform draws them, with the kind's icon, buttons and
// default button; the parent is the active window so the box stays on top.
#include "startup/QtUserInterface.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QMessageBox>
#include <QPushButton>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kelvary {
namespace {

QMessageBox::Icon toQtIcon(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::Information: return QMessageBox::Information;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::Warning: return QMessageBox::Warning;
    case MsgIcon::Critical: return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

// Windows message boxes take CR LF; Qt wants plain line feeds.
QString plainLines(QString text) { return text.replace(QLatin1String("\r\n"), QLatin1String("\n")); }

}  // namespace

MsgAnswer QtUserInterface::showMessage(const MessageRequest& request) {
    QMessageBox box(toQtIcon(request.icon), request.title, plainLines(request.text),
                    QMessageBox::NoButton, QApplication::activeWindow());
    if (request.buttons == MsgButtons::YesNo) {
        QPushButton* yes = box.addButton(QStringLiteral("はい(&Y)"), QMessageBox::YesRole);
        QPushButton* no = box.addButton(QStringLiteral("いいえ(&N)"), QMessageBox::NoRole);
        box.setDefaultButton(request.defaultIsNo ? no : yes);
        box.exec();
        if (box.clickedButton() == yes) return MsgAnswer::Yes;
        if (box.clickedButton() == no) return MsgAnswer::No;
        return MsgAnswer::Closed;
    }
    QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.setDefaultButton(ok);
    box.setEscapeButton(ok);
    box.exec();
    return MsgAnswer::Ok;
}

void QtUserInterface::showReport(const QString& title, const QString& text) {
    QDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(title);
    auto* layout = new QVBoxLayout(&dialog);
    auto* view = new QPlainTextEdit(plainLines(text), &dialog);
    view->setReadOnly(true);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    layout->addWidget(view);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog.resize(640, 480);
    dialog.exec();
}

}  // namespace kelvary
