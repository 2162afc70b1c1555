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

// Put beside the application object, after it: when it goes, just before the
// application object does, fontconfig's current configuration is swapped for
// an empty one. Qt's font database releases the current configuration on its
// way out, and asking fontconfig for it loads the whole system configuration
// first when no text was ever measured (a batch run that ends at the print
// menu spends a third of its time there); the empty one is released instead.
class FontConfigurationRelease {
public:
    FontConfigurationRelease() = default;
    ~FontConfigurationRelease();
    FontConfigurationRelease(const FontConfigurationRelease&) = delete;
    FontConfigurationRelease& operator=(const FontConfigurationRelease&) = delete;
};

}  // namespace kelvary
