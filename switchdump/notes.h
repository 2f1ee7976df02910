// What a captured switch did not answer, where no row of the scenario can say so.
#pragma once

#include "simulator/switchsim.h"

#include <string>

namespace switchdump {

/// Comments for the beginning of the scenario; "" if there is nothing to note. A table without rows is noted too: the
/// platform's walks end where they fail. They depend on the tables alone, so that a capture's capture has the same.
std::string notes(const switchsim::Switch& contents);

} // namespace switchdump
