// Draws layout pages: the form's shapes first, then the fields over them.
// Fonts are sized in layout units (pixel sizes), not points, so that a page
// draws at the same size on any device.
#include "platform/LayoutRenderer.h"

#include "platform/Fonts.h"
#include "platform/MonoBmp.h"

#include <QColor>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <QRawFont>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

namespace kelvary {

namespace {

double units(double mm) { return mm * layoutUnitsPerMm; }
QRectF units(const QRectF& mm) { return {units(mm.x()), units(mm.y()), units(mm.width()), units(mm.height())}; }

// Bold text is the regular face drawn twice, the second time shifted right
// by this share of the font size. The form font has no bold face, and Qt
// makes one up only on some devices: the PDF writer strokes the outlines, the
// screen never emboldens a fixed-pitch face. Drawing twice gives the same
// weight on paper, in the PDF and in the preview; PDF text readers drop the
// doubled letters as they do for any overprinted bold.
constexpr double kBoldShift = 0.04;

// Which characters a family has itself, without falling back on others.
class FamilyCoverage {
public:
    // font: the family alone, at any size (its characters are the same at
    // every size; one the pages use spares making a font engine for this).
    explicit FamilyCoverage(const QFont& font) : font_(QRawFont::fromFont(font)) {}

    bool hasEvery(QStringView text) {
        for (qsizetype i = 0; i < text.size(); ++i) {
            char32_t c = text[i].unicode();
            if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
                c = QChar::surrogateToUcs4(text[i], text[i + 1]);
                ++i;
            }
            if (c == u'\r' || c == u'\n') continue;  // never drawn: they break lines
            if (!has(c)) return false;
        }
        return true;
    }

private:
    bool has(char32_t c) {
        if (c >= basicPlane_.size()) return font_.supportsCharacter(c);
        std::uint8_t& known = basicPlane_[c];
        if (known == kUnknown) known = font_.supportsCharacter(c) ? kHas : kLacks;
        return known == kHas;
    }

    enum : std::uint8_t { kUnknown, kHas, kLacks };
    QRawFont font_;
    std::vector<std::uint8_t> basicPlane_ = std::vector<std::uint8_t>(0x10000, kUnknown);
};

bool hasEvery(const QFont& alone, QStringView text) {
    thread_local std::map<QString, std::unique_ptr<FamilyCoverage>> families;
    std::unique_ptr<FamilyCoverage>& entry = families[alone.family()];
    if (!entry) entry = std::make_unique<FamilyCoverage>(alone);
    return entry->hasEvery(text);
}

// Qt looks for fall-back fonts for each script in a text (through
// fontconfig) and keeps a font engine per script and size: in a PDF file, a
// run's whole output, that cost about as much as drawing the pages' texts. A
// text the form's font has every character of could never use a fall-back,
// so in a PDF it is drawn by that font alone: the same engine, so the same
// glyphs at the same places. Other devices, such as the preview's screen,
// show a page at a time and keep the fall-backs, as does, everywhere, a text
// with a character the font lacks.
QFont fontFor(const QPainter& painter, const TextStyle& style, const QString& family, const QString& text) {
    QFont font(family.isEmpty() ? formFontFamily() : family);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(units(style.size * 25.4 / 72.0)))));
    font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferOutline | QFont::NoFontMerging));
    const QPaintEngine* engine = painter.paintEngine();
    const bool pdf = engine && engine->type() == QPaintEngine::Pdf;
    if (!pdf || !hasEvery(font, text)) font.setStyleStrategy(QFont::PreferOutline);
    return font;
}

// A font's metrics, and the advances of the characters measured so far. A
// page has a few dozen fields in a handful of fonts and sizes; making the
// metrics anew for every field, and for every size tried while shrinking one,
// cost more than drawing the text.
struct MeasuredFont {
    QFontMetricsF metrics;
    double lineSpacing;
    QHash<char16_t, double> advances;

    double advance(QChar c) {
        auto it = advances.constFind(c.unicode());
        if (it == advances.cend()) it = advances.insert(c.unicode(), metrics.horizontalAdvance(c));
        return *it;
    }
};

// Text is measured at the default resolution, whatever device it goes to, so
// that lines break and shrink alike on the screen, the printer and the PDF
// file, and as they always have.
MeasuredFont& measured(const QFont& font) {
    using Key = std::tuple<QString, int, int, int>;
    thread_local std::map<Key, std::unique_ptr<MeasuredFont>> fonts;
    std::unique_ptr<MeasuredFont>& entry =
        fonts[Key{font.family(), font.pixelSize(), font.weight(), font.styleStrategy()}];
    if (!entry) {
        const QFontMetricsF metrics(font, nullptr);
        entry = std::make_unique<MeasuredFont>(MeasuredFont{metrics, metrics.lineSpacing(), {}});
    }
    return *entry;
}

QPen penOf(double widthMm, Qt::PenStyle style = Qt::SolidLine) {
    QPen pen(Qt::black);
    pen.setWidthF(units(widthMm));
    pen.setStyle(style);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

// Breaks one line so that no piece is wider than width. Japanese text has no
// spaces to break at, so the break falls between any two characters. Stops
// once it has maxPieces pieces (the rest could not be shown anyway).
// The sum of the characters' own advances stands in for the measure of the
// growing piece until it comes within an em of the width; only from there is
// the piece itself measured, as shaping may make it a little narrower or wider.
QStringList wrapLine(const QString& line, MeasuredFont& font, double em, double width, qsizetype maxPieces) {
    QStringList pieces;
    QString current;
    double estimate = 0;
    for (const QChar c : line) {
        if (pieces.size() >= maxPieces) return pieces;
        const double advance = font.advance(c);
        if (!current.isEmpty() && estimate + advance > width - em &&
            font.metrics.horizontalAdvance(current + c) > width) {
            pieces << current;
            current.clear();
            estimate = 0;
            if (pieces.size() >= maxPieces) return pieces;
        }
        current += c;
        estimate += advance;
    }
    pieces << current;
    return pieces;
}

// A text set in a box: the font, the lines as they are drawn, and their pitch.
struct TextLayout {
    QFont font;
    QStringList lines;
    double lineHeight = 0;
    double indentWidth = 0;
    bool clipped = false;   // too long at any readable size: cut at the box
};

// Sets the paragraphs at the font's size. No more than maxLines lines are
// set: a caller that only asks whether the text fits needs no more.
TextLayout setText(const QStringList& paragraphs, const TextStyle& style, const QFont& font, double lineHeight,
                   const QRectF& rect, int indent,
                   qsizetype maxLines = std::numeric_limits<qsizetype>::max()) {
    TextLayout layout;
    layout.font = font;
    layout.lineHeight = lineHeight;
    layout.indentWidth = indent * font.pixelSize();
    MeasuredFont& metrics = measured(font);
    for (const QString& paragraph : paragraphs) {
        if (layout.lines.size() >= maxLines) break;
        if (style.wrap)
            layout.lines << wrapLine(paragraph, metrics, font.pixelSize(), rect.width() - layout.indentWidth,
                                     maxLines - layout.lines.size());
        else
            layout.lines << paragraph;
    }
    return layout;
}

bool insideBox(const TextLayout& layout, const QRectF& rect) {
    // A single line may stand a little taller than a low box: it is centred on it.
    if (layout.lines.size() > 1 && layout.lineHeight * layout.lines.size() > rect.height() + 0.5) return false;
    MeasuredFont& font = measured(layout.font);
    const double width = rect.width() - layout.indentWidth + 0.5;
    const double em = layout.font.pixelSize();
    for (const QString& line : layout.lines) {
        // As in wrapping, a line whose characters' own advances stay an em
        // short of the width fits without measuring the line itself.
        double estimate = 0;
        for (const QChar c : line) estimate += font.advance(c);
        if (estimate + em <= width) continue;
        if (font.metrics.horizontalAdvance(line) > width) return false;
    }
    return true;
}

// The smallest size a field's text is shrunk to; a text that does not fit
// even so is cut at its box.
constexpr double kSmallestFieldPoints = 4.0;

// A field's text at the layout's size when it fits its box, otherwise at the
// largest smaller size at which it does: a long address or an amount of ten
// digits is never drawn over the form's rules or off the paper. Lines keep
// their pitch in proportion to the size.
TextLayout fitFieldText(const QString& text, const TextStyle& style, const QFont& font, double lineHeight,
                        const QRectF& rect, int indent) {
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    // Enough lines to overflow any box: one more than fit at the smallest size.
    const int layoutSize = font.pixelSize();
    const int smallest = std::min(layoutSize, std::max(1, static_cast<int>(std::lround(units(kSmallestFieldPoints * 25.4 / 72.0)))));
    const qsizetype cap = static_cast<qsizetype>(rect.height() / (lineHeight * smallest / layoutSize)) + 2;
    // A text far longer than the box can show (a field of megabytes) is cut to
    // what could reach into it at the smallest size, where no glyph is
    // narrower than a quarter of the size: nothing beyond is split or measured.
    const qsizetype lineChars = static_cast<qsizetype>(4.0 * rect.width() / smallest) + 2;
    const QStringList paragraphs = QStringView(text).left(cap * lineChars).toString().split(lineBreak);
    const auto at = [&](int pixelSize, qsizetype maxLines) {
        QFont sized = font;
        sized.setPixelSize(pixelSize);
        return setText(paragraphs, style, sized, lineHeight * pixelSize / font.pixelSize(), rect, indent, maxLines);
    };
    TextLayout best = at(layoutSize, cap);
    if (insideBox(best, rect)) return best;
    // The largest size that fits, between the smallest and the layout's own.
    int low = smallest;
    int high = layoutSize - 1;
    if (!style.wrap) {
        // Unwrapped lines shrink in proportion to the size: one measure gives
        // the answer, so a very long text is not measured again and again.
        const QFontMetricsF& metrics = measured(font).metrics;
        double widest = 0;
        for (const QString& line : best.lines) widest = std::max(widest, metrics.horizontalAdvance(line));
        double scale = widest > 0 ? (rect.width() - best.indentWidth) / widest : 1.0;
        if (best.lines.size() > 1) scale = std::min(scale, rect.height() / (lineHeight * best.lines.size()));
        high = std::clamp(static_cast<int>(std::floor(layoutSize * scale)), low, high);
        while (high > low && !insideBox(at(high, cap), rect)) --high;
        low = high;
    }
    best = at(low, cap);
    if (!insideBox(best, rect)) {
        best.clipped = true;
        return best;
    }
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        TextLayout trial = at(middle, cap);
        if (insideBox(trial, rect)) {
            low = middle;
            best = std::move(trial);
        } else {
            high = middle - 1;
        }
    }
    return best;
}

struct LineDecoration {
    bool strike = false;
    double strikeWidth = 0;
    bool underline = false;
    UnderlineKind underlineKind = UnderlineKind::Solid;
    double underlineWidth = 0;
};

double naturalLineHeight(const TextStyle& style, const QFont& font) {
    return style.lineHeight > 0 ? units(style.lineHeight)
                                : measured(font).lineSpacing;
}

void drawLines(QPainter& painter, const QRectF& rect, const TextLayout& layout, const TextStyle& style,
               const LineDecoration& decoration) {
    painter.save();
    if (layout.clipped) painter.setClipRect(rect);
    painter.setFont(layout.font);
    painter.setPen(Qt::black);
    const QFontMetricsF& metrics = measured(layout.font).metrics;
    const double lineHeight = layout.lineHeight;
    const double total = lineHeight * layout.lines.size();
    double y = rect.top();
    if (style.valign == VAlign::Middle) y += (rect.height() - total) / 2;
    else if (style.valign == VAlign::Bottom) y += rect.height() - total;
    if (layout.clipped) y = rect.top();

    const Qt::Alignment h = style.align == HAlign::Center ? Qt::AlignHCenter
                            : style.align == HAlign::Right ? Qt::AlignRight
                                                           : Qt::AlignLeft;
    // Letters stand where pages replayed from a recorded picture put them,
    // as every file made so far has them: the replay sets each line from its
    // font's ascent rounded to a whole layout unit, under a unit from where
    // the line itself would set it. A picture being recorded gets that shift
    // when it is replayed.
    const double ascent = metrics.ascent();
    const double letterShift =
        painter.device()->devType() == QInternal::Picture ? 0.0 : ascent - qRound(ascent);
    for (const QString& line : layout.lines) {
        const QRectF lineRect(rect.left() + layout.indentWidth, y, rect.width() - layout.indentWidth, lineHeight);
        const QRectF letters = lineRect.translated(0, letterShift);
        painter.setPen(Qt::black);
        painter.drawText(letters, static_cast<int>(h | Qt::AlignVCenter) | Qt::TextDontClip, line);
        if (style.bold)
            painter.drawText(letters.translated(layout.font.pixelSize() * kBoldShift, 0),
                             static_cast<int>(h | Qt::AlignVCenter) | Qt::TextDontClip, line);

        // Only a line drawn through or under the text needs its measure.
        const bool decorated = decoration.strike || decoration.underline;
        const double width = !decorated || line.isEmpty() ? 0 : metrics.horizontalAdvance(line);
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
        if (layout.clipped && y > rect.bottom()) break;
    }
    painter.restore();
}

// The form's own texts, as the layout draws them.
void drawText(QPainter& painter, const QRectF& mmRect, const QString& text, const TextStyle& style) {
    const QRectF rect = units(mmRect);
    const QFont font = fontFor(painter, style, QString(), text);
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    const TextLayout layout = setText(text.split(lineBreak), style, font, naturalLineHeight(style, font), rect, 0);
    drawLines(painter, rect, layout, style, {});
}

// A field's text: the data, fitted into the field's box.
void drawFieldText(QPainter& painter, const LayoutField& field, const LineDecoration& decoration) {
    const QRectF rect = units(field.rect);
    const QFont font = fontFor(painter, field.style, field.fontName, field.text);
    const TextLayout layout = fitFieldText(field.text, field.style, font,
                                           naturalLineHeight(field.style, font), rect, field.indent);
    drawLines(painter, rect, layout, field.style, decoration);
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
    // As QImage::invertPixels does, a row's bytes up to its last pixel, but
    // eight at a time: Qt's took longer than reading the file.
    const qsizetype usedBytes = (qsizetype(image.width()) + 7) / 8;
    const qsizetype stride = image.bytesPerLine();
    uchar* bits = image.bits();
    for (int y = 0; y < image.height(); ++y) {
        uchar* row = bits + y * stride;
        qsizetype i = 0;
        for (; i + 8 <= usedBytes; i += 8) {
            std::uint64_t word;
            std::memcpy(&word, row + i, sizeof word);
            word = ~word;
            std::memcpy(row + i, &word, sizeof word);
        }
        for (; i < usedBytes; ++i) row[i] ^= 0xFF;
    }
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

// The images of a kept page by file, or nullptr to read each file as it is
// drawn.
using PageImages = QHash<QString, QImage>;

QImage readImage(const QString& file) {
    QImage image = readMonoBmpFile(file);  // the symbols' own form, read directly
    if (image.isNull()) image = QImage(file);
    return blackFirst(image);
}

void drawImage(QPainter& painter, const QRectF& mmRect, const QString& file, const PageImages* images) {
    if (file.isEmpty()) return;
    const QImage image = images ? images->value(file) : readImage(file);
    if (image.isNull()) return;
    const QRectF rect = units(mmRect);
    const double scale = std::min(rect.width() / image.width(), rect.height() / image.height());
    const double width = std::floor(image.width() * scale);
    const double height = std::floor(image.height() * scale);
    const QPointF topLeft(std::round(rect.center().x() - width / 2), std::round(rect.center().y() - height / 2));
    drawImageAt(painter, QRectF(topLeft, QSizeF(width, height)), image);
}

void drawFrame(QPainter& painter, const QRectF& mmRect, LayoutField::Frame frame) {
    if (frame == LayoutField::Frame::None) return;
    painter.setPen(penOf(0.3));
    painter.setBrush(Qt::NoBrush);
    if (frame == LayoutField::Frame::Box) painter.drawRect(units(mmRect));
    else painter.drawEllipse(units(mmRect));
}

void drawField(QPainter& painter, const LayoutField& field, const PageImages* images) {
    if (!field.visible) return;
    drawFrame(painter, field.rect, field.frame);
    switch (field.kind) {
    case LayoutField::Kind::Group:
        for (const LayoutField& sub : field.subFields) drawField(painter, sub, images);
        break;
    case LayoutField::Kind::Image:
        drawImage(painter, field.rect, field.imageFile, images);
        break;
    case LayoutField::Kind::Text: {
        const LineDecoration decoration{field.strikeLine, field.strikeWidth, field.underline, field.underlineKind,
                                        field.underlineWidth};
        if (!field.text.isEmpty() || field.strikeLine) drawFieldText(painter, field, decoration);
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
        drawText(painter, shape.rect, shape.text, shape.style);
        break;
    }
    painter.setBrush(Qt::NoBrush);
}

void paintPage(QPainter& painter, const LayoutPage& page, const PageImages* images) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const LayoutShape& shape : page.shapes) drawShape(painter, shape);
    for (const LayoutField& field : page.fields) drawField(painter, field, images);
    painter.restore();
}

// The layout's units scaled to the device's pixels.
void drawScaled(QPainter& painter, const LayoutPage& page, const PageImages* images, double devicePixelsPerMm) {
    painter.save();
    painter.scale(devicePixelsPerMm / layoutUnitsPerMm, devicePixelsPerMm / layoutUnitsPerMm);
    paintPage(painter, page, images);
    painter.restore();
}

void collectImages(const LayoutField& field, PageImages& images) {
    if (!field.visible) return;
    if (field.kind == LayoutField::Kind::Group)
        for (const LayoutField& sub : field.subFields) collectImages(sub, images);
    else if (field.kind == LayoutField::Kind::Image && !field.imageFile.isEmpty() && !images.contains(field.imageFile))
        images.insert(field.imageFile, readImage(field.imageFile));
}

}  // namespace

void paintLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber) {
    paintPage(painter, document.page(pageNumber), nullptr);
}

void drawLayoutPage(QPainter& painter, const LayoutDocument& document, int pageNumber, double devicePixelsPerMm) {
    drawScaled(painter, document.page(pageNumber), nullptr, devicePixelsPerMm);
}

RecordedPage recordLayoutPage(const LayoutDocument& document, int pageNumber) {
    RecordedPage kept{document.page(pageNumber), {}, document.paperSize()};
    for (const LayoutField& field : kept.page.fields) collectImages(field, kept.images);
    return kept;
}

void playRecordedPage(QPainter& painter, const RecordedPage& page, double devicePixelsPerMm) {
    drawScaled(painter, page.page, &page.images, devicePixelsPerMm);
}

}  // namespace kelvary
