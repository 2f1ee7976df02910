// Requests of a provider back to the broker: CBGetInstance, CBEnumInstances and their kin.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// Has the broker answer such requests with this provider from now on, on all threads; null: they are not supported, as
/// before the first call. The provider must live until it is replaced.
void serve_upcalls(const Provider* provider);

} // namespace cmpihost
