// The supplementary document and equity side-sheet layouts: every field their
// builders write is there, where the paper has room for it.
#include "platform/LayoutDocument.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

LayoutDocument shipped(const QString& name) {
    return LayoutDocument::load(test::templateDir() + QStringLiteral("/PrintFile/") + name);
}

bool hasField(LayoutDocument& doc, const QString& name, const QString& group = QString()) {
    try {
        doc.field(1, name, group);
        return true;
    } catch (const VbError&) {
        return false;
    }
}

TEST(SupplementLayout, HasTheFieldsOfThePageAndThreeSymbolSlots) {
    LayoutDocument doc = shipped(QStringLiteral("SubDoc_200804.w30"));
    EXPECT_EQ(doc.paperSize(), QSizeF(210, 297));
    for (const char* name :
         {"ApplierName", "ApplyNumber", "ChargeName", "Tel", "Fax", "DocType", "CircleProxy", "CircleApplier",
          "CourseNumber1", "CourseNumber3", "UserID", "UserName", "UserTel", "VersionNumber", "VerifyID"})
        EXPECT_TRUE(hasField(doc, QString::fromUtf8(name))) << name;
    const QRectF paper(QPointF(0, 0), doc.paperSize());
    for (int n = 1; n <= 3; ++n) {
        const LayoutField& image = doc.field(1, QStringLiteral("WrImage%1").arg(n));
        EXPECT_EQ(image.kind, LayoutField::Kind::Image) << n;
        EXPECT_TRUE(paper.contains(image.rect)) << n;
        // Room for a large symbol: its modules must stay readable when scanned.
        EXPECT_GE(std::min(image.rect.width(), image.rect.height()), 45.0) << n;
        EXPECT_TRUE(hasField(doc, QStringLiteral("Num%1").arg(n))) << n;
        EXPECT_TRUE(hasField(doc, QStringLiteral("WrText%1").arg(n))) << n;
    }
    EXPECT_FALSE(hasField(doc, QStringLiteral("WrImage4")));
}

TEST(SupplementLayout, RecipientCirclesAreHiddenUntilChosen) {
    LayoutDocument doc = shipped(QStringLiteral("SubDoc_200804.w30"));
    for (const char* name : {"CircleProxy", "CircleApplier"}) {
        const LayoutField& circle = doc.field(1, QString::fromUtf8(name));
        EXPECT_FALSE(circle.visible) << name;
        EXPECT_EQ(circle.frame, LayoutField::Frame::Ellipse) << name;
    }
    EXPECT_FALSE(doc.field(1, QStringLiteral("CircleProxy"))
                     .rect.intersects(doc.field(1, QStringLiteral("CircleApplier")).rect));
}

TEST(EquitySideSheetLayout, LandscapeWithTenHeadingsAndFifteenRowGroups) {
    LayoutDocument doc = shipped(QStringLiteral("FSVariableSub_Side.w30"));
    EXPECT_EQ(doc.paperSize(), QSizeF(297, 210));
    for (const char* name : {"NameText", "TitleText", "InfoTextA", "InfoTextB", "UnitText", "SubjectText", "VerifyID"})
        EXPECT_TRUE(hasField(doc, QString::fromUtf8(name))) << name;
    for (int n = 1; n <= 10; ++n) EXPECT_TRUE(hasField(doc, QStringLiteral("Col%1").arg(n, 2, 10, QLatin1Char('0'))));
    EXPECT_FALSE(hasField(doc, QStringLiteral("Col11")));

    const QRectF paper(QPointF(0, 0), doc.paperSize());
    double previousBottom = 0;
    for (int r = 1; r <= 15; ++r) {
        const QString group = QStringLiteral("Row%1").arg(r, 2, 10, QLatin1Char('0'));
        const LayoutField& row = doc.field(1, group);
        ASSERT_EQ(row.kind, LayoutField::Kind::Group) << r;
        EXPECT_TRUE(paper.contains(row.rect)) << r;
        // Rows run down the page without overlapping.
        EXPECT_GE(row.rect.top(), previousBottom) << r;
        previousBottom = row.rect.bottom();
        EXPECT_TRUE(hasField(doc, QStringLiteral("ItemName"), group)) << r;
        for (int a = 1; a <= 10; ++a) {
            const LayoutField& amount = doc.field(1, QStringLiteral("A%1").arg(a), group);
            EXPECT_EQ(amount.style.align, HAlign::Right) << r << " A" << a;
            // An amount stands under its own heading.
            const LayoutField& heading = doc.field(1, QStringLiteral("Col%1").arg(a, 2, 10, QLatin1Char('0')));
            EXPECT_GE(amount.rect.left(), heading.rect.left()) << r << " A" << a;
            EXPECT_LE(amount.rect.right(), heading.rect.right()) << r << " A" << a;
        }
        EXPECT_FALSE(hasField(doc, QStringLiteral("A11"), group)) << r;
    }
    EXPECT_FALSE(hasField(doc, QStringLiteral("Row16")));
    // The ID line stays below the last row.
    EXPECT_GE(doc.field(1, QStringLiteral("VerifyID")).rect.top(), previousBottom);
}

}  // namespace
}  // namespace kelvary
