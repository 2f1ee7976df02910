// The verb that serves WBEM clients.
#pragma once

#include "host/cli/streams.h"

#include <vector>

namespace cmpihost {

/// Serves until SIGTERM or SIGINT. Returns the exit code.
int serve(const std::vector<std::string>& arguments, const Streams& streams);

} // namespace cmpihost
