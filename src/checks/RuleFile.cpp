// Reading the sum rules. The counts are written with a unit character after
// each number ("11件"), so the last character of each field is dropped before
// the number is read; a field that is no number counts as 0.
#include "checks/RuleFile.h"

#include "platform/VbError.h"

namespace kelvary {
namespace {

long numberWithoutLastCharacter(SequentialInput& file) {
    const QString text = file.input().text();
    return text.left(text.size() - 1).trimmed().toLong();
}

}  // namespace

void seekSumRule(SequentialInput& file, const QString& key) {
    const QString header = QStringLiteral(":") + key.toLower();
    while (true) {
        if (file.eof()) throw VbError(vberr::InputPastEnd, QStringLiteral("レコード :") + key + QStringLiteral(" がありません"));
        if (file.lineInput().trimmed().toLower() == header) return;
    }
}

SumRule readSumRule(SequentialInput& file) {
    SumRule rule;
    rule.title = file.lineInput();
    rule.sumLabel = file.lineInput();
    rule.targetLabel = file.lineInput();
    rule.termCount = numberWithoutLastCharacter(file);
    rule.target = static_cast<std::int32_t>(numberWithoutLastCharacter(file));
    for (long i = 0; i < rule.termCount; ++i) {
        if (file.eof()) {
            rule.cutShort = true;
            break;
        }
        rule.terms.push_back(file.input().toLong());
    }
    return rule;
}

}  // namespace kelvary
