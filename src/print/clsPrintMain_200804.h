// The print driver for application forms of the 2008-04-01 edition: one
// PrintDocument call runs the whole print run — menu, import of the chosen
// periods, checks, QR payloads and printing — and returns when it is over.
#pragma once

#include "print/QrPages.h"

#include <QList>
#include <QString>

#include <cstdint>

namespace kelvary {

class frmPrintManager;

class clsPrintMain_200804 {
public:
    void setAPDataCode(std::int32_t code) { mlngAPDataCode = code; }
    void setMainDataCode(std::int32_t code) { mlngMainDataCode = code; }
    void PrintDocument();

private:
    void mPrint();
    bool mShowMenu(bool& preview, bool& printApplication, bool& printStatements);
    void mMakeApplicationPayloads(const QString& seed, long lastPeriod);
    void mImportPeriods(const QString& periodQuery, const QString& seed);
    bool mAskToContinue(const QString& verb);
    void mPrintPages(frmPrintManager& manager, const QString& mode, const QString& verb, bool printApplication,
                     bool printStatements, bool applicationProblem);

    std::int32_t mlngAPDataCode = 0;
    std::int32_t mlngMainDataCode = 0;
    bool mblnProxy = false;
    long mlngCourseNumber = 0;
    bool mblnSendResult = false;
    QString mstrCommand[4];
    std::int32_t mlngFSDataCode = 0;
    QString mstrReportText;

    // Per chosen period, newest first: its keys and the symbol counts of its payloads.
    QList<std::int32_t> mlngIndexID;
    QList<std::int32_t> mlngLinkCode;
    QList<PeriodSymbolCounts> mSymbolCounts;
};

// The text of the current date and time and the user's ID that names every
// page and payload of the run.
QString mMakeVerifySeed();

}  // namespace kelvary
