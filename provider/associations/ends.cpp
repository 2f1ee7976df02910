#include "provider/associations/ends.h"

#include "provider/access/systems.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/lan_endpoint.h"

namespace fcip::ends {

CMPIInstance* build_profile(const char* class_name, const char* name_space, const traversal_source& source,
                            const char** properties) {
    return fcip_profile_build_instance(class_name, name_space, &source.profile, properties);
}

CMPIObjectPath* fill_profile(const char* class_name, const char* name_space, const traversal_source& source) {
    return fcip_profile_fill_reference(class_name, name_space, &source.profile);
}

CMPIInstance* build_port(const char* class_name, const char* name_space, const traversal_source& source,
                         const char** properties) {
    return fcport_build_instance_pm(class_name, name_space, source.port.get(), properties, _broker);
}

CMPIObjectPath* fill_port(const char* class_name, const char* name_space, const traversal_source& source) {
    return fcport_fill_reference_pm(class_name, name_space, source.port.get(), _broker);
}

CMPIObjectPath* fill_port_namespace_first(const char* class_name, const char* name_space,
                                          const traversal_source& source) {
    return fcport_fill_reference_pm(name_space, class_name, source.port.get(), _broker);
}

CMPIInstance* build_port_statistics(const char* class_name, const char* name_space, const traversal_source& source,
                                    const char** properties) {
    return eth_statistics_build_instance(class_name, name_space, source.port.get(), properties);
}

CMPIObjectPath* fill_port_statistics(const char* class_name, const char* name_space, const traversal_source& source) {
    return eth_statistics_fill_reference(class_name, name_space, source.port.get());
}

CMPIInstance* build_lan_endpoint(const char* class_name, const char* name_space, const traversal_source& source,
                                 const char** properties) {
    return lan_endpoint_build_instance(class_name, name_space, source.if_index, properties);
}

CMPIObjectPath* fill_lan_endpoint(const char* class_name, const char* name_space, const traversal_source& source) {
    return lan_endpoint_fill_reference(class_name, name_space, source.if_index);
}

CMPIInstance* build_system(const char* /*class_name*/, const char* name_space, const traversal_source& source,
                           const char** properties) {
    return get_logical_computer_instance(source.link.link_if_index, name_space, properties, _broker);
}

CMPIObjectPath* fill_system(const char* /*class_name*/, const char* name_space, const traversal_source& source) {
    return get_logical_computer_keys(source.link.link_if_index, name_space, _broker);
}

CMPIObjectPath* fill_system_by_name(const char* class_name, const char* name_space, const traversal_source& source) {
    return switch_fill_reference_str(class_name, name_space, vsan_system_name(source.link.link_if_index).data(),
                                     _broker);
}

CMPIObjectPath* fill_physical_system(const char* class_name, const char* name_space,
                                     const traversal_source& /*source*/) {
    return switch_fill_reference(class_name, name_space, _broker);
}

} // namespace fcip::ends
