// A user-interface port for tests: records every message and report and
// answers questions with a scripted answer.
#pragma once

#include "startup/UserInterface.h"

#include <QList>

#include <memory>

namespace kelvary::test {

struct RecordedMessage {
    MessageRequest request;
    MsgAnswer answer;
};

class RecordingUi : public UserInterface {
public:
    MsgAnswer showMessage(const MessageRequest& request) override {
        const MsgAnswer a = request.buttons == MsgButtons::YesNo ? yesNoAnswer : MsgAnswer::Ok;
        messages.append({request, a});
        return a;
    }
    void showReport(const QString& title, const QString& text) override {
        reports.append(title + QLatin1Char('\n') + text);
    }
    bool isBatch() const override { return batch; }
    PrintTarget printTarget() const override { return target; }

    // False lets modal windows run their own loop, as on the desktop.
    bool batch = true;
    MsgAnswer yesNoAnswer = MsgAnswer::No;
    PrintTarget target = PrintTarget::defaultPrinter();
    QList<RecordedMessage> messages;
    QList<QString> reports;
};

// Installs a RecordingUi for the lifetime of the guard and returns it.
class RecordingUiGuard {
public:
    RecordingUiGuard() {
        auto ui = std::make_unique<RecordingUi>();
        recorder_ = ui.get();
        setUserInterface(std::move(ui));
    }
    ~RecordingUiGuard() { setUserInterface(nullptr); }
    RecordingUi& operator*() { return *recorder_; }
    RecordingUi* operator->() { return recorder_; }

private:
    RecordingUi* recorder_;
};

}  // namespace kelvary::test
