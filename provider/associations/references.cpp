// References and ReferenceNames: the table of every source class, and its members.
#include "provider/associations/references.h"

#include "provider/access/systems.h"
#include "provider/associations/reference_table.h"
#include "provider/classes/link_classes.h"

namespace fcip {

namespace {

using namespace classes;
using enum key_use;
using enum platform_record;

// The ends that the tables name often, in the spelling of their rows.
constexpr association_end fcip_endpoint{"ZANTO_FCIPProtocolEndpoint", of<fcip_pe>};
constexpr association_end fcip_end_point{"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>};
constexpr association_end ip_endpoint{"ZANTO_IPProtocolEndpoint", of<ip_pe>};
constexpr association_end ip_end_point{"ZANTO_IPProtocolEndPoint", of<ip_pe>};
constexpr association_end tcp_endpoint{"ZANTO_TCPProtocolEndpoint", of<tcp_pe>};
constexpr association_end tcp_end_point{"ZANTO_TCPProtocolEndPoint", of<tcp_pe>};
constexpr association_end ethernet_port{"ZANTO_EthernetPort", of_port};
constexpr association_end port_statistics{"ZANTO_EthernetPortStatistics", of_port_statistics};
constexpr association_end lan_endpoint{"ZANTO_LANEndpoint", of_lan_endpoint};
constexpr association_end logical_system{logical_computer_system, of_system};

// clang-format off
// A row is two lines: location, association class, key, record fetched, shape,
//     name of the association, first end, second end

constexpr reference_row fcip_pe_rows[] = {
    {1, "ZANTO_FCIPElementSettingData", tunnel, none, managed_setting,
        "ZANTO_FCIPElementSettingData", fcip_endpoint, {"ZANTO_FCIPSettings", of<fcip_settings>}},
    {2, "ZANTO_FCIPTCPEndpoint", tunnel, none, realize,
        "ZANTO_FCIPTCPEndpoint", fcip_endpoint, tcp_endpoint},
    {3, "ZANTO_SANFCIPEndpoint", tunnel, none, realize,
        "ZANTO_SANFCIPEndpoint", fcip_endpoint, {"ZANTO_RemoteFCIPPort", of<fcip_remote_pe>}},
    // The port's builder is given the namespace ahead of the class, here alone.
    {4, "ZANTO_FCPortProtocolEndPoint", tunnel, fc_port, realize,
        "ZANTO_FCPortProtocolEndPoint", {"ZANTO_FCPort", of_port_namespace_first}, fcip_endpoint},
    {5, "ZANTO_FCIPPEBasedOn", tunnel, profile, group_part,
        "ZANTO_FCIPPEBasedOn", {"ZANTO_FCIPProfile", of_profile}, fcip_endpoint},
    // The system first; the IP and TCP endpoints have it second.
    {6, "ZANTO_SwitchHostedFCIPAccessPoint", tunnel, none, realize,
        "ZANTO_SwitchHostedFCIPAccessPoint", logical_system, fcip_endpoint},
};
constexpr reference_table from_fcip_pe{fcip_pe_rows, class_line::starred, 0};

constexpr reference_row ip_pe_rows[] = {
    {1, "ZANTO_IPElementSettingData", if_index, none, managed_setting,
        "ZANTO_IPElementSettingData", ip_endpoint, {"ZANTO_IPSettings", of<ip_settings>}},
    {2, "ZANTO_IPEndPointStatisticalData", if_index, none, managed_stats,
        as_passed, {"ZANTO_IPEndpointStatistics", of<ip_statistics>}, ip_endpoint}, // the statistics put it first
    {3, "ZANTO_TCPIPEndpoint", if_index, none, realize,
        as_passed, ip_endpoint, tcp_endpoint},
    {4, "ZANTO_IPEthernetEndpoint", if_index, port_of_link, realize,
        as_passed, ethernet_port, ip_endpoint}, // a LAN endpoint ties other ends
    {5, "ZANTO_SwitchHostedIPAccessPoint", if_index, none, realize,
        as_passed, ip_endpoint, logical_system},
    {6, "ZANTO_SANIpEndPoint", if_index, none, realize,
        as_passed, ip_endpoint, {"ZANTO_RemoteIPServiceAccessPoint", of<ip_remote_pe>}},
};
constexpr reference_table from_ip_pe{ip_pe_rows, class_line::plain};

constexpr reference_row tcp_pe_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index, none, managed_stats,
        "ZANTO_TCPEndPointStatisticalData", tcp_end_point, {"ZANTO_TCPEndPointStatistics", of<tcp_statistics>}},
    // Answers the misspelt name only; clients depend on it. The association bears the right one.
    {2, "ZANTO_FCIPTCPEnpoint", if_index, none, realize,
        "ZANTO_FCIPTCPEndpoint", fcip_endpoint, tcp_end_point},
    {3, "ZANTO_TCPIPEndpoint", if_index, none, realize,
        as_passed, ip_endpoint, tcp_end_point},
    {4, "ZANTO_SwitchHostedTCPAccessPoint", if_index, none, realize,
        as_passed, tcp_endpoint, logical_system},
    {5, "ZANTO_SANTCPEndpoint", if_index, none, realize,
        as_passed, tcp_endpoint, {"ZANTO_RemoteTCPPort", of<tcp_remote_pe>}},
    // All of the key, unlike the rows above, which read it up to its "_".
    {6, "ZANTO_TCPElementSettingData", if_index_only, none, managed_setting,
        as_passed, tcp_endpoint, {"ZANTO_TCPSettings", of<tcp_settings>}},
};
constexpr reference_table from_tcp_pe{tcp_pe_rows, class_line::plain};

constexpr reference_row lan_endpoint_rows[] = {
    {1, "ZANTO_IPEthernetEndpoint", ethernet_if_index, none, realize,
        as_passed, ip_end_point, lan_endpoint},
    {2, "ZANTO_EthernetPortProtocolEndpoint", ethernet_token, port_by_key, realize,
        as_passed, ethernet_port, lan_endpoint},
    // Takes the number that the LAN endpoint's key begins with for a link's index.
    {3, "CIM_HostedAccessPoint", if_index_only, none, realize,
        "CIM_HostedAccessPoint", fcip_end_point, lan_endpoint},
};
constexpr reference_table from_lan_endpoint{lan_endpoint_rows, class_line::plain};

// The port's key is read as a link's index: the port of the answer is the one that carries that link.
constexpr reference_row eth_port_rows[] = {
    // Bears another association's name; clients depend on it.
    {1, "ZANTO_EthernetPortProtocolEndpoint", if_index, port_of_link, realize,
        "ZANTO_IPElementSettingData", ethernet_port, lan_endpoint},
    {2, "ZANTO_EthernetPortStatisticalData", if_index, port_of_link, managed_stats,
        "ZANTO_EthernetPortStatisticalData", ethernet_port, port_statistics},
};
constexpr reference_table from_eth_port{eth_port_rows, class_line::plain};

constexpr reference_row fcip_remote_pe_rows[] = {
    {1, "ZANTO_SANFCIPEndpoint", peer_address, none, realize,
        as_passed, fcip_endpoint, {"ZANTO_RemoteFCIPPort", of<fcip_remote_pe>}},
};

constexpr reference_row ip_remote_pe_rows[] = {
    {1, "ZANTO_SANIPEndPoint", peer_address, none, realize,
        as_passed, ip_endpoint, {"ZANTO_RemoteIPServiceAccessPoint", of<ip_remote_pe>}},
};

constexpr reference_row tcp_remote_pe_rows[] = {
    {1, "ZANTO_SANTCPEndpoint", if_index, none, realize,
        as_passed, tcp_endpoint, {"ZANTO_RemoteTCPPort", of<tcp_remote_pe>}}, // no link: keys begin with 0
};

constexpr reference_row ip_stat_rows[] = {
    {1, "ZANTO_IPEndpointStatisticalData", if_index_only, none, managed_stats,
        "ZANTO_IPEndpointStatisticalData", ip_end_point, {"ZANTO_IPEndpointStatistics", of<ip_statistics>}},
};

constexpr reference_row fcip_settings_rows[] = {
    {1, "ZANTO_FCIPElementSettingData", if_index_only, none, managed_setting,
        "ZANTO_FCIPElementSettingData", fcip_end_point, {"ZANTO_FCIPSettings", of<fcip_settings>}},
};

constexpr reference_row eth_stat_rows[] = {
    {1, "ZANTO_EthernetPortStatisticalData", number, port_by_key, managed_stats,
        "ZANTO_EthernetPortStatisticalData", ethernet_port, port_statistics},
};

constexpr reference_row ip_settings_rows[] = {
    {1, "ZANTO_IPElementSettingData", if_index_only, none, managed_setting,
        "ZANTO_IPElementSettingData", ip_end_point, {"ZANTO_IPSettings", of<ip_settings>}},
};

constexpr reference_row tcp_settings_rows[] = {
    {1, "ZANTO_TCPElementSettingData", if_index_only, none, managed_setting,
        as_passed, tcp_end_point, {"ZANTO_TCPSettings", of<tcp_settings>}},
};

constexpr reference_row tcp_stat_rows[] = {
    {1, "ZANTO_TCPEndpointStatisticalData", if_index_only, none, managed_stats,
        "ZANTO_TCPEndpointStatisticalData", tcp_endpoint, {"ZANTO_TCPEndpointStatistics", of<tcp_statistics>}},
};

constexpr reference_row profile_rows[] = {
    {1, "ZANTO_FCIPPEBasedOn", entity, profile, group_part,
        "ZANTO_FCIPPEBasedOn", {"ZANTO_FCIPProfile", of_profile}, fcip_endpoint},
};

// clang-format on

} // namespace

int get_fcip_pe_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                           const char* ns) {
    return return_references(from_fcip_pe, {__func__, wanted::instances, key, asked, result, ns});
}

int get_fcip_pe_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                const char* ns) {
    return return_references(from_fcip_pe, {__func__, wanted::paths, key, asked, result, ns});
}

int get_fcip_remote_pe_references(const char* key, const char* asked, const char*, const char**,
                                  const CMPIResult* result, const char* ns) {
    return return_references({fcip_remote_pe_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_fcip_remote_pe_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                       const char* ns) {
    return return_references({fcip_remote_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_pe_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                         const char* ns) {
    return return_references(from_ip_pe, {__func__, wanted::instances, key, asked, result, ns});
}

int get_ip_pe_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                              const char* ns) {
    return return_references(from_ip_pe, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_remote_pe_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                                const char* ns) {
    return return_references({ip_remote_pe_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_ip_remote_pe_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                     const char* ns) {
    return return_references({ip_remote_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_pe_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                          const char* ns) {
    return return_references(from_tcp_pe, {__func__, wanted::instances, key, asked, result, ns});
}

int get_tcp_pe_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                               const char* ns) {
    return return_references(from_tcp_pe, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_remote_pe_references(const char* key, const char* asked, const char*, const char**,
                                 const CMPIResult* result, const char* ns) {
    return return_references({tcp_remote_pe_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_tcp_remote_pe_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                      const char* ns) {
    return return_references({tcp_remote_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_fcip_settings_references(const char* key, const char* asked, const char*, const char**,
                                 const CMPIResult* result, const char* ns) {
    return return_references({fcip_settings_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_fcip_settings_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                      const char* ns) {
    return return_references({fcip_settings_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_settings_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                               const char* ns) {
    return return_references({ip_settings_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_ip_settings_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                    const char* ns) {
    return return_references({ip_settings_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_settings_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                                const char* ns) {
    return return_references({tcp_settings_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_tcp_settings_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                     const char* ns) {
    return return_references({tcp_settings_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_profile_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                           const char* ns) {
    return return_references({profile_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_profile_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                const char* ns) {
    return return_references({profile_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_lan_endpoint_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                                const char* ns) {
    return return_references(from_lan_endpoint, {__func__, wanted::instances, key, asked, result, ns});
}

int get_lan_endpoint_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                     const char* ns) {
    return return_references(from_lan_endpoint, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_stat_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                           const char* ns) {
    return return_references({ip_stat_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_ip_stat_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                const char* ns) {
    return return_references({ip_stat_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_stat_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                            const char* ns) {
    return return_references({tcp_stat_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_tcp_stat_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                 const char* ns) {
    return return_references({tcp_stat_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_eth_port_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                            const char* ns) {
    return return_references(from_eth_port, {__func__, wanted::instances, key, asked, result, ns});
}

int get_eth_port_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                 const char* ns) {
    return return_references(from_eth_port, {__func__, wanted::paths, key, asked, result, ns});
}

int get_eth_stat_references(const char* key, const char* asked, const char*, const char**, const CMPIResult* result,
                            const char* ns) {
    return return_references({eth_stat_rows}, {__func__, wanted::instances, key, asked, result, ns});
}

int get_eth_stat_reference_names(const char* key, const char* asked, const char*, const CMPIResult* result,
                                 const char* ns) {
    return return_references({eth_stat_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

} // namespace fcip
