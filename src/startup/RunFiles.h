// The files a run is handed on its command line, checked before the run
// starts: the application data file must be one (not a folder, a FIFO, a
// device, nor something far larger than any application), and a PDF target
// must be a place where a PDF may be written without destroying anything the
// run reads or the program folder holds. Each check answers with the Japanese
// sentence that says why the run does not start, or an empty text.
#pragma once

#include <QString>

namespace kelvary {

QString applicationFileRefusal(const QString& applicationFile);

struct RunFiles {
    QString programFolder;
    QString applicationFile;
    QString siblingDatabase;  // empty when the application names none
};

QString outputTargetRefusal(const QString& target, const RunFiles& own);

}  // namespace kelvary
