// The statement checks on working tables built by hand. Expected texts are
// written out from the rules: value lines are the label padded with "_" to
// 100 bytes of code page 932 (a full-width character counts two) and the
// amount right-aligned in 16 characters.
#include "checks/clsVerifyFSData.h"

#include "StatementHome.h"

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

TEST(StatementCheckTest, ValidStatementPasses) {
    StatementHome home;
    home.item(1, QStringLiteral("現金預金"), 1, 1200000, 10);
    const Outcome outcome = runCheck();
    EXPECT_EQ(outcome.message, QString());
    EXPECT_FALSE(outcome.errorFlag);
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST(StatementCheckTest, HeaderRulesInOrder) {
    StatementHome home;
    home.sql(QStringLiteral("UPDATE tmpFSInfoData SET ApplyerName='', FYearNumber=NULL, FYearFrom='2009-04-01', "
                            "TaxType=1, TaxFreeFlag=NULL"));
    home.item(102, QStringLiteral("兼業事業売上高"), 2, 1000);
    EXPECT_EQ(runCheck().message,
              QStringLiteral("■基本情報の「商号又は名称」が入力されていません。\r\n\r\n"
                             "■基本情報の「決算期」が入力されていません。\r\n\r\n"
                             "■基本情報の「決算期間」の「自」又は「至」の日付が正しく設定されていません。\r\n\r\n"
                             "■基本情報の「税処理」が「消費税込み」となっています（※免税事業者のみ選択可能です）\r\n\r\n"
                             "■基本情報の「兼業事業売上原価報告書を印刷する」がチェックされていません\r\n\r\n"
                             "　（※「兼業事業売上高」「兼業事業売上原価」が計上されている為、添付する必要があります）\r\n\r\n"));

    home.sql(QStringLiteral("UPDATE tmpFSInfoData SET ApplyerName='北斗', FYearNumber=40, FYearFrom='2019-04-01', "
                            "FYearTo='2020-03-31', TaxType=3, CloseAccountType=1, SideBusinessFlag=1"));
    EXPECT_EQ(runCheck().message,
              QStringLiteral("■基本情報の「決算期間」の至の元号が平成ではありません\r\n\r\n"
                             "■基本情報の「税処理」が不正です\r\n\r\n"
                             "　（※免税事業者の税込財務諸表は、「税処理」＝税込み、「免税事業者である」＝チェック有、に設定します）\r\n\r\n"));
    home.sql(QStringLiteral("UPDATE tmpFSInfoData SET FYearFrom='2008-04-01', FYearTo=NULL, TaxType=NULL"));
    EXPECT_EQ(runCheck().message, QStringLiteral("■基本情報の「決算期間」が設定されていません。\r\n\r\n"
                                                 "■基本情報の「税処理」が未設定です\r\n\r\n"));
    home.sql(QStringLiteral("UPDATE tmpFSInfoData SET FYearTo='2009-03-31', TaxType=4"));
    EXPECT_EQ(runCheck().message, QStringLiteral("■基本情報の「税処理」が不正です\r\n\r\n"));
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

TEST(StatementCheckTest, RelationRowsByRelationCode) {
    StatementHome home;
    home.sql(QStringLiteral(
        "INSERT INTO tblFSCheckMaster VALUES ('資本金の当期末残高', 74, '資本金', 609, '資本金（当期末残高）', 7, 1, 0, "
        "'2006-07-01', 1)"));
    home.sql(QStringLiteral(
        "INSERT INTO tblFSCheckMaster VALUES ('資産合計と負債純資産合計が一致していません', 52, '資産合計', 94, "
        "'負債純資産合計', 0, 1, 1, '2006-07-01', 2)"));
    // Rows of another edition or for individuals only are not read.
    home.sql(QStringLiteral(
        "INSERT INTO tblFSCheckMaster VALUES ('別の版', 52, '資産合計', 94, '負債純資産合計', 1, 1, 1, '2008-04-01', 3)"));
    home.sql(QStringLiteral(
        "INSERT INTO tblFSCheckMaster VALUES ('個人のみ', 52, '資産合計', 94, '負債純資産合計', 1, 0, 1, '2006-07-01', 4)"));
    home.item(609, QStringLiteral("Capital : 当期末残高"), 8, 10000000, 9);
    // Two rows of one code add up: 1,234,999 yen is 1,234 thousand.
    home.item(52, QStringLiteral("資産合計"), 1, 1000999, 480);
    home.sql(QStringLiteral("INSERT INTO tmpFSItemData (FSDataCode, ItemCode, ItemName, ItemValue, DocCode, SortNumber) "
                            "VALUES (1, 52, '資産合計', 234000, 1, 481)"));
    home.item(94, QStringLiteral("負債純資産合計"), 1, 1235000, 920);
    // "　「資本金」：未入力", then the amount lines: "　「資本金（当期末残高）」の金額：" is 34 bytes,
    // "　「資産合計」の金額：" 22 and "　「負債純資産合計」の金額：" 28.
    EXPECT_EQ(runCheck().message,
              QStringLiteral("■資本金の当期末残高\r\n\r\n"
                             "　「資本金」：未入力\r\n") +
                  QStringLiteral("　「資本金（当期末残高）」の金額：") + underscores(66) + QStringLiteral("_________ 10,000\r\n") +
                  kParagraphEnd + QStringLiteral("■資産合計と負債純資産合計が一致していません\r\n\r\n") +
                  QStringLiteral("　「資産合計」の金額：") + underscores(78) + QStringLiteral("__________ 1,234\r\n") +
                  QStringLiteral("　「負債純資産合計」の金額：") + underscores(72) + QStringLiteral("__________ 1,235\r\n") +
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
    clsVerifyFSData checker;
    checker.setFSDataCode(1);
    checker.CheckItemSum();
    // Three rows of 1,499 yen are 3 thousand; 4 is within the tolerance of three rows.
    EXPECT_EQ(checker.Message(), QString());
    EXPECT_FALSE(checker.ErrorFlag());

    home.sql(QStringLiteral("UPDATE tmpFSItemData SET ItemValue=7000 WHERE ItemCode=12"));
    clsVerifyFSData second;
    second.setFSDataCode(1);
    second.CheckItemSum();
    EXPECT_TRUE(second.ErrorFlag());
    // "　流動資産の計算値：" 20 bytes, "　流動資産合計：" 16, "　差額：" 8.
    EXPECT_EQ(second.Message(), QStringLiteral("■流動資産合計の計算が合いません\r\n\r\n") + QStringLiteral("　流動資産の計算値：") +
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

TEST(StatementCheckTest, UnsuitableItemNamesWithTheirPaths) {
    StatementHome home;
    home.sql(QStringLiteral("INSERT INTO tblFSInvalidItemList VALUES (1, '2006-07-01', 1, 'その他')"));
    home.sql(QStringLiteral("INSERT INTO tblFSInvalidItemList VALUES (1, '2006-07-01', 2, 'その他')"));
    home.sql(QStringLiteral("INSERT INTO tblFSInvalidItemList VALUES (2, '2006-07-01', 1, '預け金')"));
    home.item(10, QStringLiteral("その他"), 1, 0, 100);
    home.item(43, QStringLiteral("保険積立金"), 1, 500000, 380);
    home.item(160, QStringLiteral("その他"), 2, 2000, 1260);
    EXPECT_EQ(runCheck().message,
              QStringLiteral("■分析を行う上で不適切な科目名があります\r\n\r\n"
                             "　以下に印刷されている各科目名がどのような性格を持ったものか判断できる科目名に変更して下さい。\r\n"
                             "　（例：貸借対照表→資産の部→無形固定資産→その他１ 　　⇒ ソフトウェア\r\n"
                             "　　　　貸借対照表→資産の部→投資その他の資産→その他１ ⇒ 　保険積立金）\r\n\r\n"
                             "　・貸借対照表→資産の部→流動資産→その他\r\n"
                             "　・損益計算書→営業外収益→その他\r\n"
                             "\r\n"));
}

}  // namespace
}  // namespace kelvary
