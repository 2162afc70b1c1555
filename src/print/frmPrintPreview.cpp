// The preview window: the toolbar's buttons in their order with their
// tooltips, and a page view that draws the kept page at the zoom.
#include "print/frmPrintPreview.h"

#include "startup/mdlFunctionStandard.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace kelvary {

// Paints one kept page on white paper at the chosen zoom.
class PreviewPageView : public QWidget {
public:
    explicit PreviewPageView(QWidget* parent) : QWidget(parent) {}

    void show(const RecordedPage* page, int zoom) {
        page_ = page;
        zoom_ = zoom;
        if (page_) {
            const double ppm = pixelsPerMm();
            setFixedSize(static_cast<int>(page_->paperMm.width() * ppm) + 1,
                         static_cast<int>(page_->paperMm.height() * ppm) + 1);
        }
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        if (!page_) return;
        painter.setPen(Qt::gray);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        playRecordedPage(painter, *page_, pixelsPerMm());
    }

private:
    double pixelsPerMm() const { return logicalDpiX() / 25.4 * zoom_ / 100.0; }

    const RecordedPage* page_ = nullptr;
    int zoom_ = 100;
};

namespace {

struct ToolButton {
    const char* key;
    const char* caption;
    const char* tooltip;
    QKeySequence shortcut;
    void (frmPrintPreview::*clicked)();
};

}  // namespace

frmPrintPreview::frmPrintPreview(const std::vector<RecordedPage>& pages, std::function<void()> printAll,
                                 QWidget* parent)
    : QDialog(parent), pages_(pages), printAll_(std::move(printAll)) {
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = bar_ = new QToolBar(this);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    layout->addWidget(bar);

    const auto addButton = [&](const ToolButton& b) {
        QAction* a = bar->addAction(QString::fromUtf8(b.caption));
        a->setObjectName(QLatin1String(b.key));
        a->setToolTip(QString::fromUtf8(b.tooltip));
        if (!b.shortcut.isEmpty()) a->setShortcut(b.shortcut);
        connect(a, &QAction::triggered, this, b.clicked);
        return a;
    };
    addButton({"ID_Cancel", "戻る", "印刷をしないで戻ります。", QKeySequence(), &frmPrintPreview::onCancelClicked});
    bar->addSeparator();
    addButton({"ID_ZoomIn", "拡大", "倍率を大きくします。", QKeySequence::ZoomIn, &frmPrintPreview::onZoomInClicked});
    addButton({"ID_ZoomOut", "縮小", "倍率を下げます。", QKeySequence::ZoomOut, &frmPrintPreview::onZoomOutClicked});
    bar->addSeparator();
    addButton({"ID_First", "|<", "", QKeySequence(Qt::Key_Home), &frmPrintPreview::onFirstClicked});
    addButton({"ID_Back", "<", "前のページへ戻ります", QKeySequence(Qt::Key_PageUp), &frmPrintPreview::onBackClicked});
    addButton({"ID_Next", ">", "次のページに進みます", QKeySequence(Qt::Key_PageDown), &frmPrintPreview::onNextClicked});
    auto* pageLabel = new QLabel(QStringLiteral("ページ"), bar);
    pageLabel->setObjectName(QStringLiteral("ID_Page"));
    bar->addWidget(pageLabel);
    addButton({"ID_Last", ">|", "", QKeySequence(Qt::Key_End), &frmPrintPreview::onLastClicked});
    bar->addSeparator();
    QAction* print = addButton({"ID_Print", "印刷", "印刷します", QKeySequence::Print, &frmPrintPreview::onPrintClicked});
    print->setStatusTip(QStringLiteral(
        "作業中のファイル、または選択されたアイテムを印刷します。印刷オプションを設定するには[ファイル]メニューの[印刷]をクリックします。"));

    scroll_ = new QScrollArea(this);
    scroll_->setAlignment(Qt::AlignHCenter);
    scroll_->setBackgroundRole(QPalette::Dark);
    view_ = new PreviewPageView(scroll_);
    scroll_->setWidget(view_);
    layout->addWidget(scroll_, 1);

    status_ = new QStatusBar(this);
    status_->setObjectName(QStringLiteral("StatusBar"));
    status_->setSizeGripEnabled(false);
    pageNumber_ = new QLabel(status_);
    pageNumber_->setObjectName(QStringLiteral("PageNumber"));
    zoomText_ = new QLabel(status_);
    zoomText_->setObjectName(QStringLiteral("Zoom"));
    for (QLabel* label : {pageNumber_, zoomText_}) {
        label->setContentsMargins(8, 0, 8, 0);
        status_->addPermanentWidget(label);
    }
    layout->addWidget(status_);

    resize(900, 1000);
    refreshView();
}

frmPrintPreview::~frmPrintPreview() = default;

QAction* frmPrintPreview::action(const QString& key) const { return findChild<QAction*>(key); }

void frmPrintPreview::setCaptionBase(const QString& base) {
    captionBase_ = base;
    setWindowTitle(captionBase_);
}

void frmPrintPreview::fitToScreen(const QScreen* screen) {
    if (!screen || pages_.empty()) return;
    QSizeF paper;
    for (const RecordedPage& p : pages_) paper = paper.expandedTo(p.paperMm);
    if (paper.isEmpty()) return;
    const QRect area = screen->availableGeometry();
    // What the window puts around the page: the toolbar and status bar, the
    // scroll area's frame, and the frame the window manager draws (known
    // only once shown; a title bar's height is allowed for before that).
    const int frame = 2 * scroll_->frameWidth() + 4;
    const int spacing = std::max(0, layout()->spacing());
    const int chrome = bar_->sizeHint().height() + status_->sizeHint().height() + frame + 2 * spacing;
    const int decorationH = isVisible() ? frameGeometry().height() - height() : 40;
    const int decorationW = isVisible() ? frameGeometry().width() - width() : 8;
    const double pixelsPerMm = screen->logicalDotsPerInchX() / 25.4;
    const double fit = 100.0 * std::min((area.width() - decorationW - frame) / (paper.width() * pixelsPerMm),
                                        (area.height() - decorationH - chrome) / (paper.height() * pixelsPerMm));
    // Whole steps of the zoom buttons where they fit, so that zooming in
    // comes back to 100 %; below 25 % the largest whole percent that fits.
    int zoom = fit >= 100 ? 100 : fit >= zoomStep ? static_cast<int>(fit / zoomStep) * zoomStep
                                                  : static_cast<int>(std::floor(fit));
    zoom_ = std::clamp(zoom, static_cast<int>(minZoom), 100);
    refreshView();
    const QSize pageSize(static_cast<int>(paper.width() * pixelsPerMm * zoom_ / 100.0) + 1,
                         static_cast<int>(paper.height() * pixelsPerMm * zoom_ / 100.0) + 1);
    const QSize size(std::max(pageSize.width() + frame, bar_->sizeHint().width()), pageSize.height() + chrome);
    setGeometry(QRect(area.center() - QPoint(size.width() / 2, (size.height() + decorationH) / 2 - decorationH),
                      size));
}

bool frmPrintPreview::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        status_->showMessage(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QDialog::event(event);
}

void frmPrintPreview::reject() {
    // Closing the window is leaving without printing.
    cancelled_ = true;
    QDialog::reject();
}

void frmPrintPreview::onPrintClicked() {
    mPrintPreview();
    cancelled_ = false;
    done(Accepted);
}

void frmPrintPreview::onCancelClicked() { reject(); }
void frmPrintPreview::onBackClicked() { mChangePage(0); }
void frmPrintPreview::onNextClicked() { mChangePage(1); }
void frmPrintPreview::onFirstClicked() { mChangePage(2); }
void frmPrintPreview::onLastClicked() { mChangePage(3); }
void frmPrintPreview::onZoomInClicked() { mChangeScale(1); }
void frmPrintPreview::onZoomOutClicked() { mChangeScale(0); }

void frmPrintPreview::mPrintPreview() {
    trapped(QStringLiteral("mPrintPreview"), 1, [&] {
        if (printAll_) printAll_();
    });
}

void frmPrintPreview::mChangePage(int kind) {
    trapped(QStringLiteral("mChangePage"), 1, [&] {
        const int before = page_;
        switch (kind) {
        case 0:
            if (page_ >= 2) --page_;
            break;
        case 1:
            if (page_ < pageCount()) ++page_;
            break;
        case 2:
            page_ = 1;
            break;
        case 3:
            page_ = pageCount();
            break;
        default:
            break;
        }
        refreshView();
        // Another page is read from its top, wherever the last one was left.
        if (page_ != before) scroll_->verticalScrollBar()->setValue(0);
        mShowPageNumber();
    });
}

void frmPrintPreview::mChangeScale(int kind) {
    trapped(QStringLiteral("mChangeScale"), 1, [&] {
        if (kind == 1 && zoom_ + zoomStep <= maxZoom) zoom_ += zoomStep;
        else if (kind == 0 && zoom_ - zoomStep >= minZoom) zoom_ -= zoomStep;
        refreshView();
    });
}

void frmPrintPreview::mShowPageNumber() {
    setWindowTitle(captionBase_ + QStringLiteral("  [%1/%2ページ]").arg(page_).arg(pageCount()));
}

void frmPrintPreview::refreshView() {
    const bool any = page_ >= 1 && page_ <= pageCount();
    view_->show(any ? &pages_[static_cast<size_t>(page_ - 1)] : nullptr, zoom_);
    pageNumber_->setText(QStringLiteral("%1 / %2 ページ").arg(any ? page_ : 0).arg(pageCount()));
    zoomText_->setText(QStringLiteral("倍率 %1%").arg(zoom_));
}

}  // namespace kelvary
