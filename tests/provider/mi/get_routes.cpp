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

const std::map<get_function*, std::string> association_functions = {
    {get_dependency, "get_dependency"},
    {get_group_part, "get_group_part"},
    {get_managed_setting, "get_managed_setting"},
    {get_managed_stats, "get_managed_stats"},
};

/// Class, lookup mode, and what answers. "its own" is a function of that one row.
using row = std::array<std::string, 3>;

row row_of(const class_row<get_route>& at) {
    const auto& [class_name, route] = at;
    EXPECT_EQ(route.fixed_class, nullptr) << class_name;
    EXPECT_TRUE(route.build == nullptr || route.get == nullptr) << class_name;
    if (route.build != nullptr)
        return {class_name, std::to_string(static_cast<int>(route.mode)), builders.at(route.build)};
    if (route.get == nullptr)
        return {class_name, "-", "nothing"};
    const auto association = association_functions.find(route.get);
    return {class_name, "-", association == association_functions.end() ? "its own" : association->second};
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
    {"ZANTO_SANFCIPEndpoint", "-", "get_dependency"},
    {"ZANTO_SANIPEndpoint", "-", "get_dependency"},
    {"ZANTO_FCIPTCPEndpoint", "-", "get_dependency"},
    {"ZANTO_TCPIPEndpoint", "-", "get_dependency"},
    {"ZANTO_SANTCPEndpoint", "-", "get_dependency"},
    {"ZANTO_IPEthernetEndpoint", "-", "get_dependency"},
    {"ZANTO_EthernetPortProtocolEndpoint", "-", "get_dependency"},
    {"ZANTO_FCPortProtocolEndPoint", "-", "nothing"},
    {"ZANTO_SwitchHostedFCIPAccessPoint", "-", "get_dependency"},
    {"ZANTO_SwitchHostedIPAccessPoint", "-", "get_dependency"},
    {"ZANTO_SwitchHostedTCPAccessPoint", "-", "get_dependency"},
    {"ZANTO_FCIPPEBasedOn", "-", "get_group_part"},
    {"ZANTO_FCIPElementSettingData", "-", "get_managed_setting"},
    {"ZANTO_TCPElementSettingData", "-", "get_managed_setting"},
    {"ZANTO_IPElementSettingData", "-", "get_managed_setting"},
    {"ZANTO_IPEndPointStatisticalData", "-", "get_managed_stats"},
    {"ZANTO_EthernetPortStatisticalData", "-", "get_managed_stats"},
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
        if (route.serves.get != nullptr && !association_functions.contains(route.serves.get)) {
            EXPECT_TRUE(own.insert(route.serves.get).second) << route.class_name;
        }
    }
    EXPECT_EQ(own.size(), 3u);
}

} // namespace
