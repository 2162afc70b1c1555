// The Jet-to-SQLite translation: what changes, what must not change inside
// quoted texts, and the texts that are refused.
#include "platform/JetSql.h"
#include "platform/VbError.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

QString jet(const char* sql) { return translateJetSql(QString::fromUtf8(sql)); }

QString refusal(const char* sql) {
    try {
        translateJetSql(QString::fromUtf8(sql));
    } catch (const VbError& e) {
        return e.description();
    }
    return QStringLiteral("<accepted>");
}

TEST(JetSql, DateLiteralsBecomeStoredDateTexts) {
    EXPECT_EQ(jet("Select * From T Where (EnforceDate=#2008/04/01#)"),
              QStringLiteral("Select * From T Where (EnforceDate='2008-04-01')"));
    EXPECT_EQ(jet("values(#2008/4/1#)"), QStringLiteral("values('2008-04-01')"));
    EXPECT_EQ(jet("values(#2008-04-01#)"), QStringLiteral("values('2008-04-01')"));
    // Jet's US order when the year comes last, with its two-digit year window.
    EXPECT_EQ(jet("#4/1/2008#"), QStringLiteral("'2008-04-01'"));
    EXPECT_EQ(jet("#12/31/29#"), QStringLiteral("'2029-12-31'"));
    EXPECT_EQ(jet("#1/2/30#"), QStringLiteral("'1930-01-02'"));
    // A time is kept; midnight is the date alone, as dates are stored.
    EXPECT_EQ(jet("#2008/04/01 9:05#"), QStringLiteral("'2008-04-01 09:05:00'"));
    EXPECT_EQ(jet("#2019/05/01 23:59:58#"), QStringLiteral("'2019-05-01 23:59:58'"));
    EXPECT_EQ(jet("#2008/04/01 00:00:00#"), QStringLiteral("'2008-04-01'"));
}

TEST(JetSql, InvalidDateLiteralsAreRefused) {
    EXPECT_TRUE(refusal("Where D=#2008/02/30#").contains(QStringLiteral("#2008/02/30#")));
    EXPECT_TRUE(refusal("Where D=#2008/13/01#").contains(QStringLiteral("日付")));
    EXPECT_TRUE(refusal("Where D=#abc#").contains(QStringLiteral("日付")));
    EXPECT_TRUE(refusal("Where D=#2008/04/01").contains(QStringLiteral("日付")));
    EXPECT_TRUE(refusal("Where D=#2008/04/01 25:00#").contains(QStringLiteral("日付")));
}

TEST(JetSql, IsNullBecomesIsNullTest) {
    EXPECT_EQ(jet(" AND (IsNull(M_FSItem.SortNumber_H)=False)"),
              QStringLiteral(" AND (((M_FSItem.SortNumber_H) IS NULL)=0)"));
    EXPECT_EQ(jet("isnull(M_FSItem.SortNumber_K) = False"),
              QStringLiteral("((M_FSItem.SortNumber_K) IS NULL) = 0"));
    // Nested parentheses, a literal holding a parenthesis, and a second IsNull inside.
    EXPECT_EQ(jet("ISNULL ( f(a, ')') + IsNull(b) )"),
              QStringLiteral("(( f(a, ')') + ((b) IS NULL) ) IS NULL)"));
    // A column of that name, qualified, is a name.
    EXPECT_EQ(jet("Select T.IsNull From T"), QStringLiteral("Select T.IsNull From T"));
    EXPECT_TRUE(refusal("Where IsNull(a").contains(QStringLiteral("かっこ")));
}

TEST(JetSql, QuotedTextsStayAsWritten) {
    EXPECT_EQ(jet("Where ItemName='True & #1/1/2000# isnull(x); Delete'"),
              QStringLiteral("Where ItemName='True & #1/1/2000# isnull(x); Delete'"));
    // A doubled quote is one quote inside the literal, not its end.
    EXPECT_EQ(jet("values('O''Brien建設',True)"), QStringLiteral("values('O''Brien建設',1)"));
    EXPECT_EQ(jet("Where [Order Name]='x'"), QStringLiteral("Where [Order Name]='x'"));
    EXPECT_EQ(jet(" AND (M_FSItem.EnforceDates Like '%200804%')"),
              QStringLiteral(" AND (M_FSItem.EnforceDates Like '%200804%')"));
    EXPECT_TRUE(refusal("Where A='open").contains(QStringLiteral("引用符")));
}

TEST(JetSql, DoubleQuotedTextsAreJetTextLiterals) {
    EXPECT_EQ(jet("Where A=\"x\""), QStringLiteral("Where A='x'"));
    EXPECT_EQ(jet("Where A=\"say \"\"hi\"\" it's\""), QStringLiteral("Where A='say \"hi\" it''s'"));
}

TEST(JetSql, OperatorsThatDifferFromSqlite) {
    EXPECT_EQ(jet("Select A & '-' & B From T"), QStringLiteral("Select A || '-' || B From T"));
    // 7/2 is 3.5 in Jet; SQLite would divide two integers to 3.
    EXPECT_EQ(jet("Select ItemValue/1000 From T"), QStringLiteral("Select ItemValue*1.0/1000 From T"));
    // Minus minus one: in SQLite "--" would start a comment.
    EXPECT_EQ(jet("update T set A=A--1 where B=1"), QStringLiteral("update T set A=A- -1 where B=1"));
}

TEST(JetSql, OneTextIsOneStatement) {
    // A closing ';' with blanks after it is allowed and dropped.
    EXPECT_EQ(jet("Delete From T;"), QStringLiteral("Delete From T"));
    EXPECT_EQ(jet("Delete From T ; \r\n "), QStringLiteral("Delete From T "));
    EXPECT_EQ(jet("Delete From T Where A=';x'"), QStringLiteral("Delete From T Where A=';x'"));
    const QString second = QStringLiteral("SQL ステートメントの後に文字が見つかりました。");
    EXPECT_EQ(refusal("Delete From T; Delete From U"), second);
    EXPECT_EQ(refusal("Select * From T;--"), second);
    EXPECT_EQ(refusal("insert into T(A) values('x');drop table T"), second);
    EXPECT_EQ(refusal("Delete From T;;x"), second);
}

}  // namespace
}  // namespace kelvary
