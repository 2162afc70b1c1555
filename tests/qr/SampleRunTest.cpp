// The sample application carried through the driver's QR steps: intake, the
// import of the chosen periods, the application symbols and each period's
// symbols, newest period first. Temp must then hold exactly the symbols the
// counts name, each as an image and its payload copy, every image decoding
// to its copy; the next run clears them and leaves only its own.
#include "qr/clsQRCode_200804.h"

#include "QrHome.h"
#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "print/PeriodImport.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::QrHome;

struct PeriodCounts {
    long items = 0;
    long renamed = 0;
    long notes = 0;
    long equity = 0;
};

class QrSampleRun : public ::testing::Test {
protected:
    void SetUp() override {
        const QString file = home.file(QStringLiteral("sample/app.dat"));
        clsAnlBasicInfo basicInfo;
        basicInfo.LoadData(file);
        clsApply2Data().LoadData(file);
        // The one application record of the run.
        ASSERT_EQ(rows(QStringLiteral("SELECT APDataCode FROM tmpAPData")), QStringList{QStringLiteral("1")});
        apDataCode = 1;
        ASSERT_TRUE(home.ui().messages.isEmpty());
    }

    // The driver's QR steps for the periods in the given IndexID order.
    QList<PeriodCounts> run(const QList<int>& indexIds) {
        mClearTempFolder();
        {
            clsQRCode_200804 qr;
            qr.setVerifyID(QStringLiteral("0000000120090701120000"));
            qr.setCourseNumber(1);
            qr.setProxy(true);
            qr.setSendResult(false);
            qr.MakeHeader(indexIds.size() - 1);
            qr.MakeAPData(apDataCode);
        }
        QList<PeriodCounts> counts;
        for (int i = 0; i < indexIds.size(); ++i) {
            const int indexId = indexIds[i];
            const QStringList link =
                rows(QStringLiteral("SELECT LinkCode FROM tblIndex WHERE IndexID=%1").arg(indexId));
            mCopyZaimuData(indexId, link.value(0).toInt());
            mPutSpecialItemCode(indexId);
            mReplaceFixedAssets(indexId);
            mPref01Special(indexId);
            clsQRCode_200804 qr;
            qr.setVerifyID(QStringLiteral("0000000120090701120000"));
            qr.MakeFSData(i, indexId);
            counts.append(
                {qr.FSQRCodeCount(), qr.KamokuQRCodeCount(), qr.NListQRCodeCount(), qr.CapitalQRCodeCount()});
        }
        return counts;
    }

    QStringList rows(const QString& sql) {
        QStringList result;
        const Recordset rs = gobjMakeRecordset(sql);
        for (Recordset r = rs; !r.isNothing() && !r.eof(); r.moveNext())
            result << r.value(0).text();
        return result;
    }

    // The files the counts call for, sorted as the folder lists them.
    static QStringList expectedFiles(const QList<PeriodCounts>& counts) {
        QStringList names = {QStringLiteral("ApplyHeader"), QStringLiteral("ApplyDoc1"),
                             QStringLiteral("ApplyDoc2")};
        for (int i = 0; i < counts.size(); ++i) {
            names << QStringLiteral("ZaimuHeader%1").arg(i) << QStringLiteral("CapitalHeader%1").arg(i);
            const auto add = [&](const char* kind, long n) {
                for (long k = 1; k <= n; ++k)
                    names << QStringLiteral("%1%2_%3").arg(QLatin1String(kind)).arg(i).arg(k);
            };
            add("ZaimuData", counts[i].items);
            add("KamokuData", counts[i].renamed);
            add("CapitalData", counts[i].equity);
            add("NListData", counts[i].notes);
        }
        QStringList files;
        for (const QString& name : names)
            files << name + QStringLiteral(".bmp") << name + QStringLiteral(".bmp.Txt");
        files.sort();
        return files;
    }

    // The record counts of every symbol of a kind and period, from their headers.
    long recordsOf(const QString& prefix, long symbols) {
        long total = 0;
        static const QRegularExpression header(
            QStringLiteral("^\"\\[[^]]+\\]\",\"[0-9]*\",([0-9]+),[0-9]+\r\n"));
        for (long k = 1; k <= symbols; ++k) {
            const QString text = QString::fromLatin1(home.payload(prefix + QString::number(k)).left(64));
            const auto match = header.match(text);
            EXPECT_TRUE(match.hasMatch()) << text.toStdString();
            total += match.captured(1).toLong();
        }
        return total;
    }

    QrHome home;
    std::int32_t apDataCode = 0;
};

TEST_F(QrSampleRun, AllPeriodsNewestFirstThenOnlyTheNewest) {
    // IndexIDs 1, 2, 3 are the periods 38, 39, 40; the newest prints first.
    const QList<PeriodCounts> counts = run({3, 2, 1});
    ASSERT_EQ(counts.size(), 3);
    EXPECT_EQ(home.tempFiles(), expectedFiles(counts));
    EXPECT_TRUE(home.ui().messages.isEmpty()) << home.errorPlaces().join(QLatin1Char(' ')).toStdString();

    const QList<int> order = {3, 2, 1};
    for (int i = 0; i < 3; ++i) {
        const QString key = QString::number(order[i]);
        // Counted here from the working tables with the selection rules.
        const long items =
            rows(QStringLiteral("SELECT Count(*) FROM tmpFSItemData WHERE FSDataCode=") + key +
                 QStringLiteral(" AND ItemCode<10000 AND (ItemCode IN (159,162,204,207,208) OR "
                                "NameChangeFlag=1 OR ItemValue<>0)"))
                .value(0)
                .toLong();
        EXPECT_GT(items, 0);
        EXPECT_EQ(counts[i].items, (items + 39) / 40) << i;
        EXPECT_EQ(recordsOf(QStringLiteral("ZaimuData%1_").arg(i), counts[i].items), items) << i;
        const long rowsOfEquity =
            rows(QStringLiteral("SELECT Count(*) FROM tmpFSCapitalRow WHERE FSDataCode=") + key)
                .value(0)
                .toLong();
        EXPECT_EQ(counts[i].equity, (rowsOfEquity + 4) / 5) << i;
        EXPECT_EQ(recordsOf(QStringLiteral("CapitalData%1_").arg(i), counts[i].equity), rowsOfEquity) << i;
    }
    for (const QString& file : home.tempFiles()) {
        if (!file.endsWith(QStringLiteral(".bmp"))) continue;
        EXPECT_EQ(test::zbarDecode(home.temp(file)), QrHome::read(home.temp(file + QStringLiteral(".Txt"))))
            << file.toStdString();
    }

    // The next run with the newest period alone leaves nothing of the first.
    const QList<PeriodCounts> second = run({3});
    EXPECT_EQ(home.tempFiles(), expectedFiles(second));
}

}  // namespace
}  // namespace kelvary
