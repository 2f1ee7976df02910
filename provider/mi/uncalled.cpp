#include "provider/mi/uncalled.h"

#include "provider/access/ports.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/link_classes.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/common/endian.h"
#include "provider/common/results.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/mi/gets.h"

namespace fcip {

namespace {

using namespace classes;
using enum lookup_mode;

void get_tcp_endpoint_statistics(const get_request& request) {
    return_tcp_statistics(request, if_index_only, "get_fcip_instance");
}

void get_ethernet_port_statistics(const get_request& request) {
    FcipLinkEntry link{};
    if (!look_up_link(request, ethernet_if_index, link))
        return;
    if (const auto port = fetch_port(platform_exact, link.ethernet_if_index))
        return_instance(request.result, eth_statistics_build_instance(request.class_name, request.name_space,
                                                                      port.get(), request.properties));
}

void get_profile(const get_request& request) {
    FcipLinkEntry link{};
    FcipEntityEntry profile{};
    if (look_up_link(request, entity, link) && get_profile_from_link_entry(&link, &profile) == 0)
        return_instance(request.result, fcip_profile_build_instance("ZANTO_FCIPProfile", request.name_space, &profile,
                                                                    request.properties));
}

void get_lan_endpoint(const get_request& request) {
    FcipLinkEntry link{};
    if (look_up_link(request, tunnel, link))
        return_instance(request.result, lan_endpoint_build_instance(request.class_name, request.name_space,
                                                                    link.ethernet_if_index, request.properties));
}

// Other modes and other pairings than those of FCIP_GetInstance, two misspelt names included.
constexpr class_row<get_route> routes[] = {
    {"ZANTO_FCIPProtocolEndPoint", from_link(tunnel, fcip_pe, "ZANTO_FCIPProtocolEndPoint")},
    {"ZANTO_TCPProtocolEndPoint", from_link(tunnel, fcip_pe, "ZANTO_FCIPProtocolEndPoint")},
    {"ZANTO_RemoteFCIPPort", from_link(peer_address, fcip_remote_pe)},
    {"ZANTO_IPProtocolEndPoint", from_link(if_index, ip_pe)},
    {"ZANTO_FCIPRemoteServiceAccessPoint", from_link(peer_address, ip_remote_pe)},
    {"ZANTO_RemoteTCPort", from_link(peer_address, ip_remote_pe)},
    {"ZANTO_FCIPSettings", from_link(if_index_only, fcip_settings)},
    {"ZANTO_IPSettings", from_link(if_index_only, ip_settings)},
    {"ZANTO_TCPSettings", from_link(if_index_only, tcp_settings)},
    {"ZANTO_IPEndPointStatistics", from_link(if_index_only, ip_statistics)},
    {"ZANTO_TCPEndPointStatistics", through(get_tcp_endpoint_statistics)},
    {"ZANTO_EthernetPortStatistics", through(get_ethernet_port_statistics)},
    {"ZANTO_FCIPProfile", through(get_profile)},
    {"ZANTO_LANEndPoint", through(get_lan_endpoint)},
    {"ZANTO_SANFCIPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_SANIPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_FCIPTCPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_TCPIPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_SANTCPEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_IPEthernetEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_EthernetPortProtocolEndpoint", from_path(get_ant_dep_instance)},
    {"ZANTO_FCPortProtocolEndPoint", nothing},
    {"ZANTO_SwitchHostedFCIPAccessPoint", from_path(get_ant_dep_instance)},
    {"ZANTO_SwitchHostedIPAccessPoint", from_path(get_ant_dep_instance)},
    {"ZANTO_SwitchHostedTCPAccessPoint", from_path(get_ant_dep_instance)},
    {"ZANTO_FCIPPEBasedOn", from_path(get_group_part_instance)},
    {"ZANTO_FCIPElementSettingData", from_path(get_managed_setting_instance)},
    {"ZANTO_TCPElementSettingData", from_path(get_managed_setting_instance)},
    {"ZANTO_IPElementSettingData", from_path(get_managed_setting_instance)},
    {"ZANTO_IPEndPointStatisticalData", from_path(get_managed_stats_instance)},
    {"ZANTO_EthernetPortStatisticalData", from_path(get_managed_stats_instance)},
};

} // namespace

void print_errors(const std::uint8_t* record) {
    for (std::size_t word = 0; word < 4; ++word)
        trace(" ", as_signed(read_host32(record + 4 * word)), " \n");
    for (std::size_t counter = 0; counter < 8; ++counter)
        trace(" ", as_signed(static_cast<std::uint32_t>(read_be64(record + 16 + 8 * counter))), " \n");
}

} // namespace fcip

int get_fcip_instance(const char* class_name, const char* key_value, const CMPIResult* result, const char** properties,
                      const char* name_space, const CMPIObjectPath* path) {
    fcip::trace_entering(__func__);
    fcip::dispatch_get(fcip::routes, {class_name, key_value, name_space, path, result, properties});
    fcip::trace_exiting(__func__);
    return -1; // always
}
