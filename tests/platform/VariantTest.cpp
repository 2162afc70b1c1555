// Variant conversions and VB Format as VB performs them; the payload texts are
// built from these forms. Format goes case by case from tests/data/platform/VbFormat.tsv:
// the patterns the program prints with, the values VB gives for them, and
// patterns that must be refused.
#include "platform/Variant.h"
#include "platform/VbFormat.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

using namespace kelvary;

namespace {
long errorNumberOf(const std::function<void()>& f) { return test::raised(f).number; }
}  // namespace

TEST(VariantText, NullRaisesInCStrButNotInConcatenation) {
    EXPECT_EQ(errorNumberOf([] { (void)Variant::null().toString(); }), vberr::InvalidUseOfNull);
    EXPECT_EQ(Variant::null().text(), QString());
}

TEST(VariantNumbers, ClngRoundsHalfToEven) {
    EXPECT_EQ(Variant(2.5).toLong(), 2);
    EXPECT_EQ(Variant(3.5).toLong(), 4);
    EXPECT_EQ(Variant(-2.5).toLong(), -2);
    EXPECT_EQ(Variant(QStringLiteral(" 1,234 ")).toLong(), 1234);
    EXPECT_EQ(Variant(true).toLong(), -1);
    EXPECT_EQ(Variant().toLong(), 0);
    EXPECT_EQ(errorNumberOf([] { (void)Variant(QStringLiteral("abc")).toLong(); }), vberr::TypeMismatch);
    EXPECT_EQ(errorNumberOf([] { (void)Variant(3e9).toLong(); }), vberr::Overflow);
    EXPECT_EQ(errorNumberOf([] { (void)Variant(40000).toInteger(); }), vberr::Overflow);
}

TEST(VariantDates, TextsAndSerials) {
    EXPECT_EQ(Variant(QStringLiteral("2008/4/1")).toDate().date, QDate(2008, 4, 1));
    EXPECT_EQ(Variant(QStringLiteral("2008-04-01")).toDate().date, QDate(2008, 4, 1));
    EXPECT_TRUE(Variant(QStringLiteral("2008/02/29")).isDate());
    EXPECT_FALSE(Variant(QStringLiteral("2007/02/29")).isDate());
    // 39539 is VB's serial number of 2008-04-01.
    EXPECT_EQ(Variant(QDate(2008, 4, 1)).toDouble(), 39539.0);
    EXPECT_EQ(Variant(39539.5).toDate(), (VbDate{QDate(2008, 4, 1), 12 * 3600}));
}

TEST(VariantCurrency, FourDecimalsRoundedHalfToEven) {
    EXPECT_EQ(Variant(2.345678).toCurrency().scaled, 23457);
}

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
