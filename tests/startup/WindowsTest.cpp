// The main window's caption, the progress window, Qt's own texts and the
// file dialog of a start without a file, on the offscreen platform; message
// boxes and the error display: a warning's default answer, the settings
// switch that silences the display but never the log, and the error trap
// that routines run under.
#include "checks/frmCheckReport.h"
#include "platform/AppObject.h"
#include "platform/VbError.h"
#include "qr/ResumeTrap.h"
#include "startup/ApplicationFileDialog.h"
#include "startup/BatchUserInterface.h"
#include "startup/frmMDIForm.h"
#include "startup/frmMsg.h"
#include "startup/JapaneseTranslations.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "startup/mdlVersion.h"
#include "startup/QtUserInterface.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <gtest/gtest.h>

using namespace kelvary;

namespace {
frmMsg* progressWindow() {
    for (QWidget* w : QApplication::allWidgets())
        if (auto* form = qobject_cast<frmMsg*>(w); form && form->isVisible()) return form;
    return nullptr;
}
}  // namespace

TEST(gMsgForm, OpensCentredOnTheMainWindow) {
    frmMDIForm main;
    main.setGeometry(300, 200, 800, 600);
    main.show();
    gMsgForm(0, QStringLiteral("しばらくお待ちください"));
    frmMsg* form = progressWindow();
    ASSERT_NE(form, nullptr);
    // The main window's middle is (700, 500).
    const QPoint middle = form->frameGeometry().center();
    EXPECT_NEAR(middle.x(), 700, 2);
    EXPECT_NEAR(middle.y(), 500, 2);
    EXPECT_EQ(form->windowTitle(), app::title());
    gMsgForm(1);
    QCoreApplication::processEvents();
}

// Qt's own texts in Japanese: what the program installs at start, checked on
// standard widgets Qt words itself.
class QtInJapanese : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(installJapaneseTranslations()); }
    void TearDown() override {
        for (QTranslator* t : QCoreApplication::instance()->findChildren<QTranslator*>()) {
            QCoreApplication::removeTranslator(t);
            delete t;
        }
        QLocale::setDefault(before_);
    }
    const QLocale before_;
};

TEST_F(QtInJapanese, StandardButtons) {
    QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Yes |
                         QDialogButtonBox::No | QDialogButtonBox::Close);
    EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text(), QStringLiteral("キャンセル"));
    EXPECT_EQ(box.button(QDialogButtonBox::Yes)->text(), QStringLiteral("はい(&Y)"));
    EXPECT_EQ(box.button(QDialogButtonBox::No)->text(), QStringLiteral("いいえ(&N)"));
    EXPECT_EQ(box.button(QDialogButtonBox::Close)->text(), QStringLiteral("閉じる"));
    // The text box menu: Program.cases, QtTextsAreJapaneseOnAnyLocale.
}

TEST_F(QtInJapanese, FileDialogOpensInTheLastFolderAndKeepsTheChosenOne) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString last = dir.filePath(QStringLiteral("申請"));
    ASSERT_TRUE(QDir().mkpath(last));
    for (const char* name : {"a.dat", "b.txt", "c.pdf"}) {
        QFile file(last + QLatin1Char('/') + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QSettings settings(dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    settings.setValue(QLatin1String(kLastApplicationFolderKey), last);

    QStringList seen;
    bool checked = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        checked = true;
        EXPECT_EQ(QDir(dialog->directory()).canonicalPath(), QDir(last).canonicalPath());
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("申請データファイルを開く"));
        // Its labels, buttons and columns in Japanese: Program.cases, QtTextsAreJapaneseOnAnyLocale.
        // Only the application data files are listed, once the folder is read.
        auto* view = dialog->findChild<QListView*>(QStringLiteral("listView"));
        (void)QTest::qWaitFor([&] { return view->model()->rowCount(view->rootIndex()) == 2; }, 5000);
        for (int r = 0; r < view->model()->rowCount(view->rootIndex()); ++r)
            seen << view->model()->index(r, 0, view->rootIndex()).data().toString();
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(QStringLiteral("a.dat"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    const QString chosen = askForApplicationFile(settings);
    EXPECT_TRUE(checked);
    seen.sort();
    EXPECT_EQ(seen, (QStringList{QStringLiteral("a.dat"), QStringLiteral("b.txt")}));
    EXPECT_EQ(QFileInfo(chosen).canonicalFilePath(), QFileInfo(last + QStringLiteral("/a.dat")).canonicalFilePath());
    EXPECT_EQ(QDir(settings.value(QLatin1String(kLastApplicationFolderKey)).toString()).canonicalPath(),
              QDir(last).canonicalPath());
}

// Each window's caption is its own text alone. (What the window manager
// finally shows is checked by scripts/take-screenshots.sh with xprop.)
TEST(Captions, MainWindowAndProblemList) {
    frmMDIForm main;
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^Kelvary\\(\\d+\\. \\d+\\. \\d+\\)$"))
                    .match(main.windowTitle())
                    .hasMatch())
        << main.windowTitle().toStdString();
    frmCheckReport report;
    EXPECT_EQ(report.windowTitle(), QStringLiteral("入力内容の問題点一覧"));
}

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
