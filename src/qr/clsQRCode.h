// The QR generator of the form editions before 2008-04, used by the earlier
// print driver. It writes the same symbols as clsQRCode_200804 with a shorter
// application header (no agent flags), ApplyDoc2 ending at the enforcement
// date, and a 24-record period header that carries EnforceDate as stored.
// Filing by an agent is not part of these editions, so the agent properties
// are not offered.
#pragma once

#include "qr/QrGenerator.h"

namespace kelvary {

class clsQRCode : private qr::QrGenerator {
public:
    clsQRCode();

    using QrGenerator::CapitalQRCodeCount;
    using QrGenerator::FSQRCodeCount;
    using QrGenerator::KamokuQRCodeCount;
    using QrGenerator::MakeAPData;
    using QrGenerator::MakeFSData;
    using QrGenerator::MakeHeader;
    using QrGenerator::NListQRCodeCount;
    using QrGenerator::setCourseNumber;
    using QrGenerator::setVerifyID;
    using QrGenerator::Symbols;
};

}  // namespace kelvary
