// The settings file UserData.ini is read and rewritten line by line through
// the whole run; one that cannot be read as CP932 text would have its
// settings silently taken as absent and the user's details written into it
// in another character code. It is checked once, before the run starts.
#pragma once

#include <QString>

namespace kelvary {

// What is wrong with the settings file, in the user's words; empty when it is
// readable CP932 text, empty, or not there at all (it is then created).
QString settingsFileProblem(const QString& path);

// Raises a VbError with that text when there is a problem.
void requireReadableSettings(const QString& path);

}  // namespace kelvary
