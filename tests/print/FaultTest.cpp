// Whole runs that meet a fault the case files of tests/data/runs cannot set
// up: a disk that fills up under the run. Each run must say so in Japanese,
// answer with its exit status, and leave the user's files byte for byte as
// they were.
#include "support/Restricted.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <map>

using namespace kelvary::test;

namespace {

constexpr int kError = 3;

class Fault : public ::testing::Test {
protected:
    void SetUp() override {
        // A good run first: the settings then hold this application's user
        // details, which a later run writes again with the same bytes, and
        // the PDF it leaves is the user's earlier one.
        const ProcessResult good = runKelvary(arguments(pdf()));
        ASSERT_EQ(good.exitCode, 0) << good.standardError.toStdString();
        ASSERT_TRUE(readFile(pdf()).startsWith("%PDF-"));
        QFile::remove(file("Temp/kelvary.log"));
    }

    QString file(const QString& name) const { return home.file(name); }
    QString pdf() const { return file(QStringLiteral("out.pdf")); }
    QString sampleApp() const { return file(QStringLiteral("sample/app.dat")); }

    QStringList arguments(const QString& pdfFile, const QString& application = QString()) const {
        return {QStringLiteral("--batch"), QStringLiteral("--home"), home.path(), QStringLiteral("--mode"),
                QStringLiteral("3"), QStringLiteral("--periods"), QStringLiteral("all"), QStringLiteral("--pdf"),
                pdfFile, application.isEmpty() ? sampleApp() : application};
    }

    // The bytes of the files a run must leave alone.
    void keep(const QStringList& names) {
        for (const QString& name : names) {
            kept[name] = readFile(file(name));
            ASSERT_FALSE(kept[name].isEmpty()) << name.toStdString();
        }
    }
    void expectKept() const {
        for (const auto& [name, bytes] : kept) EXPECT_TRUE(readFile(file(name)) == bytes) << name.toStdString() << " changed";
    }

    // The message on standard error (the batch form of the box) and in the log.
    void expectReported(const ProcessResult& r, const QString& message, bool logWritable = true) const {
        EXPECT_TRUE(r.standardError.contains(message)) << r.standardError.toStdString();
        if (logWritable)
            EXPECT_TRUE(QString::fromUtf8(readFile(file(QStringLiteral("Temp/kelvary.log")))).contains(message));
    }

    ScratchHome home;
    std::map<QString, QByteArray> kept;
};

const QStringList kUserFilesButThePdf{QStringLiteral("UserData.ini"), QStringLiteral("sample/Ledra.mdb"),
                                      QStringLiteral("Ledra_dummy.mdb")};
const QStringList kUserFiles = kUserFilesButThePdf + QStringList{QStringLiteral("out.pdf")};

}  // namespace

TEST_F(Fault, PdfOnADiskThatFillsUpIsReportedAndTheEarlierPdfStays) {
    const QString why = fullDiskRunUnavailable();
    if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
    keep(kUserFiles);
    const QString folder = file("small-disk");
    ASSERT_TRUE(QDir().mkpath(folder));
    // The sample's pages take well over 100 KiB; the disk holds 64 KiB.
    const FullDiskRun run = runKelvaryOnFullDisk(folder, 64 * 1024, QStringLiteral("out.pdf"), "the user's earlier PDF",
                                                 arguments(folder + QStringLiteral("/out.pdf")));
    EXPECT_EQ(run.process.exitCode, kError);
    expectReported(run.process, QStringLiteral("PDFファイル「") + folder +
                                    QStringLiteral("/out.pdf」を保存できません。ディスクの空き容量を確認してください。"));
    expectReported(run.process, QStringLiteral("「") + folder +
                                    QStringLiteral("/out.pdf」にあるファイルは以前に作成されたもので、今回の出力ではありません。"));
    EXPECT_EQ(run.filesLeft, QStringList{QStringLiteral("out.pdf")});  // no half-written temporary
    EXPECT_EQ(run.fileLeft, QByteArray("the user's earlier PDF"));
    expectKept();
}

TEST_F(Fault, TempOnADiskThatFillsUpLeavesNoHalfWrittenSymbol) {
    const QString why = fullDiskRunUnavailable();
    if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
    // The run goes on past the symbols it could not save, so its PDF replaces the earlier one.
    keep(kUserFilesButThePdf);
    // Room for two or three of the sample's symbol images.
    const FullDiskRun run = runKelvaryOnFullDisk(file("Temp"), 24 * 1024, QStringLiteral("kelvary.log"), QByteArray(),
                                                 arguments(pdf()));
    EXPECT_EQ(run.process.exitCode, kError);
    EXPECT_TRUE(run.process.standardError.contains(
        QStringLiteral("を保存できません。ディスクの空き容量と、作業フォルダーに書き込めるかを確認してください。")))
        << run.process.standardError.toStdString();
    // At most once for the application's symbols and once for each period's.
    const qsizetype reports = run.process.standardError.count(QStringLiteral("=== 3 "));
    EXPECT_GE(reports, 1);
    EXPECT_LE(reports, 4) << run.process.standardError.toStdString();
    // Whole files only: images, payload copies each beside its image, the log.
    ASSERT_FALSE(run.filesLeft.isEmpty());
    for (const QString& name : run.filesLeft) {
        if (name == QStringLiteral("kelvary.log")) continue;
        if (name.endsWith(QStringLiteral(".bmp.Txt"))) {
            EXPECT_TRUE(run.filesLeft.contains(name.chopped(4))) << name.toStdString();
            continue;
        }
        EXPECT_TRUE(name.endsWith(QStringLiteral(".bmp"))) << name.toStdString();
    }
    expectKept();
}
