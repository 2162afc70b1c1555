// The preview window: zoom stays within its limits, each toolbar button does
// its own step, and leaving with the cancel button prints nothing. A new page
// shows from its top, bold text is bold on screen, and the print button's
// description reaches the status bar.
#include "platform/LayoutDocument.h"
#include "print/frmPrintPreview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

namespace kelvary {
namespace {

std::vector<RecordedPage> pagesOf(int count) {
    std::vector<RecordedPage> pages(static_cast<size_t>(count));
    for (RecordedPage& p : pages) p.paperMm = QSizeF(210, 297);
    return pages;
}

class PreviewWindow : public ::testing::Test {
protected:
    std::vector<RecordedPage> pages_ = pagesOf(3);
    int printed_ = 0;
    frmPrintPreview window_{pages_, [this] { ++printed_; }};
};

TEST_F(PreviewWindow, ZoomMovesInStepsOf25AndStopsBeforeLeaving5To1000) {
    EXPECT_EQ(window_.zoom(), 100);
    window_.mChangeScale(0);
    EXPECT_EQ(window_.zoom(), 75);
    window_.mChangeScale(0);
    window_.mChangeScale(0);
    EXPECT_EQ(window_.zoom(), 25);
    window_.mChangeScale(0);  // 0 would be below 5
    EXPECT_EQ(window_.zoom(), 25);
    for (int i = 0; i < 50; ++i) window_.mChangeScale(1);
    EXPECT_EQ(window_.zoom(), 1000);
    window_.mChangeScale(0);
    EXPECT_EQ(window_.zoom(), 975);
}

TEST_F(PreviewWindow, CancelLeavesWithoutPrintingAndPrintClearsTheCancel) {
    window_.show();
    window_.action(QStringLiteral("ID_Cancel"))->trigger();
    EXPECT_TRUE(window_.isCancelled());
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(printed_, 0);

    window_.show();
    window_.action(QStringLiteral("ID_Print"))->trigger();
    EXPECT_FALSE(window_.isCancelled());
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(printed_, 1);
}

// Each toolbar button does its own thing: on four pages every paging button
// lands on a different page, and the zoom buttons go opposite ways.
TEST(PreviewToolbar, EachButtonClickedDoesItsOwnStep) {
    const std::vector<RecordedPage> pages = pagesOf(4);
    frmPrintPreview window(pages, nullptr);
    window.show();
    QToolBar* tools = window.findChild<QToolBar*>();
    const auto click = [&](const char* key) {
        QTest::mouseClick(tools->widgetForAction(window.action(QLatin1String(key))), Qt::LeftButton);
    };
    click("ID_Last");
    EXPECT_EQ(window.currentPage(), 4);
    click("ID_Back");
    EXPECT_EQ(window.currentPage(), 3);
    click("ID_First");
    EXPECT_EQ(window.currentPage(), 1);
    click("ID_Next");
    EXPECT_EQ(window.currentPage(), 2);
    click("ID_ZoomIn");
    EXPECT_EQ(window.zoom(), 125);
    click("ID_ZoomOut");
    click("ID_ZoomOut");
    EXPECT_EQ(window.zoom(), 75);
    EXPECT_EQ(window.currentPage(), 2);
    EXPECT_TRUE(window.isVisible());
}

// Dark pixels in the window's image: the page's drawing as it reached the screen.
int darkPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 64) ++count;
    return count;
}

TEST(PreviewWindowPaint, ShowsTheCurrentPageScaledByTheZoom) {
    // Page 1 is blank; page 2 has a black square of 20 mm.
    const char* json = R"({"pages": [{"items": [
        {"type": "box", "x": 20, "y": 20, "w": 20, "h": 20, "fill": "#000000", "width": 0}]}]})";
    const LayoutDocument square = LayoutDocument::fromJson(json, QStringLiteral("Square.w30"));
    const LayoutDocument blank = LayoutDocument::fromJson(R"({"pages": [{"items": []}]})", QStringLiteral("Blank.w30"));
    const std::vector<RecordedPage> pages{recordLayoutPage(blank, 1), recordLayoutPage(square, 1)};
    frmPrintPreview window(pages, {});
    window.resize(1200, 1400);
    window.show();
    QWidget* page = window.findChild<QScrollArea*>()->widget();
    EXPECT_EQ(darkPixels(page->grab().toImage()), 0);

    window.mChangePage(1);
    const int atFull = darkPixels(page->grab().toImage());
    // 20 mm at the screen's resolution, squared, within a pixel's rounding at each edge.
    const double side = 20.0 / 25.4 * page->logicalDpiX();
    EXPECT_NEAR(atFull, side * side, 4 * side + 4);

    window.mChangeScale(0);
    window.mChangeScale(0);  // 50 %
    const int atHalf = darkPixels(page->grab().toImage());
    EXPECT_NEAR(atHalf, side * side / 4, 2 * side + 4);
}

TEST_F(PreviewWindow, ANewPageShowsFromItsTop) {
    window_.resize(500, 400);  // far less than a page at 100 %
    window_.show();
    QScrollBar* bar = window_.findChild<QScrollArea*>()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    QToolBar* tools = window_.findChild<QToolBar*>();
    const auto click = [&](const char* key) {
        QTest::mouseClick(tools->widgetForAction(window_.action(QLatin1String(key))), Qt::LeftButton);
    };
    for (const char* key : {"ID_Next", "ID_Last", "ID_Back", "ID_First"}) {
        bar->setValue(bar->maximum());
        click(key);
        EXPECT_EQ(bar->value(), 0) << key;
    }
    // Back on the first page changes nothing, so the place is kept.
    bar->setValue(bar->maximum() / 2);
    click("ID_Back");
    EXPECT_EQ(bar->value(), bar->maximum() / 2);
}

TEST_F(PreviewWindow, ThePrintButtonsDescriptionShowsWhenPointedAt) {
    window_.show();
    QWidget* print = window_.findChild<QToolBar*>()->widgetForAction(window_.action(QStringLiteral("ID_Print")));
    const QPointF middle = QRectF(print->rect()).center();
    QEnterEvent enter(middle, print->mapTo(&window_, middle), print->mapToGlobal(middle));
    QApplication::sendEvent(print, &enter);
    const QStatusBar* status = window_.findChild<QStatusBar*>();
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(status->currentMessage(),
              QStringLiteral("作業中のファイル、または選択されたアイテムを印刷します。"
                             "印刷オプションを設定するには[ファイル]メニューの[印刷]をクリックします。"));
    EXPECT_EQ(window_.action(QStringLiteral("ID_Print"))->toolTip(), QStringLiteral("印刷します"));
}

TEST(PreviewWindowPaint, BoldTextIsBolderOnScreen) {
    // The same title twice, the second bold, each in its own half of the page.
    const char* json = R"({"pages": [{"items": [
        {"type": "text", "x": 10, "y": 10, "w": 150, "h": 10, "text": "経営状況分析申請書", "size": 14},
        {"type": "text", "x": 10, "y": 150, "w": 150, "h": 10, "text": "経営状況分析申請書", "size": 14,
         "bold": true}]}]})";
    const std::vector<RecordedPage> pages{recordLayoutPage(LayoutDocument::fromJson(json, QStringLiteral("T.w30")), 1)};
    frmPrintPreview window(pages, {});
    window.resize(1200, 1400);
    window.show();
    const QImage image = window.findChild<QScrollArea*>()->widget()->grab().toImage();
    const int regular = darkPixels(image.copy(0, 0, image.width(), image.height() / 2));
    const int bold = darkPixels(image.copy(0, image.height() / 2, image.width(), image.height() / 2));
    ASSERT_GT(regular, 200);  // the title was drawn at all
    // An emboldened stroke is wider by a fraction of a pixel on each side:
    // at least a fifth more ink.
    EXPECT_GT(bold, regular * 6 / 5);
}

}  // namespace
}  // namespace kelvary
