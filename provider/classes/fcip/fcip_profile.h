// ZANTO_FCIPProfile: an FCIP profile, a row of the entity table.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Builds a profile's instance; otherwise as link_instance_builder.
CMPIInstance* fcip_profile_build_instance(const char* class_name, const char* name_space,
                                          const FcipEntityEntry* profile, const char** properties);

/// Makes a profile's path. Its InstanceID is cut to 8 characters; the path has no host name.
CMPIObjectPath* fcip_profile_fill_reference(const char* class_name, const char* name_space,
                                            const FcipEntityEntry* profile);

} // namespace fcip
