// ZANTO_LANEndPoint: an Ethernet port that can carry FCIP. Hosted by the physical switch.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Builds the instance of the port with the interface index; otherwise as link_instance_builder.
/// @return null when the port cannot be read
CMPIInstance* lan_endpoint_build_instance(const char* class_name, const char* name_space, std::uint32_t if_index,
                                          const char** properties);

/// Makes the path of the port with the interface index. @return null when the port cannot be read
CMPIObjectPath* lan_endpoint_fill_reference(const char* class_name, const char* name_space, std::uint32_t if_index);

} // namespace fcip
