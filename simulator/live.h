// The switch's clock: counters that move, and events.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// The latest time that a scenario can say, milliseconds. Clocks are not stepped beyond it.
inline constexpr std::uint64_t longest_clock = 1'000'000'000'000;

/// Brings the switch to the present, between two requests.
void advance();

/// The same while a request is under way: counters move, events wait.
void advance_within_request();

/// The switch as it is at this moment, for what is no platform call; null if its scenario could not be loaded. The
/// caller holds the process-wide lock.
SWITCHSIM_API const Switch* present_switch();

/// Says that the switch was replaced: its clock goes on from Switch::now.
void restart_clock();

/// Lets the environment say again how the clock goes.
void reset_clock();

/// Puts a changed switch in the place of the present one; names that are the same stay where they are in memory.
void replace_switch(Switch&& contents);

/// Brings the switch's clock to a time that is not before its present, and all that moves with it.
void advance_to(std::uint64_t milliseconds);

} // namespace switchsim
