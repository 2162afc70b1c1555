// The statement report composer against the shipped rule files and tables.
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

}  // namespace
}  // namespace kelvary
