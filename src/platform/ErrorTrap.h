// The error trap a routine runs its body under, as VB's "On Error GoTo" gave
// one: an exception leaving the body is handed, still in flight, to the
// routine's error display with the routine's place name and mode, and the
// routine then gives its empty result. Which display speaks is the caller's
// business (the program's error box, or the database routines' own seam), so
// this file holds only the mechanism.
//
// The place is a text, or something that makes one; the latter is only asked
// once there is an error, for places that name the statement or row at fault.
#pragma once

#include <QString>

#include <type_traits>
#include <utility>

namespace kelvary {

// How a trapped body ended: it ran to its end, or it failed and was
// reported; goOn is the display's answer (mode 2: the user chose Yes).
struct TrapEnd {
    bool ran = true;
    bool goOn = false;
    explicit operator bool() const { return ran; }
};

namespace detail {
template <class Place>
QString placeName(const Place& place) {
    if constexpr (std::is_invocable_v<const Place&>) return place();
    else return QString(place);
}
}  // namespace detail

// report: bool(const QString& place, int mode), called from the catch block.
template <class Report, class Place, class Body>
TrapEnd trapWith(Report&& report, const Place& place, int mode, Body&& body) {
    try {
        std::forward<Body>(body)();
        return {};
    } catch (...) {
        return {false, report(detail::placeName(place), mode)};
    }
}

// The result type is the body's; empty is given in it.
template <class Body>
using TrapResult = std::invoke_result_t<Body>;

template <class Report, class Place, class Body>
TrapResult<Body> trapWith(Report&& report, const Place& place, int mode, TrapResult<Body> empty, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        report(detail::placeName(place), mode);
        return empty;
    }
}

}  // namespace kelvary
