// Which folder a run works in. A copy built or unpacked by the user works in
// its own folder, as the program always has. An installed copy (shared by
// every user, owned by the package manager, often not writable) is never
// written to: each user works in a folder of their own under the XDG data
// folder, filled from the installed one at first start and refreshed when a
// different version is installed. The user's settings file is kept across
// versions; everything else there belongs to the program.
#pragma once

#include <QString>

namespace kelvary {

// The file that marks an installed program folder; it holds the version
// that was installed.
inline constexpr char kInstalledMark[] = ".kelvary-installed";
// The file in a per-user folder that names the installed version it holds.
inline constexpr char kCopiedMark[] = ".kelvary-copied-from";

struct ProgramFolderChoice {
    QString folder;  // set when the run can go on
    QString error;   // a Japanese sentence for the user otherwise
};

bool isInstalledCopy(const QString& programFolder);

// The folder to work in: programFolder itself, or userDataHome/kelvary made
// ready from it.
ProgramFolderChoice chooseProgramFolder(const QString& programFolder, const QString& userDataHome);

}  // namespace kelvary
