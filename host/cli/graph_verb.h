// The verb that draws a switch.
#pragma once

#include "host/cli/verbs.h"

namespace cmpihost {

/// Walks the associations through the provider and prints what was found. Returns the exit code.
int show_graph(const Options& options, const Streams& streams);

} // namespace cmpihost
