#include "provider/mi/uncalled.h"

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
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/common/endian.h"
#include "provider/common/results.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/mi/get_routes.h"

namespace fcip {

namespace {

void get_tcp_endpoint_statistics(const get_request& request) {
    return_tcp_statistics(request, lookup_mode::if_index_only, "get_fcip_instance");
}

void get_ethernet_port_statistics(const get_request& request) {
    FcipLinkEntry link{};
    if (!look_up_link(request, lookup_mode::ethernet_if_index, link))
        return;
    if (const auto port = fetch_port(platform_exact, link.ethernet_if_index))
        return_instance(request.result, eth_statistics_build_instance(request.class_name, request.name_space,
                                                                      port.get(), request.properties));
}

void get_profile(const get_request& request) {
    FcipLinkEntry link{};
    FcipEntityEntry profile{};
    if (look_up_link(request, lookup_mode::entity, link) && get_profile_from_link_entry(&link, &profile) == 0)
        return_instance(request.result, fcip_profile_build_instance("ZANTO_FCIPProfile", request.name_space, &profile,
                                                                    request.properties));
}

void get_lan_endpoint(const get_request& request) {
    FcipLinkEntry link{};
    if (look_up_link(request, lookup_mode::tunnel, link))
        return_instance(request.result, lan_endpoint_build_instance(request.class_name, request.name_space,
                                                                    link.ethernet_if_index, request.properties));
}

// Other modes and other pairings than those of FCIP_GetInstance, two misspelt names included.
constexpr get_route routes[] = {
    from_link("ZANTO_FCIPProtocolEndPoint", lookup_mode::tunnel, fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint"),
    from_link("ZANTO_TCPProtocolEndPoint", lookup_mode::tunnel, fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint"),
    from_link("ZANTO_RemoteFCIPPort", lookup_mode::peer_address, fcip_remote_pe_build_instance),
    from_link("ZANTO_IPProtocolEndPoint", lookup_mode::if_index, ip_pe_build_instance),
    from_link("ZANTO_FCIPRemoteServiceAccessPoint", lookup_mode::peer_address, ip_remote_pe_build_instance),
    from_link("ZANTO_RemoteTCPort", lookup_mode::peer_address, ip_remote_pe_build_instance),
    from_link("ZANTO_FCIPSettings", lookup_mode::if_index_only, fcip_settings_build_instance),
    from_link("ZANTO_IPSettings", lookup_mode::if_index_only, ip_settings_build_instance),
    from_link("ZANTO_TCPSettings", lookup_mode::if_index_only, tcp_settings_build_instance),
    from_link("ZANTO_IPEndPointStatistics", lookup_mode::if_index_only, ip_statistics_build_instance),
    through("ZANTO_TCPEndPointStatistics", get_tcp_endpoint_statistics),
    through("ZANTO_EthernetPortStatistics", get_ethernet_port_statistics),
    through("ZANTO_FCIPProfile", get_profile),
    through("ZANTO_LANEndPoint", get_lan_endpoint),
    through("ZANTO_SANFCIPEndpoint", get_dependency),
    through("ZANTO_SANIPEndpoint", get_dependency),
    through("ZANTO_FCIPTCPEndpoint", get_dependency),
    through("ZANTO_TCPIPEndpoint", get_dependency),
    through("ZANTO_SANTCPEndpoint", get_dependency),
    through("ZANTO_IPEthernetEndpoint", get_dependency),
    through("ZANTO_EthernetPortProtocolEndpoint", get_dependency),
    nothing_for("ZANTO_FCPortProtocolEndPoint"),
    through("ZANTO_SwitchHostedFCIPAccessPoint", get_dependency),
    through("ZANTO_SwitchHostedIPAccessPoint", get_dependency),
    through("ZANTO_SwitchHostedTCPAccessPoint", get_dependency),
    through("ZANTO_FCIPPEBasedOn", get_group_part),
    through("ZANTO_FCIPElementSettingData", get_managed_setting),
    through("ZANTO_TCPElementSettingData", get_managed_setting),
    through("ZANTO_IPElementSettingData", get_managed_setting),
    through("ZANTO_IPEndPointStatisticalData", get_managed_stats),
    through("ZANTO_EthernetPortStatisticalData", get_managed_stats),
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
