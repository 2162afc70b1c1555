// The print driver for application forms of the 2008-04-01 edition: output
// modes 1-4, the header payload, the agent options, the side sheet of the
// statement of changes in equity.
#pragma once

#include "print/PrintRun.h"

namespace kelvary {

class clsPrintMain_200804 : public PrintRun {
protected:
    qr::QrSymbolList mMakeApplicationPayloads(const QString& seed, long lastPeriod) override;
    bool mCheckApplication() override;
    qr::QrSymbolList mMakePeriodPayloads(long page, std::int32_t indexId, const QString& seed) override;
    bool mCheckPeriod(std::int32_t) override { return true; }
    bool mAskToContinue(const QString& verb) override;
    void mPrintApplicationPages(frmPrintManager& manager, const QString& verb, bool applicationProblem) override;
    void mPrintAfterPeriod(frmPrintManager& manager, int period) override;
    void mPrintApplicationPdf(frmPrintManager& manager, bool applicationProblem) override;
    FormEdition mEdition() const override { return FormEdition::Form200804; }

private:
    // The sibling-database key of the period whose pages are being printed.
    std::int32_t mlngFSDataCode = 0;
};

}  // namespace kelvary
