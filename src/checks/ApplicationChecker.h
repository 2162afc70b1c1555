// The rule checks of one application record (a tmpAPData row) before it is
// turned into QR codes and printed. Both form editions share these rules; the
// earlier edition replaces the FType rule by the consolidated-statement rules
// and adds two amount rules at the end. Findings are collected as problem
// texts, in the order the rules run, for the problem report to show.
#pragma once

#include "platform/Recordset.h"
#include "platform/Variant.h"
#include "startup/FormEdition.h"

#include <QString>

#include <cstdint>

namespace kelvary {


class ApplicationChecker {
public:
    explicit ApplicationChecker(FormEdition edition) : edition_(edition) {}

    void setAPDataCode(std::int32_t code) { mlngAPDataCode = code; }
    void setFSDataCheck(bool check) { mblnFSDataCheck = check; }
    // Runs every rule once; a second call appends a second set of texts.
    void CheckItemSum();
    bool ErrorFlag() const { return mblnErrorFlag; }
    const QString& Message() const { return mstrMessage; }

private:
    void mCheckAPData();
    bool mblnCheckBlank(const QString& field, const QString& title, const Recordset& rs,
                        const Variant& blank);
    bool mblnCheckEra(const Variant& value, const QString& fieldName);
    bool mblnCheckTooLong(const Recordset& rs, const QString& field, const QString& title, int limit);
    bool mblnCheckAddress(const Recordset& rs);
    bool mblnCheckLicence(const Recordset& rs, int number, const QString& prefix);
    bool mblnPreviousLicenceGiven(const Recordset& rs) const;
    bool mblnCheckBusinessYears(const Recordset& rs);
    bool mblnCheckBaseDateMatchesYearEnd(const Recordset& rs);
    bool mblnCheckConsolidation(const Recordset& rs);
    bool mblnCheckConsolidatedAmounts(const Recordset& rs);
    bool mblnCheckCorporateForms(const Recordset& rs);
    bool mblnCheckNameBlanks(const Recordset& rs);
    void mAppend(const QString& problem);

    FormEdition edition_;
    std::int32_t mlngAPDataCode = 0;
    bool mblnFSDataCheck = false;
    bool mblnErrorFlag = false;
    QString mstrMessage;
};

}  // namespace kelvary
