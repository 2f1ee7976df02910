#include "provider/mi/instance_operations.h"

#include "provider/access/lock.h"
#include "provider/access/ports.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/common/results.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"
#include "provider/mi/enumeration_routes.h"
#include "provider/mi/key_scan.h"

namespace fcip {

namespace {

void get_tcp_endpoint_statistics(const get_request& request) {
    return_tcp_statistics(request, lookup_mode::if_index, "FCIP_GetInstance");
}

void get_ethernet_port_statistics(const get_request& request) {
    const auto if_index = static_cast<std::uint32_t>(parse_decimal(request.key_value)); // no digits: port 0
    if (const auto port = fetch_port(platform_exact, if_index))
        return_instance(request.result, eth_statistics_build_instance(request.class_name, request.name_space,
                                                                      port.get(), request.properties));
}

/// A profile is answered only when a tunnel has the profile's number as well.
void get_profile(const get_request& request) {
    FcipLinkEntry link{};
    FcipEntityEntry profile{};
    if (!look_up_link(request, lookup_mode::tunnel, link) || link.entity_id == 0)
        return;
    if (get_fcip_entity_from_key_value(mts_q, request.key_value, &profile) == 1)
        return_instance(request.result, fcip_profile_build_instance("ZANTO_FCIPProfile", request.name_space, &profile,
                                                                    request.properties));
}

constexpr get_route routes[] = {
    from_link("ZANTO_FCIPProtocolEndPoint", lookup_mode::tunnel, fcip_pe_build_instance),
    from_link("ZANTO_RemoteFCIPPort", lookup_mode::peer_address, fcip_remote_pe_build_instance),
    from_link("ZANTO_IPProtocolEndPoint", lookup_mode::if_index, ip_pe_build_instance),
    from_link("ZANTO_RemoteIPServiceAccessPoint", lookup_mode::peer_address, ip_remote_pe_build_instance),
    from_link("ZANTO_RemoteTCPPort", lookup_mode::peer_if_index, tcp_remote_pe_build_instance),
    from_link("ZANTO_TCPProtocolEndPoint", lookup_mode::if_index, tcp_pe_build_instance),
    from_link("ZANTO_FCIPSettings", lookup_mode::if_index, fcip_settings_build_instance),
    from_link("ZANTO_IPSettings", lookup_mode::if_index, ip_settings_build_instance),
    from_link("ZANTO_TCPSettings", lookup_mode::if_index, tcp_settings_build_instance),
    from_link("ZANTO_IPEndPointStatistics", lookup_mode::if_index, ip_statistics_build_instance),
    through("ZANTO_TCPEndPointStatistics", get_tcp_endpoint_statistics),
    through("ZANTO_EthernetPortStatistics", get_ethernet_port_statistics),
    through("ZANTO_FCIPProfile", get_profile),
    from_link("ZANTO_LANEndPoint", lookup_mode::ethernet_if_index, ip_pe_build_instance), // the IP endpoint's builder
    // The rows marked * cannot be reached: no key is found for their classes.
    from_link("ZANTO_TCPStatisticalData", lookup_mode::if_index, ip_pe_build_instance), // *
    from_link("ZANTO_RemoteIPPort", lookup_mode::if_index, ip_pe_build_instance),       // *
    through("ZANTO_SANFCIPEndpoint", get_dependency),
    through("ZANTO_SANIPEndpoint", get_dependency),
    through("ZANTO_FCIPTCPEndpoint", get_dependency),
    through("ZANTO_TCPIPEndpoint", get_dependency),
    through("ZANTO_SANTCPEndpoint", get_dependency),
    through("ZANTO_IPEthernetEndpoint", get_dependency),           // *
    through("ZANTO_EthernetPortProtocolEndpoint", get_dependency), // *
    nothing_for("ZANTO_FCPortProtocolEndPoint"),                   // *
    through("ZANTO_SwitchHostedFCIPAccessPoint", get_dependency),  // *
    through("ZANTO_SwitchHostedIPAccessPoint", get_dependency),    // *
    through("ZANTO_SwitchHostedTCPAccessPoint", get_dependency),   // *
    through("ZANTO_FCIPPEBasedOn", get_group_part),
    through("ZANTO_FCIPElementSettingData", get_managed_setting),
    through("ZANTO_TCPElementSettingData", get_managed_setting),
    through("ZANTO_IPElementSettingData", get_managed_setting),
    through("ZANTO_IPEndPointStatisticalData", get_managed_stats), // *
    through("ZANTO_EthernetPortStatisticalData", get_managed_stats),
};

const char* class_of(const CMPIObjectPath* path) {
    return chars_of(CMGetClassName(path, nullptr));
}

const char* name_space_of(const CMPIObjectPath* path) {
    return chars_of(CMGetNameSpace(path, nullptr));
}

} // namespace

std::span<const get_route> get_instance_routes() {
    return routes;
}

CMPIStatus FCIP_EnumInstanceNames(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                                  const CMPIObjectPath* path) {
    const char* class_name = class_of(path);
    const char* name_space = name_space_of(path);
    const platform_lock lock;
    if (const auto enumerate = path_enumerator_of(class_name))
        enumerate(class_name, result, name_space);
    return served();
}

CMPIStatus FCIP_EnumInstances(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                              const CMPIObjectPath* path, const char** properties) {
    const char* class_name = class_of(path);
    const char* name_space = name_space_of(path);
    const platform_lock lock;
    if (const auto enumerate = instance_enumerator_of(class_name))
        enumerate(class_name, result, properties, name_space);
    return served();
}

CMPIStatus FCIP_GetInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                            const CMPIObjectPath* path, const char** properties) {
    const char* class_name = class_of(path);
    const char* name_space = name_space_of(path);
    trace_entering(__func__);
    const found_key key = scan_keys(class_name, path, "\n");
    if (!key.found) {
        trace("getInstance can't find key\n");
        return key_not_found();
    }
    {
        const platform_lock lock;
        dispatch_get(routes, {class_name, key.value.data(), name_space, path, result, properties});
    }
    trace_exiting(__func__);
    return served();
}

} // namespace fcip
