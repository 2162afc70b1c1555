// Parsing of the program's command line. It runs before any window system is
// started, so --help and --version answer at once.
#include "startup/CommandLine.h"

#include "startup/RunOutcome.h"
#include "startup/UserInterface.h"
#include "startup/mdlFunctionStandard.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <cstdio>

namespace kelvary {
namespace {

CommandFields& currentOptionFields() {
    static CommandFields fields;
    return fields;
}

BatchOptions& currentBatchOptions() {
    static BatchOptions options;
    return options;
}

struct Options {
    QCommandLineOption home{QStringLiteral("home"), QStringLiteral("program folder (default: the executable's folder or KELVARY_HOME)"), QStringLiteral("DIR")};
    QCommandLineOption pdf{QStringLiteral("pdf"), QStringLiteral("PDF file to write (field 2)"), QStringLiteral("FILE")};
    QCommandLineOption agent{QStringLiteral("agent"), QStringLiteral("filing by an agent (field 3 = \"y\")")};
    QCommandLineOption mode{QStringLiteral("mode"), QStringLiteral("output mode 1|2|3|4 (field 4, default 1)"), QStringLiteral("N"), QStringLiteral("1")};
    QCommandLineOption parentText{QStringLiteral("command-line"), QStringLiteral("the parent program's one command-line text"), QStringLiteral("TEXT")};
    QCommandLineOption batch{QStringLiteral("batch"), QStringLiteral("run without windows; messages go to standard error")};
    QCommandLineOption periods{QStringLiteral("periods"), QStringLiteral("batch: periods to mark: newest|all|none|N[,N...] (default newest)"), QStringLiteral("WHICH")};
    QCommandLineOption course{QStringLiteral("course"), QStringLiteral("batch: review course 1|3"), QStringLiteral("N")};
    QCommandLineOption proxy{QStringLiteral("proxy"), QStringLiteral("batch: filing by an agent")};
    QCommandLineOption sendResult{QStringLiteral("send-result"), QStringLiteral("batch: result notice to the agent")};
    QCommandLineOption noApplication{QStringLiteral("no-application"), QStringLiteral("batch: do not print the application form")};
    QCommandLineOption noStatements{QStringLiteral("no-statements"), QStringLiteral("batch: do not print the statements' QR codes")};
    QCommandLineOption yes{QStringLiteral("yes"), QStringLiteral("batch: answer Yes to every question (default No)")};
    QCommandLineOption printTo{QStringLiteral("print-to"), QStringLiteral("batch: print into this PDF file instead of the printer"), QStringLiteral("FILE")};
    QCommandLineOption help{QStringList{QStringLiteral("help"), QStringLiteral("h")}, QStringLiteral("show this help")};
    QCommandLineOption version{QStringLiteral("version"), QStringLiteral("show the version")};
    QCommandLineOption qtTexts{QStringLiteral("qt-texts"),
                               QStringLiteral("show the texts of Qt's own file dialog as this installation shows them")};
    QCommandLineOption layoutProof{QStringLiteral("layout-proof"),
                                   QStringLiteral("developers: print layout NAME of PrintFile/ with its field names into OUT.pdf"),
                                   QStringLiteral("NAME")};

    void addTo(QCommandLineParser& parser) const {
        parser.addOptions({home, pdf, agent, mode, parentText, batch, periods, course, proxy,
                           sendResult, noApplication, noStatements, yes, printTo, help, version, qtTexts, layoutProof});
        parser.addPositionalArgument(QStringLiteral("APPLICATION_FILE"), QStringLiteral("the application data file"));
    }
};

QString checkBatchValues(const BatchOptions& b) {
    static const QRegularExpression periodList(QStringLiteral("^(newest|all|none|[1-9][0-9]*(,[1-9][0-9]*)*)$"));
    if (!periodList.match(b.periods).hasMatch())
        return QStringLiteral("--periods には newest、all、none または 1,2 のような一覧の位置を指定してください。");
    if (!b.course.isEmpty() && b.course != QStringLiteral("1") && b.course != QStringLiteral("3"))
        return QStringLiteral("--course には 1 または 3 を指定してください。");
    return QString();
}

// QCommandLineParser says what went wrong in English; the user reads Japanese.
QString inJapanese(const QString& parserError) {
    static const QRegularExpression unknown(QStringLiteral("^Unknown options?:? (.*)\\.$"));
    static const QRegularExpression missing(QStringLiteral("^Missing value after '(.*)'\\.$"));
    static const QRegularExpression unexpected(QStringLiteral("^Unexpected value after '(.*)'\\.$"));
    if (const auto m = unknown.match(parserError); m.hasMatch())
        return QStringLiteral("不明なオプションがあります: ") + m.captured(1).remove(QLatin1Char('\'')) +
               QStringLiteral("。使い方は --help で表示できます。");
    if (const auto m = missing.match(parserError); m.hasMatch())
        return QStringLiteral("オプション ") + m.captured(1) + QStringLiteral(" の値が指定されていません。");
    if (const auto m = unexpected.match(parserError); m.hasMatch())
        return QStringLiteral("オプション ") + m.captured(1) + QStringLiteral(" には値を指定できません。");
    return QStringLiteral("コマンドラインが正しくありません: ") + parserError;
}

}  // namespace

CommandLineResult parseCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const Options o;
    o.addTo(parser);
    if (!parser.parse(arguments)) return {std::nullopt, inJapanese(parser.errorText())};

    CommandLine c;
    c.showHelp = parser.isSet(o.help);
    c.showVersion = parser.isSet(o.version);
    c.showQtTexts = parser.isSet(o.qtTexts);
    if (c.showHelp || c.showVersion || c.showQtTexts) return {c, QString()};
    if (parser.isSet(o.layoutProof)) {
        c.home = parser.value(o.home);
        c.proofLayout = parser.value(o.layoutProof);
        const QStringList rest = parser.positionalArguments();
        if (rest.size() != 1)
            return {std::nullopt, QStringLiteral("--layout-proof には出力する PDF ファイルを一つ指定してください。")};
        c.proofPdf = rest.front();
        return {c, QString()};
    }

    c.home = parser.value(o.home);
    // An empty --home would quietly mean the executable's own folder.
    if (parser.isSet(o.home) && c.home.isEmpty())
        return {std::nullopt, QStringLiteral("--home にプログラムフォルダーが指定されていません。")};
    c.pdfFile = parser.value(o.pdf);
    c.agent = parser.isSet(o.agent) ? QStringLiteral("y") : QString();
    const QString modeText = parser.value(o.mode);
    if (parser.isSet(o.parentText)) c.parentText = parser.value(o.parentText);

    BatchOptions& b = c.batch;
    b.enabled = parser.isSet(o.batch);
    if (parser.isSet(o.periods)) b.periods = parser.value(o.periods).toLower();
    b.course = parser.value(o.course);
    b.proxy = parser.isSet(o.proxy);
    b.sendResult = parser.isSet(o.sendResult);
    b.noApplication = parser.isSet(o.noApplication);
    b.noStatements = parser.isSet(o.noStatements);
    b.answerYes = parser.isSet(o.yes);
    b.printTo = parser.value(o.printTo);

    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1)
        return {std::nullopt, QStringLiteral("申請データファイルは一つだけ指定してください。")};
    if (c.parentText && !positional.isEmpty())
        return {std::nullopt, QStringLiteral("--command-line の文字列に申請データファイルが含まれます。"
                                             "ほかに申請データファイルを指定しないでください。")};
    // Started from the desktop menu there is no file yet; the user picks one.
    // A file named as "" is a mistake, not that start.
    if (!c.parentText && (b.enabled || !positional.isEmpty()) &&
        (positional.isEmpty() || positional.front().trimmed().isEmpty()))
        return {std::nullopt, QStringLiteral("申請データファイルが指定されていません。使い方は --help で表示できます。")};
    if (!positional.isEmpty()) c.applicationFile = positional.front();
    const std::optional<OutputMode> mode = outputModeFromString(modeText);
    if (!mode) return {std::nullopt, QStringLiteral("--mode には 1、2、3 または 4 を指定してください。")};
    c.mode = *mode;
    // Without a window nobody could be asked where the PDF goes.
    if (b.enabled && !c.parentText && isSendFile(c.mode) && c.pdfFile.isEmpty())
        return {std::nullopt, QStringLiteral("出力モード ") + toString(c.mode) +
                                  QStringLiteral(" では --pdf で PDF ファイルを指定してください。")};
    const QString batchError = checkBatchValues(b);
    if (!batchError.isEmpty()) return {std::nullopt, batchError};
    return {c, QString()};
}

QString commandLineHelp() {
    QCommandLineParser parser;
    const Options o;
    o.addTo(parser);
    parser.setApplicationDescription(QStringLiteral(
        "Kelvary prints one application for a management-status analysis (経営状況分析申請書)\n"
        "with the QR codes of its financial statements.\n\n"
        "  kelvary [--home DIR] [--pdf FILE] [--agent] [--mode 1|2|3|4] [--batch ...] APPLICATION_FILE\n"
        "  kelvary --command-line \"TEXT\"\n"
        "  kelvary --help | --version\n\n"
        "Exit status: 0 output produced, 1 ended without output, 2 wrong command line,\n"
        "3 an error was reported during the run."));
    QString text = parser.helpText();
    text.replace(QRegularExpression(QStringLiteral("^Usage: [^\\n]*\\n")), QStringLiteral("Usage: kelvary [options] APPLICATION_FILE\n"));
    return text;
}

int refuseCommandLine(const QString& message) {
    const QByteArray line = (QStringLiteral("kelvary: ") + message + QLatin1Char('\n')).toUtf8();
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
    if (!userInterface().isBatch()) gMsgbox(3, message, QStringLiteral("起動できません"));
    return ExitUsage;
}

const CommandFields& optionFields() { return currentOptionFields(); }
void setOptionFields(const CommandFields& fields) { currentOptionFields() = fields; }

const BatchOptions& batchOptions() { return currentBatchOptions(); }
void setBatchOptions(const BatchOptions& options) { currentBatchOptions() = options; }

}  // namespace kelvary
