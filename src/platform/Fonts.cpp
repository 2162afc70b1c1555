// Font substitutions of the program.
#include "platform/Fonts.h"

#include <QFont>

#include <fontconfig/fontconfig.h>

namespace kelvary {

QString formFontFamily() { return QStringLiteral("ＭＳ ゴシック"); }

void installFontSubstitutions() {
    QFont::insertSubstitution(formFontFamily(), QStringLiteral("IPAGothic"));
}

FontConfigurationRelease::~FontConfigurationRelease() {
    FcConfig* empty = FcConfigCreate();
    if (!empty) return;
    FcConfigSetCurrent(empty);
    // Made current, it is held there; a refused one is freed here.
    FcConfigDestroy(empty);
}

}  // namespace kelvary
