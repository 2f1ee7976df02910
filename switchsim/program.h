// switchsim: the simulated switch for people.
#pragma once

#include <string>
#include <vector>

namespace switchsim_program {

/// Runs the program. Errors go to standard error, one line each.
/// @param arguments those behind the program's name
/// @return 0; 1 when what was asked for failed; 2 on wrong usage
int run(const std::vector<std::string>& arguments);

} // namespace switchsim_program
