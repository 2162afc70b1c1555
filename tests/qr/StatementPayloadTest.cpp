// The symbols of one fiscal period from the working tables: which items are
// written and how, the equity form, the notes' byte bound and the
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
    // The period's header row (Distinction 1), and one of its items.
    void insertPeriod(int fsDataCode) {
        home.exec(QStringLiteral("INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, FYearFrom, FYearTo, Distinction, "
                                 "TaxType, SideBusinessFlag, TaxFreeFlag, EnforceDate, ApplyerName) "
                                 "VALUES (%1, 12, '2007-04-01', '2008-03-31', 1, 1, 0, 1, '2006-07-01', 'テスト')")
                      .arg(fsDataCode));
    }
    void insertItem(int fsDataCode, int code) {
        home.exec(QStringLiteral("INSERT INTO tmpFSItemData (ID, FSDataCode, FSItemID, ItemCode, ItemName, ItemValue, "
                                 "NameChangeFlag, DocCode, SortNumber) VALUES (0, %1, 0, %2, 'x', 1000, 0, 1, 0)")
                      .arg(fsDataCode)
                      .arg(code));
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
    test::sqlExecFile(home.database(), QStringLiteral("qr/ItemsTakePart.sql"));
    generate(0, 7);
    EXPECT_EQ(home.payload(QStringLiteral("ZaimuData0_1")),
              test::expectedPayload(QStringLiteral("ZaimuData_selection")));
    EXPECT_EQ(qr.FSQRCodeCount(), 1);
    EXPECT_FALSE(home.hasSymbol(QStringLiteral("ZaimuData0_2")));
}

TEST_F(PeriodPayloads, EquityColumnsAndRowsInTheirOwnForm) {
    test::sqlExecFile(home.database(), QStringLiteral("qr/EquityColumnsAndRows.sql"));
    generate(0, 5);
    EXPECT_EQ(qr.CapitalQRCodeCount(), 3);
    for (const char* symbol : {"CapitalHeader0", "CapitalData0_1", "CapitalData0_2", "CapitalData0_3"})
        EXPECT_EQ(home.payload(QString::fromLatin1(symbol)), test::expectedPayload(QString::fromLatin1(symbol))) << symbol;
}

class NotePayloads : public PeriodPayloads {
protected:
    void insertNotes(const QString& columns, const QString& values) {
        home.exec(
            QStringLiteral("INSERT INTO tmpFSNoteData (FSDataCode, %1) VALUES (9, %2)").arg(columns, values));
    }
    static QString fullWidth(int characters) { return QStringLiteral("あ").repeated(characters); }
    static QString quoted(const QString& text) { return QLatin1Char('\'') + text + QLatin1Char('\''); }
};

TEST_F(NotePayloads, OverLongNotesAreReplacedAndTheMessageShownOnce) {
    insertPeriod(9);
    insertNotes(
        QStringLiteral("AccountWayAssetsCriteria, AccountWayFixAssetsAccumulate, AccountWayReserveSum, "
                       "AccountWayRevenuesExpensesSum, PLRealSales, Other"),
        QStringLiteral("'abc', %1, NULL, '', 'x,y', %1").arg(quoted(fullWidth(450))));
    generate(0, 9);
    // Each over-long value closes the symbol before it, as its length counts.
    EXPECT_EQ(qr.NListQRCodeCount(), 3);
    for (const char* symbol : {"NListData0_1", "NListData0_2", "NListData0_3"})
        EXPECT_EQ(home.payload(QString::fromLatin1(symbol)), test::expectedPayload(QString::fromLatin1(symbol))) << symbol;
    ASSERT_EQ(home.ui().messages.size(), 1);
    EXPECT_EQ(home.ui().messages[0].request.title, QStringLiteral("情報"));
    EXPECT_EQ(home.ui().messages[0].request.text,
              QStringLiteral("第12期の注記表のデータ量が多くQRコードにすることができません。\r\n"
                             "第12期の注記表については、印刷したものを添付してください。"));
}

TEST_F(NotePayloads, TheLargestNoteThatFitsDecodes) {
    insertPeriod(9);
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
    insertPeriod(10);
    home.exec(
        QStringLiteral("UPDATE tmpFSInfoData SET EnforceDatesub='201004', NoteTrustDebt=-1999, "
                       "VersionNumber='3.1', ApplyerName='株式会社\"テスト\"'"));
    for (int code = 1; code <= 41; ++code)
        insertItem(10, code);
    home.exec(QStringLiteral("INSERT INTO tmpFSNoteData (FSDataCode, Other) VALUES (10, 'n')"));
    generate(1, 10);
    EXPECT_EQ(home.payload(QStringLiteral("ZaimuHeader1")),
              test::expectedPayload(QStringLiteral("ZaimuHeader_201004")));
}

TEST_F(PeriodPayloads, PeriodWithoutHeaderRowGoesThroughTheTraps) {
    insertItem(12, 100);
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
