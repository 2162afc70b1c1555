// The QR generator of the 2008-04 form edition: the application's three
// symbols (ApplyHeader, ApplyDoc1, ApplyDoc2) and every symbol of one fiscal
// period, written into Temp for the QR pages. One object per task: the
// driver sets the properties, calls one method and reads the counts.
#pragma once

#include "qr/frmQRCode.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace kelvary {

class clsQRCode_200804 {
public:
    clsQRCode_200804();
    ~clsQRCode_200804();
    clsQRCode_200804(const clsQRCode_200804&) = delete;
    clsQRCode_200804& operator=(const clsQRCode_200804&) = delete;

    // lngFSCount: the number of periods selected for printing minus one.
    void MakeHeader(long lngFSCount);
    void MakeAPData(std::int32_t lngAPDataCode);
    // lngPage: the period's 0-based place in print order, part of every name.
    void MakeFSData(long lngPage, std::int32_t lngFSDataCode);

    long FSQRCodeCount() const { return mlngFSQRCodeCount; }
    long KamokuQRCodeCount() const { return mlngKamokuQRCodeCount; }
    long NListQRCodeCount() const { return mlngNListQRCodeCount; }
    long CapitalQRCodeCount() const { return mlngCapitalQRCodeCount; }

    void setVerifyID(const QString& strVerifyID) { mstrVerifyID = strVerifyID; }
    void setCourseNumber(long lngCourseNumber) { mlngCourseNumber = lngCourseNumber; }
    void setSendResult(bool blnSendResult) { mblnSendResult = blnSendResult; }
    void setProxy(bool blnProxy) { mblnProxy = blnProxy; }

private:
    void mMakeQRCodeApplyHeader(long lngFSCount);
    void mMakeQRCodeAPData(std::int32_t lngAPDataCode);
    void mMakeQRCodeFSHeader();

    // The shared header builder with this generator's document ID; the
    // other line, value and path builders are the shared ones of QrPayload.h.
    void mAddHeaderLine(QString& strData, const QString& strName, long lngCount, long lngColumns,
                        bool blnInFront) const;

    std::unique_ptr<frmQRCode> mfrmQRCode;
    QString mstrVerifyID;
    long mlngCourseNumber = 0;
    bool mblnSendResult = false;
    bool mblnProxy = false;
    long mlngPage = 0;
    std::int32_t mlngFSDataCode = 0;
    long mlngFSQRCodeCount = 0;
    long mlngKamokuQRCodeCount = 0;
    long mlngNListQRCodeCount = 0;
    long mlngCapitalQRCodeCount = 0;
};

}  // namespace kelvary
