// The print manager over a scratch program folder: fields written by name,
// suffix and group; every ended page carrying its ID line; the PDF sink of
// modes "2" to "4" and the collected pages of mode "1"; errors reported with
// the member's name.
#include "platform/Fonts.h"
#include "platform/PdfCheck.h"
#include "platform/VbError.h"
#include "print/frmPrintManager.h"
#include "startup/CommandLine.h"
#include "startup/mdlFunctionStandard.h"
#include "platform/AppObject.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace kelvary {
namespace {

using test::pdfText;

const char* kProbe = R"({
  "paper": "A4",
  "pages": [
    {"items": [
      {"type": "text", "x": 20, "y": 10, "w": 170, "h": 8, "text": "試験帳票", "align": "center"},
      {"type": "field", "name": "C32", "x": 20, "y": 20, "w": 30, "h": 6, "text": "法人個人"},
      {"type": "field", "name": "C9", "x": 60, "y": 20, "w": 30, "h": 6},
      {"type": "field", "name": "C9b1", "x": 20, "y": 30, "w": 40, "h": 6, "text": "国土交通大臣"},
      {"type": "field", "name": "C9b2", "x": 70, "y": 30, "w": 40, "h": 6, "text": "知事"},
      {"type": "field", "name": "C44", "x": 20, "y": 40, "w": 50, "h": 6, "align": "right"},
      {"type": "field", "name": "ProxyColumn", "x": 20, "y": 50, "w": 170, "h": 12, "valign": "top"},
      {"type": "field", "name": "CircleApplier", "x": 20, "y": 70, "w": 10, "h": 8, "frame": "ellipse", "visible": false},
      {"type": "image", "name": "WrImage1", "x": 20, "y": 100, "w": 50, "h": 50},
      {"type": "group", "name": "Row01", "x": 20, "y": 160, "w": 170, "h": 6, "fields": [
        {"type": "field", "name": "ItemName", "x": 0, "y": 0, "w": 60, "h": 6},
        {"type": "field", "name": "A1", "x": 60, "y": 0, "w": 30, "h": 6, "align": "right"}
      ]},
      {"type": "field", "name": "VerifyID", "x": 20, "y": 285, "w": 170, "h": 5, "size": 8}
    ]},
    {"items": [
      {"type": "field", "name": "Back", "x": 20, "y": 20, "w": 100, "h": 6}
    ]}
  ]
})";

class PrintManager : public ::testing::Test {
protected:
    void SetUp() override {
        installFontSubstitutions();
        app::setPath(home_.path());
        QFile probe(home_.file(QStringLiteral("PrintFile/Probe.w30")));
        ASSERT_TRUE(QDir().mkpath(home_.file(QStringLiteral("PrintFile"))));
        ASSERT_TRUE(probe.open(QIODevice::WriteOnly));
        probe.write(kProbe);
    }
    void TearDown() override {
        setOptionFields(CommandFields{});
        setBatchOptions(BatchOptions{});
    }

    void useMode(const QString& mode, const QString& pdf = QString()) {
        setOptionFields(CommandFields{QStringLiteral("app.dat"), pdf, QString(), mode});
    }
    QString pdfPath(const QString& name) const { return home_.file(name); }
    QStringList reportedErrors() {
        QStringList texts;
        for (const test::RecordedMessage& m : ui_->messages) texts << m.request.text;
        return texts;
    }

    test::RecordingUiGuard ui_;
    test::ScratchHome home_;
    frmPrintManager manager_;
};

TEST_F(PrintManager, PdfModeWritesEveryEndedPageWithItsIdLine) {
    const QString pdf = pdfPath(QStringLiteral("out.pdf"));
    useMode(QStringLiteral("3"), pdf);
    manager_.Init();
    manager_.setVerifyID(QStringLiteral("0000012320260101120000"));
    manager_.SetPrintFile(QStringLiteral("Probe.w30"));
    manager_.OutPutData(QStringLiteral("C9"), 13, 0, 1, QStringLiteral("00"));
    manager_.EndPage(true);
    manager_.OutPutData(QStringLiteral("C9"), 5, 0, 1, QStringLiteral("00"));
    manager_.EndPage();
    // Nothing was collected for a printer, and printing adds nothing.
    manager_.PrintNoPreview();
    EXPECT_EQ(manager_.collectedPageCount(), 0);
    EXPECT_EQ(manager_.pdfPageCount(), 2);
    // Until the PDF is closed the target is not there.
    EXPECT_FALSE(QFile::exists(pdf));
    manager_.EndPrint();
    manager_.gPdfClose();

    EXPECT_TRUE(reportedErrors().isEmpty()) << reportedErrors().join(QLatin1Char('\n')).toStdString();
    ASSERT_TRUE(QFile::exists(pdf));
    EXPECT_EQ(test::qpdfCheck(pdf), 0);
    EXPECT_EQ(test::pdfInfo(pdf, QStringLiteral("Pages")), QStringLiteral("2"));
    const QString first = pdfText(pdf, 1);
    EXPECT_TRUE(first.contains(QStringLiteral("[ID]0000012320260101120000 ※"))) << first.toStdString();
    EXPECT_TRUE(first.contains(QStringLiteral("13")));
    const QString second = pdfText(pdf, 2);
    EXPECT_TRUE(second.contains(QStringLiteral("[ID]0000012320260101120000")));
    EXPECT_FALSE(second.contains(QStringLiteral("※")));
    EXPECT_TRUE(second.contains(QStringLiteral("05")));
    EXPECT_FALSE(second.contains(QStringLiteral("13")));
    // The second page template is invisible: never printed.
    EXPECT_FALSE(first.contains(QStringLiteral("Back")));
}

TEST_F(PrintManager, AMissingImageLeavesTheFieldWithoutAMessage) {
    useMode(QStringLiteral("1"));
    manager_.Init();
    manager_.SetPrintFile(QStringLiteral("Probe.w30"));
    manager_.SetImage(QStringLiteral("WrImage"), home_.file(QStringLiteral("Temp/ZaimuData0_1.bmp")), 1);
    EXPECT_TRUE(manager_.GetObject(QStringLiteral("WrImage1"))->imageFile.isEmpty());
    const QString bmp = home_.file(QStringLiteral("ApplyHeader.bmp"));
    ASSERT_TRUE(test::writeQrBmp("ApplyHeader", bmp));
    manager_.SetImage(QStringLiteral("WrImage"), bmp, 1);
    EXPECT_EQ(manager_.GetObject(QStringLiteral("WrImage1"))->imageFile, bmp);
    EXPECT_TRUE(reportedErrors().isEmpty());
}

TEST_F(PrintManager, AFailedRunLeavesTheEarlierPdfInPlace) {
    const QString pdf = pdfPath(QStringLiteral("earlier.pdf"));
    {
        QFile earlier(pdf);
        ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
        earlier.write("earlier");
    }
    {
        useMode(QStringLiteral("3"), pdf);
        frmPrintManager failing;
        failing.Init();
        failing.SetPrintFile(QStringLiteral("Probe.w30"));
        failing.EndPage();
        failing.EndPrint();
        // The run ends here without gPdfClose.
    }
    QFile kept(pdf);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), QByteArray("earlier"));
    const QStringList left = QDir(home_.path()).entryList({QStringLiteral("earlier*")}, QDir::Files | QDir::Hidden);
    EXPECT_EQ(left, QStringList{QStringLiteral("earlier.pdf")});
}

}  // namespace
}  // namespace kelvary
