#include "provider/mi/association_routes.h"

namespace fcip {

namespace {

constexpr class_row<associators_member*> associators[] = {
    {"ZANTO_FCIPProtocolEndPoint", get_fcip_pe_associators},
    {"ZANTO_RemoteFCIPPort", get_fcip_remote_pe_associators},
    {"ZANTO_IPProtocolEndPoint", get_ip_pe_associators},
    {"ZANTO_RemoteIPServiceAccessPoint", get_ip_remote_pe_associators},
    {"ZANTO_TCPProtocolEndPoint", get_tcp_pe_associators},
    {"ZANTO_RemoteTCPPort", get_tcp_remote_pe_associators},
    {"ZANTO_LanEndPoint", get_lan_endpoint_associators},
    {"ZANTO_FCIPSettings", get_fcip_settings_associators},
    {"ZANTO_IPSettings", get_ip_setting_associators},
    {"ZANTO_TCPSettings", get_tcp_setting_associators},
    {"ZANTO_EthernetPort", get_eth_port_associators},
    {"ZANTO_EthernetPortStatistics", get_eth_stat_associators},
    {"ZANTO_IpEndPointStatistics", get_ip_stat_associators},
    {"ZANTO_TCPEndPointStatistics", get_tcp_stat_associators},
    {"ZANTO_TCPStatisticalData", get_tcp_statical_data_associators}, // not reached: the class has no key
    {"ZANTO_FCIPProfile", get_profile_associators},
};

constexpr class_row<associator_names_member*> associator_names[] = {
    {"ZANTO_FCIPProtocolEndPoint", get_fcip_pe_associator_names},
    {"ZANTO_RemoteFCIPPort", get_fcip_remote_pe_associator_names},
    {"ZANTO_RemoteIPServiceAccessPoint", get_ip_remote_pe_associator_names},
    {"ZANTO_RemoteTCPPort", get_tcp_remote_pe_associator_names},
    {"ZANTO_IPProtocolEndPoint", get_ip_pe_associator_names},
    {"ZANTO_TCPProtocolEndPoint", get_tcp_pe_associator_names},
    {"ZANTO_LanEndPoint", get_lan_endpoint_associator_names},
    {"ZANTO_FCIPSettings", get_fcip_settings_associator_names},
    {"ZANTO_IPSettings", get_ip_setting_associator_names},
    {"ZANTO_TCPSettings", get_tcp_setting_associator_names},
    {"ZANTO_EthernetPort", get_eth_port_associator_names},
    {"ZANTO_EthernetPortStatistics", get_eth_stat_associator_names},
    {"ZANTO_IpEndPointStatistics", get_ip_stat_associator_names},
    {"ZANTO_TCPEndPointStatistics", get_tcp_stat_associator_names},
    {"ZANTO_FCIPProfile", get_profile_associator_names},
};

constexpr class_row<references_member*> references[] = {
    {"ZANTO_FCIPProtocolEndpoint", get_fcip_pe_references},
    {"ZANTO_RemoteFCIPPort", get_fcip_remote_pe_references},
    {"ZANTO_IPProtocolEndpoint", get_ip_pe_references},
    {"ZANTO_RemoteIPServiceAccessPoint", get_ip_remote_pe_references},
    {"ZANTO_TCPProtocolEndpoint", get_tcp_pe_references},
    {"ZANTO_RemoteTCPPort", get_tcp_remote_pe_references},
    {"ZANTO_FCIPSettings", get_fcip_settings_references},
    {"ZANTO_IPSettings", get_ip_settings_references},
    {"ZANTO_TCPSettings", get_tcp_settings_references},
    {"ZANTO_FCIPProfile", get_profile_references},
    {"ZANTO_LanEndpoint", get_lan_endpoint_references},
    {"ZANTO_IPEndpointStatistics", get_ip_stat_references},
    {"ZANTO_TCPEndpointStatistics", get_tcp_stat_references},
    {"ZANTO_EthernetPort", get_eth_port_references},
    {"ZANTO_EthernetPortStatistics", get_eth_stat_references},
};

// The remote classes are answered by the members of the local endpoints, with the remote object's key.
constexpr class_row<reference_names_member*> reference_names[] = {
    {"ZANTO_FCIPProtocolEndpoint", get_fcip_pe_reference_names},
    {"ZANTO_RemoteFCIPPort", get_ip_pe_reference_names},
    {"ZANTO_IPProtocolEndpoint", get_ip_pe_reference_names},
    {"ZANTO_RemoteIPServiceAccessPoint", get_ip_pe_reference_names},
    {"ZANTO_TCPProtocolEndpoint", get_tcp_pe_reference_names},
    {"ZANTO_RemoteTCPPort", get_tcp_pe_reference_names},
    {"ZANTO_LanEndpoint", get_lan_endpoint_reference_names},
    {"ZANTO_IPEndpointStatistics", get_ip_stat_reference_names},
    {"ZANTO_TCPEndpointStatistics", get_tcp_stat_reference_names},
    {"ZANTO_FCIPSettings", get_fcip_settings_reference_names},
    {"ZANTO_IPSettings", get_ip_settings_reference_names},
    {"ZANTO_TCPSettings", get_tcp_settings_reference_names},
    {"ZANTO_EthernetPort", get_eth_port_reference_names},
    {"ZANTO_EthernetPortStatistics", get_eth_stat_reference_names},
    {"ZANTO_LogicalComputerSystem", nullptr}, // not reached: the class has no key
    {"ZANTO_FCIPProfile", get_profile_reference_names},
};

} // namespace

std::span<const class_row<associators_member*>> associators_routes() {
    return associators;
}

std::span<const class_row<associator_names_member*>> associator_names_routes() {
    return associator_names;
}

std::span<const class_row<references_member*>> references_routes() {
    return references;
}

std::span<const class_row<reference_names_member*>> reference_names_routes() {
    return reference_names;
}

} // namespace fcip
