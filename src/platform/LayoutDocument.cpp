// Reading layout files and addressing their fields.
#include "platform/LayoutDocument.h"

#include "platform/VbError.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kelvary {

namespace {

// Raised for a file that is there but is not a usable layout.
[[noreturn]] void refuse(const QString& name, const QString& why) {
    throw VbError(vberr::BadFileMode,
                  QStringLiteral("帳票ファイル「%1」を読み込めません。%2").arg(name, why));
}

class Reader {
public:
    explicit Reader(QString name) : name_(std::move(name)) {}

    double number(const QJsonObject& o, const char* key, double fallback) const {
        const QJsonValue v = o.value(QLatin1String(key));
        if (v.isUndefined()) return fallback;
        if (!v.isDouble()) refuse(name_, QStringLiteral("「%1」は数値でなければなりません。").arg(QLatin1String(key)));
        return v.toDouble();
    }
    double required(const QJsonObject& o, const char* key) const {
        if (!o.contains(QLatin1String(key)))
            refuse(name_, QStringLiteral("項目に「%1」がありません。").arg(QLatin1String(key)));
        return number(o, key, 0.0);
    }
    QString text(const QJsonObject& o, const char* key) const {
        const QJsonValue v = o.value(QLatin1String(key));
        if (v.isUndefined()) return QString();
        if (!v.isString()) refuse(name_, QStringLiteral("「%1」は文字列でなければなりません。").arg(QLatin1String(key)));
        return v.toString();
    }
    bool flag(const QJsonObject& o, const char* key, bool fallback) const {
        const QJsonValue v = o.value(QLatin1String(key));
        if (v.isUndefined()) return fallback;
        if (!v.isBool()) refuse(name_, QStringLiteral("「%1」は true か false でなければなりません。").arg(QLatin1String(key)));
        return v.toBool();
    }

    QRectF rect(const QJsonObject& o, QPointF origin = {}) const {
        return QRectF(origin.x() + required(o, "x"), origin.y() + required(o, "y"), required(o, "w"),
                      required(o, "h"));
    }

    TextStyle style(const QJsonObject& o, const TextStyle& base) const {
        TextStyle s = base;
        s.size = number(o, "size", base.size);
        if (s.size <= 0) refuse(name_, QStringLiteral("文字の大きさが正しくありません。"));
        const QString align = text(o, "align");
        if (align == QLatin1String("center")) s.align = HAlign::Center;
        else if (align == QLatin1String("right")) s.align = HAlign::Right;
        else if (align == QLatin1String("left")) s.align = HAlign::Left;
        else if (!align.isEmpty()) refuse(name_, QStringLiteral("align「%1」は使えません。").arg(align));
        const QString valign = text(o, "valign");
        if (valign == QLatin1String("top")) s.valign = VAlign::Top;
        else if (valign == QLatin1String("bottom")) s.valign = VAlign::Bottom;
        else if (valign == QLatin1String("middle")) s.valign = VAlign::Middle;
        else if (!valign.isEmpty()) refuse(name_, QStringLiteral("valign「%1」は使えません。").arg(valign));
        s.wrap = flag(o, "wrap", base.wrap);
        s.bold = flag(o, "bold", base.bold);
        s.lineHeight = number(o, "lineHeight", base.lineHeight);
        return s;
    }

    LayoutShape shape(const QJsonObject& o, const QString& type, const TextStyle& base) const {
        LayoutShape s;
        if (type == QLatin1String("line")) {
            s.kind = LayoutShape::Kind::Line;
            s.rect = QRectF(QPointF(required(o, "x1"), required(o, "y1")),
                            QPointF(required(o, "x2"), required(o, "y2")));
        } else {
            s.kind = type == QLatin1String("text") ? LayoutShape::Kind::Text
                     : type == QLatin1String("box") ? LayoutShape::Kind::Box
                                                    : LayoutShape::Kind::Ellipse;
            s.rect = rect(o);
        }
        s.penWidth = number(o, "width", s.kind == LayoutShape::Kind::Text ? 0.0 : 0.2);
        s.dashed = flag(o, "dash", false);
        s.fill = text(o, "fill");
        s.text = text(o, "text");
        s.style = style(o, base);
        return s;
    }

    LayoutField field(const QJsonObject& o, const QString& type, const TextStyle& base, QPointF origin) const {
        LayoutField f;
        f.name = text(o, "name");
        if (f.name.isEmpty()) refuse(name_, QStringLiteral("名前のない項目があります。"));
        f.rect = rect(o, origin);
        f.style = style(o, base);
        f.defaultText = text(o, "text");
        f.defaultVisible = flag(o, "visible", true);
        const QString frame = text(o, "frame");
        if (frame == QLatin1String("box")) f.frame = LayoutField::Frame::Box;
        else if (frame == QLatin1String("ellipse")) f.frame = LayoutField::Frame::Ellipse;
        else if (!frame.isEmpty() && frame != QLatin1String("none"))
            refuse(name_, QStringLiteral("frame「%1」は使えません。").arg(frame));
        if (type == QLatin1String("image")) {
            f.kind = LayoutField::Kind::Image;
            f.defaultImage = text(o, "image");
        } else if (type == QLatin1String("group")) {
            f.kind = LayoutField::Kind::Group;
            const QJsonValue subs = o.value(QLatin1String("fields"));
            if (!subs.isArray()) refuse(name_, QStringLiteral("グループ「%1」に fields がありません。").arg(f.name));
            for (const QJsonValue& v : subs.toArray()) {
                const QJsonObject so = v.toObject();
                const QString subType = text(so, "type");
                if (subType != QLatin1String("field") && subType != QLatin1String("image"))
                    refuse(name_, QStringLiteral("グループ「%1」に置けない項目があります。").arg(f.name));
                LayoutField sub = field(so, subType, f.style, f.rect.topLeft());
                if (f.subField(sub.name))
                    refuse(name_, QStringLiteral("グループ「%1」に項目「%2」が重複しています。").arg(f.name, sub.name));
                f.subFields.push_back(std::move(sub));
            }
        }
        f.clearData();
        return f;
    }

private:
    QString name_;
};

QSizeF paperOf(const QString& paper, const QString& name) {
    if (paper.isEmpty() || paper == QLatin1String("A4")) return {210.0, 297.0};
    if (paper == QLatin1String("A3")) return {297.0, 420.0};
    if (paper == QLatin1String("B5")) return {182.0, 257.0};
    refuse(name, QStringLiteral("用紙「%1」は使えません。").arg(paper));
}

}  // namespace

LayoutField* LayoutField::subField(const QString& subName) {
    for (LayoutField& f : subFields)
        if (f.name.compare(subName, Qt::CaseInsensitive) == 0) return &f;
    return nullptr;
}

const LayoutField* LayoutField::subField(const QString& subName) const {
    return const_cast<LayoutField*>(this)->subField(subName);
}

void LayoutField::clearData() {
    text = defaultText;
    fontName.clear();
    visible = defaultVisible;
    imageFile = defaultImage;
    strikeLine = false;
    strikeWidth = 1.0;
    underline = false;
    underlineKind = UnderlineKind::Solid;
    underlineWidth = 1.0;
    indent = 0;
    for (LayoutField& f : subFields) f.clearData();
}

LayoutDocument LayoutDocument::load(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    QFile file(path);
    if (!file.exists())
        throw VbError(vberr::FileNotFound, QStringLiteral("帳票ファイル「%1」が見つかりません。").arg(name));
    if (!file.open(QIODevice::ReadOnly)) refuse(name, QStringLiteral("ファイルを開けません。"));
    return fromJson(file.readAll(), name);
}

LayoutDocument LayoutDocument::fromJson(const QByteArray& json, const QString& name) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        refuse(name, QStringLiteral("書式に誤りがあります（%1 文字目）。").arg(error.offset));
    if (!doc.isObject()) refuse(name, QStringLiteral("帳票の定義ではありません。"));
    const QJsonObject root = doc.object();
    const Reader reader(name);

    LayoutDocument layout;
    layout.name_ = name;
    layout.paper_ = paperOf(reader.text(root, "paper"), name);
    const QString orientation = reader.text(root, "orientation");
    if (orientation == QLatin1String("landscape")) layout.paper_.transpose();
    else if (!orientation.isEmpty() && orientation != QLatin1String("portrait"))
        refuse(name, QStringLiteral("用紙の向き「%1」は使えません。").arg(orientation));

    TextStyle base;
    base.size = reader.number(root, "fontSize", base.size);

    const QJsonValue pages = root.value(QLatin1String("pages"));
    if (!pages.isArray() || pages.toArray().isEmpty()) refuse(name, QStringLiteral("ページがありません。"));
    if (pages.toArray().size() > maxPages)
        refuse(name, QStringLiteral("ページは %1 枚までです。").arg(maxPages));
    for (const QJsonValue& pv : pages.toArray()) {
        LayoutPage page;
        for (const QJsonValue& iv : pv.toObject().value(QLatin1String("items")).toArray()) {
            const QJsonObject item = iv.toObject();
            const QString type = reader.text(item, "type");
            if (type == QLatin1String("text") || type == QLatin1String("line") || type == QLatin1String("box") ||
                type == QLatin1String("ellipse")) {
                page.shapes.push_back(reader.shape(item, type, base));
            } else if (type == QLatin1String("field") || type == QLatin1String("image") ||
                       type == QLatin1String("group")) {
                LayoutField f = reader.field(item, type, base, {});
                for (const LayoutField& other : page.fields)
                    if (other.name.compare(f.name, Qt::CaseInsensitive) == 0)
                        refuse(name, QStringLiteral("項目「%1」が重複しています。").arg(f.name));
                page.fields.push_back(std::move(f));
            } else {
                refuse(name, QStringLiteral("項目の種類「%1」は使えません。").arg(type));
            }
        }
        layout.pages_.push_back(std::move(page));
    }
    layout.pages_.front().visible = true;
    return layout;
}

LayoutPage& LayoutDocument::page(int number) {
    if (number < 1 || number > pageCount())
        throw VbError(vberr::ItemNotFound,
                      QStringLiteral("帳票「%1」に %2 ページ目はありません。").arg(name_).arg(number));
    return pages_[static_cast<size_t>(number - 1)];
}

const LayoutPage& LayoutDocument::page(int number) const {
    return const_cast<LayoutDocument*>(this)->page(number);
}

LayoutField& LayoutDocument::field(int pageNumber, const QString& fieldName, const QString& group) {
    LayoutPage& p = page(pageNumber);
    const QString outer = group.isEmpty() ? fieldName : group;
    for (LayoutField& f : p.fields) {
        if (f.name.compare(outer, Qt::CaseInsensitive) != 0) continue;
        if (group.isEmpty()) return f;
        if (LayoutField* sub = f.subField(fieldName)) return *sub;
        break;
    }
    const QString where = group.isEmpty() ? fieldName : group + QLatin1Char('.') + fieldName;
    throw VbError(vberr::ItemNotFound,
                  QStringLiteral("帳票「%1」の %2 ページ目に項目「%3」がありません。").arg(name_).arg(pageNumber).arg(where));
}

void LayoutDocument::clearData() {
    for (LayoutPage& p : pages_)
        for (LayoutField& f : p.fields) f.clearData();
}

}  // namespace kelvary
