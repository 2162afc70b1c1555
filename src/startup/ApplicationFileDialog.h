// The file dialog offered when the program is started without an application
// data file (from the desktop menu): Qt's own dialog, in Japanese on any
// system, opening in the folder the user took the last file from.
#pragma once

#include <QString>
#include <QStringList>

class QSettings;

namespace kelvary {

// The settings key of the folder of the last chosen file.
inline constexpr const char* kLastApplicationFolderKey = "ApplicationFile/LastFolder";

// Asks for an application data file. Empty when the user cancelled; else the
// file's path, and its folder is kept in the settings for the next start.
QString askForApplicationFile(QSettings& settings);

// The texts Qt words itself in that dialog (labels, buttons, column
// headings) and in the context menu of its file name box, one per line as
// "name: text", to check an installation's translations.
QStringList applicationFileDialogTexts();

}  // namespace kelvary
