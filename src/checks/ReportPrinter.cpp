// The problem list on paper. The original left page overflow to the printer
// driver, which silently clipped; here a page break comes before the line
// that would not fit, and an over-wide line is broken at the right margin.
#include "checks/ReportPrinter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QRegularExpression>

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

}  // namespace

int printReportLines(const QString& text, QPrinter& printer) {
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
    QPainter painter;
    if (!painter.begin(&printer)) return 0;
    QFont font(QStringLiteral("ＭＳ ゴシック"), 10);
    painter.setFont(font);
    const QFontMetricsF metrics(painter.font(), &printer);
    const QRectF area = printer.pageLayout().paintRectPixels(printer.resolution()).translated(
        -printer.pageLayout().paintRectPixels(printer.resolution()).topLeft());
    const qreal lineHeight = metrics.lineSpacing();

    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    QStringList lines = text.split(lineBreak);
    lines << QString();  // the empty line that ends the list

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
