// Verbs with a command line of their own.
#pragma once

#include "host/cli/streams.h"

#include <span>
#include <string_view>
#include <vector>

namespace cmpihost {

struct Program {
    std::string_view name;
    std::string_view help;                                                         ///< empty: users are not told of it
    int (*run)(const std::vector<std::string>& arguments, const Streams& streams); ///< without the name
    bool has_peers = false; ///< which come and go: SIGPIPE is ignored
};

std::span<const Program> all_programs();

/// Null if there is none of this name.
const Program* find_program(std::string_view name);

} // namespace cmpihost
