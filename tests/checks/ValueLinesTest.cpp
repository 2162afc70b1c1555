// The fixed-width pieces of the statement problem texts, against widths
// counted by hand in code page 932 bytes.
#include "checks/ValueLines.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

TEST(ValueLinesTest, FixedStringCountsFullWidthAsTwoBytes) {
    EXPECT_EQ(mstrFixedString(QStringLiteral("ab"), 5, QStringLiteral("_")), QStringLiteral("ab___"));
    EXPECT_EQ(mstrFixedString(QStringLiteral("資産"), 6, QStringLiteral("_")), QStringLiteral("資産__"));
    EXPECT_EQ(mstrFixedString(QString(), 3, QStringLiteral(" ")), QStringLiteral("   "));
    // Longer than the width: cut; a full-width character that would straddle
    // the last byte leaves a space instead, so the width stays exact.
    EXPECT_EQ(mstrFixedString(QStringLiteral("abcdef"), 4, QStringLiteral("_")), QStringLiteral("abcd"));
    EXPECT_EQ(mstrFixedString(QStringLiteral("a資産"), 4, QStringLiteral("_")), QStringLiteral("a資 "));
    // Half-width katakana is one byte.
    EXPECT_EQ(mstrFixedString(QStringLiteral("ｶﾅ"), 4, QStringLiteral("_")), QStringLiteral("ｶﾅ__"));
}

}  // namespace
}  // namespace kelvary
