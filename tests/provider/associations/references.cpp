// References and ReferenceNames: the table's ties, each as an instance and as a path.
#include "tests/provider/associations/answers.h"

#include <algorithm>
#include <map>

namespace {

using namespace test;

const Tie& tie(const AnswerRow& row) {
    return std::get<Tie>(row.answer);
}

/// What a member prints before it reads the key.
std::string beginning(const AnswerRow& row, const std::string& member) {
    std::string line = tie(row).class_line;
    if (const auto at = line.find("%s"); at != std::string::npos)
        line.replace(at, 2, row.asked);
    return "Entering " + member + "\n" + line + " Function : " + member + " Line " + std::to_string(row.location) +
           " \n";
}

bool is_remote(const AnswerRow& row) {
    return std::string(row.source).starts_with("ZANTO_Remote");
}

class References : public AssociationTest {
  protected:
    /// Looks for the row's beginning in the trace, and for a proper end.
    void expect_trace(const AnswerRow& row, const std::string& member, const std::string& operation) {
        const Source& from = source(row.source);
        const std::string blank = " "; // the reference operations print one before the line end
        EXPECT_TRUE(reads_key(trace,
                              "Entering " + operation + "\n\tfound key " + from.key_name + " : " + from.key_value +
                                  blank + "\n" + beginning(row, member),
                              row.key))
            << trace;
        EXPECT_TRUE(trace.ends_with("Exiting " + member + "\nExiting " + operation + "\n")) << trace;
    }
};

TEST_F(References, EachRowAnswersOneInstance) {
    for (const AnswerRow& row : answers_of('R')) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        const auto answer = walk(Operation::references, source(row.source).path(), row.asked);
        ASSERT_EQ(answer.objects.size(), 1u) << trace;
        EXPECT_EQ(text_of_object(answer.objects[0]), tie(row).text());
        EXPECT_EQ(answer.objects[0].name_space, "root/cimv2");
        EXPECT_EQ(answer.objects[0].host, "switch-a");
        expect_trace(row, row.member + std::string("_references"), "FCIP_References");
    }
}

TEST_F(References, EachRowNamesTheSameAssociationByItsPath) {
    for (const AnswerRow& row : answers_of('r')) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        const auto answer = walk(Operation::reference_names, source(row.source).path(), row.asked);
        ASSERT_EQ(answer.objects.size(), 1u) << trace;
        EXPECT_EQ(text_of_object(answer.objects[0]), tie(row).text());
        EXPECT_EQ(answer.objects[0].keys.size(), tie(row).shape.setting ? 4u : 2u);
        EXPECT_EQ(answer.objects[0].name_space, "root/cimv2");
        EXPECT_EQ(answer.objects[0].host, "switch-a");
        expect_trace(row, row.member + std::string("_reference_names"), "FCIP_ReferenceNames");
    }
}

TEST_F(References, IgnoreTheRoleAndThePropertyList) {
    const char* no_role = "NoSuchRole";
    const char* no_property[] = {"NoSuchProperty", nullptr};
    for (const AnswerRow& row : answers_of('R')) {
        SCOPED_TRACE(std::string(row.source) + " " + row.asked);
        const std::string key_value = source(row.source).key_value;
        for (const char* ending : {"_references", "_reference_names"}) {
            const Member& member = *std::ranges::find(members(), row.member + std::string(ending), &Member::name);
            const auto outcome = outcome_of([&] {
                if (const auto* instances = std::get_if<fcip::references_member*>(&member.function))
                    return (*instances)(key_value.c_str(), row.asked, no_role, no_property, scope.result(),
                                        "root/cimv2");
                return std::get<fcip::reference_names_member*>(member.function)(key_value.c_str(), row.asked, no_role,
                                                                                scope.result(), "root/cimv2");
            });
            EXPECT_EQ(outcome.status, 0);
            ASSERT_EQ(outcome.answer.objects.size(), 1u);
            EXPECT_EQ(text_of_object(outcome.answer.objects[0]), tie(row).text());
        }
    }
}

TEST_F(References, OfARequestIgnoreItsRoleAndItsPropertyList) {
    cmpihost::Request request;
    request.path = source("ZANTO_FCIPSettings").path();
    request.assoc_class = "ZANTO_FCIPElementSettingData";
    for (const Operation operation : {Operation::references, Operation::reference_names}) {
        request.operation = operation;
        request.role.reset();
        request.properties.reset();
        const auto whole = ask(request);
        request.role = "GroupComponent";
        request.properties = std::vector<std::string>{"IsDefault"};
        const auto asked_for_less = ask(request);
        ASSERT_EQ(asked_for_less.objects.size(), 1u);
        EXPECT_EQ(text_of_object(asked_for_less.objects[0]), text_of_object(whole.objects.at(0)));
    }
}

TEST_F(References, NameMembersOfRemoteObjectsMirrorThoseOfInstances) {
    const std::map<std::string, std::pair<fcip::references_member*, fcip::reference_names_member*>> remote = {
        {"get_fcip_remote_pe", {fcip::get_fcip_remote_pe_references, fcip::get_fcip_remote_pe_reference_names}},
        {"get_ip_remote_pe", {fcip::get_ip_remote_pe_references, fcip::get_ip_remote_pe_reference_names}},
    };
    unsigned checked = 0;
    for (const AnswerRow& row : answers_of('R')) {
        if (!is_remote(row))
            continue;
        const auto& [instances, names] = remote.at(row.member);
        const auto path = run(names, source(row.source).key_value, row.asked);
        EXPECT_TRUE(reads_key(trace, beginning(row, row.member + std::string("_reference_names")), row.key)) << trace;
        ASSERT_EQ(path.answer.objects.size(), 1u);
        EXPECT_EQ(text_of_object(path.answer.objects[0]), tie(row).text());
        const auto instance = run(instances, source(row.source).key_value, row.asked);
        ASSERT_EQ(instance.answer.objects.size(), 1u);
        EXPECT_EQ(text_of_object(instance.answer.objects[0]), text_of_object(path.answer.objects[0]));
        ++checked;
    }
    EXPECT_EQ(checked, 2u);
}

TEST_F(References, OfARemoteTcpPortTakeTheLeading0AsAnInterfaceIndex) {
    const AnswerRow& row = direct_answer("get_tcp_remote_pe");
    const char* key_value = source(row.source).key_value;
    for (const bool names : {false, true}) {
        const auto ask = [&] {
            return names ? run(fcip::get_tcp_remote_pe_reference_names, key_value, row.asked)
                         : run(fcip::get_tcp_remote_pe_references, key_value, row.asked);
        };
        auto outcome = ask(); // no link has the index 0
        EXPECT_EQ(outcome.status, -1);
        EXPECT_TRUE(outcome.answer.objects.empty());

        tunnel(tunnel_1)->link_if_index = 0;
        the_switch().ports[0] = the_switch().ports.at(fcip_1);
        outcome = ask();
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(reads_key(
            trace, beginning(row, row.member + std::string(names ? "_reference_names" : "_references")), row.key))
            << trace;
        ASSERT_EQ(outcome.answer.objects.size(), 1u);
        EXPECT_EQ(text_of_object(outcome.answer.objects[0]), tie(row).text());
        tunnel(tunnel_1)->link_if_index = fcip_1;
    }
}

// ---------------------------------------------------------------------------------------------- deliberate oddities

TEST_F(References, TcpEndpointAnswersTheMisspeltFcipTcpEnpointOnly) {
    const auto from = source("ZANTO_TCPProtocolEndPoint").path();
    const auto misspelt = walk(Operation::references, from, "ZANTO_FCIPTCPEnpoint");
    ASSERT_EQ(misspelt.objects.size(), 1u);
    EXPECT_EQ(misspelt.objects[0].class_name, "ZANTO_FCIPTCPEndpoint");
    EXPECT_TRUE(walk(Operation::references, from, "ZANTO_FCIPTCPEndpoint").objects.empty());
    EXPECT_EQ(walk(Operation::reference_names, from, "ZANTO_FCIPTCPEnpoint").objects.size(), 1u);
    EXPECT_TRUE(walk(Operation::reference_names, from, "ZANTO_FCIPTCPEndpoint").objects.empty());
}

TEST_F(References, SomeBearTheClientsSpellingAndSomeTheirOwnName) {
    const auto named = [this](const char* from, const char* asked) {
        return walk(Operation::references, source(from).path(), asked).objects.at(0).class_name;
    };
    EXPECT_EQ(named("ZANTO_IPProtocolEndPoint", "zanto_tcpipendpoint"), "zanto_tcpipendpoint");
    EXPECT_EQ(named("ZANTO_FCIPProtocolEndPoint", "zanto_fciptcpendpoint"), "ZANTO_FCIPTCPEndpoint");
}

TEST_F(References, EthernetPortNamesItsLanTieIpElementSettingData) {
    const auto answer =
        walk(Operation::references, source("ZANTO_EthernetPort").path(), "ZANTO_EthernetPortProtocolEndpoint");
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(answer.objects[0].class_name, "ZANTO_IPElementSettingData");
    EXPECT_EQ(answer.objects[0].properties.size(), 2u); // Antecedent and Dependent: no setting's properties
}

TEST_F(References, EthernetPortIsReadAsTheIndexOfALink) {
    // The port with the key's index is the second one; the answer names the one that carries the link of that index.
    const auto answer =
        walk(Operation::references, source("ZANTO_EthernetPort").path(), "ZANTO_EthernetPortStatisticalData");
    EXPECT_EQ(values(answer, "ManagedElement"), std::vector{ethernet_port_1("ZANTO_EthernetPort")});
    the_switch().links.erase(tunnel_8);
    EXPECT_TRUE(walk(Operation::references, source("ZANTO_EthernetPort").path(), "ZANTO_EthernetPortStatisticalData")
                    .objects.empty());
}

TEST_F(References, IpStatisticsStandFirstFromTheEndpointOnly) {
    const auto endpoint =
        walk(Operation::references, source("ZANTO_IPProtocolEndPoint").path(), "ZANTO_IPEndPointStatisticalData");
    const auto statistics =
        walk(Operation::references, source("ZANTO_IPEndPointStatistics").path(), "ZANTO_IPEndPointStatisticalData");
    EXPECT_EQ(values(endpoint, "ManagedElement"), std::vector{instance_of_tunnel_3("ZANTO_IPEndpointStatistics")});
    EXPECT_EQ(values(statistics, "Stats"), std::vector{instance_of_tunnel_3("ZANTO_IPEndpointStatistics")});
}

TEST_F(References, IpEthernetEndpointHasOtherEndsFromEitherSide) {
    const auto from_ip =
        walk(Operation::references, source("ZANTO_IPProtocolEndPoint").path(), "ZANTO_IPEthernetEndpoint");
    const auto from_lan = walk(Operation::references, source("ZANTO_LanEndPoint").path(), "ZANTO_IPEthernetEndpoint");
    EXPECT_EQ(values(from_ip, "Antecedent"), std::vector{ethernet_port_1("ZANTO_EthernetPort")});
    EXPECT_EQ(values(from_ip, "Dependent"), std::vector{ip_endpoint_3("ZANTO_IPProtocolEndpoint")});
    EXPECT_EQ(values(from_lan, "Antecedent"), std::vector{ip_endpoint_7("ZANTO_IPProtocolEndPoint")});
    EXPECT_EQ(values(from_lan, "Dependent"), std::vector{lan_endpoint_2("ZANTO_LANEndpoint")});
}

TEST_F(References, SwitchIsAntecedentOfFcipDependentOfOtherEndpoints) {
    const std::string system = vsan_1("ZANTO_LogicalComputerSystem");
    EXPECT_EQ(values(walk(Operation::references, source("ZANTO_FCIPProtocolEndPoint").path(),
                          "ZANTO_SwitchHostedFCIPAccessPoint"),
                     "Antecedent"),
              std::vector{system});
    EXPECT_EQ(values(walk(Operation::references, source("ZANTO_IPProtocolEndPoint").path(),
                          "ZANTO_SwitchHostedIPAccessPoint"),
                     "Dependent"),
              std::vector{system});
    EXPECT_EQ(values(walk(Operation::references, source("ZANTO_TCPProtocolEndPoint").path(),
                          "ZANTO_SwitchHostedTCPAccessPoint"),
                     "Dependent"),
              std::vector{system});
}

TEST_F(References, SettingsAreTheDefaultAndTheCurrentOnes) {
    const auto answer = walk(Operation::references, source("ZANTO_IPSettings").path(), "ZANTO_IPElementSettingData");
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(rows(answer.objects[0].properties),
              (Rows{{"ManagedElement", "reference", ip_endpoint_3("ZANTO_IPProtocolEndPoint")},
                    {"SettingData", "reference", instance_of_tunnel_3("ZANTO_IPSettings")},
                    {"IsDefault", "uint16", "1"},
                    {"IsCurrent", "uint16", "1"}}));
    const auto names =
        walk(Operation::reference_names, source("ZANTO_TCPSettings").path(), "ZANTO_TCPElementSettingData");
    ASSERT_EQ(names.objects.size(), 1u);
    EXPECT_EQ(rows(names.objects[0].keys),
              (Rows{{"ManagedElement", "reference", tcp_endpoint_3("ZANTO_TCPProtocolEndPoint")},
                    {"SettingData", "reference", instance_of_tunnel_3("ZANTO_TCPSettings")},
                    {"IsDefault", "uint16", "1"},
                    {"IsCurrent", "uint16", "1"}}));
}

TEST_F(References, RemoteNamesAreAskedOfTheLocalEndpointsMembers) {
    walk(Operation::reference_names, source("ZANTO_RemoteFCIPPort").path(), "ZANTO_SANIPEndpoint");
    EXPECT_NE(trace.find("Entering get_ip_pe_reference_names\n"), std::string::npos);
    walk(Operation::reference_names, source("ZANTO_RemoteIPServiceAccessPoint").path(), "ZANTO_SANIPEndpoint");
    EXPECT_NE(trace.find("Entering get_ip_pe_reference_names\n"), std::string::npos);
    const auto none = walk(Operation::reference_names, source("ZANTO_RemoteTCPPort").path(), "ZANTO_SANTCPEndpoint");
    EXPECT_NE(trace.find("Entering get_tcp_pe_reference_names\n"), std::string::npos);
    EXPECT_TRUE(none.objects.empty()); // the key's leading 0 is no link's index

    tunnel(tunnel_1)->link_if_index = 0;
    the_switch().ports[0] = the_switch().ports.at(fcip_1);
    const auto one = walk(Operation::reference_names, source("ZANTO_RemoteTCPPort").path(), "ZANTO_SANTCPEndpoint");
    ASSERT_EQ(one.objects.size(), 1u);
    EXPECT_EQ(one.objects[0].class_name, "ZANTO_SANTCPEndpoint");
}

TEST_F(References, SettingsAloneReadATcpEndpointsKeyBeyondOneToken) {
    // The first token is the index of tunnel 3; all of the text is the number 0. Associators have it the other way
    // round: there the statistics alone read the first token.
    const char* key_value = "_16777218";
    const auto count = [&](auto* member, const char* asked) {
        return run(member, key_value, asked).answer.objects.size();
    };
    for (const char* asked : {"ZANTO_TCPEndPointStatisticalData", "ZANTO_FCIPTCPEnpoint", "ZANTO_TCPIPEndpoint",
                              "ZANTO_SwitchHostedTCPAccessPoint", "ZANTO_SANTCPEndpoint"}) {
        EXPECT_EQ(count(fcip::get_tcp_pe_references, asked), 1u) << asked;
        EXPECT_EQ(count(fcip::get_tcp_pe_reference_names, asked), 1u) << asked;
    }
    EXPECT_EQ(count(fcip::get_tcp_pe_references, "ZANTO_TCPElementSettingData"), 0u);
    EXPECT_EQ(count(fcip::get_tcp_pe_reference_names, "ZANTO_TCPElementSettingData"), 0u);

    EXPECT_EQ(count(fcip::get_tcp_pe_associator_names, "ZANTO_TCPEndPointStatisticalData"), 1u);
    for (const char* asked : {"ZANTO_FCIPTCPEndpoint", "ZANTO_TCPIPEndpoint", "ZANTO_SANTCPEndpoint"})
        EXPECT_EQ(count(fcip::get_tcp_pe_associator_names, asked), 0u) << asked;
}

TEST_F(References, LanEndpointsHostReadsTheWholeKeyAsALinksIndex) {
    the_switch().links.erase(tunnel_8);
    EXPECT_TRUE(
        walk(Operation::references, source("ZANTO_LanEndPoint").path(), "CIM_HostedAccessPoint").objects.empty());
    EXPECT_NE(trace.find("swop : NULL\n"), std::string::npos); // a row of zeroes has no profile
}

} // namespace
