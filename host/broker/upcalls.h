// Requests of a provider back to the broker: CBGetInstance, CBEnumInstances and their kin.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// Answers such a request, on the thread of the provider that asks.
using Upcalled = std::function<Answer(const Request& request)>;

/// Has them answered so from now on, on all threads. Before, they are not supported.
/// @param answer must live until end_upcalls()
void serve_upcalls(const Upcalled* answer);

/// They are not supported any more, unless somebody else answers them by now. Waits for those that other threads have
/// under way; none may be under way on this one.
void end_upcalls(const Upcalled* answer);

} // namespace cmpihost
