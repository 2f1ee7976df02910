// The switch's names, for services that put them into objects.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// What getCSName() answers; null if the switch has no name.
SWITCHSIM_API const char* switch_name();

/// What CSgetName() answers; null if the switch has no name.
const char* system_name();

/// A WWN as cim_sprintf_wwn() writes it, in full.
SWITCHSIM_API std::string wwn_text(const Wwn& wwn);

} // namespace switchsim
