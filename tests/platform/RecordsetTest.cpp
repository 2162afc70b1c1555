// Walking a detached recordset and looking up its fields, with the errors
// ADO raised past its end, for a missing field and for an unset recordset.
#include "platform/Recordset.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <functional>

namespace kelvary {
namespace {

long errorNumberOf(const std::function<void()>& action) { return test::raised(action).number; }

Recordset twoRows() {
    return Recordset({{QStringLiteral("IndexID"), ado::adInteger}, {QStringLiteral("ApplyerName"), ado::adVarWChar}},
                     {{Variant::fromLong(1), Variant(QStringLiteral("甲"))},
                      {Variant::fromLong(2), Variant::null()}});
}

// The program only walks forward, up to eof.
TEST(Recordset, WalksForwardToEofAndNoFurther) {
    Recordset rs = twoRows();
    EXPECT_FALSE(rs.eof());
    EXPECT_EQ(rs.value(0), Variant::fromLong(1));
    rs.moveNext();
    EXPECT_EQ(rs.value(QStringLiteral("IndexID")), Variant::fromLong(2));
    EXPECT_TRUE(rs.value(1).isNull());
    rs.moveNext();
    EXPECT_TRUE(rs.eof());
    EXPECT_EQ(errorNumberOf([&] { rs.value(0); }), 3021);
    EXPECT_EQ(errorNumberOf([&] { rs.moveNext(); }), 3021);
    EXPECT_EQ(rs.recordCount(), 2);
}

TEST(Recordset, MissingFieldRaisesItemNotFound) {
    const Recordset rs = twoRows();
    const test::Raised missing = test::raised([&] { rs.value(QStringLiteral("OtherSoftCode")); });
    EXPECT_EQ(missing.number, 3265);
    EXPECT_EQ(missing.description, QStringLiteral("要求された名前、または序数に対応する項目はコレクションで見つかりません。"));
    EXPECT_EQ(errorNumberOf([&] { rs.value(2); }), 3265);
    EXPECT_EQ(errorNumberOf([&] { rs.fieldName(-1); }), 3265);
}

TEST(Recordset, NothingRaisesObjectNotSet) {
    Recordset nothing;
    EXPECT_TRUE(nothing.isNothing());
    EXPECT_EQ(errorNumberOf([&] { nothing.eof(); }), 91);
    EXPECT_EQ(errorNumberOf([&] { nothing.moveNext(); }), 91);
    EXPECT_EQ(errorNumberOf([&] { nothing.value(QStringLiteral("A")); }), 91);
    EXPECT_EQ(errorNumberOf([&] { nothing.fieldCount(); }), 91);
}

}  // namespace
}  // namespace kelvary
