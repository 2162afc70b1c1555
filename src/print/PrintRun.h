// The print run both drivers share: menu, document ID, Temp clean-up, the
// application's payloads and check, the import, payloads (and for earlier
// editions the check) of every chosen period, the problem question, and the
// printing stage. The two editions differ only in the hooks below.
#pragma once

#include "qr/QrSymbolRecord.h"
#include "startup/FormEdition.h"
#include "startup/OutputMode.h"

#include <QList>
#include <QString>

#include <cstdint>

namespace kelvary {

class frmPrintManager;

class PrintRun {
public:
    virtual ~PrintRun() = default;
    void setAPDataCode(std::int32_t code) { mlngAPDataCode = code; }
    void setMainDataCode(std::int32_t code) { mlngMainDataCode = code; }
    void PrintDocument();

protected:
    // Each gives the symbols its generator made.
    virtual qr::QrSymbolList mMakeApplicationPayloads(const QString& seed, long lastPeriod) = 0;
    virtual bool mCheckApplication() = 0;
    virtual qr::QrSymbolList mMakePeriodPayloads(long page, std::int32_t indexId, const QString& seed) = 0;
    // True when the period's statements pass; the current edition does not check them.
    virtual bool mCheckPeriod(std::int32_t indexId) = 0;
    virtual bool mAskToContinue(const QString& verb) = 0;
    virtual void mPrintApplicationPages(frmPrintManager& manager, const QString& verb, bool applicationProblem) = 0;
    // What follows a period's QR pages (the current edition's side sheet).
    virtual void mPrintAfterPeriod(frmPrintManager& manager, int period) = 0;
    // The application form alone, to PDF: only an edition that offers PDF
    // output overrides it.
    virtual void mPrintApplicationPdf(frmPrintManager&, bool) {}
    virtual FormEdition mEdition() const = 0;

    // What the menu chose, read by the hooks.
    std::int32_t mlngAPDataCode = 0;
    std::int32_t mlngMainDataCode = 0;
    bool mblnProxy = false;
    long mlngCourseNumber = 0;
    bool mblnSendResult = false;
    QString mstrReportText;
    // The application's symbols, for its supplementary document.
    qr::QrSymbolList mApplicationSymbols;
    // Per chosen period, newest first.
    QList<std::int32_t> mlngIndexID;
    QList<std::int32_t> mlngLinkCode;

private:
    // The output mode of the run: field 4, or paper for an edition without PDF.
    std::optional<OutputMode> mOutputMode();
    void mPrint();
    bool mShowMenu(bool& preview, bool& printApplication, bool& printStatements);
    bool mImportPeriods(const QString& seed);
    void mPrintPages(frmPrintManager& manager, std::optional<OutputMode> mode, const QString& verb, bool printApplication,
                     bool printStatements, bool applicationProblem);

    // Per chosen period, the symbols its generator made.
    QList<qr::QrSymbolList> mPeriodSymbols;
    QList<bool> mblnPeriodProblem;
};

// The user's ID and the start time that name every page and payload of the run.
QString mMakeVerifySeed();

// The texts of the problem question and its warning, with the verb of the run.
QString problemQuestionText(const QString& verb);

}  // namespace kelvary
