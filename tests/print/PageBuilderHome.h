// A scratch program folder for the page builders: the run's connection, a
// print manager in the output mode a test chooses, the submitter's settings,
// and QR images written into Temp under the names the generator gives them.
#pragma once

#include "platform/Fonts.h"
#include "platform/LayoutDocument.h"
#include "platform/PdfCheck.h"
#include "print/frmPrintManager.h"
#include "startup/CommandLine.h"
#include "startup/mdlFunctionStandard.h"
#include "support/ConnectedHome.h"

#include <gtest/gtest.h>

#include <QDir>

#include <memory>

namespace kelvary::test {

inline constexpr char kSeed[] = "0000012320260101120000";

// Whether a page's text holds the expected text, blanks aside: pdftotext
// lays ideographic spaces out as runs of ordinary ones.
inline bool holdsText(const QString& pageText, const QString& expected) {
    const auto squeeze = [](QString t) {
        t.remove(QChar(0x3000));
        t.remove(QLatin1Char(' '));
        return t;
    };
    return squeeze(pageText).contains(squeeze(expected));
}

class PageBuilderHome : public ::testing::Test {
protected:
    void SetUp() override { installFontSubstitutions(); }
    void TearDown() override {
        setOptionFields(CommandFields{});
        setBatchOptions(BatchOptions{});
    }

    // A print manager that collects its pages (paper) or, with a PDF file
    // name, writes them to that file in the folder (course 1's send file).
    frmPrintManager& manager(const QString& pdfName = QString(), const QString& agent = QString(),
                             std::optional<OutputMode> mode = std::nullopt) {
        const OutputMode m = mode ? *mode : pdfName.isEmpty() ? OutputMode::Print : OutputMode::SendFileCourse1;
        setOptionFields(
            CommandFields{QStringLiteral("app.dat"), pdfName.isEmpty() ? QString() : pdf(pdfName), agent, m});
        manager_ = std::make_unique<frmPrintManager>();
        manager_->Init();
        manager_->setVerifyID(QString::fromLatin1(kSeed));
        return *manager_;
    }
    QString pdf(const QString& name) const { return home.file(name); }

    // Closes the PDF of modes "3" and "4" as the driver does at its end.
    void finishPdf() {
        manager_->EndPrint();
        manager_->gPdfClose();
    }

    // The field of page 1 of the open layout, as the builders left it.
    LayoutField field(const char* name, const QString& group = QString()) {
        return field(QString::fromUtf8(name), group);
    }
    LayoutField field(const QString& name, const QString& group = QString()) {
        LayoutDocument document = *manager_->document();
        return document.field(1, name, group);
    }

    void setting(const char* key, const QString& value) {
        gWriteIniData(QString::fromLatin1(key), value, QStringLiteral("UserInfo"));
    }

    // A QR image of the text in Temp, under the symbol's file base.
    void symbol(const QString& fileBase, const QByteArray& payload) {
        ASSERT_TRUE(QDir().mkpath(home.file(QStringLiteral("Temp"))));
        ASSERT_TRUE(writeQrBmp(payload, home.file(QStringLiteral("Temp/") + fileBase + QStringLiteral(".bmp"))));
    }

    // The places of the error reports shown so far.
    QStringList errors() {
        QStringList texts;
        for (const RecordedMessage& m : home.ui().messages) texts << m.request.text;
        return texts;
    }

    ConnectedHome home;
    std::unique_ptr<frmPrintManager> manager_;
};

}  // namespace kelvary::test
