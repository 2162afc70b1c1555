// Finding where a rule file was cut off. Records follow one another in check
// number order: a header line ":A<number>", the title, the two labels, the
// counts "<terms>件,<target>番" and the terms.
#include "checks/RuleFileEnd.h"

#include "platform/SequentialInput.h"

#include <QFile>

namespace kelvary {
namespace {

bool endsWithLineBreak(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0) return false;
    file.seek(file.size() - 1);
    const QByteArray last = file.read(1);
    return last == "\n" || last == "\r";
}

// The record's number when the line is a record header (":A400", any case).
std::optional<int> headerNumber(const QString& line) {
    const QString text = line.trimmed();
    if (!text.startsWith(QStringLiteral(":A"), Qt::CaseInsensitive)) return std::nullopt;
    bool ok = false;
    const int number = text.mid(2).toInt(&ok);
    return ok ? std::optional<int>(number) : std::nullopt;
}

// Reads the record after its header; false when the file ends inside it.
bool readWholeRecord(SequentialInput& file) {
    for (int line = 0; line < 3; ++line) {
        if (file.eof()) return false;
        file.lineInput();
    }
    if (file.eof()) return false;
    const QString counts = file.input().text();
    const long terms = counts.left(counts.size() - 1).trimmed().toLong();
    if (file.eof()) return false;
    file.input();
    for (long i = 0; i < terms; ++i) {
        if (file.eof()) return false;
        file.input();
    }
    return true;
}

}  // namespace

std::optional<int> firstRuleCutOff(const QString& path, int first, int last) {
    SequentialInput file(path);
    std::optional<int> lastHeader;
    bool lastWhole = false;
    while (!file.eof()) {
        const std::optional<int> number = headerNumber(file.lineInput());
        if (!number) continue;
        lastHeader = number;
        lastWhole = readWholeRecord(file);
    }
    int cutOff = last + 1;
    if (!lastHeader || *lastHeader < first) cutOff = first;
    else if (!lastWhole) cutOff = *lastHeader + 1;
    else if (!endsWithLineBreak(path)) cutOff = *lastHeader;
    else cutOff = *lastHeader + 1;
    return cutOff <= last ? std::optional<int>(cutOff) : std::nullopt;
}

}  // namespace kelvary
