// Statement payloads shared by the form editions. The queries are the texts
// the agency's format was defined against; their filters decide which items
// reach the reader, so they are kept as they are.
#include "qr/StatementPayloads.h"

#include "db/mdlFunctionDatabase.h"
#include "qr/QrPayload.h"
#include "qr/ResumeTrap.h"
#include "qr/frmQRCode.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <array>

namespace kelvary {
namespace {

using qr::mAddDataLine;
using qr::mAddHeaderLine;
using qr::mvarCalcUnit;
using qr::QrSymbolList;
using qr::SymbolKind;

// The amount columns of an equity row, in payload order.
constexpr std::array<const char*, 18> kEquityAmountColumns = {"Capital",
                                                              "NewStockProposeDeposit",
                                                              "CapitalReady",
                                                              "CapitalOther",
                                                              "CapitalOtherTotal",
                                                              "BenefitReady",
                                                              "BenefitOtherReadyFundSum",
                                                              "BenefitOtherCarryOver",
                                                              "BenefitTotal",
                                                              "SelfStock",
                                                              "SelfStockProposeDeposit",
                                                              "CapitalTotal",
                                                              "DiffOtherStock",
                                                              "DiffCarryOverHedge",
                                                              "DiffLand",
                                                              "DiffTotal",
                                                              "NewStockReserve",
                                                              "AssetTotal"};

const QString kTooLongNote =
    QStringLiteral("※※※ この項目は文字数が多すぎたためにQRコードにできませんでした。※※※");

}  // namespace

StatementPayloads::StatementPayloads(frmQRCode& renderer, QrSymbolList& made, QString verifyId, long page,
                                     std::int32_t fsDataCode)
    : renderer_(renderer), made_(made), verifyId_(std::move(verifyId)), page_(page), fsDataCode_(fsDataCode) {}

QString StatementPayloads::nameOf(SymbolKind kind, long part) const { return qr::mstrSymbolName(kind, page_, part); }

// A builder that gives up part way hands on none of its batch, so the period
// header and the pages agree that the kind is missing.
void StatementPayloads::render(QrSymbolList& batch, SymbolKind kind, const QString& symbolName,
                               const QString& payload) {
    qr::renderSymbol(renderer_, batch, kind, symbolName, payload);
}

QString StatementPayloads::keyCondition() const {
    return QStringLiteral("FSDataCode=") + QString::number(fsDataCode_);
}

void StatementPayloads::mMakeQRCodeFSData() {
    qr::ResumeTrap trap(QStringLiteral("mMakeQRCodeFSData"));
    Recordset rs = gobjMakeRecordset(
        QStringLiteral(" Select * From tmpFSItemData ") + QStringLiteral(" Where FSDataCode=") +
        QString::number(fsDataCode_) + QStringLiteral(" And ItemCode<10000") +
        QStringLiteral(" And (ItemCode=159 Or ") + QStringLiteral(" ItemCode=162 Or ") +
        QStringLiteral(" ItemCode=204 Or ") + QStringLiteral(" ItemCode=207 Or ") +
        QStringLiteral(" ItemCode=208 Or ") + QStringLiteral(" NameChangeFlag=True Or ") +
        QStringLiteral(" ItemValue<>0) ") + QStringLiteral(" Order By ItemCode, SortNumber, FSItemID "));
    if (rs.isNothing()) return;
    QrSymbolList batch;
    long k = 0;
    long count = 0;
    QString name;
    QString payload;
    while (!rs.eof() && !trap.ended()) {
        if (count == 0) {
            ++k;
            name = nameOf(SymbolKind::ZaimuData, k);
            payload.clear();
        }
        trap.run([&] {
            mAddDataLine(payload, rs[QStringLiteral("ItemCode")].toLong(),
                         {mvarCalcUnit(rs[QStringLiteral("ItemValue")])});
        });
        ++count;
        rs.moveNext();
        if (rs.eof() || count == kItemsPerSymbol) {
            // The items this symbol took: 40, or what the last one has left.
            mAddHeaderLine(payload, name, verifyId_, count, 2, true);
            trap.run([&] { render(batch, SymbolKind::ZaimuData, name, payload); });
            count = 0;
        }
    }
    if (!trap.ended()) made_ += batch;
}

void StatementPayloads::mMakeQRCodeChangedKamoku() {
    qr::ResumeTrap trap(QStringLiteral("mMakeQRCodeChangedKamoku"));
    long distinction = 0;
    trap.run([&] {
        distinction = gvarGetData(QStringLiteral("Distinction"), QStringLiteral("tmpFSInfoData"),
                                  keyCondition(), Variant(QString()))
                          .toLong();
    });
    if (trap.ended()) return;
    QString sql =
        QStringLiteral(
            " SELECT tmpFSItemData.ItemCode, tmpFSItemData.ItemName, M_FSItem.ItemName, "
            "tmpFSItemData.NameChangeFlag,") +
        QStringLiteral(" tmpFSItemData.ItemValue") +
        QStringLiteral(
            " FROM M_FSItem INNER JOIN tmpFSItemData ON M_FSItem.ItemCode = tmpFSItemData.ItemCode") +
        QStringLiteral(" WHERE tmpFSItemData.FSDataCode=") + QString::number(fsDataCode_);
    if (distinction == 1) sql += QStringLiteral(" And M_FSItem.SortNumber_H Is Not Null ");
    if (distinction == 2) sql += QStringLiteral(" And M_FSItem.SortNumber_K Is Not Null ");
    sql += QStringLiteral(" Order By tmpFSItemData.DocCode,tmpFSItemData.SortNumber");
    Recordset rs = gobjMakeRecordset(sql);
    if (rs.isNothing()) return;
    // Both item names come back under the same name, so the columns are
    // read by position: 0 code, 1 the period's name, 3 flag, 4 amount.
    QrSymbolList batch;
    long k = 0;
    long count = 0;
    QString payload;
    while (!rs.eof() && !trap.ended()) {
        trap.run([&] {
            if (!gvarCheckData(0, rs.value(3), Variant(false)).toBool()) return;
            mAddDataLine(payload, rs.value(0).toLong(),
                         {Variant(QString()), rs.value(1),
                          gvarCheckData(0, mvarCalcUnit(rs.value(4)), Variant(QString()))});
            ++count;
        });
        rs.moveNext();
        if (rs.eof() || count == kRenamedItemsPerSymbol) {
            if (count >= 1) {
                ++k;
                const QString name = nameOf(SymbolKind::KamokuData, k);
                mAddHeaderLine(payload, name, verifyId_, count, 4, true);
                trap.run([&] { render(batch, SymbolKind::KamokuData, name, payload); });
            }
            payload.clear();
            count = 0;
        }
    }
    if (!trap.ended()) made_ += batch;
}

void StatementPayloads::mMakeQRCodeFSCapital() {
    qr::ResumeTrap trap(QStringLiteral("mMakeQRCodeFSCapital"));
    QString payload;
    long columns = 0;
    Recordset cols =
        gobjMakeRecordset(QStringLiteral("Select * From tmpFSCapitalCol Where ") + keyCondition());
    if (!cols.isNothing()) {
        for (; !cols.eof() && !trap.ended(); cols.moveNext()) {
            trap.run([&] {
                mAddDataLine(payload, cols[QStringLiteral("ColNo")].toLong(),
                             {cols[QStringLiteral("ItemCode")], cols[QStringLiteral("ColName")]});
            });
            ++columns;
        }
    }
    if (trap.ended()) return;
    const QString headerName = nameOf(SymbolKind::CapitalHeader);
    mAddHeaderLine(payload, headerName, verifyId_, columns, 3, true);
    trap.run([&] { render(made_, SymbolKind::CapitalHeader, headerName, payload); });

    Recordset rs = gobjMakeRecordset(QStringLiteral("Select * From tmpFSCapitalRow Where ") + keyCondition());
    if (rs.isNothing() || trap.ended()) return;
    QrSymbolList batch;
    long k = 0;
    long count = 0;
    payload.clear();
    while (!rs.eof() && !trap.ended()) {
        trap.run([&] {
            // The rows have their own form: the three codes unquoted, the
            // amounts quoted but not cleaned.
            const Variant zero(0);
            QString line = gvarCheckData(0, rs[QStringLiteral("RowNo")], zero).text();
            line +=
                QStringLiteral(",\"") + qr::mstrCleanValue(rs[QStringLiteral("RowName")]) + QLatin1Char('"');
            line += QLatin1Char(',') + gvarCheckData(0, rs[QStringLiteral("ItemCode")], zero).text();
            line += QLatin1Char(',') + gvarCheckData(0, rs[QStringLiteral("ItemType")], zero).text();
            for (const char* column : kEquityAmountColumns) {
                const Variant amount = mvarCalcUnit(rs[QString::fromLatin1(column)]);
                line += QStringLiteral(",\"") + gvarCheckData(0, amount, Variant(QString())).text() +
                        QLatin1Char('"');
            }
            payload += line + qr::kCrLf;
        });
        ++count;
        rs.moveNext();
        if (rs.eof() || count == kEquityRowsPerSymbol) {
            ++k;
            const QString name = nameOf(SymbolKind::CapitalData, k);
            mAddHeaderLine(payload, name, verifyId_, count, 22, true);
            trap.run([&] { render(batch, SymbolKind::CapitalData, name, payload); });
            payload.clear();
            count = 0;
        }
    }
    if (!trap.ended()) made_ += batch;
}

void StatementPayloads::mMakeQRCodeFSNList() {
    trapped(QStringLiteral("mMakeQRCodeFSNList"), 1, [&] {
        const Recordset rs =
            gobjMakeRecordset(QStringLiteral("Select * From tmpFSNoteData Where ") + keyCondition());
        if (rs.isNothing() || rs.eof()) return;
        bool tooLarge = false;
        for (int i = 0; i < rs.fieldCount(); ++i)
            if (glngLen(rs.value(i)) > kNoteBytesPerSymbol) tooLarge = true;
        if (tooLarge) {
            const QString n = gvarGetData(QStringLiteral("FYearNumber"), QStringLiteral("tmpFSInfoData"),
                                          keyCondition(), Variant(QStringLiteral("  ")))
                                  .text();
            gMsgbox(0,
                    QStringLiteral("第") + n +
                        QStringLiteral("期の注記表のデータ量が多くQRコードにすることができません。") +
                        qr::kCrLf + QStringLiteral("第") + n +
                        QStringLiteral("期の注記表については、印刷したものを添付してください。"),
                    QStringLiteral("情報"));
        }
        QrSymbolList batch;
        long k = 0;
        long count = 0;
        QString payload;
        const auto close = [&] {
            ++k;
            const QString name = nameOf(SymbolKind::NListData, k);
            mAddHeaderLine(payload, name, verifyId_, count, 3, true);
            render(batch, SymbolKind::NListData, name, payload);
            payload.clear();
            count = 0;
        };
        for (int i = 0; i < rs.fieldCount(); ++i) {
            const QString column = rs.fieldName(i);
            if (column.compare(QStringLiteral("FSDataCode"), Qt::CaseInsensitive) == 0) continue;
            const Variant value = gvarCheckData(0, rs.value(i), Variant(QString()));
            if (value.text().isEmpty()) continue;
            const long valueBytes = glngLen(value);
            if (glngLen(Variant(payload)) + valueBytes > kNoteBytesPerSymbol && count >= 1) close();
            ++count;
            mAddDataLine(payload, count,
                         {Variant(column), valueBytes > kNoteBytesPerSymbol ? Variant(kTooLongNote) : value});
        }
        if (count >= 1) close();
        made_ += batch;
    });
}

}  // namespace kelvary
