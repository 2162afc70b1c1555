// Japanese era lookup at the boundaries of the modern eras.
#include "platform/EraCalendar.h"

#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <unicode/calendar.h>
#include <unicode/fieldpos.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <gtest/gtest.h>

#include <memory>

#include <thread>

namespace kelvary {
namespace {

// The boundaries of tests/data/platform/EraCalendar.tsv.
TEST(EraCalendar, BoundariesOfTheModernEras) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/EraCalendar.tsv"));
    ASSERT_EQ(rows.size(), 11);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 5) << "line " << row[0].toStdString();
        SCOPED_TRACE(row[1].toStdString());
        const JapaneseEra era = japaneseEraOf(QDate::fromString(row[1], Qt::ISODate));
        EXPECT_EQ(era.initial, row[2]);
        EXPECT_EQ(era.name, row[3]);
        EXPECT_EQ(era.year, row[4].toInt());
    }
}

// Every day from the first of Meiji to the end of 2100 against ICU's own
// Japanese calendar and its era patterns ("GGGG" the name, "GGGGG" the
// initial), read here straight from ICU.
TEST(EraCalendar, EveryDayAgreesWithIcusJapaneseCalendar) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale japanese("ja_JP@calendar=japanese");
    std::unique_ptr<icu::Calendar> calendar(
        icu::Calendar::createInstance(icu::TimeZone::getGMT()->clone(), japanese, status));
    icu::SimpleDateFormat name(icu::UnicodeString(u"GGGG"), japanese, status);
    icu::SimpleDateFormat initial(icu::UnicodeString(u"GGGGG"), japanese, status);
    ASSERT_TRUE(U_SUCCESS(status)) << u_errorName(status);
    const auto text = [&](const icu::SimpleDateFormat& pattern) {
        icu::UnicodeString formatted;
        icu::FieldPosition position;
        pattern.format(*calendar, formatted, position);
        return QString(reinterpret_cast<const QChar*>(formatted.getBuffer()), formatted.length());
    };
    int mismatches = 0;
    for (QDate day(1868, 9, 8); day <= QDate(2100, 12, 31) && mismatches < 5; day = day.addDays(1)) {
        calendar->setTime((static_cast<double>(day.toJulianDay() - 2440588) + 0.5) * 86400000.0, status);
        const int year = calendar->get(UCAL_YEAR, status);
        const JapaneseEra era = japaneseEraOf(day);
        if (era.year != year || era.name != text(name) || era.initial != text(initial)) {
            ++mismatches;
            ADD_FAILURE() << day.toString(Qt::ISODate).toStdString() << ": " << era.initial.toStdString()
                          << era.name.toStdString() << era.year << ", ICU " << text(initial).toStdString()
                          << text(name).toStdString() << year;
        }
    }
    EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
}

TEST(EraCalendar, RefusesDatesBeforeMeijiAndInvalidDates) {
    for (const QDate& date : {QDate(1868, 9, 7), QDate(1600, 1, 1), QDate()})
        EXPECT_EQ(test::raised([&] { japaneseEraOf(date); }).number, vberr::InvalidProcedureCall)
            << date.toString(Qt::ISODate).toStdString();
}

}  // namespace
}  // namespace kelvary
