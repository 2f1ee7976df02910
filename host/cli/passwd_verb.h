// The verb that writes the users file.
#pragma once

#include "host/cli/streams.h"

#include <vector>

namespace cmpihost {

/// Sets or deletes a user. The password comes from the terminal, or else as a line from standard input. Returns the
/// exit code.
int set_password(const std::vector<std::string>& arguments, const Streams& streams);

} // namespace cmpihost
