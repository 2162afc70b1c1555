// Helpers shared by the tests.
#include "support/TestSupport.h"

#include "platform/VbError.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "platform/AppObject.h"

#include <gtest/gtest.h>

#include <unicode/ucnv.h>

namespace kelvary::test {

// Every character of code page 932, as ICU's windows-31j converter decodes
// its one- and two-byte codes.
QString cp932Repertoire() {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open("windows-31j", &status);
    EXPECT_TRUE(U_SUCCESS(status));
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    QString all;
    auto decode = [&](const char* bytes, int length) {
        UChar out[4];
        UErrorCode s = U_ZERO_ERROR;
        ucnv_reset(converter);
        const int32_t n = ucnv_toUChars(converter, out, 4, bytes, length, &s);
        if (U_SUCCESS(s) && n == 1) all += QChar(out[0]);
    };
    for (int b = 0x01; b <= 0xFF; ++b) {
        const char one = static_cast<char>(b);
        decode(&one, 1);
    }
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead > 0x9F && lead < 0xE0) continue;
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const char two[2] = {static_cast<char>(lead), static_cast<char>(trail)};
            decode(two, 2);
        }
    }
    ucnv_close(converter);
    return all;
}

QByteArray hexBytes(const char* hex) {
    QByteArray digits(hex);
    digits.replace(' ', "");
    return QByteArray::fromHex(digits);
}

QByteArray zbarDecode(const QString& imagePath) {
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"),
               zbarQrOnly() << QStringLiteral("--raw") << QStringLiteral("-q") << QStringLiteral("-Sbinary") << imagePath);
    if (!zbar.waitForFinished(60000)) {
        zbar.kill();
        zbar.waitForFinished();
        return QByteArray("<zbarimg did not finish>");
    }
    return zbar.readAllStandardOutput();
}

Raised raised(const std::function<void()>& action) {
    try {
        action();
    } catch (const VbError& e) {
        return {e.number(), e.description()};
    }
    return {};
}

QByteArray readFile(const QString& path) {
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    ASSERT_EQ(out.write(bytes), bytes.size()) << path.toStdString();
}

QString unescaped(const QString& text) {
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != QLatin1Char('\\') || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const QChar e = text[++i];
        if (e == QLatin1Char('n')) out += QLatin1Char('\n');
        else if (e == QLatin1Char('r')) out += QLatin1Char('\r');
        else if (e == QLatin1Char('t')) out += QLatin1Char('\t');
        else if (e == QLatin1Char('s')) out += QLatin1Char(' ');
        else if (e == QLatin1Char('x') || e == QLatin1Char('u')) {
            const int digits = e == QLatin1Char('x') ? 2 : 4;
            out += QChar(text.mid(i + 1, digits).toInt(nullptr, 16));
            i += digits;
        } else out += e;
    }
    return out;
}

QList<QStringList> dataTable(const QString& relative) {
    QList<QStringList> rows;
    const QByteArray bytes = readFile(testDataDir() + QLatin1Char('/') + relative);
    EXPECT_FALSE(bytes.isEmpty()) << relative.toStdString();
    const QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    for (qsizetype n = 0; n < lines.size(); ++n) {
        if (lines[n].trimmed().isEmpty() || lines[n].startsWith(QStringLiteral("# ")) || lines[n] == QStringLiteral("#"))
            continue;
        QStringList row{QString::number(n + 1)};
        for (const QString& field : lines[n].split(QLatin1Char('\t'))) row << unescaped(field);
        rows << row;
    }
    return rows;
}

Variant variantCell(const QString& cell) {
    const QString kind = cell.section(QLatin1Char(':'), 0, 0);
    const QString text = cell.section(QLatin1Char(':'), 1);
    if (cell == QLatin1String("null")) return Variant::null();
    if (cell == QLatin1String("empty")) return Variant();
    if (kind == QLatin1String("long")) return Variant::fromLong(text.toInt());
    if (kind == QLatin1String("integer")) return Variant::fromInteger(static_cast<std::int16_t>(text.toShort()));
    if (kind == QLatin1String("double")) return Variant(text.toDouble());
    if (kind == QLatin1String("bool")) return Variant(text == QLatin1String("true"));
    if (kind == QLatin1String("text")) return Variant(text);
    if (kind == QLatin1String("currency")) return Variant(Currency::fromDouble(text.toDouble()));
    if (kind == QLatin1String("date") && text.size() == 10) return Variant(QDate::fromString(text, Qt::ISODate));
    if (kind == QLatin1String("date")) return Variant(QDateTime::fromString(text, Qt::ISODate));
    ADD_FAILURE() << "no value kind in " << cell.toStdString();
    return Variant();
}

QString appDir() { return QStringLiteral(KELVARY_TEST_APP_DIR); }
QString templateDir() { return QStringLiteral(KELVARY_TEST_TEMPLATE_DIR); }
QString testDataDir() { return QStringLiteral(KELVARY_TEST_DATA_DIR); }

ProcessResult runProgram(const QString& program, const QStringList& arguments, int timeoutMs,
                         const QString& workingDirectory) {
    QProcess process;
    if (!workingDirectory.isEmpty()) process.setWorkingDirectory(workingDirectory);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("KELVARY_HOME"));
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    ProcessResult result;
    if (!process.waitForStarted(timeoutMs)) return result;
    process.closeWriteChannel();
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.standardOutput = QString::fromUtf8(process.readAllStandardOutput());
    result.standardError = QString::fromUtf8(process.readAllStandardError());
    return result;
}

ProcessResult runKelvary(const QStringList& arguments, int timeoutMs, const QString& workingDirectory) {
    return runProgram(appDir() + QStringLiteral("/kelvary"), arguments, timeoutMs, workingDirectory);
}

ScratchHome::ScratchHome() {
    QDir(dir_.path()).mkpath(QStringLiteral("Temp"));
    const QDir source(templateDir());
    QDirIterator it(templateDir(), QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString from = it.next();
        const QString relative = source.relativeFilePath(from);
        if (relative == QStringLiteral("kelvary") || relative.startsWith(QStringLiteral("Temp/")))
            continue;
        const QString to = dir_.filePath(relative);
        QDir().mkpath(QFileInfo(to).path());
        QFile::copy(from, to);
    }
}

ProgramFolder::ProgramFolder(const QByteArray& ini) {
    if (!ini.isNull()) writeFile(file(QStringLiteral("UserData.ini")), ini);
    app::setPath(dir_.path());
}

ProgramFolder::~ProgramFolder() { app::setPath(QString()); }

}  // namespace kelvary::test
