// What the line cards answer to statistics requests.
#pragma once

#include "simulator/switchsim.h"

namespace switchdump {

/// Asks the line card of a port for its Ethernet, IP and TCP statistics, and puts them into `port`. What is not
/// answered with success stays empty.
void read_line_card(std::uint32_t if_index, switchsim::Port& port);

} // namespace switchdump
