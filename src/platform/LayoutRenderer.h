// Drawing a page of a layout document. A page is recorded once, as a QPicture
// in layout units (hundredths of a millimetre), and the same vector page is
// replayed on the preview, the printer and the PDF file.
#pragma once

#include "platform/LayoutDocument.h"

#include <QPicture>
#include <QSizeF>

class QPainter;

namespace kelvary {

constexpr double layoutUnitsPerMm = 100.0;

// An ended page: its drawing and the paper it belongs on.
struct RecordedPage {
    QPicture picture;
    QSizeF paperMm;
};

// Draws the page with its current field data; the painter's coordinates must
// be layout units.
void paintLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber);

RecordedPage recordLayoutPage(const LayoutDocument& document, int pageNumber);

// Replays a recorded page at the painter's origin, scaled to the device.
void playRecordedPage(QPainter& painter, const RecordedPage& page, double devicePixelsPerMm);

}  // namespace kelvary
