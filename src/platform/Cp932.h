// CP932 (Windows-31J), the Japanese ANSI code page of the files and payloads
// this program exchanges. Plain Shift_JIS tables map U+FF0D, U+FF5E, U+2225
// and the NEC extensions differently, so everything goes through ICU's
// "windows-31j" converter.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace kelvary {

// Characters outside CP932 become "?", as Windows' conversion does.
QByteArray cp932Encode(const QString& text);
// The characters of the text, each once, that CP932 cannot carry (that
// cp932Encode turns into "?"); empty when it carries them all.
QStringList cp932Uncarriable(const QString& text);
QString cp932Decode(const QByteArray& bytes);
// Length in CP932 bytes: a full-width character counts 2.
long cp932ByteLength(const QString& text);
// False when the bytes are not valid CP932 (a UTF-8 file, say).
bool cp932DecodeStrict(const QByteArray& bytes, QString& out);

}  // namespace kelvary
