// Text on paper. Leaving page overflow to the printer driver clips silently;
// here a page break comes before the line that would not fit, and the font
// shrinks until the widest line fits.
#include "platform/TextPrinter.h"

#include "platform/VbError.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace kelvary {
namespace {

// The pieces of one text line that fit the width, in order; an empty line stays one piece.
QStringList fittedPieces(const QString& line, const QFontMetricsF& metrics, qreal width) {
    QStringList pieces;
    QString piece;
    for (const QChar c : line) {
        if (!piece.isEmpty() && metrics.horizontalAdvance(piece + c) > width) {
            pieces << piece;
            piece.clear();
        }
        piece += c;
    }
    pieces << piece;
    return pieces;
}

constexpr qreal kUsualPointSize = 10.0;
// Below this the list is no longer read comfortably on paper; a line wider
// still is broken instead.
constexpr qreal kSmallestPointSize = 6.0;

qreal widestLine(const QStringList& lines, const QFont& font, QPaintDevice* device) {
    const QFontMetricsF metrics(font, device);
    qreal widest = 0;
    for (const QString& line : lines) widest = std::max(widest, metrics.horizontalAdvance(line));
    return widest;
}

// The largest size, up to the usual one, at which the widest line fits.
qreal fittingPointSize(const QStringList& lines, QFont font, QPaintDevice* device, qreal width) {
    font.setPointSizeF(kUsualPointSize);
    const qreal widest = widestLine(lines, font, device);
    if (widest <= width) return kUsualPointSize;
    // Text widths grow almost in proportion to the size; hinting may round a
    // little up, so step down until the measure agrees.
    qreal size = std::floor(kUsualPointSize * width / widest * 10.0) / 10.0;
    for (; size > kSmallestPointSize; size -= 0.1) {
        font.setPointSizeF(size);
        if (widestLine(lines, font, device) <= width) return size;
    }
    return kSmallestPointSize;
}

}  // namespace

int printTextLines(const QString& text, const QString& fontFamily, QPrinter& printer) {
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    QStringList lines = text.split(lineBreak);
    lines << QString();  // the empty line that ends the list

    QPainter painter;
    if (!painter.begin(&printer))
        throw VbError(vberr::PermissionDenied, QStringLiteral("印刷を開始できません。プリンタの設定を確認してください。"));
    const QRectF area = printer.pageLayout().paintRectPixels(printer.resolution()).translated(
        -printer.pageLayout().paintRectPixels(printer.resolution()).topLeft());
    QFont font(fontFamily);
    font.setPointSizeF(fittingPointSize(lines, font, &printer, area.width()));
    painter.setFont(font);
    const QFontMetricsF metrics(painter.font(), &printer);
    const qreal lineHeight = metrics.lineSpacing();

    int pages = 1;
    qreal y = 0;
    for (const QString& line : lines) {
        for (const QString& piece : fittedPieces(line, metrics, area.width())) {
            if (y + lineHeight > area.height() && y > 0) {
                printer.newPage();
                ++pages;
                y = 0;
            }
            painter.drawText(QPointF(area.left(), area.top() + y + metrics.ascent()), piece);
            y += lineHeight;
        }
    }
    painter.end();
    return pages;
}

}  // namespace kelvary
