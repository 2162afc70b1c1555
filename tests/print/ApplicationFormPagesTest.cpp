// The application form builders: the one-page PDF form of mode 2 with the
// agent text, and a missing application record.
#include "print/ApplicationFormPages.h"

#include "PageBuilderHome.h"

namespace kelvary {
namespace {

using test::pdfText;

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
