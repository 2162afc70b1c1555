// The QR generator of the 2008-04 form edition: the application's three
// symbols (ApplyHeader, ApplyDoc1, ApplyDoc2) and every symbol of one fiscal
// period, written into Temp for the QR pages. One object per task: the
// driver sets the properties, calls one method and reads the symbols made. The
// builders are those of QrGenerator, at this edition's full length.
#pragma once

#include "qr/QrGenerator.h"

namespace kelvary {

class clsQRCode_200804 : private qr::QrGenerator {
public:
    clsQRCode_200804();

    using QrGenerator::CapitalQRCodeCount;
    using QrGenerator::FSQRCodeCount;
    using QrGenerator::KamokuQRCodeCount;
    using QrGenerator::MakeAPData;
    using QrGenerator::MakeFSData;
    using QrGenerator::MakeHeader;
    using QrGenerator::NListQRCodeCount;
    using QrGenerator::setCourseNumber;
    using QrGenerator::setProxy;
    using QrGenerator::setSendResult;
    using QrGenerator::setVerifyID;
    using QrGenerator::Symbols;
};

}  // namespace kelvary
