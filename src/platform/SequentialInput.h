// SequentialInput: a text file opened "For Input" the way the VB runtime read
// files written by its Write # statement. Input reads one comma- or
// line-delimited field into a Variant; LineInput reads one whole line. The
// file is CP932 text; it is read and checked completely when it is opened,
// so a binary file, a file in another character code or a file cut off in
// the middle of a character is refused before anything of it is used.
#pragma once

#include "platform/Variant.h"

#include <QString>

namespace kelvary {

// No text file the program reads comes near this size; a larger one is
// refused instead of read.
inline constexpr qint64 kLargestTextFile = 16 * 1024 * 1024;

// What a path names, following symbolic links.
enum class FileKind { Missing, Regular, Folder, Fifo, Socket, Device, DanglingLink };
FileKind fileKindOf(const QString& path);
// The kind in words for a message ("フォルダー", "デバイス" ...).
QString fileKindName(FileKind kind);

class SequentialInput {
public:
    // Opens and decodes the file. Raises VbError: 75 for an empty path or
    // anything but a regular file (a folder, FIFO, device), 53 for a missing
    // file, 7 for one larger than kLargestTextFile, 70 for one that cannot be read, 62 for
    // an empty file or one cut off inside a character, 54 for a binary file
    // or one that is not CP932 text (UTF-8 Japanese, for example).
    explicit SequentialInput(const QString& path);

    // True when every character has been read (VB EOF()).
    bool eof() const { return position_ >= text_.size(); }

    // One field, as Input # reads it into a Variant:
    //   "text"            String (commas and line breaks inside kept)
    //   12, -3.5, 1E3     Long when integral and in range, otherwise Double
    //   #2008-04-01#      Date (a time "#2008-04-01 10:20:30#" is kept)
    //   #NULL#            Null
    //   #TRUE#, #FALSE#   Boolean
    //   nothing           Empty (two commas in a row, a blank line)
    //   anything else     String, leading and trailing blanks removed
    // Raises VbError 62 when the end of the file is met before the field.
    Variant input();

    // The rest of the current line without its line break (Line Input #).
    // Raises VbError 62 at the end of the file.
    QString lineInput();

    // The line, counted from 1, at which the next read begins.
    int lineNumber() const;

private:
    QChar peek() const { return text_.at(position_); }
    bool atLineBreak() const;
    void skipLineBreak();
    void skipBlanks();
    void skipToDelimiter();
    void raiseInputPastEnd() const;

    QString path_;
    QString text_;
    qsizetype position_ = 0;
    mutable qsizetype countedTo_ = 0;
    mutable int countedLines_ = 0;
};

}  // namespace kelvary
