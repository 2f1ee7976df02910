// The four operations of the association MI: their frames and their routes.
#include "provider/mi/association_operations.h"

#include "provider/mi/association_routes.h"
#include "tests/provider/associations/association_test.h"

namespace {

using namespace test;

struct OperationRow {
    Operation operation;
    const char* name;
    const char* blank; ///< before the line end of the found-key line
    const char* no_key;
    std::size_t no_key_length;
};

constexpr OperationRow operations[] = {
    {Operation::associators, "FCIP_Associators", "", "associators can't find key\n", 27},
    {Operation::associator_names, "FCIP_AssociatorNames", "", "associator names can't find key\n", 32},
    {Operation::references, "FCIP_References", " ", "references can't find key\n", 26},
    {Operation::reference_names, "FCIP_ReferenceNames", " ", "references names can't find key\n", 32},
};

std::string entering(const OperationRow& row) {
    return std::string("Entering ") + row.name + "\n";
}

std::string exiting(const OperationRow& row) {
    return std::string("Exiting ") + row.name + "\n";
}

class Operations : public AssociationTest {
  protected:
    void expect_no_key(const OperationRow& row, const cmpihost::Object& path) {
        SCOPED_TRACE(row.name + std::string(" ") + path.class_name);
        const auto answer = walk(row.operation, path, "ZANTO_FCIPTCPEndpoint");
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, "invalid key name");
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(trace, entering(row) + row.no_key);
        EXPECT_FALSE(answer.done);
    }
};

TEST_F(Operations, APathWithoutItsKeyIsAnsweredInvalidKeyName) {
    for (const OperationRow& row : operations) {
        EXPECT_EQ(std::string(row.no_key).size(), row.no_key_length);
        expect_no_key(row, path_of("ZANTO_FCIPProtocolEndPoint"));
        expect_no_key(row, path_of("ZANTO_FCIPProtocolEndPoint", {{"InstanceID", "3"}}));
        expect_no_key(row, path_of("ZANTO_LogicalComputerSystem", {{"Name", "VSAN0001"}}));
        expect_no_key(row, path_of("ZANTO_TCPStatisticalData", {{"InstanceID", "3"}}));
        expect_no_key(row, path_of("ZANTO_NoSuchClass", {{"Name", "3"}}));
    }
}

TEST_F(Operations, WithoutTheKeyTheLockIsNotTaken) {
    // Taken here, the lock would never be had again by the operation.
    const fcip::platform_lock lock;
    for (const OperationRow& row : operations)
        expect_no_key(row, path_of("ZANTO_FCIPProtocolEndPoint"));
}

TEST_F(Operations, TheFoundKeyIsPrintedAndTheOperationExits) {
    for (const OperationRow& row : operations) {
        const auto answer = walk(row.operation, source("ZANTO_FCIPSettings").path(), "ZANTO_NoSuchAssociation");
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_FALSE(answer.done);
        EXPECT_TRUE(trace.starts_with(entering(row) + "\tfound key InstanceID : 16777218" + row.blank +
                                      "\nEntering get_fcip_settings_"))
            << trace;
        EXPECT_TRUE(trace.ends_with(exiting(row)));
    }
}

TEST_F(Operations, ASourceClassWithoutMemberReturnsNothingAndExits) {
    for (const OperationRow& row : operations) {
        const auto answer =
            walk(row.operation, path_of("ZANTO_FCIPPEBasedOn", {{"GroupComponent", "x"}}), "ZANTO_FCIPPEBasedOn");
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(trace, entering(row) + "\tfound key GroupComponent : x" + row.blank + "\n" + exiting(row));
    }
}

TEST_F(Operations, AKeyThatIsNoStringGoesOnAsAnEmptyText) {
    for (const OperationRow& row : operations) {
        cmpihost::Object path = path_of("ZANTO_FCIPProtocolEndPoint");
        path.keys.push_back({"Name", "uint32", {std::uint64_t{3}}});
        const auto answer = walk(row.operation, path, "ZANTO_FCIPTCPEndpoint");
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(trace.find("found key"), std::string::npos);
        EXPECT_TRUE(trace.starts_with(entering(row) + "Entering get_fcip_pe_")) << trace;
        EXPECT_TRUE(trace.ends_with(exiting(row)));
    }
}

TEST_F(Operations, AFailureOfTheMemberDoesNotChangeTheStatus) {
    the_switch().profiles.clear();
    for (const OperationRow& row : operations) {
        const auto answer = walk(row.operation, source("ZANTO_TCPProtocolEndPoint").path(), "ZANTO_TCPIPEndpoint");
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_TRUE(answer.objects.empty());
        const bool references = row.operation == Operation::references || row.operation == Operation::reference_names;
        EXPECT_EQ(answer.null_results, references ? 0u : 1u); // associators hand on what the builder gave
        EXPECT_TRUE(trace.ends_with(exiting(row)));
    }
}

TEST_F(Operations, AMissingMessageStringLeavesTheStatusOk) {
    for (const OperationRow& row : operations) {
        cmpihost::Request request;
        request.operation = row.operation;
        request.path = path_of("ZANTO_FCIPProtocolEndPoint");
        // The class name is the first string that is made, the message the second and last.
        const auto without = captured([&] { return cmpihost::run(provider, request, 2); });
        EXPECT_EQ(without.rc, 0);
        EXPECT_EQ(without.message, std::nullopt);
        EXPECT_TRUE(trace.ends_with(row.no_key)) << trace;
        EXPECT_EQ(captured([&] { return cmpihost::run(provider, request, 3); }).message, "invalid key name");
    }
}

TEST_F(Operations, SourceClassesAreTakenInAnyCase) {
    for (const OperationRow& row : operations)
        for (const Source& from : sources()) {
            cmpihost::Object path = from.path();
            for (char& c : path.class_name)
                c = static_cast<char>(std::tolower(c));
            walk(row.operation, path, "ZANTO_NoSuchAssociation");
            const std::string lower = trace;
            walk(row.operation, from.path(), "ZANTO_NoSuchAssociation");
            EXPECT_EQ(lower, trace);
            EXPECT_NE(trace.find("Entering get_"), std::string::npos) << from.class_name;
        }
}

// ---------------------------------------------------------------------------------------------- routes

template <typename Route>
std::vector<std::pair<std::string, std::string>> named(std::span<const Route> routes) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const auto& route : routes) {
        std::string name = "nothing";
        for (const Member& member : members())
            if (const auto* function = std::get_if<decltype(route.serves)>(&member.function))
                if (*function == route.serves)
                    name = member.name;
        rows.emplace_back(route.class_name, name);
    }
    return rows;
}

using Routes = std::vector<std::pair<std::string, std::string>>;

TEST_F(Operations, RoutesOfAssociators) {
    EXPECT_EQ(named(fcip::associators_routes()),
              (Routes{{"ZANTO_FCIPProtocolEndPoint", "get_fcip_pe_associators"},
                      {"ZANTO_RemoteFCIPPort", "get_fcip_remote_pe_associators"},
                      {"ZANTO_IPProtocolEndPoint", "get_ip_pe_associators"},
                      {"ZANTO_RemoteIPServiceAccessPoint", "get_ip_remote_pe_associators"},
                      {"ZANTO_TCPProtocolEndPoint", "get_tcp_pe_associators"},
                      {"ZANTO_RemoteTCPPort", "get_tcp_remote_pe_associators"},
                      {"ZANTO_LanEndPoint", "get_lan_endpoint_associators"},
                      {"ZANTO_FCIPSettings", "get_fcip_settings_associators"},
                      {"ZANTO_IPSettings", "get_ip_setting_associators"},
                      {"ZANTO_TCPSettings", "get_tcp_setting_associators"},
                      {"ZANTO_EthernetPort", "get_eth_port_associators"},
                      {"ZANTO_EthernetPortStatistics", "get_eth_stat_associators"},
                      {"ZANTO_IpEndPointStatistics", "get_ip_stat_associators"},
                      {"ZANTO_TCPEndPointStatistics", "get_tcp_stat_associators"},
                      {"ZANTO_TCPStatisticalData", "get_tcp_statical_data_associators"},
                      {"ZANTO_FCIPProfile", "get_profile_associators"}}));
}

TEST_F(Operations, RoutesOfAssociatorNames) {
    EXPECT_EQ(named(fcip::associator_names_routes()),
              (Routes{{"ZANTO_FCIPProtocolEndPoint", "get_fcip_pe_associator_names"},
                      {"ZANTO_RemoteFCIPPort", "get_fcip_remote_pe_associator_names"},
                      {"ZANTO_RemoteIPServiceAccessPoint", "get_ip_remote_pe_associator_names"},
                      {"ZANTO_RemoteTCPPort", "get_tcp_remote_pe_associator_names"},
                      {"ZANTO_IPProtocolEndPoint", "get_ip_pe_associator_names"},
                      {"ZANTO_TCPProtocolEndPoint", "get_tcp_pe_associator_names"},
                      {"ZANTO_LanEndPoint", "get_lan_endpoint_associator_names"},
                      {"ZANTO_FCIPSettings", "get_fcip_settings_associator_names"},
                      {"ZANTO_IPSettings", "get_ip_setting_associator_names"},
                      {"ZANTO_TCPSettings", "get_tcp_setting_associator_names"},
                      {"ZANTO_EthernetPort", "get_eth_port_associator_names"},
                      {"ZANTO_EthernetPortStatistics", "get_eth_stat_associator_names"},
                      {"ZANTO_IpEndPointStatistics", "get_ip_stat_associator_names"},
                      {"ZANTO_TCPEndPointStatistics", "get_tcp_stat_associator_names"},
                      {"ZANTO_FCIPProfile", "get_profile_associator_names"}}));
}

TEST_F(Operations, RoutesOfReferences) {
    EXPECT_EQ(named(fcip::references_routes()),
              (Routes{{"ZANTO_FCIPProtocolEndpoint", "get_fcip_pe_references"},
                      {"ZANTO_RemoteFCIPPort", "get_fcip_remote_pe_references"},
                      {"ZANTO_IPProtocolEndpoint", "get_ip_pe_references"},
                      {"ZANTO_RemoteIPServiceAccessPoint", "get_ip_remote_pe_references"},
                      {"ZANTO_TCPProtocolEndpoint", "get_tcp_pe_references"},
                      {"ZANTO_RemoteTCPPort", "get_tcp_remote_pe_references"},
                      {"ZANTO_FCIPSettings", "get_fcip_settings_references"},
                      {"ZANTO_IPSettings", "get_ip_settings_references"},
                      {"ZANTO_TCPSettings", "get_tcp_settings_references"},
                      {"ZANTO_FCIPProfile", "get_profile_references"},
                      {"ZANTO_LanEndpoint", "get_lan_endpoint_references"},
                      {"ZANTO_IPEndpointStatistics", "get_ip_stat_references"},
                      {"ZANTO_TCPEndpointStatistics", "get_tcp_stat_references"},
                      {"ZANTO_EthernetPort", "get_eth_port_references"},
                      {"ZANTO_EthernetPortStatistics", "get_eth_stat_references"}}));
}

TEST_F(Operations, ReferenceNamesOfRemoteClassesGoToTheLocalMembers) {
    EXPECT_EQ(named(fcip::reference_names_routes()),
              (Routes{{"ZANTO_FCIPProtocolEndpoint", "get_fcip_pe_reference_names"},
                      {"ZANTO_RemoteFCIPPort", "get_ip_pe_reference_names"},
                      {"ZANTO_IPProtocolEndpoint", "get_ip_pe_reference_names"},
                      {"ZANTO_RemoteIPServiceAccessPoint", "get_ip_pe_reference_names"},
                      {"ZANTO_TCPProtocolEndpoint", "get_tcp_pe_reference_names"},
                      {"ZANTO_RemoteTCPPort", "get_tcp_pe_reference_names"},
                      {"ZANTO_LanEndpoint", "get_lan_endpoint_reference_names"},
                      {"ZANTO_IPEndpointStatistics", "get_ip_stat_reference_names"},
                      {"ZANTO_TCPEndpointStatistics", "get_tcp_stat_reference_names"},
                      {"ZANTO_FCIPSettings", "get_fcip_settings_reference_names"},
                      {"ZANTO_IPSettings", "get_ip_settings_reference_names"},
                      {"ZANTO_TCPSettings", "get_tcp_settings_reference_names"},
                      {"ZANTO_EthernetPort", "get_eth_port_reference_names"},
                      {"ZANTO_EthernetPortStatistics", "get_eth_stat_reference_names"},
                      {"ZANTO_LogicalComputerSystem", "nothing"},
                      {"ZANTO_FCIPProfile", "get_profile_reference_names"}}));
}

} // namespace
