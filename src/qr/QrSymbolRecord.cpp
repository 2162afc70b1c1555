// Symbol names and image paths, recording a symbol as it is rendered, and
// finding symbols in a generator's list.
#include "qr/QrSymbolRecord.h"

#include "platform/AppObject.h"
#include "qr/frmQRCode.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace kelvary::qr {
namespace {

QString baseName(SymbolKind kind) {
    switch (kind) {
        case SymbolKind::ApplyHeader: return QStringLiteral("ApplyHeader");
        case SymbolKind::ApplyDoc1: return QStringLiteral("ApplyDoc1");
        case SymbolKind::ApplyDoc2: return QStringLiteral("ApplyDoc2");
        case SymbolKind::ZaimuData: return QStringLiteral("ZaimuData");
        case SymbolKind::KamokuData: return QStringLiteral("KamokuData");
        case SymbolKind::CapitalHeader: return QStringLiteral("CapitalHeader");
        case SymbolKind::CapitalData: return QStringLiteral("CapitalData");
        case SymbolKind::NListData: return QStringLiteral("NListData");
        case SymbolKind::ZaimuHeader: return QStringLiteral("ZaimuHeader");
    }
    return QString();
}

bool isSplitKind(SymbolKind kind) {
    return kind == SymbolKind::ZaimuData || kind == SymbolKind::KamokuData || kind == SymbolKind::CapitalData ||
           kind == SymbolKind::NListData;
}

constexpr std::array kAllKinds = {SymbolKind::ApplyHeader,   SymbolKind::ApplyDoc1,   SymbolKind::ApplyDoc2,
                                  SymbolKind::ZaimuData,     SymbolKind::KamokuData,  SymbolKind::CapitalHeader,
                                  SymbolKind::CapitalData,   SymbolKind::NListData,   SymbolKind::ZaimuHeader};

// Every name mstrSymbolName can give for the kind, whatever the page and part.
QString namePattern(SymbolKind kind) {
    if (!isPeriodKind(kind)) return baseName(kind);
    return baseName(kind) + (isSplitKind(kind) ? QStringLiteral("\\d+_\\d+") : QStringLiteral("\\d+"));
}

}  // namespace

bool isPeriodKind(SymbolKind kind) {
    return kind != SymbolKind::ApplyHeader && kind != SymbolKind::ApplyDoc1 && kind != SymbolKind::ApplyDoc2;
}

QString mstrSymbolName(SymbolKind kind, long page, long part) {
    if (!isPeriodKind(kind)) return baseName(kind);
    const QString name = baseName(kind) + QString::number(page);
    return isSplitKind(kind) ? name + QLatin1Char('_') + QString::number(part) : name;
}

QString mstrGetImageFile(const QString& symbolName) {
    return app::path() + QStringLiteral("/Temp/") + symbolName + QStringLiteral(".bmp");
}

bool isSymbolFile(const QString& fileName) {
    static const QRegularExpression pattern = [] {
        QStringList names;
        for (const SymbolKind kind : kAllKinds) names << namePattern(kind);
        return QRegularExpression(QStringLiteral("^(") + names.join(QLatin1Char('|')) +
                                      QStringLiteral(")\\.bmp(\\.txt)?(\\.part)?$"),
                                  QRegularExpression::CaseInsensitiveOption);
    }();
    return pattern.match(fileName).hasMatch();
}

QrSymbolRecord namedSymbol(SymbolKind kind, long page, long part) {
    const QString name = mstrSymbolName(kind, page, part);
    return QrSymbolRecord{kind, name, QString(), mstrGetImageFile(name)};
}

void renderSymbol(frmQRCode& renderer, QrSymbolList& made, SymbolKind kind, const QString& symbolName,
                  const QString& payload) {
    made << QrSymbolRecord{kind, symbolName, payload, mstrGetImageFile(symbolName)};
    renderer.MakeQRCode(made.last().imagePath, payload);
}

QrSymbolList symbolsOf(const QrSymbolList& symbols, SymbolKind kind) {
    QrSymbolList found;
    for (const QrSymbolRecord& symbol : symbols)
        if (symbol.kind == kind) found << symbol;
    return found;
}

long symbolCount(const QrSymbolList& symbols, SymbolKind kind) {
    return static_cast<long>(
        std::count_if(symbols.begin(), symbols.end(), [&](const QrSymbolRecord& s) { return s.kind == kind; }));
}

QrSymbolRecord symbolOrNamed(const QrSymbolList& symbols, SymbolKind kind, long page) {
    for (auto it = symbols.rbegin(); it != symbols.rend(); ++it)
        if (it->kind == kind) return *it;
    return namedSymbol(kind, page);
}

}  // namespace kelvary::qr
