// The user-interface port: everything the program shows or asks goes through
// one of these, so the same forms and logic serve a desktop session (Qt
// windows) and batch mode (a transcript on standard error, answered from the
// command line).
#pragma once

#include "startup/PrintTarget.h"

#include <QString>

#include <memory>

namespace kelvary {

enum class MsgIcon { Information, Question, Warning, Critical };
enum class MsgButtons { Ok, YesNo };
enum class MsgAnswer { Ok, Yes, No, Closed };

struct MessageRequest {
    QString kindLabel;  // the gMsgbox kind digit, for the batch transcript
    MsgIcon icon = MsgIcon::Information;
    MsgButtons buttons = MsgButtons::Ok;
    bool defaultIsNo = false;
    QString text;
    QString title;
};

class UserInterface {
public:
    virtual ~UserInterface() = default;
    virtual MsgAnswer showMessage(const MessageRequest& request) = 0;
    // A block of findings (the problem list) shown to the user.
    virtual void showReport(const QString& title, const QString& text) = 0;
    virtual bool isBatch() const = 0;
    // Where the print manager and the problem list send what is printed; a
    // port told of no other target prints on paper.
    virtual PrintTarget printTarget() const { return PrintTarget::defaultPrinter(); }
};

// The port in use for this run. Installed once by start-up; the Qt one is the
// default so that routines called from tests still have somewhere to speak.
UserInterface& userInterface();
void setUserInterface(std::unique_ptr<UserInterface> ui);

}  // namespace kelvary
