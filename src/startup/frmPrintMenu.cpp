// The print selection menu: its controls, its loading steps and its handlers.
// The batch driving of the same dialog lives in frmPrintMenuBatch.cpp.
#include "startup/frmPrintMenu.h"

#include "db/clsSqlText.h"
#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFlags.h"
#include "platform/AppObject.h"
#include "startup/ComboBoxData.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "startup/mdlSubMain.h"

#include <QCheckBox>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kelvary {
namespace {

constexpr long kCourseRegular = 1;
constexpr long kCourseExpress = 3;
// tblIndex.DataType of a period in the sibling financial-statements database.
constexpr long kDataTypeLedra = 0;

const QString kNothingChosen = QStringLiteral("印刷する書類をチェックしてください");

// Half-width columns of the widest period entry (a four-digit number, two
// era dates of width 2 and the source mark), with room for the scroll bar.
constexpr int kListColumns = 54 + 4;

// VB's "value = 0" as an If reads it: Empty is 0, Null is never equal.
bool equalsZero(const Variant& value) {
    if (value.isNull()) return false;
    return value.toDouble() == 0.0;
}

// The fiscal-year number right-aligned in four characters; a longer number
// keeps its last four, as Right(Space(4) & n, 4) does.
QString yearNumberColumn(const Variant& yearNumber) {
    return (QStringLiteral("    ") + yearNumber.text()).right(4);
}

QString periodText(const Recordset& row) {
    QString text = yearNumberColumn(row[QStringLiteral("FYearNumber")]) + QStringLiteral("期　") +
                   gvarEraDateText(row[QStringLiteral("FYearFrom")], 2).text() + QStringLiteral(" ～ ") +
                   gvarEraDateText(row[QStringLiteral("FYearTo")], 2).text();
    const Variant& dataType = row[QStringLiteral("DataType")];
    if (!dataType.isNull() && dataType.toDouble() == kDataTypeLedra) text += QStringLiteral(" (財務:新)");
    return text;
}


// The period list. Every entry begins with the blanks of its right-aligned
// year number, so the view's own type-ahead, which Space feeds as well,
// would jump to the next entry and select or deselect it on the way: one
// press would change two periods. Here Space toggles only the entry under
// the cursor, and typing moves the cursor to the entry whose year number
// begins with the typed digits, without touching any selection.
class PeriodList : public QListWidget {
public:
    using QListWidget::QListWidget;

    void keyboardSearch(const QString& search) override {
        if (typedSince_.isValid() && typedSince_.elapsed() > QApplication::keyboardInputInterval())
            typed_.clear();
        typedSince_.start();
        const QString added = search.trimmed();
        if (added.isEmpty()) return;
        const bool continuing = !typed_.isEmpty();
        typed_ += added;
        const int rows = count();
        if (rows == 0) return;
        // A continued word may still fit the current entry; a new one starts
        // after it, so the same digit pressed again walks through the entries.
        const int start = currentRow() < 0 ? 0 : currentRow() + (continuing ? 0 : 1);
        for (int i = 0; i < rows; ++i) {
            const int row = (start + i) % rows;
            if (item(row)->text().trimmed().startsWith(typed_, Qt::CaseInsensitive)) {
                selectionModel()->setCurrentIndex(model()->index(row, 0), QItemSelectionModel::NoUpdate);
                scrollToItem(item(row));
                return;
            }
        }
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Select) {
            if (currentIndex().isValid())
                selectionModel()->select(currentIndex(), QItemSelectionModel::Toggle);
            event->accept();
            return;
        }
        QListWidget::keyPressEvent(event);
    }

private:
    QString typed_;
    QElapsedTimer typedSince_;
};

QFont periodListFont() {
    QFont font(QStringLiteral("ＭＳ ゴシック"), 10);
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    return font;
}

template <typename Widget>
Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

}  // namespace

frmPrintMenu::frmPrintMenu(QWidget* parent) : QDialog(parent) {
    buildControls();
    connectHandlers();
}

void frmPrintMenu::buildControls() {
    setObjectName(QStringLiteral("frmPrintMenu"));
    setWindowTitle(QStringLiteral("オプション：印刷"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    // Its caption is given in prepareForDisplay: a captioned group box
    // measures its text at once, which loads the system's whole font
    // database, and a batch run never shows the dialog.
    fraCourse_ = named(new QGroupBox(this), "fraCourse");
    fldCourseNumber1_ = named(new QRadioButton(QStringLiteral("レギュラー（10営業日以内）"), fraCourse_),
                              "fldCourseNumber1");
    fldCourseNumber3_ = named(new QRadioButton(QStringLiteral("エクスプレス（3営業日以内）"), fraCourse_),
                              "fldCourseNumber3");
    fldCourseNumber1_->setChecked(true);
    auto* courseLayout = new QVBoxLayout(fraCourse_);
    courseLayout->addWidget(fldCourseNumber1_);
    courseLayout->addWidget(fldCourseNumber3_);

    fldPrintAPData_ = named(
        new QCheckBox(QStringLiteral("「経営状況分析申請書」＋「申請に関する補足書類」を印刷する"), this),
        "fldPrintAPData");
    fldPrintZaimuQR_ = named(new QCheckBox(QStringLiteral("財務諸表のQRコードを印刷する"), this),
                             "fldPrintZaimuQR");
    Label1_ = named(new QLabel(QStringLiteral("<印刷する財務諸表を選択してください>"), this), "Label1");
    Label1_->setTextFormat(Qt::PlainText);

    dbgList_ = named(new PeriodList(this), "dbgList");
    dbgList_->setSelectionMode(QAbstractItemView::MultiSelection);
    dbgList_->setFont(periodListFont());

    fldProxy_ = named(new QCheckBox(QStringLiteral("代理申請（申請者欄に代理人の情報が記載されます。）"), this),
                      "fldProxy");
    fldSendResult_ = named(new QCheckBox(QStringLiteral("結果通知書は申請代理人に送付する"), this),
                           "fldSendResult");
    fldPreview_ = named(new QCheckBox(QStringLiteral("プレビューを表示する"), this), "fldPreview");

    // The course buttons are the only editor of the course list, so the list
    // itself stays out of sight.
    fldCourseNumber_ = named(new QComboBox(this), "fldCourseNumber");
    fldCourseNumber_->setVisible(false);

    cmdPrint_ = named(new QPushButton(QStringLiteral("印刷(&P)"), this), "cmdPrint");
    cmdCancel_ = named(new QPushButton(QStringLiteral("ｷｬﾝｾﾙ"), this), "cmdCancel");

    fldPrintAPData_->setChecked(true);
    fldPrintZaimuQR_->setChecked(true);
    fldPreview_->setChecked(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdPrint_);
    buttons->addWidget(cmdCancel_);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraCourse_);
    layout->addWidget(fldPrintAPData_);
    layout->addWidget(fldPrintZaimuQR_);
    layout->addWidget(Label1_);
    layout->addWidget(dbgList_);
    layout->addWidget(fldProxy_);
    layout->addWidget(fldSendResult_);
    layout->addWidget(fldPreview_);
    layout->addWidget(fldCourseNumber_);
    layout->addLayout(buttons);
}

// Setting a control from code runs its handler as a click would, so the
// loading steps and the batch options go through the same dependencies as
// the user's clicks.
void frmPrintMenu::connectHandlers() {
    connect(fldCourseNumber1_, &QRadioButton::toggled, this, [this](bool on) {
        if (on) mSetCourseNumber();
    });
    connect(fldCourseNumber3_, &QRadioButton::toggled, this, [this](bool on) {
        if (on) mSetCourseNumber();
    });
    connect(fldProxy_, &QCheckBox::toggled, this, [this] { fldProxy_Click(); });
    connect(fldPrintZaimuQR_, &QCheckBox::toggled, this, [this] { fldPrintZaimuQR_Click(); });
    connect(cmdPrint_, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

void frmPrintMenu::Load() {
    if (loaded_) return;
    loaded_ = true;
    Form_Load();
}

void frmPrintMenu::ShowModal() {
    if (batchOptions().enabled) runBatch(batchOptions());
    else exec();
}

void frmPrintMenu::Dispose() {
    setVisible(false);
}

void frmPrintMenu::setVisible(bool visible) {
    if (visible) prepareForDisplay();
    QDialog::setVisible(visible);
}

// What only a shown dialog needs, given before its first layout so that it
// opens at the size these make.
void frmPrintMenu::prepareForDisplay() {
    if (fraCourse_->title().isEmpty()) fraCourse_->setTitle(QStringLiteral("コースを選択してください"));
    if (dbgList_->minimumWidth() == 0)
        dbgList_->setMinimumWidth(QFontMetrics(periodListFont()).horizontalAdvance(QLatin1Char('0')) * kListColumns);
}

void frmPrintMenu::showEvent(QShowEvent* event) {
    Load();
    QDialog::showEvent(event);
}

void frmPrintMenu::reject() {
    cmdCancel_Click();
}

void frmPrintMenu::Form_Load() {
    trapped(QStringLiteral("Form_Load"), 0, [&] {
        gSetComboBoxData(fldCourseNumber_, listkind::Service);
        gLetDataToControl(fldCourseNumber_, Variant(static_cast<int>(kCourseRegular)), 1);

        gCommandGet(mstrCommand[0], mstrCommand[1], mstrCommand[2], mOutputMode);
        if (mOutputMode && isSendFile(*mOutputMode)) {
            (sendFileCourse(*mOutputMode) == 1 ? fldCourseNumber1_ : fldCourseNumber3_)->setChecked(true);
            enterSendFileMode();
        }

        if (gblnRepresentation && glngSinseiType == 1) {
            fldProxy_->setChecked(true);
            fldSendResult_->setChecked(true);
        } else {
            fldProxy_->setEnabled(false);
        }

        mSetList();
        mSetCourseNumber();

        fldProxy_Click();
        fldPrintZaimuQR_Click();
    });
}

// Send-file creation writes every document of the run, so the document
// groups and the preview are fixed and the course comes from the mode.
void frmPrintMenu::enterSendFileMode() {
    setWindowTitle(QStringLiteral("オプション：送信ファイル作成"));
    fldPrintAPData_->setText(QStringLiteral("「経営状況分析申請書」＋「申請に関する補足書類」を出力する"));
    fldPrintAPData_->setEnabled(false);
    fldPrintZaimuQR_->setText(QStringLiteral("財務諸表のQRコードを出力する"));
    fldPrintZaimuQR_->setEnabled(false);
    Label1_->setText(QStringLiteral("<出力する財務諸表を選択してください>"));
    fldPreview_->setChecked(false);
    fldPreview_->setEnabled(false);
    fldCourseNumber1_->setEnabled(false);
    fldCourseNumber3_->setEnabled(false);
    cmdPrint_->setText(QStringLiteral("申請(&P)"));
}

void frmPrintMenu::mSetList() {
    trapped(QStringLiteral("mSetList"), 0, [&] {
        Recordset rows = gobjMakeRecordset(
            QStringLiteral(" Select * From tblIndex Order by FYearFrom Desc, FYearNumber Desc,IndexID Desc"));
        dbgList_->clear();
        for (; !rows.eof(); rows.moveNext()) {
            auto* entry = new QListWidgetItem(periodText(rows), dbgList_);
            entry->setData(Qt::UserRole, QVariant::fromValue<qlonglong>(rows[QStringLiteral("IndexID")].toLong()));
            if (dbgList_->count() == 1) {
                entry->setSelected(true);
                // The keys start from the entry the user sees marked.
                dbgList_->setCurrentItem(entry, QItemSelectionModel::NoUpdate);
            }
        }
    });
}

void frmPrintMenu::mSetCourseNumber() {
    const long course = fldCourseNumber1_->isChecked() ? kCourseRegular : kCourseExpress;
    gLetDataToControl(fldCourseNumber_, Variant(static_cast<int>(course)), 1);
}

long frmPrintMenu::mlngCountSelected() {
    long count = 0;
    for (int i = 0; i < dbgList_->count(); ++i)
        if (dbgList_->item(i)->isSelected()) ++count;
    return count;
}

// Every entry is written, selected or not, so a period deselected since an
// earlier confirmation loses its mark.
void frmPrintMenu::mSaveData() {
    for (int i = 0; i < dbgList_->count(); ++i) {
        const QListWidgetItem* entry = dbgList_->item(i);
        clsSqlText sql;
        sql.SetTable(QStringLiteral("tblIndex"));
        sql.SetData(QStringLiteral("PrintFlag"), Variant(entry->isSelected()), 0);
        sql.SetWhere(QStringLiteral("IndexID=") + entry->data(Qt::UserRole).toString());
        gblnExecuteSql(sql.GetUpdateSql());
    }
}

void frmPrintMenu::cmdPrint_Click() {
    trapped(QStringLiteral("cmdPrint_Click"), 0, [&] {
        if (equalsZero(gvarGetComboBoxValue(fldCourseNumber_))) {
            gMsgbox(0, QStringLiteral("コースを設定してください"), QStringLiteral("情報"));
            return;
        }
        if (!fldPrintAPData_->isChecked() && !fldPrintZaimuQR_->isChecked()) {
            gMsgbox(0, kNothingChosen, QStringLiteral("情報"));
            return;
        }
        if (fldPrintZaimuQR_->isChecked() && mlngCountSelected() == 0) {
            // In send-file mode the box cannot be unticked: with no period
            // at all, asking to tick something would be a dead end.
            if (!fldPrintZaimuQR_->isEnabled() && dbgList_->count() == 0)
                gMsgbox(0,
                        QStringLiteral("送信ファイルを作成できる決算期のデータがありません。"
                                       "財務諸表のプログラムでこの申請者の決算期のデータを作成してから、もう一度実行してください。"),
                        QStringLiteral("情報"));
            else
                gMsgbox(0, kNothingChosen, QStringLiteral("情報"));
            return;
        }
        mSaveData();
        mblnCancel = false;
        QDialog::done(QDialog::Accepted);
    });
}

void frmPrintMenu::cmdCancel_Click() {
    mblnCancel = true;
    QDialog::done(QDialog::Rejected);
}

void frmPrintMenu::fldProxy_Click() {
    if (fldProxy_->isChecked()) {
        fldSendResult_->setEnabled(true);
    } else {
        fldSendResult_->setEnabled(false);
        fldSendResult_->setChecked(false);
    }
}

// Without the statements the period list is out of play; its selection is
// kept and still stored, but nothing of it is printed.
void frmPrintMenu::fldPrintZaimuQR_Click() {
    dbgList_->setEnabled(fldPrintZaimuQR_->isChecked());
}

}  // namespace kelvary
