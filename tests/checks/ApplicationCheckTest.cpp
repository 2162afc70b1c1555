// The application rules against whole problem texts written out by hand:
// each case spoils the valid record in one place and expects exactly the
// paragraphs the rules prescribe, in rule order, with their blank lines.
#include "checks/clsVerifyAPData.h"
#include "checks/clsVerifyAPData_200804.h"

#include "CheckHome.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::CheckHome;
using test::runApplicationCheck;

QString check(FormEdition edition = FormEdition::Form200804) {
    return runApplicationCheck(edition).message;
}

TEST(ApplicationCheckTest, BaseDateAndBusinessYears) {
    CheckHome home;
    home.set(QStringLiteral("BaseDate=NULL"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「審査基準日」が未入力（又は未設定）です\r\n\r\n"));

    // Reiwa dates everywhere in the current year: both era texts of the year
    // come before the base date comparison.
    home.set(QStringLiteral("BaseDate='2020-03-31', FYearFrom1='2019-05-01', FYearTo1='2020-03-31'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「審査基準日」の元号が平成ではありません\r\n\r\n"
                                      "■申請書の「審査対象事業年度（当年度）の自」の元号が平成ではありません\r\n\r\n"
                                      "■申請書の「審査対象事業年度（当年度）の至」の元号が平成ではありません\r\n\r\n"));

    home.set(QStringLiteral("BaseDate='2009-03-31', FYearFrom1=NULL, FYearTo1=NULL"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「審査対象事業年度の期間」が未入力（又は未設定）です\r\n\r\n"));

    home.set(QStringLiteral("FYearFrom1='2008-04-01', FYearTo1='2009-03-31', FYearFrom2=NULL, FYearTo2=NULL, "
                            "FYearFrom3=NULL, FYearTo3=NULL"));
    EXPECT_EQ(check(), QString());

    home.set(QStringLiteral("FYearFrom2='2007-04-01', FYearTo3='2007-03-31'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「審査対象事業年度（前年度）の期間」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「審査対象事業年度（前々年度）の期間」が未入力（又は未設定）です\r\n\r\n"));

    // One day short is wrong; a year of a single day is not.
    home.set(QStringLiteral("FYearTo2='2007-03-31', FYearFrom3='2007-03-31'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「審査対象事業年度（前年度）の期間」の日付が不正です\r\n\r\n"));
}

TEST(ApplicationCheckTest, AnIndividualsNameIsJudgedWithoutTheFullWidthSpaceAfterIt) {
    CheckHome home;
    const QString blanks = QStringLiteral("■申請書の「商号又は名称」に不要な空白が含まれています\r\n\r\n");
    home.set(QStringLiteral("Distinction=2, TRName='山田　太郎　'"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("Distinction=2, TRName='山田太郎　　'"));
    EXPECT_EQ(check(), QString());
    // A second space inside the name, or a blank before it, is still one too many.
    home.set(QStringLiteral("Distinction=2, TRName='山田　太郎　次郎　'"));
    EXPECT_EQ(check(), blanks);
    home.set(QStringLiteral("Distinction=2, TRName='　山田　太郎'"));
    EXPECT_EQ(check(), blanks);
    // A corporation's name holds no space at all.
    home.set(QStringLiteral("Distinction=1, TRName='（株）北斗建設　'"));
    EXPECT_EQ(check(), blanks);
}

// Every text rule at once, to pin the order of the whole list.
TEST(ApplicationCheckTest, AllBlankTextsInRuleOrder) {
    CheckHome home;
    home.set(QStringLiteral(
        "ApplierColumnAddress=' ', ApplierColumnName='', ApplierColumnPresident=NULL, LcnsNum1A='', LcnsNum1B=' ', "
        "Distinction=0, LastApl=0, FType=0, TRNameKana='', TRName=' ', PSNameKana='　', PSName=NULL, "
        "OfficeAddr='', OfficeCityCode=' ', OfficeZipCode='', OfficeTel=''"));
    const test::CheckResult result = runApplicationCheck(FormEdition::Form200804);
    EXPECT_TRUE(result.errorFlag);
    // The full-width space an input method types is a blank like the
    // half-width one; the blank TRName is longer than its trimmed form.
    EXPECT_EQ(result.message,
              QStringLiteral("■申請書の「申請者欄の住所」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「申請者欄の住所」が不正です\r\n\r\n"
                             "■申請書の「申請者欄の商号又は名称」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「申請者欄の代表者役職及び氏名」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「申請時の許可番号の許可番号（左側２桁）」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「申請時の許可番号の許可番号（右側６桁）」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「法人又は個人の別」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「前回申請の有無」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「単独決算又は連結決算の別」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「商号又は名称のフリガナ」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「商号又は名称」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「商号又は名称」に不要な空白が含まれています\r\n\r\n"
                             "■申請書の「代表者又は個人の氏名のフリガナ」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「代表者又は個人の氏名」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の市区町村コード」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の郵便番号」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の電話番号」が未入力（又は未設定）です\r\n\r\n"));
}

}  // namespace
}  // namespace kelvary
