// kelvary: the command-line front of the program. It parses the options,
// prepares the program folder, the window system and the user-interface port,
// and hands over to Main.
#include "platform/AppObject.h"
#include "platform/Fonts.h"
#include "platform/LayoutProof.h"
#include "platform/VbError.h"
#include "startup/ApplicationFileDialog.h"
#include "startup/BatchUserInterface.h"
#include "startup/CommandLine.h"
#include "startup/JapaneseTranslations.h"
#include "startup/QtUserInterface.h"
#include "startup/RunOutcome.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/ProgramFolder.h"
#include "startup/RunFiles.h"
#include "startup/mdlFunctionStandard.h"
#include "startup/mdlSubMain.h"

#include <QApplication>
#include <QFont>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

#include <cstdio>
#include <memory>

namespace {

QStringList argumentsOf(int argc, char** argv) {
    QStringList list;
    for (int i = 0; i < argc; ++i) list << QString::fromLocal8Bit(argv[i]);
    return list;
}

void print(FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

// The offscreen platform of batch mode remarks on every window it cannot
// raise or resize; those remarks would bury the transcript.
void quietPlatformNotices(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    if (message.startsWith(QLatin1String("This plugin does not support")) ||
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR")))
        return;
    print(stderr, qFormatLogMessage(type, context, message) + QLatin1Char('\n'));
}

bool displayAvailable() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// The program folder named by --home or KELVARY_HOME; empty when neither names one.
QString namedFolder(const kelvary::CommandLine& cl) {
    return cl.home.isEmpty() ? qEnvironmentVariable("KELVARY_HOME") : cl.home;
}

// A developer's proof of a layout: every field shows its own name.
int writeProof(int argc, char** argv, const kelvary::CommandLine& cl) {
    using namespace kelvary;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietPlatformNotices);
    QApplication application(argc, argv);
    installFontSubstitutions();
    app::setPath(namedFolder(cl));
    setUserInterface(std::make_unique<BatchUserInterface>(false));
    try {
        writeLayoutProof(app::path() + QStringLiteral("/PrintFile/") + cl.proofLayout, cl.proofPdf);
    } catch (const VbError& e) {
        print(stderr, QStringLiteral("kelvary: %1\n").arg(e.description()));
        return ExitError;
    }
    return ExitOutput;
}

// The folder named by --home or KELVARY_HOME, else the program's own, or
// for an installed copy the user's folder made ready from it. Empty when
// that folder cannot be used; the user has then been told why.
QString workingFolder(const kelvary::CommandLine& cl) {
    using namespace kelvary;
    const QString named = namedFolder(cl);
    if (!named.isEmpty()) {
        const QString refusal = namedFolderRefusal(named);
        if (refusal.isEmpty()) return named;
        refuseCommandLine(refusal);
        return {};
    }
    const ProgramFolderChoice choice =
        chooseProgramFolder(QCoreApplication::applicationDirPath(),
                            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    if (!choice.error.isEmpty()) gMsgbox(3, choice.error);
    return choice.folder;
}

// Qt's own texts as this installation shows them: the translations check.
int writeQtTexts(int argc, char** argv) {
    using namespace kelvary;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietPlatformNotices);
    QApplication application(argc, argv);
    const bool japanese = installJapaneseTranslations();
    for (const QString& line : applicationFileDialogTexts()) print(stdout, line + QLatin1Char('\n'));
    return japanese ? ExitOutput : ExitError;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace kelvary;
    // A run matches each of its patterns a few hundred times at most:
    // compiling them to machine code (Qt's default) costs a start more than
    // it ever saves. Read once, at the first match.
    if (!qEnvironmentVariableIsSet("QT_ENABLE_REGEXP_JIT")) qputenv("QT_ENABLE_REGEXP_JIT", "0");
    const QStringList arguments = argumentsOf(argc, argv);
    const CommandLineResult parsed = parseCommandLine(arguments);
    if (!parsed.commandLine) {
        const bool batch = arguments.contains(QStringLiteral("--batch")) || arguments.contains(QStringLiteral("-batch"));
        if (batch || !displayAvailable()) {
            print(stderr, QStringLiteral("kelvary: %1\n").arg(parsed.error));
            return ExitUsage;
        }
        QApplication application(argc, argv);
        installFontSubstitutions();
        setUserInterface(std::make_unique<QtUserInterface>());
        const int status = refuseCommandLine(parsed.error);
        setUserInterface(nullptr);
        return status;
    }
    const CommandLine& cl = *parsed.commandLine;
    if (cl.showHelp) {
        print(stdout, commandLineHelp());
        return ExitOutput;
    }
    if (cl.showVersion) {
        print(stdout, QStringLiteral("kelvary %1\n").arg(gstrAppVersion()));
        return ExitOutput;
    }

    if (!cl.proofLayout.isEmpty()) return writeProof(argc, argv, cl);
    if (cl.showQtTexts) return writeQtTexts(argc, argv);

    // Batch mode needs no display: it chooses the offscreen platform itself.
    if (cl.batch.enabled) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(quietPlatformNotices);
    }
    else if (!displayAvailable()) {
        print(stderr, QStringLiteral("kelvary: 画面を表示できません。画面のない環境では --batch を付けて実行してください。\n"));
        return ExitUsage;
    }

    QApplication application(argc, argv);
    const FontConfigurationRelease fontConfigurationRelease;
    // No display name: the window system would append it to every caption.
    QApplication::setApplicationName(QStringLiteral("kelvary"));
    installJapaneseTranslations();
    installFontSubstitutions();
    QApplication::setFont(QFont(formFontFamily(), 10));

    // Where printed pages go is settled here, once, for every window that prints.
    const PrintTarget printTarget =
        cl.batch.printTo.isEmpty() ? PrintTarget::defaultPrinter() : PrintTarget::pdfFile(cl.batch.printTo);
    if (cl.batch.enabled) setUserInterface(std::make_unique<BatchUserInterface>(cl.batch.answerYes, printTarget));
    else setUserInterface(std::make_unique<QtUserInterface>(printTarget));
    // The port goes before the application object does, on every way out.
    struct PortRelease {
        ~PortRelease() { setUserInterface(nullptr); }
    } portRelease;
    const QString home = workingFolder(cl);
    if (home.isEmpty()) return namedFolder(cl).isEmpty() ? ExitError : ExitUsage;
    app::setPath(home);
    if (cl.parentText) app::setCommandLine(*cl.parentText);
    setBatchOptions(cl.batch);

    QString applicationFile = cl.applicationFile;
    if (applicationFile.isEmpty() && !cl.parentText) {
        // Started from the desktop menu, with no file: the user picks one.
        QSettings settings(QStringLiteral("kelvary"), QStringLiteral("kelvary"));
        applicationFile = askForApplicationFile(settings);
        if (applicationFile.isEmpty()) return ExitNoOutput;
    }
    setOptionFields(CommandFields{applicationFile, cl.pdfFile, cl.agent, cl.mode});
    const QString refusal =
        runFilesRefusal(cl.parentText ? parentTextFields(*cl.parentText) : optionFields(), printTarget.pdfPath(), home);
    if (!refusal.isEmpty()) return refuseCommandLine(refusal);
    Main();
    return runExitStatus();
}
