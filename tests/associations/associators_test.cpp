// Associators and AssociatorNames, row by row: each row of the table below is one partner of a source object, as an
// instance and as a path.
#include "association_test.h"

#include "classes/fcip/fcip_profile.h"
#include "classes/fcip/fcip_protocol_endpoint.h"
#include "classes/fcip/fcip_settings.h"
#include "classes/fcip/ip_settings.h"
#include "classes/fcip/remote_fcip_port.h"
#include "classes/fcip/tcp_settings.h"
#include "classes/net/ethernet_port_statistics.h"
#include "classes/net/ip_protocol_endpoint.h"
#include "classes/net/ip_statistics.h"
#include "classes/net/lan_endpoint.h"
#include "classes/net/remote_ip_service_access_point.h"
#include "classes/net/remote_tcp_port.h"
#include "classes/net/tcp_protocol_endpoint.h"
#include "classes/net/tcp_statistics.h"
#include "platform/ports.h"
#include "platform/systems.h"

namespace {

using namespace test;

constexpr const char* ns = "root/cimv2";

/// Builds the instance that Associators must answer, property for property.
using Build = std::function<CMPIInstance*()>;

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

struct AssociatorRow {
    const char* member; ///< without its ending
    int location;
    const char* source;
    const char* asked; ///< in any mix of case
    const char* key;
    Build build;                    ///< the answer of Associators
    const char* identity;           ///< one property of it
    const char* value;              ///< and its value
    std::vector<std::string> names; ///< the answer of AssociatorNames
};

// clang-format off
std::vector<AssociatorRow> rows_of_endpoints() {
    const auto fcip_3_path = fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint");
    const auto ip_3_path = ip_endpoint_3("ZANTO_IPProtocolEndPoint");
    const auto tcp_3_path = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    const auto system = vsan_1("ZANTO_LogicalComputerSystem");
    const auto fcip_3_instance = of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_3);
    const auto ip_3_instance = of_link(fcip::ip_pe_build_instance, "ZANTO_IPProtocolEndPoint", tunnel_3);
    const auto tcp_3_instance = of_link(fcip::tcp_pe_build_instance, "ZANTO_TCPProtocolEndPoint", tunnel_3);
    return {
        {"get_fcip_pe", 1, "ZANTO_FCIPProtocolEndPoint", "ZANTO_fcipElementSettingData", key::tunnel,
            of_link(fcip::fcip_settings_build_instance, "ZANTO_FCIPSettings", tunnel_3), "InstanceID", "16777218",
            {instance_of_tunnel_3("ZANTO_FCIPSettings")}},
        {"get_fcip_pe", 2, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FciptcpEndpoint", key::tunnel,
            tcp_3_instance, "CreationClassName", "ZANTO_TCPProtocolEndPoint", {tcp_3_path}},
        {"get_fcip_pe", 3, "ZANTO_FCIPProtocolEndPoint", "ZANTO_SANFCIPEndPoint", key::tunnel,
            of_link(fcip::fcip_remote_pe_build_instance, "ZANTO_RemoteFCIPPort", tunnel_3), "Name", "4_192.168.100.101_10.1.1.1",
            {remote_fcip_port_3("ZANTO_RemoteFCIPPort")}},
        {"get_fcip_pe", 4, "ZANTO_FCIPProtocolEndPoint", "zanto_FCPortProtocolEndPoint", key::tunnel,
            of_port("ZANTO_FCPort", fcip_3), "DeviceID", "16777218", {fc_port_of_tunnel_3("ZANTO_FCPort")}},
        {"get_fcip_pe", 5, "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPpeBasedOn", key::tunnel,
            profile_instance, "InstanceID", "3", {profile_3("ZANTO_FCIPProfile")}},
        {"get_fcip_pe", 6, "ZANTO_FCIPProtocolEndPoint", "ZANTO_SwitchHostedFCIPAccesspoint", key::tunnel,
            system_instance, "Name", "VSAN0001", {system}},

        {"get_ip_pe", 1, "ZANTO_IPProtocolEndPoint", "zanto_ipelementsettingdata", key::if_index,
            of_link(fcip::ip_settings_build_instance, "ZANTO_IPSettings", tunnel_3), "InstanceID", "16777218",
            {instance_of_tunnel_3("ZANTO_IPSettings"), system}},
        {"get_ip_pe", 2, "ZANTO_IPProtocolEndPoint", "ZANTO_IPEndpointStatisticaldata", key::if_index,
            of_link(fcip::ip_statistics_build_instance, "ZANTO_IPEndPointStatistics", tunnel_3), "CreationClassName", "ZANTO_IPEndPointStatistics",
            {instance_of_tunnel_3("ZANTO_IPEndPointStatistics")}},
        {"get_ip_pe", 3, "ZANTO_IPProtocolEndPoint", "ZANTO_TCPIPENDPOINT", key::if_index,
            tcp_3_instance, "Name", "16777218", {tcp_3_path}},
        {"get_ip_pe", 4, "ZANTO_IPProtocolEndPoint", "ZANTO_IPEthernetEndPoint", key::if_index,
            of_port("ZANTO_EthernetPort", ethernet_1), "DeviceID", "-2097152000", {ethernet_port_1("ZANTO_EthernetPort")}},
        {"get_ip_pe", 5, "ZANTO_IPProtocolEndPoint", "ZANTO_SwitchHostedipAccessPoint", key::if_index,
            system_instance, "CreationClassName", "ZANTO_LogicalComputerSystem", {fcip_3_path}},
        {"get_ip_pe", 6, "ZANTO_IPProtocolEndPoint", "ZANTO_SANIPEndpoint", key::if_index,
            of_link(fcip::ip_remote_pe_build_instance, "ZANTO_RemoteIPServiceAccessPoint", tunnel_3), "Name", "0_192.168.100.101_10.1.1.1",
            {remote_ip_port_3("ZANTO_RemoteIPServiceAccessPoint")}},

        {"get_tcp_pe", 1, "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndpointStatisticalData", key::if_index,
            of_link(fcip::tcp_statistical_data_build_instance, "ZANTO_TCPStatisticalData", tunnel_3), "InstanceID", "3",
            {instance_of_tunnel_3("ZANTO_TCPEndPointStatistics")}},
        {"get_tcp_pe", 2, "ZANTO_TCPProtocolEndPoint", "ZANTO_fcipTCPEndpoint", key::if_index_only,
            fcip_3_instance, "Name", "3_10.1.1.1_192.168.100.101", {fcip_3_path}},
        {"get_tcp_pe", 3, "ZANTO_TCPProtocolEndPoint", "ZANTO_TcpIPEndpoint", key::if_index_only,
            ip_3_instance, "Name", "16777218_10.1.1.1_192.168.100.101", {ip_3_path}},
        {"get_tcp_pe", 4, "ZANTO_TCPProtocolEndPoint", "ZANTO_SwitchHostedTcpAccessPoint", key::if_index_only,
            system_instance, "Name", "VSAN0001", {physical_switch("ZANTO_PhysicalComputerSystem")}},
        {"get_tcp_pe", 5, "ZANTO_TCPProtocolEndPoint", "ZANTO_SanTCPEndpoint", key::if_index_only,
            of_link(fcip::tcp_remote_pe_build_instance, "ZANTO_RemoteTCPPort", tunnel_3), "Name", "0_16777218",
            {remote_tcp_port_3("ZANTO_RemoteTCPPort")}},
        {"get_tcp_pe", 6, "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPElementSettingdata", key::if_index_only,
            of_link(fcip::tcp_settings_build_instance, "ZANTO_TCPSettings", tunnel_3), "RetransmissionTimeoutMin", "200", {}},
    };
}

std::vector<AssociatorRow> rows_of_others() {
    const auto fcip_3_path = fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint");
    const auto ip_3_path = ip_endpoint_3("ZANTO_IPProtocolEndPoint");
    const auto tcp_3_path = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    const auto fcip_3_instance = of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_3);
    const auto ip_3_instance = of_link(fcip::ip_pe_build_instance, "ZANTO_IPProtocolEndPoint", tunnel_3);
    const auto tcp_3_instance = of_link(fcip::tcp_pe_build_instance, "ZANTO_TCPProtocolEndPoint", tunnel_3);
    return {
        {"get_fcip_remote_pe", 1, "ZANTO_RemoteFCIPPort", "ZANTO_SANfcipEndpoint", key::peer_address,
            fcip_3_instance, "TunnelID", "3", {fcip_3_path}},
        {"get_ip_remote_pe", 1, "ZANTO_RemoteIPServiceAccessPoint", "ZANTO_SANipEndpoint", key::peer_address,
            ip_3_instance, "IPv4Address", "10.1.1.1", {ip_3_path}},
        {"get_tcp_remote_pe", 1, "ZANTO_RemoteTCPPort", "ZANTO_SANtcpEndpoint", key::peer_if_index,
            tcp_3_instance, "RemotePortNumber", "3302", {tcp_3_path}},

        {"get_lan_endpoint", 1, "ZANTO_LanEndPoint", "ZANTO_ipEthernetEndpoint", key::ethernet,
            of_link(fcip::ip_pe_build_instance, "ZANTO_IPProtocolEndPoint", tunnel_7), "IPv6Address", "2001:db8::1",
            {ip_endpoint_7("ZANTO_IPProtocolEndPoint")}},
        {"get_lan_endpoint", 2, "ZANTO_LanEndPoint", "ZANTO_EthernetPortProtocolEndPoint", key::ethernet_token,
            of_port("ZANTO_EthernetPort", ethernet_2), "DeviceID", "-2096889856", {ethernet_port_2("ZANTO_EthernetPort")}},
        {"get_lan_endpoint", 3, "ZANTO_LanEndPoint", "CIM_hostedAccessPoint", key::if_index_only,
            of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_8), "TunnelID", "8",
            {fcip_endpoint_8("ZANTO_FCIPProtocolEndPoint")}},

        {"get_eth_port", 1, "ZANTO_EthernetPort", "ZANTO_EthernetPortprotocolEndpoint", key::number,
            lan_endpoint_instance, "Name", "-2096889856:02:00:00:aa:00:02", {lan_endpoint_2("ZANTO_LANEndPoint")}},
        {"get_eth_port", 2, "ZANTO_EthernetPort", "ZANTO_EthernetPortStatisticaldata", key::number,
            statistics_instance, "InstanceID", "-2096889856", {}},
        {"get_eth_stat", 1, "ZANTO_EthernetPortStatistics", "ZANTO_ethernetPortStatisticalData", key::number,
            of_port("ZANTO_EthernetPort", ethernet_2), "DeviceID", "-2096889856", {ethernet_port_2("ZANTO_EthernetPort")}},

        {"get_fcip_settings", 1, "ZANTO_FCIPSettings", "ZANTO_FCIPElementSettingdata", key::if_index_only,
            fcip_3_instance, "TunnelID", "3", {fcip_3_path}},
        {"get_ip_setting", 1, "ZANTO_IPSettings", "ZANTO_IPElementSettingdata", key::if_index_only,
            ip_3_instance, "Name", "16777218_10.1.1.1_192.168.100.101", {ip_3_path}},
        {"get_tcp_setting", 1, "ZANTO_TCPSettings", "ZANTO_tcpElementSettingData", key::if_index_only,
            tcp_3_instance, "Name", "16777218", {tcp_3_path}},
        {"get_ip_stat", 1, "ZANTO_IPEndPointStatistics", "ZANTO_IpEndPointStatisticalData", key::if_index_only,
            ip_3_instance, "Name", "16777218_10.1.1.1_192.168.100.101", {ip_3_path}},
        {"get_tcp_stat", 1, "ZANTO_TCPEndPointStatistics", "ZANTO_TcpEndPointStatisticalData", key::if_index_only,
            tcp_3_instance, "Name", "16777218", {tcp_3_path}},
        {"get_profile", 1, "ZANTO_FCIPProfile", "ZANTO_FCIPPEbasedOn", key::entity,
            of_link(fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", tunnel_1), "TunnelID", "1",
            {fcip_endpoint_1("ZANTO_FCIPProtocolEndPoint")}},
    };
}
// clang-format on

std::vector<AssociatorRow> associator_rows() {
    auto all = rows_of_endpoints();
    for (auto& row : rows_of_others())
        all.push_back(std::move(row));
    return all;
}

class Associators : public AssociationTest {
  protected:
    std::vector<std::string> names_of(const char* source_class, const char* asked) {
        return paths(walk(Operation::associator_names, source(source_class).path(), asked));
    }

    cmpihost::Answer of(const char* source_class, const char* asked) {
        return walk(Operation::associators, source(source_class).path(), asked);
    }

    void expect_trace(const AssociatorRow& row, const std::string& member, const std::string& operation) {
        const Source& from = source(row.source);
        const std::string asked = std::string("Association Class ") + row.asked + " \n";
        EXPECT_TRUE(reads_key(trace,
                              "Entering " + operation + "\n\tfound key " + from.key_name + " : " + from.key_value +
                                  "\nEntering " + member + "\n" +
                                  (row.member == std::string("get_ip_pe") ? asked : "") + " Function : " + member +
                                  " Line " + std::to_string(row.location) + " \n",
                              row.key))
            << trace;
        EXPECT_TRUE(trace.ends_with("Exiting " + member + "\nExiting " + operation + "\n")) << trace;
    }
};

TEST_F(Associators, EachRowAnswersTheFarEndsOwnInstance) {
    for (const AssociatorRow& row : associator_rows()) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        const auto answer = of(row.source, row.asked);
        ASSERT_EQ(answer.objects.size(), 1u) << trace;
        expect_trace(row, row.member + std::string("_associators"), "FCIP_Associators");
        EXPECT_EQ(values(answer, row.identity), std::vector<std::string>{row.value});
        const CMPIInstance* expected = call(row.build);
        ASSERT_NE(expected, nullptr);
        EXPECT_EQ(answer.objects[0], cmpihost::describe(expected));
        EXPECT_GE(answer.objects[0].properties.size(), 4u);
    }
}

TEST_F(Associators, EachRowNamesTheFarEnd) {
    for (const AssociatorRow& row : associator_rows()) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        EXPECT_EQ(names_of(row.source, row.asked), row.names);
        if (!row.names.empty())
            expect_trace(row, row.member + std::string("_associator_names"), "FCIP_AssociatorNames");
    }
}

TEST_F(Associators, PropertyListGoesToTheFarEndsBuilder) {
    for (const AssociatorRow& row : associator_rows()) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        cmpihost::Request request;
        request.operation = Operation::associators;
        request.path = source(row.source).path();
        request.assoc_class = row.asked;
        const auto whole = ask(request);
        request.properties = std::vector<std::string>{row.identity};
        const auto answer = ask(request);
        ASSERT_EQ(answer.objects.size(), 1u);
        ASSERT_EQ(whole.objects.size(), 1u);
        EXPECT_NE(answer.objects[0].property(row.identity), nullptr);
        EXPECT_LT(answer.objects[0].properties.size(), whole.objects[0].properties.size());
    }
}

TEST_F(Associators, ResultClassAndRolesAreIgnored) {
    for (const Operation operation : {Operation::associators, Operation::associator_names}) {
        cmpihost::Request request;
        request.operation = operation;
        request.path = source("ZANTO_FCIPProtocolEndPoint").path();
        request.assoc_class = "ZANTO_FCIPTCPEndpoint";
        request.result_class = "ZANTO_FCIPSettings";
        request.role = "Nobody";
        request.result_role = "Nothing";
        const auto answer = ask(request);
        ASSERT_EQ(answer.objects.size(), 1u);
        EXPECT_EQ(answer.objects[0].class_name, "ZANTO_TCPProtocolEndPoint");
    }
}

TEST_F(Associators, SanIpEndpointAnswersInAnyMixOfCase) {
    for (const char* asked : {"ZANTO_SANIPEndpoint", "ZANTO_SANIpEndPoint", "zanto_sanipendpoint"}) {
        EXPECT_EQ(of("ZANTO_IPProtocolEndPoint", asked).objects.at(0).class_name, "ZANTO_RemoteIPServiceAccessPoint");
        EXPECT_EQ(names_of("ZANTO_IPProtocolEndPoint", asked).size(), 1u);
    }
}

// ---------------------------------------------------------------------------------------------- deliberate oddities

TEST_F(Associators, NamesOfAnIpEndpointWithItsSettingsAreTwoPaths) {
    EXPECT_EQ(names_of("ZANTO_IPProtocolEndPoint", "ZANTO_IPElementSettingData"),
              (std::vector{instance_of_tunnel_3("ZANTO_IPSettings"), vsan_1("ZANTO_LogicalComputerSystem")}));
}

TEST_F(Associators, NamesOfAnIpEndpointAnswerTheSystemToAnyOtherName) {
    const std::vector system{vsan_1("ZANTO_LogicalComputerSystem")};
    for (const char* asked : {"ZANTO_NoSuchAssociation", "ZANTO_FCIPTCPEndpoint", "any other name", "", "*"}) {
        EXPECT_EQ(names_of("ZANTO_IPProtocolEndPoint", asked), system) << asked;
        EXPECT_NE(trace.find(" Function : get_ip_pe_associator_names Line 7 \nEntering get_fcip_link_entry_from\n"),
                  std::string::npos);
        EXPECT_TRUE(of("ZANTO_IPProtocolEndPoint", asked).objects.empty()) << asked;
    }
}

TEST_F(Associators, NamesOfAnIpEndpointAnswerTheFcipEndpointAsItsHost) {
    EXPECT_EQ(names_of("ZANTO_IPProtocolEndPoint", "ZANTO_SwitchHostedIPAccessPoint"),
              std::vector{fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint")});
    EXPECT_EQ(of("ZANTO_IPProtocolEndPoint", "ZANTO_SwitchHostedIPAccessPoint").objects.at(0).class_name,
              "ZANTO_LogicalComputerSystem");
}

TEST_F(Associators, NamesOfATcpEndpointAnswerThePhysicalSwitchAsItsHostAfterTheLookup) {
    EXPECT_EQ(names_of("ZANTO_TCPProtocolEndPoint", "ZANTO_SwitchHostedTCPAccessPoint"),
              std::vector{physical_switch("ZANTO_PhysicalComputerSystem")});
    EXPECT_NE(trace.find("Entering get_fcip_link_entry_from\n"), std::string::npos);
    EXPECT_EQ(of("ZANTO_TCPProtocolEndPoint", "ZANTO_SwitchHostedTCPAccessPoint").objects.at(0).class_name,
              "ZANTO_LogicalComputerSystem");
}

TEST_F(Associators, NamesOfATcpEndpointCallItsStatisticsByAnotherClass) {
    EXPECT_EQ(names_of("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndPointStatisticalData"),
              std::vector{instance_of_tunnel_3("ZANTO_TCPEndPointStatistics")});
    EXPECT_EQ(of("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndPointStatisticalData").objects.at(0).class_name,
              "ZANTO_TCPStatisticalData");
}

TEST_F(Associators, NamesOfATcpEndpointDoNotServeItsSettings) {
    EXPECT_TRUE(names_of("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPElementSettingData").empty());
    EXPECT_TRUE(trace.ends_with("Entering get_tcp_pe_associator_names\nExiting get_tcp_pe_associator_names\n"
                                "Exiting FCIP_AssociatorNames\n"));
    EXPECT_EQ(of("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPElementSettingData").objects.size(), 1u);
}

TEST_F(Associators, NamesOfAnEthernetPortAnswerTheStatisticsClassInsteadOfTheAssociation) {
    EXPECT_EQ(names_of("ZANTO_EthernetPort", "ZANTO_EthernetPortstatistics"),
              std::vector{statistics_of_ethernet_2("ZANTO_EthernetPortStatistics")});
    EXPECT_NE(trace.find(" Function : get_eth_port_associator_names Line 2 \n"), std::string::npos);
    EXPECT_TRUE(names_of("ZANTO_EthernetPort", "ZANTO_EthernetPortStatisticalData").empty());
    EXPECT_TRUE(of("ZANTO_EthernetPort", "ZANTO_EthernetPortStatistics").objects.empty());
    EXPECT_EQ(of("ZANTO_EthernetPort", "ZANTO_EthernetPortStatisticalData").objects.size(), 1u);
}

TEST_F(Associators, OfTcpStatisticalDataAnswerTheNameOfAStatisticsClassOnly) {
    const auto answer = run(fcip::get_tcp_statical_data_associators, "3", "ZANTO_tcpEndPointStatistics").answer;
    EXPECT_TRUE(reads_key(trace,
                          "Entering get_tcp_statical_data_associators\n"
                          " Function : get_tcp_statical_data_associators Line 1 \n",
                          key::entity))
        << trace;
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(answer.objects[0],
              cmpihost::describe(call(of_link(fcip::tcp_pe_build_instance, "ZANTO_TCPProtocolEndPoint", tunnel_1))));
    for (const std::string& association : association_classes())
        EXPECT_TRUE(run(fcip::get_tcp_statical_data_associators, "3", association.c_str()).answer.objects.empty())
            << association;
}

TEST_F(Associators, NamesOfTcpStatisticalDataAreMadeAndNeverReturned) {
    const auto outcome = run(fcip::get_tcp_statical_data_associator_names, "3", "ZANTO_TCPEndPointStatistics");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.answer.objects.empty());
    EXPECT_EQ(outcome.answer.null_results, 0u);
    EXPECT_GT(scope.objects_made(), 0u);
    EXPECT_TRUE(reads_key(trace,
                          "Entering get_tcp_statical_data_associator_names\n"
                          " Function : get_tcp_statical_data_associator_names Line 1 \n",
                          key::entity))
        << trace;
    EXPECT_TRUE(trace.ends_with("Exiting get_tcp_statical_data_associator_names\n"));
    for (const std::string& association : association_classes())
        EXPECT_TRUE(run(fcip::get_tcp_statical_data_associator_names, "3", association.c_str()).answer.objects.empty());
}

TEST_F(Associators, TcpStatisticalDataIsNotReachedAsASource) {
    for (const Operation operation :
         {Operation::associators, Operation::associator_names, Operation::references, Operation::reference_names}) {
        const auto answer =
            walk(operation, path_of("ZANTO_TCPStatisticalData", {{"InstanceID", "3"}}), "ZANTO_TCPEndPointStatistics");
        EXPECT_EQ(answer.message, "invalid key name");
        EXPECT_TRUE(answer.objects.empty());
    }
}

TEST_F(Associators, OfATcpEndpointReadItsKeyInTwoWays) {
    // The token "16777218" is found by the first way, a number at the very beginning by the second.
    const auto by_token = run(fcip::get_tcp_pe_associators, "_16777218", "ZANTO_TCPEndPointStatisticalData").answer;
    EXPECT_EQ(values(by_token, "InstanceID"), std::vector<std::string>{"3"});
    const auto by_number = run(fcip::get_tcp_pe_associators, "_16777218", "ZANTO_FCIPTCPEndpoint").answer;
    EXPECT_TRUE(by_number.objects.empty()); // the row of zeroes has no profile
    EXPECT_EQ(by_number.null_results, 1u);
}

} // namespace
