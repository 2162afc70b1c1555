// The files a run is handed on its command line, checked before the run
// starts: the application data file must be one (not a folder, a FIFO, a
// device, nor something far larger than any application), and a PDF target
// must be a place where a PDF may be written without destroying anything the
// run reads or the program folder holds. Each check answers with the Japanese
// sentence that says why the run does not start, or an empty text.
#pragma once

#include "startup/CommandLine.h"

#include <QString>

namespace kelvary {

QString applicationFileRefusal(const QString& applicationFile);

struct RunFiles {
    QString programFolder;
    QString applicationFile;
    QString siblingDatabase;  // empty when the application names none
};

QString outputTargetRefusal(const QString& target, const RunFiles& own);

// The application file and every PDF target of the run, checked in turn;
// the first refusal, or an empty text.
QString runFilesRefusal(const CommandFields& fields, const QString& printTo, const QString& programFolder);

// What is wrong with the folder --home or KELVARY_HOME names; empty when
// the run may work there. Only an installed copy may be read-only.
QString namedFolderRefusal(const QString& folder);

// Fields 1 and 2 as gCommandGet will split the parent's one text; its
// mistakes are left for gCommandGet itself to report, once.
CommandFields parentTextFields(const QString& parentText);

}  // namespace kelvary
