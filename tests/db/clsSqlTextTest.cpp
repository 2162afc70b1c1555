// clsSqlText: the literals of each field type and the box for an ADO type
// it does not know.
#include "db/clsSqlText.h"

#include "platform/Recordset.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

// The insert text of one field A of table T.
QString insertOf(const Variant& value, int fieldType, int adoType = 0) {
    clsSqlText sql;
    sql.SetData(QStringLiteral("A"), value, fieldType, adoType);
    sql.SetTable(QStringLiteral("T"));
    return sql.GetInsertSql();
}

QString values(const char* literal) {
    return QStringLiteral("insert into T(A) values(") + QString::fromUtf8(literal) + QLatin1Char(')');
}

TEST(clsSqlText, NumberLiterals) {
    EXPECT_EQ(insertOf(Variant::fromLong(1), 0), values("1"));
    EXPECT_EQ(insertOf(Variant::fromLong(-30), 0), values("-30"));
    EXPECT_EQ(insertOf(Variant(1.5), 0), values("1.5"));
    EXPECT_EQ(insertOf(Variant(2.0), 0), values("2"));
    EXPECT_EQ(insertOf(Variant(1e15), 0), values("1E+15"));
    EXPECT_EQ(insertOf(Variant(true), 0), values("True"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("120")), 0), values("120"));
    // Nothing to write is null, never an empty place in the list.
    EXPECT_EQ(insertOf(Variant(QString()), 0), values("null"));
    EXPECT_EQ(insertOf(Variant::null(), 0), values("null"));
    EXPECT_EQ(insertOf(Variant(), 0), values("null"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("\u3000 ")), 0), values("null"));
}

TEST(clsSqlText, NumberTextsAreConvertedAsCDblDoes) {
    EXPECT_EQ(insertOf(Variant(QStringLiteral("１２")), 0), values("12"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("－１，２３４．５")), 0), values("-1234.5"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral(" 1,000 ")), 0), values("1000"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("&H1F")), 0), values("31"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("0012")), 0), values("12"));
    EXPECT_EQ(insertOf(Variant(QDate(2008, 4, 1)), 0), values("39539"));  // the day serial
    // By the column's own type: CLng and CInt round half to even, CCur keeps four decimals.
    EXPECT_EQ(insertOf(Variant(QStringLiteral("２．５")), 3, ado::adInteger), values("2"));
    EXPECT_EQ(insertOf(Variant(3.5), 3, ado::adSmallInt), values("4"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("1.23456")), 3, ado::adCurrency), values("1.2346"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("5")), 3, ado::adBoolean), values("True"));
}

TEST(clsSqlText, AValueThatDoesNotConvertLeavesTheStatementUnbuiltAndSaysWhy) {
    struct Case {
        Variant value;
        int fieldType;
        const char16_t* message;
    };
    const Case cases[] = {
        {Variant(QStringLiteral("1+1")), 0, u"テーブル「T」の項目「A」の値「1+1」は数値として読めません。この行は書き込みません。"},
        {Variant(QStringLiteral("(select 1)")), 0, u"テーブル「T」の項目「A」の値「(select 1)」は数値として読めません。この行は書き込みません。"},
        {Variant(QStringLiteral("1e999")), 0, u"テーブル「T」の項目「A」の値「1e999」は数値として読めません。この行は書き込みません。"},
        {Variant(QStringLiteral("1;2")), 0, u"テーブル「T」の項目「A」の値「1;2」は数値として読めません。この行は書き込みません。"},
        {Variant(QStringLiteral("未定")), 2, u"テーブル「T」の項目「A」の値「未定」は日付として読めません。この行は書き込みません。"},
        {Variant(QStringLiteral("2008/04/01# or #1")), 2,
         u"テーブル「T」の項目「A」の値「2008/04/01# or #1」は日付として読めません。この行は書き込みません。"},
        {Variant(1e300), 2, u"テーブル「T」の項目「A」の値「1E+300」は日付として読めません。この行は書き込みません。"},
    };
    struct TypedCase {
        Variant value;
        int adoType;
        const char16_t* message;
    };
    const TypedCase typedCases[] = {
        {Variant(QStringLiteral("40000")), ado::adSmallInt, u"テーブル「T」の項目「A」の値「40000」は数値として読めません。"},
        {Variant(QStringLiteral("3000000000")), ado::adInteger, u"テーブル「T」の項目「A」の値「3000000000」は数値として読めません。"},
        {Variant(QStringLiteral("1e99")), ado::adCurrency, u"テーブル「T」の項目「A」の値「1e99」は数値として読めません。"},
    };
    const test::ProgramFolder folder("[System]\r\nShowErrMsg=-1\r\n");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value.text().toStdString());
        test::RecordingUiGuard ui;
        EXPECT_EQ(insertOf(c.value, c.fieldType), QString());
        ASSERT_EQ(ui->messages.size(), 1);
        EXPECT_TRUE(ui->messages.front().request.text.contains(QStringLiteral("場所： GetInsertSql\r\n")));
        EXPECT_TRUE(ui->messages.front().request.text.contains(QString::fromUtf16(c.message)))
            << ui->messages.front().request.text.toStdString();
    }
    for (const TypedCase& c : typedCases) {
        SCOPED_TRACE(c.value.text().toStdString());
        test::RecordingUiGuard ui;
        EXPECT_EQ(insertOf(c.value, 3, c.adoType), QString());
        ASSERT_EQ(ui->messages.size(), 1);
        EXPECT_TRUE(ui->messages.front().request.text.contains(QString::fromUtf16(c.message)))
            << ui->messages.front().request.text.toStdString();
    }
}

TEST(clsSqlText, TextLiteralsDoubleTheirQuotes) {
    EXPECT_EQ(insertOf(Variant(QStringLiteral("x")), 1), values("'x'"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("O'Brien建設")), 1), values("'O''Brien建設'"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("''")), 1), values("''''''"));
    EXPECT_EQ(insertOf(Variant::null(), 1), values("''"));
    EXPECT_EQ(insertOf(Variant::fromLong(7), 1), values("'7'"));
}

TEST(clsSqlText, DateLiterals) {
    EXPECT_EQ(insertOf(Variant(QDate(2008, 4, 1)), 2), values("#2008/04/01#"));
    EXPECT_EQ(insertOf(Variant(VbDate{QDate(2019, 5, 1), 3600}), 2), values("#2019/05/01#"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("2008/4/1")), 2), values("#2008/04/01#"));
    EXPECT_EQ(insertOf(Variant(QString()), 2), values("null"));
    EXPECT_EQ(insertOf(Variant::null(), 2), values("null"));
    EXPECT_EQ(insertOf(Variant(QStringLiteral("\u3000")), 2), values("null"));
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
