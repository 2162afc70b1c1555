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
        QString got;
        const long number = test::raised([&] { got = vbFormat(test::variantCell(row[1]), row[2]); }).number;
        EXPECT_EQ(number == 0 ? got : QStringLiteral("refused"), row[3]);
        EXPECT_TRUE(number == 0 || number == vberr::InvalidProcedureCall) << number;
    }
}

}  // namespace
}  // namespace kelvary
