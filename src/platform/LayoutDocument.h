// Layout documents: the forms the print manager fills. A layout file (JSON,
// extension ".w30") gives the paper, up to five page templates and, per page,
// the drawn form (texts, lines, boxes, ellipses) and the named fields the
// page builders write into. Positions and sizes are in millimetres from the
// top left corner of the paper; font sizes in points.
//
// A document is a value: the loaded template plus the current data of every
// field. clearData() puts every field back to the layout's own content, which
// is how one document serves page after page.
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <vector>

class QByteArray;

namespace kelvary {

enum class HAlign { Left, Center, Right };
enum class VAlign { Top, Middle, Bottom };

struct TextStyle {
    double size = 10.0;        // points
    HAlign align = HAlign::Left;
    VAlign valign = VAlign::Middle;
    bool wrap = false;
    bool bold = false;
    double lineHeight = 0.0;   // mm between baselines; 0: the font's own
};

// Something the form draws whatever the data: captions, rules, frames.
struct LayoutShape {
    enum class Kind { Text, Line, Box, Ellipse };
    Kind kind = Kind::Text;
    QRectF rect;               // Line: from topLeft to bottomRight
    double penWidth = 0.2;     // mm; 0 draws no outline
    bool dashed = false;
    QString fill;              // colour name; empty: no fill
    QString text;
    TextStyle style;
};

enum class UnderlineKind { Solid, Dotted, Double };

// One named field, or a group holding sub-fields. The members after the
// layout's own ones are the field's data, as the page builders set it.
struct LayoutField {
    enum class Kind { Text, Image, Group };
    enum class Frame { None, Box, Ellipse };

    QString name;
    Kind kind = Kind::Text;
    QRectF rect;
    TextStyle style;
    Frame frame = Frame::None;
    QString defaultText;
    QString defaultImage;
    bool defaultVisible = true;
    std::vector<LayoutField> subFields;

    QString text;
    QString fontName;          // empty: the form's font
    bool visible = true;
    QString imageFile;
    bool strikeLine = false;
    double strikeWidth = 1.0;  // in tenths of a millimetre
    bool underline = false;
    UnderlineKind underlineKind = UnderlineKind::Solid;
    double underlineWidth = 1.0;  // in tenths of a millimetre
    int indent = 0;            // indent level of the text, in characters

    // The sub-field of a group by name; nullptr when there is none.
    LayoutField* subField(const QString& subName);
    const LayoutField* subField(const QString& subName) const;
    void clearData();
};

struct LayoutPage {
    bool visible = false;
    std::vector<LayoutShape> shapes;
    std::vector<LayoutField> fields;
};

class LayoutDocument {
public:
    static constexpr int maxPages = 5;

    // Reads a layout file; a missing or unreadable file, or one that is not
    // a layout, raises VbError with a message naming the file.
    static LayoutDocument load(const QString& path);
    // The same from the file's bytes; name appears in error messages.
    static LayoutDocument fromJson(const QByteArray& json, const QString& name);

    const QString& name() const { return name_; }
    QSizeF paperSize() const { return paper_; }  // mm, orientation applied
    int pageCount() const { return static_cast<int>(pages_.size()); }

    // Pages are numbered from 1; a number outside the layout raises VbError.
    LayoutPage& page(int number);
    const LayoutPage& page(int number) const;

    // A field of a page, or the sub-field of a group when group is not empty.
    // A name the layout lacks raises VbError (item not found).
    LayoutField& field(int pageNumber, const QString& fieldName, const QString& group = QString());

    void clearData();

private:
    QString name_;
    QSizeF paper_;
    std::vector<LayoutPage> pages_;
};

}  // namespace kelvary
