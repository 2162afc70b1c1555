// How the database routines hand over what they must tell the user: a
// failure they trapped, or a notice about data they cannot place. The
// routines sit below the windows and the error display, so they own this
// seam and whoever runs them plugs the display in; db/ needs nothing above
// itself.
#pragma once

#include "platform/ErrorTrap.h"

#include <QString>

#include <utility>

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

// A database routine's error trap: as the program's own, reporting through
// this seam (see platform/ErrorTrap.h).
template <class Place, class Body>
TrapResult<Body> dbTrapped(const Place& place, int mode, TrapResult<Body> empty, Body&& body) {
    return trapWith(reportDbError, place, mode, std::move(empty), std::forward<Body>(body));
}
template <class Place, class Body>
TrapEnd dbTrapped(const Place& place, int mode, Body&& body) {
    return trapWith(reportDbError, place, mode, std::forward<Body>(body));
}

}  // namespace kelvary
