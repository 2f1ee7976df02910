// The verb that lists classes.
#pragma once

#include "host/cli/verbs.h"

namespace cmpihost {

/// Lists the classes that have instances of their own, without those of the excerpt from the standard's schema
/// (dmtf.mof). Returns the exit code.
int list_classes(const Options& options, const Streams& streams);

} // namespace cmpihost
