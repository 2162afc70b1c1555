// Storage of the program-wide application flags.
#include "intake/ApplicationFlags.h"

namespace kelvary {

bool gblnRepresentation = false;
long glngSinseiType = 0;

}  // namespace kelvary
