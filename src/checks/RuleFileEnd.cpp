// Finding where a rule file was cut off. Records follow one another in check
// number order: a header line ":A<number>", the title, the two labels, the
// counts "<terms>件,<target>番" and the terms.
#include "checks/RuleFileEnd.h"

#include "platform/SequentialInput.h"

namespace kelvary {
namespace {

// The record's number when the line is a record header (":A400", any case).
std::optional<int> headerNumber(const QString& line) {
    const QString text = line.trimmed();
    if (!text.startsWith(QStringLiteral(":A"), Qt::CaseInsensitive)) return std::nullopt;
    bool ok = false;
    const int number = text.mid(2).toInt(&ok);
    return ok ? std::optional<int>(number) : std::nullopt;
}

// Reads past the record after its header, so that a title is never taken
// for a header; stops where the file ends.
void skipRecord(SequentialInput& file) {
    for (int line = 0; line < 3; ++line) {
        if (file.eof()) return;
        file.lineInput();
    }
    if (file.eof()) return;
    const QString counts = file.input().text();
    const long terms = counts.left(counts.size() - 1).trimmed().toLong();
    for (long i = 0; i <= terms; ++i) {
        if (file.eof()) return;
        file.input();
    }
}

}  // namespace

std::optional<int> firstRuleCutOff(const QString& path, int first, int last) {
    SequentialInput file(path);
    std::optional<int> lastHeader;
    while (!file.eof()) {
        const std::optional<int> number = headerNumber(file.lineInput());
        if (!number) continue;
        lastHeader = number;
        skipRecord(file);
    }
    // The line break after the last term is not needed: editors and other
    // programs often leave the final one out.
    const int cutOff = !lastHeader || *lastHeader < first ? first : *lastHeader + 1;
    return cutOff <= last ? std::optional<int>(cutOff) : std::nullopt;
}

}  // namespace kelvary
