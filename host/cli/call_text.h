// Calls of a provider, in messages.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// "enumerateInstances": the slot of the MI's table.
std::string operation_name(Request::Operation operation);

/// "enumerateInstances of root/cimv2:Class"
std::string call_text(const Request& request);

} // namespace cmpihost
