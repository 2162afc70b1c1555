// Layout files: what a layout gives (paper, pages, fields, groups), what it
// refuses with a message naming the file, and clearing a page's data.
#include "platform/LayoutDocument.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <functional>

namespace kelvary {
namespace {

LayoutDocument twoPages() { return LayoutDocument::load(test::testDataDir() + QStringLiteral("/platform/layouts/Two.w30")); }

long errorNumberOf(const std::function<void()>& f, QString* description = nullptr) {
    const test::Raised r = test::raised(f);
    if (description) *description = r.description;
    return r.number;
}

TEST(LayoutDocument, MissingFieldsAndPagesAreItemNotFoundNamingTheField) {
    LayoutDocument doc = twoPages();
    QString why;
    EXPECT_EQ(errorNumberOf([&] { doc.field(1, QStringLiteral("C35")); }, &why), vberr::ItemNotFound);
    EXPECT_TRUE(why.contains(QStringLiteral("「C35」"))) << why.toStdString();
    EXPECT_EQ(errorNumberOf([&] { doc.field(1, QStringLiteral("A11"), QStringLiteral("Row01")); }, &why),
              vberr::ItemNotFound);
    EXPECT_TRUE(why.contains(QStringLiteral("Row01.A11"))) << why.toStdString();
    // A sub-field's name alone does not address it outside its group.
    EXPECT_EQ(errorNumberOf([&] { doc.field(1, QStringLiteral("A1")); }), vberr::ItemNotFound);
    EXPECT_EQ(errorNumberOf([&] { doc.page(3); }), vberr::ItemNotFound);
    EXPECT_EQ(errorNumberOf([&] { doc.page(0); }), vberr::ItemNotFound);
}

// The layouts of tests/data/platform/LayoutRefusals.tsv.
TEST(LayoutDocument, RefusalsNameTheFileAndTheReason) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/LayoutRefusals.tsv"));
    ASSERT_EQ(rows.size(), 4);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 3) << "line " << row[0].toStdString();
        SCOPED_TRACE("LayoutRefusals.tsv line " + row[0].toStdString());
        QString why;
        EXPECT_EQ(errorNumberOf([&] { LayoutDocument::fromJson(row[1].toUtf8(), QStringLiteral("Bad.w30")); }, &why),
                  vberr::BadFileMode);
        EXPECT_TRUE(why.startsWith(QStringLiteral("帳票ファイル「Bad.w30」を読み込めません。"))) << why.toStdString();
        EXPECT_TRUE(why.contains(row[2])) << why.toStdString();
    }
}

}  // namespace
}  // namespace kelvary
