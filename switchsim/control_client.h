// The other side of the control socket.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace switchsim_program {

/// What a running switch answered.
struct Reply {
    bool good = false;
    std::string text; ///< what was asked for; or one line that says what is wrong
};

/// Sends the words of one command to the switch whose control socket `file` is.
Reply ask(const std::string& file, const std::vector<std::string>& words);

} // namespace switchsim_program
