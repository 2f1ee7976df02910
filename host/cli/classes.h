// The verb that lists classes.
#pragma once

#include "host/cli/verbs.h"
#include "host/mof/schema.h"

namespace cmpihost {

/// Whether a class has instances of its own, and is none of the excerpt from the standard's schema (dmtf.mof).
bool is_listed(const mof::ClassDeclaration& declaration);

/// Lists the classes that are to be listed. Returns the exit code.
int list_classes(const Options& options, const Streams& streams);

} // namespace cmpihost
