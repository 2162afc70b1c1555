// The output modes of field 4.
#include "startup/OutputMode.h"

namespace kelvary {
namespace {

struct ModeEntry {
    OutputMode mode;
    const char16_t* text;
    bool pdf;
    bool menu;
    int course;
};

constexpr ModeEntry kModes[] = {
    {OutputMode::Print, u"1", false, true, 0},
    {OutputMode::ApplicationPdf, u"2", true, false, 0},
    {OutputMode::SendFileCourse1, u"3", true, true, 1},
    {OutputMode::SendFileCourse3, u"4", true, true, 3},
};

const ModeEntry& entryOf(OutputMode mode) {
    for (const ModeEntry& entry : kModes)
        if (entry.mode == mode) return entry;
    return kModes[0];
}

}  // namespace

std::optional<OutputMode> outputModeFromString(QStringView text) {
    for (const ModeEntry& entry : kModes)
        if (text == QStringView(entry.text)) return entry.mode;
    return std::nullopt;
}

QString toString(OutputMode mode) { return QString::fromUtf16(entryOf(mode).text); }
bool writesPdf(OutputMode mode) { return entryOf(mode).pdf; }
bool showsMenu(OutputMode mode) { return entryOf(mode).menu; }
bool isSendFile(OutputMode mode) { return entryOf(mode).course != 0; }
int sendFileCourse(OutputMode mode) { return entryOf(mode).course; }

QString outputVerb(OutputMode mode) {
    return writesPdf(mode) ? QStringLiteral("出力") : QStringLiteral("印刷");
}

}  // namespace kelvary
