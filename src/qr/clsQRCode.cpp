// The earlier editions choose the shortened payloads of the shared generator.
#include "qr/clsQRCode.h"

namespace kelvary {

clsQRCode::clsQRCode() : QrGenerator(qr::kEditionEarlier) {}

}  // namespace kelvary
