// StrConv wide, narrow and lower case on mixed Japanese text.
#include "platform/StrConv.h"

#include "platform/VbError.h"

#include <gtest/gtest.h>

#include <thread>

namespace kelvary {
namespace {

QString conv(const char* text, int flags) { return vbStrConv(QString::fromUtf8(text), flags); }

TEST(StrConvWide, AsciiBecomesFullWidth) {
    EXPECT_EQ(conv("ABC xyz 019", vbWide), "ＡＢＣ　ｘｙｚ　０１９");
    EXPECT_EQ(conv("ABC,1", vbWide), "ＡＢＣ，１");
    EXPECT_EQ(conv("(\"a-b~c\")", vbWide), "（＂ａ－ｂ～ｃ＂）");
    EXPECT_EQ(conv("東京都港区1-2-3", vbWide), "東京都港区１－２－３");
}

TEST(StrConvWide, HalfWidthKanaJoinsVoicedMarks) {
    EXPECT_EQ(conv("ｱｲｳｴｵ", vbWide), "アイウエオ");
    EXPECT_EQ(conv("ｶﾞｷﾞﾀﾞﾊﾞﾊﾟﾎﾟｳﾞ", vbWide), "ガギダバパポヴ");
    EXPECT_EQ(conv("ﾔﾏﾀﾞｹﾝｾﾂ", vbWide), "ヤマダケンセツ");
    EXPECT_EQ(conv("ｰ｡｢｣､･", vbWide), "ー。「」、・");
    // No joined form in the code page: the mark stays a separate spacing mark.
    EXPECT_EQ(conv("ｷﾟ", vbWide), "キ゜");
    EXPECT_EQ(conv("ﾜﾞ", vbWide), "ワ゛");
    EXPECT_EQ(conv("ﾞﾟ", vbWide), "゛゜");
}

TEST(StrConvNarrow, FullWidthBecomesHalfWidth) {
    EXPECT_EQ(conv("ＡＢＣ　１２３", vbNarrow), "ABC 123");
    EXPECT_EQ(conv("（株）山田建設", vbNarrow), "(株)山田建設");
    EXPECT_EQ(conv("山田　建設", vbNarrow), "山田 建設");
    EXPECT_EQ(conv("ガパヴアー", vbNarrow), "ｶﾞﾊﾟｳﾞｱｰ");
    EXPECT_EQ(conv("。「」、・゛゜", vbNarrow), "｡｢｣､･ﾞﾟ");
    EXPECT_EQ(conv("’”", vbNarrow), "'\"");
    // Hiragana, kanji and the yen sign have no half-width form in the code page.
    EXPECT_EQ(conv("あ漢￥", vbNarrow), "あ漢￥");
}

TEST(StrConvLower, LowerCaseAloneAndWithNarrow) {
    EXPECT_EQ(conv("ABCａＢｃ", vbLowerCase), "abcａｂｃ");
    EXPECT_EQ(conv("C:\\ＤＡＴＡ\\Ａ.TXT/Ｐ", vbLowerCase + vbNarrow), "c:\\data\\a.txt/p");
    EXPECT_EQ(conv("　ＡＢ　/１", vbLowerCase + vbNarrow), " ab /1");
}

TEST(StrConv, RefusesConversionsItDoesNotSupport) {
    for (int flags : {1, 3, 16, 32, vbWide + vbNarrow}) {
        try {
            vbStrConv(QStringLiteral("a"), flags);
            ADD_FAILURE() << "no error for " << flags;
        } catch (const VbError& e) {
            EXPECT_EQ(e.number(), vberr::InvalidProcedureCall);
        }
    }
}

}  // namespace
}  // namespace kelvary
