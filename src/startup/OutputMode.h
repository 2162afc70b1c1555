// What field 4 of the command line asks for, and what each answer means for
// the run: paper or PDF, the print menu or none, the send-file dialog with
// its course. The text is read once, where the command line is taken apart;
// everything after asks the value.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace kelvary {

enum class OutputMode {
    Print,            // "1": preview or printer, after the print menu
    ApplicationPdf,   // "2": the application form alone, to PDF, no menu
    SendFileCourse1,  // "3": the send file of course 1, to PDF
    SendFileCourse3,  // "4": the send file of course 3, to PDF
};

// Exactly "1" to "4"; anything else is no mode this program knows.
std::optional<OutputMode> outputModeFromString(QStringView text);
// The digit the mode is written as on the command line.
QString toString(OutputMode mode);

bool writesPdf(OutputMode mode);
// Whether the run asks the user through the print menu before any output.
bool showsMenu(OutputMode mode);
bool isSendFile(OutputMode mode);
// The service course a send file is made for; 0 for the other modes.
int sendFileCourse(OutputMode mode);
// The verb of the run's messages: "印刷" on paper, "出力" to a file.
QString outputVerb(OutputMode mode);

}  // namespace kelvary
