// Section headers and records of the application data file.
#include "intake/ApplicationFile.h"

namespace kelvary::intake {

QString searchHeader(SequentialInput& file, const QString& header) {
    while (!file.eof()) {
        const QString line = file.lineInput();
        QString firstField = line.section(QLatin1Char(','), 0, 0);
        firstField.remove(QLatin1Char('"'));
        if (firstField.startsWith(header)) return line;
    }
    return {};
}

QList<Variant> readRecord(SequentialInput& file, int fieldCount) {
    QList<Variant> record;
    record.append(file.input());
    if (isEndRecord(record)) return record;
    for (int i = 1; i < fieldCount; ++i) record.append(file.input());
    return record;
}

bool isEndRecord(const QList<Variant>& record) {
    return !record.isEmpty() && record.front().text() == QLatin1String(kEndRecord);
}

}  // namespace kelvary::intake
