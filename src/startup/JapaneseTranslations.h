// Qt's own texts (file dialog, standard buttons, the context menu of text
// boxes) in Japanese, whatever the system's locale: the program's users read
// nothing else.
#pragma once

namespace kelvary {

// Loads Qt's Japanese catalogue into the running application and makes
// Japanese the default locale of Qt's widgets (dates and sizes in the file
// dialog). False when the catalogue is not installed; the texts then stay
// Qt's English ones.
bool installJapaneseTranslations();

}  // namespace kelvary
