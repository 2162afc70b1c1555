// VB Format: the patterns the program prints with, the values VB gives for
// them (zero, negatives, Empty, Null, texts), and patterns that must be refused.
// The "Windows" cases are results of the Windows runtime's own formatter.
#include "platform/VbFormat.h"

#include "platform/VbError.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

QString fmt(const Variant& value, const char* pattern) { return vbFormat(value, QString::fromUtf8(pattern)); }

long errorNumberOf(const Variant& value, const char* pattern) {
    try {
        fmt(value, pattern);
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

TEST(VbFormatNumber, TriangleForNegatives) {
    const char* pattern = "#,###;△#,##0";
    EXPECT_EQ(fmt(-1234, pattern), "△1,234");
    EXPECT_EQ(fmt(1234, pattern), "1,234");
    EXPECT_EQ(fmt(0, pattern), "");  // zero takes the first section, whose "#" writes nothing
    EXPECT_EQ(fmt(-0.4, pattern), "△0");  // the section follows the sign before rounding
    EXPECT_EQ(fmt(Variant(), pattern), "");
}

TEST(VbFormatNumber, RoundsHalfAwayFromZero) {
    EXPECT_EQ(fmt(2.5, "0"), "3");
    EXPECT_EQ(fmt(-2.5, "0"), "-3");
    EXPECT_EQ(fmt(0.4, "0"), "0");
    EXPECT_EQ(fmt(-0.4, "0"), "-0");
    EXPECT_EQ(fmt(1234.5, "#,##0"), "1,235");
    // 1.005 is stored as 1.00499999…; VB rounds its 15-digit decimal form.
    EXPECT_EQ(fmt(1.005, "0.00"), "1.01");
    EXPECT_EQ(fmt(Currency::fromDouble(0.5), "0"), "1");
    EXPECT_EQ(fmt(Currency::fromDouble(-1234.5678), "#,##0.00"), "-1,234.57");
}

TEST(VbFormatNumber, ResultsOfTheWindowsFormatter) {
    EXPECT_EQ(fmt(100000, "#,###,###,###"), "100,000");
    EXPECT_EQ(fmt(1, "0,000,000,000"), "0,000,000,001");
    EXPECT_EQ(fmt(1, "000###"), "000001");
    EXPECT_EQ(fmt(-1, "#;-#"), "-1");
    EXPECT_EQ(fmt(17, "#000"), "017");
    EXPECT_EQ(fmt(100, "0##"), "100");
    EXPECT_EQ(fmt(17, "#0.00"), "17.00");
    EXPECT_EQ(fmt(0.17, "#.00"), ".17");
    EXPECT_EQ(fmt(1.7, "#0"), "2");
    EXPECT_EQ(fmt(9.9999999, "#0.000000"), "10.000000");
    EXPECT_EQ(fmt(-1.57, "0.00"), "-1.57");
    EXPECT_EQ(fmt(-0.1, ".#"), "-.1");
    EXPECT_EQ(fmt(0.0049, "#.##"), ".");
    EXPECT_EQ(fmt(8.0995, "#.##"), "8.1");
    EXPECT_EQ(fmt(0.0099, "#.##"), ".01");
}

TEST(VbFormatDate, ResultsOfTheWindowsFormatter) {
    const Variant serial(2.525);  // 1900-01-01 12:36
    EXPECT_EQ(fmt(serial, "dd mm yyyy hh:mm:ss"), "01 01 1900 12:36:00");
    EXPECT_EQ(fmt(serial, "hh:dd :mm:mm"), "12:01 :01:01");
    EXPECT_EQ(fmt(serial, "dd:hh :mm:mm"), "01:12 :36:01");
    EXPECT_EQ(fmt(serial, "mm :ss:mm"), "01 :00:01");
    EXPECT_EQ(fmt(serial, "dd :mm:nn"), "01 :01:36");
}

TEST(VbFormat, RefusesPatternsItDoesNotKnow) {
    for (const char* pattern : {"0%", "@", "0.0E+00", "Currency", "$#,##0", "#,", "0-0", "yyyy0",
                                "mmm", "dddd", "aaa", "yyy", "\"open", "ggggg", "yyyy/mm/dd;yy"}) {
        EXPECT_EQ(errorNumberOf(12, pattern), vberr::InvalidProcedureCall) << pattern;
    }
    // The pattern is checked even when the value would not have used it.
    EXPECT_EQ(errorNumberOf(Variant::null(), "@"), vberr::InvalidProcedureCall);
}

}  // namespace
}  // namespace kelvary
