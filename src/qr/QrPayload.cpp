// Payload lines and value cleaning shared by the QR generators.
#include "qr/QrPayload.h"

#include "platform/VbError.h"

#include <cmath>

namespace kelvary::qr {

QString mstrCleanValue(const Variant& value) {
    if (value.isNull()) return QString();
    QString text = value.text();
    text.replace(kCrLf, QStringLiteral("\t"));
    text.replace(QLatin1Char('\n'), QLatin1Char('\t'));
    text.replace(QLatin1Char('"'), QLatin1Char('\''));
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return text;
}

QString headerLine(const QString& symbolName, const QString& verifyId, long recordCount, long columnCount) {
    return QStringLiteral("\"[") + symbolName + QStringLiteral("]\",\"") + verifyId + QStringLiteral("\",") +
           QString::number(recordCount) + QLatin1Char(',') + QString::number(columnCount) + kCrLf;
}

void mAddHeaderLine(QString& payload, const QString& symbolName, const QString& verifyId, long recordCount,
                    long columnCount, bool inFront) {
    const QString line = headerLine(symbolName, verifyId, recordCount, columnCount);
    payload = inFront ? line + payload : payload + line;
}

void mAddDataLine(QString& payload, long long number, const QList<Variant>& values) {
    if (values.isEmpty() || values.size() > 4) throw VbError::standard(vberr::InvalidProcedureCall);
    QString line = QString::number(number);
    for (const Variant& value : values)
        line += QStringLiteral(",\"") + mstrCleanValue(value) + QLatin1Char('"');
    payload += line + kCrLf;
}

Variant mvarCalcUnit(const Variant& value) {
    if (value.isNull()) return value;
    // Adding 0.0 turns a truncated -0 into 0, which VB never shows as "-0".
    return Variant(std::trunc(value.toDouble() / 1000.0) + 0.0);
}

}  // namespace kelvary::qr
