// The application report composer when its own check fails.
#include "checks/ProblemReport.h"

#include "CheckHome.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::CheckHome;

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
