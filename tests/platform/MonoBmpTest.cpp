// The symbols' BMP files, written and read without Qt's image plug-ins, held
// to what Qt's own BMP writer and reader make of the same images and files.
#include "platform/MonoBmp.h"
#include "platform/QrSymbol.h"

#include <QBuffer>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

QByteArray qtBmp(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "BMP"));
    return bytes;
}

// Symbols of several versions, so that rows end inside a byte and inside
// the last 32-bit word in different places.
QList<QImage> symbols() {
    QList<QImage> images;
    for (const int length : {1, 40, 300, 1200}) {
        const auto symbol = qr::encodeSymbol(QByteArray("\"[FSData]\",").repeated(length / 10 + 1).left(length));
        EXPECT_TRUE(symbol);
        if (symbol) images << qr::symbolImage(*symbol);
    }
    return images;
}

TEST(MonoBmp, WritesWhatQtsWriterWritesAndReadsWhatItReads) {
    for (const QImage& image : symbols()) {
        const QByteArray file = monoBmpFile(image);
        EXPECT_EQ(file, qtBmp(image)) << image.width();
        const QImage read = readMonoBmp(file);
        const QImage byQt = QImage::fromData(file, "BMP");
        EXPECT_TRUE(read == byQt) << image.width();
        EXPECT_EQ(read.format(), byQt.format());
        EXPECT_EQ(read.colorTable(), byQt.colorTable());
        EXPECT_EQ(read.dotsPerMeterX(), byQt.dotsPerMeterX());
        EXPECT_EQ(read.dotsPerMeterY(), byQt.dotsPerMeterY());
    }
    // A picture drawn black first and a width of a whole number of words.
    QImage other(64, 3, QImage::Format_Mono);
    other.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    other.fill(0);
    other.setPixel(5, 1, 1);
    EXPECT_EQ(monoBmpFile(other), qtBmp(other));
    EXPECT_TRUE(readMonoBmp(monoBmpFile(other)) == QImage::fromData(qtBmp(other), "BMP"));
}

TEST(MonoBmp, LeavesEveryOtherImageAndFileToQt) {
    const QImage colour(8, 8, QImage::Format_RGB32);
    EXPECT_TRUE(monoBmpFile(colour).isEmpty());
    EXPECT_TRUE(monoBmpFile(QImage()).isEmpty());
    QImage grey(8, 8, QImage::Format_Indexed8);
    grey.setColorCount(256);
    grey.fill(0);
    // A file of another depth, a file cut short, a file that is not a BMP.
    EXPECT_TRUE(readMonoBmp(qtBmp(grey)).isNull());
    const QByteArray whole = monoBmpFile(symbols().constFirst());
    EXPECT_TRUE(readMonoBmp(whole.left(whole.size() - 1)).isNull());
    EXPECT_TRUE(readMonoBmp(whole.left(20)).isNull());
    EXPECT_TRUE(readMonoBmp(QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(100, '\0')).isNull());
    EXPECT_TRUE(readMonoBmpFile(QStringLiteral("no-such-folder/none.bmp")).isNull());
}

}  // namespace
}  // namespace kelvary
