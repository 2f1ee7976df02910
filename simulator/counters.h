// Counters of a switch by their place.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// The record that a counter stands in; null if it is not there.
std::uint8_t* record_of(Switch& contents, const CounterPlace& place);

/// The rates of all counters as they would be if these began to move now.
std::map<CounterPlace, Rate> rates_from_now(Switch& contents);

} // namespace switchsim
