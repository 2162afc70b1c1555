// File versions from the Windows version resource.
#include "startup/mdlVersion.h"

#include "platform/PeVersion.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {

QString gstrGetFileVersion(const QString& path) {
    if (!gblnCheckExistFile(path)) return QString();
    const auto version = readPeFileVersion(path);
    if (!version) return QString();
    return QStringLiteral("%1.%2.%3.%4")
        .arg((*version)[0])
        .arg((*version)[1])
        .arg((*version)[2])
        .arg((*version)[3]);
}

}  // namespace kelvary
