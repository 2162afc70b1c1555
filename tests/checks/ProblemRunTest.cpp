// A whole batch run of an application with problems: the boxes and the
// report block in the transcript and, answered No, no output. (The sample's
// clean run is a test of the print driver's runs.)
#include "support/TestSupport.h"

#include <QFile>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::ProcessResult;
using test::ScratchHome;

ProcessResult runBatch(const ScratchHome& home, const QString& application, const QString& pdf) {
    return test::runKelvary({QStringLiteral("--batch"), QStringLiteral("--home"), home.path(), QStringLiteral("--mode"),
                             QStringLiteral("3"), QStringLiteral("--no-statements"), QStringLiteral("--pdf"), pdf,
                             application});
}

// Runs once the current print driver calls the application report composer
// at its application step.
TEST(ProblemRunTest, ProblemApplicationShowsTheReportAndStopsOnNo) {
    ScratchHome home;
    // Beside the sample's sibling database, which the file names as ".\".
    const QString application = home.file(QStringLiteral("sample/problem_app.dat"));
    ASSERT_TRUE(QFile::copy(test::testDataDir() + QStringLiteral("/checks/problem_app.dat"), application));
    const QString pdf = home.file(QStringLiteral("out.pdf"));
    const ProcessResult r = runBatch(home, application, pdf);
    EXPECT_EQ(r.exitCode, 1) << r.standardError.toStdString();
    EXPECT_FALSE(QFile::exists(pdf));
    const QString rule = QStringLiteral("＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝");
    const QString expected =
        QStringLiteral("=== 3 申請書：不正な項目の確認\n"
                       "経営状況分析申請書の入力欄に不正な項目があります\n"
                       "問題内容を確認してください\n"
                       "--- OK\n"
                       "=== report 入力内容の問題点一覧\n"
                       "経営状況分析申請書の問題内容\n") +
        rule +
        QStringLiteral("\n商号又は名称：株式会社北斗建設\n"
                       "審査基準日　：2009/03/31\n") +
        rule +
        QStringLiteral("\n\n"
                       "■申請書の「申請者欄の住所」が都道府県から入力されていません\n\n"
                       "■申請書の「申請時の許可番号の許可番号（左側２桁）」が２桁を超えています\n\n"
                       "■申請書の「商号又は名称」の組織形態に正しい略号が用いられていません。\n\n"
                       "　※法人の種類は、「（株）」のように全角３文字の略号で入力する必要があります。\n\n\n"
                       "--- closed\n"
                       "=== 2 注意\n");
    EXPECT_TRUE(r.standardError.contains(expected)) << r.standardError.toStdString();
}

}  // namespace
}  // namespace kelvary
