// The print driver for application forms of the editions before 2008-04-01:
// always printed (or previewed), no header payload, a statement check of
// every chosen period, no side sheet.
#pragma once

#include "print/PrintRun.h"

namespace kelvary {

class clsPrintMain : public PrintRun {
protected:
    qr::QrSymbolList mMakeApplicationPayloads(const QString& seed, long lastPeriod) override;
    bool mCheckApplication() override;
    qr::QrSymbolList mMakePeriodPayloads(long page, std::int32_t indexId, const QString& seed) override;
    bool mCheckPeriod(std::int32_t indexId) override;
    bool mAskToContinue(const QString& verb) override;
    void mPrintApplicationPages(frmPrintManager& manager, const QString& verb, bool applicationProblem) override;
    void mPrintAfterPeriod(frmPrintManager&, int) override {}
    FormEdition mEdition() const override { return FormEdition::Earlier; }
};

}  // namespace kelvary
