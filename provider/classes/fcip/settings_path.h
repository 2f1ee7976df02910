// The object path that the three settings classes share: a tunnel's interface index as the only key.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Makes the path of a settings object, with the switch as host. Null when the link's profile cannot be read: the
/// profile only tells that the tunnel is still configured.
/// @param function,line the calling builder's name and the number in its location trace
CMPIObjectPath* settings_path(const char* function, int line, const char* class_name, const char* name_space,
                              const FcipLinkEntry& link);

} // namespace fcip
