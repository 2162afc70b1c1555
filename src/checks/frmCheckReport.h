// frmCheckReport: the problem list. The report composers put the findings of
// a check into it and show it modally; the user reads them and may print the
// list on A4 before closing it. In batch mode the list goes to the transcript
// as a "report" block instead of a window.
#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QPlainTextEdit;
class QPrinter;
class QPushButton;

namespace kelvary {

class frmCheckReport : public QDialog {
    Q_OBJECT

public:
    explicit frmCheckReport(QWidget* parent = nullptr);

    // Puts the text into the list, centres the window and shows it modally;
    // returns when the user has closed it.
    void SetText(const QString& text);
    // Puts the window away for good; its owner then destroys it.
    void Dispose();

    // The text as the list holds it, without showing the window.
    void loadText(const QString& text);

    QPlainTextEdit* txtMessage() const { return txtMessage_; }
    QLabel* Label1() const { return Label1_; }
    QPushButton* cmdPrint() const { return cmdPrint_; }
    QPushButton* cmdClose() const { return cmdClose_; }

public slots:
    void cmdPrint_Click();
    void cmdClose_Click();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void mInitVariable();
    void mSetVariable();
    void mSetDefaultSize();
    void mSetWindowPosition();
    void mPrintOutError();

    QPlainTextEdit* txtMessage_;
    QLabel* Label1_;
    QPushButton* cmdPrint_;
    QPushButton* cmdClose_;

    // Distances kept while the window is resized.
    int mlngButtonBottom = 0;
    int mlngCloseRight = 0;
    int mlngLabelBottom = 0;
    int mlngTextBottom = 0;
    int mlngTextRight = 0;
};

}  // namespace kelvary
