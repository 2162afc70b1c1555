// CP932 conversions through ICU's "windows-31j" converter (ibm-943_P15A-2003,
// Microsoft's table). One converter per thread and purpose stays open for the
// life of the thread: byte lengths are asked for once per field of every
// payload, and opening a converter each time would dominate the run.
#include "platform/Cp932.h"

#include "platform/VbError.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <memory>

namespace kelvary {
namespace {

// What Windows puts in place of a character the code page lacks, in each direction.
constexpr char kNarrowDefault = '?';
constexpr UChar kWideDefault = 0x30FB;  // KATAKANA MIDDLE DOT, CP932's Unicode default

// Windows' best fit also knows these three, which ICU's table keeps only for
// the other direction; every other JIS-style variant (U+301C, U+2212, U+2016,
// U+2014, U+00A5) is a fallback of the ICU table itself.
QString withBestFitSigns(const QString& text) {
    QString result = text;
    result.replace(QChar(0x00A2), QChar(0xFFE0));  // ¢ → ￠
    result.replace(QChar(0x00A3), QChar(0xFFE1));  // £ → ￡
    result.replace(QChar(0x00AC), QChar(0xFFE2));  // ¬ → ￢
    return result;
}

void substituteWideDefault(const void*, UConverterToUnicodeArgs* args, const char*, int32_t,
                           UConverterCallbackReason reason, UErrorCode* err) {
    if (reason > UCNV_IRREGULAR) return;  // reset, close, clone: nothing to write
    *err = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(args, &kWideDefault, 1, 0, err);
}

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using ConverterPtr = std::unique_ptr<UConverter, ConverterCloser>;

enum class Decoding { Lenient, Strict };

ConverterPtr openConverter(Decoding decoding) {
    UErrorCode status = U_ZERO_ERROR;
    ConverterPtr converter(ucnv_open("windows-31j", &status));
    if (U_FAILURE(status)) {
        throw VbError(vberr::InternalError,
                      QStringLiteral("文字コード変換 (windows-31j) を開けません: %1")
                          .arg(QString::fromLatin1(u_errorName(status))));
    }
    ucnv_setFallback(converter.get(), true);
    ucnv_setSubstChars(converter.get(), &kNarrowDefault, 1, &status);
    if (decoding == Decoding::Strict) {
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                            &status);
    } else {
        ucnv_setToUCallBack(converter.get(), substituteWideDefault, nullptr, nullptr, nullptr,
                            &status);
    }
    if (U_FAILURE(status)) {
        throw VbError(vberr::InternalError,
                      QStringLiteral("文字コード変換を設定できません: %1")
                          .arg(QString::fromLatin1(u_errorName(status))));
    }
    return converter;
}

UConverter* converter(Decoding decoding) {
    thread_local ConverterPtr lenient;
    thread_local ConverterPtr strict;
    ConverterPtr& slot = decoding == Decoding::Strict ? strict : lenient;
    if (!slot) slot = openConverter(decoding);
    ucnv_reset(slot.get());
    return slot.get();
}

const UChar* utf16(const QString& text) { return reinterpret_cast<const UChar*>(text.utf16()); }

// Decodes with the given converter; false when its callback stopped the conversion.
bool decodeWith(UConverter* cnv, const QByteArray& bytes, QString& out) {
    out.clear();
    if (bytes.isEmpty()) return true;
    // A CP932 byte never yields more than one UTF-16 unit.
    QString buffer(bytes.size(), Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        ucnv_toUChars(cnv, reinterpret_cast<UChar*>(buffer.data()), static_cast<int32_t>(buffer.size()),
                      bytes.constData(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) return false;
    buffer.truncate(length);
    out = std::move(buffer);
    return true;
}

}  // namespace

QByteArray cp932Encode(const QString& text) {
    if (text.isEmpty()) return {};
    const QString source = withBestFitSigns(text);
    UConverter* cnv = converter(Decoding::Lenient);
    // At most two bytes per UTF-16 unit; a surrogate pair becomes one "?".
    QByteArray bytes(source.size() * 2, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_fromUChars(cnv, bytes.data(), static_cast<int32_t>(bytes.size()),
                                           utf16(source), static_cast<int32_t>(source.size()), &status);
    if (U_FAILURE(status)) {
        throw VbError(vberr::InternalError,
                      QStringLiteral("CP932 に変換できません: %1")
                          .arg(QString::fromLatin1(u_errorName(status))));
    }
    bytes.truncate(length);
    return bytes;
}

QStringList cp932Uncarriable(const QString& text) {
    QStringList found;
    // Most texts are carried whole: one conversion tells, without a
    // conversion per character.
    if (cp932Encode(text).count('?') == text.count(QLatin1Char('?'))) return found;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QString character = text.mid(i, length);
        i += length - 1;
        if (character != QLatin1String("?") && cp932Encode(character) == "?" && !found.contains(character))
            found << character;
    }
    return found;
}

QString cp932Decode(const QByteArray& bytes) {
    QString text;
    if (!decodeWith(converter(Decoding::Lenient), bytes, text)) {
        throw VbError(vberr::InternalError, QStringLiteral("CP932 から変換できません。"));
    }
    return text;
}

long cp932ByteLength(const QString& text) {
    if (text.isEmpty()) return 0;
    const QString source = withBestFitSigns(text);
    UErrorCode status = U_ZERO_ERROR;
    // Preflight: ICU counts the bytes without a buffer.
    const int32_t length = ucnv_fromUChars(converter(Decoding::Lenient), nullptr, 0, utf16(source),
                                           static_cast<int32_t>(source.size()), &status);
    if (status != U_BUFFER_OVERFLOW_ERROR && U_FAILURE(status)) {
        throw VbError(vberr::InternalError,
                      QStringLiteral("CP932 のバイト数を数えられません: %1")
                          .arg(QString::fromLatin1(u_errorName(status))));
    }
    return length;
}

bool cp932DecodeStrict(const QByteArray& bytes, QString& out) {
    if (decodeWith(converter(Decoding::Strict), bytes, out)) return true;
    out.clear();
    return false;
}

}  // namespace kelvary
