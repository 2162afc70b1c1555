// How the database routines hand over what they must tell the user: a
// failure they trapped, or a notice about data they cannot place. The
// routines sit below the windows and the error display, so they own this
// seam and whoever runs them plugs the display in; db/ needs nothing above
// itself.
#pragma once

#include <QString>

namespace kelvary {

struct DbReporting {
    // Shows the error in flight for the routine named by place. Mode 0: the
    // caller goes on; 1: it gives up; 2: the user is asked whether to go on,
    // and true means Yes.
    bool (*error)(const QString& place, int mode) = nullptr;
    // An information message; the routine goes on after it.
    void (*notice)(const QString& text) = nullptr;
};

void setDbReporting(DbReporting reporting);

// Call from a catch block. With nothing plugged in the error still goes to
// the log, so that no failure passes unseen.
bool reportDbError(const QString& place, int mode);
void reportDbNotice(const QString& text);

}  // namespace kelvary
