// The one QR generator behind both form editions. The earlier edition's
// payloads are the current edition's cut short: its application header ends
// before the agent flags, its second application symbol before the last two
// columns, its period header before the two stored edition fields, and its
// period header takes the enforcement date as stored. The edition's header
// records say where each is cut; clsQRCode_200804 and clsQRCode only choose
// the edition.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "qr/QrSymbolRecord.h"
#include "qr/frmQRCode.h"
#include "startup/FormEdition.h"

namespace kelvary::qr {

class QrGenerator {
public:
    explicit QrGenerator(FormEdition edition);
    ~QrGenerator();
    QrGenerator(const QrGenerator&) = delete;
    QrGenerator& operator=(const QrGenerator&) = delete;

    // lngFSCount: the number of periods selected for printing minus one.
    void MakeHeader(long lngFSCount);
    void MakeAPData(std::int32_t lngAPDataCode);
    // lngPage: the period's 0-based place in print order, part of every name.
    void MakeFSData(long lngPage, std::int32_t lngFSDataCode);

    // Every symbol this generator handed to its renderer, in the order made;
    // a later MakeFSData replaces the symbols of an earlier one.
    const QrSymbolList& Symbols() const { return msymbols; }

    // The period's symbols of each split kind, counted in Symbols().
    long FSQRCodeCount() const { return symbolCount(msymbols, SymbolKind::ZaimuData); }
    long KamokuQRCodeCount() const { return symbolCount(msymbols, SymbolKind::KamokuData); }
    long NListQRCodeCount() const { return symbolCount(msymbols, SymbolKind::NListData); }
    long CapitalQRCodeCount() const { return symbolCount(msymbols, SymbolKind::CapitalData); }

    void setVerifyID(const QString& strVerifyID) { mstrVerifyID = strVerifyID; }
    void setCourseNumber(long lngCourseNumber) { mlngCourseNumber = lngCourseNumber; }
    void setSendResult(bool blnSendResult) { mblnSendResult = blnSendResult; }
    void setProxy(bool blnProxy) { mblnProxy = blnProxy; }

private:
    void mMakeQRCodeApplyHeader(long lngFSCount);
    void mMakeQRCodeAPData(std::int32_t lngAPDataCode);
    void mMakeQRCodeFSHeader();

    // The shared header builder with this generator's document ID.
    void mAddHeaderLine(QString& strData, const QString& strName, long lngCount, long lngColumns,
                        bool blnInFront) const;

    HeaderRecords mrecords;
    std::unique_ptr<frmQRCode> mfrmQRCode;
    QString mstrVerifyID;
    long mlngCourseNumber = 0;
    bool mblnSendResult = false;
    bool mblnProxy = false;
    long mlngPage = 0;
    std::int32_t mlngFSDataCode = 0;
    QrSymbolList msymbols;
};

}  // namespace kelvary::qr
