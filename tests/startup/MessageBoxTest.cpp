// Message boxes and the error display: a warning's default answer, the
// settings switch that silences the display but never the log, and the error
// trap that routines run under.
#include "platform/AppObject.h"
#include "platform/VbError.h"
#include "qr/ResumeTrap.h"
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

namespace {
const QByteArray kShownErrors = "[System]\r\nShowErrMsg=-1\r\n";
}  // namespace

TEST(ErrorTrap, AFailureIsReportedOnceWithItsPlaceAndTheRoutineGivesItsEmptyResult) {
    ProgramFolder folder(kShownErrors);
    RecordingUiGuard ui;
    EXPECT_EQ(trapped(QStringLiteral("mRead"), 1, QStringLiteral("空"),
                      [] () -> QString { throw VbError(vberr::FileNotFound, QStringLiteral("ない")); }),
              QStringLiteral("空"));
    ASSERT_EQ(ui->messages.size(), 1);
    const QString text = ui->messages[0].request.text;
    EXPECT_TRUE(text.contains(QStringLiteral("場所： mRead\r\n"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("内容： ない"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("処理を中断します。"))) << text.toStdString();

    // A body that runs through gives its own result and reports nothing.
    EXPECT_EQ(trapped(QStringLiteral("mRead"), 1, QStringLiteral("空"), [] { return QStringLiteral("値"); }),
              QStringLiteral("値"));
    EXPECT_TRUE(trapped(QStringLiteral("mRead"), 0, [] {}).ran);
    EXPECT_EQ(ui->messages.size(), 1);
}

TEST(ErrorTrap, APlaceThatNamesTheFaultIsMadeOnlyForTheReportAndSeesTheBodysState) {
    ProgramFolder folder(kShownErrors);
    RecordingUiGuard ui;
    int made = 0;
    int code = 0;
    const auto place = [&] {
        ++made;
        return QStringLiteral("gblnCheck Code=A") + QString::number(code);
    };
    EXPECT_TRUE(trapped(place, 0, [&] { code = 1; }).ran);
    EXPECT_EQ(made, 0);
    const TrapEnd end = trapped(place, 0, [&] {
        code = 471;
        throw VbError::standard(vberr::InputPastEnd);
    });
    EXPECT_FALSE(end.ran);
    EXPECT_EQ(made, 1);
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_TRUE(ui->messages[0].request.text.contains(QStringLiteral("場所： gblnCheck Code=A471\r\n")));
}

// Mode 2 asks whether to go on: Yes resumes the builder with its next step,
// No ends it, and no step after that runs or is reported.
TEST(ErrorTrap, AResumeTrapGoesOnAfterYesAndEndsAfterNo) {
    ProgramFolder folder(kShownErrors);
    RecordingUiGuard ui;
    const auto fail = [] { throw VbError::standard(vberr::DivisionByZero); };
    QStringList made;

    ui->yesNoAnswer = MsgAnswer::Yes;
    qr::ResumeTrap resumed(QStringLiteral("mMakeQRCodeFS"));
    EXPECT_FALSE(resumed.run(fail));
    EXPECT_TRUE(resumed.run([&] { made << QStringLiteral("after yes"); }));
    EXPECT_FALSE(resumed.ended());
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_EQ(ui->messages[0].request.buttons, MsgButtons::YesNo);
    EXPECT_TRUE(ui->messages[0].request.text.contains(QStringLiteral("処理を続けますか？")));

    ui->yesNoAnswer = MsgAnswer::No;
    qr::ResumeTrap ended(QStringLiteral("mMakeQRCodeFS"));
    EXPECT_FALSE(ended.run(fail));
    EXPECT_TRUE(ended.ended());
    EXPECT_FALSE(ended.run([&] { made << QStringLiteral("after no"); }));
    EXPECT_FALSE(ended.run(fail));
    EXPECT_EQ(made, QStringList{QStringLiteral("after yes")});
    EXPECT_EQ(ui->messages.size(), 2);
}
