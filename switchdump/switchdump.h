// switchdump: the profiles and links of a switch, shown the way its own command line shows them; or the whole switch,
// as a scenario for the simulator.
#pragma once

namespace switchdump {

/// Runs the program. Prints the dump on standard output and errors, one line each, on standard error.
/// @return 0; 1 when something of a dump could not be read, or the output not be written; 2 on wrong usage. What a
/// captured switch does not answer is part of the scenario, and no error.
int run(int argc, const char* const* argv);

} // namespace switchdump
