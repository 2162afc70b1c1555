// Font substitutions of the program.
#include "platform/Fonts.h"

#include <QFont>

namespace kelvary {

QString formFontFamily() { return QStringLiteral("ＭＳ ゴシック"); }

void installFontSubstitutions() {
    QFont::insertSubstitution(formFontFamily(), QStringLiteral("IPAGothic"));
}

}  // namespace kelvary
