// VB's StrConv conversions through ICU: full-width (wide), half-width
// (narrow), lower case, and lower case with half-width in one step.
#pragma once

#include <QString>

namespace kelvary {

enum StrConvFlags { vbLowerCase = 2, vbWide = 4, vbNarrow = 8 };

// Applies the conversions named by flags (a sum of StrConvFlags), as StrConv does.
QString vbStrConv(const QString& text, int flags);

}  // namespace kelvary
