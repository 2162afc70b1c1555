// The earlier editions choose the shortened payloads of the shared generator.
#include "qr/clsQRCode.h"

namespace kelvary {

clsQRCode::clsQRCode() : QrGenerator(FormEdition::Earlier) {}

}  // namespace kelvary
