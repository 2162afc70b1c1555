// Draws layout pages: the form's shapes first, then the fields over them.
// Fonts are sized in layout units (pixel sizes), not points, so that a page
// replays at the same size on any device.
#include "platform/LayoutRenderer.h"

#include "platform/Fonts.h"

#include <QColor>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <map>

namespace kelvary {

namespace {

double units(double mm) { return mm * layoutUnitsPerMm; }
QRectF units(const QRectF& mm) { return {units(mm.x()), units(mm.y()), units(mm.width()), units(mm.height())}; }

QFont fontFor(const TextStyle& style, const QString& family) {
    QFont font(family.isEmpty() ? formFontFamily() : family);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(units(style.size * 25.4 / 72.0)))));
    font.setBold(style.bold);
    font.setStyleStrategy(QFont::PreferOutline);
    return font;
}

// A font with its metrics on a device of some resolution, and the advances
// of the characters measured so far. A page has a few dozen fields in a
// handful of fonts; making the font and its metrics anew for each field cost
// more than drawing the text.
struct MeasuredFont {
    QFont font;
    QFontMetricsF metrics;
    double lineSpacing;
    QHash<char16_t, double> advances;

    double advance(QChar c) {
        auto it = advances.constFind(c.unicode());
        if (it == advances.cend()) it = advances.insert(c.unicode(), metrics.horizontalAdvance(c));
        return *it;
    }
};

MeasuredFont& measuredFont(const TextStyle& style, const QString& family, QPaintDevice* device) {
    // Metrics depend on the device only through its resolution.
    const int dpi = device ? device->logicalDpiY() : 0;
    const QString key = family + QLatin1Char('/') + QString::number(style.size) + QLatin1Char('/') +
                        QString::number(style.bold) + QLatin1Char('/') + QString::number(dpi);
    thread_local std::map<QString, std::unique_ptr<MeasuredFont>> fonts;
    std::unique_ptr<MeasuredFont>& entry = fonts[key];
    if (!entry) {
        const QFont font = fontFor(style, family);
        const QFontMetricsF metrics(font, device);
        entry = std::make_unique<MeasuredFont>(MeasuredFont{font, metrics, metrics.lineSpacing(), {}});
    }
    return *entry;
}

// The lines of a text broken at CR LF, CR or LF, empty ones kept.
QStringList splitLines(const QString& text) {
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c != QLatin1Char('\r') && c != QLatin1Char('\n')) continue;
        lines << text.mid(start, i - start);
        if (c == QLatin1Char('\r') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n')) ++i;
        start = i + 1;
    }
    lines << text.mid(start);
    return lines;
}

QPen penOf(double widthMm, Qt::PenStyle style = Qt::SolidLine) {
    QPen pen(Qt::black);
    pen.setWidthF(units(widthMm));
    pen.setStyle(style);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

// Breaks one line so that no piece is wider than width. Japanese text has no
// spaces to break at, so the break falls between any two characters.
// The sum of the characters' own advances stands in for the measure of the
// growing piece until it comes within an em of the width; only from there is
// the piece itself measured, as shaping may make it a little narrower or wider.
QStringList wrapLine(const QString& line, MeasuredFont& font, double width) {
    QStringList pieces;
    QString current;
    double estimate = 0;
    const double margin = font.font.pixelSize();
    for (const QChar c : line) {
        const double advance = font.advance(c);
        if (!current.isEmpty() && estimate + advance > width - margin &&
            font.metrics.horizontalAdvance(current + c) > width) {
            pieces << current;
            current.clear();
            estimate = 0;
        }
        current += c;
        estimate += advance;
    }
    pieces << current;
    return pieces;
}

struct LineDecoration {
    bool strike = false;
    double strikeWidth = 0;
    bool underline = false;
    UnderlineKind underlineKind = UnderlineKind::Solid;
    double underlineWidth = 0;
};

void drawText(QPainter& painter, const QRectF& mmRect, const QString& text, const TextStyle& style,
              const QString& family, int indent, const LineDecoration& decoration) {
    const QRectF rect = units(mmRect);
    MeasuredFont& measured = measuredFont(style, family, painter.device());
    const QFont& font = measured.font;
    painter.setFont(font);
    painter.setPen(Qt::black);
    const QFontMetricsF& metrics = measured.metrics;
    const double indentWidth = indent * font.pixelSize();

    QStringList lines;
    for (const QString& line : splitLines(text)) {
        if (style.wrap) lines << wrapLine(line, measured, rect.width() - indentWidth);
        else lines << line;
    }
    const double lineHeight = style.lineHeight > 0 ? units(style.lineHeight) : measured.lineSpacing;
    const double total = lineHeight * lines.size();
    double y = rect.top();
    if (style.valign == VAlign::Middle) y += (rect.height() - total) / 2;
    else if (style.valign == VAlign::Bottom) y += rect.height() - total;

    const Qt::Alignment h = style.align == HAlign::Center ? Qt::AlignHCenter
                            : style.align == HAlign::Right ? Qt::AlignRight
                                                           : Qt::AlignLeft;
    for (const QString& line : lines) {
        const QRectF lineRect(rect.left() + indentWidth, y, rect.width() - indentWidth, lineHeight);
        painter.setPen(Qt::black);
        painter.drawText(lineRect, static_cast<int>(h | Qt::AlignVCenter) | Qt::TextDontClip, line);

        const double width = line.isEmpty() ? 0 : metrics.horizontalAdvance(line);
        double left = lineRect.left();
        if (style.align == HAlign::Center) left += (lineRect.width() - width) / 2;
        else if (style.align == HAlign::Right) left = lineRect.right() - width;
        if (decoration.strike) {
            // A struck field with no text still shows its line across the box.
            const double from = width > 0 ? left : rect.left();
            const double to = width > 0 ? left + width : rect.right();
            const double mid = lineRect.center().y();
            painter.setPen(penOf(decoration.strikeWidth / 10.0));
            painter.drawLine(QPointF(from, mid), QPointF(to, mid));
        }
        if (decoration.underline && width > 0) {
            const double base = lineRect.center().y() + metrics.height() / 2;
            const Qt::PenStyle penStyle =
                decoration.underlineKind == UnderlineKind::Dotted ? Qt::DotLine : Qt::SolidLine;
            const QPen pen = penOf(decoration.underlineWidth / 10.0, penStyle);
            painter.setPen(pen);
            painter.drawLine(QPointF(left, base), QPointF(left + width, base));
            if (decoration.underlineKind == UnderlineKind::Double) {
                const double gap = pen.widthF() * 2 + units(0.2);
                painter.drawLine(QPointF(left, base + gap), QPointF(left + width, base + gap));
            }
        }
        y += lineHeight;
    }
}

// An image fills its frame as far as its proportions allow and is never
// smoothed: a QR symbol must keep its square, sharp-edged modules to be read
// back. Its corners land on whole layout units.
// Qt's PDF writer keeps a two-colour image as a 1-bit image only when its
// palette is black first and white second; any other palette (the symbol
// writer's BMPs have white first) it widens to full colour and stores as JPEG
// when that is smaller: slow, many times larger, and lossy for a QR symbol.
// The same picture with the palette and the pixel indices swapped is a 1-bit
// image to the writer and looks the same everywhere else.
QImage blackFirst(QImage image) {
    if (image.depth() != 1 || image.colorCount() != 2) return image;
    const QRgb black = qRgb(0, 0, 0);
    const QRgb white = qRgb(255, 255, 255);
    if (image.color(0) != white || image.color(1) != black) return image;
    image = image.convertToFormat(QImage::Format_Mono);
    image.invertPixels();
    image.setColorTable({black, white});
    return image;
}

void drawImageAt(QPainter& painter, const QRectF& target, const QImage& image) {
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.setRenderHint(QPainter::LosslessImageRendering, true);
    painter.drawImage(target, image);
    painter.restore();
}

// Where the images of a page go: straight onto the painter, or, while a page
// is recorded, beside its pictures.
using ImageSink = std::function<void(QPainter&, const QRectF&, const QImage&)>;

void drawImage(QPainter& painter, const QRectF& mmRect, const QString& file, const ImageSink& sink) {
    if (file.isEmpty()) return;
    const QImage image = blackFirst(QImage(file));
    if (image.isNull()) return;
    const QRectF rect = units(mmRect);
    const double scale = std::min(rect.width() / image.width(), rect.height() / image.height());
    const double width = std::floor(image.width() * scale);
    const double height = std::floor(image.height() * scale);
    const QPointF topLeft(std::round(rect.center().x() - width / 2), std::round(rect.center().y() - height / 2));
    const QRectF target(topLeft, QSizeF(width, height));
    if (sink) sink(painter, target, image);
    else drawImageAt(painter, target, image);
}

void drawFrame(QPainter& painter, const QRectF& mmRect, LayoutField::Frame frame) {
    if (frame == LayoutField::Frame::None) return;
    painter.setPen(penOf(0.3));
    painter.setBrush(Qt::NoBrush);
    if (frame == LayoutField::Frame::Box) painter.drawRect(units(mmRect));
    else painter.drawEllipse(units(mmRect));
}

void drawField(QPainter& painter, const LayoutField& field, const ImageSink& sink) {
    if (!field.visible) return;
    drawFrame(painter, field.rect, field.frame);
    switch (field.kind) {
    case LayoutField::Kind::Group:
        for (const LayoutField& sub : field.subFields) drawField(painter, sub, sink);
        break;
    case LayoutField::Kind::Image:
        drawImage(painter, field.rect, field.imageFile, sink);
        break;
    case LayoutField::Kind::Text: {
        const LineDecoration decoration{field.strikeLine, field.strikeWidth, field.underline, field.underlineKind,
                                        field.underlineWidth};
        if (!field.text.isEmpty() || field.strikeLine)
            drawText(painter, field.rect, field.text, field.style, field.fontName, field.indent, decoration);
        break;
    }
    }
}

void drawShape(QPainter& painter, const LayoutShape& shape) {
    const QPen pen = shape.penWidth > 0 ? penOf(shape.penWidth, shape.dashed ? Qt::DashLine : Qt::SolidLine)
                                        : QPen(Qt::NoPen);
    painter.setPen(pen);
    painter.setBrush(shape.fill.isEmpty() ? QBrush(Qt::NoBrush) : QBrush(QColor(shape.fill)));
    switch (shape.kind) {
    case LayoutShape::Kind::Line:
        painter.drawLine(QPointF(units(shape.rect.left()), units(shape.rect.top())),
                         QPointF(units(shape.rect.right()), units(shape.rect.bottom())));
        break;
    case LayoutShape::Kind::Box:
        painter.drawRect(units(shape.rect));
        break;
    case LayoutShape::Kind::Ellipse:
        painter.drawEllipse(units(shape.rect));
        break;
    case LayoutShape::Kind::Text:
        if (!shape.fill.isEmpty() || shape.penWidth > 0) painter.drawRect(units(shape.rect));
        drawText(painter, shape.rect, shape.text, shape.style, QString(), 0, {});
        break;
    }
    painter.setBrush(Qt::NoBrush);
}

void paintPage(QPainter& painter, const LayoutPage& page, const ImageSink& sink) {
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const LayoutShape& shape : page.shapes) drawShape(painter, shape);
    for (const LayoutField& field : page.fields) drawField(painter, field, sink);
}

}  // namespace

void paintLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber) {
    const LayoutPage& page = document.page(pageNumber);
    painter.save();
    paintPage(painter, page, {});
    painter.restore();
}

RecordedPage recordLayoutPage(const LayoutDocument& document, int pageNumber) {
    RecordedPage page;
    page.paperMm = document.paperSize();
    const QRect bounds(0, 0, static_cast<int>(units(page.paperMm.width())),
                       static_cast<int>(units(page.paperMm.height())));
    page.pictures.reserve(8);
    page.pictures.emplace_back();
    QPainter painter(&page.pictures.back());
    // An image ends the picture it would have gone into; the drawing goes on
    // in a new one. Nothing drawn after an image relies on the painter's
    // state before it beyond the render hints: every field sets its own pen
    // and font.
    const ImageSink sink = [&page, &bounds](QPainter& p, const QRectF& target, const QImage& image) {
        const QPainter::RenderHints hints = p.renderHints();
        p.end();
        page.pictures.back().setBoundingRect(bounds);
        page.images.push_back({image, target});
        page.pictures.emplace_back();
        p.begin(&page.pictures.back());
        p.setRenderHints(hints);
    };
    paintPage(painter, document.page(pageNumber), sink);
    painter.end();
    page.pictures.back().setBoundingRect(bounds);
    return page;
}

void playRecordedPage(QPainter& painter, const RecordedPage& page, double devicePixelsPerMm) {
    if (page.pictures.empty()) return;
    painter.save();
    // Replaying a picture scales it by the device's resolution over the
    // picture's own; the page's scale already includes the device's.
    const QPaintDevice* device = painter.device();
    const QPicture& first = page.pictures.front();
    const double sx = devicePixelsPerMm / layoutUnitsPerMm * first.logicalDpiX() / device->logicalDpiX();
    const double sy = devicePixelsPerMm / layoutUnitsPerMm * first.logicalDpiY() / device->logicalDpiY();
    painter.scale(sx, sy);
    for (size_t i = 0; i < page.pictures.size(); ++i) {
        painter.drawPicture(QPointF(0, 0), page.pictures[i]);
        if (i < page.images.size()) {
            // The picture's layout units are the device's pixels at its own
            // resolution; an image drawn straight needs the same scale.
            painter.save();
            painter.scale(static_cast<double>(device->logicalDpiX()) / first.logicalDpiX(),
                          static_cast<double>(device->logicalDpiY()) / first.logicalDpiY());
            drawImageAt(painter, page.images[i].rect, page.images[i].image);
            painter.restore();
        }
    }
    painter.restore();
}

}  // namespace kelvary
