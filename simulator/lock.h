// The lock functions are counted like all others, but apart from the total.
#pragma once

#include "simulator/functions.h"

namespace switchsim {

/// Counts a call of a lock function.
void count_lock_call(Function function);

} // namespace switchsim
