// The print manager's PDF sink: a run that ends before the PDF is closed
// leaves the user's earlier file as it was and no temporary beside it.
#include "platform/AppObject.h"
#include "platform/Fonts.h"
#include "print/frmPrintManager.h"
#include "startup/CommandLine.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace kelvary {
namespace {

const char* kProbe = R"({
  "paper": "A4",
  "pages": [
    {"items": [
      {"type": "text", "x": 20, "y": 10, "w": 170, "h": 8, "text": "試験帳票", "align": "center"},
      {"type": "field", "name": "VerifyID", "x": 20, "y": 285, "w": 170, "h": 5, "size": 8}
    ]}
  ]
})";

TEST(PrintManager, AFailedRunLeavesTheEarlierPdfInPlace) {
    test::RecordingUiGuard ui;
    test::ScratchHome home;
    installFontSubstitutions();
    app::setPath(home.path());
    ASSERT_TRUE(QDir().mkpath(home.file(QStringLiteral("PrintFile"))));
    test::writeFile(home.file(QStringLiteral("PrintFile/Probe.w30")), kProbe);
    const QString pdf = home.file(QStringLiteral("earlier.pdf"));
    test::writeFile(pdf, "earlier");
    {
        setOptionFields(CommandFields{QStringLiteral("app.dat"), pdf, QString(), QStringLiteral("3")});
        frmPrintManager failing;
        failing.Init();
        failing.SetPrintFile(QStringLiteral("Probe.w30"));
        failing.EndPage();
        failing.EndPrint();
        // The run ends here without gPdfClose.
    }
    setOptionFields(CommandFields{});
    EXPECT_EQ(test::readFile(pdf), QByteArray("earlier"));
    const QStringList left = QDir(home.path()).entryList({QStringLiteral("earlier*")}, QDir::Files | QDir::Hidden);
    EXPECT_EQ(left, QStringList{QStringLiteral("earlier.pdf")});
}

}  // namespace
}  // namespace kelvary
