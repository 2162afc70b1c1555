// The main window: its caption names the program and its version; closing it
// ends the program without a question.
#pragma once

#include <QMainWindow>

namespace kelvary {

class frmMDIForm : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMDIForm(QWidget* parent = nullptr);
    ~frmMDIForm() override;

    // The loaded main window, or null before start-up shows it.
    static frmMDIForm* loadedInstance();

protected:
    void closeEvent(QCloseEvent* event) override;
};

}  // namespace kelvary
