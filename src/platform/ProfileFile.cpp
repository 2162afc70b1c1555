// Private-profile files. The file is split into lines that keep their own
// bytes and terminators; a line is decoded only to find out what it is, so a
// write re-encodes just the line it changes or adds and every other byte of
// the file survives, whatever the installation or the user put there.
// Parsing happens on decoded text: CP932 trail bytes include "[" and "]".
#include "platform/ProfileFile.h"

#include "platform/Cp932.h"
#include "platform/VbError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <optional>
#include <vector>

namespace kelvary {
namespace {

// The caller's ANSI buffer is 1024 bytes, one of which takes the terminator.
constexpr long kValueBytes = 1023;
constexpr char kCrLf[] = "\r\n";

enum class LineKind { Blank, Other, Section, Entry };

struct ProfileLine {
    QByteArray text;  // without the terminator
    QByteArray end;   // CR LF, LF, or empty on an unterminated last line
    LineKind kind = LineKind::Other;
    QString name;   // section or key name, blanks trimmed
    QString value;  // entry value, blanks trimmed, quotes kept
};

// The characters the profile functions skip around names and values; the
// full-width blank is text.
bool isBlank(QChar c) {
    switch (c.unicode()) {
    case u' ': case u'\t': case u'\n': case u'\v': case u'\f': case u'\r': case 0x1A: return true;
    default: return false;
    }
}

QString trimBlanks(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin])) ++begin;
    while (end > begin && isBlank(text[end - 1])) --end;
    return text.sliced(begin, end - begin).toString();
}

QString trimLeadingBlanks(QStringView text) {
    qsizetype begin = 0;
    while (begin < text.size() && isBlank(text[begin])) ++begin;
    return text.sliced(begin).toString();
}

char16_t asciiLower(QChar c) {
    const char16_t u = c.unicode();
    return (u >= u'A' && u <= u'Z') ? char16_t(u + (u'a' - u'A')) : u;
}

// Windows folds only the ASCII letters here; full-width letters stay distinct.
bool sameName(QStringView a, QStringView b) {
    if (a.size() != b.size()) return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (asciiLower(a[i]) != asciiLower(b[i])) return false;
    }
    return true;
}

ProfileLine lineOf(QByteArray bytes, QByteArray end) {
    ProfileLine line;
    line.text = std::move(bytes);
    line.end = std::move(end);
    const QString text = trimBlanks(cp932Decode(line.text));
    if (text.isEmpty()) {
        line.kind = LineKind::Blank;
    } else if (text.startsWith(u'[')) {
        const qsizetype close = text.indexOf(u']');
        if (close < 0) return line;  // an unclosed header opens no section
        line.kind = LineKind::Section;
        line.name = trimBlanks(QStringView(text).sliced(1, close - 1));
    } else if (const qsizetype equals = text.indexOf(u'='); equals >= 0) {
        line.kind = LineKind::Entry;
        line.name = trimBlanks(QStringView(text).first(equals));
        line.value = trimBlanks(QStringView(text).sliced(equals + 1));
    }
    return line;
}

ProfileLine makeLine(const QString& text) { return lineOf(cp932Encode(text), QByteArray(kCrLf)); }

std::vector<ProfileLine> splitLines(const QByteArray& bytes) {
    std::vector<ProfileLine> lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        const qsizetype lf = bytes.indexOf('\n', start);
        const qsizetype next = lf < 0 ? bytes.size() : lf + 1;
        qsizetype textEnd = lf < 0 ? bytes.size() : lf;
        if (textEnd > start && bytes[textEnd - 1] == '\r') --textEnd;
        lines.push_back(lineOf(bytes.sliced(start, textEnd - start), bytes.sliced(textEnd, next - textEnd)));
        start = next;
    }
    return lines;
}

QByteArray joinLines(const std::vector<ProfileLine>& lines) {
    QByteArray bytes;
    for (const ProfileLine& line : lines) bytes += line.text + line.end;
    return bytes;
}

// Only the first section of a name counts, as with the Windows functions.
std::optional<std::size_t> findSection(const std::vector<ProfileLine>& lines, const QString& section) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].kind == LineKind::Section && sameName(lines[i].name, section)) return i;
    }
    return std::nullopt;
}

std::size_t sectionEnd(const std::vector<ProfileLine>& lines, std::size_t header) {
    std::size_t i = header + 1;
    while (i < lines.size() && lines[i].kind != LineKind::Section) ++i;
    return i;
}

std::optional<std::size_t> findKey(const std::vector<ProfileLine>& lines, std::size_t header,
                                   const QString& key) {
    const std::size_t end = sectionEnd(lines, header);
    for (std::size_t i = header + 1; i < end; ++i) {
        if (lines[i].kind == LineKind::Entry && sameName(lines[i].name, key)) return i;
    }
    return std::nullopt;
}

QString stripQuotes(const QString& value) {
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.back() == value.front();
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

// Whole characters only: a double-byte character that does not fit is left out.
QString cutToBytes(const QString& text, long limit) {
    if (cp932ByteLength(text) <= limit) return text;
    long used = 0;
    qsizetype i = 0;
    while (i < text.size()) {
        const qsizetype width =
            (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ? 2 : 1;
        const long bytes = cp932ByteLength(text.sliced(i, width));
        if (used + bytes > limit) break;
        used += bytes;
        i += width;
    }
    return text.first(i);
}

QString asReadIntoBuffer(const QString& value) {
    QString text = cutToBytes(value, kValueBytes);
    text.remove(QChar(u'\0'));
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ') --end;
    return text.first(end);
}

VbError writeError(long number, const QString& file) {
    const QString reason = VbError::standardDescription(number);
    return VbError(number, QStringLiteral("%1 ファイル: %2").arg(reason, QDir::toNativeSeparators(file)));
}

QByteArray readForUpdate(const QString& file) {
    const QFileInfo info(file);
    if (!info.absoluteDir().exists()) throw writeError(vberr::PathNotFound, file);
    if (!info.exists()) return {};
    if (!info.isFile()) throw writeError(vberr::PathFileAccess, file);
    if (!info.isWritable()) throw writeError(vberr::PermissionDenied, file);
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) throw writeError(vberr::PermissionDenied, file);
    return in.readAll();
}

void saveWhole(const QString& file, const QByteArray& bytes) {
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly)) {
        const bool denied = out.error() == QFileDevice::PermissionsError ||
                            !QFileInfo(QFileInfo(file).absolutePath()).isWritable();
        throw writeError(denied ? vberr::PermissionDenied : vberr::PathFileAccess, file);
    }
    if (out.write(bytes) != bytes.size() || !out.commit()) {
        out.cancelWriting();
        throw writeError(vberr::PathFileAccess, file);
    }
}

// Puts the entry into the lines; false when it already stands there as asked.
bool putEntry(std::vector<ProfileLine>& lines, const QString& section, const QString& key,
              const QString& value) {
    // A last line may end in a lone CR, which is no line break to the next
    // reading: a line added after it would be glued onto it.
    const auto terminate = [](ProfileLine& line) {
        if (!line.end.endsWith('\n')) line.end = kCrLf;
    };
    const std::optional<std::size_t> header = findSection(lines, section);
    if (!header) {
        if (!lines.empty()) terminate(lines.back());
        lines.push_back(makeLine(u'[' + section + u']'));
        lines.push_back(makeLine(key + u'=' + value));
        return true;
    }
    if (const std::optional<std::size_t> at = findKey(lines, *header, key)) {
        ProfileLine& line = lines[*at];
        if (line.value == value) return false;
        // The file's own spelling of the key stays; the line is written anew.
        line.text = cp932Encode(line.name + u'=' + value);
        line.value = value;
        return true;
    }
    // A new key goes after the section's last non-blank line, so the blank
    // lines that separate it from the next section stay where they were.
    std::size_t insertAt = *header + 1;
    const std::size_t end = sectionEnd(lines, *header);
    for (std::size_t i = *header + 1; i < end; ++i) {
        if (lines[i].kind != LineKind::Blank) insertAt = i + 1;
    }
    terminate(lines[insertAt - 1]);
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(insertAt), makeLine(key + u'=' + value));
    return true;
}

}  // namespace

thread_local ProfileWriteBatch* ProfileWriteBatch::active_ = nullptr;

ProfileWriteBatch* ProfileWriteBatch::forFile(const QString& file) {
    for (ProfileWriteBatch* batch = active_; batch; batch = batch->outer_)
        if (batch->file_ == file) return batch;
    return nullptr;
}

ProfileWriteBatch::ProfileWriteBatch(const QString& file) : outer_(active_), file_(file) {
    active_ = this;
}

ProfileWriteBatch::~ProfileWriteBatch() {
    active_ = outer_;
    try {
        if (changed_) saveWhole(file_, pending_);
    } catch (...) {
        // The error that ended the routine early is the one reported.
    }
}

void ProfileWriteBatch::commit() {
    if (!changed_) return;
    saveWhole(file_, pending_);
    changed_ = false;
}

QString readProfileString(const QString& file, const QString& section, const QString& key,
                          const QString& defaultValue) {
    QByteArray bytes;
    if (const ProfileWriteBatch* batch = ProfileWriteBatch::forFile(file); batch && batch->loaded_) {
        bytes = batch->pending_;
    } else {
        QFile in(file);
        if (!QFileInfo(file).isFile() || !in.open(QIODevice::ReadOnly)) return asReadIntoBuffer(defaultValue);
        bytes = in.readAll();
    }
    const std::vector<ProfileLine> lines = splitLines(bytes);
    const std::optional<std::size_t> header = findSection(lines, trimBlanks(section));
    if (!header) return asReadIntoBuffer(defaultValue);
    const std::optional<std::size_t> at = findKey(lines, *header, trimBlanks(key));
    if (!at) return asReadIntoBuffer(defaultValue);
    return asReadIntoBuffer(stripQuotes(lines[*at].value));
}

void writeProfileString(const QString& file, const QString& section, const QString& key,
                        const QString& value) {
    // The checks of a single write are made for each write of a batch too.
    const QByteArray current = readForUpdate(file);
    ProfileWriteBatch* batch = ProfileWriteBatch::forFile(file);
    std::vector<ProfileLine> lines = splitLines(batch && batch->loaded_ ? batch->pending_ : current);
    if (!putEntry(lines, trimBlanks(section), trimBlanks(key), trimLeadingBlanks(value))) return;
    if (!batch) {
        saveWhole(file, joinLines(lines));
        return;
    }
    batch->pending_ = joinLines(lines);
    batch->loaded_ = true;
    batch->changed_ = true;
}

}  // namespace kelvary
