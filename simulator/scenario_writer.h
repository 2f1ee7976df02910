// Scenarios the other way: from the switch's tables to TOML text.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// The switch as a scenario that reads back as the same tables. Keys that have their default are left out; what the
/// switch cannot answer is named in a comment. What no scenario holds is left out (docs/scenarios.md).
std::string write_scenario(const Switch& contents);

} // namespace switchsim
