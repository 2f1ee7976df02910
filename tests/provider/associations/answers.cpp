#include "tests/provider/associations/answers.h"

#include "provider/access/ports.h"
#include "provider/access/systems.h"
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
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"

#include <cstring>
#include <stdexcept>

#include <strings.h>

namespace test {

namespace {

constexpr const char* ns = "root/cimv2";

Build of_link(fcip::link_instance_builder* build, const char* class_name, const switchsim::LinkKey& key) {
    return [=] { return build(class_name, ns, &switchsim::the_switch().links.at(key), nullptr); };
}

Build of_port(const char* class_name, std::uint32_t if_index) {
    return [=] {
        const auto port = fcip::fetch_port(platform_exact, if_index);
        return fcport_build_instance_pm(class_name, ns, port.get(), nullptr, _broker);
    };
}

CMPIInstance* profile_instance() {
    return fcip::fcip_profile_build_instance("ZANTO_FCIPProfile", ns, &switchsim::the_switch().profiles.at(3), nullptr);
}

CMPIInstance* system_instance() {
    return fcip::get_logical_computer_instance(fcip_3, ns, nullptr, _broker);
}

CMPIInstance* lan_endpoint_instance() {
    return fcip::lan_endpoint_build_instance("ZANTO_LANEndPoint", ns, ethernet_2, nullptr);
}

CMPIInstance* statistics_instance() {
    const auto port = fcip::fetch_port(platform_exact, ethernet_2);
    return fcip::eth_statistics_build_instance("ZANTO_EthernetPortStatistics", ns, port.get(), nullptr);
}

// The "Result Class" lines.
constexpr const char* starred = " ****** Result Class :%s  ********** \n";
constexpr const char* plain = "Result Class :%s \n";
constexpr const char* no_line = "";

// clang-format off
std::vector<AnswerRow> partners_of_endpoints() {
    const auto fcip_3_path = fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint");
    const auto ip_3_path = ip_endpoint_3("ZANTO_IPProtocolEndPoint");
    const auto tcp_3_path = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    const auto system = vsan_1("ZANTO_LogicalComputerSystem");
    const auto fcip_3_instance = of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_3);
    const auto ip_3_instance = of_link(fcip::ip_pe_build_instance, "ZANTO_IPProtocolEndPoint", tunnel_3);
    const auto tcp_3_instance = of_link(fcip::tcp_pe_build_instance, "ZANTO_TCPProtocolEndPoint", tunnel_3);
    return {
        {"AN", "get_fcip_pe", 1, "ZANTO_FCIPProtocolEndPoint", "ZANTO_fcipElementSettingData", key::tunnel,
            Partner{of_link(fcip::fcip_settings_build_instance, "ZANTO_FCIPSettings", tunnel_3),
                    "InstanceID", "16777218", {instance_of_tunnel_3("ZANTO_FCIPSettings")}}},
        {"AN", "get_fcip_pe", 2, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FciptcpEndpoint", key::tunnel,
            Partner{tcp_3_instance, "CreationClassName", "ZANTO_TCPProtocolEndPoint", {tcp_3_path}}},
        {"AN", "get_fcip_pe", 3, "ZANTO_FCIPProtocolEndPoint", "ZANTO_SANFCIPEndPoint", key::tunnel,
            Partner{of_link(fcip::fcip_remote_pe_build_instance, "ZANTO_RemoteFCIPPort", tunnel_3),
                    "Name", "4_192.168.100.101_10.1.1.1", {remote_fcip_port_3("ZANTO_RemoteFCIPPort")}}},
        {"AN", "get_fcip_pe", 4, "ZANTO_FCIPProtocolEndPoint", "zanto_FCPortProtocolEndPoint", key::tunnel,
            Partner{of_port("ZANTO_FCPort", fcip_3), "DeviceID", "16777218", {fc_port_of_tunnel_3("ZANTO_FCPort")}}},
        {"AN", "get_fcip_pe", 5, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPpeBasedOn", key::tunnel,
            Partner{profile_instance, "InstanceID", "3", {profile_3("ZANTO_FCIPProfile")}}},
        {"AN", "get_fcip_pe", 6, "ZANTO_FCIPProtocolEndPoint", "ZANTO_SwitchHostedFCIPAccesspoint", key::tunnel,
            Partner{system_instance, "Name", "VSAN0001", {system}}},

        {"AN", "get_ip_pe", 1, "ZANTO_IPProtocolEndPoint", "zanto_ipelementsettingdata", key::if_index,
            Partner{of_link(fcip::ip_settings_build_instance, "ZANTO_IPSettings", tunnel_3),
                    "InstanceID", "16777218", {instance_of_tunnel_3("ZANTO_IPSettings"), system}}},
        {"AN", "get_ip_pe", 2, "ZANTO_IPProtocolEndPoint", "ZANTO_IPEndpointStatisticaldata", key::if_index,
            Partner{of_link(fcip::ip_statistics_build_instance, "ZANTO_IPEndPointStatistics", tunnel_3),
                    "CreationClassName", "ZANTO_IPEndPointStatistics",
                    {instance_of_tunnel_3("ZANTO_IPEndPointStatistics")}}},
        {"AN", "get_ip_pe", 3, "ZANTO_IPProtocolEndPoint", "ZANTO_TCPIPENDPOINT", key::if_index,
            Partner{tcp_3_instance, "Name", "16777218", {tcp_3_path}}},
        {"AN", "get_ip_pe", 4, "ZANTO_IPProtocolEndPoint", "ZANTO_IPEthernetEndPoint", key::if_index,
            Partner{of_port("ZANTO_EthernetPort", ethernet_1),
                    "DeviceID", "-2097152000", {ethernet_port_1("ZANTO_EthernetPort")}}},
        {"AN", "get_ip_pe", 5, "ZANTO_IPProtocolEndPoint", "ZANTO_SwitchHostedipAccessPoint", key::if_index,
            Partner{system_instance, "CreationClassName", "ZANTO_LogicalComputerSystem", {fcip_3_path}}},
        {"AN", "get_ip_pe", 6, "ZANTO_IPProtocolEndPoint", "ZANTO_SANIPEndpoint", key::if_index,
            Partner{of_link(fcip::ip_remote_pe_build_instance, "ZANTO_RemoteIPServiceAccessPoint", tunnel_3),
                    "Name", "0_192.168.100.101_10.1.1.1", {remote_ip_port_3("ZANTO_RemoteIPServiceAccessPoint")}}},
        {"N", "get_ip_pe", 7, "ZANTO_IPProtocolEndPoint", any_name, key::if_index,
            Partner{nullptr, "", "", {system}}},

        {"AN", "get_tcp_pe", 1, "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndpointStatisticalData", key::if_index,
            Partner{of_link(fcip::tcp_statistical_data_build_instance, "ZANTO_TCPStatisticalData", tunnel_3),
                    "InstanceID", "3", {instance_of_tunnel_3("ZANTO_TCPEndPointStatistics")}}},
        {"AN", "get_tcp_pe", 2, "ZANTO_TCPProtocolEndPoint", "ZANTO_fcipTCPEndpoint", key::if_index_only,
            Partner{fcip_3_instance, "Name", "3_10.1.1.1_192.168.100.101", {fcip_3_path}}},
        {"AN", "get_tcp_pe", 3, "ZANTO_TCPProtocolEndPoint", "ZANTO_TcpIPEndpoint", key::if_index_only,
            Partner{ip_3_instance, "Name", "16777218_10.1.1.1_192.168.100.101", {ip_3_path}}},
        {"AN", "get_tcp_pe", 4, "ZANTO_TCPProtocolEndPoint", "ZANTO_SwitchHostedTcpAccessPoint", key::if_index_only,
            Partner{system_instance, "Name", "VSAN0001", {physical_switch("ZANTO_PhysicalComputerSystem")}}},
        {"AN", "get_tcp_pe", 5, "ZANTO_TCPProtocolEndPoint", "ZANTO_SanTCPEndpoint", key::if_index_only,
            Partner{of_link(fcip::tcp_remote_pe_build_instance, "ZANTO_RemoteTCPPort", tunnel_3),
                    "Name", "0_16777218", {remote_tcp_port_3("ZANTO_RemoteTCPPort")}}},
        {"A", "get_tcp_pe", 6, "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPElementSettingdata", key::if_index_only,
            Partner{of_link(fcip::tcp_settings_build_instance, "ZANTO_TCPSettings", tunnel_3),
                    "RetransmissionTimeoutMin", "200", {}}},
    };
}

std::vector<AnswerRow> partners_of_others() {
    const auto fcip_3_path = fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint");
    const auto ip_3_path = ip_endpoint_3("ZANTO_IPProtocolEndPoint");
    const auto tcp_3_path = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    const auto fcip_3_instance = of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_3);
    const auto ip_3_instance = of_link(fcip::ip_pe_build_instance, "ZANTO_IPProtocolEndPoint", tunnel_3);
    const auto tcp_3_instance = of_link(fcip::tcp_pe_build_instance, "ZANTO_TCPProtocolEndPoint", tunnel_3);
    return {
        {"AN", "get_fcip_remote_pe", 1, "ZANTO_RemoteFCIPPort", "ZANTO_SANfcipEndpoint", key::peer_address,
            Partner{fcip_3_instance, "TunnelID", "3", {fcip_3_path}}},
        {"AN", "get_ip_remote_pe", 1, "ZANTO_RemoteIPServiceAccessPoint", "ZANTO_SANipEndpoint", key::peer_address,
            Partner{ip_3_instance, "IPv4Address", "10.1.1.1", {ip_3_path}}},
        {"AN", "get_tcp_remote_pe", 1, "ZANTO_RemoteTCPPort", "ZANTO_SANtcpEndpoint", key::peer_if_index,
            Partner{tcp_3_instance, "RemotePortNumber", "3302", {tcp_3_path}}},

        {"AN", "get_lan_endpoint", 1, "ZANTO_LanEndPoint", "ZANTO_ipEthernetEndpoint", key::ethernet,
            Partner{of_link(fcip::ip_pe_build_instance, "ZANTO_IPProtocolEndPoint", tunnel_7),
                    "IPv6Address", "2001:db8::1", {ip_endpoint_7("ZANTO_IPProtocolEndPoint")}}},
        {"AN", "get_lan_endpoint", 2, "ZANTO_LanEndPoint", "ZANTO_EthernetPortProtocolEndPoint", key::ethernet_token,
            Partner{of_port("ZANTO_EthernetPort", ethernet_2),
                    "DeviceID", "-2096889856", {ethernet_port_2("ZANTO_EthernetPort")}}},
        {"AN", "get_lan_endpoint", 3, "ZANTO_LanEndPoint", "CIM_hostedAccessPoint", key::if_index_only,
            Partner{of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_8),
                    "TunnelID", "8", {fcip_endpoint_8("ZANTO_FCIPProtocolEndPoint")}}},

        {"AN", "get_eth_port", 1, "ZANTO_EthernetPort", "ZANTO_EthernetPortprotocolEndpoint", key::number,
            Partner{lan_endpoint_instance,
                    "Name", "-2096889856:02:00:00:aa:00:02", {lan_endpoint_2("ZANTO_LANEndPoint")}}},
        {"A", "get_eth_port", 2, "ZANTO_EthernetPort", "ZANTO_EthernetPortStatisticaldata", key::number,
            Partner{statistics_instance, "InstanceID", "-2096889856", {}}},
        {"N", "get_eth_port", 2, "ZANTO_EthernetPort", "ZANTO_EthernetPortstatistics", key::number,
            Partner{nullptr, "", "", {statistics_of_ethernet_2("ZANTO_EthernetPortStatistics")}}},
        {"AN", "get_eth_stat", 1, "ZANTO_EthernetPortStatistics", "ZANTO_ethernetPortStatisticalData", key::number,
            Partner{of_port("ZANTO_EthernetPort", ethernet_2),
                    "DeviceID", "-2096889856", {ethernet_port_2("ZANTO_EthernetPort")}}},

        {"AN", "get_fcip_settings", 1, "ZANTO_FCIPSettings", "ZANTO_FCIPElementSettingdata", key::if_index_only,
            Partner{fcip_3_instance, "TunnelID", "3", {fcip_3_path}}},
        {"AN", "get_ip_setting", 1, "ZANTO_IPSettings", "ZANTO_IPElementSettingdata", key::if_index_only,
            Partner{ip_3_instance, "Name", "16777218_10.1.1.1_192.168.100.101", {ip_3_path}}},
        {"AN", "get_tcp_setting", 1, "ZANTO_TCPSettings", "ZANTO_tcpElementSettingData", key::if_index_only,
            Partner{tcp_3_instance, "Name", "16777218", {tcp_3_path}}},
        {"AN", "get_ip_stat", 1, "ZANTO_IPEndPointStatistics", "ZANTO_IpEndPointStatisticalData", key::if_index_only,
            Partner{ip_3_instance, "Name", "16777218_10.1.1.1_192.168.100.101", {ip_3_path}}},
        {"AN", "get_tcp_stat", 1, "ZANTO_TCPEndPointStatistics", "ZANTO_TcpEndPointStatisticalData", key::if_index_only,
            Partner{tcp_3_instance, "Name", "16777218", {tcp_3_path}}},
        {"AN", "get_profile", 1, "ZANTO_FCIPProfile", "ZANTO_FCIPPEbasedOn", key::entity,
            Partner{of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_1),
                    "TunnelID", "1", {fcip_endpoint_1("ZANTO_FCIPProtocolEndPoint")}}},
        // The statistical data have no key of their own; asked for by the number of a profile. Names are never
        // returned.
        {direct, "get_tcp_statical_data", 1, "ZANTO_TCPStatisticalData", "ZANTO_tcpEndPointStatistics", key::entity,
            Partner{of_link(fcip::tcp_pe_build_instance, "ZANTO_TCPProtocolEndPoint", tunnel_1),
                    "Name", "16777216", {}}},
    };
}

std::vector<AnswerRow> ties_of_endpoints() {
    const std::string fcip_3 = fcip_endpoint_3("ZANTO_FCIPProtocolEndpoint");
    const std::string ip_3 = ip_endpoint_3("ZANTO_IPProtocolEndpoint");
    const std::string tcp_3 = tcp_endpoint_3("ZANTO_TCPProtocolEndpoint");
    const std::string tcp_3_point = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    const std::string system = vsan_1("ZANTO_LogicalComputerSystem");
    return {
        {"Rr", "get_fcip_pe", 1, "ZANTO_FCIPProtocolEndPoint", "zanto_FCIPElementSettingData", key::tunnel,
            Tie{starred, managed_setting, "ZANTO_FCIPElementSettingData",
                fcip_3, instance_of_tunnel_3("ZANTO_FCIPSettings")}},
        {"Rr", "get_fcip_pe", 2, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPTCPENDPOINT", key::tunnel,
            Tie{starred, realize, "ZANTO_FCIPTCPEndpoint", fcip_3, tcp_3}},
        {"Rr", "get_fcip_pe", 3, "ZANTO_FCIPProtocolEndPoint", "zanto_sanfcipendpoint", key::tunnel,
            Tie{starred, realize, "ZANTO_SANFCIPEndpoint", fcip_3, remote_fcip_port_3("ZANTO_RemoteFCIPPort")}},
        {"Rr", "get_fcip_pe", 4, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCPortProtocolEndpoint", key::tunnel,
            Tie{starred, realize, "ZANTO_FCPortProtocolEndPoint", fc_port_of_tunnel_3("ZANTO_FCPort"), fcip_3}},
        {"Rr", "get_fcip_pe", 5, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FcipPeBasedOn", key::tunnel,
            Tie{starred, group_part, "ZANTO_FCIPPEBasedOn", profile_3("ZANTO_FCIPProfile"), fcip_3}},
        {"Rr", "get_fcip_pe", 6, "ZANTO_FCIPProtocolEndPoint", "ZANTO_SwitchHostedFcipAccessPoint", key::tunnel,
            Tie{starred, realize, "ZANTO_SwitchHostedFCIPAccessPoint", system, fcip_3}},

        {"Rr", "get_ip_pe", 1, "ZANTO_IPProtocolEndPoint", "ZANTO_ipElementSettingData", key::if_index,
            Tie{plain, managed_setting, "ZANTO_IPElementSettingData", ip_3, instance_of_tunnel_3("ZANTO_IPSettings")}},
        {"Rr", "get_ip_pe", 2, "ZANTO_IPProtocolEndPoint", "ZANTO_IPEndpointStatisticalData", key::if_index,
            Tie{plain, managed_stats, "ZANTO_IPEndpointStatisticalData",
                instance_of_tunnel_3("ZANTO_IPEndpointStatistics"), ip_3}},
        {"Rr", "get_ip_pe", 3, "ZANTO_IPProtocolEndPoint", "ZANTO_TCPipEndpoint", key::if_index,
            Tie{plain, realize, "ZANTO_TCPipEndpoint", ip_3, tcp_3}},
        {"Rr", "get_ip_pe", 4, "ZANTO_IPProtocolEndPoint", "ZANTO_IPethernetEndpoint", key::if_index,
            Tie{plain, realize, "ZANTO_IPethernetEndpoint", ethernet_port_1("ZANTO_EthernetPort"), ip_3}},
        {"Rr", "get_ip_pe", 5, "ZANTO_IPProtocolEndPoint", "ZANTO_SWITCHHostedIPAccessPoint", key::if_index,
            Tie{plain, realize, "ZANTO_SWITCHHostedIPAccessPoint", ip_3, system}},
        {"Rr", "get_ip_pe", 6, "ZANTO_IPProtocolEndPoint", "ZANTO_SANIPEndpoint", key::if_index,
            Tie{plain, realize, "ZANTO_SANIPEndpoint", ip_3, remote_ip_port_3("ZANTO_RemoteIPServiceAccessPoint")}},

        {"Rr", "get_tcp_pe", 1, "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndpointStatisticalData", key::if_index,
            Tie{plain, managed_stats, "ZANTO_TCPEndPointStatisticalData",
                tcp_3_point, instance_of_tunnel_3("ZANTO_TCPEndPointStatistics")}},
        {"Rr", "get_tcp_pe", 2, "ZANTO_TCPProtocolEndPoint", "ZANTO_fciptcpEnpoint", key::if_index,
            Tie{plain, realize, "ZANTO_FCIPTCPEndpoint", fcip_3, tcp_3_point}},
        {"Rr", "get_tcp_pe", 3, "ZANTO_TCPProtocolEndPoint", "ZANTO_TcpIpEndpoint", key::if_index,
            Tie{plain, realize, "ZANTO_TcpIpEndpoint", ip_3, tcp_3_point}},
        {"Rr", "get_tcp_pe", 4, "ZANTO_TCPProtocolEndPoint", "ZANTO_SwitchhostedTCPAccessPoint", key::if_index,
            Tie{plain, realize, "ZANTO_SwitchhostedTCPAccessPoint", tcp_3, system}},
        {"Rr", "get_tcp_pe", 5, "ZANTO_TCPProtocolEndPoint", "ZANTO_SANTcpEndpoint", key::if_index,
            Tie{plain, realize, "ZANTO_SANTcpEndpoint", tcp_3, remote_tcp_port_3("ZANTO_RemoteTCPPort")}},
        {"Rr", "get_tcp_pe", 6, "ZANTO_TCPProtocolEndPoint", "ZANTO_TcpElementSettingData", key::if_index_only,
            Tie{plain, managed_setting, "ZANTO_TcpElementSettingData",
                tcp_3, instance_of_tunnel_3("ZANTO_TCPSettings")}},
    };
}

std::vector<AnswerRow> ties_of_others() {
    const std::string fcip_3 = fcip_endpoint_3("ZANTO_FCIPProtocolEndpoint");
    const std::string ip_3 = ip_endpoint_3("ZANTO_IPProtocolEndpoint");
    const std::string tcp_3 = tcp_endpoint_3("ZANTO_TCPProtocolEndpoint");
    const std::string tcp_3_point = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    return {
        {"Rr", "get_lan_endpoint", 1, "ZANTO_LanEndPoint", "ZANTO_IPEthernetEndPoint", key::ethernet,
            Tie{plain, realize, "ZANTO_IPEthernetEndPoint",
                ip_endpoint_7("ZANTO_IPProtocolEndPoint"), lan_endpoint_2("ZANTO_LANEndpoint")}},
        {"Rr", "get_lan_endpoint", 2, "ZANTO_LanEndPoint", "ZANTO_ethernetPortProtocolEndpoint", key::ethernet_token,
            Tie{plain, realize, "ZANTO_ethernetPortProtocolEndpoint",
                ethernet_port_2("ZANTO_EthernetPort"), lan_endpoint_2("ZANTO_LANEndpoint")}},
        {"Rr", "get_lan_endpoint", 3, "ZANTO_LanEndPoint", "cim_hostedaccesspoint", key::if_index_only,
            Tie{plain, realize, "CIM_HostedAccessPoint",
                fcip_endpoint_8("ZANTO_FCIPProtocolEndPoint"), lan_endpoint_2("ZANTO_LANEndpoint")}},

        {"Rr", "get_eth_port", 1, "ZANTO_EthernetPort", "ZANTO_EthernetPortProtocolEndPoint", key::if_index,
            Tie{plain, realize, "ZANTO_IPElementSettingData",
                ethernet_port_1("ZANTO_EthernetPort"), lan_endpoint_2("ZANTO_LANEndpoint")}},
        {"Rr", "get_eth_port", 2, "ZANTO_EthernetPort", "ZANTO_EthernetportStatisticalData", key::if_index,
            Tie{plain, managed_stats, "ZANTO_EthernetPortStatisticalData",
                ethernet_port_1("ZANTO_EthernetPort"), statistics_of_ethernet_1("ZANTO_EthernetPortStatistics")}},
        {"Rr", "get_eth_stat", 1, "ZANTO_EthernetPortStatistics", "ZANTO_EthernetPortStatisticaldata", key::number,
            Tie{no_line, managed_stats, "ZANTO_EthernetPortStatisticalData",
                ethernet_port_2("ZANTO_EthernetPort"), statistics_of_ethernet_2("ZANTO_EthernetPortStatistics")}},

        {"Rr", "get_fcip_settings", 1, "ZANTO_FCIPSettings", "ZANTO_FcipElementSettingData", key::if_index_only,
            Tie{no_line, managed_setting, "ZANTO_FCIPElementSettingData",
                fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint"), instance_of_tunnel_3("ZANTO_FCIPSettings")}},
        {"Rr", "get_ip_settings", 1, "ZANTO_IPSettings", "ZANTO_IPElementsettingData", key::if_index_only,
            Tie{no_line, managed_setting, "ZANTO_IPElementSettingData",
                ip_endpoint_3("ZANTO_IPProtocolEndPoint"), instance_of_tunnel_3("ZANTO_IPSettings")}},
        {"Rr", "get_tcp_settings", 1, "ZANTO_TCPSettings", "ZANTO_TCPElementSettingdata", key::if_index_only,
            Tie{no_line, managed_setting, "ZANTO_TCPElementSettingdata",
                tcp_3_point, instance_of_tunnel_3("ZANTO_TCPSettings")}},
        {"Rr", "get_ip_stat", 1, "ZANTO_IPEndPointStatistics", "ZANTO_IPEndPointStatisticalData", key::if_index_only,
            Tie{no_line, managed_stats, "ZANTO_IPEndpointStatisticalData",
                ip_endpoint_3("ZANTO_IPProtocolEndPoint"), instance_of_tunnel_3("ZANTO_IPEndpointStatistics")}},
        {"Rr", "get_tcp_stat", 1, "ZANTO_TCPEndPointStatistics", "ZANTO_TCPEndPointStatisticalData", key::if_index_only,
            Tie{no_line, managed_stats, "ZANTO_TCPEndpointStatisticalData",
                tcp_3, instance_of_tunnel_3("ZANTO_TCPEndpointStatistics")}},
        {"Rr", "get_profile", 1, "ZANTO_FCIPProfile", "zanto_fcippebasedon", key::entity,
            Tie{no_line, group_part, "ZANTO_FCIPPEBasedOn",
                profile_3("ZANTO_FCIPProfile"), fcip_endpoint_1("ZANTO_FCIPProtocolEndpoint")}},
        // As its key begins with 0, on a switch whose tunnel 1 has that interface index.
        {direct, "get_tcp_remote_pe", 1, "ZANTO_RemoteTCPPort", "ZANTO_santcpEndpoint", key::if_index,
            Tie{no_line, realize, "ZANTO_santcpEndpoint",
                Thing{R"(SystemName="200100005EAA0001",SystemCreationClassName="ZANTO_LogicalComputerSystem",)"
                      R"(CreationClassName="ZANTO_TCPProtocolEndPoint",Name="0")"}("ZANTO_TCPProtocolEndpoint"),
                Thing{R"(SystemName="200100005EAA0001",Name="0_0",)"
                      R"(SystemCreationClassName="ZANTO_LogicalComputerSystem",)"
                      R"(CreationClassName="ZANTO_RemoteTCPPort")"}("ZANTO_RemoteTCPPort")}},
        // The remote sources: References alone, which have members of their own.
        {"R", "get_fcip_remote_pe", 1, "ZANTO_RemoteFCIPPort", "ZANTO_SANFcipEndpoint", key::peer_address,
            Tie{no_line, realize, "ZANTO_SANFcipEndpoint", fcip_3, remote_fcip_port_3("ZANTO_RemoteFCIPPort")}},
        {"R", "get_ip_remote_pe", 1, "ZANTO_RemoteIPServiceAccessPoint", "ZANTO_SANIpEndPoint", key::peer_address,
            Tie{no_line, realize, "ZANTO_SANIpEndPoint", ip_3, remote_ip_port_3("ZANTO_RemoteIPServiceAccessPoint")}},
    };
}
// clang-format on

} // namespace

std::string Shape::text(const std::string& first_end, const std::string& second_end) const {
    const std::string ends =
        std::string("\n  ") + first + " reference " + first_end + "\n  " + second + " reference " + second_end;
    return setting ? ends + "\n  IsDefault uint16 1\n  IsCurrent uint16 1" : ends;
}

const std::vector<AnswerRow>& answers() {
    static const std::vector<AnswerRow> table = [] {
        std::vector<AnswerRow> all;
        for (const auto part : {partners_of_endpoints, partners_of_others, ties_of_endpoints, ties_of_others}) {
            const auto rows = part();
            all.insert(all.end(), rows.begin(), rows.end());
        }
        return all;
    }();
    return table;
}

const AnswerRow& direct_answer(const std::string& member) {
    for (const AnswerRow& row : answers())
        if (row.operations == std::string(direct) && row.member == member)
            return row;
    throw std::out_of_range(member);
}

std::vector<AnswerRow> answers_of(char operation) {
    std::vector<AnswerRow> rows;
    for (const AnswerRow& row : answers())
        if (std::strchr(row.operations, operation) != nullptr)
            rows.push_back(row);
    return rows;
}

std::size_t expected_answers(char operation, const std::string& source, const std::string& asked) {
    std::size_t of_any_name = 0;
    for (const AnswerRow& row : answers_of(operation)) {
        if (row.source != source)
            continue;
        const std::size_t count = operation == 'N' ? std::get<Partner>(row.answer).names.size() : 1;
        if (strcasecmp(row.asked, asked.c_str()) == 0)
            return count;
        if (row.asked == std::string(any_name))
            of_any_name = count;
    }
    return of_any_name;
}

} // namespace test
