// The application checker of the form edition in force from 2008-04-01,
// used by the current print driver.
#pragma once

#include "checks/ApplicationChecker.h"

namespace kelvary {

class clsVerifyAPData_200804 : public ApplicationChecker {
public:
    clsVerifyAPData_200804() : ApplicationChecker(FormEdition::Form200804) {}
};

}  // namespace kelvary
