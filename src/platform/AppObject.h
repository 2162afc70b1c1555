// The application object of the VB runtime: the program folder, the file name
// of the program and its title. The folder is the executable's own unless
// start-up names another (--home, KELVARY_HOME), which is how tests and
// installations keep their data apart.
#pragma once

#include <QString>

namespace kelvary::app {

// Program folder without a trailing separator.
QString path();
void setPath(const QString& folder);

// The program's file name without extension ("kelvary").
QString exeName();

// The one command-line text handed over by a parent program (VB's Command).
QString commandLine();
void setCommandLine(const QString& text);

// The title shown in the main window and in the second-instance message.
QString title();

}  // namespace kelvary::app
