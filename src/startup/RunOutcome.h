// What one run came to, for the exit status: 0 it produced its output, 1 it
// ended without output, 3 an error was reported along the way.
#pragma once

namespace kelvary {

enum ExitStatus { ExitOutput = 0, ExitNoOutput = 1, ExitUsage = 2, ExitError = 3 };

void noteErrorReported();
void noteOutputProduced();
int runExitStatus();
void resetRunOutcome();

}  // namespace kelvary
