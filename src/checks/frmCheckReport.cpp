// The problem list window. Its controls sit at the designed places (twips of
// the original at 15 to a pixel); resizing keeps the list filling the window
// and the two buttons in the bottom corners.
#include "checks/frmCheckReport.h"

#include "platform/TextPrinter.h"
#include "platform/VbError.h"
#include "startup/UserInterface.h"
#include "startup/mdlFunctionStandard.h"

#include <QFont>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>

namespace kelvary {
namespace {

const QString kCaption = QStringLiteral("入力内容の問題点一覧");

// The designed client area and places, in pixels.
constexpr int kClientWidth = 807;
constexpr int kClientHeight = 458;
constexpr int kMargin = 8;
constexpr int kTextTop = 12;
constexpr int kTextHeight = 381;
constexpr int kLabelTop = 399;
constexpr int kLabelHeight = 20;
constexpr int kButtonTop = 424;
constexpr int kButtonWidth = 130;
constexpr int kButtonHeight = 26;

// The list shows its lines as the composers wrote them, with CR LF.
QString shownText(QString text) { return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

}  // namespace

frmCheckReport::frmCheckReport(QWidget* parent)
    : QDialog(parent),
      txtMessage_(new QPlainTextEdit(this)),
      Label1_(new QLabel(this)),
      cmdPrint_(new QPushButton(QStringLiteral("問題点の印刷(&P)"), this)),
      cmdClose_(new QPushButton(QStringLiteral("閉じる(&C)"), this)) {
    setWindowTitle(kCaption);
    setObjectName(QStringLiteral("frmCheckReport"));
    txtMessage_->setObjectName(QStringLiteral("txtMessage"));
    Label1_->setObjectName(QStringLiteral("Label1"));
    cmdPrint_->setObjectName(QStringLiteral("cmdPrint"));
    cmdClose_->setObjectName(QStringLiteral("cmdClose"));

    // Fixed pitch, so that padded labels and right-aligned amounts line up.
    QFont listFont(QStringLiteral("ＭＳ ゴシック"), 9);
    listFont.setStyleHint(QFont::Monospace);
    txtMessage_->setFont(listFont);
    txtMessage_->setReadOnly(true);
    txtMessage_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtMessage_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    Label1_->setText(QStringLiteral("※問題点を確認し、正しい内容に訂正してください。（「問題点の印刷」ボタンをクリックすると上記の内容が印刷されます）"));

    txtMessage_->setGeometry(kMargin, kTextTop, kClientWidth - 2 * kMargin, kTextHeight);
    Label1_->setGeometry(kMargin, kLabelTop, kClientWidth - 2 * kMargin, kLabelHeight);
    cmdPrint_->setGeometry(kMargin, kButtonTop, kButtonWidth, kButtonHeight);
    cmdClose_->setGeometry(kClientWidth - kMargin - kButtonWidth, kButtonTop, kButtonWidth, kButtonHeight);
    mSetDefaultSize();
    mInitVariable();
    setMinimumSize(2 * kButtonWidth + 3 * kMargin, kClientHeight - kTextHeight + 3 * kMargin);

    // Enter closes the list: printing is asked for with its own button only,
    // never by a key pressed to get on with the run.
    cmdPrint_->setAutoDefault(false);
    cmdClose_->setDefault(true);

    connect(cmdPrint_, &QPushButton::clicked, this, &frmCheckReport::cmdPrint_Click);
    connect(cmdClose_, &QPushButton::clicked, this, &frmCheckReport::cmdClose_Click);
}

void frmCheckReport::loadText(const QString& text) { txtMessage_->setPlainText(shownText(text)); }

void frmCheckReport::SetText(const QString& text) {
    trapped(QStringLiteral("SetText"), 0, [&] {
        loadText(text);
        if (userInterface().isBatch()) {
            userInterface().showReport(kCaption, text);
            return;
        }
        mSetWindowPosition();
        exec();
    });
}

void frmCheckReport::Dispose() { close(); }

void frmCheckReport::mSetDefaultSize() { resize(kClientWidth, kClientHeight); }

void frmCheckReport::mInitVariable() {
    mlngButtonBottom = height() - cmdPrint_->y();
    mlngCloseRight = width() - cmdClose_->x();
    mlngLabelBottom = height() - Label1_->y();
    mlngTextBottom = height() - txtMessage_->geometry().bottom() - 1;
    mlngTextRight = width() - txtMessage_->geometry().right() - 1;
}

void frmCheckReport::mSetVariable() {
    if (mlngButtonBottom == 0) return;  // before the distances are known
    const int w = width();
    const int h = height();
    cmdPrint_->move(cmdPrint_->x(), h - mlngButtonBottom);
    cmdClose_->move(w - mlngCloseRight, h - mlngButtonBottom);
    Label1_->setGeometry(Label1_->x(), h - mlngLabelBottom, std::max(0, w - 2 * Label1_->x()), Label1_->height());
    txtMessage_->resize(std::max(0, w - mlngTextRight - txtMessage_->x()),
                        std::max(0, h - mlngTextBottom - txtMessage_->y()));
}

void frmCheckReport::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    mSetVariable();
}

void frmCheckReport::mSetWindowPosition() {
    const QWidget* owner = parentWidget();
    QRect area;
    if (owner && owner->isVisible()) {
        area = owner->frameGeometry();
    } else if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        area = screen->availableGeometry();
    } else {
        return;
    }
    move(area.center() - QPoint(width() / 2, height() / 2));
}

void frmCheckReport::cmdPrint_Click() {
    if (!gMsgbox(1, QStringLiteral("印刷を実行しますか？"), QStringLiteral("確認"))) return;
    mPrintOutError();
}

void frmCheckReport::cmdClose_Click() { hide(); }

// To the run's print target: the default printer, or the PDF file standing
// in for it. The user asked for paper: a print that does not start is told,
// as the preview's print button tells it.
void frmCheckReport::mPrintOutError() {
    trapped(QStringLiteral("mPrintOutError"), 1, [&] {
        const QString text = txtMessage_->toPlainText();
        if (text.trimmed().isEmpty()) {
            gMsgbox(0, QStringLiteral("印刷する内容がありません"), QStringLiteral("情報"));
            return;
        }
        QPrinter printer(QPrinter::HighResolution);
        const PrintTarget target = userInterface().printTarget();
        if (target.isPdfFile()) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(target.pdfPath());
        } else if (!printer.isValid() || printer.printerName().isEmpty()) {
            throw VbError(vberr::PathNotFound, QStringLiteral("通常使うプリンタが設定されていません。"));
        }
        printer.setDocName(kCaption);
        printTextLines(text, QStringLiteral("ＭＳ ゴシック"), printer);
    });
}

}  // namespace kelvary
