// frmPrintMenu: the one dialog in which the user decides what a run prints:
// the review course, the fiscal periods whose statements go with the
// application, the two document groups, the agent options and the preview.
// The send-file output modes turn it into the send-file dialog, which writes
// files instead of paper. The print driver shows it modally, reads its
// controls after it closes, asks IsCancel and disposes of it; the chosen
// periods are not read from it but stored in tblIndex.PrintFlag on confirm.
#pragma once

#include "startup/CommandLine.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kelvary {

class frmPrintMenu : public QDialog {
    Q_OBJECT

public:
    explicit frmPrintMenu(QWidget* parent = nullptr);

    // Runs the loading steps (course list, output mode, agent presets, period
    // list) the first time only; showing the dialog loads it as well.
    void Load();

    // What the driver calls: a modal dialog in a desktop session; in batch
    // mode the same dialog, loaded, set from the batch options and confirmed
    // through its own button, without being shown.
    void ShowModal();

    // Batch run of the dialog with the given options. True when the
    // confirmation went through; a refused confirmation (its message is in
    // the transcript) leaves the dialog cancelled.
    bool runBatch(const BatchOptions& options);

    // True after cmdCancel (or the title bar's close), false after a
    // confirmed cmdPrint.
    bool IsCancel() const { return mblnCancel; }

    // Puts the dialog away for good; its owner then destroys it.
    void Dispose();

    // The controls the driver reads after the dialog closed.
    QCheckBox* fldPreview() const { return fldPreview_; }
    QCheckBox* fldPrintAPData() const { return fldPrintAPData_; }
    QCheckBox* fldPrintZaimuQR() const { return fldPrintZaimuQR_; }
    QCheckBox* fldProxy() const { return fldProxy_; }
    QCheckBox* fldSendResult() const { return fldSendResult_; }
    // The course code is the item data of its selected entry (gvarGetComboBoxValue).
    QComboBox* fldCourseNumber() const { return fldCourseNumber_; }

    // Gives the dialog what only a shown dialog needs (the course frame's
    // caption, the period list's width) before it first appears.
    void setVisible(bool visible) override;

public slots:
    // Escape and the title bar's close end the dialog as cmdCancel does.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildControls();
    void prepareForDisplay();
    void connectHandlers();
    void enterSendFileMode();

    void Form_Load();
    void mSetList();
    void mSetCourseNumber();
    long mlngCountSelected();
    void mSaveData();
    void cmdPrint_Click();
    void cmdCancel_Click();
    void fldProxy_Click();
    void fldPrintZaimuQR_Click();

    void applyBatchPeriods(const QString& periods);

    QGroupBox* fraCourse_ = nullptr;
    QRadioButton* fldCourseNumber1_ = nullptr;
    QRadioButton* fldCourseNumber3_ = nullptr;
    QListWidget* dbgList_ = nullptr;
    QCheckBox* fldSendResult_ = nullptr;
    QComboBox* fldCourseNumber_ = nullptr;
    QCheckBox* fldProxy_ = nullptr;
    QCheckBox* fldPrintZaimuQR_ = nullptr;
    QPushButton* cmdPrint_ = nullptr;
    QCheckBox* fldPreview_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QCheckBox* fldPrintAPData_ = nullptr;
    QLabel* Label1_ = nullptr;

    bool mblnCancel = false;
    bool loaded_ = false;
    // The command-line fields as gCommandGet gives them; the output mode
    // (field 4) decides between the print and the send-file dialog.
    QString mstrCommand[3];
    std::optional<OutputMode> mOutputMode;
};

}  // namespace kelvary
