// The run from start to end.
#pragma once

#include <QString>

namespace kelvary {

// The entry point of one run. The caller has set the program folder, the
// user-interface port, the option fields and, for a parent's one text,
// app::setCommandLine.
void Main();

}  // namespace kelvary
