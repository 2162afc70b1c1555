// clsApply2Data: reads the application data file handed over by the parent
// program once at start-up. The form fields of [DocData] become the one row
// of tmpAPData, the filer's or agent's details of [UserInfo] go to
// UserData.ini and the two program-wide agent flags, and the applicant key
// (ApplyDataID of [BasicInfo]) is returned to start-up.
#pragma once

#include "platform/Variant.h"

#include <QString>

#include <cstdint>

namespace kelvary {

class SequentialInput;

class clsApply2Data {
public:
    // Reads [BasicInfo], then [DocData], then [UserInfo]; returns the
    // applicant key (MainDataCode), 0 when the file names none.
    std::int32_t LoadData(const QString& file);

    // The path given to LoadData.
    const QString& AnlFile() const { return mstrAnlFile; }
    // The folder of old financial data files (ZaimuDataPath).
    const QString& OldZaimuDataPath() const { return mstrOldZaimuDataPath; }

private:
    // How a [DocData] value is written into SQL: the field types of clsSqlText.
    enum enmDataType { enmNumber = 0, enmText = 1, enmDate = 2 };

    void mLoadBasicInfo();
    void mLoadAPData();
    void mLoadUserInfo();
    QString mstrSearchHeader(const QString& header, SequentialInput& file);
    enmDataType menmConvertDataType(const Variant& typeCode);

    QString mstrAnlFile;
    QString mstrOldZaimuDataPath;
    std::int32_t mlngMainDataCode = 0;
};

}  // namespace kelvary
