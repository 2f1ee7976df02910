// Which walk serves an enumeration of a class: both tables, row by row.
#include "provider/mi/enumeration_routes.h"

#include "provider/associations/binds_to.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace fcip;

using named_route = std::pair<std::string, std::string>;

const std::map<path_enumerator*, std::string> path_walks = {
    {get_all_fcip_pe_references, "get_all_fcip_pe_references"},
    {get_all_ip_pe_references, "get_all_ip_pe_references"},
    {get_all_statistic_references, "get_all_statistic_references"},
    {get_all_eth_stat_references, "get_all_eth_stat_references"},
    {get_all_eth_stat_data_references, "get_all_eth_stat_data_references"},
    {get_all_lan_endpoint_references, "get_all_lan_endpoint_references"},
    {get_all_fcip_profile_references, "get_all_fcip_profile_references"},
    {get_all_binds_to_references, "get_all_binds_to_references"},
    {nullptr, "none"},
};

/// The walk over associations stands in the table with the other walks' arguments, so under another address.
std::string instance_walk(instance_enumerator* walk) {
    static const std::map<instance_enumerator*, std::string> walks = {
        {get_all_fcip_pe_instances, "get_all_fcip_pe_instances"},
        {get_all_ip_pe_instances, "get_all_ip_pe_instances"},
        {get_all_statistics, "get_all_statistics"},
        {get_all_eth_stat_instances, "get_all_eth_stat_instances"},
        {get_all_fcip_profiles, "get_all_fcip_profiles"},
        {get_all_lan_endpoint_instances, "get_all_lan_endpoint_instances"},
        {get_all_eth_stat_data_instances, "get_all_eth_stat_data_instances"},
        {instance_enumerator_of("ZANTO_NoSuchClass"), "get_all_binds_to_instances"},
        {nullptr, "none"},
    };
    return walks.at(walk);
}

TEST(EnumerationRoutes, NamesInTestOrder) {
    std::vector<named_route> actual;
    for (const auto& route : path_routes())
        actual.emplace_back(route.class_name, path_walks.at(route.serves));
    EXPECT_EQ(actual, (std::vector<named_route>{
                          {"ZANTO_FCIPProtocolEndPoint", "get_all_fcip_pe_references"},
                          {"ZANTO_RemoteFCIPPort", "get_all_fcip_pe_references"},
                          {"ZANTO_IPProtocolEndPoint", "get_all_ip_pe_references"},
                          {"ZANTO_RemoteTCPPort", "get_all_ip_pe_references"},
                          {"ZANTO_RemoteIPServiceAccessPoint", "get_all_ip_pe_references"},
                          {"ZANTO_TCPProtocolEndPoint", "get_all_ip_pe_references"},
                          {"ZANTO_FCIPSettings", "get_all_ip_pe_references"},
                          {"ZANTO_IPSettings", "get_all_ip_pe_references"},
                          {"ZANTO_IPEndPointStatistics", "get_all_statistic_references"},
                          {"ZANTO_TCPEndPointStatistics", "get_all_statistic_references"},
                          {"ZANTO_EthernetPortStatistics", "get_all_eth_stat_references"},
                          {"ZANTO_EthernetPortStatisticalData", "get_all_eth_stat_data_references"},
                          {"ZANTO_LANEndPoint", "get_all_lan_endpoint_references"},
                          {"ZANTO_TCPStatisticalData", "get_all_statistic_references"},
                          {"ZANTO_FCIPProfile", "get_all_fcip_profile_references"},
                          {"ZANTO_TCPSettings", "get_all_ip_pe_references"},
                      }));
}

TEST(EnumerationRoutes, InstancesInTestOrder) {
    std::vector<named_route> actual;
    for (const auto& route : instance_routes())
        actual.emplace_back(route.class_name, instance_walk(route.serves));
    EXPECT_EQ(actual, (std::vector<named_route>{
                          {"ZANTO_FCIPProtocolEndPoint", "get_all_fcip_pe_instances"},
                          {"ZANTO_RemoteFCIPPort", "get_all_fcip_pe_instances"},
                          {"ZANTO_IPProtocolEndPoint", "get_all_ip_pe_instances"},
                          {"ZANTO_RemoteIPServiceAccessPoint", "get_all_ip_pe_instances"},
                          {"ZANTO_RemoteTCPPort", "get_all_ip_pe_instances"},
                          {"ZANTO_TCPProtocolEndPoint", "get_all_ip_pe_instances"},
                          {"ZANTO_FCIPSettings", "get_all_ip_pe_instances"},
                          {"ZANTO_IPSettings", "get_all_ip_pe_instances"},
                          {"ZANTO_IPEndPointStatistics", "get_all_statistics"},
                          {"ZANTO_TCPEndPointStatistics", "get_all_statistics"},
                          {"ZANTO_EthernetPortStatistics", "get_all_eth_stat_instances"},
                          {"ZANTO_FCIPProfile", "get_all_fcip_profiles"},
                          {"ZANTO_LANEndPoint", "get_all_lan_endpoint_instances"},
                          {"ZANTO_TCPStatisticalData", "get_all_statistics"},
                          {"ZANTO_RemoteIPPort", "get_all_ip_pe_instances"},
                          {"ZANTO_SANFCIPEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_SANIPEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_FCIPTCPEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_TCPIPEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_SANTCPEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_IPEthernetEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_EthernetPortProtocolEndpoint", "get_all_binds_to_instances"},
                          {"ZANTO_FCPortProtocolEndPoint", "none"},
                          {"ZANTO_SwitchHostedFCIPAccessPoint", "get_all_binds_to_instances"},
                          {"ZANTO_SwitchHostedIPAccessPoint", "get_all_binds_to_instances"},
                          {"ZANTO_SwitchHostedTCPAccessPoint", "get_all_binds_to_instances"},
                          {"ZANTO_FCIPProfile", "get_all_fcip_profiles"},
                          {"ZANTO_FCIPPEBasedOn", "get_all_binds_to_instances"},
                          {"ZANTO_FCIPElementSettingData", "get_all_binds_to_instances"},
                          {"ZANTO_TCPElementSettingData", "get_all_binds_to_instances"},
                          {"ZANTO_IPElementSettingData", "get_all_binds_to_instances"},
                          {"ZANTO_TCPSettings", "get_all_ip_pe_instances"},
                          {"ZANTO_EthernetPortStatisticalData", "get_all_eth_stat_data_instances"},
                      }));
}

TEST(EnumerationRoutes, AnyOtherClassGoesToTheWalkOverAssociations) {
    for (const char* class_name : {"ZANTO_NoSuchClass", "CIM_HostedAccessPoint", "ZANTO_EthernetPort", ""})
        EXPECT_EQ(path_walks.at(path_enumerator_of(class_name)), "get_all_binds_to_references") << class_name;
    // Names, unlike instances, have no row for these.
    for (const char* class_name : {"ZANTO_RemoteIPPort", "ZANTO_SANFCIPEndpoint", "ZANTO_FCPortProtocolEndPoint",
                                   "ZANTO_SwitchHostedIPAccessPoint"})
        EXPECT_EQ(path_walks.at(path_enumerator_of(class_name)), "get_all_binds_to_references") << class_name;
}

TEST(EnumerationRoutes, CaseDoesNotMatter) {
    EXPECT_EQ(path_enumerator_of("zanto_fcipPROTOCOLendpoint"), get_all_fcip_pe_references);
    EXPECT_EQ(instance_enumerator_of("ZANTO_LANENDPOINT"), get_all_lan_endpoint_instances);
    EXPECT_EQ(instance_enumerator_of("zanto_fcportprotocolendpoint"), nullptr);
}

} // namespace
