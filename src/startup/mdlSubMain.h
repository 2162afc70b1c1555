// The run from start to end.
#pragma once

#include <QString>

namespace kelvary {

// The four command-line fields as start-up received them (see CommandLine.h);
// when the parent program handed one text, gCommandGet fills them instead.
struct CommandFields {
    QString applicationFile;
    QString pdfFile;
    QString agent;
    QString mode;
};

// The command-line fields of this run, read by the print drivers.
const CommandFields& commandFields();

// The entry point of one run. The caller has set the program folder, the
// user-interface port and, for a parent's one text, app::setCommandLine.
void Main(const CommandFields& fromOptions);

}  // namespace kelvary
