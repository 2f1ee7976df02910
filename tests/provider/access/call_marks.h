// Markers in the trace: the platform functions that a request calls, and the release of what they handed out, print one
// each between the provider's own lines (in programs that are linked with --wrap of each).
#pragma once

#include <map>

namespace test {

/// The records that were handed out and not released, with the name that is in their markers.
const std::map<void*, const char*>& held_records();

} // namespace test
