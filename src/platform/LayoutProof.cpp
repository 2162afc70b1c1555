// Layout proofs: a copy of the document whose fields carry their names.
#include "platform/LayoutProof.h"

#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"

namespace kelvary {

namespace {

void nameField(LayoutField& field, const QString& prefix) {
    field.visible = true;
    if (field.kind == LayoutField::Kind::Group) {
        for (LayoutField& sub : field.subFields) nameField(sub, prefix + field.name + QLatin1Char('.'));
        return;
    }
    if (field.kind == LayoutField::Kind::Image) {
        field.kind = LayoutField::Kind::Text;
        field.frame = LayoutField::Frame::Box;
        field.style.align = HAlign::Center;
        field.style.valign = VAlign::Middle;
    }
    field.text = prefix + field.name;
    field.style.wrap = true;
}

}  // namespace

void writeLayoutProof(const QString& layoutPath, const QString& pdfPath) {
    LayoutDocument document = LayoutDocument::load(layoutPath);
    PdfFileWriter writer(pdfPath, document.name(), QStringLiteral("kelvary layout proof"));
    for (int p = 1; p <= document.pageCount(); ++p) {
        for (LayoutField& field : document.page(p).fields) nameField(field, QString());
        writer.addPage(document, p);
    }
    writer.commit();
}

}  // namespace kelvary
