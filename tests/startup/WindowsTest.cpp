// The main window's caption and the progress window, on the offscreen platform.
#include "startup/frmMDIForm.h"
#include "startup/frmMsg.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "startup/mdlVersion.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace kelvary;

namespace {
frmMsg* progressWindow() {
    for (QWidget* w : QApplication::allWidgets())
        if (auto* form = qobject_cast<frmMsg*>(w); form && form->isVisible()) return form;
    return nullptr;
}
}  // namespace

TEST(gMsgForm, ShowsUpdatesAndClosesAboveTheMainWindow) {
    frmMDIForm main;
    main.show();
    gMsgForm(0, QStringLiteral("しばらくお待ちください"));
    frmMsg* form = progressWindow();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->msgText(), QStringLiteral("しばらくお待ちください"));
    // Owned by the main window, so the platform keeps it above it.
    EXPECT_EQ(form->parentWidget(), &main);
    gMsgForm(2, QStringLiteral("申請書データ読み込み中"));
    EXPECT_EQ(progressWindow(), form);
    EXPECT_EQ(form->msgText(), QStringLiteral("申請書データ読み込み中"));
    gMsgForm(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(progressWindow(), nullptr);
}

TEST(gMsgForm, InBatchModeKeepsItsTextButIsNeverShown) {
    test::RecordingUiGuard batch;
    frmMDIForm main;
    gMsgForm(0, QStringLiteral("しばらくお待ちください"));
    gMsgForm(2, QStringLiteral("QRコード生成中"));
    QCoreApplication::processEvents();
    frmMsg* form = nullptr;
    for (QWidget* w : QApplication::allWidgets())
        if (auto* f = qobject_cast<frmMsg*>(w); f && f->msgText() == QStringLiteral("QRコード生成中")) form = f;
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->msgText(), QStringLiteral("QRコード生成中"));
    EXPECT_FALSE(form->isVisible());
    gMsgForm(1);
    QCoreApplication::processEvents();
}
