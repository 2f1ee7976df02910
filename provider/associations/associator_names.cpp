// AssociatorNames: the table of every source class, and its member. Most rows are those of Associators; not all.
#include "provider/associations/associators.h"

#include "provider/access/systems.h"
#include "provider/associations/associator_table.h"
#include "provider/classes/link_classes.h"

namespace fcip {

namespace {

using namespace classes;
using enum key_use;
using enum platform_record;

// clang-format off
// A row is a line: location, association class, key, record fetched, far end

constexpr associator_row fcip_pe_rows[] = {
    {1, "ZANTO_FCIPElementSettingData",      tunnel, none, {"ZANTO_FCIPSettings", of<fcip_settings>}},
    {2, "ZANTO_FCIPTCPEndpoint",             tunnel, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
    {3, "ZANTO_SANFCIPEndpoint",             tunnel, none, {"ZANTO_RemoteFCIPPort", of<fcip_remote_pe>}},
    {4, "ZANTO_FCPortProtocolEndPoint",      tunnel, fc_port, {"ZANTO_FCPort", of_port}},
    {5, "ZANTO_FCIPPEBasedOn",               tunnel, profile, {"ZANTO_FCIPProfile", of_profile}},
    {6, "ZANTO_SwitchHostedFCIPAccessPoint", tunnel, none, {logical_computer_system, of_system}},
};

// Two rows answer the settings, the second with the system. Statistics are named only if the link's error counters can
// be read; the host is called the FCIP endpoint; whatever has no row is answered with the system.
constexpr associator_row ip_pe_rows[] = {
    {1, "ZANTO_IPElementSettingData",      if_index, none, {"ZANTO_IPSettings", of<ip_settings>}},
    {0, "ZANTO_IPElementSettingData",      if_index, none, {logical_computer_system, of_system}},
    {2, "ZANTO_IPEndPointStatisticalData", if_index, errors, {"ZANTO_IPEndPointStatistics", of<ip_statistics>}},
    {3, "ZANTO_TCPIPEndpoint",             if_index, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
    {4, "ZANTO_IPEthernetEndpoint",        if_index, port_or_null, {"ZANTO_EthernetPort", of_port}},
    {5, "ZANTO_SwitchHostedIPAccessPoint", if_index, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
    {6, "ZANTO_SANIPEndPoint",             if_index, none, {"ZANTO_RemoteIPServiceAccessPoint", of<ip_remote_pe>}},
};
constexpr associator_row ip_pe_other_names{7, nullptr, if_index, none, {logical_computer_system, of_system}};
constexpr associator_table from_ip_pe{ip_pe_rows, &ip_pe_other_names, true};

// The endpoint's own statistics are named, another class than the instance has, and only if the link's error counters
// can be read; the host is the physical switch. The settings are not served.
constexpr associator_row tcp_pe_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index, errors, {"ZANTO_TCPEndPointStatistics", of<tcp_statistics>}},
    {2, "ZANTO_FCIPTCPEndpoint",            if_index_only, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
    {3, "ZANTO_TCPIPEndpoint",              if_index_only, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
    {4, "ZANTO_SwitchHostedTCPAccessPoint", if_index_only, none, {physical_computer_system, of_physical_system}},
    {5, "ZANTO_SANTCPEndpoint",             if_index_only, none, {"ZANTO_RemoteTCPPort", of<tcp_remote_pe>}},
};

constexpr associator_row fcip_remote_pe_rows[] = {
    {1, "ZANTO_SANFCIPEndpoint", peer_address, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
};

constexpr associator_row ip_remote_pe_rows[] = {
    {1, "ZANTO_SANIPEndpoint", peer_address, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
};

constexpr associator_row tcp_remote_pe_rows[] = {
    {1, "ZANTO_SANTCPEndpoint", peer_if_index, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
};

constexpr associator_row ip_stat_rows[] = {
    {1, "ZANTO_IPEndPointStatisticalData", if_index_only, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
};

constexpr associator_row tcp_stat_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index_only, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
};

constexpr associator_row ip_setting_rows[] = {
    {1, "ZANTO_IPElementSettingData", if_index_only, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
};

constexpr associator_row tcp_setting_rows[] = {
    {1, "ZANTO_TCPElementSettingData", if_index_only, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
};

constexpr associator_row fcip_settings_rows[] = {
    {1, "ZANTO_FCIPElementSettingData", if_index_only, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
};

constexpr associator_row profile_rows[] = {
    {1, "ZANTO_FCIPPEBasedOn", entity, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
};

// Nothing calls the member, and its path is made and never returned.
constexpr associator_row tcp_statical_data_rows[] = {
    {1, "ZANTO_TCPEndPointStatistics", entity, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}, make_path_only},
};

constexpr associator_row lan_endpoint_rows[] = {
    {1, "ZANTO_IPEthernetEndpoint",           ethernet_if_index, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
    {2, "ZANTO_EthernetPortProtocolEndpoint", ethernet_token, none, {"ZANTO_EthernetPort", {}}, return_walked_port},
    // Takes the number that the LAN endpoint's key begins with for a link's index.
    {3, "CIM_HostedAccessPoint",              if_index_only, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
};

// The statistics are answered to their own class instead of the association's.
constexpr associator_row eth_port_rows[] = {
    {1, "ZANTO_EthernetPortProtocolEndpoint", number, none, {"ZANTO_LANEndPoint", of_lan_endpoint}},
    {2, "ZANTO_EthernetPortStatistics", number, port_by_key, {"ZANTO_EthernetPortStatistics", of_port_statistics}},
};

// The port's builder is given the namespace ahead of the class, here alone.
constexpr associator_row eth_stat_rows[] = {
    {1, "ZANTO_EthernetPortStatisticalData", number, port_by_key, {"ZANTO_EthernetPort", of_port_namespace_first}},
};

// clang-format on

} // namespace

int get_fcip_pe_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                 const CMPIResult* result, const char* ns) {
    return return_associators({fcip_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_fcip_remote_pe_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                        const CMPIResult* result, const char* ns) {
    return return_associators({fcip_remote_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_pe_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                               const CMPIResult* result, const char* ns) {
    return return_associators(from_ip_pe, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_remote_pe_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                      const CMPIResult* result, const char* ns) {
    return return_associators({ip_remote_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_pe_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                const CMPIResult* result, const char* ns) {
    return return_associators({tcp_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_remote_pe_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                       const CMPIResult* result, const char* ns) {
    return return_associators({tcp_remote_pe_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_lan_endpoint_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                      const CMPIResult* result, const char* ns) {
    return return_associators({lan_endpoint_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_fcip_settings_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                       const CMPIResult* result, const char* ns) {
    return return_associators({fcip_settings_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_setting_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                    const CMPIResult* result, const char* ns) {
    return return_associators({ip_setting_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_setting_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                     const CMPIResult* result, const char* ns) {
    return return_associators({tcp_setting_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_eth_port_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                  const CMPIResult* result, const char* ns) {
    return return_associators({eth_port_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_eth_stat_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                  const CMPIResult* result, const char* ns) {
    return return_associators({eth_stat_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_ip_stat_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                 const CMPIResult* result, const char* ns) {
    return return_associators({ip_stat_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_stat_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                  const CMPIResult* result, const char* ns) {
    return return_associators({tcp_stat_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_tcp_statical_data_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                           const CMPIResult* result, const char* ns) {
    return return_associators({tcp_statical_data_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

int get_profile_associator_names(const char* key, const char* asked, const char*, const char*, const char*,
                                 const CMPIResult* result, const char* ns) {
    return return_associators({profile_rows}, {__func__, wanted::paths, key, asked, result, ns});
}

} // namespace fcip
