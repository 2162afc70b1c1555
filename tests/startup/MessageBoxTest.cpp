// Message boxes and the error display: a warning's default answer, and the
// settings switch that silences the display but never the log.
#include "platform/AppObject.h"
#include "platform/VbError.h"
#include "startup/BatchUserInterface.h"
#include "startup/QtUserInterface.h"
#include "startup/mdlFunctionStandard.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace kelvary;
using kelvary::test::RecordingUiGuard;

namespace {

using test::ProgramFolder;

QString logText(const ProgramFolder& folder) {
    return QString::fromUtf8(test::readFile(folder.file(QStringLiteral("Temp/kelvary.log"))));
}

bool reportInMode(int mode, long number) {
    try {
        throw VbError(number, QStringLiteral("説明"));
    } catch (...) {
        return ShowErrMsg(QStringLiteral("場所A"), mode);
    }
}

}  // namespace

TEST(QtMessageBox, WarningKindAnswersNoToEnter) {
    setUserInterface(std::make_unique<QtUserInterface>());
    bool sawBox = false;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        sawBox = true;
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->windowTitle(), QStringLiteral("警告"));
        QTest::keyClick(box, Qt::Key_Return);
    });
    const bool result = gMsgbox(2, QStringLiteral("上書きしますか？"));
    setUserInterface(nullptr);
    EXPECT_TRUE(sawBox);
    EXPECT_FALSE(result);
}

TEST(ShowErrMsg, SilentWithoutSettingButAlwaysLogged) {
    ProgramFolder folder;
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    EXPECT_FALSE(reportInMode(2, 13));
    EXPECT_TRUE(ui->messages.isEmpty());
    EXPECT_TRUE(logText(folder).contains(QStringLiteral("場所： 場所A")));
}
