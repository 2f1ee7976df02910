#include "bench/cases.h"

#include "bench/calls.h"

namespace bench {

namespace {

// ---------------------------------------------------------------------------------------------- classes of the tunnels

void write_addresses(const FcipEntityEntry& profile, const FcipLinkEntry& link) {
    write_address(profile.local_address);
    write_address(link.remote_address);
}

void fcip_endpoint(const Row& row) {
    FcipEntityEntry* profile = profile_of(*row.link);
    read_host_name();
    read_system_name(row.link->link_if_index);
    write_addresses(*profile, *row.link);
    char wwn[32];
    cim_sprintf_wwn(wwn, row.link->remote_wwn);
    write_switch_wwn();
    std::free(profile);
}

void fcip_path(const Row& row) {
    FcipEntityEntry* profile = profile_of(*row.link);
    read_system_name(row.link->link_if_index);
    write_addresses(*profile, *row.link);
    std::free(profile);
}

void remote_endpoint(const Row& row) {
    FcipEntityEntry* profile = profile_of(*row.link);
    read_host_name();
    read_system_name(row.link->link_if_index);
    write_addresses(*profile, *row.link);
    std::free(profile);
}

void ip_endpoint(const Row& row) {
    read_profile(*row.link);
    read_host_name();
    read_system_name(row.link->link_if_index);
    write_address(row.link->remote_address);
    read_ip_interface(row.link->ethernet_if_index);
}

void ip_path(const Row& row) {
    FcipEntityEntry* profile = profile_of(*row.link);
    read_system_name(row.link->link_if_index);
    read_host_name();
    write_addresses(*profile, *row.link);
    std::free(profile);
}

void remote_ip_path(const Row& row) {
    ip_path(row);
    read_system_name(row.link->link_if_index);
}

void tcp_endpoint(const Row& row) {
    FcipEntityEntry* profile = profile_of(*row.link);
    read_host_name();
    read_system_name(row.link->link_if_index);
    write_address(profile->local_address);
    read_connection(*row.link, *profile);
    std::free(profile);
}

void tcp_path(const Row& row) {
    FcipEntityEntry* profile = profile_of(*row.link);
    read_host_name();
    write_addresses(*profile, *row.link);
    read_system_name(row.link->link_if_index);
    std::free(profile);
}

void remote_tcp_endpoint(const Row& row) {
    read_profile(*row.link);
    read_host_name();
    read_system_name(row.link->link_if_index);
}

void remote_tcp_path(const Row& row) {
    remote_tcp_endpoint(row);
    write_address(row.link->remote_address);
}

// ---------------------------------------------------------------------------------------------- settings

void fcip_settings(const Row& row) {
    read_profile(*row.link);
    read_host_name();
    read_system_name(row.link->link_if_index);
    read_profile(*row.link, 30);
}

void ip_settings(const Row& row) {
    read_profile(*row.link);
    read_host_name();
    write_interface_name(row.link->link_if_index);
    ask_ip_statistics(row.link->ethernet_if_index);
    read_ip_configuration();
    read_kernel_counters();
}

void tcp_settings(const Row& row) {
    read_host_name();
    find_link(row.link->link_index);
    read_profile(*row.link);
    ask_tcp_statistics(row.link->ethernet_if_index);
    read_system_name(row.link->link_if_index);
    read_kernel_counters();
}

void settings_path(const Row& row) {
    read_profile(*row.link);
    read_host_name();
}

// ---------------------------------------------------------------------------------------------- statistics

void ip_statistics(const Row& row) {
    read_host_name();
    ask_ip_statistics(row.link->ethernet_if_index);
    read_system_name(row.link->link_if_index);
}

void tcp_statistics(const Row& row) {
    find_link(row.link->link_index);
    read_profile(*row.link);
    read_host_name();
    ask_tcp_statistics(row.link->ethernet_if_index);
    read_system_name(row.link->link_if_index);
}

void tcp_statistical_data(const Row& row) {
    read_host_name();
    find_link(row.link->link_index);
    ask_tcp_statistics(row.link->ethernet_if_index);
    read_system_name(row.link->link_if_index);
}

void tcp_statistics_by_key(const Row& row) {
    read_link_errors(*row.link);
    tcp_statistical_data(row);
}

void statistics_path(const Row& row) {
    read_profile(*row.link);
    const std::uint32_t key[2] = {row.link->entity_id, row.link->link_index};
    FcipLinkEntry* link = nullptr;
    fcip_get_link_entry(mts_q, platform_exact, key, &link, 30, 1);
    std::free(link);
    read_host_name();
}

// ---------------------------------------------------------------------------------------------- profiles and ports

void profile(const Row& row) {
    read_host_name();
    write_address(row.profile->local_address);
}

void profile_path(const Row& /*row*/) {}

void ethernet_statistics(const Row& row) {
    read_port_counters(row.if_index);
    read_host_name();
    ask_ethernet_statistics(row.if_index);
    write_interface_name(row.if_index);
}

void ethernet_statistics_path(const Row& /*row*/) {
    read_host_name();
}

void write_network_address(std::uint32_t if_index) {
    PmPortInfo* record = port(platform_exact, if_index);
    char address[32];
    pm_cim_get_network_address(address, record, kind_of(if_index));
    std::free(record);
}

void lan_endpoint(const Row& row) {
    write_network_address(row.if_index);
    read_host_name();
    write_switch_wwn();
}

void lan_endpoint_path(const Row& row) {
    write_network_address(row.if_index);
    read_host_name();
    CSgetName(mts_q);
}

// ---------------------------------------------------------------------------------------------- associations

void fcip_and_tcp_paths(const Row& row) {
    fcip_path(row);
    tcp_path(row);
    read_host_name();
}

void tcp_and_fcip_paths(const Row& row) {
    tcp_path(row);
    fcip_path(row);
    read_host_name();
}

// ---------------------------------------------------------------------------------------------- the table

constexpr Case instances(const char* class_name, Walk walk, RowCalls* calls) {
    return {class_name, Operation::enumerate_instances, walk, calls};
}

constexpr Case names(const char* class_name, Walk walk, RowCalls* calls) {
    return {class_name, Operation::enumerate_instance_names, walk, calls};
}

constexpr Case get(const char* class_name, const char* key, Walk walk, RowCalls* calls) {
    return {class_name, Operation::get_instance, walk, calls, key};
}

constexpr Case traversal(Operation operation, RowCalls* calls, bool filtered) {
    return {"ZANTO_FCIPProtocolEndPoint", operation, Walk::last_link, calls, "Name", "ZANTO_FCIPTCPEndpoint", filtered};
}

using enum Walk;

// clang-format off
constexpr Case all_cases[] = {
    instances("ZANTO_FCIPProtocolEndPoint", every_link, fcip_endpoint),
    names("ZANTO_FCIPProtocolEndPoint", every_link, fcip_path),
    get("ZANTO_FCIPProtocolEndPoint", "Name", last_link, fcip_endpoint),
    instances("ZANTO_RemoteFCIPPort", every_link, remote_endpoint),
    names("ZANTO_RemoteFCIPPort", every_link, fcip_path),
    get("ZANTO_RemoteFCIPPort", "Name", last_link_by_address, remote_endpoint),
    instances("ZANTO_IPProtocolEndPoint", every_link, ip_endpoint),
    names("ZANTO_IPProtocolEndPoint", every_link, ip_path),
    get("ZANTO_IPProtocolEndPoint", "Name", last_link, ip_endpoint),
    instances("ZANTO_RemoteIPServiceAccessPoint", every_link, remote_endpoint),
    names("ZANTO_RemoteIPServiceAccessPoint", every_link, remote_ip_path),
    get("ZANTO_RemoteIPServiceAccessPoint", "Name", last_link_by_address, remote_endpoint),
    instances("ZANTO_TCPProtocolEndPoint", every_link, tcp_endpoint),
    names("ZANTO_TCPProtocolEndPoint", every_link, tcp_path),
    get("ZANTO_TCPProtocolEndPoint", "Name", last_link, tcp_endpoint),
    instances("ZANTO_RemoteTCPPort", every_link, remote_tcp_endpoint),
    names("ZANTO_RemoteTCPPort", every_link, remote_tcp_path),
    get("ZANTO_RemoteTCPPort", "Name", last_link, remote_tcp_endpoint),
    instances("ZANTO_LANEndPoint", every_port, lan_endpoint),
    names("ZANTO_LANEndPoint", every_port, lan_endpoint_path),
    get("ZANTO_LANEndPoint", "Name", last_link, ip_endpoint), // answered by an IP endpoint
    instances("ZANTO_FCIPSettings", every_link, fcip_settings),
    names("ZANTO_FCIPSettings", every_link, settings_path),
    get("ZANTO_FCIPSettings", "InstanceID", last_link, fcip_settings),
    instances("ZANTO_IPSettings", every_link, ip_settings),
    names("ZANTO_IPSettings", every_link, settings_path),
    get("ZANTO_IPSettings", "InstanceID", last_link, ip_settings),
    instances("ZANTO_TCPSettings", every_link, tcp_settings),
    names("ZANTO_TCPSettings", every_link, settings_path),
    get("ZANTO_TCPSettings", "InstanceID", last_link, tcp_settings),
    instances("ZANTO_IPEndPointStatistics", every_link, ip_statistics),
    names("ZANTO_IPEndPointStatistics", every_link, statistics_path),
    get("ZANTO_IPEndPointStatistics", "InstanceID", last_link, ip_statistics),
    instances("ZANTO_TCPEndPointStatistics", every_link, tcp_statistics),
    names("ZANTO_TCPEndPointStatistics", every_link, statistics_path),
    get("ZANTO_TCPEndPointStatistics", "InstanceID", last_link, tcp_statistics_by_key),
    instances("ZANTO_TCPStatisticalData", every_link, tcp_statistical_data),
    names("ZANTO_TCPStatisticalData", every_link, statistics_path), // and no get: the class has no key
    instances("ZANTO_EthernetPortStatistics", every_port_with_statistics, ethernet_statistics),
    names("ZANTO_EthernetPortStatistics", every_port_with_statistics, ethernet_statistics_path),
    get("ZANTO_EthernetPortStatistics", "InstanceID", last_port, ethernet_statistics),
    instances("ZANTO_FCIPProfile", every_profile, profile),
    names("ZANTO_FCIPProfile", every_profile, profile_path),
    get("ZANTO_FCIPProfile", "InstanceID", last_profile, profile),
    traversal(Operation::associators, tcp_endpoint, true),
    traversal(Operation::associator_names, tcp_path, true),
    traversal(Operation::references, fcip_and_tcp_paths, false),
    traversal(Operation::reference_names, fcip_and_tcp_paths, false),
    {"ZANTO_FCIPTCPEndpoint", Operation::enumerate_instances, every_link, tcp_and_fcip_paths, nullptr, nullptr, false},
    names("ZANTO_FCIPTCPEndpoint", every_link, tcp_and_fcip_paths),
};
// clang-format on

} // namespace

std::span<const Case> cases() {
    return all_cases;
}

} // namespace bench
