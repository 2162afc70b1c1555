// clsSqlText: the literals of each field type and the box for an ADO type
// it does not know.
#include "db/clsSqlText.h"

#include "platform/Recordset.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

// Each value of tests/data/db/SqlText.tsv as field A of table T: the literal
// of its insert text, or the one box that says why there is none.
TEST(clsSqlText, EveryCaseOfTheTable) {
    const test::ProgramFolder folder("[System]\r\nShowErrMsg=-1\r\n");
    const QList<QStringList> rows = test::dataTable(QStringLiteral("db/SqlText.tsv"));
    ASSERT_EQ(rows.size(), 42);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 5) << "line " << row[0].toStdString();
        SCOPED_TRACE("SqlText.tsv line " + row[0].toStdString() + ": " + row[1].toStdString());
        test::RecordingUiGuard ui;
        clsSqlText sql;
        int fieldType = row[2].toInt();
        sql.SetData(QStringLiteral("A"), test::variantCell(row[1]), fieldType, row[3].toInt());
        sql.SetTable(QStringLiteral("T"));
        const QString got = sql.GetInsertSql();
        if (!row[4].startsWith(QStringLiteral("refused~"))) {
            EXPECT_EQ(got, QStringLiteral("insert into T(A) values(") + row[4] + QLatin1Char(')'));
            EXPECT_TRUE(ui->messages.isEmpty());
            continue;
        }
        EXPECT_EQ(got, QString());
        ASSERT_EQ(ui->messages.size(), 1);
        const QString& box = ui->messages.front().request.text;
        EXPECT_TRUE(box.contains(QStringLiteral("場所： GetInsertSql\r\n"))) << box.toStdString();
        EXPECT_TRUE(box.contains(row[4].mid(8))) << box.toStdString();
    }
}

TEST(clsSqlText, UnknownAdoTypeShowsOneBoxAndWritesText) {
    test::RecordingUiGuard ui;
    clsSqlText sql;
    int fieldType = 3;
    sql.SetData(QStringLiteral("Amount"), Variant(QStringLiteral("1.25")), fieldType, 131);
    EXPECT_EQ(fieldType, 1);
    int second = 0;
    sql.SetData(QStringLiteral("Code"), Variant::fromLong(4), second, 131);  // not type 3: no box
    sql.SetTable(QStringLiteral("T"));
    EXPECT_EQ(sql.GetInsertSql(), QStringLiteral("insert into T(Amount,Code) values('1.25',4)"));
    ASSERT_EQ(ui->messages.size(), 1);
    const MessageRequest& box = ui->messages.front().request;
    EXPECT_EQ(box.kindLabel, QStringLiteral("0"));
    EXPECT_EQ(box.icon, MsgIcon::Information);
    EXPECT_EQ(box.text, QStringLiteral("clsSqlText(SetData)\r\n不明なFieldTypeAmount(タイプ:131)"));
}

}  // namespace
}  // namespace kelvary
