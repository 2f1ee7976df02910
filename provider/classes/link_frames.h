// The frames of the builders that need a link and its profile, and nothing that could fail besides.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// What differs from builder to builder.
struct link_instance_frame {
    const char* function; ///< the builder's name in its traces
    void (*set_properties)(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile);
    bool traces_missing_path = false; ///< whether "Exiting" is printed when the path cannot be made
    int last_location = 0;            ///< line of the location trace ahead of "Exiting"; 0 = none
};

/// Reads the link's profile, makes the instance, sets and filters its properties, releases the profile; as
/// link_instance_builder. Null when the profile cannot be read.
CMPIInstance* build_link_instance(const link_instance_frame& frame, const char* class_name, const char* name_space,
                                  const FcipLinkEntry& link, const char** properties);

/// Adds a path's keys, and its host where it has one.
using key_adder = void(CMPIObjectPath* path, const FcipLinkEntry& link, const FcipEntityEntry& profile);

/// Reads the link's profile, makes the path and adds its keys; as link_path_builder. Null when the profile cannot be
/// read. Prints nothing.
CMPIObjectPath* build_link_path(key_adder* add_keys, const char* class_name, const char* name_space,
                                const FcipLinkEntry& link);

} // namespace fcip
