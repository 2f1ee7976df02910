// The process that runs the providers for `serve`.
#pragma once

#include "host/cli/streams.h"

#include <vector>

namespace cmpihost {

/// Answers what comes over the socket on descriptor 3. @param arguments those of serve
int work(const std::vector<std::string>& arguments, const Streams& streams);

} // namespace cmpihost
