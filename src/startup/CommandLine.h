// The command line of the program: the four fields a parent program hands
// over (as options, or as its one "/"-separated text) and the batch options.
#pragma once

#include "startup/OutputMode.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kelvary {

struct BatchOptions {
    bool enabled = false;
    QString periods = QStringLiteral("newest");  // newest | all | none | N[,N...]
    QString course;                               // "" (as the menu starts), "1" or "3"
    bool proxy = false;
    bool sendResult = false;
    bool noApplication = false;
    bool noStatements = false;
    bool answerYes = false;
    QString printTo;
};

// The four fields as the options gave them; paths keep their case.
struct CommandFields {
    QString applicationFile;
    QString pdfFile;
    QString agent;
    std::optional<OutputMode> mode;  // none: the parent's text named no known mode
};

struct CommandLine {
    QString home;
    QString applicationFile;  // field 1
    QString pdfFile;          // field 2
    QString agent;            // field 3 ("y" for filing by an agent)
    OutputMode mode = OutputMode::Print;  // field 4
    std::optional<QString> parentText;   // --command-line: split by gCommandGet
    BatchOptions batch;
    bool showHelp = false;
    bool showVersion = false;
    // --layout-proof NAME OUT.pdf: a developer's picture of a layout's fields.
    bool showQtTexts = false;  // --qt-texts
    QString proofLayout;
    QString proofPdf;
};

struct CommandLineResult {
    std::optional<CommandLine> commandLine;
    QString error;  // one line, set when the command line is wrong
};

CommandLineResult parseCommandLine(const QStringList& arguments);
QString commandLineHelp();

// A command line that cannot start a run: the sentence goes to standard
// error and, in a desktop session, which has no terminal to read, into a
// message box as well. Returns the exit status of a wrong command line.
int refuseCommandLine(const QString& message);

// The option fields of this run: what gCommandGet gives when the parent
// program handed no one text.
const CommandFields& optionFields();
void setOptionFields(const CommandFields& fields);

// Batch options of this run, read by the forms that batch mode drives.
const BatchOptions& batchOptions();
void setBatchOptions(const BatchOptions& options);

}  // namespace kelvary
