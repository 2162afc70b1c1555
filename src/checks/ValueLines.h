// The fixed-width lines of the statement problem texts: a label padded to a
// byte width of code page 932 (so full-width characters count two) followed
// by an amount right-aligned in sixteen characters, shown in a fixed-pitch
// font so that the amounts of a block stand in one column.
#pragma once

#include "platform/Variant.h"

#include <QString>

namespace kelvary {

// The text padded on the right with the pad character (blank: spaces) to
// exactly width bytes. A double-byte character that would straddle the
// width is left out and its first byte's place filled with a space.
QString mstrFixedString(const QString& text, int width, const QString& pad);

// The amount formatted with the number format, right-aligned in a field as
// wide as the format, filled on the left with the pad character.
QString mstrSpcFormat(const Variant& amount, const QString& format, const QString& pad);

// The text broken once after width characters when it has that many or more.
QString mstrLoopBack(const QString& text, int width);

// "label____…____  1,234" and a line break.
QString valueLine(const QString& label, const Variant& amount);
// A title broken at 58 characters, and a line break.
QString titleLine(const QString& title);

}  // namespace kelvary
