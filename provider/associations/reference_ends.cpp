#include "provider/associations/reference_ends.h"

#include "provider/access/systems.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"

namespace fcip::ends {

CMPIObjectPath* fcip_pe(const char* class_name, const char* name_space, const reference_source& source) {
    return fcip_pe_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* ip_pe(const char* class_name, const char* name_space, const reference_source& source) {
    return ip_pe_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* tcp_pe(const char* class_name, const char* name_space, const reference_source& source) {
    return tcp_pe_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* fcip_remote_pe(const char* class_name, const char* name_space, const reference_source& source) {
    return fcip_remote_pe_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* ip_remote_pe(const char* class_name, const char* name_space, const reference_source& source) {
    return ip_remote_pe_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* tcp_remote_pe(const char* class_name, const char* name_space, const reference_source& source) {
    return tcp_remote_pe_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* fcip_settings(const char* class_name, const char* name_space, const reference_source& source) {
    return fcip_settings_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* ip_settings(const char* class_name, const char* name_space, const reference_source& source) {
    return ip_settings_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* tcp_settings(const char* class_name, const char* name_space, const reference_source& source) {
    return tcp_settings_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* statistics(const char* class_name, const char* name_space, const reference_source& source) {
    return stat_fill_reference(class_name, name_space, &source.link);
}

CMPIObjectPath* logical_system(const char* /*class_name*/, const char* name_space, const reference_source& source) {
    return get_logical_computer_keys(source.link.link_if_index, name_space, _broker);
}

CMPIObjectPath* profile(const char* class_name, const char* name_space, const reference_source& source) {
    return fcip_profile_fill_reference(class_name, name_space, &source.profile);
}

CMPIObjectPath* port(const char* class_name, const char* name_space, const reference_source& source) {
    return fcport_fill_reference_pm(class_name, name_space, source.port.get(), _broker);
}

CMPIObjectPath* port_namespace_first(const char* class_name, const char* name_space, const reference_source& source) {
    return fcport_fill_reference_pm(name_space, class_name, source.port.get(), _broker);
}

CMPIObjectPath* ethernet_statistics(const char* class_name, const char* name_space, const reference_source& source) {
    return eth_statistics_fill_reference(class_name, name_space, source.port.get());
}

CMPIObjectPath* lan_endpoint(const char* class_name, const char* name_space, const reference_source& source) {
    return lan_endpoint_fill_reference(class_name, name_space, source.if_index);
}

} // namespace fcip::ends
