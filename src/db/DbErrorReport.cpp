// The database routines' reporting seam: one display for the whole run.
#include "db/DbErrorReport.h"

#include "platform/VbError.h"

#include <QDebug>

namespace kelvary {
namespace {

DbReporting gReporting;

}  // namespace

void setDbReporting(DbReporting reporting) { gReporting = reporting; }

bool reportDbError(const QString& place, int mode) {
    if (gReporting.error) return gReporting.error(place, mode);
    const ErrInfo err = currentError();
    qWarning().noquote() << place << err.number << err.description;
    return false;
}

void reportDbNotice(const QString& text) {
    if (gReporting.notice) gReporting.notice(text);
    else qWarning().noquote() << text;
}

}  // namespace kelvary
