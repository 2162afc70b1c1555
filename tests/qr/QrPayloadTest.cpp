// The shared payload grammar against texts written out by hand: header and
// record lines, value cleaning, amounts in thousands, image paths.
#include "qr/QrPayload.h"

#include "platform/AppObject.h"
#include "platform/VbError.h"

#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

TEST(QrPayloadGrammar, TwoRecordSymbolOfASplitKind) {
    QString payload;
    qr::mAddHeaderLine(payload, QStringLiteral("ZaimuData0_2"), QStringLiteral("1234567820081105143012"), 2,
                       2, false);
    qr::mAddDataLine(payload, 101, {Variant(1500.0)});
    qr::mAddDataLine(payload, 102, {Variant(-20)});
    EXPECT_EQ(payload, QStringLiteral("\"[ZaimuData0_2]\",\"1234567820081105143012\",2,2\r\n"
                                      "101,\"1500\"\r\n"
                                      "102,\"-20\"\r\n"));
}

TEST(QrPayloadGrammar, HeaderInFrontOfRecordsCountedWhileWriting) {
    QString payload;
    qr::mAddDataLine(payload, 1, {Variant(QString()), Variant(QStringLiteral("売上高")), Variant(7.0)});
    qr::mAddHeaderLine(payload, QStringLiteral("KamokuData3_1"), QStringLiteral("ID"), 1, 4, true);
    EXPECT_EQ(payload, QStringLiteral("\"[KamokuData3_1]\",\"ID\",1,4\r\n1,\"\",\"売上高\",\"7\"\r\n"));
}

TEST(QrPayloadGrammar, TheDocumentIdIsNotCleaned) {
    EXPECT_EQ(qr::headerLine(QStringLiteral("ApplyHeader"), QStringLiteral("a,b"), 7, 2),
              QStringLiteral("\"[ApplyHeader]\",\"a,b\",7,2\r\n"));
}

TEST(QrPayloadGrammar, RecordsCarryOneToFourValuesAndNoPlaceholders) {
    QString payload;
    qr::mAddDataLine(payload, 5, {Variant(QString())});
    qr::mAddDataLine(payload, -3, {Variant(1), Variant(2), Variant(3), Variant(4)});
    qr::mAddDataLine(payload, 159, {Variant::null(), Variant(true)});
    EXPECT_EQ(payload, QStringLiteral("5,\"\"\r\n-3,\"1\",\"2\",\"3\",\"4\"\r\n159,\"\",\"True\"\r\n"));
    EXPECT_THROW(qr::mAddDataLine(payload, 1, {}), VbError);
    EXPECT_THROW(qr::mAddDataLine(payload, 1, {Variant(1), Variant(2), Variant(3), Variant(4), Variant(5)}),
                 VbError);
}

TEST(QrPayloadCleaning, AsciiSeparatorsAndLineBreaksAreReplaced) {
    EXPECT_EQ(qr::mstrCleanValue(Variant(QStringLiteral("A,B"))), QStringLiteral("A.B"));
    EXPECT_EQ(qr::mstrCleanValue(Variant(QStringLiteral("say \"hi\""))), QStringLiteral("say 'hi'"));
    EXPECT_EQ(qr::mstrCleanValue(Variant(QStringLiteral("line1\r\nline2"))), QStringLiteral("line1\tline2"));
    EXPECT_EQ(qr::mstrCleanValue(Variant(QStringLiteral("a\nb\r\n\nc"))), QStringLiteral("a\tb\t\tc"));
    // A lone CR stays; a CR before CR LF stays too.
    EXPECT_EQ(qr::mstrCleanValue(Variant(QStringLiteral("a\rb\r\r\nc"))), QStringLiteral("a\rb\r\tc"));
    EXPECT_EQ(qr::mstrCleanValue(Variant::null()), QString());
    EXPECT_EQ(qr::mstrCleanValue(Variant()), QString());
    // Full-width forms are not ASCII separators.
    EXPECT_EQ(qr::mstrCleanValue(Variant(QStringLiteral("ＡＢＣ，１＂"))), QStringLiteral("ＡＢＣ，１＂"));
}

TEST(QrPayloadFiles, ImageInTempOfTheProgramFolder) {
    const test::ProgramFolder home;
    EXPECT_EQ(qr::mstrGetImageFile(QStringLiteral("ZaimuData0_1")),
              home.path() + QStringLiteral("/Temp/ZaimuData0_1.bmp"));
}

}  // namespace
}  // namespace kelvary
