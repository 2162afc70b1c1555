// Drawing a page of a layout document. Every device gets the same drawing,
// made straight on its painter: the PDF file as each page is ended, the
// preview and the printer from the page kept with its data (the preview
// draws it again whenever it is shown).
#pragma once

#include "platform/LayoutDocument.h"

#include <QHash>
#include <QImage>
#include <QSizeF>
#include <QString>

class QPainter;

namespace kelvary {

constexpr double layoutUnitsPerMm = 100.0;

// An ended page kept to be drawn later, and the paper it belongs on. Its
// images are read as the page ends: a symbol file may be written again for a
// later page before this one is drawn.
struct RecordedPage {
    LayoutPage page;
    QHash<QString, QImage> images;
    QSizeF paperMm;
};

// Draws the page with its current field data; the painter's coordinates must
// be layout units.
void paintLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber);

// Draws the page at the painter's origin, scaled to the device.
void drawLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber, double devicePixelsPerMm);

RecordedPage recordLayoutPage(const LayoutDocument& document, int pageNumber);

// Draws a kept page at the painter's origin, scaled to the device.
void playRecordedPage(QPainter& painter, const RecordedPage& page, double devicePixelsPerMm);

}  // namespace kelvary
