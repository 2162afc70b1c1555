// Message boxes and the error display: kinds, defaults, results, the exact
// error text, the settings switch and the batch transcript.
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

TEST(ShowErrMsg, TextLayoutLineByLine) {
    const QString text = errorReportText(QStringLiteral("gvarGetData"), 1, 13,
                                         QStringLiteral("型が一致しません。"), std::nullopt);
    const QString expected = QStringLiteral(
        "プログラムの実行中にエラーが発生しました。\r\n"
        "場所： gvarGetData\r\n"
        "\r\n"
        "番号： 13\r\n"
        "\r\n"
        "内容： 型が一致しません。\r\n"
        "\r\n"
        "位置： 位置情報は設定されていません\r\n"
        "\r\n"
        "\r\n"
        "処理を中断します。");
    EXPECT_EQ(text, expected);
}

TEST(ShowErrMsg, MissingItemHasItsOwnFirstLineAndPositionIsShown) {
    const QString text = errorReportText(QStringLiteral("X"), 0, 3265, QStringLiteral("d"), 120);
    EXPECT_TRUE(text.startsWith(QStringLiteral("データファイルのバージョンが古いため必要な項目が足りません\r\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("位置： 120\r\n")));
    EXPECT_TRUE(text.endsWith(QStringLiteral("\r\n\r\n\r\n処理を続けます。")));
    EXPECT_TRUE(errorReportText(QStringLiteral("X"), 2, 5, QString(), std::nullopt)
                    .endsWith(QStringLiteral("処理を続けますか？")));
}

TEST(ShowErrMsg, SilentWithoutSettingButAlwaysLogged) {
    ProgramFolder folder;
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    EXPECT_FALSE(reportInMode(2, 13));
    EXPECT_TRUE(ui->messages.isEmpty());
    EXPECT_TRUE(logText(folder).contains(QStringLiteral("場所： 場所A")));
}

TEST(ShowErrMsg, OtherValuesThanMinusOneKeepItSilent) {
    ProgramFolder folder("[System]\r\nShowErrMsg=1\r\n");
    RecordingUiGuard ui;
    EXPECT_FALSE(reportInMode(0, 13));
    EXPECT_TRUE(ui->messages.isEmpty());
}

TEST(ShowErrMsg, VisibleBoxAndModeTwoAnswer) {
    ProgramFolder folder("[System]\r\nShowErrMsg=-1\r\n");
    RecordingUiGuard ui;
    ui->yesNoAnswer = MsgAnswer::Yes;
    EXPECT_TRUE(reportInMode(2, 13));
    EXPECT_FALSE(reportInMode(1, 13));
    ASSERT_EQ(ui->messages.size(), 2);
    const MessageRequest& box = ui->messages[0].request;
    EXPECT_EQ(box.title, QStringLiteral("エラーが発生しました"));
    EXPECT_EQ(box.icon, MsgIcon::Critical);
    EXPECT_EQ(box.buttons, MsgButtons::YesNo);
    EXPECT_TRUE(box.text.contains(QStringLiteral("内容： 説明\r\n")));
    EXPECT_EQ(ui->messages[1].request.buttons, MsgButtons::Ok);
    ui->yesNoAnswer = MsgAnswer::No;
    EXPECT_FALSE(reportInMode(2, 13));
}
