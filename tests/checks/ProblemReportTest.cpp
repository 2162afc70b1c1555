// The application report composer: which boxes it shows, the list it hands
// to the problem window (header written out by hand), and its result.
#include "checks/ProblemReport.h"

#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"

#include "CheckHome.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::CheckHome;

const QString kTitle = QStringLiteral("申請書：不正な項目の確認");

TEST(ProblemReportTest, ProblemsGoToTheListUnderTheHeader) {
    CheckHome home;
    home.set(QStringLiteral("OfficeTel=NULL, LcnsNum1A='123'"));
    QString report;
    // Quiet does not hide problems.
    EXPECT_FALSE(mblnVaridateAPData(FormEdition::Form200804, 1, true, true, report));
    EXPECT_EQ(report, QStringLiteral("■申請書の「申請時の許可番号の許可番号（左側２桁）」が２桁を超えています\r\n\r\n"
                                     "■申請書の「主たる営業所の所在地の電話番号」が未入力（又は未設定）です\r\n\r\n"));
    ASSERT_EQ(home.ui().messages.size(), 1);
    const MessageRequest& box = home.ui().messages[0].request;
    EXPECT_EQ(box.kindLabel, QStringLiteral("3"));
    EXPECT_EQ(box.title, kTitle);
    EXPECT_EQ(box.text, QStringLiteral("経営状況分析申請書の入力欄に不正な項目があります\r\n問題内容を確認してください"));
    ASSERT_EQ(home.ui().reports.size(), 1);
    EXPECT_EQ(home.ui().reports[0],
              QStringLiteral("入力内容の問題点一覧\n"
                             "経営状況分析申請書の問題内容\r\n"
                             "＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝\r\n"
                             "商号又は名称：（株）北斗建設\r\n"
                             "審査基準日　：2009/03/31\r\n"
                             "＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝\r\n"
                             "\r\n"
                             "■申請書の「申請時の許可番号の許可番号（左側２桁）」が２桁を超えています\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の電話番号」が未入力（又は未設定）です\r\n\r\n"));
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

TEST(ProblemReportTest, SampleApplicationPassesEveryRule) {
    CheckHome home;
    home.exec(home.database(), "DELETE FROM tmpAPData");
    const QString file = home.file(QStringLiteral("sample/app.dat"));
    clsAnlBasicInfo().LoadData(file);
    clsApply2Data().LoadData(file);
    const QStringList codes = home.rows("SELECT APDataCode FROM tmpAPData");
    ASSERT_EQ(codes.size(), 1);
    QString report;
    EXPECT_TRUE(mblnVaridateAPData(FormEdition::Form200804, codes[0].toInt(), true, true, report));
    EXPECT_EQ(report, QString());
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

}  // namespace
}  // namespace kelvary
