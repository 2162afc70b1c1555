// Private-profile (INI) files read and written the way the Windows ANSI
// profile functions do it: CP932 text, names matched regardless of ASCII case,
// blanks around names and values ignored, and a write that touches only the
// one line it is about. UserData.ini is kept this way.
#pragma once

#include <QString>

namespace kelvary {

// The value of key in section of file, as a 1024-byte ANSI buffer would
// receive it: at most 1023 CP932 bytes, NULs dropped, trailing blanks cut.
// A missing file, section or key gives the default.
QString readProfileString(const QString& file, const QString& section, const QString& key,
                          const QString& defaultValue = {});

// Sets key in section of file to value, creating the file, the section or the
// key as needed; every other line keeps its bytes. The file is replaced as a
// whole or not at all. Throws VbError when the file cannot be written.
void writeProfileString(const QString& file, const QString& section, const QString& key,
                        const QString& value);

}  // namespace kelvary
