// The lock functions are counted like all others, but apart from the total.
#pragma once

#include "simulator/functions.h"

namespace switchsim {

/// Takes the process-wide lock for the simulator's own use, not counted, unless somebody holds it.
bool try_lock_switch();
void unlock_switch();

/// Counts a call of a lock function.
void count_lock_call(Function function);

} // namespace switchsim
