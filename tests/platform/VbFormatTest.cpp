// VB Format, case by case from tests/data/platform/VbFormat.tsv: the patterns
// the program prints with, the values VB gives for them (zero, negatives,
// Empty, Null, texts), and patterns that must be refused.
#include "platform/VbFormat.h"

#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

TEST(VbFormat, EveryCaseOfTheTable) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/VbFormat.tsv"));
    ASSERT_EQ(rows.size(), 49);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        SCOPED_TRACE("VbFormat.tsv line " + row[0].toStdString() + ": " + row[2].toStdString());
        try {
            EXPECT_EQ(vbFormat(test::variantCell(row[1]), row[2]), row[3]);
        } catch (const VbError& e) {
            EXPECT_EQ(row[3], QStringLiteral("refused"));
            EXPECT_EQ(e.number(), vberr::InvalidProcedureCall);
        }
    }
}

}  // namespace
}  // namespace kelvary
