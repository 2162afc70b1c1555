// The preview window of the print manager: one collected page at a time, a
// toolbar to page, zoom, print or go back without printing. It is modal from
// open until its print or cancel button hides it.
#pragma once

#include "platform/LayoutRenderer.h"

#include <QDialog>

#include <functional>
#include <vector>

class QAction;
class QLabel;
class QScreen;
class QScrollArea;
class QStatusBar;
class QToolBar;

namespace kelvary {

class PreviewPageView;

class frmPrintPreview : public QDialog {
    Q_OBJECT
public:
    static constexpr int minZoom = 5;
    static constexpr int maxZoom = 1000;
    static constexpr int zoomStep = 25;

    // printAll prints every collected page; it runs when the print button is pressed.
    frmPrintPreview(const std::vector<RecordedPage>& pages, std::function<void()> printAll,
                    QWidget* parent = nullptr);
    ~frmPrintPreview() override;

    void setCaptionBase(const QString& base);

    // Starts at the largest zoom (at most 100 %) at which a whole page of the
    // largest paper fits the screen, sizes the window to show it and centres
    // the window there.
    void fitToScreen(const QScreen* screen);

    int currentPage() const { return page_; }
    int pageCount() const { return static_cast<int>(pages_.size()); }
    int zoom() const { return zoom_; }
    bool isCancelled() const { return cancelled_; }

    // 0 back, 1 next, 2 first, 3 last.
    void mChangePage(int kind);
    // 1 zoom in, 0 zoom out, each by one step within the limits.
    void mChangeScale(int kind);
    void mShowPageNumber();

    // The toolbar's button of a key ("ID_Print", "ID_Cancel", ...).
    QAction* action(const QString& key) const;

public slots:
    void reject() override;

protected:
    // The toolbar's descriptions (status tips) go to the window's status bar.
    bool event(QEvent* event) override;

private slots:
    // One per toolbar button.
    void onCancelClicked();
    void onZoomInClicked();
    void onZoomOutClicked();
    void onFirstClicked();
    void onBackClicked();
    void onNextClicked();
    void onLastClicked();
    void onPrintClicked();

private:
    void mPrintPreview();
    void refreshView();

    const std::vector<RecordedPage>& pages_;
    std::function<void()> printAll_;
    QString captionBase_;
    int page_ = 1;
    int zoom_ = 100;
    bool cancelled_ = false;
    PreviewPageView* view_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    QToolBar* bar_ = nullptr;
    QStatusBar* status_ = nullptr;
    QLabel* pageNumber_ = nullptr;
    QLabel* zoomText_ = nullptr;
};

}  // namespace kelvary
