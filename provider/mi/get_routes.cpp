#include "provider/mi/get_routes.h"

#include "provider/access/ports.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/link_classes.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/common/results.h"
#include "provider/common/text.h"

namespace fcip {

namespace {

using namespace classes;
using enum lookup_mode;

void get_tcp_endpoint_statistics(const get_request& request) {
    return_tcp_statistics(request, if_index, "FCIP_GetInstance");
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
    if (!look_up_link(request, tunnel, link) || link.entity_id == 0)
        return;
    if (get_fcip_entity_from_key_value(mts_q, request.key_value, &profile) == 1)
        return_instance(request.result, fcip_profile_build_instance("ZANTO_FCIPProfile", request.name_space, &profile,
                                                                    request.properties));
}

constexpr class_row<get_route> routes[] = {
    {"ZANTO_FCIPProtocolEndPoint", from_link(tunnel, fcip_pe)},
    {"ZANTO_RemoteFCIPPort", from_link(peer_address, fcip_remote_pe)},
    {"ZANTO_IPProtocolEndPoint", from_link(if_index, ip_pe)},
    {"ZANTO_RemoteIPServiceAccessPoint", from_link(peer_address, ip_remote_pe)},
    {"ZANTO_RemoteTCPPort", from_link(peer_if_index, tcp_remote_pe)},
    {"ZANTO_TCPProtocolEndPoint", from_link(if_index, tcp_pe)},
    {"ZANTO_FCIPSettings", from_link(if_index, fcip_settings)},
    {"ZANTO_IPSettings", from_link(if_index, ip_settings)},
    {"ZANTO_TCPSettings", from_link(if_index, tcp_settings)},
    {"ZANTO_IPEndPointStatistics", from_link(if_index, ip_statistics)},
    {"ZANTO_TCPEndPointStatistics", through(get_tcp_endpoint_statistics)},
    {"ZANTO_EthernetPortStatistics", through(get_ethernet_port_statistics)},
    {"ZANTO_FCIPProfile", through(get_profile)},
    {"ZANTO_LANEndPoint", from_link(ethernet_if_index, ip_pe)}, // the IP endpoint's builder
    // The rows marked * cannot be reached: no key is found for their classes.
    {"ZANTO_TCPStatisticalData", from_link(if_index, ip_pe)}, // *
    {"ZANTO_RemoteIPPort", from_link(if_index, ip_pe)},       // *
    {"ZANTO_SANFCIPEndpoint", through(get_dependency)},
    {"ZANTO_SANIPEndpoint", through(get_dependency)},
    {"ZANTO_FCIPTCPEndpoint", through(get_dependency)},
    {"ZANTO_TCPIPEndpoint", through(get_dependency)},
    {"ZANTO_SANTCPEndpoint", through(get_dependency)},
    {"ZANTO_IPEthernetEndpoint", through(get_dependency)},           // *
    {"ZANTO_EthernetPortProtocolEndpoint", through(get_dependency)}, // *
    {"ZANTO_FCPortProtocolEndPoint", nothing},                       // *
    {"ZANTO_SwitchHostedFCIPAccessPoint", through(get_dependency)},  // *
    {"ZANTO_SwitchHostedIPAccessPoint", through(get_dependency)},    // *
    {"ZANTO_SwitchHostedTCPAccessPoint", through(get_dependency)},   // *
    {"ZANTO_FCIPPEBasedOn", through(get_group_part)},
    {"ZANTO_FCIPElementSettingData", through(get_managed_setting)},
    {"ZANTO_TCPElementSettingData", through(get_managed_setting)},
    {"ZANTO_IPElementSettingData", through(get_managed_setting)},
    {"ZANTO_IPEndPointStatisticalData", through(get_managed_stats)}, // *
    {"ZANTO_EthernetPortStatisticalData", through(get_managed_stats)},
};

} // namespace

std::span<const class_row<get_route>> get_instance_routes() {
    return routes;
}

} // namespace fcip
