// Whether a rule file of the statement sums (DbtData0607H.txt,
// DbtData0607K.txt) reaches its end whole. A file that was cut short on its
// way to the user (copied off a full disk, say) would otherwise fail each of
// its missing checks separately, a hundred reports for one cause, and its cut
// record would be summed from the terms that happen to be left.
#pragma once

#include <QString>

#include <optional>

namespace kelvary {

// The number of the first check, from first to last, whose record the file
// no longer holds because it ends early: the one after the last record it
// still holds. A record that the file ends inside is still the checks' to
// read: they meet the end of the file there and say so; a last record whose
// final line break is missing is whole. Nothing when every record up to `last` is there. Raises
// VbError when the file cannot be read as text at all (missing, no right to
// read it, not CP932).
std::optional<int> firstRuleCutOff(const QString& path, int first, int last);

}  // namespace kelvary
