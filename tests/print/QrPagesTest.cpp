// The supplementary document and a period's QR pages: the licence number
// line, an image that is missing, twelve symbols a page with numbers
// running on across pages, and symbols that read back from the printed PDF.
#include "print/QrPages.h"
#include "print/SupplementPages.h"

#include "PageBuilderHome.h"
#include "qr/clsQRCode_200804.h"
#include "support/TestSupport.h"

#include <QFile>

namespace kelvary {
namespace {

using qr::SymbolKind;
using test::pdfText;

// What a period's generator hands on, in the order it makes them: the split
// kinds with these numbers of symbols, the equity header and the period header.
qr::QrSymbolList periodSymbols(long period, long statements, long renamed, long equity, long notes) {
    qr::QrSymbolList made;
    const auto add = [&](SymbolKind kind, long count) {
        for (long k = 1; k <= count; ++k) made << qr::namedSymbol(kind, period, k);
    };
    add(SymbolKind::ZaimuData, statements);
    add(SymbolKind::KamokuData, renamed);
    made << qr::namedSymbol(SymbolKind::CapitalHeader, period);
    add(SymbolKind::CapitalData, equity);
    add(SymbolKind::NListData, notes);
    made << qr::namedSymbol(SymbolKind::ZaimuHeader, period);
    return made;
}

class QrPages : public test::PageBuilderHome {
protected:
    void SetUp() override {
        PageBuilderHome::SetUp();
        test::sqlExecFile(home.database(), QStringLiteral("print/QrPagesPeriod.sql"));
    }

    QString licence(const Variant& pref, const Variant& cls, const Variant& a, const Variant& b) {
        return mstrLicenceNumberText(pref, cls, a, b);
    }
};

TEST_F(QrPages, LicenceNumberLine) {
    EXPECT_EQ(licence(13, 1, "20", "012345"), QStringLiteral("東京都知事許可( 般 - 20)第012345号"));
    EXPECT_EQ(licence(0, 2, "19", "777"), QStringLiteral("国土交通大臣許可( 特 - 19)第000777号"));
    EXPECT_EQ(licence(27, 3, "21", "1"), QStringLiteral("大阪府知事許可(般特- 21)第000001号"));
    // A class outside 1 to 3 writes nothing between the authority and the number.
    EXPECT_EQ(licence(13, 5, "20", "012345"), QStringLiteral("東京都知事許可20)第012345号"));
    // Nothing known: six ideographic spaces, four blanks for the class, two
    // for the year group.
    EXPECT_EQ(licence(Variant::null(), Variant::null(), Variant::null(), Variant::null()),
              QStringLiteral("　　　　　　許可(    -   )"));
    EXPECT_EQ(licence(Variant::null(), QString(), QString(), "12"),
              QStringLiteral("　　　　　　許可(    -   )第000012号"));
}

TEST_F(QrPages, AMissingImageLeavesTheSlotNumberedAndCaptioned) {
    symbol(QStringLiteral("ZaimuHeader0"), "header");
    frmPrintManager& pm = manager();
    pm.SetPrintFile(QStringLiteral("FSQRCode.w30"));
    mPutQRSymbol(pm, 1, qr::namedSymbol(SymbolKind::ZaimuHeader, 0));
    mPutQRSymbol(pm, 5, qr::namedSymbol(SymbolKind::ZaimuData, 0, 9), 17);
    EXPECT_TRUE(field("WrImage1").imageFile.endsWith(QStringLiteral("/Temp/ZaimuHeader0.bmp")));
    EXPECT_EQ(field("Num1").text, QStringLiteral("1"));
    EXPECT_EQ(field("WrImage5").imageFile, field("WrImage5").defaultImage);
    EXPECT_EQ(field("Num5").text, QStringLiteral("17"));
    EXPECT_EQ(field("WrText5").text, QStringLiteral("ZaimuData0_9"));
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
}

// Prints a period's symbols into a PDF and gives its path.
class QrPagesPdf : public QrPages {
protected:
    QString print(const qr::QrSymbolList& symbols, long periodIndex = 0) {
        frmPrintManager& pm = manager(QStringLiteral("fs.pdf"));
        mPrintFS(pm, periodIndex, 7, symbols, false);
        finishPdf();
        return pdf(QStringLiteral("fs.pdf"));
    }
};

TEST_F(QrPagesPdf, TheThirteenthSymbolOpensPageTwoWithNumberThirteen) {
    symbol(QStringLiteral("ZaimuData0_12"), "the thirteenth");
    const QString file = print(periodSymbols(0, 12, 0, 0, 0));
    EXPECT_EQ(test::qpdfCheck(file), 0);
    EXPECT_EQ(test::pdfInfo(file, QStringLiteral("Pages")), QStringLiteral("2"));
    const QString first = pdfText(file, 1);
    EXPECT_TRUE(first.contains(QStringLiteral("Page 1/2")));
    EXPECT_TRUE(first.contains(QStringLiteral("ZaimuData0_11")));
    EXPECT_FALSE(first.contains(QStringLiteral("ZaimuData0_12")));
    const QString second = pdfText(file, 2);
    EXPECT_TRUE(second.contains(QStringLiteral("Page 2/2")));
    EXPECT_TRUE(second.contains(QStringLiteral("ZaimuData0_12")));
    EXPECT_TRUE(second.contains(QStringLiteral("13")));
    EXPECT_TRUE(test::holdsText(second, QStringLiteral("(申請者名)　株式会社ケルバリー建設")));
    EXPECT_TRUE(second.contains(QStringLiteral("[ID]0000012320260101120000")));
    EXPECT_EQ(test::decodeQrOnPage(file, 2), QStringList{QStringLiteral("the thirteenth")});
}

TEST_F(QrPagesPdf, GroupsFollowInTheirOrderAndTheEquityHeaderOnlyWithEquitySymbols) {
    const QString file = print(periodSymbols(1, 1, 1, 2, 1), 1);
    EXPECT_EQ(test::pdfInfo(file, QStringLiteral("Pages")), QStringLiteral("1"));
    const QString text = pdfText(file, 1);
    const QStringList order{QStringLiteral("ZaimuHeader1"),   QStringLiteral("ZaimuData1_1"),
                            QStringLiteral("KamokuData1_1"),  QStringLiteral("CapitalHeader1"),
                            QStringLiteral("CapitalData1_1"), QStringLiteral("CapitalData1_2"),
                            QStringLiteral("NListData1_1")};
    qsizetype previous = -1;
    for (const QString& caption : order) {
        const qsizetype at = text.indexOf(caption);
        EXPECT_GT(at, previous) << caption.toStdString();
        previous = at;
    }

    const QString without = print(periodSymbols(1, 1, 0, 0, 1), 1);
    const QString plain = pdfText(without, 1);
    EXPECT_FALSE(plain.contains(QStringLiteral("CapitalHeader")));
    EXPECT_TRUE(plain.contains(QStringLiteral("NListData1_1")));
}

TEST_F(QrPagesPdf, ASymbolWhoseImageCouldNotBeMadeKeepsItsCountAndItsCaptionedSlot) {
    // One equity row whose name alone, 2000 times "株" (4000 bytes in CP932),
    // is more than any symbol holds.
    const QString row = QStringLiteral("INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName) VALUES (7, 1, '") +
                        QString(2000, QChar(0x682A)) + QStringLiteral("')");
    home.sqlExec(row.toUtf8().constData());
    clsQRCode_200804 qr;
    qr.setVerifyID(QString::fromLatin1(test::kSeed));
    qr.MakeFSData(0, 7);

    QStringList made;
    for (const qr::QrSymbolRecord& symbol : qr.Symbols()) made << symbol.name;
    EXPECT_EQ(made, (QStringList{QStringLiteral("CapitalHeader0"), QStringLiteral("CapitalData0_1"),
                                 QStringLiteral("ZaimuHeader0")}));
    EXPECT_FALSE(QFile::exists(home.file(QStringLiteral("Temp/CapitalData0_1.bmp"))));
    EXPECT_TRUE(test::messageTexts(home.ui()).contains(
        QStringLiteral("QRコードに収まらないデータ量です。（CapitalData0_1、")));
    // The period header still counts it: record 23, the equity symbols.
    EXPECT_EQ(qr.CapitalQRCodeCount(), 1);
    const QByteArray header = test::readFile(home.file(QStringLiteral("Temp/ZaimuHeader0.bmp.Txt")));
    EXPECT_TRUE(header.contains("\r\n23,\"1\"\r\n")) << header.toStdString();

    // On the page it has its number and caption, and no image.
    const QString file = print(qr.Symbols());
    EXPECT_EQ(test::pdfInfo(file, QStringLiteral("Pages")), QStringLiteral("1"));
    const QString text = pdfText(file, 1);
    EXPECT_TRUE(text.contains(QStringLiteral("CapitalHeader0")));
    EXPECT_TRUE(text.contains(QStringLiteral("CapitalData0_1")));
    const QStringList read = test::decodeQrOnPage(file, 1);
    ASSERT_EQ(read.size(), 2);
    EXPECT_TRUE(read[0].startsWith(QStringLiteral("\"[CapitalHeader0]\",\"0000012320260101120000\",0,3")));
    EXPECT_TRUE(read[1].startsWith(QStringLiteral("\"[ZaimuHeader0]\",\"0000012320260101120000\",26,2")));
    EXPECT_TRUE(read[1].contains(QStringLiteral("23,\"1\"")));
}

}  // namespace
}  // namespace kelvary
