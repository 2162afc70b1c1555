// The application form builders: the governor and class labels struck by the
// licence, blank era templates where a date or licence is missing, the agent
// switch, and the PDF layout's title column kept level with its texts.
#include "print/ApplicationFormPages.h"

#include "PageBuilderHome.h"
#include "db/mdlFunctionDatabase.h"

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
    void change(const char* assignments) {
        home.sqlExec((std::string("UPDATE tmpAPData SET ") + assignments + " WHERE APDataCode=1").c_str());
    }
    void write(bool byAgent = false, ApplicationLayout layout = ApplicationLayout::Print) {
        mWriteApplicationForm(manager(), 1, byAgent, layout);
    }
};

TEST_F(ApplicationForm, GovernorsLicenceStrikesTheMinisterAndNamesThePrefecture) {
    write();
    EXPECT_EQ(field("C9").text, QStringLiteral("13"));
    EXPECT_TRUE(field("C9b1").strikeLine);
    EXPECT_EQ(field("C9b1").text, QStringLiteral("国土交通大臣"));
    EXPECT_FALSE(field("C9b2").strikeLine);
    EXPECT_EQ(field("C9b2").text, QStringLiteral("東京都知事"));
    // General class: the special label is struck.
    EXPECT_FALSE(field("C10a").strikeLine);
    EXPECT_TRUE(field("C10b").strikeLine);
    EXPECT_EQ(field("C11").text, QStringLiteral("20"));
    EXPECT_EQ(field("C12").text, QStringLiteral("012345"));
    EXPECT_EQ(field("C13").text, QStringLiteral("平成20年 9月10日"));
    // The previous licence is the minister's, special class.
    EXPECT_EQ(field("C14").text, QStringLiteral("00"));
    EXPECT_FALSE(field("C14b1").strikeLine);
    EXPECT_TRUE(field("C14b2").strikeLine);
    EXPECT_EQ(field("C14b2").text, QStringLiteral("知事"));
    EXPECT_TRUE(field("C15a").strikeLine);
    EXPECT_FALSE(field("C15b").strikeLine);
    EXPECT_EQ(field("C18").text, QStringLiteral("平成15年 9月10日"));
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
}

TEST_F(ApplicationForm, WithoutALicenceNumberOnlyTheBlankDateIsWritten) {
    change("LcnsNum1B=NULL, LcnsNum2B=''");
    write();
    for (const char* name : {"C9b1", "C9b2", "C10a", "C10b", "C14b1", "C14b2", "C15a", "C15b"})
        EXPECT_FALSE(field(QString::fromLatin1(name)).strikeLine) << name;
    EXPECT_EQ(field("C9b2").text, QStringLiteral("知事"));
    EXPECT_EQ(field("C11").text, field("C11").defaultText);
    EXPECT_EQ(field("C12").text, field("C12").defaultText);
    // Six blanks for the era and year, two for the month and for the day.
    EXPECT_EQ(field("C13").text, QStringLiteral("      年  月  日"));
    EXPECT_EQ(field("C18").text, QStringLiteral("      年  月  日"));
}

TEST_F(ApplicationForm, AgentSwitchDecidesBetweenTheAgentTextAndTheAgentBlock) {
    setting("UserClass", QStringLiteral("1"));
    write(false);
    EXPECT_EQ(field("ApplierColumn").text,
              QStringLiteral("東京都千代田区丸の内一丁目１番１号\r\n株式会社ケルバリー建設\r\n代表取締役　佐藤　一郎"));
    EXPECT_EQ(field("ProxyColumn").text,
              QStringLiteral("東京都港区芝公園一丁目２番３号　　行政書士　田中　次郎\r\n登録R-123号 TEL:03-9876-5432 "
                             "FAX:03-9876-5433"));
    EXPECT_EQ(field("RegistNumber").text, field("RegistNumber").defaultText);

    write(true);
    EXPECT_EQ(
        field("ApplierColumn").text,
        QStringLiteral("東京都千代田区丸の内一丁目１番１号\r\n株式会社ケルバリー建設\r\n代表取締役　佐藤　一郎\r\n\r\n"
                       "(上記代理人)\r\n東京都港区芝公園一丁目２番３号\r\n行政書士　田中　次郎\r\n電話番号  "
                       "03-9876-5432"));
    EXPECT_EQ(field("ProxyColumn").text, field("ProxyColumn").defaultText);
    EXPECT_EQ(field("RegistNumber").text, QStringLiteral("登録番号  R-123"));
}

TEST_F(ApplicationForm, PdfTitleColumnFollowsTheAddressLines) {
    // 19 full-width characters are 38 bytes: a blank line follows; 21 are 42.
    change(
        "ApplierColumnAddress1='東京都千代田区丸の内一丁目１番１号ビル', "
        "ApplierColumnAddress='東京都千代田区丸の内一丁目１番１号ビル２階', ApplierColumnCreName='山田　太郎'");
    const Recordset record = gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where APDataCode=1"));
    const ApplicantColumn plain = mPdfApplicantColumn(record, false);
    EXPECT_EQ(plain.title, QStringLiteral("登記上の住所\r\n\r\n事実上の住所\r\n\r\n\r\n申　請　者\r\n作　成　者"));
    EXPECT_EQ(
        plain.column,
        QStringLiteral("東京都千代田区丸の内一丁目１番１号ビル\r\n\r\n東京都千代田区丸の内一丁目１番１号ビル２階\r\n"
                       "株式会社ケルバリー建設\r\n代表取締役　佐藤　一郎\r\n山田　太郎"));

    change("ApplierColumnAddress1=NULL, ApplierColumnCreName=''");
    const Recordset second = gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where APDataCode=1"));
    const ApplicantColumn agent = mPdfApplicantColumn(second, true);
    EXPECT_EQ(agent.title, QStringLiteral("\r\n\r\n申　請　者\r\n\r\n\r\n\r\n\r\n\r\n"));
    EXPECT_EQ(
        agent.column,
        QStringLiteral(
            "東京都千代田区丸の内一丁目１番１号ビル２階\r\n株式会社ケルバリー建設\r\n代表取締役　佐藤　一郎\r\n\r\n"
            "(上記代理人)\r\n東京都港区芝公園一丁目２番３号\r\n行政書士　田中　次郎\r\n電話番号  "
            "03-9876-5432"));
}

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
