// The print selection menu driven as a user drives it: real controls on the
// offscreen platform, periods written into tblIndex by the test, messages
// caught by the recording port, stored marks read back with SQLite itself.
#include "startup/frmPrintMenu.h"

#include "startup/MenuTestHome.h"
#include "startup/mdlFunctionStandard.h"
#include "support/RecordingUi.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace kelvary;
using kelvary::test::MenuTestHome;
using kelvary::test::RecordingUiGuard;

namespace {

// Three periods, inserted oldest first so that the list order is the query's.
const char* const kThreePeriods = R"sql(
    INSERT INTO tblIndex (IndexID, DataType, LinkCode, FYearNumber, FYearFrom, FYearTo, PrintFlag)
        VALUES (1, 0, 101, 10, '2006-04-01', '2007-03-31', 1);
    INSERT INTO tblIndex (IndexID, DataType, LinkCode, FYearNumber, FYearFrom, FYearTo, PrintFlag)
        VALUES (2, 0, 102, 11, '2007-04-01', '2008-03-31', 1);
    INSERT INTO tblIndex (IndexID, DataType, LinkCode, FYearNumber, FYearFrom, FYearTo, PrintFlag)
        VALUES (3, 0, 103, 12, '2008-04-01', '2009-03-31', 1);
)sql";

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
    void clickEntry(int row) {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list()->visualItemRect(list()->item(row)).center());
    }
    // A check box or option button reacts only to clicks on its indicator
    // and caption, not on the rest of its row.
    void click(const char* name) {
        QAbstractButton* button = control<QAbstractButton>(name);
        const QPoint at = qobject_cast<QPushButton*>(button) ? button->rect().center()
                                                             : QPoint(6, button->height() / 2);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, at);
    }
    long course() { return gvarGetComboBoxValue(menu.fldCourseNumber()).toLong(); }

    bool anyErrorReport() {
        for (const auto& m : ui->messages)
            if (m.request.title == QStringLiteral("エラーが発生しました")) return true;
        return false;
    }

    RecordingUiGuard ui;
    MenuTestHome home;
    frmPrintMenu menu;
};

TEST_F(PrintMenu, PrintModeStartsWithRegularCourseAndNewestPeriod) {
    home.run(kThreePeriods);
    menu.show();

    EXPECT_EQ(menu.windowTitle(), QStringLiteral("オプション：印刷"));
    EXPECT_EQ(control<QGroupBox>("fraCourse")->title(), QStringLiteral("コースを選択してください"));
    EXPECT_EQ(control<QLabel>("Label1")->text(), QStringLiteral("<印刷する財務諸表を選択してください>"));
    EXPECT_EQ(control<QPushButton>("cmdPrint")->text(), QStringLiteral("印刷(&P)"));
    EXPECT_EQ(control<QPushButton>("cmdCancel")->text(), QStringLiteral("ｷｬﾝｾﾙ"));
    EXPECT_EQ(menu.fldPrintAPData()->text(),
              QStringLiteral("「経営状況分析申請書」＋「申請に関する補足書類」を印刷する"));
    EXPECT_EQ(menu.fldPrintZaimuQR()->text(), QStringLiteral("財務諸表のQRコードを印刷する"));

    EXPECT_TRUE(control<QRadioButton>("fldCourseNumber1")->isChecked());
    EXPECT_TRUE(control<QRadioButton>("fldCourseNumber1")->isEnabled());
    EXPECT_EQ(course(), 1);
    EXPECT_TRUE(menu.fldPrintAPData()->isChecked());
    EXPECT_TRUE(menu.fldPrintZaimuQR()->isChecked());
    EXPECT_TRUE(menu.fldPreview()->isChecked());
    EXPECT_TRUE(menu.fldPreview()->isEnabled());

    // Newest first: the fiscal year starting 2008-04-01 is IndexID 3.
    EXPECT_EQ(itemData(), (QList<qlonglong>{3, 2, 1}));
    EXPECT_EQ(selectedRows(), QList<int>{0});
    EXPECT_EQ(list()->font().family(), QStringLiteral("ＭＳ ゴシック"));

    click("fldCourseNumber3");
    EXPECT_EQ(course(), 3);
    click("fldCourseNumber1");
    EXPECT_EQ(course(), 1);
    EXPECT_FALSE(anyErrorReport());
}

TEST_F(PrintMenu, AgentFilingPresetsBothAgentOptions) {
    gblnRepresentation = true;
    glngSinseiType = 1;
    menu.show();

    EXPECT_EQ(menu.fldProxy()->text(), QStringLiteral("代理申請（申請者欄に代理人の情報が記載されます。）"));
    EXPECT_EQ(menu.fldSendResult()->text(), QStringLiteral("結果通知書は申請代理人に送付する"));
    EXPECT_TRUE(menu.fldProxy()->isEnabled());
    EXPECT_TRUE(menu.fldProxy()->isChecked());
    EXPECT_TRUE(menu.fldSendResult()->isEnabled());
    EXPECT_TRUE(menu.fldSendResult()->isChecked());

    // Dropping agent filing takes the result notice with it, and back.
    click("fldProxy");
    EXPECT_FALSE(menu.fldSendResult()->isChecked());
    EXPECT_FALSE(menu.fldSendResult()->isEnabled());
    click("fldProxy");
    EXPECT_TRUE(menu.fldSendResult()->isEnabled());
    EXPECT_FALSE(menu.fldSendResult()->isChecked());
}

TEST_F(PrintMenu, OutputModeFourIsSendFileCreationWithExpressCourse) {
    home.run(kThreePeriods);
    app::setCommandLine(QStringLiteral("/C:\\Data\\Apply.txt/C:\\Out\\Apply.pdf/n/4"));
    menu.show();

    EXPECT_EQ(menu.windowTitle(), QStringLiteral("オプション：送信ファイル作成"));
    EXPECT_EQ(menu.fldPrintAPData()->text(),
              QStringLiteral("「経営状況分析申請書」＋「申請に関する補足書類」を出力する"));
    EXPECT_EQ(menu.fldPrintZaimuQR()->text(), QStringLiteral("財務諸表のQRコードを出力する"));
    EXPECT_EQ(control<QLabel>("Label1")->text(), QStringLiteral("<出力する財務諸表を選択してください>"));
    EXPECT_EQ(control<QPushButton>("cmdPrint")->text(), QStringLiteral("申請(&P)"));

    // Both document groups go out and cannot be deselected; no preview.
    EXPECT_TRUE(menu.fldPrintAPData()->isChecked());
    EXPECT_FALSE(menu.fldPrintAPData()->isEnabled());
    EXPECT_TRUE(menu.fldPrintZaimuQR()->isChecked());
    EXPECT_FALSE(menu.fldPrintZaimuQR()->isEnabled());
    EXPECT_FALSE(menu.fldPreview()->isChecked());
    EXPECT_FALSE(menu.fldPreview()->isEnabled());
    EXPECT_TRUE(list()->isEnabled());

    EXPECT_TRUE(control<QRadioButton>("fldCourseNumber3")->isChecked());
    EXPECT_FALSE(control<QRadioButton>("fldCourseNumber1")->isEnabled());
    EXPECT_FALSE(control<QRadioButton>("fldCourseNumber3")->isEnabled());
    EXPECT_EQ(course(), 3);
    click("fldCourseNumber1");  // unavailable: the course stays express
    EXPECT_EQ(course(), 3);
    click("fldPreview");
    EXPECT_FALSE(menu.fldPreview()->isChecked());
    EXPECT_FALSE(anyErrorReport());
}

TEST_F(PrintMenu, PeriodEntriesAreFixedColumnsOfEraDates) {
    home.run(R"sql(
        INSERT INTO tblIndex (IndexID, DataType, FYearNumber, FYearFrom, FYearTo)
            VALUES (7, 0, 12, '2008-04-01', '2009-03-31');
        INSERT INTO tblIndex (IndexID, DataType, FYearNumber, FYearFrom, FYearTo)
            VALUES (8, 0, 23, '2019-04-01', '2020-03-31');
        INSERT INTO tblIndex (IndexID, DataType, FYearNumber, FYearFrom, FYearTo)
            VALUES (9, 1, 12345, NULL, NULL);
        INSERT INTO tblIndex (IndexID, DataType, FYearNumber, FYearFrom, FYearTo)
            VALUES (4, 0, 11, '2008-04-01', '2009-03-31');
        INSERT INTO tblIndex (IndexID, DataType, FYearNumber, FYearFrom, FYearTo)
            VALUES (2, 0, 12, '2008-04-01', '2009-03-31');
    )sql");
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

TEST_F(PrintMenu, EmptyIndexRefusesStatementsButAcceptsTheApplicationAlone) {
    menu.show();
    EXPECT_EQ(list()->count(), 0);

    click("cmdPrint");
    ASSERT_EQ(ui->messages.size(), 1);
    EXPECT_EQ(ui->messages[0].request.text, QStringLiteral("印刷する書類をチェックしてください"));
    EXPECT_EQ(ui->messages[0].request.title, QStringLiteral("情報"));
    EXPECT_EQ(ui->messages[0].request.kindLabel, QStringLiteral("0"));
    EXPECT_TRUE(menu.isVisible());

    click("fldPrintZaimuQR");
    EXPECT_FALSE(list()->isEnabled());
    click("cmdPrint");
    EXPECT_EQ(ui->messages.size(), 1);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(menu.result(), QDialog::Accepted);
    EXPECT_FALSE(menu.IsCancel());
}

TEST_F(PrintMenu, ACourseMissingFromTheServiceListIsRefused) {
    // The shipped list must hold the codes 1 and 3; here it holds neither,
    // so no entry is selected and the course reads as 0.
    home.run("DELETE FROM tblService; INSERT INTO tblService VALUES (2, 'その他', 1);");
    home.run(kThreePeriods);
    menu.show();
    click("cmdPrint");
    ASSERT_FALSE(ui->messages.isEmpty());
    EXPECT_EQ(ui->messages.last().request.text, QStringLiteral("コースを設定してください"));
    EXPECT_EQ(ui->messages.last().request.title, QStringLiteral("情報"));
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(home.column("SELECT PrintFlag FROM tblIndex ORDER BY IndexID"), QStringLiteral("1,1,1"));
}

TEST_F(PrintMenu, ConfirmWritesTheMarkOfEveryPeriod) {
    home.run(kThreePeriods);  // every period marked by an earlier run
    menu.show();
    clickEntry(0);  // deselect the newest
    clickEntry(2);  // select the oldest
    EXPECT_EQ(selectedRows(), QList<int>{2});
    click("cmdPrint");

    EXPECT_TRUE(ui->messages.isEmpty());
    EXPECT_FALSE(menu.IsCancel());
    EXPECT_EQ(home.column("SELECT PrintFlag FROM tblIndex ORDER BY IndexID"), QStringLiteral("1,0,0"));
}

// Keys on the period list: each changes only the entry under the cursor.
// The entries begin with blanks, so a Space that also searched would jump to
// the next entry and change it too.
TEST_F(PrintMenu, SpaceOnEveryRowTogglesThatPeriodAlone) {
    home.run(kThreePeriods);
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
    home.run(kThreePeriods);
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
    home.run(kThreePeriods);  // rows: 12期, 11期, 10期
    menu.show();
    QTest::keyClicks(list(), QStringLiteral("10"));
    EXPECT_EQ(list()->currentRow(), 2);
    EXPECT_EQ(selectedRows(), QList<int>{0});
    QTest::keyClick(list(), Qt::Key_Space);
    EXPECT_EQ(selectedRows(), (QList<int>{0, 2}));
}

TEST_F(PrintMenu, CancelAndTitleBarCloseBothCancel) {
    menu.show();
    click("cmdCancel");
    EXPECT_TRUE(menu.IsCancel());
    EXPECT_FALSE(menu.isVisible());

    frmPrintMenu second;
    second.show();
    EXPECT_FALSE(second.IsCancel());
    EXPECT_TRUE(second.close());
    EXPECT_TRUE(second.IsCancel());
    EXPECT_FALSE(second.isVisible());

    frmPrintMenu third;
    third.show();
    QTest::keyClick(&third, Qt::Key_Escape);
    EXPECT_TRUE(third.IsCancel());
}

// Batch mode: the options act on the loaded dialog and its own confirm decides.

TEST_F(PrintMenu, BatchAppliesPeriodsAndCourse) {
    home.run(kThreePeriods);
    BatchOptions options;
    options.enabled = true;
    options.periods = QStringLiteral("2,3,7");  // 7 is past the end of the list
    options.course = QStringLiteral("3");
    options.noApplication = true;

    EXPECT_TRUE(menu.runBatch(options));
    EXPECT_FALSE(menu.IsCancel());
    EXPECT_TRUE(ui->messages.isEmpty());
    EXPECT_EQ(course(), 3);
    EXPECT_FALSE(menu.fldPrintAPData()->isChecked());
    EXPECT_TRUE(menu.fldPrintZaimuQR()->isChecked());
    EXPECT_EQ(home.column("SELECT PrintFlag FROM tblIndex ORDER BY IndexID"), QStringLiteral("1,1,0"));
}

}  // namespace
