// Symbols as the agency's reader sees them: every image is decoded by zbar and
// must give back the bytes of its .Txt copy, which in turn must be the CP932
// bytes of the payload written out here by hand.
#include "platform/QrSymbol.h"
#include "qr/frmQRCode.h"

#include "QrHome.h"
#include "startup/RunOutcome.h"
#include "platform/Cp932.h"

#include <QImage>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace kelvary {
namespace {

using test::hexBytes;
using test::QrHome;
using test::zbarDecode;

// Renders one payload and checks the files against the expected bytes.
void expectRoundTrip(QrHome& home, const QString& name, const QString& payload, const QByteArray& expected) {
    frmQRCode renderer;
    const QString image = home.temp(name + QStringLiteral(".bmp"));
    renderer.MakeQRCode(image, payload);
    EXPECT_EQ(QrHome::read(image + QStringLiteral(".Txt")), expected) << name.toStdString();
    EXPECT_EQ(zbarDecode(image), expected) << name.toStdString();
}

TEST(QrSymbolRoundTrip, JapaneseTextInCodePage932) {
    QrHome home;
    // ～ 81 60, － 81 7C (CP932, not the JIS mappings), ㈱ 87 8A (NEC row 13),
    // ｱ B1 ｶﾞ B6 DE (half-width katakana, one byte each); the copy ends with
    // the payload's own line end and no other.
    expectRoundTrip(home, QStringLiteral("Marks"), QStringLiteral("1,\"～－㈱ｱｶﾞ\"\r\n"),
                    hexBytes("31 2c 22 81 60 81 7c 87 8a b1 b6 de 22 0d 0a"));
    // 髙 FB FC and ⅰ FA 40 (the IBM rows Windows writes) lie outside Kanji mode; 夋 FA 9F followed by a
    // digit must not be read as the pair 9F 31.
    expectRoundTrip(home, QStringLiteral("Ibm"), QStringLiteral("髙ⅰ夋1漢字"),
                    hexBytes("fb fc fa 40 fa 9f 31 8a bf 8e 9a"));
    EXPECT_TRUE(home.errorPlaces().isEmpty());
}

TEST(QrSymbolRoundTrip, LongKanjiAndMixedRuns) {
    QrHome home;
    QString payload;
    QByteArray expected;
    for (int i = 0; i < 120; ++i) {
        payload += QStringLiteral("株式会社ABC-12,");
        expected += hexBytes("8a 94 8e ae 89 ef 8e d0 41 42 43 2d 31 32 2c");
    }
    expectRoundTrip(home, QStringLiteral("Mixed"), payload, expected);
}

// The sample application's first symbol under a document ID with which a row
// of the symbol's modules also scans as a short linear code.
const QString kApplicationPayload = QStringLiteral(
    "\"[ApplyDoc1]\",\"0000123420261123131214\",7,2\r\n"
    "1,\"株式会社北斗建設\"\r\n"
    "2,\"北海道札幌市中央区北三条西四丁目１番地１\"\r\n"
    "3,\"代表取締役　山本　隆\"\r\n"
    "4,\"経理部長\"\r\n"
    "5,\"田中　和夫\"\r\n"
    "6,\"011-231-4567\"\r\n"
    "7,\"011-231-4568\"\r\n");

struct Segment {
    bool kanji = false;
    QByteArray bytes;
};

// The runs that payload must be laid out in: every full-width character in
// Kanji mode, the quotes, digits, commas and line ends in byte mode.
std::vector<Segment> applicationSegments() {
    return {
        {false, QByteArray("\"[ApplyDoc1]\",\"0000123420261123131214\",7,2\r\n1,\"")},
        {true, hexBytes("8a 94 8e ae 89 ef 8e d0 96 6b 93 6c 8c 9a 90 dd")},
        {false, QByteArray("\"\r\n2,\"")},
        {true, hexBytes("96 6b 8a 43 93 b9 8e 44 96 79 8e 73 92 86 89 9b 8b e6 96 6b"
                        "8e 4f 8f f0 90 bc 8e 6c 92 9a 96 da 82 50 94 d4 92 6e 82 50")},
        {false, QByteArray("\"\r\n3,\"")},
        {true, hexBytes("91 e3 95 5c 8e e6 92 f7 96 f0 81 40 8e 52 96 7b 81 40 97 b2")},
        {false, QByteArray("\"\r\n4,\"")},
        {true, hexBytes("8c 6f 97 9d 95 94 92 b7")},
        {false, QByteArray("\"\r\n5,\"")},
        {true, hexBytes("93 63 92 86 81 40 98 61 95 76")},
        {false, QByteArray("\"\r\n6,\"011-231-4567\"\r\n7,\"011-231-4568\"\r\n")},
    };
}

class BitWriter {
public:
    void put(unsigned value, int count) {
        for (int i = count - 1; i >= 0; --i) bits_.push_back(((value >> i) & 1U) != 0);
    }
    size_t size() const { return bits_.size(); }
    std::vector<unsigned char> codewords() const {
        std::vector<unsigned char> out(bits_.size() / 8);
        for (size_t i = 0; i < out.size() * 8; ++i)
            if (bits_[i]) out[i / 8] |= static_cast<unsigned char>(0x80U >> (i % 8));
        return out;
    }

private:
    std::vector<bool> bits_;
};

// Module (row, column) of a version 10 symbol that belongs to a finder,
// separator, timing or alignment pattern, or to the format or version
// information, and so carries no data.
bool isFunctionModuleV10(int row, int col) {
    const int n = 57;
    if (row <= 8 && (col <= 8 || col >= n - 8)) return true;
    if (row >= n - 8 && col <= 8) return true;
    if (row == 6 || col == 6) return true;
    if (row <= 5 && col >= n - 11 && col <= n - 9) return true;
    if (col <= 5 && row >= n - 11 && row <= n - 9) return true;
    for (int ay : {6, 28, 50})
        for (int ax : {6, 28, 50}) {
            if ((ax == 6 && ay == 6) || (ax == 50 && ay == 6) || (ax == 6 && ay == 50)) continue;
            if (std::abs(row - ay) <= 2 && std::abs(col - ax) <= 2) return true;
        }
    return false;
}

bool maskFlips(int mask, int i, int j) {
    switch (mask) {
    case 0: return (i + j) % 2 == 0;
    case 1: return i % 2 == 0;
    case 2: return j % 3 == 0;
    case 3: return (i + j) % 3 == 0;
    case 4: return (i / 2 + j / 3) % 2 == 0;
    case 5: return (i * j) % 2 + (i * j) % 3 == 0;
    case 6: return ((i * j) % 2 + (i * j) % 3) % 2 == 0;
    default: return ((i + j) % 2 + (i * j) % 3) % 2 == 0;
    }
}

// The 216 data codewords of a version 10 level M symbol read off its modules,
// independently of the encoder: format bits beside the top-left finder, the
// mask they name, the two-column zigzag from the bottom right, and the data
// codewords of the five blocks (4 of 43, 1 of 44) taken back out of their
// interleaving. Empty when the format bits do not say level M.
std::vector<unsigned char> dataCodewordsV10M(const qr::QrSymbol& symbol) {
    static const int formatCells[15][2] = {{8, 0}, {8, 1}, {8, 2}, {8, 3}, {8, 4}, {8, 5}, {8, 7}, {8, 8},
                                           {7, 8}, {5, 8}, {4, 8}, {3, 8}, {2, 8}, {1, 8}, {0, 8}};
    unsigned format = 0;
    for (const auto& cell : formatCells) format = (format << 1) | (symbol.isDark(cell[1], cell[0]) ? 1U : 0U);
    format ^= 0x5412;
    if ((format >> 13) != 0) return {};
    const int mask = static_cast<int>((format >> 10) & 7);

    const int n = symbol.width;
    std::vector<unsigned char> stream;
    unsigned current = 0;
    int filled = 0;
    bool upward = true;
    for (int col = n - 1; col > 0; col -= 2) {
        if (col == 6) --col;
        for (int step = 0; step < n; ++step) {
            const int row = upward ? n - 1 - step : step;
            for (int c : {col, col - 1}) {
                if (isFunctionModuleV10(row, c)) continue;
                current = (current << 1) | ((symbol.isDark(c, row) != maskFlips(mask, row, c)) ? 1U : 0U);
                if (++filled == 8) {
                    stream.push_back(static_cast<unsigned char>(current));
                    current = 0;
                    filled = 0;
                }
            }
        }
        upward = !upward;
    }
    const int blockLengths[5] = {43, 43, 43, 43, 44};
    std::vector<std::vector<unsigned char>> blocks(5);
    size_t k = 0;
    for (int i = 0; i < 44; ++i)
        for (int b = 0; b < 5; ++b)
            if (i < blockLengths[b] && k < stream.size()) blocks[static_cast<size_t>(b)].push_back(stream[k++]);
    std::vector<unsigned char> data;
    for (const auto& block : blocks) data.insert(data.end(), block.begin(), block.end());
    return data;
}

TEST(QrSymbolRoundTrip, ModulesThatAlsoScanAsALinearCodeStillReadAsThePayload) {
    QrHome home;
    QByteArray expected;
    for (const Segment& segment : applicationSegments()) expected += segment.bytes;
    expectRoundTrip(home, QStringLiteral("ApplyDoc1"), kApplicationPayload, expected);
}

// The symbol's bit stream against one written out here by the rules of the
// QR standard: mode indicators 0100 (byte, 16-bit count at version 10) and
// 1000 (Kanji, 10-bit count of characters, 13 bits each), then the
// terminator, zero bits to the codeword boundary and the pad codewords EC 11.
TEST(QrSymbolBits, SegmentsTerminatorAndPaddingOfAnApplicationPayload) {
    BitWriter bits;
    for (const Segment& segment : applicationSegments()) {
        if (segment.kanji) {
            bits.put(0b1000, 4);
            bits.put(static_cast<unsigned>(segment.bytes.size() / 2), 10);
            for (int i = 0; i < segment.bytes.size(); i += 2) {
                unsigned code = (static_cast<unsigned char>(segment.bytes[i]) << 8) |
                                static_cast<unsigned char>(segment.bytes[i + 1]);
                code -= code <= 0x9FFC ? 0x8140 : 0xC140;
                bits.put((code >> 8) * 0xC0 + (code & 0xFF), 13);
            }
        } else {
            bits.put(0b0100, 4);
            bits.put(static_cast<unsigned>(segment.bytes.size()), 16);
            for (char c : segment.bytes) bits.put(static_cast<unsigned char>(c), 8);
        }
    }
    // 110 bytes in six byte runs, 47 characters in five Kanji runs:
    // 6 * 20 + 110 * 8 + 5 * 14 + 47 * 13 bits.
    ASSERT_EQ(bits.size(), 1681u);
    bits.put(0, 4);
    bits.put(0, 3);
    std::vector<unsigned char> expected = bits.codewords();
    ASSERT_EQ(expected.size(), 211u);
    // 211 codewords are more than version 9 at M holds (182); version 10 holds 216.
    for (unsigned char pad : {0xEC, 0x11, 0xEC, 0x11, 0xEC}) expected.push_back(pad);

    const auto symbol = qr::encodeSymbol(cp932Encode(kApplicationPayload));
    ASSERT_TRUE(symbol);
    ASSERT_EQ(symbol->version, 10);
    ASSERT_EQ(symbol->level, qr::EcLevel::M);
    ASSERT_EQ(symbol->width, 57);
    EXPECT_EQ(dataCodewordsV10M(*symbol), expected);
}

TEST(QrSymbolLevels, SmallestVersionAtLevelMAndLOnlyWhenMCannotHold) {
    const auto tiny = qr::encodeSymbol(QByteArray("A"));
    ASSERT_TRUE(tiny);
    EXPECT_EQ(tiny->version, 1);
    EXPECT_EQ(tiny->level, qr::EcLevel::M);
    EXPECT_EQ(tiny->width, 21);

    // Version 40 holds 2331 bytes at M and 2953 at L in byte mode.
    const auto fullM = qr::encodeSymbol(QByteArray(2331, 'x'));
    ASSERT_TRUE(fullM);
    EXPECT_EQ(fullM->version, 40);
    EXPECT_EQ(fullM->level, qr::EcLevel::M);
    // At L version 35 holds 2303 bytes, so 2332 need version 36.
    const auto needsL = qr::encodeSymbol(QByteArray(2332, 'x'));
    ASSERT_TRUE(needsL);
    EXPECT_EQ(needsL->version, 36);
    EXPECT_EQ(needsL->level, qr::EcLevel::L);
    EXPECT_FALSE(qr::encodeSymbol(QByteArray(2954, 'x')));
}

TEST(QrSymbolImage, OneBitBmpWithWholePixelModulesAndQuietZone) {
    QrHome home;
    frmQRCode renderer;
    const QString image = home.temp(QStringLiteral("Bits.bmp"));
    renderer.MakeQRCode(image, QStringLiteral("A"));
    const QByteArray bmp = QrHome::read(image);
    ASSERT_GE(bmp.size(), 54);
    EXPECT_EQ(bmp.left(2), QByteArray("BM"));
    const auto u32 = [&](int offset) { return qFromLittleEndian<quint32>(bmp.constData() + offset); };
    const auto u16 = [&](int offset) { return qFromLittleEndian<quint16>(bmp.constData() + offset); };
    // Version 1: 21 modules and 4 on each side, 4 pixels a module.
    EXPECT_EQ(u32(18), 116u);
    EXPECT_EQ(u32(22), 116u);
    EXPECT_EQ(u16(28), 1);
    // 16000 dots a metre: a module of 4 pixels measures 0.25 mm.
    EXPECT_EQ(u32(38), 16000u);
    // Rows of 116 pixels are stored in 16 bytes: the 12 bits past the last
    // pixel are padding and must be zero, not whatever memory held.
    const quint32 pixels = u32(10);
    ASSERT_EQ(bmp.size(), static_cast<qsizetype>(pixels + 116 * 16));
    for (int row = 0; row < 116; ++row) {
        const auto* line = reinterpret_cast<const uchar*>(bmp.constData() + pixels + row * 16);
        EXPECT_EQ(line[14] & 0x0F, 0) << "row " << row;
        EXPECT_EQ(line[15], 0) << "row " << row;
    }
    const QImage loaded(image);
    ASSERT_FALSE(loaded.isNull());
    // Quiet zone white; the finder's top-left module dark over its 4x4 pixels.
    EXPECT_EQ(loaded.pixel(15, 15), qRgb(255, 255, 255));
    for (int d = 0; d < 4; ++d)
        EXPECT_EQ(loaded.pixel(16 + d, 16 + d), qRgb(0, 0, 0));
}

}  // namespace
}  // namespace kelvary
