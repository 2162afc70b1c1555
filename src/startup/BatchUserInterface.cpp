// Batch transcript of message boxes and reports.
#include "startup/BatchUserInterface.h"

#include <QRegularExpression>

#include <cstdio>
#include <utility>

namespace kelvary {
namespace {
void writeStderr(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}
}  // namespace

QString answerText(MsgAnswer answer) {
    switch (answer) {
    case MsgAnswer::Yes: return QStringLiteral("Yes");
    case MsgAnswer::No: return QStringLiteral("No");
    case MsgAnswer::Ok: return QStringLiteral("OK");
    case MsgAnswer::Closed: return QStringLiteral("closed");
    }
    return QString();
}

BatchUserInterface::BatchUserInterface(bool answerYes, PrintTarget target)
    : answerYes_(answerYes), target_(std::move(target)) {}

QString BatchUserInterface::transcriptBlock(const QString& label, const QString& title,
                                            const QString& text, const QString& answer) {
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    QString block = QStringLiteral("=== %1 %2\n").arg(label, title);
    for (const QString& line : text.split(lineBreak)) block += line + QLatin1Char('\n');
    block += QStringLiteral("--- %1\n").arg(answer);
    return block;
}

MsgAnswer BatchUserInterface::showMessage(const MessageRequest& request) {
    MsgAnswer answer = MsgAnswer::Ok;
    if (request.buttons == MsgButtons::YesNo) answer = answerYes_ ? MsgAnswer::Yes : MsgAnswer::No;
    writeStderr(transcriptBlock(request.kindLabel, request.title, request.text, answerText(answer)));
    return answer;
}

void BatchUserInterface::showReport(const QString& title, const QString& text) {
    writeStderr(transcriptBlock(QStringLiteral("report"), title, text, answerText(MsgAnswer::Closed)));
}

}  // namespace kelvary
