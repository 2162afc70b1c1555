// Reading our PDF files back with outside tools (qpdf, poppler, zbar), so that
// tests judge the output by what other programs make of it.
#pragma once

#include "support/TestSupport.h"

#include <QImage>
#include <QList>
#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <qrencode.h>

namespace kelvary::test {

struct ToolRun {
    int exitCode = -1;
    QString out;
    QString err;
};

inline ToolRun runTool(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    ToolRun run;
    if (!process.waitForStarted() || !process.waitForFinished(120000)) return run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// qpdf --check: 0 for a sound file (2 errors, 3 warnings).
inline int qpdfCheck(const QString& pdf) { return runTool(QStringLiteral("qpdf"), {QStringLiteral("--check"), pdf}).exitCode; }

// The text of one page (from 1), or of the whole file when page is 0.
inline QString pdfText(const QString& pdf, int page = 0) {
    QStringList args{QStringLiteral("-layout")};
    if (page > 0) args << QStringLiteral("-f") << QString::number(page) << QStringLiteral("-l") << QString::number(page);
    args << pdf << QStringLiteral("-");
    return runTool(QStringLiteral("pdftotext"), args).out;
}

// A word pdftotext finds on a page, with its box in points from the top left
// corner of the paper. (pdftotext reads an ideographic space as a break
// between words.)
struct PdfWord {
    QString text;
    double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
};

// The words of one page (from 1), or of the whole file when page is 0.
inline QList<PdfWord> pdfWords(const QString& pdf, int page = 0) {
    QStringList args{QStringLiteral("-bbox")};
    if (page > 0) args << QStringLiteral("-f") << QString::number(page) << QStringLiteral("-l") << QString::number(page);
    args << pdf << QStringLiteral("-");
    const ToolRun run = runTool(QStringLiteral("pdftotext"), args);
    static const QRegularExpression word(QStringLiteral(
        "<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">([^<]*)</word>"));
    QList<PdfWord> words;
    for (auto it = word.globalMatch(run.out); it.hasNext();) {
        const auto m = it.next();
        words << PdfWord{m.captured(5), m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                         m.captured(4).toDouble()};
    }
    return words;
}

// The first word of that text, or nullptr.
inline const PdfWord* findWord(const QList<PdfWord>& words, const QString& text) {
    for (const PdfWord& w : words)
        if (w.text == text) return &w;
    return nullptr;
}

// Millimetres on the paper, in the points pdftotext measures in.
inline double mmToPt(double mm) { return mm * 72.0 / 25.4; }

// A field of pdfinfo's report, such as "Pages" or "Title".
inline QString pdfInfo(const QString& pdf, const QString& key, int page = 0) {
    QStringList args;
    if (page > 0) args << QStringLiteral("-f") << QString::number(page) << QStringLiteral("-l") << QString::number(page);
    args << pdf;
    const QStringList lines = runTool(QStringLiteral("pdfinfo"), args).out.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon > 0 && line.left(colon).trimmed() == key) return line.mid(colon + 1).trimmed();
    }
    return QString();
}

// "595 x 842 pts (A4)" and the like: the size of one page (from 1).
inline QString pdfPageSize(const QString& pdf, int page) {
    return pdfInfo(pdf, QStringLiteral("Page %1 size").arg(page, 4), page);
}

// One page (from 1) as poppler renders it: the path of a PNG file named `base`.png.
inline QString renderedPage(const QString& pdf, int page, const QString& base, int dpi = 200, bool gray = true) {
    QStringList args{QStringLiteral("-r"), QString::number(dpi), QStringLiteral("-f"), QString::number(page),
                     QStringLiteral("-l"), QString::number(page), QStringLiteral("-singlefile"), QStringLiteral("-png")};
    if (gray) args << QStringLiteral("-gray");
    runTool(QStringLiteral("pdftoppm"), args << pdf << base);
    return base + QStringLiteral(".png");
}

// The payloads zbarimg reads off one page rendered at 200 dpi, sorted.
inline QStringList decodeQrOnPage(const QString& pdf, int page) {
    QTemporaryDir dir;
    const QString png = renderedPage(pdf, page, dir.filePath(QStringLiteral("page")));
    const ToolRun run =
        runTool(QStringLiteral("zbarimg"), zbarQrOnly() << QStringLiteral("--quiet") << QStringLiteral("--xml") << png);
    QStringList payloads;
    // One CDATA section per symbol read.
    static const QRegularExpression data(QStringLiteral("<data><!\\[CDATA\\[(.*?)\\]\\]></data>"),
                                         QRegularExpression::DotMatchesEverythingOption);
    for (auto it = data.globalMatch(run.out); it.hasNext();) payloads << it.next().captured(1);
    payloads.sort();
    return payloads;
}

// A QR symbol of the text as a BMP file with four pixels per module and a
// four-module quiet zone, as the symbol writer makes them.
inline bool writeQrBmp(const QByteArray& text, const QString& path) {
    QRcode* code = QRcode_encodeString8bit(text.constData(), 0, QR_ECLEVEL_M);
    if (!code) return false;
    const int quiet = 4;
    const int scale = 4;
    const int size = (code->width + 2 * quiet) * scale;
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(Qt::white);
    for (int y = 0; y < code->width; ++y)
        for (int x = 0; x < code->width; ++x)
            if (code->data[y * code->width + x] & 1)
                for (int dy = 0; dy < scale; ++dy)
                    for (int dx = 0; dx < scale; ++dx)
                        image.setPixel((x + quiet) * scale + dx, (y + quiet) * scale + dy, qRgb(0, 0, 0));
    QRcode_free(code);
    return image.save(path, "BMP");
}

}  // namespace kelvary::test
