// The supplementary document and a period's QR pages: the licence number
// line, an image that is missing, twelve symbols a page with numbers
// running on across pages, and symbols that read back from the printed PDF.
#include "print/QrPages.h"
#include "print/SupplementPages.h"

#include "PageBuilderHome.h"

#include <QFile>

namespace kelvary {
namespace {

using test::pdfText;

constexpr char kApplication[] =
    "INSERT INTO tmpAPData (APDataCode, ApplierColumnName, ContactPosition, ContactName, ContactTel, ContactFax, "
    "PrefCode1, ClasCtgr1, LcnsNum1A, LcnsNum1B) VALUES (1, '株式会社ケルバリー建設', '総務部', '鈴木　花子', "
    "'03-1234-5678', '03-1234-5679', 13, 1, '20', '012345')";

// Period 0 of the run: index row 7, the 40th business year of a corporation.
constexpr char kPeriod[] =
    "INSERT INTO tblIndex (IndexID, MainDataCode, DataType, LinkCode, ApplyerName, FYearNumber, FYearFrom, FYearTo, "
    "PrintFlag) VALUES (7, 1001, 0, 3, '株式会社ケルバリー建設', 40, '2008-04-01', '2009-03-31', 1);"
    "INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, EnforceDate) VALUES (7, 40, '2006-07-01')";

class QrPages : public test::PageBuilderHome {
protected:
    void SetUp() override {
        PageBuilderHome::SetUp();
        home.sqlExec(kApplication);
        home.sqlExec(kPeriod);
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
    mPutQRSymbol(pm, 1, QStringLiteral("ZaimuHeader0"));
    mPutQRSymbol(pm, 5, QStringLiteral("ZaimuData0_9"), 17);
    EXPECT_TRUE(field("WrImage1").imageFile.endsWith(QStringLiteral("/Temp/ZaimuHeader0.bmp")));
    EXPECT_EQ(field("Num1").text, QStringLiteral("1"));
    EXPECT_EQ(field("WrImage5").imageFile, field("WrImage5").defaultImage);
    EXPECT_EQ(field("Num5").text, QStringLiteral("17"));
    EXPECT_EQ(field("WrText5").text, QStringLiteral("ZaimuData0_9"));
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
}

// Prints a period with the given counts into a PDF and gives its path.
class QrPagesPdf : public QrPages {
protected:
    QString print(const PeriodSymbolCounts& counts, long periodIndex = 0) {
        frmPrintManager& pm = manager(QStringLiteral("fs.pdf"));
        mPrintFS(pm, periodIndex, 7, counts, false);
        finishPdf();
        return pdf(QStringLiteral("fs.pdf"));
    }
};

TEST_F(QrPagesPdf, TheThirteenthSymbolOpensPageTwoWithNumberThirteen) {
    symbol(QStringLiteral("ZaimuData0_12"), "the thirteenth");
    const QString file = print({12, 0, 0, 0});
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
    const QString file = print({1, 1, 1, 2}, 1);
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

    const QString without = print({1, 0, 1, 0}, 1);
    const QString plain = pdfText(without, 1);
    EXPECT_FALSE(plain.contains(QStringLiteral("CapitalHeader")));
    EXPECT_TRUE(plain.contains(QStringLiteral("NListData1_1")));
}

}  // namespace
}  // namespace kelvary
