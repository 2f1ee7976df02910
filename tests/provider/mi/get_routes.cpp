// Which lookup and which builder serve a get: FCIP_GetInstance's table, row by row, those that no key reaches included.
#include "provider/mi/get_routes.h"

#include "provider/classes/link_classes.h"
#include "provider/mi/class_catalogue.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace fcip;

const std::map<link_instance_builder*, std::string> builders = {
    {fcip_pe_build_instance, "fcip_pe_build_instance"},
    {fcip_remote_pe_build_instance, "fcip_remote_pe_build_instance"},
    {ip_pe_build_instance, "ip_pe_build_instance"},
    {ip_remote_pe_build_instance, "ip_remote_pe_build_instance"},
    {tcp_remote_pe_build_instance, "tcp_remote_pe_build_instance"},
    {tcp_pe_build_instance, "tcp_pe_build_instance"},
    {fcip_settings_build_instance, "fcip_settings_build_instance"},
    {ip_settings_build_instance, "ip_settings_build_instance"},
    {tcp_settings_build_instance, "tcp_settings_build_instance"},
    {ip_statistics_build_instance, "ip_statistics_build_instance"},
};

const std::map<association_rebuilder*, std::string> rebuilders = {
    {get_ant_dep_instance, "get_ant_dep_instance"},
    {get_group_part_instance, "get_group_part_instance"},
    {get_managed_setting_instance, "get_managed_setting_instance"},
    {get_managed_stats_instance, "get_managed_stats_instance"},
};

/// Class, lookup mode, and what answers. "its own" is a function of that one row.
using row = std::array<std::string, 3>;

row row_of(const class_row<get_route>& at) {
    const auto& [class_name, route] = at;
    EXPECT_EQ(route.fixed_class, nullptr) << class_name;
    EXPECT_LE((route.build != nullptr) + (route.get != nullptr) + (route.rebuild != nullptr), 1) << class_name;
    if (route.build != nullptr)
        return {class_name, std::to_string(static_cast<int>(route.mode)), builders.at(route.build)};
    if (route.rebuild != nullptr)
        return {class_name, "-", rebuilders.at(route.rebuild)};
    return {class_name, "-", route.get == nullptr ? "nothing" : "its own"};
}

const std::vector<row> expected = {
    {"ZANTO_FCIPProtocolEndPoint", "1", "fcip_pe_build_instance"},
    {"ZANTO_RemoteFCIPPort", "6", "fcip_remote_pe_build_instance"},
    {"ZANTO_IPProtocolEndPoint", "2", "ip_pe_build_instance"},
    {"ZANTO_RemoteIPServiceAccessPoint", "6", "ip_remote_pe_build_instance"},
    {"ZANTO_RemoteTCPPort", "7", "tcp_remote_pe_build_instance"},
    {"ZANTO_TCPProtocolEndPoint", "2", "tcp_pe_build_instance"},
    {"ZANTO_FCIPSettings", "2", "fcip_settings_build_instance"},
    {"ZANTO_IPSettings", "2", "ip_settings_build_instance"},
    {"ZANTO_TCPSettings", "2", "tcp_settings_build_instance"},
    {"ZANTO_IPEndPointStatistics", "2", "ip_statistics_build_instance"},
    {"ZANTO_TCPEndPointStatistics", "-", "its own"},
    {"ZANTO_EthernetPortStatistics", "-", "its own"},
    {"ZANTO_FCIPProfile", "-", "its own"},
    {"ZANTO_LANEndPoint", "4", "ip_pe_build_instance"},
    {"ZANTO_TCPStatisticalData", "2", "ip_pe_build_instance"},
    {"ZANTO_RemoteIPPort", "2", "ip_pe_build_instance"},
    {"ZANTO_SANFCIPEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_SANIPEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_FCIPTCPEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_TCPIPEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_SANTCPEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_IPEthernetEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_EthernetPortProtocolEndpoint", "-", "get_ant_dep_instance"},
    {"ZANTO_FCPortProtocolEndPoint", "-", "nothing"},
    {"ZANTO_SwitchHostedFCIPAccessPoint", "-", "get_ant_dep_instance"},
    {"ZANTO_SwitchHostedIPAccessPoint", "-", "get_ant_dep_instance"},
    {"ZANTO_SwitchHostedTCPAccessPoint", "-", "get_ant_dep_instance"},
    {"ZANTO_FCIPPEBasedOn", "-", "get_group_part_instance"},
    {"ZANTO_FCIPElementSettingData", "-", "get_managed_setting_instance"},
    {"ZANTO_TCPElementSettingData", "-", "get_managed_setting_instance"},
    {"ZANTO_IPElementSettingData", "-", "get_managed_setting_instance"},
    {"ZANTO_IPEndPointStatisticalData", "-", "get_managed_stats_instance"},
    {"ZANTO_EthernetPortStatisticalData", "-", "get_managed_stats_instance"},
};

TEST(GetRoutes, ClassesLookupsAndBuildersInTestOrder) {
    std::vector<row> actual;
    for (const auto& route : get_instance_routes())
        actual.push_back(row_of(route));
    EXPECT_EQ(actual, expected);
}

TEST(GetRoutes, RowsThatNoKeyReachesAreKept) {
    std::vector<std::string> unreached;
    for (const auto& route : get_instance_routes())
        if (row_for(class_keys(), route.class_name) == nullptr)
            unreached.emplace_back(route.class_name);
    EXPECT_EQ(unreached,
              (std::vector<std::string>{"ZANTO_TCPStatisticalData", "ZANTO_RemoteIPPort", "ZANTO_IPEthernetEndpoint",
                                        "ZANTO_EthernetPortProtocolEndpoint", "ZANTO_FCPortProtocolEndPoint",
                                        "ZANTO_SwitchHostedFCIPAccessPoint", "ZANTO_SwitchHostedIPAccessPoint",
                                        "ZANTO_SwitchHostedTCPAccessPoint", "ZANTO_IPEndPointStatisticalData"}));
}

TEST(GetRoutes, FunctionsOfOneRowAreNotShared) {
    std::set<get_function*> own;
    for (const auto& route : get_instance_routes()) {
        if (route.serves.get != nullptr) {
            EXPECT_TRUE(own.insert(route.serves.get).second) << route.class_name;
        }
    }
    EXPECT_EQ(own.size(), 3u);
}

} // namespace
