// QR symbols through libqrencode. The library is handed the segments we
// choose ourselves: its own scan of Shift_JIS text steps one byte at a time
// through byte-mode stretches and can take the trail byte of one character and
// the lead byte of the next for a Kanji pair, which the reader would then give
// back as different bytes.
#include "qr/QrSymbol.h"

#include <qrencode.h>

#include <array>
#include <limits>
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

// Mode indicator plus character count, in bits, by version group.
int segmentHeaderBits(bool kanji, int version) {
    if (kanji) return 4 + (version <= 9 ? 8 : version <= 26 ? 10 : 12);
    return 4 + (version <= 9 ? 8 : 16);
}

struct QrCodeDeleter {
    void operator()(QRcode* code) const { QRcode_free(code); }
};
struct QrInputDeleter {
    void operator()(QRinput* input) const { QRinput_free(input); }
};
using QrCodePtr = std::unique_ptr<QRcode, QrCodeDeleter>;
using QrInputPtr = std::unique_ptr<QRinput, QrInputDeleter>;

// Splits CP932 bytes into Kanji and byte-mode runs on whole characters,
// choosing the cheaper mode for each stretch at the character-count widths
// of the given version.
std::vector<QrSegment> splitSegments(const QByteArray& cp932, int version) {
    const std::vector<CharSpan> chars = characters(cp932);
    const size_t n = chars.size();
    if (n == 0) return {};
    constexpr long kNone = std::numeric_limits<long>::max() / 4;
    // cost[i][m]: fewest bits for the first i characters ending in mode m
    // (0 byte, 1 Kanji); from[i][m]: the mode of character i-2's segment.
    std::vector<std::array<long, 2>> cost(n + 1, {kNone, kNone});
    std::vector<std::array<int, 2>> from(n + 1, {0, 0});
    for (size_t i = 0; i < n; ++i) {
        for (int m = 0; m < 2; ++m) {
            if (m == 1 && !chars[i].kanji) continue;
            const long bits = m == 1 ? 13 : 8L * chars[i].length;
            const long header = segmentHeaderBits(m == 1, version);
            long bestCost = kNone;
            int bestFrom = m;
            if (i == 0) {
                bestCost = header + bits;
            } else {
                for (int p = 0; p < 2; ++p) {
                    if (cost[i][p] >= kNone) continue;
                    const long c = cost[i][p] + (p == m ? 0 : header) + bits;
                    if (c < bestCost) {
                        bestCost = c;
                        bestFrom = p;
                    }
                }
            }
            cost[i + 1][m] = bestCost;
            from[i + 1][m] = bestFrom;
        }
    }
    std::vector<int> modes(n);
    int m = cost[n][1] < cost[n][0] ? 1 : 0;
    for (size_t i = n; i > 0; --i) {
        modes[i - 1] = m;
        m = from[i][m];
    }
    std::vector<QrSegment> segments;
    for (size_t i = 0; i < n; ++i) {
        const bool kanji = modes[i] == 1;
        if (segments.empty() || segments.back().kanji != kanji) segments.push_back({kanji, QByteArray()});
        segments.back().bytes.append(cp932.mid(chars[i].start, chars[i].length));
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

// The smallest symbol of one level over the segmentations made for each
// group of count widths.
QrCodePtr smallestAtLevel(const QByteArray& cp932, QRecLevel level) {
    QrCodePtr best;
    for (const int groupVersion : {1, 10, 27}) {
        QrCodePtr code = encodeSegments(splitSegments(cp932, groupVersion), level);
        if (code && (!best || code->version < best->version)) best = std::move(code);
    }
    return best;
}

}  // namespace

std::optional<QrSymbol> encodeSymbol(const QByteArray& cp932) {
    EcLevel level = EcLevel::M;
    QrCodePtr code = smallestAtLevel(cp932, QR_ECLEVEL_M);
    if (!code) {
        level = EcLevel::L;
        code = smallestAtLevel(cp932, QR_ECLEVEL_L);
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
    image.fill(0);
    for (int y = 0; y < symbol.width; ++y) {
        for (int x = 0; x < symbol.width; ++x) {
            if (!symbol.isDark(x, y)) continue;
            const int px = (x + kQuietZoneModules) * kPixelsPerModule;
            const int py = (y + kQuietZoneModules) * kPixelsPerModule;
            for (int dy = 0; dy < kPixelsPerModule; ++dy)
                for (int dx = 0; dx < kPixelsPerModule; ++dx)
                    image.setPixel(px + dx, py + dy, 1);
        }
    }
    const int dotsPerMetre = static_cast<int>(kPixelsPerModule * 1000.0 / kModuleMillimetres + 0.5);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    return image;
}

}  // namespace kelvary::qr
