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

QString check(ApplicationEdition edition = ApplicationEdition::Form200804) {
    return runApplicationCheck(edition).message;
}

TEST(ApplicationCheckTest, ValidRecordAndMissingRecordYieldNothing) {
    CheckHome home;
    for (ApplicationEdition edition : {ApplicationEdition::Form200804, ApplicationEdition::Earlier}) {
        const test::CheckResult valid = runApplicationCheck(edition);
        EXPECT_EQ(valid.message, QString());
        EXPECT_FALSE(valid.errorFlag);
        const test::CheckResult missing = runApplicationCheck(edition, 2);
        EXPECT_EQ(missing.message, QString());
        EXPECT_FALSE(missing.errorFlag);
    }
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST(ApplicationCheckTest, AddressMustBeginWithAPrefecture) {
    CheckHome home;
    for (const char* good : {"東京都千代田区丸の内一丁目", "北海道札幌市", "神奈川県横浜市", "大阪府大阪市", "京都府京都市"}) {
        home.set(QStringLiteral("ApplierColumnAddress='%1'").arg(QString::fromUtf8(good)));
        EXPECT_EQ(check(), QString()) << good;
    }
    home.set(QStringLiteral("ApplierColumnAddress='千代田区丸の内一丁目'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請者欄の住所」が都道府県から入力されていません\r\n\r\n"));
    // Too short to hold a prefecture: only the "不正" text, not the prefecture one.
    home.set(QStringLiteral("ApplierColumnAddress='東京'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請者欄の住所」が不正です\r\n\r\n"));
    home.set(QStringLiteral("ApplierColumnAddress=NULL"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請者欄の住所」が未入力（又は未設定）です\r\n\r\n"));
    home.set(QStringLiteral("ApplierColumnAddress=''"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請者欄の住所」が未入力（又は未設定）です\r\n\r\n"));
    // Blanks are missing, yet not empty: the untrimmed three characters are too short as well.
    home.set(QStringLiteral("ApplierColumnAddress='   '"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請者欄の住所」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「申請者欄の住所」が不正です\r\n\r\n"));
}

TEST(ApplicationCheckTest, LicenceNumberWidthsCountTrimmedCharacters) {
    CheckHome home;
    home.set(QStringLiteral("LcnsNum1A='123'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請時の許可番号の許可番号（左側２桁）」が２桁を超えています\r\n\r\n"));
    home.set(QStringLiteral("LcnsNum1A=' 12 '"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("LcnsNum1A='  ', LcnsNum1B='1234567'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請時の許可番号の許可番号（左側２桁）」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「申請時の許可番号の許可番号（右側６桁）」が６桁を超えています\r\n\r\n"));
    home.set(QStringLiteral("LcnsNum1A='20', LcnsNum1B='012345', OfficeCityCode='011011'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「主たる営業所の所在地の市区町村コード」が５桁を超えています\r\n\r\n"));
}

TEST(ApplicationCheckTest, CodeBlanksAreTypedNumbers) {
    CheckHome home;
    // 0 is the minister (大臣) and a valid authority; only -1 means not set.
    home.set(QStringLiteral("PrefCode1=0"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("PrefCode1=-1, ClasCtgr1=0, LcnsDate1=NULL"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請時の許可番号の大臣・知事の区分」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「申請時の許可番号の般特の区分」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「申請時の許可番号の許可年月日」が未入力（又は未設定）です\r\n\r\n"));
}

TEST(ApplicationCheckTest, PreviousLicenceOnlyWhenAnyPartIsGiven) {
    CheckHome home;
    // A Null class alone does not open the block.
    home.set(QStringLiteral("PrefCode2=NULL, ClasCtgr2=NULL"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("PrefCode2=-1, ClasCtgr2=0, LcnsNum2A='15'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「前回申請時の許可番号の大臣・知事の区分」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の般特の区分」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の許可番号（右側６桁）」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の許可年月日」が未入力（又は未設定）です\r\n\r\n"));
    home.set(QStringLiteral("PrefCode2=1, ClasCtgr2=1, LcnsNum2A='150', LcnsNum2B='0123456', LcnsDate2='2019-05-01'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「前回申請時の許可番号の許可番号（左側２桁）」が２桁を超えています\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の許可番号（右側６桁）」が６桁を超えています\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の許可年月日」の元号が平成ではありません\r\n\r\n"));
    // A date alone opens it too.
    home.set(QStringLiteral("PrefCode2=-1, ClasCtgr2=0, LcnsNum2A=NULL, LcnsNum2B=NULL, LcnsDate2='2003-09-10'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「前回申請時の許可番号の大臣・知事の区分」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の般特の区分」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の許可番号（左側２桁）」が未入力（又は未設定）です\r\n\r\n"
                                      "■申請書の「前回申請時の許可番号の許可番号（右側６桁）」が未入力（又は未設定）です\r\n\r\n"));
}

TEST(ApplicationCheckTest, EraRuleRefusesReiwaAndShowaButNotNull) {
    CheckHome home;
    home.set(QStringLiteral("ApplyDate='2019-04-30'"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("ApplyDate=NULL"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("ApplyDate='2019-05-01', LcnsDate1='1988-12-31'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「申請年月日」の元号が平成ではありません\r\n\r\n"
                                      "■申請書の「申請時の許可番号の許可年月日」の元号が平成ではありません\r\n\r\n"));
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

TEST(ApplicationCheckTest, BaseDateMustEndTheYearForSomeCategories) {
    CheckHome home;
    home.set(QStringLiteral("BaseDate='2009-02-28'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「審査基準日」と「審査対象事業年度（当年度）の至」の日付が一致していません\r\n\r\n"));
    for (const char* skipping : {"2", "NULL"}) {
        home.set(QStringLiteral("FYearCtgr1A=") + QString::fromLatin1(skipping));
        EXPECT_EQ(check(), QString()) << skipping;
    }
    for (const char* comparing : {"0", "3", "4"}) {
        home.set(QStringLiteral("FYearCtgr1A=") + QString::fromLatin1(comparing));
        EXPECT_EQ(check(), QStringLiteral("■申請書の「審査基準日」と「審査対象事業年度（当年度）の至」の日付が一致していません\r\n\r\n"))
            << comparing;
    }
}

TEST(ApplicationCheckTest, CorporateFormsNeedTheFullWidthAbbreviation) {
    CheckHome home;
    const QString pair1 = QStringLiteral("■申請書の「商号又は名称」の組織形態に正しい略号が用いられていません。\r\n\r\n"
                                         "　※法人の種類は、「（株）」のように全角３文字の略号で入力する必要があります。\r\n\r\n");
    home.set(QStringLiteral("TRName='株式会社山田建設'"));
    EXPECT_EQ(check(), pair1);
    home.set(QStringLiteral("TRName='(株)山田建設'"));
    EXPECT_EQ(check(), pair1);
    home.set(QStringLiteral("TRName='㈱山田建設'"));
    EXPECT_EQ(check(), pair1);
    home.set(QStringLiteral("TRName='（株）山田建設'"));
    EXPECT_EQ(check(), QString());
    // Full-width 有 in half-width parentheses, then 合同会社: one pair per form, in form order.
    home.set(QStringLiteral("TRName='合同会社山田(有)'"));
    EXPECT_EQ(check(), QStringLiteral("■申請書の「商号又は名称」の組織形態に正しい略号が用いられていません。\r\n\r\n"
                                      "　※法人の種類は、「（有）」のように全角３文字の略号で入力する必要があります。\r\n\r\n"
                                      "■申請書の「商号又は名称」の組織形態に正しい略号が用いられていません。\r\n\r\n"
                                      "　※法人の種類は、「（合）」のように全角３文字の略号で入力する必要があります。\r\n\r\n"));
    // An individual's trade name is not a corporate form.
    home.set(QStringLiteral("TRName='株式会社山田建設', Distinction=2"));
    EXPECT_EQ(check(), QString());
}

TEST(ApplicationCheckTest, BlanksInNamesOfCorporationsAndIndividuals) {
    CheckHome home;
    const QString blanks = QStringLiteral("■申請書の「商号又は名称」に不要な空白が含まれています\r\n\r\n");
    for (const char* wrong : {"山田 建設（株）", "山田　建設（株）", " （株）山田建設", "（株）山田建設 "}) {
        home.set(QStringLiteral("TRName='%1'").arg(QString::fromUtf8(wrong)));
        EXPECT_EQ(check(), blanks) << wrong;
    }
    home.set(QStringLiteral("Distinction=2, TRName='山田 太郎'"));
    EXPECT_EQ(check(), QString());
    home.set(QStringLiteral("TRName='山田　太郎'"));
    EXPECT_EQ(check(), QString());
    for (const char* wrong : {"山田 太 郎", "山田　太郎　", "山田太郎 "}) {
        home.set(QStringLiteral("TRName='%1'").arg(QString::fromUtf8(wrong)));
        EXPECT_EQ(check(), blanks) << wrong;
    }
}

// Every text rule at once, to pin the order of the whole list.
TEST(ApplicationCheckTest, AllBlankTextsInRuleOrder) {
    CheckHome home;
    home.set(QStringLiteral(
        "ApplierColumnAddress=' ', ApplierColumnName='', ApplierColumnPresident=NULL, LcnsNum1A='', LcnsNum1B=' ', "
        "Distinction=0, LastApl=0, FType=0, TRNameKana='', TRName=' ', PSNameKana='　', PSName=NULL, "
        "OfficeAddr='', OfficeCityCode=' ', OfficeZipCode='', OfficeTel=''"));
    const test::CheckResult result = runApplicationCheck(ApplicationEdition::Form200804);
    EXPECT_TRUE(result.errorFlag);
    // The full-width space of PSNameKana is a character, not a blank; the
    // blank TRName is longer than its trimmed form.
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
                             "■申請書の「代表者又は個人の氏名」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の市区町村コード」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の郵便番号」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「主たる営業所の所在地の電話番号」が未入力（又は未設定）です\r\n\r\n"));
}

TEST(ApplicationCheckTest, EarlierEditionChecksConsolidationInsteadOfFType) {
    CheckHome home;
    home.set(QStringLiteral("FType=NULL, FCObgt1=0"));
    EXPECT_EQ(check(ApplicationEdition::Earlier),
              QStringLiteral("■申請書の「連結財務諸表の提出義務の有無」が未入力（又は未設定）です\r\n\r\n"));
    home.set(QStringLiteral("FCObgt1=1, FCObgt2=0, Distinction=2, TRName='北斗建設'"));
    EXPECT_EQ(check(ApplicationEdition::Earlier),
              QStringLiteral("■申請書の「前回申請時の連結財務諸表の提出義務の有無」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「連結財務諸表の提出義務の有無」の設定が間違っています。\r\n"
                             "「法人又は個人の別」が個人の場合は連結財務諸表の提出義務はありません\r\n\r\n"
                             "■申請書の「当期減価償却実施額（連結決算）」が未入力（又は未設定）です\r\n\r\n"
                             "■申請書の「受取手形割引高（連結決算）」が未入力（又は未設定）です\r\n\r\n"));
    home.set(QStringLiteral("FCObgt2=2, Distinction=1, TRName='（株）北斗建設', Item01Plural=0, Item02Plural=1200"));
    EXPECT_EQ(check(ApplicationEdition::Earlier), QString());
    // The current edition knows nothing of the consolidated amounts, only of FType.
    EXPECT_EQ(check(ApplicationEdition::Form200804),
              QStringLiteral("■申請書の「単独決算又は連結決算の別」が未入力（又は未設定）です\r\n\r\n"));
}

TEST(ApplicationCheckTest, SecondRunAppendsAndFlagSticks) {
    CheckHome home;
    home.set(QStringLiteral("OfficeTel=NULL"));
    clsVerifyAPData_200804 checker;
    checker.setAPDataCode(1);
    checker.CheckItemSum();
    home.set(QStringLiteral("OfficeTel='011-231-4567'"));
    checker.CheckItemSum();
    EXPECT_TRUE(checker.ErrorFlag());
    EXPECT_EQ(checker.Message(), QStringLiteral("■申請書の「主たる営業所の所在地の電話番号」が未入力（又は未設定）です\r\n\r\n"));
}

TEST(ApplicationCheckTest, OutdatedWorkingTableReportsAProgramError) {
    CheckHome home;
    home.set(QStringLiteral("OfficeCityCode=NULL"));
    home.exec(home.database(), "ALTER TABLE tmpAPData DROP COLUMN OfficeZipCode");
    // The run opens its connection on the outdated database.
    gobjConnection = gobjOpenConnection();
    clsVerifyAPData_200804 checker;
    checker.setAPDataCode(1);
    checker.CheckItemSum();
    EXPECT_TRUE(checker.ErrorFlag());
    // The texts before the failing rule stay; the rules after it do not run.
    EXPECT_EQ(checker.Message(),
              QStringLiteral("■申請書の「主たる営業所の所在地の市区町村コード」が未入力（又は未設定）です\r\n\r\n"
                             "■プログラムのエラーが発生しました。(場所:mCheckAPData)\r\n"
                             "　データファイルが更新されていない可能性があります。ノルデバンを実行してください。\r\n\r\n"));
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("mCheckAPData")});
    ASSERT_FALSE(home.ui().messages.isEmpty());
    EXPECT_TRUE(home.ui().messages.last().request.text.endsWith(QStringLiteral("処理を中断します。")));
}

}  // namespace
}  // namespace kelvary
