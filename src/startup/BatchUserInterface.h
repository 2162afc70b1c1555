// The batch port: every box and report becomes a block of the transcript on
// standard error, answered from the command line (--yes) or else No/OK.
#pragma once

#include "startup/UserInterface.h"

#include <QTextStream>

namespace kelvary {

class BatchUserInterface : public UserInterface {
public:
    explicit BatchUserInterface(bool answerYes, PrintTarget target = PrintTarget::defaultPrinter());
    MsgAnswer showMessage(const MessageRequest& request) override;
    void showReport(const QString& title, const QString& text) override;
    bool isBatch() const override { return true; }
    PrintTarget printTarget() const override { return target_; }

    // One transcript block: "=== label title", the text's lines, "--- answer".
    static QString transcriptBlock(const QString& label, const QString& title, const QString& text,
                                   const QString& answer);

private:
    bool answerYes_;
    PrintTarget target_;
};

QString answerText(MsgAnswer answer);

}  // namespace kelvary
