// CMPIEnumeration: what a CIM server hands to a provider as the answer to an enumeration.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// An enumeration of instances or of paths. Belongs to the innermost scope of this thread; null outside of any.
CMPIEnumeration* new_enumeration(const std::vector<Object>& objects, bool instances);

} // namespace cmpihost
