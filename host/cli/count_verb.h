// The verb that counts instances.
#pragma once

#include "host/cli/verbs.h"

namespace cmpihost {

/// Counts the instance names of the class that the options name, or else of each class that the verb for classes lists.
/// Returns the exit code.
int count_instances(const Options& options, const Streams& streams);

} // namespace cmpihost
