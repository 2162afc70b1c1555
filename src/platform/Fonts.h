// The fonts the forms were drawn for and their stand-ins on this system:
// "ＭＳ ゴシック" is not shipped outside Windows, IPA Gothic has the same
// fixed-pitch metrics family.
#pragma once

#include <QString>

namespace kelvary {

// The face every printed and listed text names.
QString formFontFamily();

// Registers the substitutions with Qt; call once after the application object exists.
void installFontSubstitutions();

}  // namespace kelvary
