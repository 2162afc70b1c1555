// The statement payloads of one fiscal period that every form edition writes
// the same way: item amounts (ZaimuData), renamed items (KamokuData), the
// statement of changes in equity (CapitalHeader, CapitalData) and the notes
// (NListData). Each builder renders its symbols as it closes them and adds
// their records to the generator's list; the period header, which differs by
// edition, is left to the generator that owns this object.
#pragma once

#include "qr/QrSymbolRecord.h"

#include <QString>

#include <cstdint>

namespace kelvary {

class frmQRCode;

class StatementPayloads {
public:
    // made: the generator's list, which the builders add to.
    StatementPayloads(frmQRCode& renderer, qr::QrSymbolList& made, QString verifyId, long page,
                      std::int32_t fsDataCode);

    void mMakeQRCodeFSData();
    void mMakeQRCodeChangedKamoku();
    void mMakeQRCodeFSCapital();
    void mMakeQRCodeFSNList();

    // Records per symbol of the split kinds, and the byte bound of the notes.
    static constexpr long kItemsPerSymbol = 40;
    static constexpr long kRenamedItemsPerSymbol = 16;
    static constexpr long kEquityRowsPerSymbol = 5;
    static constexpr long kNoteBytesPerSymbol = 800;

private:
    // The name of this period's symbol part of the kind.
    QString nameOf(qr::SymbolKind kind, long part = 0) const;
    // Renders the symbol into batch: what the builder hands on when it finishes.
    void render(qr::QrSymbolList& batch, qr::SymbolKind kind, const QString& symbolName, const QString& payload);
    QString keyCondition() const;

    frmQRCode& renderer_;
    qr::QrSymbolList& made_;
    QString verifyId_;
    long page_;
    std::int32_t fsDataCode_;
};

}  // namespace kelvary
