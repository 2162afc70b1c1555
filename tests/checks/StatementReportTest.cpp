// The statement report composer: the report header written out by hand, and
// the sample's three periods checked against the shipped rule files and tables.
#include "checks/StatementReport.h"

#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "print/PeriodImport.h"

#include "StatementHome.h"

#include <QSet>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::IntakeHome;
using test::StatementHome;

const QString kRule = QStringLiteral("＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝＝");

TEST(StatementReportTest, SamplePeriodsPassEveryCheck) {
    IntakeHome home;
    const QString file = home.file(QStringLiteral("sample/app.dat"));
    clsAnlBasicInfo().LoadData(file);
    clsApply2Data().LoadData(file);
    const QStringList periods = home.rows("SELECT IndexID, LinkCode FROM tblIndex ORDER BY IndexID");
    ASSERT_EQ(periods.size(), 3);
    for (const QString& period : periods) {
        const QStringList keys = period.split(QLatin1Char('|'));
        const std::int32_t indexId = keys[0].toInt();
        mCopyZaimuData(indexId, keys[1].toInt());
        mPutSpecialItemCode(indexId);
        mReplaceFixedAssets(indexId);
        const int items = home.rows(QStringLiteral("SELECT ItemCode FROM tmpFSItemData WHERE FSDataCode=%1").arg(indexId)).size();
        ASSERT_GT(items, 100) << period.toStdString();
        QString report = QStringLiteral("left over");
        EXPECT_TRUE(mblnVaridateFSData(0, indexId, true, report)) << period.toStdString();
        EXPECT_EQ(report, QString()) << report.toStdString();
        // The equity cells were only lent to the checks.
        EXPECT_EQ(home.rows(QStringLiteral("SELECT ItemCode FROM tmpFSItemData WHERE FSDataCode=%1").arg(indexId)).size(), items);
    }
    EXPECT_EQ(home.messageTexts(), QString());
    // The shipped rules are really there: cash and total assets raised alike
    // break the relation of the two totals and the sum of the current assets.
    home.exec(home.database(),
              "UPDATE tmpFSItemData SET ItemValue=ItemValue+5000000 WHERE FSDataCode=3 AND ItemCode IN (1, 52)");
    QString report;
    EXPECT_FALSE(mblnVaridateFSData(0, 3, true, report));
    EXPECT_TRUE(report.startsWith(QStringLiteral("■資産合計と負債純資産合計が一致していません\r\n"))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("■貸借対照表の流動資産合計が各科目の合計と一致していません\r\n")));
}

// The paragraphs of a problem list: each from its "■" line to the next.
QStringList paragraphs(const QString& report) {
    QStringList result;
    for (const QString& line : report.split(QStringLiteral("\r\n"))) {
        if (line.startsWith(QStringLiteral("■"))) result << QString();
        if (!result.isEmpty() && !line.isEmpty()) result.last() += line + QLatin1Char('\n');
    }
    return result;
}

TEST(StatementReportTest, NoSingleWrongAmountShowsTheSameParagraphTwice) {
    IntakeHome home;
    const QString file = home.file(QStringLiteral("sample/app.dat"));
    clsAnlBasicInfo().LoadData(file);
    clsApply2Data().LoadData(file);
    // The newest period, with its equity statement.
    mCopyZaimuData(3, 15);
    mPutSpecialItemCode(3);
    mReplaceFixedAssets(3);
    const QStringList codes = home.rows("SELECT DISTINCT ItemCode FROM tmpFSItemData WHERE FSDataCode=3 ORDER BY ItemCode");
    ASSERT_GT(codes.size(), 100);
    int failing = 0;
    for (const QString& code : codes) {
        const QString where = QStringLiteral(" WHERE FSDataCode=3 AND ItemCode=") + code;
        home.exec(home.database(), ("UPDATE tmpFSItemData SET ItemValue=ItemValue+5000000" + where).toUtf8().constData());
        QString report;
        if (!mblnVaridateFSData(0, 3, true, report)) ++failing;
        const QStringList found = paragraphs(report);
        EXPECT_EQ(QSet<QString>(found.begin(), found.end()).size(), found.size())
            << "item " << code.toStdString() << ":\n" << report.toStdString();
        home.exec(home.database(), ("UPDATE tmpFSItemData SET ItemValue=ItemValue-5000000" + where).toUtf8().constData());
    }
    // The rules are there to be met: most lines take part in some sum.
    EXPECT_GT(failing, codes.size() / 2);
}

TEST(StatementReportTest, ProblemsGoToTheListUnderThePeriodHeader) {
    StatementHome home;
    home.sql(QStringLiteral("UPDATE tmpFSInfoData SET TaxType=NULL"));
    QString report;
    EXPECT_FALSE(mblnVaridateFSData(0, 1, true, report));
    EXPECT_EQ(report, QStringLiteral("■基本情報の「税処理」が未設定です\r\n\r\n"));
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.kindLabel, QStringLiteral("3"));
    EXPECT_EQ(home.ui().messages[0].request.title, QStringLiteral("財務諸表：不正な項目の確認"));
    EXPECT_EQ(home.ui().messages[0].request.text, QStringLiteral("選択された財務諸表に不正な項目があります\r\n問題内容を確認してください"));
    ASSERT_EQ(home.ui().reports.size(), 1);
    EXPECT_EQ(home.ui().reports[0],
              QStringLiteral("入力内容の問題点一覧\n財務諸表の問題内容\r\n") + kRule +
                  QStringLiteral("\r\n商号又は名称：（株）北斗建設\r\n"
                                 "決算期　　　：40\r\n"
                                 "決算期間　　：自 平成20年04月01日 ～ 至 平成21年03月31日\r\n") +
                  kRule +
                  QStringLiteral("\r\n※このまま提出されますと分析を行うに際して、下記の内容確認の問合せ等で分析結果通知が遅延する可能性があります。\r\n"
                                 "\r\n"
                                 "■基本情報の「税処理」が未設定です\r\n\r\n"));
}

}  // namespace
}  // namespace kelvary
