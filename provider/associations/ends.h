// What the rows of the traversals name as the ends of associations.
#pragma once

#include "provider/associations/traversal.h"

namespace fcip {

namespace ends {

template <const link_class& Class>
CMPIInstance* build_link(const char* class_name, const char* name_space, const traversal_source& source,
                         const char** properties) {
    return Class.build(class_name, name_space, &source.link, properties);
}

template <const link_class& Class>
CMPIObjectPath* fill_link(const char* class_name, const char* name_space, const traversal_source& source) {
    return Class.fill(class_name, name_space, &source.link);
}

using instance_of_source = CMPIInstance*(const char* class_name, const char* name_space, const traversal_source& source,
                                         const char** properties);
using path_of_source = CMPIObjectPath*(const char* class_name, const char* name_space, const traversal_source& source);

instance_of_source build_profile, build_port, build_port_statistics, build_lan_endpoint, build_system;
path_of_source fill_profile, fill_port, fill_port_namespace_first, fill_port_statistics, fill_lan_endpoint;
path_of_source fill_system, fill_system_by_name, fill_physical_system;

} // namespace ends

/// The link row, by the builders of a class.
template <const link_class& Class>
inline constexpr end_class of{ends::build_link<Class>, ends::fill_link<Class>};

/// The link's profile, once it was fetched.
inline constexpr end_class of_profile{ends::build_profile, ends::fill_profile};

/// The port that was fetched, as the platform builds it; with the namespace ahead of the class for those that do so.
inline constexpr end_class of_port{ends::build_port, ends::fill_port};
inline constexpr end_class of_port_namespace_first{nullptr, ends::fill_port_namespace_first};

/// The statistics of the port that was fetched.
inline constexpr end_class of_port_statistics{ends::build_port_statistics, ends::fill_port_statistics};

/// The LAN endpoint with the source's interface index.
inline constexpr end_class of_lan_endpoint{ends::build_lan_endpoint, ends::fill_lan_endpoint};

/// The logical computer system of the link's VSAN. The class text is the platform helper's own.
inline constexpr end_class of_system{ends::build_system, ends::fill_system};

/// The same system by the text that the VSAN's name query leaves, whatever that is.
inline constexpr end_class of_system_by_name{nullptr, ends::fill_system_by_name};

/// The switch itself, whatever the link.
inline constexpr end_class of_physical_system{nullptr, ends::fill_physical_system};

} // namespace fcip
