// Filling the equity side sheet from the sibling database's tables of the
// period (never from the working copies).
#include "print/EquitySideSheet.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/frmPrintManager.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <array>
#include <cmath>

namespace kelvary {
namespace {

// The ten amount columns of a row, in the order of the fields A1 to A10.
constexpr std::array<const char*, 10> kAmountColumns{
    "BenefitReady",  "OtherReady1",   "OtherReady2",       "OtherReady3",           "OtherFundSum1",
    "OtherFundSum2", "OtherFundSum3", "SeparatelyFundSum", "BenefitOtherCarryOver", "BenefitTotal"};

// Column headings Col01 to Col10 (index 0 to 9); empty ones keep the layout's.
using Headings = std::array<QString, 10>;

const QString kChangesHeading = QStringLiteral("当期変動額");
const QString kChangesTotal = QStringLiteral("当期変動額合計");

QString groupName(int row) { return QStringLiteral("Row%1").arg(row, 2, 10, QLatin1Char('0')); }

QString columnName(int column) { return QStringLiteral("Col%1").arg(column, 2, 10, QLatin1Char('0')); }

// The heading a detail item of the reserves (FSItemID 89, 90) stands over,
// by its detail ID; 0 for an ID the sheet has no column for.
int headingOfDetail(long detailId) {
    switch (detailId) {
        case 234: return 2;
        case 763: return 3;
        case 764: return 4;
        case 235: return 5;
        case 765: return 6;
        case 766: return 7;
        default: return 0;
    }
}

QString eraDateOrBlank(const Variant& date) {
    const QString text = gvarEraDateText(date, 3).text();
    return text.isEmpty() ? QStringLiteral("       年   月   日") : text;
}

void mPrintZaimuHeader(frmPrintManager& manager, std::int32_t code) {
    trapped(QStringLiteral("mPrintZaimuHeader"), 0, [&] {
        const Recordset fs =
            gobjMakeRecordset(QStringLiteral("Select * From T_FS Where FSDataCode=") + QString::number(code));
        QString label;
        QString name;
        QString from;
        QString to;
        if (!fs.isNothing() && !fs.eof()) {
            label = mstrMakeDistinctionLabel(fs[QStringLiteral("Distinction")]);
            name = fs[QStringLiteral("ApplyerName")].text();
            from = eraDateOrBlank(fs[QStringLiteral("FYearFrom")]);
            to = eraDateOrBlank(fs[QStringLiteral("FYearTo")]);
        }
        manager.OutPutData(QStringLiteral("NameText"), label + name);
        manager.OutPutData(QStringLiteral("TitleText"), QStringLiteral("株主資本等変動計算書"));
        manager.OutPutData(QStringLiteral("InfoTextA"), QStringLiteral("自　") + from);
        manager.OutPutData(QStringLiteral("InfoTextB"), QStringLiteral("至　") + to);
        manager.OutPutData(QStringLiteral("UnitText"), QStringLiteral("千円"));
    });
}

Headings mReadHeadings(std::int32_t code) {
    Headings headings;
    const QString where = QString::number(code);
    Recordset cols =
        gobjMakeRecordset(QStringLiteral("Select * From T_FSCapitalCol Where FSDataCode=") + where +
                          QStringLiteral(" AND ItemCode IN(650,690,700)") + QStringLiteral(" Order By ColNo"));
    // The first three give the first, ninth and tenth headings; the layout has
    // no place for a fourth.
    constexpr std::array<int, 3> targets{1, 9, 10};
    for (std::size_t n = 0; n < targets.size() && !cols.isNothing() && !cols.eof(); ++n, cols.moveNext())
        headings[static_cast<std::size_t>(targets[n] - 1)] = cols[QStringLiteral("ColName")].text();

    Recordset master = gobjMakeRecordset(QStringLiteral("SELECT * FROM M_FSItemDetail") +
                                         QStringLiteral(" WHERE FSItemID IN(89,90)") + QStringLiteral(" ORDER BY ID "));
    for (; !master.isNothing() && !master.eof(); master.moveNext())
        if (const int h = headingOfDetail(master[QStringLiteral("ID")].toLong()))
            headings[static_cast<std::size_t>(h - 1)] = master[QStringLiteral("ItemDetailName")].text();

    // The period's own name of a reserve wins over the master's; a period
    // that names none keeps the master's, since an empty text would leave
    // the heading blank rather than write it.
    Recordset own = gobjMakeRecordset(
        QStringLiteral("Select * From T_FSItemDetail") + QStringLiteral(" WHERE FSDataCode = ") + where +
        QStringLiteral(" AND FSItemID IN(89 ,90)") + QStringLiteral(" ORDER BY FSItemDetailID"));
    for (; !own.isNothing() && !own.eof(); own.moveNext()) {
        const QString text = own[QStringLiteral("DataText")].text();
        if (text.isEmpty()) continue;
        if (const int h = headingOfDetail(own[QStringLiteral("FSItemDetailID")].toLong()))
            headings[static_cast<std::size_t>(h - 1)] = text;
    }

    headings[0] = QStringLiteral("利益準備金");
    headings[7] = QStringLiteral("別途積立金");
    return headings;
}

// Everything of a sheet that is not a row: the header, the headings and the
// subject line. Written again on every continuation sheet.
void writeSheetFrame(frmPrintManager& manager, std::int32_t code, const Headings& headings) {
    mPrintZaimuHeader(manager, code);
    for (int n = 1; n <= 10; ++n) manager.OutPutData(columnName(n), headings[static_cast<std::size_t>(n - 1)]);
    manager.OutPutData(QStringLiteral("SubjectText"),
                       QStringLiteral("様式第十七号（第四条、第十条、第十九条の四関係）付表"));
}

void mPrintVariableTempFile(frmPrintManager& manager, std::int32_t code) {
    trapped(QStringLiteral("mPrintVariableTempFile"), 0, [&] {
        const Headings headings = mReadHeadings(code);
        writeSheetFrame(manager, code, headings);

        Recordset rows = gobjMakeRecordset(QStringLiteral("Select * From T_FSCapitalRow Where FSDataCode=") +
                                           QString::number(code) + QStringLiteral(" Order By RowNo"));
        int r = 0;
        bool indent = false;
        for (; !rows.isNothing() && !rows.eof(); rows.moveNext()) {
            if (r == kEquityRowsPerSheet) {
                // A full sheet was ended: the statement goes on over a new one.
                r = 0;
                writeSheetFrame(manager, code, headings);
            }
            ++r;
            const QString group = groupName(r);
            const QString rowName = rows[QStringLiteral("RowName")].text();
            if (rowName == kChangesTotal) indent = false;
            if (indent) manager.GetObject(QStringLiteral("ItemName"), 0, 1, group)->indent = 1;
            manager.OutPutData(QStringLiteral("ItemName"), rows[QStringLiteral("RowName")], 0, 1, QString(), QString(),
                               group);
            for (std::size_t a = 0; a < kAmountColumns.size(); ++a)
                mPrintVariableSub(manager, QStringLiteral("A%1").arg(a + 1),
                                  rows[QString::fromLatin1(kAmountColumns[a])], group);
            if (r == kEquityRowsPerSheet) manager.EndPage();
            if (rowName == kChangesHeading) indent = true;
        }
        if (r >= 1 && r < kEquityRowsPerSheet) {
            for (int rest = r + 1; rest <= kEquityRowsPerSheet; ++rest) manager.SetVisible(groupName(rest), false);
            manager.EndPage();
        }
    });
}

}  // namespace

QString mstrMakeDistinctionLabel(const Variant& distinction) {
    return trapped(QStringLiteral("mstrMakeDistinctionLabel"), 0, QString(), [&] {
        const long kind = distinction.isNull() || distinction.text().isEmpty() ? 0 : distinction.toLong();
        if (kind == 1) return QStringLiteral("（会社名）");
        if (kind == 2) return QStringLiteral("（商号又は名称）");
        return QStringLiteral("（申請者名）");
    });
}

QString mstrEquityAmountText(const Variant& yen) {
    if (yen.isNull()) return QString();
    // Adding 0.0 turns a truncated -0 into 0, which would otherwise take the
    // negative section.
    const double thousands = std::trunc(yen.toDouble() / 1000.0) + 0.0;
    return vbFormat(Variant(thousands), QStringLiteral("#,###;△#,##0"));
}

void mPrintVariableSub(frmPrintManager& manager, const QString& fieldName, const Variant& yen, const QString& group) {
    trapped(QStringLiteral("mPrintVariableSub"), 0, [&] {
        manager.OutPutData(fieldName, mstrEquityAmountText(yen), 0, 1, QString(), QString(), group);
    });
}

void mPrintVariableTemp(frmPrintManager& manager, std::int32_t fsDataCode) {
    manager.SetPrintFile(QStringLiteral("FSVariableSub_Side.w30"));
    mPrintVariableTempFile(manager, fsDataCode);
}

}  // namespace kelvary
