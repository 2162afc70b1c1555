// The progress window: a small window with a picture and a line or two of
// text, kept above the main window while long work runs.
#pragma once

#include <QWidget>

class QLabel;

namespace kelvary {

class frmMsg : public QWidget {
    Q_OBJECT
public:
    explicit frmMsg(QWidget* owner = nullptr);
    void setMsgText(const QString& text);
    QString msgText() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLabel* text_;
};

}  // namespace kelvary
