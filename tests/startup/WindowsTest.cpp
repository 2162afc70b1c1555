// The main window's caption, the progress window, Qt's own texts and the
// file dialog of a start without a file, on the offscreen platform.
#include "checks/frmCheckReport.h"
#include "platform/AppObject.h"
#include "startup/ApplicationFileDialog.h"
#include "startup/JapaneseTranslations.h"
#include "startup/frmMDIForm.h"
#include "startup/frmMsg.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "startup/mdlVersion.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
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
