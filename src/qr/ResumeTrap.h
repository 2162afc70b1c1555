// The error trap of the payload builders that ask whether to go on: a failing
// step is reported under the builder's place name with mode 2; Yes resumes
// with the next step (the line or symbol of the failed one is then missing),
// No ends the builder. Steps are as small as the lines and symbols they make.
#pragma once

#include "startup/mdlFunctionStandard.h"

#include <QString>

#include <utility>

namespace kelvary::qr {

class ResumeTrap {
public:
    explicit ResumeTrap(QString place) : place_(std::move(place)) {}

    // Runs one step unless the builder has ended; true when it succeeded.
    template <class Step>
    bool run(Step&& step) {
        if (ended_) return false;
        const TrapEnd end = trapped(place_, 2, std::forward<Step>(step));
        if (!end && !end.goOn) ended_ = true;
        return end.ran;
    }

    bool ended() const { return ended_; }

private:
    QString place_;
    bool ended_ = false;
};

}  // namespace kelvary::qr
