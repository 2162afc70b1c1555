// The file version of another program (the sibling program may be a Windows
// executable on a shared drive).
#pragma once

#include <QString>

namespace kelvary {

// "major.minor.build.revision", or "" for a missing file or one without a version resource.
QString gstrGetFileVersion(const QString& path);

}  // namespace kelvary
