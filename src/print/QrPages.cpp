// Placing a period's QR symbols on pages of twelve. The numbers run on across
// pages, so the agency can tell a missing page from the numbers alone.
#include "print/QrPages.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/frmPrintManager.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {

QString mstrSymbolImageFile(const QString& fileBase) {
    return gstrProgramInfo(0) + QStringLiteral("Temp/") + fileBase + QStringLiteral(".bmp");
}

void mPutQRSymbol(frmPrintManager& manager, long slot, const QString& fileBase, long number) {
    manager.SetImage(QStringLiteral("WrImage"), mstrSymbolImageFile(fileBase), slot, 1);
    manager.OutPutData(QStringLiteral("Num"), Variant(static_cast<int>(number == 0 ? slot : number)), slot, 1);
    manager.OutPutData(QStringLiteral("WrText"), fileBase, slot, 1);
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

void mPrintFSSub(frmPrintManager& manager, const QString& fileBase, long count, long periodIndex, long pageTotal,
                 std::int32_t indexId, long& slot, long& page, bool single, FormEdition edition) {
    trapped(QStringLiteral("mPrintFSSub"), 0, [&] {
        for (long k = 1; k <= count; ++k) {
            ++slot;
            const QString file =
                single ? fileBase + QString::number(periodIndex)
                       : fileBase + QString::number(periodIndex) + QStringLiteral("_") + QString::number(k);
            mPutQRSymbol(manager, slot, file, slot + (page - 1) * kSymbolsPerPage);
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

void mPrintFS(frmPrintManager& manager, long periodIndex, std::int32_t indexId, const PeriodSymbolCounts& counts,
              bool problemMark, FormEdition edition) {
    trapped(QStringLiteral("mPrintFS"), 0, [&] {
        long symbols = 1 + counts.statements + counts.renamedItems + counts.equity + counts.noteList;
        if (counts.equity > 0) ++symbols;
        const long pageTotal = glngCeilDiv(symbols, kSymbolsPerPage);

        manager.SetPrintFile(QStringLiteral("FSQRCode.w30"));
        long page = 1;
        long slot = 0;
        mPrintFSHeader(manager, indexId, page, pageTotal, edition);
        slot = 1;
        mPutQRSymbol(manager, 1, QStringLiteral("ZaimuHeader") + QString::number(periodIndex));

        mPrintFSSub(manager, QStringLiteral("ZaimuData"), counts.statements, periodIndex, pageTotal, indexId, slot,
                    page, false, edition);
        mPrintFSSub(manager, QStringLiteral("KamokuData"), counts.renamedItems, periodIndex, pageTotal, indexId, slot,
                    page, false, edition);
        if (counts.equity > 0)
            mPrintFSSub(manager, QStringLiteral("CapitalHeader"), 1, periodIndex, pageTotal, indexId, slot, page, true,
                        edition);
        mPrintFSSub(manager, QStringLiteral("CapitalData"), counts.equity, periodIndex, pageTotal, indexId, slot, page,
                    false, edition);
        mPrintFSSub(manager, QStringLiteral("NListData"), counts.noteList, periodIndex, pageTotal, indexId, slot, page,
                    false, edition);
        manager.EndPage(problemMark);
    });
}

}  // namespace kelvary
