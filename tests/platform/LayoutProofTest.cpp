// Layout proofs: every page of the layout, every field named, hidden fields
// and image frames included.
#include "platform/Fonts.h"
#include "platform/LayoutProof.h"
#include "platform/PdfCheck.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace kelvary {
namespace {

const char* kLayout = R"({"pages": [
  {"items": [
    {"type": "text", "x": 10, "y": 10, "w": 100, "h": 8, "text": "表題"},
    {"type": "field", "name": "CircleProxy", "x": 10, "y": 20, "w": 40, "h": 8, "visible": false},
    {"type": "image", "name": "WrImage1", "x": 10, "y": 40, "w": 50, "h": 50},
    {"type": "group", "name": "Row01", "x": 10, "y": 100, "w": 150, "h": 8, "fields": [
      {"type": "field", "name": "ItemName", "x": 0, "y": 0, "w": 60, "h": 8},
      {"type": "field", "name": "A10", "x": 70, "y": 0, "w": 40, "h": 8}
    ]}
  ]},
  {"items": [{"type": "field", "name": "SecondPage", "x": 10, "y": 10, "w": 60, "h": 8}]}
]})";

TEST(LayoutProof, ShowsEveryPageAndEveryFieldByName) {
    installFontSubstitutions();
    QTemporaryDir dir;
    const QString layout = dir.filePath(QStringLiteral("Proof.w30"));
    test::writeFile(layout, kLayout);
    const QString pdf = dir.filePath(QStringLiteral("proof.pdf"));
    writeLayoutProof(layout, pdf);
    EXPECT_EQ(test::qpdfCheck(pdf), 0);
    EXPECT_EQ(test::pdfInfo(pdf, QStringLiteral("Pages")), QStringLiteral("2"));
    EXPECT_EQ(test::pdfInfo(pdf, QStringLiteral("Title")), QStringLiteral("Proof.w30"));
    const QString first = test::pdfText(pdf, 1);
    for (const char* expected : {"表題", "CircleProxy", "WrImage1", "Row01.ItemName", "Row01.A10"})
        EXPECT_TRUE(first.contains(QString::fromUtf8(expected))) << expected;
    EXPECT_TRUE(test::pdfText(pdf, 2).contains(QStringLiteral("SecondPage")));
}

TEST(LayoutProof, ABrokenLayoutWritesNoFile) {
    QTemporaryDir dir;
    const QString layout = dir.filePath(QStringLiteral("Broken.w30"));
    test::writeFile(layout, "{\"pages\": [");
    const QString pdf = dir.filePath(QStringLiteral("proof.pdf"));
    EXPECT_THROW(writeLayoutProof(layout, pdf), VbError);
    EXPECT_FALSE(QFile::exists(pdf));
}

}  // namespace
}  // namespace kelvary
