// The print driver for application forms of the 2008-04-01 edition: one
// PrintDocument call runs the whole print run — menu, import of the chosen
// periods, checks, QR payloads and printing — and returns when it is over.
#pragma once

#include <QList>
#include <QString>

#include <cstdint>

namespace kelvary {

class clsPrintMain_200804 {
public:
    void setAPDataCode(std::int32_t code) { mlngAPDataCode = code; }
    void setMainDataCode(std::int32_t code) { mlngMainDataCode = code; }
    void PrintDocument();

private:
    void mPrint();
    bool mShowMenu(bool& preview, bool& printApplication, bool& printStatements);
    void mImportPeriods(const QString& periodQuery);
    bool mAskToContinue(const QString& verb);

    std::int32_t mlngAPDataCode = 0;
    std::int32_t mlngMainDataCode = 0;
    bool mblnProxy = false;
    long mlngCourseNumber = 0;
    bool mblnSendResult = false;
    QString mstrCommand[4];
    std::int32_t mlngFSDataCode = 0;
    QString mstrReportText;

    QList<std::int32_t> mlngIndexID;
    QList<std::int32_t> mlngLinkCode;
};

// The text of the current date and time and the user's ID that names every
// page and payload of the run.
QString mMakeVerifySeed();

}  // namespace kelvary
