// What one run came to, for the exit status: 0 it produced its output, 1 it
// ended without output, 3 an error was reported along the way.
#pragma once

namespace kelvary {

enum ExitStatus { ExitOutput = 0, ExitNoOutput = 1, ExitUsage = 2, ExitError = 3 };

void noteErrorReported();
// How many errors have been reported so far in this process.
long errorsReported();
void noteOutputProduced();
int runExitStatus();
void resetRunOutcome();

}  // namespace kelvary
