// Value helpers and application routines: the small routines every payload
// and printed form leans on.
#include "platform/AppObject.h"
#include "startup/FormEdition.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

using namespace kelvary;

TEST(glngLen, CountsCp932Bytes) {
    EXPECT_EQ(glngLen(Variant(QStringLiteral("ＡＢ"))), 4);
    EXPECT_EQ(glngLen(Variant(QStringLiteral("AB"))), 2);
    EXPECT_EQ(glngLen(Variant(QStringLiteral("ｱｲ"))), 2);  // half-width katakana: one byte each
    EXPECT_EQ(glngLen(Variant::null()), 0);
    EXPECT_EQ(glngLen(Variant(1234)), 4);
}

// Only the date 2008-04-01 itself, held as a date, is the current edition;
// the same day as text or with a time, and every other date, are earlier.
TEST(FormEdition, ReadFromTheEnforceDate) {
    EXPECT_EQ(formEditionFromEnforceDate(Variant(QDate(2008, 4, 1))), FormEdition::Form200804);
    for (const Variant& other : {Variant(QDate(2004, 3, 1)), Variant(QDate(2008, 3, 31)), Variant(QDate(2010, 4, 1)),
                                 Variant(VbDate{QDate(2008, 4, 1), 1}), Variant(QStringLiteral("2008/04/01")),
                                 Variant::null(), Variant()})
        EXPECT_EQ(formEditionFromEnforceDate(other), FormEdition::Earlier) << other.text().toStdString();
}
