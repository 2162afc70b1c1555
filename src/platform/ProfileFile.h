// Private-profile (INI) files read and written the way the Windows ANSI
// profile functions do it: CP932 text, names matched regardless of ASCII case,
// blanks around names and values ignored, and a write that touches only the
// one line it is about. UserData.ini is kept this way.
#pragma once

#include <QByteArray>
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

// While one lives, the writes to its file (on this thread) are checked and
// applied as above but the file is replaced once, by commit(): a routine that
// writes many keys in a row then costs one replacement of the file (and one
// flush to disk) instead of one per key. Reading the file meanwhile gives the
// entries written so far. What commit() has not saved when the batch goes
// (an error left the routine early) is saved then, as the single writes would
// have saved it already.
class ProfileWriteBatch {
public:
    explicit ProfileWriteBatch(const QString& file);
    ~ProfileWriteBatch();
    ProfileWriteBatch(const ProfileWriteBatch&) = delete;
    ProfileWriteBatch& operator=(const ProfileWriteBatch&) = delete;

    // Saves the entries written so far; throws VbError as writeProfileString does.
    void commit();

private:
    // The innermost batch of this thread for the file; null when none.
    static ProfileWriteBatch* forFile(const QString& file);
    static thread_local ProfileWriteBatch* active_;

    ProfileWriteBatch* outer_;
    QString file_;
    QByteArray pending_;
    bool loaded_ = false;
    bool changed_ = false;
    friend void writeProfileString(const QString&, const QString&, const QString&, const QString&);
    friend QString readProfileString(const QString&, const QString&, const QString&, const QString&);
};

}  // namespace kelvary
