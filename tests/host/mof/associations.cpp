// What stands in the roles of the provider's associations, held against their MOF; and where the answers deviate from
// it.
#include "host/mof/check.h"
#include "tests/host/mof/mof_files.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string_view>

namespace cmpihost::mof {
namespace {

/// A pair of roles: first, second.
using Roles = std::array<std::string_view, 2>;

constexpr Roles dependency{"Antecedent", "Dependent"};
constexpr Roles group_part{"GroupComponent", "PartComponent"};
constexpr Roles stats{"ManagedElement", "Stats"};
constexpr Roles setting{"ManagedElement", "SettingData"};

/// Which classes stand in the two roles of an association, in the order of the roles.
struct Ends {
    const char* association;
    Roles roles;
    const char* first;
    const char* second;
};

const Ends ends[] = {
    {"ZANTO_FCIPElementSettingData", setting, "ZANTO_FCIPProtocolEndpoint", "ZANTO_FCIPSettings"},
    {"ZANTO_FCIPElementSettingData", setting, "ZANTO_FCIPSettings", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_IPElementSettingData", setting, "ZANTO_IPProtocolEndpoint", "ZANTO_IPSettings"},
    {"ZANTO_IPElementSettingData", setting, "ZANTO_TCPSettings", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_IPElementSettingData", dependency, "ZANTO_EthernetPort", "ZANTO_LANEndpoint"},
    {"ZANTO_TCPElementSettingData", setting, "ZANTO_TCPProtocolEndpoint", "ZANTO_TCPSettings"},
    {"ZANTO_TCPElementSettingData", setting, "ZANTO_TCPSettings", "ZANTO_TCPProtocolEndPoint"},
    {"ZANTO_FCIPTCPEndpoint", dependency, "ZANTO_FCIPProtocolEndpoint", "ZANTO_TCPProtocolEndpoint"},
    {"ZANTO_FCIPTCPEndpoint", dependency, "ZANTO_TCPProtocolEndPoint", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_TCPIPEndpoint", dependency, "ZANTO_IPProtocolEndpoint", "ZANTO_TCPProtocolEndpoint"},
    {"ZANTO_TCPIPEndpoint", dependency, "ZANTO_TCPProtocolEndPoint", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_SANFCIPEndpoint", dependency, "ZANTO_FCIPProtocolEndpoint", "ZANTO_RemoteFCIPPort"},
    {"ZANTO_SANFCIPEndpoint", dependency, "ZANTO_RemoteFCIPPort", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_SANIPEndPoint", dependency, "ZANTO_IPProtocolEndpoint", "ZANTO_RemoteIPServiceAccessPoint"},
    {"ZANTO_SANIPEndpoint", dependency, "ZANTO_RemoteIPPort", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_SANTCPEndpoint", dependency, "ZANTO_TCPProtocolEndpoint", "ZANTO_RemoteTCPPort"},
    {"ZANTO_FCPortProtocolEndPoint", dependency, "ZANTO_FCPort", "ZANTO_FCIPProtocolEndpoint"},
    {"ZANTO_SwitchHostedFCIPAccessPoint", dependency, "ZANTO_LogicalComputerSystem", "ZANTO_FCIPProtocolEndpoint"},
    {"ZANTO_SwitchHostedIPAccessPoint", dependency, "ZANTO_IPProtocolEndpoint", "ZANTO_LogicalComputerSystem"},
    {"ZANTO_SwitchHostedIPAccessPoint", dependency, "ZANTO_LogicalComputerSystem", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_SwitchHostedTCPAccessPoint", dependency, "ZANTO_TCPProtocolEndpoint", "ZANTO_LogicalComputerSystem"},
    {"ZANTO_SwitchHostedTCPAccessPoint", dependency, "ZANTO_LogicalComputerSystem", "ZANTO_TCPProtocolEndPoint"},
    {"ZANTO_FCIPPEBasedOn", group_part, "ZANTO_FCIPProfile", "ZANTO_FCIPProtocolEndpoint"},
    {"ZANTO_FCIPPEBasedOn", dependency, "ZANTO_FCIPProfile", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_IPEthernetEndpoint", dependency, "ZANTO_EthernetPort", "ZANTO_IPProtocolEndpoint"},
    {"ZANTO_IPEthernetEndpoint", dependency, "ZANTO_IPProtocolEndPoint", "ZANTO_LANEndpoint"},
    {"ZANTO_IPEthernetEndpoint", dependency, "ZANTO_LANEndPoint", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_EthernetPortProtocolEndpoint", dependency, "ZANTO_EthernetPort", "ZANTO_LANEndpoint"},
    {"ZANTO_IPEndPointStatisticalData", stats, "ZANTO_IPEndpointStatistics", "ZANTO_IPProtocolEndpoint"},
    {"ZANTO_IPEndpointStatisticalData", stats, "ZANTO_IPProtocolEndPoint", "ZANTO_IPEndpointStatistics"},
    {"ZANTO_TCPEndPointStatisticalData", stats, "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndPointStatistics"},
    {"ZANTO_TCPEndPointStatisticalData", stats, "ZANTO_TCPEndPointStatistics", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_TCPEndPointStatisticalData", stats, "ZANTO_FCIPProtocolEndPoint", "ZANTO_TCPEndPointStatistics"},
    {"ZANTO_EthernetPortStatisticalData", stats, "ZANTO_EthernetPort", "ZANTO_EthernetPortStatistics"},
};

/// A path of a class with its keys, each a string.
Property end(std::string_view role, const char* class_name) {
    Object path{class_name, "root/cimv2", std::nullopt, {}, {}};
    for (const PropertyDeclaration& property : provider_schema().find(class_name)->properties)
        if (property.key)
            path.keys.push_back({property.name, "string", {std::string("x")}});
    return {std::string(role), "reference", {std::make_shared<const Object>(path)}};
}

std::vector<Property> values_of(const Ends& row) {
    std::vector<Property> values = {end(row.roles[0], row.first), end(row.roles[1], row.second)};
    if (row.roles == setting)
        for (const char* name : {"IsDefault", "IsCurrent"})
            values.push_back({name, "uint16", {std::uint64_t{1}}});
    return values;
}

std::vector<std::string> unexpected_in(const Object& object, Kind kind) {
    return known_deviations().unexpected(check(provider_schema(), object, kind));
}

TEST(MofEnds, AreAdmittedInPathsAndInstances) {
    for (const Ends& row : ends) {
        SCOPED_TRACE(std::string(row.association) + ' ' + row.first + ' ' + row.second);
        ASSERT_NE(provider_schema().find(row.first), nullptr);
        ASSERT_NE(provider_schema().find(row.second), nullptr);
        const Object path{row.association, "root/cimv2", "switch", values_of(row), {}};
        EXPECT_EQ(unexpected_in(path, Kind::path), std::vector<std::string>{});
        const Object instance{row.association, "root/cimv2", "switch", {}, values_of(row)};
        EXPECT_EQ(unexpected_in(instance, Kind::instance), std::vector<std::string>{});
    }
}

TEST(MofEnds, AreListedForEveryAssociation) {
    std::set<std::string> tested;
    for (const Ends& row : ends)
        tested.insert(provider_schema().find(row.association)->name);
    for (const ClassDeclaration& declaration : provider_schema().classes()) {
        if (is_ours(declaration)) {
            EXPECT_EQ(tested.erase(declaration.name), declaration.association ? 1u : 0u) << declaration.name;
        }
    }
    EXPECT_EQ(tested, std::set<std::string>{});
}

// ---------------------------------------------------------------------------------------------- known deviations

TEST(MofDeviations, CoverAHostedAccessPointOfALanEndpoint) {
    const Ends row{"CIM_HostedAccessPoint", dependency, "ZANTO_FCIPProtocolEndPoint", "ZANTO_LANEndpoint"};
    const Object path{row.association, "root/cimv2", "switch", values_of(row), {}};
    const auto findings = check(provider_schema(), path, Kind::path);
    EXPECT_EQ(findings.size(), 1u);
    EXPECT_EQ(known_deviations().unexpected(findings), std::vector<std::string>{});
}

TEST(MofDeviations, CoverSettingsThatBearAnEndpointsKeys) {
    for (const char* association : {"ZANTO_IPElementSettingData", "ZANTO_TCPElementSettingData"}) {
        Object settings = *std::get<Value::Reference>(end("", "ZANTO_IPProtocolEndPoint").value.data);
        settings.class_name = "ZANTO_TCPSettings";
        Object path{association, "root/cimv2", "switch", {}, {}};
        path.keys = values_of({association, setting, "ZANTO_TCPSettings", "ZANTO_IPProtocolEndPoint"});
        path.keys[0].value.data = std::make_shared<const Object>(settings);
        std::size_t own_keys = 0; // of the association, where it declares none
        const auto findings = check(provider_schema(), path, Kind::path);
        for (const std::string& finding : findings)
            own_keys += finding.find(" > ") == std::string::npos ? 1 : 0;
        EXPECT_EQ(findings.size() - own_keys, 5u);
        EXPECT_EQ(own_keys, std::string_view(association) == "ZANTO_IPElementSettingData" ? 4u : 0u);
        EXPECT_EQ(known_deviations().unexpected(findings), std::vector<std::string>{});
    }
}

TEST(MofDeviations, NameDeclaredClassesInTheirOwnSpelling) {
    const auto& findings = known_deviations().findings();
    EXPECT_FALSE(findings.empty());
    for (const std::string& finding : findings) {
        if (finding.ends_with(": no returnDone")) // of an operation
            continue;
        const std::string class_name = finding.substr(0, finding.find_first_of(".:"));
        const ClassDeclaration* declaration = provider_schema().find(class_name);
        const bool unknown = finding.ends_with(": class is not declared");
        EXPECT_EQ(declaration == nullptr, unknown) << finding;
        if (declaration) {
            EXPECT_EQ(declaration->name, class_name);
        }
    }
}

} // namespace
} // namespace cmpihost::mof
