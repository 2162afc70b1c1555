// Japanese era lookup at the boundaries of the modern eras.
#include "platform/EraCalendar.h"

#include "platform/VbError.h"

#include <gtest/gtest.h>

#include <thread>

namespace kelvary {
namespace {

struct EraCase {
    QDate date;
    const char* initial;
    const char* name;
    int year;
};

TEST(EraCalendar, BoundariesOfTheModernEras) {
    const EraCase cases[] = {
        {QDate(1868, 9, 8), "M", "明治", 1},
        {QDate(1912, 7, 29), "M", "明治", 45},
        {QDate(1912, 7, 30), "T", "大正", 1},
        {QDate(1926, 12, 24), "T", "大正", 15},
        {QDate(1926, 12, 25), "S", "昭和", 1},
        {QDate(1989, 1, 7), "S", "昭和", 64},
        {QDate(1989, 1, 8), "H", "平成", 1},
        {QDate(2008, 4, 1), "H", "平成", 20},
        {QDate(2019, 4, 30), "H", "平成", 31},
        {QDate(2019, 5, 1), "R", "令和", 1},
        {QDate(2026, 11, 22), "R", "令和", 8},
    };
    for (const EraCase& c : cases) {
        const JapaneseEra era = japaneseEraOf(c.date);
        EXPECT_EQ(era.initial, QString::fromUtf8(c.initial)) << c.date.toString(Qt::ISODate).toStdString();
        EXPECT_EQ(era.name, QString::fromUtf8(c.name)) << c.date.toString(Qt::ISODate).toStdString();
        EXPECT_EQ(era.year, c.year) << c.date.toString(Qt::ISODate).toStdString();
    }
}

TEST(EraCalendar, RefusesDatesBeforeMeijiAndInvalidDates) {
    for (const QDate& date : {QDate(1868, 9, 7), QDate(1600, 1, 1), QDate()}) {
        try {
            japaneseEraOf(date);
            ADD_FAILURE() << "no error for " << date.toString(Qt::ISODate).toStdString();
        } catch (const VbError& e) {
            EXPECT_EQ(e.number(), vberr::InvalidProcedureCall);
        }
    }
}

}  // namespace
}  // namespace kelvary
