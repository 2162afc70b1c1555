// The desktop port: real Qt message boxes and report windows.
#pragma once

#include "startup/UserInterface.h"

#include <utility>

namespace kelvary {

class QtUserInterface : public UserInterface {
public:
    explicit QtUserInterface(PrintTarget target = PrintTarget::defaultPrinter()) : target_(std::move(target)) {}
    MsgAnswer showMessage(const MessageRequest& request) override;
    void showReport(const QString& title, const QString& text) override;
    bool isBatch() const override { return false; }
    PrintTarget printTarget() const override { return target_; }

private:
    PrintTarget target_;
};

}  // namespace kelvary
