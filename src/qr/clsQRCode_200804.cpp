// The current edition chooses the full-length payloads of the shared generator.
#include "qr/clsQRCode_200804.h"

namespace kelvary {

clsQRCode_200804::clsQRCode_200804() : QrGenerator(FormEdition::Form200804) {}

}  // namespace kelvary
