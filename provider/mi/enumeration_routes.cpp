#include "provider/mi/enumeration_routes.h"

#include "provider/associations/binds_to.h"

namespace fcip {

namespace {

// The two tables differ on purpose; do not derive one from the other.

constexpr class_row<path_enumerator*> paths[] = {
    {"ZANTO_FCIPProtocolEndPoint", get_all_fcip_pe_references},
    {"ZANTO_RemoteFCIPPort", get_all_fcip_pe_references},
    {"ZANTO_IPProtocolEndPoint", get_all_ip_pe_references},
    {"ZANTO_RemoteTCPPort", get_all_ip_pe_references},
    {"ZANTO_RemoteIPServiceAccessPoint", get_all_ip_pe_references},
    {"ZANTO_TCPProtocolEndPoint", get_all_ip_pe_references},
    {"ZANTO_FCIPSettings", get_all_ip_pe_references},
    {"ZANTO_IPSettings", get_all_ip_pe_references},
    {"ZANTO_IPEndPointStatistics", get_all_statistic_references},
    {"ZANTO_TCPEndPointStatistics", get_all_statistic_references},
    {"ZANTO_EthernetPortStatistics", get_all_eth_stat_references},
    {"ZANTO_EthernetPortStatisticalData", get_all_eth_stat_data_references},
    {"ZANTO_LANEndPoint", get_all_lan_endpoint_references},
    {"ZANTO_TCPStatisticalData", get_all_statistic_references},
    {"ZANTO_FCIPProfile", get_all_fcip_profile_references},
    {"ZANTO_TCPSettings", get_all_ip_pe_references},
};

/// The walk over associations, with the arguments of the other walks.
int get_all_associations(const char* class_name, const CMPIResult* result, const char** properties,
                         const char* name_space) {
    return get_all_binds_to_instances(class_name, result, name_space, properties);
}

constexpr class_row<instance_enumerator*> instances[] = {
    {"ZANTO_FCIPProtocolEndPoint", get_all_fcip_pe_instances},
    {"ZANTO_RemoteFCIPPort", get_all_fcip_pe_instances},
    {"ZANTO_IPProtocolEndPoint", get_all_ip_pe_instances},
    {"ZANTO_RemoteIPServiceAccessPoint", get_all_ip_pe_instances},
    {"ZANTO_RemoteTCPPort", get_all_ip_pe_instances},
    {"ZANTO_TCPProtocolEndPoint", get_all_ip_pe_instances},
    {"ZANTO_FCIPSettings", get_all_ip_pe_instances},
    {"ZANTO_IPSettings", get_all_ip_pe_instances},
    {"ZANTO_IPEndPointStatistics", get_all_statistics},
    {"ZANTO_TCPEndPointStatistics", get_all_statistics},
    {"ZANTO_EthernetPortStatistics", get_all_eth_stat_instances},
    {"ZANTO_FCIPProfile", get_all_fcip_profiles},
    {"ZANTO_LANEndPoint", get_all_lan_endpoint_instances},
    {"ZANTO_TCPStatisticalData", get_all_statistics},
    {"ZANTO_RemoteIPPort", get_all_ip_pe_instances}, // which builds nothing for it: a null instance per tunnel
    {"ZANTO_SANFCIPEndpoint", get_all_associations},
    {"ZANTO_SANIPEndpoint", get_all_associations},
    {"ZANTO_FCIPTCPEndpoint", get_all_associations},
    {"ZANTO_TCPIPEndpoint", get_all_associations},
    {"ZANTO_SANTCPEndpoint", get_all_associations},
    {"ZANTO_IPEthernetEndpoint", get_all_associations},
    {"ZANTO_EthernetPortProtocolEndpoint", get_all_associations},
    {"ZANTO_FCPortProtocolEndPoint", nullptr},
    {"ZANTO_SwitchHostedFCIPAccessPoint", get_all_associations},
    {"ZANTO_SwitchHostedIPAccessPoint", get_all_associations},
    {"ZANTO_SwitchHostedTCPAccessPoint", get_all_associations},
    {"ZANTO_FCIPProfile", get_all_fcip_profiles}, // never reached
    {"ZANTO_FCIPPEBasedOn", get_all_associations},
    {"ZANTO_FCIPElementSettingData", get_all_associations},
    {"ZANTO_TCPElementSettingData", get_all_associations},
    {"ZANTO_IPElementSettingData", get_all_associations},
    {"ZANTO_TCPSettings", get_all_ip_pe_instances},
    {"ZANTO_EthernetPortStatisticalData", get_all_eth_stat_data_instances},
};

} // namespace

std::span<const class_row<path_enumerator*>> path_routes() {
    return paths;
}

std::span<const class_row<instance_enumerator*>> instance_routes() {
    return instances;
}

path_enumerator* path_enumerator_of(const char* class_name) {
    const auto* row = row_for(paths, class_name);
    return row == nullptr ? get_all_binds_to_references : row->serves;
}

instance_enumerator* instance_enumerator_of(const char* class_name) {
    const auto* row = row_for(instances, class_name);
    return row == nullptr ? get_all_associations : row->serves;
}

} // namespace fcip
