// The preview window: paging and zoom stay within their limits, the caption
// counts pages, the toolbar keeps its order and tooltips, and leaving with the
// cancel button prints nothing.
#include "platform/LayoutDocument.h"
#include "print/frmPrintPreview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QScrollArea>
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

TEST_F(PreviewWindow, BackOnTheFirstPageAndNextOnTheLastDoNothing) {
    EXPECT_EQ(window_.currentPage(), 1);
    window_.mChangePage(0);
    EXPECT_EQ(window_.currentPage(), 1);
    window_.mChangePage(1);
    window_.mChangePage(1);
    EXPECT_EQ(window_.currentPage(), 3);
    window_.mChangePage(1);
    EXPECT_EQ(window_.currentPage(), 3);
    window_.mChangePage(0);
    EXPECT_EQ(window_.currentPage(), 2);
    window_.mChangePage(2);
    EXPECT_EQ(window_.currentPage(), 1);
    window_.mChangePage(3);
    EXPECT_EQ(window_.currentPage(), 3);
}

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

}  // namespace
}  // namespace kelvary
