// Value and title lines of the statement checks.
#include "checks/ValueLines.h"

#include "platform/Cp932.h"
#include "platform/VbFormat.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kAmountFormat = QStringLiteral(" ###,###,###,##0");

}  // namespace

QString mstrFixedString(const QString& text, int width, const QString& pad) {
    return trapped(QStringLiteral("mstrFixedString"), 1, QString(), [&] {
        const QChar fill = pad.isEmpty() || pad.at(0) == QLatin1Char(' ') ? QChar(u' ') : pad.at(0);
        QString result;
        long bytes = 0;
        for (const QChar c : text + QString(width, fill)) {
            const long size = cp932ByteLength(QString(c));
            if (bytes + size > width) break;
            result += c;
            bytes += size;
        }
        while (bytes < width) {
            result += QLatin1Char(' ');
            ++bytes;
        }
        return result;
    });
}

QString mstrSpcFormat(const Variant& amount, const QString& format, const QString& pad) {
    return trapped(QStringLiteral("mstrSpcFormat"), 1, QString(), [&] {
        const QString text = vbFormat(amount, format);
        const QChar fill = pad.isEmpty() ? QChar(u' ') : pad.at(0);
        return text.rightJustified(format.size(), fill);
    });
}

QString mstrLoopBack(const QString& text, int width) {
    if (text.size() >= width) return text.left(width) + kCrLf + text.mid(width);
    return text;
}

QString valueLine(const QString& label, const Variant& amount) {
    return mstrFixedString(label, 100, QStringLiteral("_")) +
           mstrSpcFormat(amount, kAmountFormat, QStringLiteral("_")) + kCrLf;
}

QString titleLine(const QString& title) { return mstrLoopBack(title, 58) + kCrLf; }

}  // namespace kelvary
