// The Jet-to-SQLite translation, case by case from tests/data/platform/JetSql.tsv:
// what changes, what must not change inside quoted texts, and the texts that
// are refused.
#include "platform/JetSql.h"
#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

TEST(JetSql, EveryCaseOfTheTable) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/JetSql.tsv"));
    ASSERT_EQ(rows.size(), 41);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 3) << "line " << row[0].toStdString();
        SCOPED_TRACE("JetSql.tsv line " + row[0].toStdString() + ": " + row[1].toStdString());
        QString got;
        const test::Raised r = test::raised([&] { got = translateJetSql(row[1]); });
        if (r.number != 0) got = QStringLiteral("refused:") + r.description;
        const QString& expected = row[2];
        if (expected.startsWith(QStringLiteral("refused~"))) {
            EXPECT_TRUE(got.startsWith(QStringLiteral("refused:")) && got.contains(expected.mid(8))) << got.toStdString();
        } else if (expected.startsWith(QStringLiteral("refused="))) {
            EXPECT_EQ(got, QStringLiteral("refused:") + expected.mid(8));
        } else {
            EXPECT_EQ(got, expected);
        }
    }
}

}  // namespace
}  // namespace kelvary
