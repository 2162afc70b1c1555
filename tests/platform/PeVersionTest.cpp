// File versions read from small PE images that the test lays out itself:
// DOS header, PE headers, one .rsrc section with the resource tree
// RT_VERSION -> 1 -> 0x411 and a VS_VERSIONINFO block written out by hand.
// Damaged and truncated copies must be refused, never misread.
#include "platform/PeVersion.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>


namespace kelvary {
namespace {

using Version = std::array<quint16, 4>;
using test::hexBytes;

// Little-endian writer that grows its bytes as needed.
struct Writer {
    QByteArray bytes;
    qsizetype pos = 0;
    Writer& at(qsizetype offset) { return pos = offset, *this; }
    Writer& raw(const QByteArray& data) {
        if (pos + data.size() > bytes.size()) bytes.resize(pos + data.size(), '\0');
        bytes.replace(pos, data.size(), data);
        return pos += data.size(), *this;
    }
    Writer& u16(quint16 v) { return raw(QByteArray(1, char(v & 0xFF)) + char(v >> 8)); }
    Writer& u32(quint32 v) { return u16(quint16(v & 0xFFFF)).u16(quint16(v >> 16)); }
};

// VS_VERSIONINFO with no children: file version 3.1.4.15, product version
// 9.8.7.6 (which must not be the one returned).
QByteArray versionBlock() {
    return hexBytes(
        "5C 00 34 00 00 00"                                   // length 92, value length 52, binary
        "56 00 53 00 5F 00 56 00 45 00 52 00 53 00 49 00"     // L"VS_VERSI"
        "4F 00 4E 00 5F 00 49 00 4E 00 46 00 4F 00 00 00"     // L"ON_INFO\0"
        "00 00"                                               // padding to 32 bits
        "BD 04 EF FE 00 00 01 00"                             // signature, structure 1.0
        "01 00 03 00 0F 00 04 00"                             // file version MS, LS
        "08 00 09 00 06 00 07 00"                             // product version MS, LS
        "3F 00 00 00 00 00 00 00 04 00 04 00 01 00 00 00"     // flags mask, flags, OS, type
        "00 00 00 00 00 00 00 00 00 00 00 00");               // subtype, date
}
constexpr qsizetype kFileVersionInBlock = 48;

constexpr quint32 kPeOffset = 0x80;
constexpr quint32 kOptional = kPeOffset + 24;
constexpr quint32 kRsrcRva = 0x2000;
constexpr quint32 kRsrcFile = 0x200;
constexpr quint32 kNames = 0x18;      // offsets inside .rsrc
constexpr quint32 kLanguages = 0x30;
constexpr quint32 kDataEntry = 0x48;
constexpr quint32 kBlock = 0x58;

struct Layout {
    bool pe32Plus = false;
    bool resourceDirectory = true;
    quint32 resourceType = 16;  // RT_VERSION
    QByteArray block = versionBlock();
};

quint16 optionalHeaderSize(const Layout& layout) { return layout.pe32Plus ? 240 : 224; }
quint32 sectionTable(const Layout& layout) { return kOptional + optionalHeaderSize(layout); }

QByteArray buildPe(const Layout& layout = {}) {
    const auto rsrcSize = quint32(kBlock + layout.block.size());
    const quint32 directories = kOptional + (layout.pe32Plus ? 112 : 96);
    Writer w;
    w.at(0).raw("MZ").at(0x3C).u32(kPeOffset);
    w.at(kPeOffset).raw(QByteArray("PE\0\0", 4));
    w.u16(layout.pe32Plus ? 0x8664 : 0x14C).u16(1).u32(0).u32(0).u32(0);
    w.u16(optionalHeaderSize(layout)).u16(0x0102);
    w.at(kOptional).u16(layout.pe32Plus ? 0x20B : 0x10B);
    w.at(directories - 4).u32(16);  // NumberOfRvaAndSizes
    if (layout.resourceDirectory) w.at(directories + 2 * 8).u32(kRsrcRva).u32(rsrcSize);
    w.at(sectionTable(layout)).raw(QByteArray(".rsrc\0\0\0", 8));
    w.u32(rsrcSize).u32(kRsrcRva).u32(rsrcSize).u32(kRsrcFile);
    w.at(kRsrcFile + 14).u16(1).u32(layout.resourceType).u32(0x80000000u | kNames);
    w.at(kRsrcFile + kNames + 14).u16(1).u32(1).u32(0x80000000u | kLanguages);
    w.at(kRsrcFile + kLanguages + 14).u16(1).u32(0x411).u32(kDataEntry);
    w.at(kRsrcFile + kDataEntry).u32(kRsrcRva + kBlock).u32(quint32(layout.block.size())).u32(0).u32(0);
    w.at(kRsrcFile + kBlock).raw(layout.block);
    return w.bytes;
}

class PeVersionTest : public ::testing::Test {
protected:
    QString save(const QString& name, const QByteArray& bytes) const {
        test::writeFile(dir_.filePath(name), bytes);
        return dir_.filePath(name);
    }

private:
    QTemporaryDir dir_;
};

TEST_F(PeVersionTest, ReadsTheFileVersionOfPe32AndPe32PlusImages) {
    EXPECT_EQ(readPeFileVersion(save("app.exe", buildPe())), (Version{3, 1, 4, 15}));
    Layout wide;
    wide.pe32Plus = true;
    EXPECT_EQ(readPeFileVersion(save("app64.exe", buildPe(wide))), (Version{3, 1, 4, 15}));
}

TEST_F(PeVersionTest, VersionHalvesAreUnsigned) {
    Layout layout;
    layout.block = Writer{versionBlock()}.at(kFileVersionInBlock).u32(0xFFFF0000u).u32(0x0001FFFFu).bytes;
    EXPECT_EQ(peFileVersionOfImage(buildPe(layout)), (Version{65535, 0, 1, 65535}));
}

TEST_F(PeVersionTest, ImagesWithoutAVersionResourceGiveNothing) {
    Layout noResources;
    noResources.resourceDirectory = false;
    EXPECT_EQ(peFileVersionOfImage(buildPe(noResources)), std::nullopt);

    Layout iconsOnly;
    iconsOnly.resourceType = 3;  // RT_ICON
    EXPECT_EQ(peFileVersionOfImage(buildPe(iconsOnly)), std::nullopt);
}

TEST_F(PeVersionTest, EveryTruncationIsRefused) {
    // The version block ends the image, so every shorter copy lacks a part.
    const QByteArray image = buildPe();
    for (qsizetype size = 0; size < image.size(); ++size) {
        EXPECT_EQ(peFileVersionOfImage(image.first(size)), std::nullopt) << "size " << size;
    }
}

TEST_F(PeVersionTest, NoSingleDamagedByteYieldsAnotherVersion) {
    const QByteArray image = buildPe();
    const qsizetype fileVersion = kRsrcFile + kBlock + kFileVersionInBlock;
    for (qsizetype at = 0; at < image.size(); ++at) {
        if (at >= fileVersion && at < fileVersion + 8) continue;
        for (const char value : {'\x00', '\x7F', '\x80', '\xFF'}) {
            QByteArray bytes = image;
            bytes[at] = value;
            const auto version = peFileVersionOfImage(bytes);
            if (version) EXPECT_EQ(*version, (Version{3, 1, 4, 15})) << "byte " << at;
        }
    }
}

}  // namespace
}  // namespace kelvary
