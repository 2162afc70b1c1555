// Helpers shared by the tests: scratch folders, byte literals, and running the
// built program as a user would.
#pragma once

#include "platform/Variant.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <ostream>

// Failed comparisons show Japanese texts themselves, not their code units.
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }

namespace kelvary::test {

// Bytes from a hex string such as "82 a0 81 7c" (blanks ignored).
QByteArray hexBytes(const char* hex);

// zbarimg options that look for QR symbols only. Now and then a row of a QR
// symbol's modules also scans as a short Interleaved 2 of 5 code, whose digits
// zbarimg --raw would print straight after the QR data; we never print linear
// codes, so such a hit only ever is a false reading.
inline QStringList zbarQrOnly() {
    return {QStringLiteral("-Sdisable"), QStringLiteral("-Sqrcode.enable")};
}

// What zbar reads from an image: the symbol's bytes as they were encoded.
QByteArray zbarDecode(const QString& imagePath);

// What an action raised: the number and description of its VbError, or
// number 0 and no description when it raised none.
struct Raised {
    long number = 0;
    QString description;
};
Raised raised(const std::function<void()>& action);

// Every character of code page 932, as ICU's windows-31j converter decodes
// its one- and two-byte codes (a character with two codes appears twice).
QString cp932Repertoire();

// A file's bytes (empty when it cannot be read), and writing them.
QByteArray readFile(const QString& path);
void writeFile(const QString& path, const QByteArray& bytes);

// A text of a test data file with \n, \r, \t, \s (a blank), \\, \xHH
// (the character U+00HH, or the byte HH where bytes are meant) and \uHHHH read.
QString unescaped(const QString& text);

// The rows of a table file of tests/data (its path relative to that folder):
// one row a line, fields separated by tabs and unescaped; blank lines and
// comment lines ("# " and what follows) left out. Each row starts with its line number.
QList<QStringList> dataTable(const QString& relative);

// A value written in a table cell as kind:text — long:1, integer:1,
// double:1.5, bool:true, text:…, date:2008-04-01, date:2019-05-01T01:00:00,
// currency:0.5 — or null, or empty.
Variant variantCell(const QString& cell);

// The built program folder (build/app), the untouched template of its data
// (build/app-template) and the test data folder (tests/data).
QString appDir();
QString templateDir();
QString testDataDir();

struct ProcessResult {
    int exitCode = -1;
    QString standardOutput;
    QString standardError;
};

// Runs a program with its input closed and KELVARY_HOME unset; a run that
// does not end in time is killed and has exit code -1.
ProcessResult runProgram(const QString& program, const QStringList& arguments, int timeoutMs = 60000,
                         const QString& workingDirectory = QString());

// Runs the built kelvary with the given arguments; a fresh program folder may
// be named with --home among them.
ProcessResult runKelvary(const QStringList& arguments, int timeoutMs = 60000,
                         const QString& workingDirectory = QString());

// A scratch copy of the program folder, so a test may write settings and
// databases without touching the build.
class ScratchHome {
public:
    ScratchHome();
    QString path() const { return dir_.path(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

private:
    QTemporaryDir dir_;
};

// An empty program folder of its own, with a UserData.ini of the given text
// when there is one; the program's folder points at it while it lives.
class ProgramFolder {
public:
    explicit ProgramFolder(const QByteArray& ini = QByteArray());
    ~ProgramFolder();
    ProgramFolder(const ProgramFolder&) = delete;
    ProgramFolder& operator=(const ProgramFolder&) = delete;
    QString path() const { return dir_.path(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

private:
    QTemporaryDir dir_;
};

}  // namespace kelvary::test
