// The statement checks on working tables built by hand. Expected texts are
// written out from the rules: value lines are the label padded with "_" to
// 100 bytes of code page 932 (a full-width character counts two) and the
// amount right-aligned in 16 characters, the pieces checked first on widths
// counted by hand.
#include "checks/StatementReport.h"
#include "checks/ValueLines.h"
#include "checks/clsVerifyFSData.h"
#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "print/PeriodImport.h"

#include "StatementHome.h"

#include <QSet>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::StatementHome;

const QString kParagraphEnd = QStringLiteral("\r\n\r\n");

QString underscores(int count) { return QString(count, QLatin1Char('_')); }

struct Outcome {
    bool errorFlag;
    QString message;
};

Outcome runCheck(std::int32_t code = 1, std::int32_t distinction = 1) {
    clsVerifyFSData checker;
    checker.setDistinction(distinction);
    checker.setFSDataCode(code);
    checker.CheckItemSum();
    return {checker.ErrorFlag(), checker.Message()};
}

TEST(StatementCheckTest, SignChecksListThousandsTruncatedTowardZero) {
    StatementHome home;
    home.item(1, QStringLiteral("現金預金"), 1, -1500, 10);
    home.item(11, QStringLiteral("貸倒引当金"), 1, 2999, 110);
    // Not an item of the statements, whatever the master says of its sign.
    home.exec(home.file(QStringLiteral("sample/Ledra.mdb")),
              "INSERT INTO M_FSItem (ItemCode, ItemName, DocCode, DocName, SortNumber_H, ItemValueType, EnforceDates) "
              "VALUES (10001, '仮項目', 1, '貸借対照表', 5000, 0, '20060701')");
    home.item(10001, QStringLiteral("仮項目"), 1, -5000, 5000);
    const Outcome outcome = runCheck();
    EXPECT_TRUE(outcome.errorFlag);
    // "　貸借対照表→現金預金：" is 24 bytes, "　貸借対照表→貸倒引当金：" 26.
    EXPECT_EQ(outcome.message,
              QStringLiteral("■本来プラスの金額であるべき科目に、０又はマイナスの金額が入力されています。\r\n\r\n") +
                  QStringLiteral("　貸借対照表→現金預金：") + underscores(76) + underscores(13) + QStringLiteral(" -1\r\n") +
                  kParagraphEnd +
                  QStringLiteral("■本来０又はマイナスの金額であるべき科目に、プラスの金額が入力されています。\r\n\r\n") +
                  QStringLiteral("　貸借対照表→貸倒引当金：") + underscores(74) + underscores(14) + QStringLiteral(" 2\r\n") +
                  kParagraphEnd);
}

TEST(StatementCheckTest, SumsAllowOneUnitPerRow) {
    StatementHome home;
    for (int i = 0; i < 3; ++i) {
        home.sql(QStringLiteral("INSERT INTO tmpFSItemData (FSDataCode, ItemCode, ItemName, ItemValue, DocCode, SortNumber) "
                                "VALUES (1, 10, 'その他', 1499, 1, 100)"));
    }
    home.item(12, QStringLiteral("流動資産合計"), 1, 4000, 120);
    const QString record = QStringLiteral("流動資産合計の計算が合いません\r\n流動資産の計算値\r\n流動資産合計\r\n1N,12T\r\n10\r\n");
    home.writeSumRules({{400, record}});
    // Three rows of 1,499 yen are 3 thousand; 4 is within the tolerance of three rows.
    const Outcome within = runCheck();
    EXPECT_EQ(within.message, QString());
    EXPECT_FALSE(within.errorFlag);

    home.sql(QStringLiteral("UPDATE tmpFSItemData SET ItemValue=7000 WHERE ItemCode=12"));
    const Outcome second = runCheck();
    EXPECT_TRUE(second.errorFlag);
    // "　流動資産の計算値：" 20 bytes, "　流動資産合計：" 16, "　差額：" 8.
    EXPECT_EQ(second.message, QStringLiteral("■流動資産合計の計算が合いません\r\n\r\n") + QStringLiteral("　流動資産の計算値：") +
                                    underscores(80) + QStringLiteral("______________ 3\r\n") +
                                    QStringLiteral("　流動資産合計：") + underscores(84) + QStringLiteral("______________ 7\r\n") +
                                    QStringLiteral("　差額：") + underscores(92) + QStringLiteral("_____________ -4\r\n") +
                                    kParagraphEnd);
}

TEST(StatementCheckTest, RecordCutShortIsAnnounced) {
    StatementHome home;
    home.item(103, QStringLiteral("売上高合計"), 2, 900000, 950);
    // The last record of the file ends after two of its three terms.
    home.writeSumRules({{540, QStringLiteral("題\r\n計\r\n対象\r\n3N,103T\r\n101,102")}});
    const Outcome outcome = runCheck();
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.kindLabel, QStringLiteral("3"));
    EXPECT_EQ(home.ui().messages[0].request.text, QStringLiteral("ファイルの終端に達しました\r\n項番：540\r\n科目：102"));
    // What was read is still compared: "　計：" is 6 bytes, "　対象：" and "　差額：" 8.
    EXPECT_EQ(outcome.message, QStringLiteral("■題\r\n\r\n　計：") + underscores(94) + QStringLiteral("______________ 0\r\n") +
                                   QStringLiteral("　対象：") + underscores(92) + QStringLiteral("____________ 900\r\n") +
                                   QStringLiteral("　差額：") + underscores(92) + QStringLiteral("___________ -900\r\n") +
                                   kParagraphEnd);
}

TEST(ValueLinesTest, FixedStringCountsFullWidthAsTwoBytes) {
    EXPECT_EQ(mstrFixedString(QStringLiteral("ab"), 5, QStringLiteral("_")), QStringLiteral("ab___"));
    EXPECT_EQ(mstrFixedString(QStringLiteral("資産"), 6, QStringLiteral("_")), QStringLiteral("資産__"));
    EXPECT_EQ(mstrFixedString(QString(), 3, QStringLiteral(" ")), QStringLiteral("   "));
    // Longer than the width: cut; a full-width character that would straddle
    // the last byte leaves a space instead, so the width stays exact.
    EXPECT_EQ(mstrFixedString(QStringLiteral("abcdef"), 4, QStringLiteral("_")), QStringLiteral("abcd"));
    EXPECT_EQ(mstrFixedString(QStringLiteral("a資産"), 4, QStringLiteral("_")), QStringLiteral("a資 "));
    // Half-width katakana is one byte.
    EXPECT_EQ(mstrFixedString(QStringLiteral("ｶﾅ"), 4, QStringLiteral("_")), QStringLiteral("ｶﾅ__"));
}

// The statement report composer against the shipped rule files and tables.
using test::IntakeHome;

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
