// Reading of sequential text files the way VB's Input # and Line Input # did.
// The parent program writes its application data file with Write #, so the
// field forms it produces (quoted texts, bare numbers, #...# dates and
// keywords) are the ones recognised here. Line breaks may be CR LF, CR or LF.
#include "platform/SequentialInput.h"

#include "platform/Cp932.h"
#include "platform/VbError.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

#include <limits>

#include <sys/stat.h>

namespace kelvary {
namespace {

QString quoted(const QString& path) { return QStringLiteral("「") + path + QStringLiteral("」"); }

QString tooLargeMessage(const QString& path) {
    return QStringLiteral("ファイル") + quoted(path) + QStringLiteral("は大きすぎます。読み込めるのは ") +
           QString::number(kLargestTextFile / (1024 * 1024)) + QStringLiteral(" MB までです。");
}

bool isBlank(QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); }

bool isLeadByte(unsigned char byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }

// A file saved as UTF-8 by a modern editor: a byte-order mark, or non-ASCII
// bytes that all form valid UTF-8 sequences. Japanese CP932 text practically
// never does, because its lead bytes 0x81-0x9F cannot begin a UTF-8 sequence.
bool looksLikeUtf8(const QByteArray& bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF")) return true;
    bool hasHighByte = false;
    for (const char byte : bytes) {
        if (static_cast<unsigned char>(byte) >= 0x80) {
            hasHighByte = true;
            break;
        }
    }
    if (!hasHighByte) return false;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = utf8.decode(bytes);
    return !utf8.hasError();
}

QByteArray readAllBytes(const QString& path) {
    if (path.isEmpty())
        throw VbError(vberr::PathFileAccess, QStringLiteral("ファイル名が指定されていません。"));
    // Asked before the file is opened: opening a FIFO waits for a writer,
    // and a device such as /dev/zero never ends.
    const FileKind kind = fileKindOf(path);
    if (kind == FileKind::Missing)
        throw VbError(vberr::FileNotFound, QStringLiteral("ファイル") + quoted(path) +
                                               QStringLiteral("が見つかりません。"));
    if (kind != FileKind::Regular)
        throw VbError(vberr::PathFileAccess, quoted(path) + QStringLiteral("は") + fileKindName(kind) +
                                                QStringLiteral("です。ファイルを指定してください。"));
    const qint64 size = QFileInfo(path).size();
    if (size > kLargestTextFile) throw VbError(vberr::OutOfMemory, tooLargeMessage(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw VbError(vberr::PermissionDenied, QStringLiteral("ファイル") + quoted(path) +
                                                   QStringLiteral("を読み込めません。(") +
                                                   file.errorString() + QStringLiteral(")"));
    // Bounded even when the file grows while it is read. A read of the
    // largest size would set that much memory aside for a file of a few lines.
    QByteArray bytes = file.read(size + 1);
    if (bytes.size() > size) bytes += file.read(kLargestTextFile + 1 - bytes.size());
    if (bytes.size() > kLargestTextFile) throw VbError(vberr::OutOfMemory, tooLargeMessage(path));
    if (file.error() != QFileDevice::NoError)
        throw VbError(vberr::PermissionDenied, QStringLiteral("ファイル") + quoted(path) +
                                                   QStringLiteral("を読み込めません。(") +
                                                   file.errorString() + QStringLiteral(")"));
    return bytes;
}

QString decodeText(const QString& path, const QByteArray& bytes) {
    const QString file = QStringLiteral("ファイル") + quoted(path);
    if (bytes.isEmpty()) throw VbError(vberr::InputPastEnd, file + QStringLiteral("は空です。"));
    if (bytes.contains('\0'))
        throw VbError(vberr::BadFileMode,
                      file + QStringLiteral("はテキストファイルではありません。(バイナリデータが含まれています)"));
    if (looksLikeUtf8(bytes))
        throw VbError(vberr::BadFileMode,
                      file + QStringLiteral("の文字コードが Shift_JIS (CP932) ではありません。"
                                            "UTF-8 で保存されたファイルは読み込めません。"));
    QString text;
    if (cp932DecodeStrict(bytes, text)) return text;
    QString shorter;
    if (isLeadByte(static_cast<unsigned char>(bytes.back())) && cp932DecodeStrict(bytes.chopped(1), shorter))
        throw VbError(vberr::InputPastEnd,
                      file + QStringLiteral("は途中で切れています。(最後の文字が不完全です)"));
    throw VbError(vberr::BadFileMode,
                  file + QStringLiteral("の文字コードが Shift_JIS (CP932) ではありません。"
                                        "読み込めない文字が含まれています。"));
}

// Long when the text is a whole number that fits, Double otherwise; Empty
// when it is no number at all.
Variant numberOf(const QString& text) {
    static const QRegularExpression number(
        QStringLiteral("^[+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?$"));
    static const QRegularExpression wholeNumber(QStringLiteral("^[+-]?\\d+$"));
    if (!number.match(text).hasMatch()) return {};
    if (wholeNumber.match(text).hasMatch()) {
        bool ok = false;
        const qlonglong value = text.toLongLong(&ok);
        if (ok && value >= std::numeric_limits<std::int32_t>::min() &&
            value <= std::numeric_limits<std::int32_t>::max())
            return Variant::fromLong(static_cast<std::int32_t>(value));
    }
    return Variant(text.toDouble());
}

// The inside of a #...# field: a date, a date and time, a time, or a keyword.
// Anything else is no such field and stays text.
bool hashValueOf(const QString& inside, Variant& out) {
    const QString upper = inside.trimmed().toUpper();
    if (upper == QLatin1String("NULL")) {
        out = Variant::null();
        return true;
    }
    if (upper == QLatin1String("TRUE") || upper == QLatin1String("FALSE")) {
        out = Variant(upper == QLatin1String("TRUE"));
        return true;
    }
    static const QRegularExpression dateTime(QStringLiteral(
        "^(?:(\\d{4})-(\\d{1,2})-(\\d{1,2}))?\\s*(?:(\\d{1,2}):(\\d{2})(?::(\\d{2}))?)?$"));
    const QRegularExpressionMatch m = dateTime.match(upper);
    if (!m.hasMatch() || upper.isEmpty()) return false;
    VbDate value{QDate(1899, 12, 30), 0};
    if (m.capturedLength(1) > 0) {
        value.date = QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
        if (!value.date.isValid()) return false;
    }
    if (m.capturedLength(4) > 0) {
        const int h = m.captured(4).toInt();
        const int n = m.captured(5).toInt();
        const int s = m.capturedLength(6) > 0 ? m.captured(6).toInt() : 0;
        if (h > 23 || n > 59 || s > 59) return false;
        value.secondsOfDay = h * 3600 + n * 60 + s;
    }
    out = Variant(value);
    return true;
}

Variant unquotedValue(const QString& raw) {
    if (raw.size() >= 2 && raw.front() == QLatin1Char('#') && raw.back() == QLatin1Char('#')) {
        Variant value;
        if (hashValueOf(raw.mid(1, raw.size() - 2), value)) return value;
        return Variant(raw);
    }
    Variant number = numberOf(raw);
    if (!number.isEmpty()) return number;
    return Variant(raw);
}

}  // namespace

FileKind fileKindOf(const QString& path) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0) {
        struct stat link {};
        return ::lstat(QFile::encodeName(path).constData(), &link) == 0 ? FileKind::DanglingLink : FileKind::Missing;
    }
    if (S_ISREG(st.st_mode)) return FileKind::Regular;
    if (S_ISDIR(st.st_mode)) return FileKind::Folder;
    if (S_ISFIFO(st.st_mode)) return FileKind::Fifo;
    if (S_ISSOCK(st.st_mode)) return FileKind::Socket;
    return FileKind::Device;
}

QString fileKindName(FileKind kind) {
    switch (kind) {
    case FileKind::Regular: return QStringLiteral("ファイル");
    case FileKind::Folder: return QStringLiteral("フォルダー");
    case FileKind::Fifo: return QStringLiteral("名前付きパイプ (FIFO)");
    case FileKind::Socket: return QStringLiteral("ソケット");
    case FileKind::Device: return QStringLiteral("デバイス");
    case FileKind::DanglingLink: return QStringLiteral("リンク先のないシンボリックリンク");
    case FileKind::Missing: break;
    }
    return QStringLiteral("存在しないファイル");
}

SequentialInput::SequentialInput(const QString& path) : path_(path), text_(decodeText(path, readAllBytes(path))) {}

bool SequentialInput::atLineBreak() const {
    return !eof() && (peek() == QLatin1Char('\r') || peek() == QLatin1Char('\n'));
}

void SequentialInput::skipLineBreak() {
    if (eof()) return;
    if (peek() == QLatin1Char('\r')) {
        ++position_;
        if (!eof() && peek() == QLatin1Char('\n')) ++position_;
    } else if (peek() == QLatin1Char('\n')) {
        ++position_;
    }
}

void SequentialInput::skipBlanks() {
    while (!eof() && isBlank(peek())) ++position_;
}

// After a quoted text: whatever stands before the next delimiter is dropped,
// and the delimiter itself is consumed.
void SequentialInput::skipToDelimiter() {
    while (!eof() && peek() != QLatin1Char(',') && !atLineBreak()) ++position_;
    if (eof()) return;
    if (peek() == QLatin1Char(','))
        ++position_;
    else
        skipLineBreak();
}

void SequentialInput::raiseInputPastEnd() const {
    throw VbError(vberr::InputPastEnd, QStringLiteral("ファイル") + quoted(path_) +
                                           QStringLiteral("にこれ以上データがありません。"
                                                          "(ファイルが途中で切れている可能性があります)"));
}

Variant SequentialInput::input() {
    skipBlanks();
    if (eof()) raiseInputPastEnd();
    if (peek() == QLatin1Char('"')) {
        const qsizetype close = text_.indexOf(QLatin1Char('"'), position_ + 1);
        if (close < 0) {
            position_ = text_.size();
            raiseInputPastEnd();
        }
        const QString value = text_.mid(position_ + 1, close - position_ - 1);
        position_ = close + 1;
        skipToDelimiter();
        return Variant(value);
    }
    if (atLineBreak()) {
        skipLineBreak();
        return {};
    }
    if (peek() == QLatin1Char(',')) {
        ++position_;
        return {};
    }
    const qsizetype start = position_;
    while (!eof() && peek() != QLatin1Char(',') && !atLineBreak()) ++position_;
    QString raw = text_.mid(start, position_ - start);
    while (!raw.isEmpty() && isBlank(raw.back())) raw.chop(1);
    if (!eof()) {
        if (peek() == QLatin1Char(','))
            ++position_;
        else
            skipLineBreak();
    }
    return unquotedValue(raw);
}

int SequentialInput::lineNumber() const {
    // Counted on from where it was last asked, since reads only go forward.
    for (; countedTo_ < position_ && countedTo_ < text_.size(); ++countedTo_) {
        const QChar c = text_.at(countedTo_);
        const bool crLf = c == QLatin1Char('\r') && countedTo_ + 1 < text_.size() &&
                          text_.at(countedTo_ + 1) == QLatin1Char('\n');
        if (c == QLatin1Char('\n') || (c == QLatin1Char('\r') && !crLf)) ++countedLines_;
    }
    return countedLines_ + 1;
}

QString SequentialInput::lineInput() {
    if (eof()) raiseInputPastEnd();
    const qsizetype start = position_;
    while (!eof() && !atLineBreak()) ++position_;
    const QString line = text_.mid(start, position_ - start);
    skipLineBreak();
    return line;
}

}  // namespace kelvary
