// What one run came to, for the exit status: 0 it produced its output, 1 it
// ended without output, 3 an error was reported along the way.
#pragma once

#include <optional>

namespace kelvary {

enum ExitStatus { ExitOutput = 0, ExitNoOutput = 1, ExitUsage = 2, ExitError = 3 };

void noteErrorReported();
// How many errors have been reported so far in this process.
long errorsReported();
void noteOutputProduced();
int runExitStatus();
void resetRunOutcome();

// Marks the start of the program's one run. A PDF of a run is written only
// when no error at all was reported since, the ones before printing began
// (a sibling database that could not be read, say) included.
void noteRunStarted();
// The errors reported before the run started; none when no run was started.
std::optional<long> errorsBeforeRun();

}  // namespace kelvary
