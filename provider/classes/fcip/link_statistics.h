// A link's FCIP error counters as properties.
#pragma once

#include "platform/records.h"
#include "provider/common/broker.h"

/// Sets the nine error counters of a link error record on an instance, as uint64. Exported for other components; none
/// of the provider's requests calls it.
/// @return the instance; one that is null or without handle comes back unchanged
extern "C" __attribute__((visibility("default"))) CMPIInstance* populate_fcip_statistics(CMPIInstance* instance,
                                                                                         const FcipLinkErrors* errors);
