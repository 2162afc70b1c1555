// A QR symbol as a value: what a generator hands on for every symbol it
// closed, so the page builders lay out what was made instead of rebuilding
// names and paths from counts. A symbol's name and image path come from the
// two functions below and nowhere else.
#pragma once

#include <QList>
#include <QString>

namespace kelvary {
class frmQRCode;
}

namespace kelvary::qr {

// The application's three symbols, then a period's kinds in the order the
// generator makes them (its header last, as it carries the others' counts).
enum class SymbolKind {
    ApplyHeader,
    ApplyDoc1,
    ApplyDoc2,
    ZaimuData,
    KamokuData,
    CapitalHeader,
    CapitalData,
    NListData,
    ZaimuHeader,
};

// One symbol handed to the renderer. Its image may still be missing (the
// renderer reports why); the symbol keeps its place in the count and on the
// page all the same, as the reader numbers the symbols it expects.
struct QrSymbolRecord {
    SymbolKind kind = SymbolKind::ApplyHeader;
    QString name;
    QString payload;    // the text handed to the renderer, CR LF lines
    QString imagePath;  // where the renderer was told to write the image
};

using QrSymbolList = QList<QrSymbolRecord>;

// The symbol's name: fixed for the application's three; a period's carry its
// 0-based place in print order, and the split kinds "_" and the symbol's
// number within the kind, from 1 (ZaimuData0_2).
QString mstrSymbolName(SymbolKind kind, long page = 0, long part = 0);

// Where the image of a symbol goes: the program folder's Temp, name & ".bmp".
QString mstrGetImageFile(const QString& symbolName);

// The name and image path of a symbol, without a payload: what a page shows
// for a slot whose symbol was not made.
QrSymbolRecord namedSymbol(SymbolKind kind, long page = 0, long part = 0);

// The symbols of one kind, in the order they were made.
QrSymbolList symbolsOf(const QrSymbolList& symbols, SymbolKind kind);
long symbolCount(const QrSymbolList& symbols, SymbolKind kind);

// The last symbol of a single kind as made, or its namedSymbol when none was.
QrSymbolRecord symbolOrNamed(const QrSymbolList& symbols, SymbolKind kind, long page = 0);

// Adds the symbol's record to made, then has the renderer write its image:
// a symbol whose image could not be made keeps its place all the same.
void renderSymbol(frmQRCode& renderer, QrSymbolList& made, SymbolKind kind, const QString& symbolName,
                  const QString& payload);

// True for the kinds a period's MakeFSData makes.
bool isPeriodKind(SymbolKind kind);

// True for a file the renderer writes for a symbol of any run: the image, the
// payload copy beside it (".bmp.Txt", in any case) and their half-written
// temporaries (".part").
bool isSymbolFile(const QString& fileName);

}  // namespace kelvary::qr
