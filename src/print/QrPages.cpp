// Placing a period's QR symbols on pages of twelve. The numbers run on across
// pages, so the agency can tell a missing page from the numbers alone.
#include "print/QrPages.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/frmPrintManager.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {
namespace {

using qr::QrSymbolList;
using qr::SymbolKind;

// The groups that follow the period header, in page order. The equity header
// leads equity rows only: without them it is left off the page.
QList<QrSymbolList> periodGroups(const QrSymbolList& symbols, long periodIndex) {
    const QrSymbolList equity = qr::symbolsOf(symbols, SymbolKind::CapitalData);
    QrSymbolList equityHeader;
    if (!equity.isEmpty()) equityHeader << qr::symbolOrNamed(symbols, SymbolKind::CapitalHeader, periodIndex);
    return {qr::symbolsOf(symbols, SymbolKind::ZaimuData), qr::symbolsOf(symbols, SymbolKind::KamokuData),
            equityHeader, equity, qr::symbolsOf(symbols, SymbolKind::NListData)};
}

}  // namespace

void mPutQRSymbol(frmPrintManager& manager, long slot, const qr::QrSymbolRecord& symbol, long number) {
    manager.SetImage(QStringLiteral("WrImage"), symbol.imagePath, slot, 1);
    manager.OutPutData(QStringLiteral("Num"), Variant(static_cast<int>(number == 0 ? slot : number)), slot, 1);
    manager.OutPutData(QStringLiteral("WrText"), symbol.name, slot, 1);
}

void mPrintFSHeader(frmPrintManager& manager, std::int32_t indexId, long page, long pageTotal,
                    FormEdition edition) {
    trapped(QStringLiteral("mPrintFSHeader"), 0, [&] {
        const Recordset index =
            gobjMakeRecordset(QStringLiteral("Select * From tblIndex Where IndexID= ") + QString::number(indexId));
        manager.OutPutData(QStringLiteral("PageInfo"), QStringLiteral("Page ") + QString::number(page) +
                                                           QStringLiteral("/") + QString::number(pageTotal));
        const QString eraPattern = QStringLiteral("gggee年mm月dd日");
        manager.OutPutData(QStringLiteral("FiscalTerm"),
                           QStringLiteral(" 事業年度 (第") + index[QStringLiteral("FYearNumber")].text() +
                               QStringLiteral("期)　") + QStringLiteral("自 ") +
                               vbFormat(index[QStringLiteral("FYearFrom")], eraPattern) + QStringLiteral("～") +
                               QStringLiteral("至 ") + vbFormat(index[QStringLiteral("FYearTo")], eraPattern));
        manager.OutPutData(QStringLiteral("ApplierName"),
                           QStringLiteral("(申請者名)　") + index[QStringLiteral("ApplyerName")].text());
        manager.OutPutData(QStringLiteral("VersionNumber"),
                           QStringLiteral("( ") + gstrAppVersion() + QStringLiteral(" )") + QStringLiteral("kv"));
        // Earlier editions' pages carry no form edition label.
        if (edition == FormEdition::Earlier) return;
        const QString where = QStringLiteral("FSDataCode=") + QString::number(indexId);
        const Variant enforceDate =
            gvarGetData(QStringLiteral("EnforceDate"), QStringLiteral("tmpFSInfoData"), where, Variant(QString()));
        const Variant enforceSub =
            gvarGetData(QStringLiteral("EnforceDatesub"), QStringLiteral("tmpFSInfoData"), where, Variant(QString()));
        const Variant label = gvarCalcEnforceDate(enforceDate, enforceSub);
        // A period without its statement row has no edition to name.
        if (!label.isNull() && !label.text().isEmpty())
            manager.OutPutData(QStringLiteral("EnforceDate"), vbFormat(label, QStringLiteral("ggge年m月様式")));
    });
}

void mPrintFSSub(frmPrintManager& manager, const QrSymbolList& group, long pageTotal, std::int32_t indexId,
                 long& slot, long& page, FormEdition edition) {
    trapped(QStringLiteral("mPrintFSSub"), 0, [&] {
        for (const qr::QrSymbolRecord& symbol : group) {
            ++slot;
            mPutQRSymbol(manager, slot, symbol, slot + (page - 1) * kSymbolsPerPage);
            if (slot == kSymbolsPerPage) {
                slot = 0;
                ++page;
                if (page > pageTotal) return;
                manager.EndPage();
                mPrintFSHeader(manager, indexId, page, pageTotal, edition);
            }
        }
    });
}

void mPrintFS(frmPrintManager& manager, long periodIndex, std::int32_t indexId, const QrSymbolList& symbols,
              bool problemMark, FormEdition edition) {
    trapped(QStringLiteral("mPrintFS"), 0, [&] {
        const QList<QrSymbolList> groups = periodGroups(symbols, periodIndex);
        long symbolTotal = 1;
        for (const QrSymbolList& group : groups) symbolTotal += static_cast<long>(group.size());
        const long pageTotal = glngCeilDiv(symbolTotal, kSymbolsPerPage);

        manager.SetPrintFile(QStringLiteral("FSQRCode.w30"));
        long page = 1;
        long slot = 0;
        mPrintFSHeader(manager, indexId, page, pageTotal, edition);
        slot = 1;
        mPutQRSymbol(manager, 1, qr::symbolOrNamed(symbols, SymbolKind::ZaimuHeader, periodIndex));
        for (const QrSymbolList& group : groups)
            mPrintFSSub(manager, group, pageTotal, indexId, slot, page, edition);
        manager.EndPage(problemMark);
    });
}

}  // namespace kelvary
