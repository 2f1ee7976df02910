// Associators and AssociatorNames: the table's partners, each as an instance and as a path.
#include "tests/provider/associations/answers.h"

#include "provider/classes/net/tcp_protocol_endpoint.h"

namespace {

using namespace test;

class Associators : public AssociationTest {
  protected:
    std::vector<std::string> names_of(const char* source_class, const char* asked) {
        return paths(walk(Operation::associator_names, source(source_class).path(), asked));
    }

    cmpihost::Answer of(const char* source_class, const char* asked) {
        return walk(Operation::associators, source(source_class).path(), asked);
    }

    /// Associators answer an instance, AssociatorNames one path, which may be of another class. The trace is theirs.
    void expect_name_and_class(const char* source_class, const char* asked, const std::string& name,
                               const char* class_name) {
        EXPECT_EQ(of(source_class, asked).objects.at(0).class_name, class_name);
        EXPECT_EQ(names_of(source_class, asked), std::vector{name});
    }

    void expect_trace(const AnswerRow& row, const std::string& member, const std::string& operation) {
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
    for (const AnswerRow& row : answers_of('A')) {
        const auto& partner = std::get<Partner>(row.answer);
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        const auto answer = of(row.source, row.asked);
        ASSERT_EQ(answer.objects.size(), 1u) << trace;
        expect_trace(row, row.member + std::string("_associators"), "FCIP_Associators");
        EXPECT_EQ(values(answer, partner.identity), std::vector<std::string>{partner.value});
        const CMPIInstance* expected = call(partner.build);
        ASSERT_NE(expected, nullptr);
        EXPECT_EQ(answer.objects[0], cmpihost::describe(expected));
        EXPECT_GE(answer.objects[0].properties.size(), 4u);
    }
}

TEST_F(Associators, EachRowNamesTheFarEnd) {
    for (const AnswerRow& row : answers_of('N')) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        EXPECT_EQ(names_of(row.source, row.asked), std::get<Partner>(row.answer).names);
        expect_trace(row, row.member + std::string("_associator_names"), "FCIP_AssociatorNames");
    }
}

TEST_F(Associators, PropertyListGoesToTheFarEndsBuilder) {
    for (const AnswerRow& row : answers_of('A')) {
        const char* identity = std::get<Partner>(row.answer).identity;
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        cmpihost::Request request;
        request.operation = Operation::associators;
        request.path = source(row.source).path();
        request.assoc_class = row.asked;
        const auto whole = ask(request);
        request.properties = std::vector<std::string>{identity};
        const auto answer = ask(request);
        ASSERT_EQ(answer.objects.size(), 1u);
        ASSERT_EQ(whole.objects.size(), 1u);
        EXPECT_NE(answer.objects[0].property(identity), nullptr);
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
    expect_name_and_class("ZANTO_IPProtocolEndPoint", "ZANTO_SwitchHostedIPAccessPoint",
                          fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint"), "ZANTO_LogicalComputerSystem");
}

TEST_F(Associators, NamesOfATcpEndpointAnswerThePhysicalSwitchAsHost) {
    expect_name_and_class("ZANTO_TCPProtocolEndPoint", "ZANTO_SwitchHostedTCPAccessPoint",
                          physical_switch("ZANTO_PhysicalComputerSystem"), "ZANTO_LogicalComputerSystem");
    EXPECT_NE(trace.find("Entering get_fcip_link_entry_from\n"), std::string::npos);
}

TEST_F(Associators, NamesOfATcpEndpointCallItsStatisticsByAnotherClass) {
    expect_name_and_class("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndPointStatisticalData",
                          instance_of_tunnel_3("ZANTO_TCPEndPointStatistics"), "ZANTO_TCPStatisticalData");
}

TEST_F(Associators, NamesOfATcpEndpointDoNotServeItsSettings) {
    EXPECT_TRUE(names_of("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPElementSettingData").empty());
    EXPECT_TRUE(trace.ends_with("Entering get_tcp_pe_associator_names\nExiting get_tcp_pe_associator_names\n"
                                "Exiting FCIP_AssociatorNames\n"));
    EXPECT_EQ(of("ZANTO_TCPProtocolEndPoint", "ZANTO_TCPElementSettingData").objects.size(), 1u);
}

TEST_F(Associators, NamesOfAnEthernetPortAnswerTheStatisticsClass) {
    EXPECT_EQ(names_of("ZANTO_EthernetPort", "ZANTO_EthernetPortstatistics"),
              std::vector{statistics_of_ethernet_2("ZANTO_EthernetPortStatistics")});
    EXPECT_NE(trace.find(" Function : get_eth_port_associator_names Line 2 \n"), std::string::npos);
    EXPECT_TRUE(names_of("ZANTO_EthernetPort", "ZANTO_EthernetPortStatisticalData").empty());
    EXPECT_TRUE(of("ZANTO_EthernetPort", "ZANTO_EthernetPortStatistics").objects.empty());
    EXPECT_EQ(of("ZANTO_EthernetPort", "ZANTO_EthernetPortStatisticalData").objects.size(), 1u);
}

TEST_F(Associators, OfTcpStatisticalDataAnswerAStatisticsClassOnly) {
    const AnswerRow& row = direct_answer("get_tcp_statical_data");
    const auto& partner = std::get<Partner>(row.answer);
    const auto answer = run(fcip::get_tcp_statical_data_associators, "3", row.asked).answer;
    EXPECT_TRUE(reads_key(trace,
                          "Entering get_tcp_statical_data_associators\n"
                          " Function : get_tcp_statical_data_associators Line 1 \n",
                          row.key))
        << trace;
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(values(answer, partner.identity), std::vector<std::string>{partner.value});
    EXPECT_EQ(answer.objects[0], cmpihost::describe(call(partner.build)));
    for (const char* association : association_classes)
        EXPECT_TRUE(run(fcip::get_tcp_statical_data_associators, "3", association).answer.objects.empty())
            << association;
}

TEST_F(Associators, NamesOfTcpStatisticalDataAreMadeAndNeverReturned) {
    const auto outcome = run(fcip::get_tcp_statical_data_associator_names, "3", "ZANTO_TCPEndPointStatistics");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.answer.objects.empty());
    EXPECT_EQ(outcome.answer.null_results, 0u);
    EXPECT_GT(scope.objects_made(), 0u);
    EXPECT_NE(trace.find("Entering tcp_pe_fill_reference\n"), std::string::npos);
    EXPECT_TRUE(reads_key(trace,
                          "Entering get_tcp_statical_data_associator_names\n"
                          " Function : get_tcp_statical_data_associator_names Line 1 \n",
                          key::entity))
        << trace;
    EXPECT_TRUE(trace.ends_with("Exiting get_tcp_statical_data_associator_names\n"));
    for (const char* association : association_classes)
        EXPECT_TRUE(run(fcip::get_tcp_statical_data_associator_names, "3", association).answer.objects.empty());
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
