// QR symbols of CP932 bytes, through libqrencode: Kanji mode wherever a
// character's two bytes allow it and byte mode elsewhere, error correction
// M (L only when M cannot hold the data), the smallest version that fits, a
// quiet zone of four modules, as a black-and-white image. A reader decodes
// the bytes as CP932, so the bytes are what must survive.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>
#include <vector>

namespace kelvary::qr {

// Every module is this many pixels, and the image declares a resolution at
// which a module measures kModuleMillimetres; frames of the QR pages must be
// at least (width in modules) x kModuleMillimetres wide so that scaling to
// the frame never shrinks a module below that. The largest symbol (version
// 40 with its quiet zone) is 185 modules, 46.25 mm.
inline constexpr int kPixelsPerModule = 4;
inline constexpr double kModuleMillimetres = 0.25;
inline constexpr int kQuietZoneModules = 4;

enum class EcLevel { L, M };

struct QrSymbol {
    int version = 0;
    EcLevel level = EcLevel::M;
    int width = 0;                    // modules per side, quiet zone excluded
    std::vector<unsigned char> dark;  // width * width, row by row, 1 = dark
    bool isDark(int x, int y) const { return dark[static_cast<size_t>(y * width + x)] != 0; }
};

// The smallest symbol that holds the bytes, or nothing when no version of
// level M or L can.
std::optional<QrSymbol> encodeSymbol(const QByteArray& cp932);

// The symbol as a 1-bit image with its quiet zone, kPixelsPerModule per module.
QImage symbolImage(const QrSymbol& symbol);

}  // namespace kelvary::qr
