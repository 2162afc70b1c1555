// The symbols of one fiscal period from the working tables: which items are
// written and how, where the kinds split, the notes' byte bound and the
// period header, compared with payloads written out by hand.
#include "qr/clsQRCode_200804.h"

#include "QrHome.h"
#include "platform/Cp932.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::QrHome;

const QString kId = QStringLiteral("ID1");

QByteArray bytes(const QString& text) {
    return cp932Encode(text);
}

class PeriodPayloads : public ::testing::Test {
protected:
    // The period's header row; Distinction decides the renamed-item filter.
    void insertPeriod(int fsDataCode, int distinction, const QString& extra = QString()) {
        home.exec(
            QStringLiteral("INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, FYearFrom, FYearTo, "
                           "Distinction, TaxType, SideBusinessFlag, TaxFreeFlag, EnforceDate, ApplyerName) "
                           "VALUES (%1, 12, '2007-04-01', '2008-03-31', %2, 1, 0, 1, '2006-07-01', 'テスト')")
                .arg(fsDataCode)
                .arg(distinction) +
            extra);
    }
    void insertItem(int fsDataCode, int code, const QString& value, int changed = 0, int sort = 0, int id = 0,
                    const QString& name = QStringLiteral("x"), int doc = 1) {
        home.exec(QStringLiteral("INSERT INTO tmpFSItemData (ID, FSDataCode, FSItemID, ItemCode, ItemName, "
                                 "ItemValue, NameChangeFlag, DocCode, SortNumber) VALUES "
                                 "(%1, %2, %3, %4, '%5', %6, %7, %8, %9)")
                      .arg(id)
                      .arg(fsDataCode)
                      .arg(id)
                      .arg(code)
                      .arg(name)
                      .arg(value)
                      .arg(changed)
                      .arg(doc)
                      .arg(sort));
    }
    clsQRCode_200804& generate(long page, int fsDataCode) {
        qr.setVerifyID(kId);
        qr.MakeFSData(page, fsDataCode);
        return qr;
    }

    QrHome home;
    clsQRCode_200804 qr;
};

TEST_F(PeriodPayloads, ItemsTakePartByCodeNameChangeOrAmount) {
    insertPeriod(7, 1);
    insertItem(7, 100, QStringLiteral("1234567"));
    insertItem(7, 101, QStringLiteral("-1999"));
    insertItem(7, 102, QStringLiteral("-999"));
    insertItem(7, 103, QStringLiteral("0"));
    insertItem(7, 104, QStringLiteral("0"), 1);
    insertItem(7, 159, QStringLiteral("0"));
    insertItem(7, 160, QStringLiteral("0"));
    insertItem(7, 162, QStringLiteral("0"));
    insertItem(7, 204, QStringLiteral("NULL"));
    insertItem(7, 207, QStringLiteral("0"));
    insertItem(7, 208, QStringLiteral("999"));
    insertItem(7, 300, QStringLiteral("5000"), 0, 2, 1);
    insertItem(7, 300, QStringLiteral("7000"), 0, 1, 2);
    insertItem(7, 9999, QStringLiteral("1000"));
    insertItem(7, 10000, QStringLiteral("5000"));
    insertItem(7, 10001, QStringLiteral("0"), 1);
    insertItem(8, 105, QStringLiteral("9000"));
    generate(0, 7);
    EXPECT_EQ(home.payload(QStringLiteral("ZaimuData0_1")),
              test::expectedPayload(QStringLiteral("ZaimuData_selection")));
    EXPECT_EQ(qr.FSQRCodeCount(), 1);
    EXPECT_FALSE(home.hasSymbol(QStringLiteral("ZaimuData0_2")));
}

// n items of codes 1..n with amounts of code x 1000 yen.
class ItemSplit : public PeriodPayloads, public ::testing::WithParamInterface<int> {};

TEST_P(ItemSplit, FortyRecordsASymbol) {
    const int n = GetParam();
    insertPeriod(3, 1);
    for (int code = 1; code <= n; ++code)
        insertItem(3, code, QString::number(code * 1000 + 999));
    generate(2, 3);
    const int symbols = (n + 39) / 40;
    EXPECT_EQ(qr.FSQRCodeCount(), symbols);
    for (int k = 1; k <= symbols; ++k) {
        const int first = (k - 1) * 40 + 1;
        const int last = std::min(n, k * 40);
        QString expected =
            QStringLiteral("\"[ZaimuData2_%1]\",\"ID1\",%2,2\r\n").arg(k).arg(last - first + 1);
        for (int code = first; code <= last; ++code)
            expected += QStringLiteral("%1,\"%1\"\r\n").arg(code);
        EXPECT_EQ(home.payload(QStringLiteral("ZaimuData2_%1").arg(k)), bytes(expected)) << k;
    }
    EXPECT_FALSE(home.hasSymbol(QStringLiteral("ZaimuData2_%1").arg(symbols + 1)));
}

INSTANTIATE_TEST_SUITE_P(Counts, ItemSplit, ::testing::Values(40, 41, 80, 81));

class RenamedItems : public PeriodPayloads {
protected:
    // Seventeen renamed items 501..517; the master has no corporate sort
    // number for 517 and no individual one for 516. Items that were not
    // renamed, or have no master row, are mixed in.
    void SetUp() override {
        insertPeriod(4, 3);
        QString master = QStringLiteral("DELETE FROM M_FSItem;");
        for (int code = 500; code <= 518; ++code) {
            master += QStringLiteral(
                          "INSERT INTO M_FSItem (ItemCode, ItemName, SortNumber_H, SortNumber_K) "
                          "VALUES (%1, 'master%1', %2, %3);")
                          .arg(code)
                          .arg(code == 517 ? QStringLiteral("NULL") : QString::number(code))
                          .arg(code == 516 ? QStringLiteral("NULL") : QString::number(code));
        }
        home.execSibling(master);
        insertItem(4, 500, QStringLiteral("1000"), 0, 1);
        for (int code = 501; code <= 517; ++code)
            insertItem(4, code, QString::number(code * 1000), 1, code, code,
                       QStringLiteral("名%1").arg(code));
        home.exec(
            QStringLiteral("INSERT INTO tmpFSItemData (FSDataCode, ItemCode, ItemName, ItemValue, "
                           "NameChangeFlag, DocCode, SortNumber) VALUES (4, 518, 'n', 1, NULL, 1, 600)"));
        insertItem(4, 519, QStringLiteral("1000"), 1, 700, 0, QStringLiteral("no master"));
    }
};

TEST_F(RenamedItems, SixteenASymbolFilteredByTheKindOfApplicant) {
    // Distinction 3 filters nothing; corporations (1) hide the item without a
    // corporate sort number, individuals (2) the one without an individual one.
    const struct {
        int distinction;
        int hidden;
        long symbols;
    } cases[] = {{3, 0, 2}, {1, 517, 1}, {2, 516, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.distinction);
        home.exec(QStringLiteral("UPDATE tmpFSInfoData SET Distinction=%1").arg(c.distinction));
        clsQRCode_200804 generator;
        generator.setVerifyID(kId);
        generator.MakeFSData(c.distinction, 4);
        EXPECT_EQ(generator.KamokuQRCodeCount(), c.symbols);
        QStringList lines;
        for (int code = 501; code <= 517; ++code)
            if (code != c.hidden) lines << QStringLiteral("%1,\"\",\"名%1\",\"%1\"\r\n").arg(code);
        for (long k = 1; k <= c.symbols; ++k) {
            const QStringList part = lines.mid((k - 1) * 16, 16);
            EXPECT_EQ(home.payload(QStringLiteral("KamokuData%1_%2").arg(c.distinction).arg(k)),
                      bytes(QStringLiteral("\"[KamokuData%1_%2]\",\"ID1\",%3,4\r\n")
                                .arg(c.distinction)
                                .arg(k)
                                .arg(part.size()) +
                            part.join(QString())));
        }
        EXPECT_FALSE(home.hasSymbol(QStringLiteral("KamokuData%1_%2").arg(c.distinction).arg(c.symbols + 1)));
    }
}

TEST_F(PeriodPayloads, EquityColumnsAndRowsInTheirOwnForm) {
    insertPeriod(5, 1);
    home.exec(QStringLiteral(
        "INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (5, 2, '資本金', 301);"
        "INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (5, 1, 'A,B', NULL);"
        "INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType, Capital,"
        " NewStockProposeDeposit, CapitalReady, CapitalOther, CapitalOtherTotal, BenefitReady,"
        " BenefitOtherReadyFundSum, BenefitOtherCarryOver, BenefitTotal, SelfStock, SelfStockProposeDeposit,"
        " CapitalTotal, DiffOtherStock, DiffCarryOverHedge, DiffLand, DiffTotal, NewStockReserve, AssetTotal,"
        " OtherReady1) VALUES (5, 1, '当期,\"変動\"', NULL, 2, 1234567, NULL, -999, -1999, 1000, 2000, 3000,"
        " 4000, 5000, -6000, 7000, 8000, 9000, 10000, 11000, 12000, 13000, 14999, 99000);"));
    for (int row = 2; row <= 11; ++row)
        home.exec(
            QStringLiteral("INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType) "
                           "VALUES (5, %1, 'r%1', 40%1, NULL)")
                .arg(row));
    generate(0, 5);
    EXPECT_EQ(home.payload(QStringLiteral("CapitalHeader0")),
              bytes(QStringLiteral(
                  "\"[CapitalHeader0]\",\"ID1\",2,3\r\n2,\"301\",\"資本金\"\r\n1,\"\",\"A.B\"\r\n")));
    EXPECT_EQ(qr.CapitalQRCodeCount(), 3);
    EXPECT_EQ(home.payload(QStringLiteral("CapitalData0_1")),
              test::expectedPayload(QStringLiteral("CapitalData_first")));
    const QString empty18 = QStringLiteral(",\"\"").repeated(18);
    QString second = QStringLiteral("\"[CapitalData0_2]\",\"ID1\",5,22\r\n");
    for (int row = 6; row <= 10; ++row)
        second += QStringLiteral("%1,\"r%1\",40%1,0").arg(row) + empty18 + QStringLiteral("\r\n");
    EXPECT_EQ(home.payload(QStringLiteral("CapitalData0_2")), bytes(second));
    EXPECT_EQ(home.payload(QStringLiteral("CapitalData0_3")),
              bytes(QStringLiteral("\"[CapitalData0_3]\",\"ID1\",1,22\r\n11,\"r11\",4011,0") + empty18 +
                    QStringLiteral("\r\n")));
}

TEST_F(PeriodPayloads, EmptyPeriodStillHasBothHeaders) {
    insertPeriod(6, 1);
    generate(3, 6);
    EXPECT_EQ(qr.FSQRCodeCount(), 0);
    EXPECT_EQ(qr.KamokuQRCodeCount(), 0);
    EXPECT_EQ(qr.CapitalQRCodeCount(), 0);
    EXPECT_EQ(qr.NListQRCodeCount(), 0);
    EXPECT_EQ(home.tempFiles(),
              (QStringList{QStringLiteral("CapitalHeader3.bmp"), QStringLiteral("CapitalHeader3.bmp.Txt"),
                           QStringLiteral("ZaimuHeader3.bmp"), QStringLiteral("ZaimuHeader3.bmp.Txt")}));
    EXPECT_EQ(home.payload(QStringLiteral("CapitalHeader3")),
              QByteArray("\"[CapitalHeader3]\",\"ID1\",0,3\r\n"));
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

class NotePayloads : public PeriodPayloads {
protected:
    void insertNotes(const QString& columns, const QString& values) {
        home.exec(
            QStringLiteral("INSERT INTO tmpFSNoteData (FSDataCode, %1) VALUES (9, %2)").arg(columns, values));
    }
    static QString fullWidth(int characters) { return QStringLiteral("あ").repeated(characters); }
    static QString quoted(const QString& text) { return QLatin1Char('\'') + text + QLatin1Char('\''); }
    const QString tooLong =
        QStringLiteral("※※※ この項目は文字数が多すぎたためにQRコードにできませんでした。※※※");
};

TEST_F(NotePayloads, OverLongNotesAreReplacedAndTheMessageShownOnce) {
    insertPeriod(9, 1);
    insertNotes(
        QStringLiteral("AccountWayAssetsCriteria, AccountWayFixAssetsAccumulate, AccountWayReserveSum, "
                       "AccountWayRevenuesExpensesSum, PLRealSales, Other"),
        QStringLiteral("'abc', %1, NULL, '', 'x,y', %1").arg(quoted(fullWidth(450))));
    generate(0, 9);
    // Each over-long value closes the symbol before it, as its length counts.
    EXPECT_EQ(qr.NListQRCodeCount(), 3);
    EXPECT_EQ(home.payload(QStringLiteral("NListData0_1")),
              bytes(QStringLiteral(
                  "\"[NListData0_1]\",\"ID1\",1,3\r\n1,\"AccountWayAssetsCriteria\",\"abc\"\r\n")));
    EXPECT_EQ(
        home.payload(QStringLiteral("NListData0_2")),
        bytes(QStringLiteral("\"[NListData0_2]\",\"ID1\",2,3\r\n1,\"AccountWayFixAssetsAccumulate\",\"") +
              tooLong + QStringLiteral("\"\r\n2,\"PLRealSales\",\"x.y\"\r\n")));
    EXPECT_EQ(home.payload(QStringLiteral("NListData0_3")),
              bytes(QStringLiteral("\"[NListData0_3]\",\"ID1\",1,3\r\n1,\"Other\",\"") + tooLong +
                    QStringLiteral("\"\r\n")));
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.title, QStringLiteral("情報"));
    EXPECT_EQ(home.ui().messages[0].request.text,
              QStringLiteral("第12期の注記表のデータ量が多くQRコードにすることができません。\r\n"
                             "第12期の注記表については、印刷したものを添付してください。"));
}

TEST_F(NotePayloads, NotesAddingUpPastTheBoundStartANewSymbol) {
    insertPeriod(9, 1);
    // Line 1 is 30 + 400 + 3 = 433 bytes; 433 + 367 = 800 still fits, the
    // next value no longer does.
    insertNotes(
        QStringLiteral("AccountWayAssetsCriteria, AccountWayFixAssetsAccumulate, AccountWayConsumptionTax"),
        QStringLiteral("%1, %2, 'z'")
            .arg(quoted(fullWidth(200)), quoted(fullWidth(183) + QStringLiteral("a"))));
    generate(0, 9);
    EXPECT_EQ(qr.NListQRCodeCount(), 2);
    EXPECT_EQ(home.payload(QStringLiteral("NListData0_1")),
              bytes(QStringLiteral("\"[NListData0_1]\",\"ID1\",2,3\r\n1,\"AccountWayAssetsCriteria\",\"") +
                    fullWidth(200) + QStringLiteral("\"\r\n2,\"AccountWayFixAssetsAccumulate\",\"") +
                    fullWidth(183) + QStringLiteral("a\"\r\n")));
    EXPECT_EQ(
        home.payload(QStringLiteral("NListData0_2")),
        bytes(QStringLiteral("\"[NListData0_2]\",\"ID1\",1,3\r\n1,\"AccountWayConsumptionTax\",\"z\"\r\n")));
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(NotePayloads, TheLargestNoteThatFitsDecodes) {
    insertPeriod(9, 1);
    // 800 bytes of Kanji, the most one note record may hold, with CR LF
    // turned to TAB and a half-width katakana and NEC sign.
    const QString note = QStringLiteral("漢").repeated(397) + QStringLiteral("ｱ㈱a\r\n");
    insertNotes(QStringLiteral("StockDividendAtEnd"), quoted(note));
    generate(0, 9);
    EXPECT_EQ(home.payload(QStringLiteral("NListData0_1")),
              bytes(QStringLiteral("\"[NListData0_1]\",\"ID1\",1,3\r\n1,\"StockDividendAtEnd\",\"") +
                    QStringLiteral("漢").repeated(397) + QStringLiteral("ｱ㈱a\t\"\r\n")));
    EXPECT_TRUE(home.ui().messages.isEmpty());
}

TEST_F(PeriodPayloads, PeriodHeaderRecordsAndCounts) {
    insertPeriod(10, 1);
    home.exec(
        QStringLiteral("UPDATE tmpFSInfoData SET EnforceDatesub='201004', NoteTrustDebt=-1999, "
                       "VersionNumber='3.1', ApplyerName='株式会社\"テスト\"'"));
    for (int code = 1; code <= 41; ++code)
        insertItem(10, code, QStringLiteral("1000"));
    home.exec(QStringLiteral("INSERT INTO tmpFSNoteData (FSDataCode, Other) VALUES (10, 'n')"));
    generate(1, 10);
    EXPECT_EQ(home.payload(QStringLiteral("ZaimuHeader1")),
              test::expectedPayload(QStringLiteral("ZaimuHeader_201004")));
}

TEST_F(PeriodPayloads, PeriodHeaderKeepsTheStoredDateForOtherEditionCodes) {
    insertPeriod(11, 2, QString());
    home.exec(QStringLiteral("UPDATE tmpFSInfoData SET EnforceDatesub='200604', NoteTrustDebt=1234567"));
    generate(0, 11);
    const QByteArray text = home.payload(QStringLiteral("ZaimuHeader0"));
    EXPECT_TRUE(text.contains("\r\n20,\"2006/07/01\"\r\n")) << text.constData();
    EXPECT_TRUE(text.contains("\r\n24,\"1234\"\r\n25,\"2006/07/01\"\r\n26,\"200604\"\r\n"))
        << text.constData();

    QrHome::execOn(home.database(),
                   QStringLiteral("UPDATE tmpFSInfoData SET EnforceDatesub=NULL, NoteTrustDebt=NULL"));
    generate(0, 11);
    EXPECT_TRUE(home.payload(QStringLiteral("ZaimuHeader0"))
                    .endsWith("\r\n24,\"\"\r\n25,\"2006/07/01\"\r\n26,\"\"\r\n"));
}

TEST_F(PeriodPayloads, PeriodWithoutHeaderRowGoesThroughTheTraps) {
    insertItem(12, 100, QStringLiteral("1000"));
    generate(0, 12);
    EXPECT_EQ(home.errorPlaces(), (QStringList{QStringLiteral("mMakeQRCodeChangedKamoku"),
                                               QStringLiteral("mMakeQRCodeFSHeader")}));
    EXPECT_TRUE(home.hasSymbol(QStringLiteral("ZaimuData0_1")));
    EXPECT_TRUE(home.hasSymbol(QStringLiteral("CapitalHeader0")));
    EXPECT_FALSE(home.hasSymbol(QStringLiteral("ZaimuHeader0")));
    EXPECT_EQ(qr.FSQRCodeCount(), 1);
}

}  // namespace
}  // namespace kelvary
