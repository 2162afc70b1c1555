// The print selection menu driven as a user drives it: real controls on the
// offscreen platform, periods written into tblIndex by the test, messages
// caught by the recording port, stored marks read back with SQLite itself.
#include "startup/frmPrintMenu.h"

#include "startup/MenuTestHome.h"
#include "startup/mdlFunctionStandard.h"
#include "support/RecordingUi.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace kelvary;
using kelvary::test::MenuTestHome;
using kelvary::test::RecordingUiGuard;

namespace {

class PrintMenu : public ::testing::Test {
protected:
    template <typename Widget>
    Widget* control(const char* name) {
        auto* widget = menu.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QListWidget* list() { return control<QListWidget>("dbgList"); }

    QStringList entries() {
        QStringList texts;
        for (int i = 0; i < list()->count(); ++i) texts << list()->item(i)->text();
        return texts;
    }
    QList<qlonglong> itemData() {
        QList<qlonglong> keys;
        for (int i = 0; i < list()->count(); ++i) keys << list()->item(i)->data(Qt::UserRole).toLongLong();
        return keys;
    }
    QList<int> selectedRows() {
        QList<int> rows;
        for (int i = 0; i < list()->count(); ++i)
            if (list()->item(i)->isSelected()) rows << i;
        return rows;
    }
    // A check box or option button reacts only to clicks on its indicator
    // and caption, not on the rest of its row.
    void click(const char* name) {
        QAbstractButton* button = control<QAbstractButton>(name);
        const QPoint at = qobject_cast<QPushButton*>(button) ? button->rect().center()
                                                             : QPoint(6, button->height() / 2);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, at);
    }

    bool anyErrorReport() {
        for (const auto& m : ui->messages)
            if (m.request.title == QStringLiteral("エラーが発生しました")) return true;
        return false;
    }

    RecordingUiGuard ui;
    MenuTestHome home;
    frmPrintMenu menu;
};

TEST_F(PrintMenu, PeriodEntriesAreFixedColumnsOfEraDates) {
    home.run("startup/EraPeriods.sql");
    menu.show();

    // Same start: the larger year number first, then the larger key. A Null
    // date sorts last in a descending order.
    EXPECT_EQ(itemData(), (QList<qlonglong>{8, 7, 2, 4, 9}));
    const QString year12 = QStringLiteral("  12期　平成20年 4月 1日 ～ 平成21年 3月31日 (財務:新)");
    EXPECT_EQ(entries(), (QStringList{
                             QStringLiteral("  23期　平成31年 4月 1日 ～ 令和 2年 3月31日 (財務:新)"),
                             year12,
                             year12,
                             QStringLiteral("  11期　平成20年 4月 1日 ～ 平成21年 3月31日 (財務:新)"),
                             QStringLiteral("2345期　      年  月  日 ～       年  月  日"),
                         }));
}

// A batch run never shows the menu, so its caption and list width come only
// with showing it; shown, it has both, and the widest entry fits the list.
TEST_F(PrintMenu, ShownMenuCaptionsTheCoursesAndFitsTheWidestEntry) {
    home.run("startup/ThreePeriods.sql");
    menu.show();
    EXPECT_EQ(control<QGroupBox>("fraCourse")->title(), QStringLiteral("コースを選択してください"));
    const QString widest = QStringLiteral("2345期　平成31年12月31日 ～ 令和 2年12月31日 (財務:新)");
    EXPECT_GE(list()->minimumWidth(), QFontMetrics(list()->font()).horizontalAdvance(widest));
    EXPECT_GE(list()->width(), list()->minimumWidth());
}

TEST_F(PrintMenu, SendFileModeWithoutAnyPeriodSaysWhyNothingCanBeSent) {
    app::setCommandLine(QStringLiteral("/C:\\Data\\Apply.txt/C:\\Out\\Apply.pdf/n/3"));
    menu.show();
    EXPECT_EQ(list()->count(), 0);
    click("cmdPrint");
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_EQ(ui->messages[0].request.text,
              QStringLiteral("送信ファイルを作成できる決算期のデータがありません。"
                             "財務諸表のプログラムでこの申請者の決算期のデータを作成してから、もう一度実行してください。"));
    EXPECT_EQ(ui->messages[0].request.title, QStringLiteral("情報"));
    EXPECT_FALSE(anyErrorReport());
    app::setCommandLine(QString());
}

// Keys on the period list: each changes only the entry under the cursor.
// The entries begin with blanks, so a Space that also searched would jump to
// the next entry and change it too.
TEST_F(PrintMenu, SpaceOnEveryRowTogglesThatPeriodAlone) {
    home.run("startup/ThreePeriods.sql");
    menu.show();
    QListWidget* periods = list();
    for (int row = 0; row < 3; ++row) {
        QTest::keyClick(periods, Qt::Key_Home);
        for (int i = 0; i < row; ++i) QTest::keyClick(periods, Qt::Key_Down);
        ASSERT_EQ(periods->currentRow(), row);
        EXPECT_EQ(selectedRows(), QList<int>{0}) << "moving to row " << row;

        QTest::keyClick(periods, Qt::Key_Space);
        EXPECT_EQ(periods->currentRow(), row);
        EXPECT_EQ(selectedRows(), row == 0 ? QList<int>{} : (QList<int>{0, row})) << "Space on row " << row;

        QTest::keyClick(periods, Qt::Key_Space);
        EXPECT_EQ(periods->currentRow(), row);
        EXPECT_EQ(selectedRows(), QList<int>{0}) << "second Space on row " << row;
    }

    // Upwards from the end, every row again, keeping what was chosen.
    QTest::keyClick(periods, Qt::Key_End);
    for (int row = 2; row >= 0; --row) {
        ASSERT_EQ(periods->currentRow(), row);
        QTest::keyClick(periods, Qt::Key_Space);
        QTest::keyClick(periods, Qt::Key_Up);
    }
    EXPECT_EQ(selectedRows(), (QList<int>{1, 2}));
    EXPECT_FALSE(anyErrorReport());
}

TEST_F(PrintMenu, SpaceOnTheOldestThenEnterPrintsTheNewestAndTheOldest) {
    home.run("startup/ThreePeriods.sql");
    menu.show();
    QTest::keyClick(list(), Qt::Key_End);
    QTest::keyClick(list(), Qt::Key_Space);
    EXPECT_EQ(selectedRows(), (QList<int>{0, 2}));
    QTest::keyClick(list(), Qt::Key_Return);

    EXPECT_FALSE(menu.isVisible());
    EXPECT_FALSE(menu.IsCancel());
    // IndexID 1 is the oldest, 3 the newest.
    EXPECT_EQ(home.column("SELECT PrintFlag FROM tblIndex ORDER BY IndexID"), QStringLiteral("1,0,1"));
}

TEST_F(PrintMenu, TypingAYearNumberMovesTheCursorWithoutSelecting) {
    home.run("startup/ThreePeriods.sql");  // rows: 12期, 11期, 10期
    menu.show();
    QTest::keyClicks(list(), QStringLiteral("10"));
    EXPECT_EQ(list()->currentRow(), 2);
    EXPECT_EQ(selectedRows(), QList<int>{0});
    QTest::keyClick(list(), Qt::Key_Space);
    EXPECT_EQ(selectedRows(), (QList<int>{0, 2}));
}

// Batch mode: the options act on the loaded dialog and its own confirm decides.

}  // namespace
