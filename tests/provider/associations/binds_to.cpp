// Enumeration of association classes: one association per link, rule by rule.
#include "provider/associations/binds_to.h"

#include "tests/provider/associations/answers.h"

namespace {

using namespace test;
using switchsim::Fault;

/// A rule, by the association that tunnel 3 gets.
struct Rule {
    const char* association_class;
    std::string first; ///< under the shape's first role, in paths
    std::string second;
    Shape paths;
    Shape instances;
    bool instances_swap_ends = false;

    std::string text(bool of_instance) const {
        const Shape& shape = of_instance ? instances : paths;
        const bool swap = of_instance && instances_swap_ends;
        return association_class + (swap ? shape.text(second, first) : shape.text(first, second));
    }
};

std::vector<Rule> rules() {
    const std::string fcip = fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint");
    const std::string ip = ip_endpoint_3("ZANTO_IPProtocolEndPoint");
    const std::string tcp = tcp_endpoint_3("ZANTO_TCPProtocolEndPoint");
    const std::string system = Thing{R"(CreationClassName="ZANTO_LogicalComputerSystem",Name="200100005EAA0001")"}(
        "ZANTO_LogicalComputerSystem");
    return {
        {"ZANTO_SANFCIPEndpoint", remote_fcip_port_3("ZANTO_RemoteFCIPPort"), fcip, realize, realize},
        {"ZANTO_FCIPTCPEndpoint", tcp, fcip, realize, realize},
        {"ZANTO_SANIPEndpoint", remote_ip_port_3("ZANTO_RemoteIPPort"), fcip, realize, realize},
        {"ZANTO_TCPIPEndpoint", tcp, ip, realize, realize},
        {"ZANTO_IPEthernetEndpoint", lan_endpoint_1("ZANTO_LANEndPoint"), ip, realize, realize},
        {"ZANTO_SwitchHostedFCIPAccessPoint", system, fcip, realize, realize},
        {"ZANTO_SwitchHostedIPAccessPoint", system, ip, realize, realize},
        {"ZANTO_SwitchHostedTCPAccessPoint", system, tcp, realize, realize},
        {"ZANTO_FCIPElementSettingData", instance_of_tunnel_3("ZANTO_FCIPSettings"), fcip, managed_setting,
         managed_setting},
        {"ZANTO_TCPElementSettingData", ip_endpoint_3("ZANTO_TCPSettings"), tcp, managed_setting, managed_setting},
        {"ZANTO_IPElementSettingData", ip_endpoint_3("ZANTO_TCPSettings"), ip, managed_setting, managed_setting},
        {"ZANTO_FCIPPEBasedOn", profile_3("ZANTO_FCIPProfile"), fcip, realize, group_part},
        {"ZANTO_TCPEndPointStatisticalData", instance_of_tunnel_3("ZANTO_TCPEndPointStatistics"), fcip, managed_stats,
         managed_stats, true},
        {"ZANTO_IPEndPointStatisticalData", instance_of_tunnel_3("ZANTO_IPEndPointStatistics"), ip, managed_stats,
         managed_stats, true},
    };
}

class BindsTo : public AssociationTest {
  protected:
    Outcome paths_of(const std::string& class_name) {
        return outcome_of(
            [&] { return fcip::get_all_binds_to_references(class_name.c_str(), scope.result(), "root/cimv2"); });
    }

    Outcome instances_of(const std::string& class_name, const char** properties = nullptr) {
        return outcome_of([&] {
            return fcip::get_all_binds_to_instances(class_name.c_str(), scope.result(), "root/cimv2", properties);
        });
    }

    static std::string text(const Outcome& outcome, std::size_t index) {
        return outcome.answer.objects.size() > index ? text_of_object(outcome.answer.objects[index]) : "(none)";
    }
};

TEST_F(BindsTo, EachRuleTiesTheTwoEndsOfALink) {
    for (const Rule& rule : rules()) {
        SCOPED_TRACE(rule.association_class);
        const auto names = paths_of(rule.association_class);
        EXPECT_EQ(names.status, 0);
        EXPECT_EQ(names.answer.objects.size(), 4u);
        EXPECT_EQ(text(names, 1), rule.text(false)); // tunnel 3 is the second row
        EXPECT_EQ(names.answer.objects.at(1).host, "switch-a");
        EXPECT_TRUE(trace.starts_with("Entering get_all_binds_to_references\n"));
        EXPECT_TRUE(trace.ends_with("Exiting get_all_binds_to_references\n"));

        const auto instances = instances_of(rule.association_class);
        EXPECT_EQ(instances.status, 0);
        EXPECT_EQ(instances.answer.objects.size(), 4u);
        EXPECT_EQ(text(instances, 1), rule.text(true));
        EXPECT_EQ(instances.answer.objects.at(1).host, "switch-a");
        EXPECT_TRUE(trace.starts_with("Entering get_all_binds_to_instances\n"));
        EXPECT_TRUE(trace.ends_with("Exiting get_all_binds_to_instances\n"));
    }
}

TEST_F(BindsTo, TheClassIsTakenInAnyCaseAndPassedOnAsItCame) {
    for (const Rule& rule : rules()) {
        std::string asked = rule.association_class;
        for (char& c : asked)
            c = static_cast<char>(std::tolower(c));
        const auto names = paths_of(asked);
        ASSERT_EQ(names.answer.objects.size(), 4u) << asked;
        EXPECT_EQ(names.answer.objects[0].class_name, asked);
        const auto instances = instances_of(asked);
        ASSERT_EQ(instances.answer.objects.size(), 4u) << asked;
        EXPECT_EQ(instances.answer.objects[0].class_name, asked);
    }
}

TEST_F(BindsTo, ThePropertyListIsNotApplied) {
    const char* wanted[] = {"Antecedent", nullptr};
    EXPECT_EQ(instances_of("ZANTO_FCIPTCPEndpoint", wanted).answer.objects.at(0).properties.size(), 2u);
}

TEST_F(BindsTo, SanTcpEndpointMakesAPathPerLinkAndReturnsNone) {
    for (const bool names : {true, false}) {
        const unsigned before = scope.objects_made();
        const auto outcome = names ? paths_of("ZANTO_SANTCPEndpoint") : instances_of("ZANTO_SANTCPEndpoint");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(outcome.answer.objects.empty());
        EXPECT_EQ(outcome.answer.null_results, 0u);
        EXPECT_GE(scope.objects_made() - before, 4u);
        std::size_t paths = 0; // of the IP endpoint, one per link
        for (auto at = trace.find("Entering ip_pe_fill_reference\n"); at != std::string::npos;
             at = trace.find("Entering ip_pe_fill_reference\n", at + 1))
            ++paths;
        EXPECT_EQ(paths, the_switch().links.size());
        EXPECT_TRUE(
            trace.ends_with(names ? "Exiting get_all_binds_to_references\n" : "Exiting get_all_binds_to_instances\n"));
    }
    the_switch().profiles.clear(); // the dropped path is not looked at
    EXPECT_EQ(paths_of("ZANTO_SANTCPEndpoint").status, 0);
    EXPECT_EQ(switchsim::calls("fcip_get_link_entry"), 15u);
}

TEST_F(BindsTo, EthernetStatisticsAreTiedToTheEndpointByPathsOnly) {
    const auto names = paths_of("ZANTO_EthernetPortStatisticalData");
    EXPECT_EQ(names.answer.objects.size(), 4u);
    EXPECT_EQ(text(names, 1), "ZANTO_EthernetPortStatisticalData\n  ManagedElement reference " +
                                  instance_of_tunnel_3("ZANTO_EthernetPortStatistics") + "\n  Stats reference " +
                                  ip_endpoint_3("ZANTO_EthernetPort"));
    const unsigned before = scope.objects_made();
    const auto instances = instances_of("ZANTO_EthernetPortStatisticalData");
    EXPECT_EQ(instances.status, 0);
    EXPECT_TRUE(instances.answer.objects.empty());
    EXPECT_EQ(scope.objects_made(), before);
}

TEST_F(BindsTo, IpEthernetEndpointSkipsAndTracesNoEntity65535) {
    FcipLinkEntry link = *tunnel(tunnel_1);
    link.entity_id = 65535;
    the_switch().links[{65535, 0}] = link;
    const auto names = paths_of("ZANTO_IPEthernetEndpoint");
    EXPECT_EQ(names.status, 0); // its profile does not exist, so it would have ended the walk
    EXPECT_EQ(names.answer.objects.size(), 4u);
    const std::string location = " Function : get_all_binds_to_references Line 6 \n";
    std::size_t count = 0;
    for (auto at = trace.find(location); at != std::string::npos; at = trace.find(location, at + 1))
        ++count;
    EXPECT_EQ(count, 4u);
    EXPECT_EQ(instances_of("ZANTO_IPEthernetEndpoint").answer.objects.size(), 4u);
    EXPECT_NE(trace.find(" Function : get_all_binds_to_instances Line 6 \n"), std::string::npos);
    EXPECT_EQ(paths_of("ZANTO_TCPIPEndpoint").status, -1); // the other rules take it
}

TEST_F(BindsTo, AFailingFirstEndEndsTheWalkBeforeTheSecondIsMade) {
    the_switch().links.erase(tunnel_8);
    // One profile read per end: the third is that of the second link's first end.
    switchsim::inject("fcip_get_entity_entry", Fault::fail, 3);
    const auto names = paths_of("ZANTO_FCIPTCPEndpoint");
    EXPECT_EQ(names.status, -1);
    EXPECT_EQ(names.answer.objects.size(), 1u);
    EXPECT_EQ(names.answer.null_results, 0u);
    EXPECT_EQ(switchsim::calls("fcip_get_entity_entry"), 3u);
    EXPECT_EQ(switchsim::calls("fcip_get_link_entry"), 2u); // links behind it are not visited
    EXPECT_EQ(trace.find("Exiting get_all_binds_to_references"), std::string::npos);
    EXPECT_EQ(trace.find("swop"), std::string::npos);
}

TEST_F(BindsTo, AFailingSecondEndEndsTheWalk) {
    switchsim::inject("fcip_get_entity_entry", Fault::fail, 4);
    const auto instances = instances_of("ZANTO_FCIPTCPEndpoint");
    EXPECT_EQ(instances.status, -1);
    EXPECT_EQ(instances.answer.objects.size(), 1u);
    EXPECT_EQ(instances.answer.null_results, 0u);
    EXPECT_EQ(trace.find("peop"), std::string::npos);
    EXPECT_EQ(trace.find("Exiting get_all_binds_to_instances"), std::string::npos);
}

TEST_F(BindsTo, ALanEndpointThatCannotBeMadeEndsTheWalk) {
    tunnel(tunnel_3)->ethernet_if_index = 99; // no port
    for (const bool names : {true, false}) {
        switchsim::clear_counts();
        const auto outcome = names ? paths_of("ZANTO_IPEthernetEndpoint") : instances_of("ZANTO_IPEthernetEndpoint");
        EXPECT_EQ(outcome.status, -1);
        EXPECT_EQ(outcome.answer.objects.size(), 1u);
        EXPECT_EQ(outcome.answer.null_results, 0u);
        EXPECT_EQ(trace.find("Exiting get_all_binds_to_"), std::string::npos);
        // The IP endpoint behind it is that of the first link only.
        EXPECT_EQ(trace.find("Entering ip_pe_fill_reference"), trace.rfind("Entering ip_pe_fill_reference"));
    }
}

TEST_F(BindsTo, AnIpEndpointThatCannotBeMadeEndsTheLanWalk) {
    for (const bool names : {true, false}) {
        switchsim::inject("fcip_get_entity_entry", Fault::fail, 2); // LAN endpoints need no profile
        const auto outcome = names ? paths_of("ZANTO_IPEthernetEndpoint") : instances_of("ZANTO_IPEthernetEndpoint");
        switchsim::clear_faults();
        EXPECT_EQ(outcome.status, -1);
        EXPECT_EQ(outcome.answer.objects.size(), 1u);
        EXPECT_EQ(outcome.answer.null_results, 0u);
        EXPECT_EQ(trace.find("Exiting get_all_binds_to_"), std::string::npos);
    }
}

TEST_F(BindsTo, ASystemThatCannotBeMadeEndsTheWalk) {
    for (const char* asked :
         {"ZANTO_SwitchHostedFCIPAccessPoint", "ZANTO_SwitchHostedIPAccessPoint", "ZANTO_SwitchHostedTCPAccessPoint"})
        for (const bool names : {true, false}) {
            SCOPED_TRACE(asked);
            switchsim::clear_counts();
            switchsim::inject("switch_fill_reference_str", Fault::fail, 2);
            const auto outcome = names ? paths_of(asked) : instances_of(asked);
            switchsim::clear_faults();
            EXPECT_EQ(outcome.status, -1);
            EXPECT_EQ(outcome.answer.objects.size(), 1u);
            EXPECT_EQ(outcome.answer.null_results, 0u);
            EXPECT_EQ(switchsim::calls("switch_fill_reference_str"), 2u);
            EXPECT_EQ(trace.find("Exiting get_all_binds_to_"), std::string::npos);
        }
}

TEST_F(BindsTo, AMissingProfileOfTheSecondLinkLeavesOneAssociation) {
    FcipLinkEntry link = *tunnel(tunnel_3);
    link.entity_id = 4;
    the_switch().links.erase(tunnel_3);
    the_switch().links[{4, 2}] = link;
    for (const Rule& rule : rules()) {
        SCOPED_TRACE(rule.association_class);
        EXPECT_EQ(paths_of(rule.association_class).status, -1);
        EXPECT_EQ(scope.answer().objects.size(), 1u);
        EXPECT_EQ(instances_of(rule.association_class).status, -1);
        EXPECT_EQ(scope.answer().objects.size(), 1u);
    }
}

TEST_F(BindsTo, ANullAssociationIsHandedOnAndTheWalkGoesOn) {
    scope.fail_object(3); // two ends, then the association
    const auto names = paths_of("ZANTO_FCIPTCPEndpoint");
    EXPECT_EQ(names.status, 0);
    EXPECT_EQ(names.answer.objects.size(), 3u);
    EXPECT_EQ(names.answer.null_results, 1u);
}

TEST_F(BindsTo, AnUnreadableSystemNameIsUsedAsItStands) {
    the_switch().vsans.at(1).domain.reset();
    const auto names = paths_of("ZANTO_SwitchHostedIPAccessPoint");
    EXPECT_EQ(names.status, 0);
    EXPECT_NE(text(names, 1).find(R"(Antecedent reference root/cimv2:ZANTO_LogicalComputerSystem.CreationClassName=)"
                                  R"("ZANTO_LogicalComputerSystem",Name="NULL")"),
              std::string::npos)
        << text(names, 1);
    the_switch().ports.erase(fcip_3);
    EXPECT_NE(text(paths_of("ZANTO_SwitchHostedIPAccessPoint"), 1).find(R"(Name="")"), std::string::npos);
}

TEST_F(BindsTo, ClassesWithoutARuleFetchEveryLinkAndReturnNothing) {
    for (const char* asked : {"ZANTO_EthernetPortProtocolEndpoint", "ZANTO_FCPortProtocolEndPoint",
                              "CIM_HostedAccessPoint", "ZANTO_NoSuchClass", ""})
        for (const bool names : {true, false}) {
            switchsim::clear_counts();
            const auto outcome = names ? paths_of(asked) : instances_of(asked);
            EXPECT_EQ(outcome.status, 0);
            EXPECT_TRUE(outcome.answer.objects.empty());
            EXPECT_EQ(switchsim::total_calls(), 5u); // four links and the end of the table
            EXPECT_EQ(trace, names ? "Entering get_all_binds_to_references\nExiting get_all_binds_to_references\n"
                                   : "Entering get_all_binds_to_instances\nExiting get_all_binds_to_instances\n");
        }
}

TEST_F(BindsTo, AnEmptyLinkTableReturnsNothingForEveryClass) {
    the_switch().links.clear();
    for (const char* asked : association_classes) {
        EXPECT_EQ(paths_of(asked).status, 0);
        EXPECT_TRUE(scope.answer().objects.empty());
        EXPECT_EQ(instances_of(asked).status, 0);
        EXPECT_TRUE(scope.answer().objects.empty());
        EXPECT_EQ(trace, "Entering get_all_binds_to_instances\nExiting get_all_binds_to_instances\n");
    }
}

TEST_F(BindsTo, AFailedReadOfTheTableEndsTheWalkQuietly) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_link_entry", fault, 3);
        const auto names = paths_of("ZANTO_FCIPPEBasedOn");
        EXPECT_EQ(names.status, 0);
        EXPECT_EQ(names.answer.objects.size(), 2u);
        EXPECT_TRUE(trace.ends_with("Exiting get_all_binds_to_references\n"));
        switchsim::clear_faults();
    }
}

TEST_F(BindsTo, ProfilesHaveOneRolePairInPathsAnotherInInstances) {
    EXPECT_EQ(rows(enumerate_names("ZANTO_FCIPPEBasedOn").objects.at(0).keys)[0][0], "Antecedent");
    EXPECT_EQ(rows(enumerate_instances("ZANTO_FCIPPEBasedOn").objects.at(0).properties)[0][0], "GroupComponent");
}

TEST_F(BindsTo, SettingsStandAsTheManagedElement) {
    EXPECT_EQ(values(enumerate_instances("ZANTO_FCIPElementSettingData"), "ManagedElement").at(1),
              instance_of_tunnel_3("ZANTO_FCIPSettings"));
    EXPECT_EQ(values(walk(Operation::references, source("ZANTO_FCIPSettings").path(), "ZANTO_FCIPElementSettingData"),
                     "SettingData"),
              std::vector{instance_of_tunnel_3("ZANTO_FCIPSettings")});
}

TEST_F(BindsTo, IpAndTcpSettingsBearTcpClassAndIpEndpointsKeys) {
    for (const char* association : {"ZANTO_TCPElementSettingData", "ZANTO_IPElementSettingData"})
        EXPECT_EQ(values(enumerate_instances(association), "ManagedElement").at(1), ip_endpoint_3("ZANTO_TCPSettings"));
}

TEST_F(BindsTo, SanIpEndpointEndsAtTheFcipEndpoint) {
    EXPECT_EQ(values(enumerate_instances("ZANTO_SANIPEndpoint"), "Dependent").at(1),
              fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint"));
}

TEST_F(BindsTo, SanIpEndpointBeginsAtARemoteIpPort) {
    EXPECT_EQ(values(enumerate_instances("ZANTO_SANIPEndpoint"), "Antecedent").at(1),
              remote_ip_port_3("ZANTO_RemoteIPPort"));
}

TEST_F(BindsTo, SystemsAreFirstAndNamedAfterTheirDomain) {
    const std::string by_domain = R"(Name="200100005EAA0001")";
    const std::string by_vsan = R"(Name="VSAN0001")";
    for (const char* association :
         {"ZANTO_SwitchHostedFCIPAccessPoint", "ZANTO_SwitchHostedIPAccessPoint", "ZANTO_SwitchHostedTCPAccessPoint"})
        EXPECT_NE(values(enumerate_instances(association), "Antecedent").at(1).find(by_domain), std::string::npos)
            << association;
    const auto referred =
        walk(Operation::references, source("ZANTO_FCIPProtocolEndPoint").path(), "ZANTO_SwitchHostedFCIPAccessPoint");
    EXPECT_NE(values(referred, "Antecedent").at(0).find(by_vsan), std::string::npos);
}

TEST_F(BindsTo, TcpStatisticsAreTiedToTheFcipEndpoint) {
    EXPECT_EQ(values(enumerate_instances("ZANTO_TCPEndPointStatisticalData"), "ManagedElement").at(1),
              fcip_endpoint_3("ZANTO_FCIPProtocolEndPoint"));
}

TEST_F(BindsTo, StatisticsStandFirstInPathsAndSecondInInstances) {
    const auto names = enumerate_names("ZANTO_IPEndPointStatisticalData");
    EXPECT_EQ(text_of(names.objects.at(1).key("ManagedElement")->value),
              instance_of_tunnel_3("ZANTO_IPEndPointStatistics"));
    EXPECT_EQ(values(enumerate_instances("ZANTO_IPEndPointStatisticalData"), "Stats").at(1),
              instance_of_tunnel_3("ZANTO_IPEndPointStatistics"));
}

} // namespace
