// The one form of BMP file the symbols are kept in: one bit a pixel, a
// two-colour palette, rows stored bottom-up without compression. Written and
// read here directly: through Qt's image plug-ins, each file cost as much as
// making the symbol's picture, and a run writes and reads hundreds.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace kelvary {

// The file of a one-bit, two-colour image (QImage::Format_Mono), byte for
// byte as Qt's BMP writer makes it; empty for any other image.
QByteArray monoBmpFile(const QImage& image);

// The image of a file in that form, as Qt's BMP reader gives it; a null
// image for any other file (read those with Qt's own reader).
QImage readMonoBmp(const QByteArray& file);
QImage readMonoBmpFile(const QString& path);

}  // namespace kelvary
