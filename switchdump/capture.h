// The switch as a scenario: everything that the provider reads, through the platform functions that it calls.
#pragma once

#include "simulator/switchsim.h"

namespace switchdump {

/// Reads the switch. The caller holds the process-wide lock and has opened mts_q. What cannot be read is left as the
/// tables have it when it is not there.
switchsim::Switch capture();

} // namespace switchdump
