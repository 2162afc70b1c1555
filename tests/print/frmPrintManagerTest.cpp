// The print manager's preview: a whole page on screen, the caption and the
// page number.
#include "platform/AppObject.h"
#include "platform/Fonts.h"
#include "print/frmPrintManager.h"
#include "print/frmPrintPreview.h"
#include "startup/frmMDIForm.h"
#include "startup/CommandLine.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace kelvary {
namespace {

TEST(PrintManager, PreviewOpensOnAWholePageWithItsNumberAndZoomInSight) {
    test::RecordingUiGuard ui;
    ui->batch = false;
    test::ScratchHome home;
    installFontSubstitutions();
    app::setPath(home.path());
    ASSERT_TRUE(QDir().mkpath(home.file(QStringLiteral("PrintFile"))));
    test::writeFile(home.file(QStringLiteral("PrintFile/Probe.w30")),
                    test::readFile(test::testDataDir() + QStringLiteral("/platform/layouts/Probe.w30")));
    setOptionFields(CommandFields{QStringLiteral("app.dat"), QString(), QString(), OutputMode::Print});
    frmMDIForm main;  // 800 x 600, the size the preview used to copy
    main.show();

    frmPrintManager manager;
    manager.Init();
    for (int i = 0; i < 2; ++i) {
        manager.SetPrintFile(QStringLiteral("Probe.w30"));
        manager.EndPage();
    }
    bool seen = false;
    QTimer::singleShot(0, [&] {
        auto* preview = qobject_cast<frmPrintPreview*>(QApplication::activeModalWidget());
        ASSERT_NE(preview, nullptr);
        seen = true;
        EXPECT_EQ(preview->windowTitle(), QStringLiteral("  [1/2ページ]"));
        auto* scroll = preview->findChild<QScrollArea*>();
        // The whole A4 page inside the visible part, nothing to scroll.
        const QSize page = scroll->widget()->size();
        const QSize visible = scroll->viewport()->size();
        EXPECT_LE(page.width(), visible.width());
        EXPECT_LE(page.height(), visible.height());
        EXPECT_FALSE(scroll->verticalScrollBar()->isVisible());
        const double a4Height = 297.0 / 25.4 * preview->screen()->logicalDotsPerInchY() * preview->zoom() / 100;
        EXPECT_NEAR(page.height(), a4Height, 2);
        EXPECT_TRUE(preview->screen()->availableGeometry().contains(preview->geometry()));
        const QLabel* number = preview->findChild<QLabel*>(QStringLiteral("PageNumber"));
        const QLabel* zoom = preview->findChild<QLabel*>(QStringLiteral("Zoom"));
        EXPECT_TRUE(number && number->isVisible() && number->text() == QStringLiteral("1 / 2 ページ"));
        EXPECT_TRUE(zoom && zoom->isVisible() && zoom->text() == QStringLiteral("倍率 %1%").arg(preview->zoom()));

        QWidget* next = preview->findChild<QToolBar*>()->widgetForAction(preview->action(QStringLiteral("ID_Next")));
        QTest::mouseClick(next, Qt::LeftButton);
        EXPECT_EQ(preview->windowTitle(), QStringLiteral("  [2/2ページ]"));
        EXPECT_TRUE(number && number->text() == QStringLiteral("2 / 2 ページ"));
        preview->action(QStringLiteral("ID_Cancel"))->trigger();
    });
    manager.OpenPreview();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(manager.IsCancel());
    manager.EndPrint();
    setOptionFields(CommandFields{});
}

}  // namespace
}  // namespace kelvary
