// The reference a page drawn straight into a PDF file is held to: the same
// page recorded into one picture and replayed by Qt onto a writer set up as
// the PDF files are, which is how pages were written before they were drawn
// straight, and which draws every text with Qt's fall-back fonts allowed.
// Both are judged as poppler renders them at 300 dpi.
#pragma once

#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PdfCheck.h"

#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPicture>

namespace kelvary::test {

inline void writeAsOnePicture(const LayoutDocument& doc, const QString& path) {
    QPicture picture;
    QPainter recorder(&picture);
    paintLayoutPage(recorder, doc, 1);
    recorder.end();
    picture.setBoundingRect(QRect(0, 0, 21000, 29700));
    QPdfWriter writer(path);
    writer.setResolution(1200);
    writer.setPageLayout(QPageLayout(QPageSize(QSizeF(210, 297), QPageSize::Millimeter), QPageLayout::Portrait,
                                     QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    QPainter painter(&writer);
    const double pixelsPerMm = writer.width() / 210.0;
    painter.scale(pixelsPerMm / layoutUnitsPerMm * picture.logicalDpiX() / writer.logicalDpiX(),
                  pixelsPerMm / layoutUnitsPerMm * picture.logicalDpiY() / writer.logicalDpiY());
    painter.drawPicture(QPointF(0, 0), picture);
    painter.end();
}

// Page 1 as poppler renders it at 300 dpi.
inline QImage renderedAt300Dpi(const QString& pdf) {
    return QImage(renderedPage(pdf, 1, pdf + QStringLiteral("-300"), 300, false));
}

// Pixels that differ between two renderings of the same size.
inline qsizetype differingPixels(const QImage& expected, const QImage& got) {
    const QImage a = expected.convertToFormat(QImage::Format_RGB32);
    const QImage b = got.convertToFormat(QImage::Format_RGB32);
    qsizetype differing = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* rowA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* rowB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            if (rowA[x] != rowB[x]) ++differing;
    }
    return differing;
}

}  // namespace kelvary::test
