// QR symbols through libqrencode. The library is handed the segments we
// choose ourselves: its own scan of Shift_JIS text steps one byte at a time
// through byte-mode stretches and can take the trail byte of one character and
// the lead byte of the next for a Kanji pair, which the reader would then give
// back as different bytes.
#include "platform/QrSymbol.h"

#include <qrencode.h>

#include <cstring>
#include <memory>

namespace kelvary::qr {
namespace {

// One run of the payload's bytes in one encoding mode.
struct QrSegment {
    bool kanji = false;
    QByteArray bytes;
};

struct CharSpan {
    int start = 0;
    int length = 1;
    bool kanji = false;
};

bool isLeadByte(unsigned char c) {
    return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
}

// Kanji mode holds the double-byte codes 8140-9FFC and E040-EBBF; a trail
// byte outside 40-FC would not come back as itself.
bool isKanjiPair(unsigned char lead, unsigned char trail) {
    const unsigned code = (static_cast<unsigned>(lead) << 8) | trail;
    const bool inRange = (code >= 0x8140 && code <= 0x9FFC) || (code >= 0xE040 && code <= 0xEBBF);
    return inRange && trail >= 0x40 && trail <= 0xFC;
}

std::vector<CharSpan> characters(const QByteArray& bytes) {
    std::vector<CharSpan> spans;
    for (int i = 0; i < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (isLeadByte(lead) && i + 1 < bytes.size()) {
            const auto trail = static_cast<unsigned char>(bytes[i + 1]);
            spans.push_back({i, 2, isKanjiPair(lead, trail)});
            i += 2;
        } else {
            spans.push_back({i, 1, false});
            ++i;
        }
    }
    return spans;
}

struct QrCodeDeleter {
    void operator()(QRcode* code) const { QRcode_free(code); }
};
struct QrInputDeleter {
    void operator()(QRinput* input) const { QRinput_free(input); }
};
using QrCodePtr = std::unique_ptr<QRcode, QrCodeDeleter>;
using QrInputPtr = std::unique_ptr<QRinput, QrInputDeleter>;

// Splits CP932 bytes into runs on whole characters: every character whose
// two bytes Kanji mode can hold goes into a Kanji run, everything else
// (ASCII, half-width katakana, the IBM rows) into a byte-mode run.
std::vector<QrSegment> splitSegments(const QByteArray& cp932) {
    std::vector<QrSegment> segments;
    for (const CharSpan& c : characters(cp932)) {
        if (segments.empty() || segments.back().kanji != c.kanji) segments.push_back({c.kanji, QByteArray()});
        segments.back().bytes.append(cp932.constData() + c.start, c.length);
    }
    return segments;
}

QrCodePtr encodeSegments(const std::vector<QrSegment>& segments, QRecLevel level) {
    QrInputPtr input(QRinput_new2(0, level));
    if (!input) return nullptr;
    for (const QrSegment& segment : segments) {
        const auto* data = reinterpret_cast<const unsigned char*>(segment.bytes.constData());
        if (QRinput_append(input.get(), segment.kanji ? QR_MODE_KANJI : QR_MODE_8,
                           static_cast<int>(segment.bytes.size()), data) != 0)
            return nullptr;
    }
    return QrCodePtr(QRcode_encodeInput(input.get()));
}

}  // namespace

std::optional<QrSymbol> encodeSymbol(const QByteArray& cp932) {
    // The largest symbol holds 2953 bytes, or 1817 Kanji (3634 bytes); the
    // library would take its time to find that out about a text of megabytes.
    constexpr qsizetype kMostBytesAnySymbolHolds = 3634;
    if (cp932.size() > kMostBytesAnySymbolHolds) return std::nullopt;
    const std::vector<QrSegment> segments = splitSegments(cp932);
    EcLevel level = EcLevel::M;
    QrCodePtr code = encodeSegments(segments, QR_ECLEVEL_M);
    if (!code) {
        level = EcLevel::L;
        code = encodeSegments(segments, QR_ECLEVEL_L);
    }
    if (!code) return std::nullopt;
    QrSymbol symbol;
    symbol.version = code->version;
    symbol.level = level;
    symbol.width = code->width;
    symbol.dark.resize(static_cast<size_t>(code->width) * static_cast<size_t>(code->width));
    for (size_t i = 0; i < symbol.dark.size(); ++i)
        symbol.dark[i] = code->data[i] & 1;
    return symbol;
}

QImage symbolImage(const QrSymbol& symbol) {
    const int side = (symbol.width + 2 * kQuietZoneModules) * kPixelsPerModule;
    QImage image(side, side, QImage::Format_Mono);
    // Index 0 white, 1 black, so that the BMP palette reads naturally.
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    // QImage::fill stops at the last pixel's byte and leaves the row's padding
    // as the allocator gave it; the BMP carries whole rows, so clear them all
    // and a symbol's file holds nothing but the symbol.
    std::memset(image.bits(), 0, static_cast<size_t>(image.sizeInBytes()));
    // Every symbol of a run passes through here. A module is four pixels, half
    // a byte (Format_Mono keeps the leftmost pixel in the high bit), and the
    // quiet zone whole bytes: one pixel row per module row is set a half byte
    // at a time and copied to the module's other rows.
    static_assert(kPixelsPerModule == 4 && kQuietZoneModules * kPixelsPerModule % 8 == 0);
    constexpr int quietBytes = kQuietZoneModules * kPixelsPerModule / 8;
    const auto rowBytes = static_cast<size_t>(image.bytesPerLine());
    for (int y = 0; y < symbol.width; ++y) {
        const int py = (y + kQuietZoneModules) * kPixelsPerModule;
        uchar* row = image.scanLine(py) + quietBytes;
        for (int x = 0; x < symbol.width; ++x)
            if (symbol.isDark(x, y)) row[x / 2] |= (x % 2 == 0) ? 0xF0 : 0x0F;
        for (int dy = 1; dy < kPixelsPerModule; ++dy) std::memcpy(image.scanLine(py + dy), image.scanLine(py), rowBytes);
    }
    const int dotsPerMetre = static_cast<int>(kPixelsPerModule * 1000.0 / kModuleMillimetres + 0.5);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    return image;
}

}  // namespace kelvary::qr
