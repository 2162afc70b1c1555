// The runtime's wording of the error numbers the program raises: every place
// that raises one of them reports the same text the user knows.
#include "platform/Recordset.h"
#include "platform/VbError.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

TEST(VbErrorTexts, NumbersRaisedInSeveralPlacesHaveTheRuntimesWording) {
    EXPECT_EQ(VbError::standardDescription(9), QStringLiteral("インデックスが有効範囲にありません。"));
    EXPECT_EQ(VbError::standardDescription(75), QStringLiteral("パス/ファイル アクセス エラーです。"));
    EXPECT_EQ(VbError::standardDescription(91),
              QStringLiteral("オブジェクト変数または With ブロック変数が設定されていません。"));
    EXPECT_EQ(VbError::standardDescription(381), QStringLiteral("プロパティ配列のインデックスが有効ではありません。"));
    EXPECT_EQ(VbError::standardDescription(438),
              QStringLiteral("オブジェクトは、このプロパティまたはメソッドをサポートしていません。"));
    EXPECT_EQ(VbError::standardDescription(7), QStringLiteral("メモリが不足しています。"));
    // A number without a text of its own reads as the runtime's catch-all.
    EXPECT_EQ(VbError::standardDescription(12345),
              QStringLiteral("アプリケーション定義またはオブジェクト定義のエラーです。"));
}

TEST(VbErrorTexts, RecordsetErrorsCarryTheTableText) {
    Recordset nothing;
    try {
        nothing.eof();
        FAIL() << "an unset recordset was used without error";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 91);
        EXPECT_EQ(e.description(), QStringLiteral("オブジェクト変数または With ブロック変数が設定されていません。"));
    }
    Recordset empty({{QStringLiteral("A"), ado::adInteger}}, {});
    try {
        empty.value(0);
        FAIL() << "a value was read past the end";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 3021);
        EXPECT_EQ(e.description(), QStringLiteral("BOF と EOF のいずれかが True になっているか、または現在のレコードが"
                                                  "削除されています。要求された操作には、現在のレコードが必要です。"));
    }
}

}  // namespace
}  // namespace kelvary
