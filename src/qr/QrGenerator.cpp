// The payload builders of both form editions: the application header, the
// two application symbols and the period header, each cut where its edition
// ends; the other statement payloads come from StatementPayloads.
#include "qr/QrGenerator.h"

#include <algorithm>
#include <array>
#include <functional>
#include <span>

#include "db/mdlFunctionDatabase.h"
#include "platform/StrConv.h"
#include "platform/VbFormat.h"
#include "qr/QrPayload.h"
#include "qr/ResumeTrap.h"
#include "qr/StatementPayloads.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary::qr {
namespace {

enum class Conversion { None, Wide, TwoDigits, SixDigits };

struct ApplicationColumn {
    const char* name;
    Conversion conversion;
};

// Records 1 to 7 (ApplyDoc1) and 8 to 51 (ApplyDoc2), in record order.
constexpr std::array<ApplicationColumn, 7> kApplyDoc1Columns = {{
    {"ApplierColumnName", Conversion::Wide},
    {"ApplierColumnAddress", Conversion::Wide},
    {"ApplierColumnPresident", Conversion::None},
    {"ContactPosition", Conversion::None},
    {"ContactName", Conversion::None},
    {"ContactTel", Conversion::None},
    {"ContactFax", Conversion::None},
}};

constexpr std::array<ApplicationColumn, 44> kApplyDoc2Columns = {{
    {"ApplyDate", Conversion::None},      {"PrefCode1", Conversion::None},
    {"ClasCtgr1", Conversion::None},      {"LcnsNum1A", Conversion::TwoDigits},
    {"LcnsNum1B", Conversion::SixDigits}, {"LcnsDate1", Conversion::None},
    {"PrefCode2", Conversion::None},      {"ClasCtgr2", Conversion::None},
    {"LcnsNum2A", Conversion::TwoDigits}, {"LcnsNum2B", Conversion::SixDigits},
    {"LcnsDate2", Conversion::None},      {"BaseDate", Conversion::None},
    {"FYearFrom1", Conversion::None},     {"FYearTo1", Conversion::None},
    {"FYearCtgr1A", Conversion::None},    {"FYearCtgr1B", Conversion::None},
    {"FYearFrom2", Conversion::None},     {"FYearTo2", Conversion::None},
    {"FYearCtgr2A", Conversion::None},    {"FYearCtgr2B", Conversion::None},
    {"FYearFrom3", Conversion::None},     {"FYearTo3", Conversion::None},
    {"FYearCtgr3A", Conversion::None},    {"FYearCtgr3B", Conversion::None},
    {"Distinction", Conversion::None},    {"LastApl", Conversion::None},
    {"FCObgt1", Conversion::None},        {"FCObgt2", Conversion::None},
    {"TRNameKana", Conversion::Wide},     {"TRName", Conversion::Wide},
    {"PSNameKana", Conversion::Wide},     {"PSName", Conversion::Wide},
    {"OfficeCityCode", Conversion::None}, {"OfficeAddr", Conversion::Wide},
    {"OfficeZipCode", Conversion::None},  {"OfficeTel", Conversion::None},
    {"Item01Single", Conversion::None},   {"Item01Plural", Conversion::None},
    {"Item02Single", Conversion::None},   {"Item02Plural", Conversion::None},
    {"Remarks", Conversion::None},        {"EnforceDate", Conversion::None},
    {"FType", Conversion::None},          {"Item03", Conversion::None},
}};

Variant converted(const Variant& value, Conversion conversion) {
    switch (conversion) {
        case Conversion::None:
            return value;
        case Conversion::Wide:
            return value.isNull() ? value : Variant(vbStrConv(value.text(), vbWide));
        case Conversion::TwoDigits:
            return Variant(vbFormat(gvarCheckData(0, value, Variant(QString())), QStringLiteral("00")));
        case Conversion::SixDigits:
            return Variant(vbFormat(gvarCheckData(0, value, Variant(QString())), QStringLiteral("000000")));
    }
    return value;
}

// VB's True is -1: the flags are written as numbers, not as "True"/"False".
Variant flagNumber(bool flag) { return Variant(flag ? -1 : 0); }

}  // namespace

QrGenerator::QrGenerator(FormEdition edition)
    : mrecords(headerRecords(edition)), mfrmQRCode(std::make_unique<frmQRCode>()) {}
QrGenerator::~QrGenerator() = default;

void QrGenerator::MakeHeader(long lngFSCount) { mMakeQRCodeApplyHeader(lngFSCount); }

void QrGenerator::MakeAPData(std::int32_t lngAPDataCode) { mMakeQRCodeAPData(lngAPDataCode); }

void QrGenerator::MakeFSData(long lngPage, std::int32_t lngFSDataCode) {
    mlngPage = lngPage;
    mlngFSDataCode = lngFSDataCode;
    msymbols.removeIf([](const QrSymbolRecord& symbol) { return isPeriodKind(symbol.kind); });
    StatementPayloads statements(*mfrmQRCode, msymbols, mstrVerifyID, lngPage, lngFSDataCode);
    statements.mMakeQRCodeFSData();
    statements.mMakeQRCodeChangedKamoku();
    statements.mMakeQRCodeFSCapital();
    statements.mMakeQRCodeFSNList();
    mMakeQRCodeFSHeader();
}

void QrGenerator::mAddHeaderLine(QString& strData, const QString& strName, long lngCount, long lngColumns,
                                 bool blnInFront) const {
    qr::mAddHeaderLine(strData, strName, mstrVerifyID, lngCount, lngColumns, blnInFront);
}

void QrGenerator::mMakeQRCodeApplyHeader(long lngFSCount) {
    trapped(QStringLiteral("mMakeQRCodeApplyHeader"), 1, [&] {
        const QString name = mstrSymbolName(SymbolKind::ApplyHeader);
        const auto longValue = [](long value) { return Variant::fromLong(static_cast<std::int32_t>(value)); };
        // The agent flags come last, so an edition without them stops at 5.
        const std::array<Variant, 7> records = {
            Variant(mstrVerifyID),        // 1 the document ID
            Variant(gstrAppVersion()),    // 2
            longValue(lngFSCount),        // 3 periods chosen, minus one
            Variant(1),                   // 4
            longValue(mlngCourseNumber),  // 5
            flagNumber(mblnProxy),        // 6
            flagNumber(mblnSendResult),   // 7
        };
        QString payload;
        mAddHeaderLine(payload, name, mrecords.applyHeader, 2, false);
        for (long i = 0; i < mrecords.applyHeader; ++i)
            mAddDataLine(payload, i + 1, {records.at(static_cast<size_t>(i))});
        renderSymbol(*mfrmQRCode, msymbols, SymbolKind::ApplyHeader, name, payload);
    });
}

void QrGenerator::mMakeQRCodeAPData(std::int32_t lngAPDataCode) {
    ResumeTrap trap(QStringLiteral("mMakeQRCodeAPData"));
    Recordset rs;
    trap.run([&] {
        rs = gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where APDataCode=") +
                               QString::number(lngAPDataCode));
    });
    if (trap.ended() || rs.isNothing() || rs.eof()) return;

    long number = 0;
    const auto build = [&](SymbolKind kind, const auto& columns) {
        const QString name = mstrSymbolName(kind);
        QString payload;
        mAddHeaderLine(payload, name, static_cast<long>(columns.size()), 2, false);
        for (const ApplicationColumn& column : columns) {
            ++number;
            trap.run([&] {
                const Variant value = converted(rs[QString::fromLatin1(column.name)], column.conversion);
                mAddDataLine(payload, number, {value});
            });
            if (trap.ended()) return;
        }
        trap.run([&] { renderSymbol(*mfrmQRCode, msymbols, kind, name, payload); });
    };
    build(SymbolKind::ApplyDoc1, kApplyDoc1Columns);
    if (!trap.ended())
        build(SymbolKind::ApplyDoc2,
              std::span(kApplyDoc2Columns).first(static_cast<size_t>(mrecords.applyDoc2)));
}

void QrGenerator::mMakeQRCodeFSHeader() {
    ResumeTrap trap(QStringLiteral("mMakeQRCodeFSHeader"));
    Recordset rs;
    trap.run([&] {
        rs = gobjMakeRecordset(QStringLiteral("Select * From tmpFSInfoData Where FSDataCode=") +
                               QString::number(mlngFSDataCode));
    });
    if (trap.ended()) return;
    const QString name = mstrSymbolName(SymbolKind::ZaimuHeader, mlngPage);
    QString payload;
    mAddHeaderLine(payload, name, mrecords.periodHeader, 2, false);
    const auto field = [&](const char* column) { return rs[QString::fromLatin1(column)]; };
    const auto longValue = [](long value) { return Variant::fromLong(static_cast<std::int32_t>(value)); };
    const QString dateForm = QStringLiteral("yyyy/mm/dd");
    // Each record is its own step: a failed one is missing, the rest still come.
    const std::array<std::function<Variant()>, 26> records = {
        [&] { return Variant(vbFormat(field("FYearFrom"), dateForm)); },
        [&] { return Variant(vbFormat(field("FYearTo"), dateForm)); },
        [&] { return field("TaxType"); },
        [&] { return Variant(1); },
        [&] { return field("Distinction"); },
        [&] { return longValue(FSQRCodeCount()); },
        [&] { return longValue(KamokuQRCodeCount()); },
        [&] { return field("SideBusinessFlag"); },
        [&] { return field("ApplyerName"); },
        [&] { return Variant(gstrAppVersion()); },
        [&] { return Variant(3); },
        [&] { return field("VersionNumber"); },
        [&] { return Variant(0); },
        [&] { return Variant(QString()); },
        [&] { return Variant(0); },
        [&] { return field("FYearNumber"); },
        [&] { return Variant(0); },
        [&] { return Variant(0); },
        [&] { return field("TaxFreeFlag"); },
        [&] {
            const Variant date = mrecords.enforceDateFromEditionCode
                                     ? gvarCalcEnforceDate(field("EnforceDate"), field("EnforceDatesub"))
                                     : field("EnforceDate");
            return Variant(vbFormat(date, dateForm));
        },
        [&] { return Variant(1); },
        [&] { return longValue(NListQRCodeCount()); },
        [&] { return longValue(CapitalQRCodeCount()); },
        [&] {
            Variant amount = field("NoteTrustDebt");
            return gvarConvUnitType(amount);
        },
        [&] { return field("EnforceDate"); },
        [&] { return field("EnforceDatesub"); },
    };
    const auto recordCount = std::min(records.size(), static_cast<size_t>(mrecords.periodHeader));
    for (size_t i = 0; i < recordCount && !trap.ended(); ++i)
        trap.run([&] { mAddDataLine(payload, static_cast<long long>(i + 1), {records[i]()}); });
    if (trap.ended()) return;
    trap.run([&] { renderSymbol(*mfrmQRCode, msymbols, SymbolKind::ZaimuHeader, name, payload); });
}

}  // namespace kelvary::qr
