// The application rules against whole problem texts written out by hand, case
// by case from tests/data/checks/ApplicationCheck.tsv, and the report
// composer when its own check fails.
#include "checks/ProblemReport.h"
#include "checks/clsVerifyAPData.h"
#include "checks/clsVerifyAPData_200804.h"

#include "CheckHome.h"

#include <gtest/gtest.h>

#include <memory>

namespace kelvary {
namespace {

using test::CheckHome;
using test::runApplicationCheck;

// The cases of tests/data/checks/ApplicationCheck.tsv, each on a fresh valid record.
TEST(ApplicationCheckTest, EveryCaseOfTheTable) {
    std::unique_ptr<CheckHome> home;
    QString name;
    int rows = 0;
    for (const QStringList& row : test::dataTable(QStringLiteral("checks/ApplicationCheck.tsv"))) {
        ASSERT_EQ(row.size(), 3) << "line " << row[0].toStdString();
        if (row[1] == QLatin1String("case")) {
            home.reset();
            home = std::make_unique<CheckHome>();
            name = row[2];
            continue;
        }
        SCOPED_TRACE("ApplicationCheck.tsv line " + row[0].toStdString() + ", case " + name.toStdString());
        ASSERT_TRUE(home);
        home->set(row[1]);
        const test::CheckResult result = runApplicationCheck(FormEdition::Form200804);
        EXPECT_EQ(result.message, row[2]);
        EXPECT_EQ(result.errorFlag, !row[2].isEmpty());
        ++rows;
    }
    EXPECT_EQ(rows, 12);
}

// A failed check is a problem, never a pass: the error report comes first,
// then the usual boxes and the list with the program-error paragraph.
TEST(ProblemReportTest, FailedCheckIsReportedAsAProblem) {
    CheckHome home;
    home.exec(home.database(), "ALTER TABLE tmpAPData DROP COLUMN OfficeTel");
    // The run opens its connection on the outdated database.
    gobjConnection = gobjOpenConnection();
    QString report;
    EXPECT_FALSE(mblnVaridateAPData(FormEdition::Form200804, 1, true, true, report));
    EXPECT_EQ(report, QStringLiteral("■プログラムのエラーが発生しました。(場所:mCheckAPData)\r\n"
                                     "　データファイルが更新されていない可能性があります。ノルデバンを実行してください。\r\n\r\n"));
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mCheckAPData")});
    EXPECT_EQ(home.ui().reports.size(), 1);
}

}  // namespace
}  // namespace kelvary
