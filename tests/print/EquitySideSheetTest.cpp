// The equity side sheet: amounts in thousands with "△", the period's own
// reserve names, no sheet without rows, and more than 15 rows over two sheets.
#include "print/EquitySideSheet.h"

#include "PageBuilderHome.h"
#include "db/mdlFunctionDatabase.h"


namespace kelvary {
namespace {

using test::pdfText;

class EquitySideSheet : public test::PageBuilderHome {
protected:
    void SetUp() override {
        PageBuilderHome::SetUp();
        test::sqlExecFile(home.file(QStringLiteral("Ledra_dummy.mdb")), QStringLiteral("print/SideSheetPeriod.sql"));
    }

    // Runs statements on the sibling database the links point at.
    void sibling(const std::string& sql) { test::sqlExec(home.file(QStringLiteral("Ledra_dummy.mdb")), sql.c_str()); }

    // Rows named 行1, 行2 … with 1,000 yen times their number as the total.
    void rows(int count, int firstRowNo = 1) {
        std::string sql;
        for (int n = firstRowNo; n < firstRowNo + count; ++n)
            sql += "INSERT INTO T_FSCapitalRow (FSDataCode, RowNo, RowName, BenefitTotal) VALUES (3, " +
                   std::to_string(n) + ", '行" + std::to_string(n) + "', " + std::to_string(n * 1000) + ");";
        sibling(sql);
    }

    QString printSheet() {
        frmPrintManager& pm = manager(QStringLiteral("side.pdf"));
        mPrintVariableTemp(pm, 3);
        finishPdf();
        return pdf(QStringLiteral("side.pdf"));
    }
};

TEST_F(EquitySideSheet, NoRowsPrintNothing) {
    frmPrintManager& pm = manager();
    mPrintVariableTemp(pm, 3);
    EXPECT_EQ(pm.collectedPageCount(), 0);
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
}

TEST_F(EquitySideSheet, MoreThanFifteenRowsGoOnOverASecondSheetWithTheSameHeader) {
    rows(17);
    const QString file = printSheet();
    EXPECT_EQ(test::qpdfCheck(file), 0);
    EXPECT_EQ(test::pdfInfo(file, QStringLiteral("Pages")), QStringLiteral("2"));
    const QString first = pdfText(file, 1);
    const QString second = pdfText(file, 2);
    EXPECT_TRUE(first.contains(QStringLiteral("行15")));
    EXPECT_FALSE(first.contains(QStringLiteral("行16")));
    for (const char* expected : {"行16", "行17", "（会社名）株式会社ケルバリー建設", "株主資本等変動計算書",
                                 "圧縮積立金", "利益剰余金合計", "17", "[ID]0000012320260101120000"})
        EXPECT_TRUE(test::holdsText(second, QString::fromUtf8(expected))) << expected;
    EXPECT_FALSE(second.contains(QStringLiteral("行15")));
    EXPECT_FALSE(second.contains(QStringLiteral("行1 ")));
}

// The sample's newest period (第40期, FSDataCode 15) read through the links
// from the sample's sibling database.
class SampleSideSheet : public test::PageBuilderHome {
protected:
    void SetUp() override {
        PageBuilderHome::SetUp();
        for (const char* table : {"T_FS", "T_FSCapitalCol", "T_FSCapitalRow", "M_FSItemDetail", "T_FSItemDetail"})
            gRefreshLinkTable(QString::fromLatin1(table), home.file(QStringLiteral("sample/Ledra.mdb")));
    }
};

// The line of the page's laid-out text that starts with the row name.
QString rowLine(const QString& text, const QString& rowName) {
    for (const QString& line : text.split(QLatin1Char('\n')))
        if (line.trimmed() == rowName || line.trimmed().startsWith(rowName + QLatin1Char(' '))) return line;
    return QString();
}

// The amounts of a line, left to right.
QStringList amountsOf(const QString& line) {
    QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (!words.isEmpty()) words.removeFirst();
    return words;
}

TEST_F(SampleSideSheet, NewestPeriodPrintsItsReservesInThousands) {
    frmPrintManager& pm = manager(QStringLiteral("sample.pdf"));
    mPrintVariableTemp(pm, 15);
    finishPdf();
    const QString file = pdf(QStringLiteral("sample.pdf"));
    EXPECT_EQ(test::qpdfCheck(file), 0);
    EXPECT_EQ(test::pdfInfo(file, QStringLiteral("Pages")), QStringLiteral("1"));
    const QString text = pdfText(file, 1);
    // The period's own reserve names replace the master's first ones.
    for (const char* expected : {"（会社名）（株）北斗建設", "特別償却準備金", "準備金２", "準備金３", "圧縮積立金",
                                 "積立金２", "積立金３", "繰越利益剰余金"})
        EXPECT_TRUE(test::holdsText(text, QString::fromUtf8(expected))) << expected;
    EXPECT_FALSE(text.contains(QStringLiteral("準備金１")));
    EXPECT_FALSE(text.contains(QStringLiteral("積立金１")));

    // 当期末残高: legal reserve 8,400,000, reserve 1 3,600,000, fund 1
    // 5,200,000, general reserve 140,000,000, carried over 120,972,930, total
    // 278,172,930 yen.
    EXPECT_EQ(amountsOf(rowLine(text, QStringLiteral("当期末残高"))),
              (QStringList{"8,400", "3,600", "5,200", "140,000", "120,972", "278,172"}));
    // A dividend of 5,892,500 yen lowers the carried-over earnings and the total.
    EXPECT_EQ(amountsOf(rowLine(text, QStringLiteral("剰余金の配当"))), (QStringList{"△5,892", "△5,892"}));
    // Changes outside the reserves leave their row empty.
    ASSERT_FALSE(rowLine(text, QStringLiteral("新株の発行")).isEmpty());
    EXPECT_EQ(amountsOf(rowLine(text, QStringLiteral("新株の発行"))), QStringList{});
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
}

}  // namespace
}  // namespace kelvary
