// The desktop port: real Qt message boxes and report windows.
#pragma once

#include "startup/UserInterface.h"

namespace kelvary {

class QtUserInterface : public UserInterface {
public:
    MsgAnswer showMessage(const MessageRequest& request) override;
    void showReport(const QString& title, const QString& text) override;
    bool isBatch() const override { return false; }
};

}  // namespace kelvary
