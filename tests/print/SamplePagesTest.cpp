// The sample application carried through the QR generator and every page
// builder into one PDF, in the driver's order: the supplementary document,
// the application form, then per period (newest first) its QR pages and,
// where the statement asks for one, its equity side sheet. The file is judged
// by qpdf, pdftotext and zbar.
#include "print/ApplicationFormPages.h"
#include "print/EquitySideSheet.h"
#include "print/QrPages.h"
#include "print/SupplementPages.h"

#include "PageBuilderHome.h"
#include "db/mdlFunctionDatabase.h"
#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"
#include "print/PeriodImport.h"
#include "qr/clsQRCode_200804.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace kelvary {
namespace {

using test::pdfText;

// The bytes of every symbol zbar reads off one page rendered at 200 dpi, one
// after the other.
QByteArray symbolBytesOnPage(const QString& pdf, int page) {
    QTemporaryDir dir;
    const QString base = dir.filePath(QStringLiteral("page"));
    test::runTool(QStringLiteral("pdftoppm"),
                  {QStringLiteral("-r"), QStringLiteral("200"), QStringLiteral("-gray"), QStringLiteral("-f"),
                   QString::number(page), QStringLiteral("-l"), QString::number(page), QStringLiteral("-singlefile"),
                   QStringLiteral("-png"), pdf, base});
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"), test::zbarQrOnly() << QStringLiteral("--quiet") << QStringLiteral("--raw")
                                                             << QStringLiteral("-Sbinary") << base + QStringLiteral(".png"));
    zbar.waitForFinished(120000);
    return zbar.readAllStandardOutput();
}

class SamplePages : public test::PageBuilderHome {
protected:
    struct Period {
        std::int32_t indexId = 0;
        std::int32_t linkCode = 0;
        qr::QrSymbolList symbols;
    };

    void SetUp() override {
        PageBuilderHome::SetUp();
        const QString file = home.file(QStringLiteral("sample/app.dat"));
        clsAnlBasicInfo basicInfo;
        basicInfo.LoadData(file);
        clsApply2Data().LoadData(file);
        ASSERT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();
    }

    // The driver's QR steps for every period of the sample, newest first.
    QList<Period> makeSymbols(qr::QrSymbolList& application) {
        mClearTempFolder();
        Recordset periods =
            gobjMakeRecordset(QStringLiteral("Select * From tblIndex Order by FYearNumber Desc,IndexID Desc"));
        {
            clsQRCode_200804 qr;
            qr.setVerifyID(QString::fromLatin1(test::kSeed));
            qr.setCourseNumber(1);
            qr.setProxy(false);
            qr.setSendResult(false);
            qr.MakeHeader(periods.recordCount() - 1);
            qr.MakeAPData(1);
            application = qr.Symbols();
        }
        QList<Period> result;
        for (long i = 0; !periods.eof(); ++i, periods.moveNext()) {
            Period p{periods[QStringLiteral("IndexID")].toLong(), periods[QStringLiteral("LinkCode")].toLong(), {}};
            mCopyZaimuData(p.indexId, p.linkCode);
            mPutSpecialItemCode(p.indexId);
            mReplaceFixedAssets(p.indexId);
            mPref01Special(p.indexId);
            clsQRCode_200804 qr;
            qr.setVerifyID(QString::fromLatin1(test::kSeed));
            qr.MakeFSData(i, p.indexId);
            p.symbols = qr.Symbols();
            result << p;
        }
        return result;
    }

    // The payload copies the generator left beside its images, sorted.
    QList<QByteArray> payloadCopies() const {
        QList<QByteArray> copies;
        const QDir temp(home.file(QStringLiteral("Temp")));
        for (const QString& name : temp.entryList({QStringLiteral("*.bmp.Txt")}, QDir::Files)) {
            QFile f(temp.filePath(name));
            if (f.open(QIODevice::ReadOnly)) copies << f.readAll();
        }
        std::sort(copies.begin(), copies.end());
        return copies;
    }
};

TEST_F(SamplePages, EveryPageCarriesTheIdAndEverySymbolReadsBack) {
    qr::QrSymbolList application;
    const QList<Period> periods = makeSymbols(application);
    ASSERT_EQ(periods.size(), 3);

    frmPrintManager& pm = manager(QStringLiteral("sample.pdf"));
    mPrintSubDoc(pm, 1, application, SupplementChoices{1, false}, false);
    mPrintAP(pm, 1, false, false);
    long expectedPages = 2;
    for (long i = 0; i < periods.size(); ++i) {
        const Period& p = periods[i];
        mPrintFS(pm, i, p.indexId, p.symbols, false);
        const auto count = [&](qr::SymbolKind kind) { return qr::symbolCount(p.symbols, kind); };
        const long equity = count(qr::SymbolKind::CapitalData);
        expectedPages += (1 + count(qr::SymbolKind::ZaimuData) + count(qr::SymbolKind::KamokuData) +
                          count(qr::SymbolKind::NListData) + equity + (equity > 0 ? 1 : 0) + 11) / 12;
        const Variant sideSheet = gvarGetData(QStringLiteral("CapitalSubFlag"), QStringLiteral("T_FS"),
                                              QStringLiteral("FSDataCode=") + QString::number(p.linkCode), Variant());
        if (!sideSheet.isEmpty() && !sideSheet.isNull() && sideSheet.toBool()) {
            mPrintVariableTemp(pm, p.linkCode);
            ++expectedPages;
        }
    }
    finishPdf();
    EXPECT_TRUE(errors().isEmpty()) << errors().join(QLatin1Char('\n')).toStdString();

    const QString file = pdf(QStringLiteral("sample.pdf"));
    ASSERT_EQ(test::qpdfCheck(file), 0);
    const int pages = test::pdfInfo(file, QStringLiteral("Pages")).toInt();
    // Supplement, form, at least one QR page a period, and the newest
    // period's side sheet.
    EXPECT_GE(pages, 6);
    EXPECT_EQ(pages, expectedPages);

    QByteArray read;
    bool sideSheet = false;
    for (int page = 1; page <= pages; ++page) {
        const QString text = pdfText(file, page);
        EXPECT_TRUE(text.contains(QStringLiteral("[ID]") + QString::fromLatin1(test::kSeed))) << page;
        sideSheet = sideSheet || text.contains(QStringLiteral("株主資本等変動計算書"));
        read += symbolBytesOnPage(file, page);
    }
    EXPECT_TRUE(sideSheet);
    // Every payload copy was read from the pages, and nothing else was.
    const QList<QByteArray> copies = payloadCopies();
    EXPECT_GE(copies.size(), 3 + 3);
    qsizetype total = 0;
    for (const QByteArray& copy : copies) {
        EXPECT_TRUE(read.contains(copy)) << copy.left(40).toStdString();
        total += copy.size();
    }
    EXPECT_EQ(read.size(), total);

    const QString first = pdfText(file, 1);
    EXPECT_TRUE(first.contains(QStringLiteral("経営状況分析申請に関する補足書類")));
    EXPECT_TRUE(pdfText(file, 2).contains(QStringLiteral("経営状況分析申請書")));
}

}  // namespace
}  // namespace kelvary
