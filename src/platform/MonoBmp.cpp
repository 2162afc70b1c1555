#include "platform/MonoBmp.h"

#include <QFile>

#include <cstdint>
#include <cstring>

namespace kelvary {
namespace {

constexpr int kFileHeaderBytes = 14;
constexpr int kInfoHeaderBytes = 40;  // BITMAPINFOHEADER
constexpr int kPaletteBytes = 2 * 4;
constexpr int kPixelsOffset = kFileHeaderBytes + kInfoHeaderBytes + kPaletteBytes;
constexpr int kDefaultDotsPerMetre = 2834;  // 72 dpi, what Qt writes for an image without a resolution

// Where the fields lie: in the file header, then in the info header.
enum FileField { kFileSize = 2, kPixelsAt = 10 };
enum InfoField {
    kHeaderSize = 0,
    kWidth = 4,
    kHeight = 8,
    kPlanes = 12,
    kBitsPerPixel = 14,
    kCompression = 16,
    kImageSize = 20,
    kDotsPerMetreX = 24,
    kDotsPerMetreY = 28,
    kColoursUsed = 32,
    kColoursImportant = 36,
};

void put16(char* at, std::uint16_t v) {
    at[0] = static_cast<char>(v & 0xFF);
    at[1] = static_cast<char>(v >> 8);
}
void put32(char* at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) at[i] = static_cast<char>((v >> (8 * i)) & 0xFF);
}
std::uint16_t get16(const char* at) {
    return static_cast<std::uint16_t>(static_cast<std::uint8_t>(at[0]) | (static_cast<std::uint8_t>(at[1]) << 8));
}
std::uint32_t get32(const char* at) {
    std::uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = (v << 8) | static_cast<std::uint8_t>(at[i]);
    return v;
}

// Bytes of one stored row: whole 32-bit words.
qsizetype rowBytes(qsizetype width) { return ((width + 31) / 32) * 4; }

}  // namespace

QByteArray monoBmpFile(const QImage& image) {
    if (image.format() != QImage::Format_Mono || image.colorCount() != 2 || image.isNull()) return {};
    const qsizetype stride = rowBytes(image.width());
    const qsizetype pixels = stride * image.height();
    QByteArray file(kPixelsOffset + pixels, '\0');
    char* p = file.data();
    p[0] = 'B';
    p[1] = 'M';
    put32(p + kFileSize, static_cast<std::uint32_t>(file.size()));
    put32(p + kPixelsAt, kPixelsOffset);
    char* info = p + kFileHeaderBytes;
    put32(info + kHeaderSize, kInfoHeaderBytes);
    put32(info + kWidth, static_cast<std::uint32_t>(image.width()));
    put32(info + kHeight, static_cast<std::uint32_t>(image.height()));
    put16(info + kPlanes, 1);
    put16(info + kBitsPerPixel, 1);
    put32(info + kCompression, 0);
    put32(info + kImageSize, static_cast<std::uint32_t>(pixels));
    put32(info + kDotsPerMetreX, static_cast<std::uint32_t>(image.dotsPerMeterX() ? image.dotsPerMeterX() : kDefaultDotsPerMetre));
    put32(info + kDotsPerMetreY, static_cast<std::uint32_t>(image.dotsPerMeterY() ? image.dotsPerMeterY() : kDefaultDotsPerMetre));
    put32(info + kColoursUsed, 2);
    put32(info + kColoursImportant, 2);
    char* palette = info + kInfoHeaderBytes;
    for (int i = 0; i < 2; ++i) {
        const QRgb colour = image.color(i);
        palette[4 * i] = static_cast<char>(qBlue(colour));
        palette[4 * i + 1] = static_cast<char>(qGreen(colour));
        palette[4 * i + 2] = static_cast<char>(qRed(colour));
    }
    char* rows = p + kPixelsOffset;
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(rows + (image.height() - 1 - y) * stride, image.constScanLine(y), static_cast<size_t>(stride));
    return file;
}

QImage readMonoBmp(const QByteArray& file) {
    if (file.size() < kPixelsOffset || file[0] != 'B' || file[1] != 'M') return {};
    const char* p = file.constData();
    const char* info = p + kFileHeaderBytes;
    const std::uint32_t offset = get32(p + kPixelsAt);
    const std::int32_t width = static_cast<std::int32_t>(get32(info + kWidth));
    const std::int32_t height = static_cast<std::int32_t>(get32(info + kHeight));
    const std::uint32_t coloursUsed = get32(info + kColoursUsed);
    const std::uint32_t dotsX = get32(info + kDotsPerMetreX);
    const std::uint32_t dotsY = get32(info + kDotsPerMetreY);
    // Anything but the plain form (a top-down file, another header, another
    // depth or palette, compression) goes to Qt's reader.
    if (get32(info + kHeaderSize) != kInfoHeaderBytes || offset != kPixelsOffset || width <= 0 || height <= 0 ||
        width > 32768 || height > 32768 || get16(info + kPlanes) != 1 || get16(info + kBitsPerPixel) != 1 || get32(info + kCompression) != 0 ||
        (coloursUsed != 0 && coloursUsed != 2) || dotsX == 0 || dotsY == 0)
        return {};
    const qsizetype stride = rowBytes(width);
    if (file.size() < kPixelsOffset + stride * height) return {};
    QImage image(width, height, QImage::Format_Mono);
    if (image.isNull()) return {};
    const char* palette = info + kInfoHeaderBytes;
    image.setColorTable({qRgb(static_cast<std::uint8_t>(palette[2]), static_cast<std::uint8_t>(palette[1]),
                              static_cast<std::uint8_t>(palette[0])),
                         qRgb(static_cast<std::uint8_t>(palette[6]), static_cast<std::uint8_t>(palette[5]),
                              static_cast<std::uint8_t>(palette[4]))});
    const char* rows = p + kPixelsOffset;
    for (int y = 0; y < height; ++y)
        std::memcpy(image.scanLine(y), rows + (height - 1 - y) * stride, static_cast<size_t>(stride));
    image.setDotsPerMeterX(static_cast<int>(dotsX));
    image.setDotsPerMeterY(static_cast<int>(dotsY));
    return image;
}

QImage readMonoBmpFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return readMonoBmp(file.readAll());
}

}  // namespace kelvary
