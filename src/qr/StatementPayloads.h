// The statement payloads of one fiscal period that every form edition writes
// the same way: item amounts (ZaimuData), renamed items (KamokuData), the
// statement of changes in equity (CapitalHeader, CapitalData) and the notes
// (NListData). Each builder renders its symbols as it closes them and leaves
// the number it made in its count; the period header, which differs by
// edition, is left to the generator that owns this object.
#pragma once

#include <QString>

#include <cstdint>

namespace kelvary {

class frmQRCode;

class StatementPayloads {
public:
    StatementPayloads(frmQRCode& renderer, QString verifyId, long page, std::int32_t fsDataCode);

    void mMakeQRCodeFSData();
    void mMakeQRCodeChangedKamoku();
    void mMakeQRCodeFSCapital();
    void mMakeQRCodeFSNList();

    long FSQRCodeCount = 0;
    long KamokuQRCodeCount = 0;
    long NListQRCodeCount = 0;
    long CapitalQRCodeCount = 0;

    // Records per symbol of the split kinds, and the byte bound of the notes.
    static constexpr long kItemsPerSymbol = 40;
    static constexpr long kRenamedItemsPerSymbol = 16;
    static constexpr long kEquityRowsPerSymbol = 5;
    static constexpr long kNoteBytesPerSymbol = 800;

private:
    void render(const QString& symbolName, const QString& payload);
    QString keyCondition() const;

    frmQRCode& renderer_;
    QString verifyId_;
    long page_;
    std::int32_t fsDataCode_;
};

}  // namespace kelvary
