// VB's Format for the number and date patterns this program uses. A pattern
// outside that set raises error 5 rather than being guessed at.
#pragma once

#include "platform/Variant.h"

#include <QString>

namespace kelvary {

QString vbFormat(const Variant& value, const QString& pattern);

}  // namespace kelvary
