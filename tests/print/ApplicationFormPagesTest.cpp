// The application form builders: the one-page PDF form of mode 2 with the
// agent text, and a missing application record.
#include "print/ApplicationFormPages.h"

#include "PageBuilderHome.h"

namespace kelvary {
namespace {

using test::pdfText;

// A corporation licensed by the governor of Tokyo (general class), with a
// previous licence of the minister (special class) and three business years.
constexpr char kApplication[] =
    "INSERT INTO tmpAPData (APDataCode, MainDataCode, EnforceDate, ApplierColumnName, ApplierColumnAddress, "
    "ApplierColumnPresident, ContactPosition, ContactName, ContactTel, ContactFax, ApplyDate, PrefCode1, ClasCtgr1, "
    "LcnsNum1A, LcnsNum1B, LcnsDate1, PrefCode2, ClasCtgr2, LcnsNum2A, LcnsNum2B, LcnsDate2, BaseDate, FYearFrom1, "
    "FYearTo1, FYearCtgr1A, FYearCtgr1B, FYearFrom2, FYearTo2, FYearCtgr2A, FYearCtgr2B, FYearFrom3, FYearTo3, "
    "FYearCtgr3A, FYearCtgr3B, Distinction, LastApl, FType, TRNameKana, TRName, PSNameKana, PSName, "
    "OfficeCityCode, OfficeAddr, OfficeZipCode, OfficeTel, Item01Single, Item03, Remarks) VALUES (1, 1001, "
    "'2008-04-01', '株式会社ケルバリー建設', '東京都千代田区丸の内一丁目１番１号', '代表取締役　佐藤　一郎', "
    "'総務部', '鈴木　花子', '03-1234-5678', '03-1234-5679', '2009-07-15', 13, 1, '20', '012345', "
    "'2008-09-10', 0, 2, '19', '000777', '2003-09-10', '2009-03-31', '2008-04-01', '2009-03-31', 1, 12, "
    "'2007-04-01', '2008-03-31', 1, 12, '2006-04-01', '2007-03-31', 1, 12, 1, 1, 1, 'ケルバリーケンセツ', "
    "'株式会社ケルバリー建設', 'サトウ　イチロウ', '佐藤　一郎', '13101', '東京都千代田区丸の内一丁目１番１号', "
    "'100-0005', '03-1234-5678', 12345, 0, '特になし')";

class ApplicationForm : public test::PageBuilderHome {
protected:
    void SetUp() override {
        PageBuilderHome::SetUp();
        home.sqlExec(kApplication);
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
