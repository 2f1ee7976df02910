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
    if (!look_up_link(request, tunnel, link) || key_of(link) == link_key{}) // no row of the table has that key
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
    {"ZANTO_SANFCIPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_SANIPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_FCIPTCPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_TCPIPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_SANTCPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_IPEthernetEndpoint", from_path(get_ant_dep_instance)},           // *
    {"ZANTO_EthernetPortProtocolEndpoint", from_path(get_ant_dep_instance)}, // *
    {"ZANTO_FCPortProtocolEndPoint", nothing},                               // *
    {"ZANTO_SwitchHostedFCIPAccessPoint", from_path(get_ant_dep_instance)},  // *
    {"ZANTO_SwitchHostedIPAccessPoint", from_path(get_ant_dep_instance)},    // *
    {"ZANTO_SwitchHostedTCPAccessPoint", from_path(get_ant_dep_instance)},   // *
    {"ZANTO_FCIPPEBasedOn", from_path(get_group_part_instance)},
    {"ZANTO_FCIPElementSettingData", from_path(get_managed_setting_instance)},
    {"ZANTO_TCPElementSettingData", from_path(get_managed_setting_instance)},
    {"ZANTO_IPElementSettingData", from_path(get_managed_setting_instance)},
    {"ZANTO_IPEndPointStatisticalData", from_path(get_managed_stats_instance)}, // *
    {"ZANTO_EthernetPortStatisticalData", from_path(get_managed_stats_instance)},
};

} // namespace

std::span<const class_row<get_route>> get_instance_routes() {
    return routes;
}

} // namespace fcip
