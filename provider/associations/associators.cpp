// Associators: the table of every source class, and its member.
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

constexpr associator_row ip_pe_rows[] = {
    {1, "ZANTO_IPElementSettingData",      if_index, none, {"ZANTO_IPSettings", of<ip_settings>}},
    {2, "ZANTO_IPEndPointStatisticalData", if_index, errors_or_none, {"ZANTO_IPEndPointStatistics", of<ip_statistics>}},
    {3, "ZANTO_TCPIPEndpoint",             if_index, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
    {4, "ZANTO_IPEthernetEndpoint",        if_index, port_or_null, {"ZANTO_EthernetPort", of_port}},
    {5, "ZANTO_SwitchHostedIPAccessPoint", if_index, none, {logical_computer_system, of_system}},
    {6, "ZANTO_SANIpEndPoint",             if_index, none, {"ZANTO_RemoteIPServiceAccessPoint", of<ip_remote_pe>}},
};
constexpr associator_table from_ip_pe{ip_pe_rows, nullptr, true};

// The statistics alone read the key up to its "_", the others all of it; references have it the other way round.
constexpr associator_row tcp_pe_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index, errors_or_none,
        {"ZANTO_TCPStatisticalData", of<tcp_statistical_data>}},
    {2, "ZANTO_FCIPTCPEndpoint",            if_index_only, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
    {3, "ZANTO_TCPIPEndpoint",              if_index_only, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
    {4, "ZANTO_SwitchHostedTCPAccessPoint", if_index_only, none, {logical_computer_system, of_system}},
    {5, "ZANTO_SANTCPEndpoint",             if_index_only, none, {"ZANTO_RemoteTCPPort", of<tcp_remote_pe>}},
    {6, "ZANTO_TCPElementSettingData",      if_index_only, link_again, {"ZANTO_TCPSettings", of<tcp_settings>}},
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

// Answers to the name of a statistics class, not of an association, and that name only.
constexpr associator_row tcp_statical_data_rows[] = {
    {1, "ZANTO_TCPEndPointStatistics", entity, none, {"ZANTO_TCPProtocolEndPoint", of<tcp_pe>}},
};

constexpr associator_row lan_endpoint_rows[] = {
    {1, "ZANTO_IPEthernetEndpoint",           ethernet_if_index, none, {"ZANTO_IPProtocolEndPoint", of<ip_pe>}},
    {2, "ZANTO_EthernetPortProtocolEndpoint", ethernet_token, none, {"ZANTO_EthernetPort", {}}, return_walked_port},
    // Takes the number that the LAN endpoint's key begins with for a link's index.
    {3, "CIM_HostedAccessPoint",              if_index_only, none, {"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>}},
};

constexpr associator_row eth_port_rows[] = {
    {1, "ZANTO_EthernetPortProtocolEndpoint", number, none, {"ZANTO_LANEndPoint", of_lan_endpoint}},
    {2, "ZANTO_EthernetPortStatisticalData", number, port_by_key, {"ZANTO_EthernetPortStatistics", of_port_statistics}},
};

constexpr associator_row eth_stat_rows[] = {
    {1, "ZANTO_EthernetPortStatisticalData", number, port_by_key, {"ZANTO_EthernetPort", of_port}},
};

// clang-format on

} // namespace

int get_fcip_pe_associators(const char* key, const char* asked, const char*, const char*, const char*,
                            const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({fcip_pe_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_fcip_remote_pe_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                   const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({fcip_remote_pe_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_ip_pe_associators(const char* key, const char* asked, const char*, const char*, const char*,
                          const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators(from_ip_pe, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_ip_remote_pe_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                 const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({ip_remote_pe_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_tcp_pe_associators(const char* key, const char* asked, const char*, const char*, const char*,
                           const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({tcp_pe_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_tcp_remote_pe_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                  const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({tcp_remote_pe_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_lan_endpoint_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                 const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({lan_endpoint_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_fcip_settings_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                  const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({fcip_settings_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_ip_setting_associators(const char* key, const char* asked, const char*, const char*, const char*,
                               const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({ip_setting_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_tcp_setting_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({tcp_setting_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_eth_port_associators(const char* key, const char* asked, const char*, const char*, const char*,
                             const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({eth_port_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_eth_stat_associators(const char* key, const char* asked, const char*, const char*, const char*,
                             const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({eth_stat_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_ip_stat_associators(const char* key, const char* asked, const char*, const char*, const char*,
                            const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({ip_stat_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_tcp_stat_associators(const char* key, const char* asked, const char*, const char*, const char*,
                             const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({tcp_stat_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_tcp_statical_data_associators(const char* key, const char* asked, const char*, const char*, const char*,
                                      const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({tcp_statical_data_rows},
                              {__func__, wanted::instances, key, asked, result, ns, properties});
}

int get_profile_associators(const char* key, const char* asked, const char*, const char*, const char*,
                            const char** properties, const CMPIResult* result, const char* ns) {
    return return_associators({profile_rows}, {__func__, wanted::instances, key, asked, result, ns, properties});
}

} // namespace fcip
