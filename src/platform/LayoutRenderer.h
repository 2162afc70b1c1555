// Drawing a page of a layout document. A page is recorded once, as QPictures
// in layout units (hundredths of a millimetre) with its images kept beside
// them, and the same page is replayed on the preview, the printer and the PDF
// file.
#pragma once

#include "platform/LayoutDocument.h"

#include <QImage>
#include <QPicture>
#include <QRectF>
#include <QSizeF>

#include <vector>

class QPainter;

namespace kelvary {

constexpr double layoutUnitsPerMm = 100.0;

// An image of a page, drawn into rect (layout units) as it stands. A picture
// would keep it as PNG and decode it again at every replay.
struct RecordedImage {
    QImage image;
    QRectF rect;
};

// An ended page and the paper it belongs on. Its drawing is the pictures and
// images in turn: pictures[0], images[0], pictures[1], images[1] and so on,
// so that what lies over an image stays over it.
struct RecordedPage {
    std::vector<QPicture> pictures;
    std::vector<RecordedImage> images;
    QSizeF paperMm;
};

// Draws the page with its current field data; the painter's coordinates must
// be layout units.
void paintLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber);

RecordedPage recordLayoutPage(const LayoutDocument& document, int pageNumber);

// Replays a recorded page at the painter's origin, scaled to the device.
void playRecordedPage(QPainter& painter, const RecordedPage& page, double devicePixelsPerMm);

}  // namespace kelvary
