// The application checker of the form edition before 2008-04-01, used by the
// earlier-form print driver: consolidated-statement duty instead of FType.
#pragma once

#include "checks/ApplicationChecker.h"

namespace kelvary {

class clsVerifyAPData : public ApplicationChecker {
public:
    clsVerifyAPData() : ApplicationChecker(FormEdition::Earlier) {}
};

}  // namespace kelvary
