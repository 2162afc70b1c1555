// The report composers of the print drivers: they run a checker, announce the
// outcome in a message box and show the findings under a short header in the
// problem list. Each returns true when the data is free of problems; what to
// do with a false result is the driver's decision.
#pragma once

#include "checks/ApplicationChecker.h"

#include <QString>

#include <cstdint>

namespace kelvary {

// The application of the driver's form edition. The quiet flag suppresses
// only the box that reports no problem; report receives the checker's texts.
bool mblnVaridateAPData(FormEdition edition, std::int32_t apDataCode, bool quiet, bool fsDataCheck,
                        QString& report);

// The list as the problem window shows it for an application: the header
// lines with the trade name and base date of the record, then the findings.
QString applicationReportText(std::int32_t apDataCode, const QString& message);

}  // namespace kelvary
