// clsAnlBasicInfo: before anything is shown, learns which fiscal periods of
// the applicant can be printed. It reads [BasicInfo] of the application data
// file, points the twelve linked tables at the sibling financial-statements
// database (Ledra.mdb, or the empty Ledra_dummy.mdb beside the program),
// lists the applicant's periods of that database in tblIndex and records the
// folders of the run in tblWork.
#pragma once

#include <QString>

#include <cstdint>

namespace kelvary {

class SequentialInput;

class clsAnlBasicInfo {
public:
    // Reads, links, indexes and saves; every failure is reported and the
    // remaining steps go on with what was read.
    void LoadData(const QString& file);

    // The applicant key (ApplyDataID) read by LoadData.
    std::int32_t MainDataCode() const { return mlngMainDataCode; }

private:
    QString mstrSearchHeader(const QString& header, SequentialInput& file);
    void mMakeIndexNew();
    void mSaveWork();

    std::int32_t mlngMainDataCode = 0;
    QString mstrZaimuDataPath;    // folder of old financial data files
    QString mstrExcelDataFolder;  // folder of Excel workbooks
    QString mstrLedraDataPath;    // folder of Ledra.mdb, with its closing separator
    QString mstrLedraProgram;     // the sibling program, for its file version
    std::int32_t mlngPrefID = 0;  // read and kept, used by nothing
};

}  // namespace kelvary
