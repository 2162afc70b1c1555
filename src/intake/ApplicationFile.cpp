// Section headers and records of the application data file.
#include "intake/ApplicationFile.h"

#include "platform/VbError.h"
#include "startup/mdlFunctionStandard.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

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

SectionKeyCheck::SectionKeyCheck(QString section, QStringList knownKeys, QString place)
    : section_(std::move(section)), knownKeys_(std::move(knownKeys)), place_(std::move(place)) {}

void SectionKeyCheck::check(const Variant& key, int line) {
    if (reported_) return;
    const QString text = key.isString() ? key.text() : QString();
    if (!text.isEmpty() && knownKeys_.contains(text)) return;
    reported_ = true;
    const QString what = text.isEmpty() ? QStringLiteral("空の行または項目名のない記録があります")
                                        : QStringLiteral("知らない項目「") + key.text() + QStringLiteral("」があります");
    trapped(place_, 0, [&] {
        throw VbError(vberr::InvalidProcedureCall,
                      QStringLiteral("申請書データの ") + section_ + QStringLiteral(" の ") + QString::number(line) +
                          QStringLiteral(" 行目に") + what + QStringLiteral("。これ以降の項目が正しく読み込まれていない可能性があります。"));
    });
}

QString resolvedPath(const QString& value, const QString& baseFolder) {
    if (value.isEmpty()) return {};
    QString path = value;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QDir::isRelativePath(path)) path = QDir::cleanPath(QDir(baseFolder).filePath(path));
    return path;
}

QString siblingDatabaseOf(const QString& applicationFile) {
    try {
        SequentialInput input(applicationFile);
        if (searchHeader(input, QStringLiteral("[BasicInfo]")).isEmpty()) return {};
        while (!input.eof()) {
            const QList<Variant> record = readRecord(input, 2);
            if (isEndRecord(record)) break;
            if (record[0].text() != QLatin1String("LedraDataPath")) continue;
            QString folder = resolvedPath(record[1].text(), QFileInfo(applicationFile).absolutePath());
            if (folder.isEmpty()) return {};
            if (!folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
            return folder + QStringLiteral("Ledra.mdb");
        }
    } catch (...) {
        // The run itself reports what cannot be read.
    }
    return {};
}

bool hasApplicationSections(const QByteArray& bytes) {
    // The headers are ASCII, so the raw CP932 lines show them as they stand.
    for (QByteArray line : bytes.split('\n')) {
        const qsizetype comma = line.indexOf(',');
        QByteArray first = comma < 0 ? line : line.left(comma);
        first.replace("\"", "");
        if (first.startsWith("[BasicInfo]") || first.startsWith("[DocData]")) return true;
    }
    return false;
}

}  // namespace kelvary::intake
