// Version resource of a PE image: DOS header -> PE headers -> resource data
// directory -> resource tree (type, name, language) -> VS_VERSIONINFO ->
// VS_FIXEDFILEINFO. Every number read from the file is an untrusted offset or
// count, so all reads go through one bounds-checked view and all offset
// arithmetic is done in 64 bits, where 32-bit file values cannot overflow.
#include "platform/PeVersion.h"

#include <QFile>
#include <QFileInfo>

namespace kelvary {
namespace {

constexpr quint16 kDosMagic = 0x5A4D;       // "MZ"
constexpr quint32 kPeSignature = 0x4550;    // "PE\0\0"
constexpr quint16 kPe32Magic = 0x10B;
constexpr quint16 kPe32PlusMagic = 0x20B;
constexpr quint32 kResourceDirectory = 2;   // index among the data directories
constexpr quint32 kRtVersion = 16;
constexpr quint32 kVersionInfoId = 1;
constexpr quint32 kHighBit = 0x80000000u;
constexpr quint32 kFixedInfoSignature = 0xFEEF04BDu;
constexpr quint64 kSectionHeaderSize = 40;
constexpr quint64 kFixedInfoSize = 52;

class ImageView {
public:
    explicit ImageView(QByteArrayView bytes) : bytes_(bytes) {}

    bool has(quint64 offset, quint64 length) const {
        const auto size = static_cast<quint64>(bytes_.size());
        return offset <= size && length <= size - offset;
    }
    std::optional<quint16> u16(quint64 offset) const {
        if (!has(offset, 2)) return std::nullopt;
        return quint16(byte(offset) | byte(offset + 1) << 8);
    }
    std::optional<quint32> u32(quint64 offset) const {
        if (!has(offset, 4)) return std::nullopt;
        return quint32(byte(offset)) | quint32(byte(offset + 1)) << 8 | quint32(byte(offset + 2)) << 16 |
               quint32(byte(offset + 3)) << 24;
    }

private:
    quint32 byte(quint64 offset) const { return static_cast<quint8>(bytes_[static_cast<qsizetype>(offset)]); }
    QByteArrayView bytes_;
};

struct Section {
    quint64 virtualAddress;
    quint64 rawSize;
    quint64 rawOffset;
};

class PeImage {
public:
    explicit PeImage(QByteArrayView bytes) : view_(bytes) {}

    std::optional<std::array<quint16, 4>> fileVersion() {
        if (!readHeaders()) return std::nullopt;
        const auto data = versionData();
        if (!data) return std::nullopt;
        return fixedFileVersion(data->first, data->second);
    }

private:
    // Finds the section table and the RVA of the resource directory.
    bool readHeaders() {
        if (view_.u16(0) != kDosMagic) return false;
        const auto peOffset = view_.u32(0x3C);
        if (!peOffset || view_.u32(*peOffset) != kPeSignature) return false;
        const quint64 fileHeader = quint64(*peOffset) + 4;
        const auto sectionCount = view_.u16(fileHeader + 2);
        const auto optionalSize = view_.u16(fileHeader + 16);
        const quint64 optional = fileHeader + 20;
        const auto magic = view_.u16(optional);
        if (!sectionCount || !optionalSize || !magic) return false;
        quint64 countField = 0;
        if (*magic == kPe32Magic) countField = 92;
        else if (*magic == kPe32PlusMagic) countField = 108;
        else return false;
        const quint64 directories = countField + 4;
        const quint64 entryEnd = directories + (kResourceDirectory + 1) * 8;
        const auto directoryCount = view_.u32(optional + countField);
        if (!directoryCount || *directoryCount <= kResourceDirectory || entryEnd > *optionalSize) return false;
        const auto resourceRva = view_.u32(optional + directories + kResourceDirectory * 8);
        if (!resourceRva || *resourceRva == 0) return false;
        resourceRva_ = *resourceRva;
        sectionTable_ = optional + *optionalSize;
        sectionCount_ = *sectionCount;
        return view_.has(sectionTable_, sectionCount_ * kSectionHeaderSize);
    }

    std::optional<Section> section(quint64 index) const {
        const quint64 header = sectionTable_ + index * kSectionHeaderSize;
        const auto address = view_.u32(header + 12);
        const auto rawSize = view_.u32(header + 16);
        const auto rawOffset = view_.u32(header + 20);
        if (!address || !rawSize || !rawOffset) return std::nullopt;
        return Section{*address, *rawSize, *rawOffset};
    }

    // File offset of length bytes at rva, when they lie in one section's
    // data as stored in the file.
    std::optional<quint64> fileOffset(quint64 rva, quint64 length) const {
        for (quint64 i = 0; i < sectionCount_; ++i) {
            const auto s = section(i);
            if (!s || rva < s->virtualAddress) continue;
            const quint64 within = rva - s->virtualAddress;
            if (within >= s->rawSize) continue;
            if (length > s->rawSize - within) return std::nullopt;
            const quint64 offset = s->rawOffset + within;
            if (!view_.has(offset, length)) return std::nullopt;
            return offset;
        }
        return std::nullopt;
    }

    // The OffsetToData field of an entry of the resource directory at
    // directoryRva: the one with the given id, or when fallback is set and
    // there is none, the first entry.
    std::optional<quint32> entry(quint64 directoryRva, std::optional<quint32> id, bool fallback) const {
        const auto directory = fileOffset(directoryRva, 16);
        if (!directory) return std::nullopt;
        const auto named = view_.u16(*directory + 12);
        const auto ids = view_.u16(*directory + 14);
        if (!named || !ids) return std::nullopt;
        const quint64 count = quint64(*named) + *ids;
        const auto entries = fileOffset(directoryRva + 16, count * 8);
        if (!entries || count == 0) return std::nullopt;
        for (quint64 i = 0; id && i < count; ++i) {
            const auto name = view_.u32(*entries + i * 8);
            if (name && !(*name & kHighBit) && *name == *id) return view_.u32(*entries + i * 8 + 4);
        }
        if (id && !fallback) return std::nullopt;
        return view_.u32(*entries + 4);
    }

    std::optional<quint64> subdirectory(std::optional<quint32> target) const {
        if (!target || !(*target & kHighBit)) return std::nullopt;
        return resourceRva_ + (*target & ~kHighBit);
    }

    // File offset and size of the version resource's data.
    std::optional<std::pair<quint64, quint64>> versionData() const {
        const auto names = subdirectory(entry(resourceRva_, kRtVersion, false));
        if (!names) return std::nullopt;
        const auto languages = subdirectory(entry(*names, kVersionInfoId, true));
        if (!languages) return std::nullopt;
        const auto dataEntry = entry(*languages, std::nullopt, true);
        if (!dataEntry || (*dataEntry & kHighBit)) return std::nullopt;
        const auto entryOffset = fileOffset(resourceRva_ + *dataEntry, 16);
        if (!entryOffset) return std::nullopt;
        const auto dataRva = view_.u32(*entryOffset);
        const auto dataSize = view_.u32(*entryOffset + 4);
        if (!dataRva || !dataSize) return std::nullopt;
        const auto data = fileOffset(*dataRva, *dataSize);
        if (!data) return std::nullopt;
        return std::pair{*data, quint64(*dataSize)};
    }

    // VS_VERSIONINFO: length, value length, type, the key L"VS_VERSION_INFO"
    // with its terminator, padding to a 32-bit boundary, then the value.
    std::optional<std::array<quint16, 4>> fixedFileVersion(quint64 block, quint64 size) const {
        static constexpr char16_t key[] = u"VS_VERSION_INFO";
        constexpr quint64 keyChars = sizeof(key) / sizeof(key[0]);  // with the terminator
        constexpr quint64 valueStart = (6 + keyChars * 2 + 3) & ~quint64(3);
        const auto length = view_.u16(block);
        if (!length || *length > size || *length < valueStart + kFixedInfoSize) return std::nullopt;
        for (quint64 i = 0; i < keyChars; ++i) {
            if (view_.u16(block + 6 + i * 2) != quint16(key[i])) return std::nullopt;
        }
        const quint64 value = block + valueStart;
        if (view_.u32(value) != kFixedInfoSignature) return std::nullopt;
        const auto high = view_.u32(value + 8);
        const auto low = view_.u32(value + 12);
        if (!high || !low) return std::nullopt;
        return std::array<quint16, 4>{quint16(*high >> 16), quint16(*high & 0xFFFF), quint16(*low >> 16),
                                      quint16(*low & 0xFFFF)};
    }

    ImageView view_;
    quint64 resourceRva_ = 0;
    quint64 sectionTable_ = 0;
    quint64 sectionCount_ = 0;
};

}  // namespace

std::optional<std::array<quint16, 4>> peFileVersionOfImage(QByteArrayView image) {
    return PeImage(image).fileVersion();
}

std::optional<std::array<quint16, 4>> readPeFileVersion(const QString& path) {
    if (!QFileInfo(path).isFile()) return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() <= 0) return std::nullopt;
    if (const uchar* mapped = file.map(0, file.size())) {
        return peFileVersionOfImage(QByteArrayView(mapped, file.size()));
    }
    const QByteArray bytes = file.readAll();
    return peFileVersionOfImage(bytes);
}

}  // namespace kelvary
