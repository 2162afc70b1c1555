// Whole batch runs of applications with problems: the boxes and the report
// block in the transcript and, answered No, no output; and the statement
// checks of the earlier edition on the sample's newest period. (The sample's
// clean run is a test of the print driver's runs.)
#include "support/ConnectedHome.h"
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

// The earlier edition checks the statements of each period it prints: the
// newest period into a file, No to going on after a problem.
ProcessResult runEarlier(const ScratchHome& home) {
    return test::runKelvary({QStringLiteral("--batch"), QStringLiteral("--home"), home.path(), QStringLiteral("--mode"),
                             QStringLiteral("1"), QStringLiteral("--periods"), QStringLiteral("newest"),
                             QStringLiteral("--print-to"), home.file(QStringLiteral("out.pdf")),
                             test::writeEarlierApplication(home)});
}

// The title lines ("■…") of the problem lists in a transcript, in order.
QStringList findingTitles(const QString& transcript) {
    QStringList titles;
    for (const QString& line : transcript.split(QLatin1Char('\n')))
        if (line.startsWith(QStringLiteral("■"))) titles << line;
    return titles;
}

TEST(ProblemRunTest, OneWrongAmountTellsEachFindingOnce) {
    ScratchHome home;
    // 当期純利益 of the income statement a million yen above the equity statement's.
    test::sqlExec(home.file(QStringLiteral("sample/Ledra.mdb")),
                  "UPDATE P_FSItemData SET ItemValue=ItemValue+1000000 WHERE FSDataCode=15 AND ItemCode=177");
    const ProcessResult r = runEarlier(home);
    EXPECT_EQ(r.exitCode, 1) << r.standardError.toStdString();
    EXPECT_EQ(findingTitles(r.standardError),
              (QStringList{QStringLiteral("■損益計算書の当期純利益（当期純損失）の計算が合っていません"),
                           QStringLiteral("■損益計算書の当期純利益（当期純損失）が経常利益から計算した額と一致していません"),
                           QStringLiteral("■損益計算書の当期純利益が株主資本等変動計算書と一致していません")}))
        << r.standardError.toStdString();
}

TEST(ProblemRunTest, RightStatementsPassWhateverTheFilesAroundThemLookLike) {
    {
        SCOPED_TRACE("an equity row without an item code");
        ScratchHome home;
        test::sqlExec(home.file(QStringLiteral("sample/Ledra.mdb")),
                      "INSERT INTO T_FSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType) "
                      "VALUES (15, 0, '（注記）', NULL, 10)");
        const ProcessResult r = runEarlier(home);
        EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
        EXPECT_FALSE(r.standardError.contains(QStringLiteral("=== 3 "))) << r.standardError.toStdString();
        EXPECT_TRUE(QFile::exists(home.file(QStringLiteral("out.pdf"))));
    }
    {
        SCOPED_TRACE("a rule file without its last line break");
        ScratchHome home;
        const QString rules = home.file(QStringLiteral("DbtData0607H.txt"));
        QByteArray text = test::readFile(rules);
        ASSERT_TRUE(text.endsWith("\r\n"));
        text.chop(2);
        test::writeFile(rules, text);
        const ProcessResult r = runEarlier(home);
        EXPECT_EQ(r.exitCode, 0) << r.standardError.toStdString();
        EXPECT_FALSE(r.standardError.contains(QStringLiteral("=== 3 "))) << r.standardError.toStdString();
        EXPECT_TRUE(QFile::exists(home.file(QStringLiteral("out.pdf"))));
    }
}

}  // namespace
}  // namespace kelvary
