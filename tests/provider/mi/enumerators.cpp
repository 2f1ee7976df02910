// The walks behind the two enumerations: what they return, their trace lines, where they end.
#include "provider/mi/instance_enumerators.h"
#include "provider/mi/path_enumerators.h"

#include "tests/support/request_test.h"

namespace {

using namespace test;
using switchsim::Fault;

class Enumerators : public RequestTest {
  protected:
    /// A platform read that fails on its n-th call and leaves a record behind.
    static void leave_over(const char* function, unsigned nth) {
        switchsim::inject(function, Fault::fail_leaving_record, nth);
    }

    /// How often a text stands in the trace.
    std::size_t printed(const std::string& text) const {
        std::size_t count = 0;
        for (auto at = trace.find(text); at != std::string::npos; at = trace.find(text, at + text.size()))
            ++count;
        return count;
    }
};

// ---------------------------------------------------------------------------------------------- which builder

TEST_F(Enumerators, EveryInstanceClassIsBuiltByItsOwnBuilder) {
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"ZANTO_FCIPProtocolEndPoint", "fcip_pe_build_instance"},
        {"ZANTO_RemoteFCIPPort", "fcip_remote_pe_build_instance"},
        {"ZANTO_IPProtocolEndPoint", "ip_pe_build_instance"},
        {"ZANTO_RemoteIPServiceAccessPoint", "ip_remote_pe_build_instance"},
        {"ZANTO_RemoteTCPPort", "remote_service_ap_build_instance"},
        {"ZANTO_TCPProtocolEndPoint", "tcp_pe_build_instance"},
        {"ZANTO_FCIPSettings", "fcip_settings_build_instance"},
        {"ZANTO_IPSettings", "ip_settings_build_instance"},
        {"ZANTO_TCPSettings", "tcp_settings_build_instance"},
        {"ZANTO_IPEndPointStatistics", "ip_statistics_build_instance"},
        {"ZANTO_TCPEndPointStatistics", "tcp_statistics_build_instance"},
        {"ZANTO_TCPStatisticalData", "tcp_statistical_data_build_instance"},
    };
    for (const auto& [class_name, builder] : expected) {
        SCOPED_TRACE(class_name);
        const auto answer = enumerate_instances(class_name);
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.objects.size(), 3u);
        EXPECT_EQ(printed("Entering " + builder + "\n"), 3u);
        for (const auto& object : answer.objects) {
            EXPECT_EQ(object.class_name, class_name);
            EXPECT_EQ(object.name_space, "root/cimv2");
        }
    }
}

TEST_F(Enumerators, EveryPathClassIsFilledByItsOwnBuilder) {
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"ZANTO_IPProtocolEndPoint", "ip_pe_fill_reference"},
        {"ZANTO_RemoteIPServiceAccessPoint", "ip_remote_pe_fill_reference"},
        {"ZANTO_TCPProtocolEndPoint", "tcp_pe_fill_reference"},
        {"ZANTO_FCIPSettings", "fcip_settings_fill_reference"},
        {"ZANTO_IPSettings", "ip_settings_fill_reference"},
        {"ZANTO_TCPSettings", "ip_settings_fill_reference"}, // the IP settings' builder
        {"ZANTO_IPEndPointStatistics", "stat_fill_reference"},
        {"ZANTO_TCPEndPointStatistics", "stat_fill_reference"},
        {"ZANTO_TCPStatisticalData", "stat_fill_reference"},
    };
    for (const auto& [class_name, builder] : expected) {
        SCOPED_TRACE(class_name);
        const auto answer = enumerate_names(class_name);
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.objects.size(), 3u);
        EXPECT_EQ(printed("Entering " + builder + "\n"), 3u);
        for (const auto& object : answer.objects)
            EXPECT_EQ(object.class_name, class_name);
    }
}

TEST_F(Enumerators, PathsOfTheClassesWhoseBuildersPrintNothing) {
    const std::string system = R"(.SystemName="200100005EAA0001",)";
    EXPECT_EQ(paths(enumerate_names("ZANTO_FCIPProtocolEndPoint")).at(0),
              "root/cimv2:ZANTO_FCIPProtocolEndPoint" + system +
                  R"(SystemCreationClassName="ZANTO_LogicalComputerSystem",)"
                  R"(CreationClassName="ZANTO_FCIPProtocolEndPoint",Name="1_10.1.1.1_10.1.1.2")");
    EXPECT_EQ(paths(enumerate_names("ZANTO_RemoteFCIPPort")).at(0),
              "root/cimv2:ZANTO_RemoteFCIPPort" + system +
                  R"(SystemCreationClassName="ZANTO_LogicalComputerSystem",)"
                  R"(CreationClassName="ZANTO_RemoteFCIPPort",Name="0_10.1.1.2_10.1.1.1")");
    EXPECT_EQ(paths(enumerate_names("ZANTO_RemoteTCPPort")).at(0),
              "root/cimv2:ZANTO_RemoteTCPPort" + system +
                  R"(Name="0_16777216",SystemCreationClassName="ZANTO_LogicalComputerSystem",)"
                  R"(CreationClassName="ZANTO_RemoteTCPPort")");
}

TEST_F(Enumerators, ClassNameInAnyCaseIsServed) {
    EXPECT_EQ(enumerate_instances("ZANTO_FCIPPROTOCOLENDPOINT").objects.size(), 3u);
    EXPECT_EQ(enumerate_names("zanto_fcipprotocolendpoint").objects.size(), 3u);
    EXPECT_EQ(enumerate_names("zAnTo_LaNeNdPoInT").objects.size(), 2u);
}

TEST_F(Enumerators, PropertyListReachesTheBuilders) {
    const auto answer = enumerate_instances("ZANTO_FCIPProtocolEndPoint", {{"TunnelID"}});
    ASSERT_EQ(answer.objects.size(), 3u);
    EXPECT_EQ(rows(answer.objects[2].properties), (Rows{{"TunnelID", "uint16", "7"}}));
}

// ---------------------------------------------------------------------------------------------- link walks

TEST_F(Enumerators, LinkWalksReadRowByRowAndTraceAsTheyGo) {
    the_switch().links.erase(tunnel_3);
    the_switch().links.erase(tunnel_7);
    const auto entering = [](const std::string& name) { return "Entering " + name + "\n"; };
    const auto exiting = [](const std::string& name) { return "Exiting " + name + "\n"; };
    const auto location = [](const std::string& name, int line) {
        return " Function : " + name + " Line " + std::to_string(line) + " \n";
    };

    enumerate_instances("ZANTO_FCIPProtocolEndPoint");
    EXPECT_EQ(trace, entering("get_all_fcip_pe_instances") + entering("fcip_pe_build_instance") +
                         exiting("fcip_pe_build_instance"));
    EXPECT_EQ(switchsim::calls("fcip_get_link_entry"), 2u);

    enumerate_names("ZANTO_FCIPProtocolEndPoint");
    EXPECT_EQ(trace, entering("get_all_fcip_pe_references"));

    enumerate_names("ZANTO_TCPProtocolEndPoint");
    EXPECT_EQ(trace, entering("get_all_ip_pe_references") + location("get_all_ip_pe_references", 755) +
                         entering("tcp_pe_fill_reference"));

    enumerate_instances("ZANTO_RemoteTCPPort");
    EXPECT_EQ(trace, entering("get_all_ip_pe_instances") + location("get_all_ip_pe_instances", 1856) +
                         entering("remote_service_ap_build_instance") + exiting("remote_service_ap_build_instance"));

    enumerate_names("ZANTO_TCPStatisticalData");
    EXPECT_EQ(trace, entering("get_all_statistic_references") + location("get_all_statistic_references", 699) +
                         entering("stat_fill_reference") + exiting("stat_fill_reference") +
                         exiting("get_all_statistic_references"));
}

TEST_F(Enumerators, EmptyLinkTableTracesTheEndOfStatisticsWalksOnly) {
    the_switch().links.clear();
    EXPECT_TRUE(enumerate_instances("ZANTO_FCIPProtocolEndPoint").objects.empty());
    EXPECT_EQ(trace, "Entering get_all_fcip_pe_instances\n");
    EXPECT_TRUE(enumerate_instances("ZANTO_IPSettings").objects.empty());
    EXPECT_EQ(trace, "Entering get_all_ip_pe_instances\n");
    EXPECT_TRUE(enumerate_instances("ZANTO_TCPEndPointStatistics").objects.empty());
    EXPECT_EQ(trace, "Entering get_all_statistics\n"
                     " Function : get_all_statistics Line 1785 \n"
                     " Function : get_all_statistics Line 1791 \n"
                     "Exiting get_all_statistics\n");
    EXPECT_TRUE(enumerate_names("ZANTO_TCPEndPointStatistics").objects.empty());
    EXPECT_EQ(trace, "Entering get_all_statistic_references\nExiting get_all_statistic_references\n");
}

TEST_F(Enumerators, FailedLinkReadEndsTheWalkAndKeepsWhatWasReturned) {
    for (const Fault fault : read_faults) {
        for (const char* class_name : {"ZANTO_FCIPProtocolEndPoint", "ZANTO_RemoteTCPPort"}) {
            switchsim::inject("fcip_get_link_entry", fault, 2);
            EXPECT_EQ(enumerate_instances(class_name).objects.size(), 1u) << class_name;
            switchsim::clear_faults();
            switchsim::inject("fcip_get_link_entry", fault, 2);
            const auto answer = enumerate_names(class_name);
            EXPECT_EQ(answer.objects.size(), 1u) << class_name;
            EXPECT_EQ(answer.rc, CMPI_RC_OK);
            switchsim::clear_faults();
        }
    }
}

TEST_F(Enumerators, RowLeftOverByAFailedReadIsTraced) {
    the_switch().links.clear();
    leave_over("fcip_get_link_entry", 1);
    enumerate_instances("ZANTO_FCIPProtocolEndPoint");
    EXPECT_EQ(trace, "Entering get_all_fcip_pe_instances\n");

    leave_over("fcip_get_link_entry", 1);
    enumerate_instances("ZANTO_IPSettings");
    EXPECT_EQ(trace, "Entering get_all_ip_pe_instances\n Function : get_all_ip_pe_instances Line 1851 \n");

    leave_over("fcip_get_link_entry", 1);
    enumerate_names("ZANTO_IPSettings");
    EXPECT_EQ(trace, "Entering get_all_ip_pe_references\n Function : get_all_ip_pe_references Line 750 \n");

    leave_over("fcip_get_link_entry", 1);
    enumerate_instances("ZANTO_IPEndPointStatistics");
    EXPECT_EQ(trace, "Entering get_all_statistics\n"
                     " Function : get_all_statistics Line 1785 \n"
                     " Function : get_all_statistics Line 1789 \n"
                     " Function : get_all_statistics Line 1791 \n"
                     "Exiting get_all_statistics\n");

    leave_over("fcip_get_link_entry", 1);
    enumerate_names("ZANTO_IPEndPointStatistics");
    EXPECT_EQ(trace, "Entering get_all_statistic_references\nExiting get_all_statistic_references\n");
}

TEST_F(Enumerators, RemoteIpPortGetsOneNullInstancePerTunnel) {
    const auto answer = enumerate_instances("ZANTO_RemoteIPPort");
    EXPECT_TRUE(answer.objects.empty());
    EXPECT_EQ(answer.null_results, 3u);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
}

TEST_F(Enumerators, TunnelWhoseInstanceCannotBeMadeGetsANullInstance) {
    the_switch().profiles.erase(3); // tunnels 1 and 3
    for (const char* class_name : {"ZANTO_FCIPProtocolEndPoint", "ZANTO_RemoteFCIPPort", "ZANTO_IPProtocolEndPoint"}) {
        const auto answer = enumerate_instances(class_name);
        EXPECT_EQ(answer.objects.size(), 1u) << class_name;
        EXPECT_EQ(answer.null_results, 2u) << class_name;
        EXPECT_EQ(enumerate_names(class_name).null_results, 2u) << class_name;
    }
}

// ---------------------------------------------------------------------------------------------- profiles

TEST_F(Enumerators, ProfilesComeFromTheEntityTable) {
    EXPECT_EQ(values(enumerate_instances("ZANTO_FCIPProfile"), "InstanceID"), (std::vector<std::string>{"3", "7"}));
    const std::string self = " Function : get_all_fcip_profiles Line ";
    const std::string row = self + "2044 \nEntering fcip_profile_build_instance\n wwn_str ";
    const std::string end = " \nExiting fcip_profile_build_instance\n" + self + "2029 \n";
    EXPECT_EQ(trace, "Entering get_all_fcip_profiles\n" + self + "2029 \n" + row + "3" + end + row + "7" + end + self +
                         "2035 \nExiting get_all_fcip_profiles\n");

    EXPECT_EQ(paths(enumerate_names("ZANTO_FCIPProfile")),
              (std::vector<std::string>{R"(root/cimv2:ZANTO_FCIPProfile.InstanceID="3")",
                                        R"(root/cimv2:ZANTO_FCIPProfile.InstanceID="7")"}));
    EXPECT_EQ(trace, "Entering get_all_fcip_profile_references\nExiting get_all_fcip_profile_references\n");
}

TEST_F(Enumerators, ProfileWalksReturn0) {
    scope.answer() = {};
    EXPECT_EQ(
        call([&] { return fcip::get_all_fcip_profiles("ZANTO_FCIPProfile", scope.result(), nullptr, "root/cimv2"); }),
        0);
    EXPECT_EQ(
        call([&] { return fcip::get_all_fcip_profile_references("ZANTO_FCIPProfile", scope.result(), "root/cimv2"); }),
        0);
    EXPECT_EQ(scope.answer().objects.size(), 4u);
}

TEST_F(Enumerators, EmptyEntityTable) {
    the_switch().profiles.clear();
    EXPECT_TRUE(enumerate_names("ZANTO_FCIPProfile").objects.empty());
    EXPECT_EQ(trace, "Entering get_all_fcip_profile_references\nExiting get_all_fcip_profile_references\n");
    EXPECT_TRUE(enumerate_instances("ZANTO_FCIPProfile").objects.empty());
    EXPECT_EQ(trace, "Entering get_all_fcip_profiles\n"
                     " Function : get_all_fcip_profiles Line 2029 \n"
                     " Function : get_all_fcip_profiles Line 2035 \n"
                     "Exiting get_all_fcip_profiles\n");
}

TEST_F(Enumerators, ProfileLeftOverByAFailedReadIsTraced) {
    the_switch().profiles.clear();
    leave_over("fcip_get_entity_entry", 1);
    enumerate_instances("ZANTO_FCIPProfile");
    EXPECT_EQ(trace, "Entering get_all_fcip_profiles\n"
                     " Function : get_all_fcip_profiles Line 2029 \n"
                     " Function : get_all_fcip_profiles Line 2035 \n"
                     " Function : get_all_fcip_profiles Line 2038 \n"
                     "Exiting get_all_fcip_profiles\n");
    leave_over("fcip_get_entity_entry", 1);
    enumerate_names("ZANTO_FCIPProfile");
    EXPECT_EQ(trace, "Entering get_all_fcip_profile_references\nExiting get_all_fcip_profile_references\n");
}

TEST_F(Enumerators, EntityReadWithoutARowEndsTheWalk) {
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 2);
    EXPECT_EQ(enumerate_instances("ZANTO_FCIPProfile").objects.size(), 1u);
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 2);
    EXPECT_EQ(enumerate_names("ZANTO_FCIPProfile").objects.size(), 1u);
}

// ---------------------------------------------------------------------------------------------- port walks

/// The lines that a port walk prints for a port of the small switch.
const std::string port_1 = "if_index -2097152000 \n";
const std::string port_2 = "if_index -2096889856 \n";
const std::string port_3 = "if_index -2080374784 \n"; // the Fibre Channel port

TEST_F(Enumerators, EthernetStatisticsSkipPortsOfOtherTypes) {
    the_switch().ports.at(ethernet_1).kind = switchsim::kind_fibre_channel;
    EXPECT_EQ(values(enumerate_instances("ZANTO_EthernetPortStatistics"), "InstanceID"),
              (std::vector<std::string>{"-2096889856"}));
    EXPECT_EQ(trace.substr(0, port_1.size() + port_2.size()), port_1 + port_2);
    EXPECT_EQ(trace.substr(trace.size() - port_3.size()), port_3);

    EXPECT_EQ(paths(enumerate_names("ZANTO_EthernetPortStatistics")),
              (std::vector<std::string>{R"(root/cimv2:ZANTO_EthernetPortStatistics.InstanceID="-2096889856")"}));
    EXPECT_EQ(trace, port_1 + port_2 +
                         "Entering eth_statistics_fill_reference\nExiting eth_statistics_fill_reference\n" + port_3);
}

TEST_F(Enumerators, EthernetStatisticsIncludeType5AndUnknownTypes) {
    the_switch().ports.at(ethernet_2).kind = switchsim::kind_port_channel; // 5
    the_switch().ports.at(fibre_channel_1).type_known = false;
    the_switch().ports.at(fibre_channel_1).counters = the_switch().ports.at(ethernet_1).counters;
    const std::vector<std::string> all = {"-2097152000", "-2096889856", "-2080374784"};
    EXPECT_EQ(values(enumerate_instances("ZANTO_EthernetPortStatistics"), "InstanceID"), all);
    EXPECT_EQ(enumerate_names("ZANTO_EthernetPortStatistics").objects.size(), 3u);
}

TEST_F(Enumerators, LanEndpointsEndAtTheFirstPortThatIsNoEthernetPort) {
    EXPECT_EQ(values(enumerate_instances("ZANTO_LANEndPoint"), "Name"),
              (std::vector<std::string>{"-2097152000:02:00:00:aa:00:01", "-2096889856:02:00:00:aa:00:02"}));
    EXPECT_EQ(trace, port_1 + "Exiting lan_endpoint_build_instance\n" + port_2 +
                         "Exiting lan_endpoint_build_instance\n" + port_3);
    EXPECT_EQ(enumerate_names("ZANTO_LANEndPoint").objects.size(), 2u);

    the_switch().ports.at(ethernet_1).kind = switchsim::kind_port_channel;
    EXPECT_TRUE(enumerate_instances("ZANTO_LANEndPoint").objects.empty()); // though the second is one
    EXPECT_EQ(trace, port_1);
    EXPECT_TRUE(enumerate_names("ZANTO_LANEndPoint").objects.empty());
    EXPECT_EQ(trace, port_1);
}

TEST_F(Enumerators, LanEndpointsEndAtAPortWhoseTypeCannotBeTold) {
    the_switch().ports.at(ethernet_2).type_known = false;
    EXPECT_EQ(enumerate_instances("ZANTO_LANEndPoint").objects.size(), 1u);
    EXPECT_EQ(enumerate_names("ZANTO_LANEndPoint").objects.size(), 1u);
}

TEST_F(Enumerators, EthernetStatisticalDataEndAtTheFirstOtherPort) {
    EXPECT_EQ(enumerate_instances("ZANTO_EthernetPortStatisticalData").objects.size(), 2u);
    EXPECT_EQ(trace, "\n Entering get_all_eth_stat_data_instances \n "
                     "tol:if_index -2097152000 \n Call to fcport_build_instance_pm "
                     "tol:if_index -2096889856 \n Call to fcport_build_instance_pm "
                     "tol:if_index -2080374784 \n\ntol : not a ethernet port\n \ntol : if_type :1");
}

TEST_F(Enumerators, EthernetStatisticalDataTraceAnUnknownTypeAs0) {
    the_switch().ports.at(ethernet_1).type_known = false;
    EXPECT_TRUE(enumerate_instances("ZANTO_EthernetPortStatisticalData").objects.empty());
    EXPECT_EQ(trace, "\n Entering get_all_eth_stat_data_instances \n "
                     "tol:if_index -2097152000 \n\ntol : not a ethernet port\n \ntol : if_type :0");
}

TEST_F(Enumerators, EthernetStatisticalDataPathsAreOnePerPortOfAnyType) {
    const auto answer = enumerate_names("ZANTO_EthernetPortStatisticalData");
    EXPECT_EQ(answer.objects.size(), 3u);
    EXPECT_EQ(trace, "");
    EXPECT_EQ(switchsim::calls("if_index_get_type"), 0u);
    EXPECT_EQ(answer.objects[2].class_name, "ZANTO_EthernetPortStatisticalData");
}

TEST_F(Enumerators, PortReadThatFailsEndsTheWalk) {
    for (const Fault fault : read_faults) {
        for (const char* class_name :
             {"ZANTO_EthernetPortStatistics", "ZANTO_LANEndPoint", "ZANTO_EthernetPortStatisticalData"}) {
            switchsim::inject("pm_cim_get_port_info", fault, 1);
            EXPECT_TRUE(enumerate_instances(class_name).objects.empty()) << class_name;
            switchsim::inject("pm_cim_get_port_info", fault, 1);
            EXPECT_TRUE(enumerate_names(class_name).objects.empty()) << class_name;
        }
    }
}

// ---------------------------------------------------------------------------------------------- other classes

TEST_F(Enumerators, FibreChannelPortAssociationHasNoInstances) {
    const auto answer = enumerate_instances("ZANTO_FCPortProtocolEndPoint");
    EXPECT_TRUE(answer.objects.empty());
    EXPECT_EQ(answer.null_results + answer.invalid_results, 0u);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_EQ(trace, "");
    EXPECT_EQ(switchsim::total_calls(), 0u);
}

TEST_F(Enumerators, ClassThatNobodyKnowsIsNotRefused) {
    for (const auto& answer : {enumerate_instances("ZANTO_NoSuchClass"), enumerate_names("ZANTO_NoSuchClass")}) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.null_results, 0u);
    }
}

TEST_F(Enumerators, ReturnDoneIsNeverCalled) {
    EXPECT_FALSE(enumerate_instances("ZANTO_FCIPProtocolEndPoint").done);
    EXPECT_FALSE(enumerate_names("ZANTO_FCIPProtocolEndPoint").done);
}

} // namespace
