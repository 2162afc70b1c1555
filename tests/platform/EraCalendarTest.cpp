// Japanese era lookup at the boundaries of the modern eras.
#include "platform/EraCalendar.h"

#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

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
