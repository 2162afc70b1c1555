// Page builders: the equity side sheet (no sheet without rows, and more than
// 15 rows over two sheets; the sample's sheet is a case of
// tests/data/runs/Sample.cases), and the application form (the one-page PDF
// form of mode 2 with the agent text, and a missing application record).
#include "print/ApplicationFormPages.h"
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
    void rows(int count) {
        sibling("WITH RECURSIVE n(c) AS (SELECT 1 UNION ALL SELECT c + 1 FROM n WHERE c < " + std::to_string(count) +
                ") INSERT INTO T_FSCapitalRow (FSDataCode, RowNo, RowName, BenefitTotal) "
                "SELECT 3, c, '行' || c, c * 1000 FROM n");
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

class ApplicationForm : public test::PageBuilderHome {
protected:
    void SetUp() override {
        PageBuilderHome::SetUp();
        test::sqlExecFile(home.database(), QStringLiteral("print/ApplicationForm.sql"));
        setting("UserName", QStringLiteral("行政書士　田中　次郎"));
        setting("UserAddress", QStringLiteral("東京都港区芝公園一丁目２番３号"));
        setting("UserTel", QStringLiteral("03-9876-5432"));
        setting("UserFax", QStringLiteral("03-9876-5433"));
        setting("RegistNumber", QStringLiteral("R-123"));
    }
};

TEST_F(ApplicationForm, PdfModeTwoWritesTheOnePageFormWithTheAgentText) {
    frmPrintManager& pm = manager(QStringLiteral("form.pdf"), QStringLiteral("y"), OutputMode::ApplicationPdf);
    mPdfPrintAP(pm, 1, true);
    // The builder closes the file itself.
    const QString file = pdf(QStringLiteral("form.pdf"));
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_EQ(test::qpdfCheck(file), 0);
    EXPECT_EQ(test::pdfInfo(file, QStringLiteral("Pages")), QStringLiteral("1"));
    const QString text = pdfText(file);
    for (const char* expected : {"経営状況分析申請書", "申　請　者", "(上記代理人)", "行政書士　田中　次郎", "R-123",
                                 "東京都知事", "[ID]0000012320260101120000 ※"})
        EXPECT_TRUE(test::holdsText(text, QString::fromUtf8(expected))) << expected;
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
}

TEST_F(ApplicationForm, AMissingRecordIsReportedAndNoPageIsEnded) {
    frmPrintManager& pm = manager();
    mPrintAP(pm, 99, false, false);
    EXPECT_EQ(pm.collectedPageCount(), 0);
    ASSERT_EQ(errors().size(), 1);
    EXPECT_TRUE(errors()[0].contains(QStringLiteral("mPrintAP"))) << errors()[0].toStdString();
}

}  // namespace
}  // namespace kelvary
