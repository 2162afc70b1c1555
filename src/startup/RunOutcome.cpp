// The outcome of the run.
#include "startup/RunOutcome.h"

namespace kelvary {
namespace {
struct Outcome {
    long errors = 0;
    bool errorReported = false;
    bool outputProduced = false;
};
Outcome& outcome() {
    static Outcome o;
    return o;
}
}  // namespace

void noteErrorReported() {
    outcome().errorReported = true;
    ++outcome().errors;
}
long errorsReported() { return outcome().errors; }
void noteOutputProduced() { outcome().outputProduced = true; }
void resetRunOutcome() { outcome() = Outcome{}; }

int runExitStatus() {
    if (outcome().errorReported) return ExitError;
    return outcome().outputProduced ? ExitOutput : ExitNoOutput;
}

}  // namespace kelvary
