// The fixed file version of a Windows executable or library, read straight
// from the version resource of its PE image, so that file versions can be
// shown on any platform.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <array>
#include <optional>

namespace kelvary {

// Major, minor, build and revision of the file version; nothing for a missing
// or unreadable file, a file that is not a PE image, or an image without a
// version resource. Damaged images are refused, never read past their end.
std::optional<std::array<quint16, 4>> readPeFileVersion(const QString& path);

// The same for an image already in memory.
std::optional<std::array<quint16, 4>> peFileVersionOfImage(QByteArrayView image);

}  // namespace kelvary
