// Files that must be whole or absent. The bytes go into a file beside the
// target, which is then renamed over it in one step: whoever opens the target
// finds the earlier file or the new one, never part of the new one, and a run
// cut short leaves at most that file beside it.
#pragma once

#include <QByteArray>
#include <QString>

namespace kelvary {

// Writes bytes to path, replacing any earlier file. Returns an empty text
// when done; otherwise the system's reason, with path left as it was and
// nothing left beside it. Scratch files need to be whole, not to outlive a
// power cut: nothing is synced to the disk, which would cost each file a wait.
QString writeWholeFile(const QString& path, const QByteArray& bytes);

}  // namespace kelvary
