// Traversals when the platform lacks something on the way: nothing is answered, or what a builder gave is handed on.
#include "tests/provider/associations/association_test.h"

#include <algorithm>

namespace {

using namespace test;
using switchsim::Fault;

constexpr const char* fcip_key = "3_10.1.1.1_192.168.100.101";
constexpr const char* ip_key = "16777218_x_y";
constexpr const char* lan_key = "-2096889856:02:00:00:aa:00:02";
constexpr const char* port_key = "-2096889856";

/// The members that answer references and their names, with a key and what they are asked for.
struct ReferencesRow {
    fcip::references_member* instances;
    fcip::reference_names_member* names;
    const char* key_value;
    const char* asked;
};

/// A call of the platform that fails.
struct FailingCall {
    const char* function;
    Fault fault;
    unsigned nth = switchsim::every_call;
};

constexpr const char* nothing = "0: 0 objects, 0 nulls, 0 invalid";
constexpr const char* one_object = "0: 1 objects, 0 nulls, 0 invalid";
constexpr const char* one_null = "0: 0 objects, 1 nulls, 0 invalid";
constexpr const char* one_invalid = "0: 0 objects, 0 nulls, 1 invalid";
constexpr const char* failed = "-1: 0 objects, 0 nulls, 0 invalid";

constexpr const char* no_first_end = "swop : NULL\n";
constexpr const char* no_second_end = "peop : NULL\n";

class Failures : public AssociationTest {
  protected:
    template <typename Member>
    Outcome with_fault(const char* function, Fault fault, Member* member, const char* key_value, const char* asked,
                       unsigned nth = switchsim::every_call) {
        switchsim::inject(function, fault, nth);
        Outcome outcome = run(member, key_value, asked);
        switchsim::clear_faults();
        return outcome;
    }

    /// Status and what went out: objects, nulls, invalid pointers.
    static std::string summary(const Outcome& outcome) {
        return std::to_string(outcome.status) + ": " + std::to_string(outcome.answer.objects.size()) + " objects, " +
               std::to_string(outcome.answer.null_results) + " nulls, " +
               std::to_string(outcome.answer.invalid_results) + " invalid";
    }

    bool printed(const std::string& text) const { return trace.find(text) != std::string::npos; }

    /// -1 without a result: behind the line of the end that is missing, else before any end is looked at.
    void expect_minus_one(const Outcome& outcome, const char* missing_end) {
        EXPECT_EQ(summary(outcome), failed);
        if (missing_end) {
            EXPECT_TRUE(trace.ends_with(missing_end)) << trace;
        } else {
            EXPECT_FALSE(trace.ends_with("_references\n") || trace.ends_with("_reference_names\n")) << trace;
        }
    }

    void expect_minus_one(const ReferencesRow& row, const char* missing_end) {
        SCOPED_TRACE(row.asked);
        expect_minus_one(run(row.instances, row.key_value, row.asked), missing_end);
        expect_minus_one(run(row.names, row.key_value, row.asked), missing_end);
    }

    void expect_minus_one(const ReferencesRow& row, const FailingCall& call, const char* missing_end = nullptr) {
        SCOPED_TRACE(row.asked);
        const auto& [function, fault, nth] = call;
        expect_minus_one(with_fault(function, fault, row.instances, row.key_value, row.asked, nth), missing_end);
        expect_minus_one(with_fault(function, fault, row.names, row.key_value, row.asked, nth), missing_end);
    }
};

constexpr ReferencesRow fc_port_of_fcip_endpoint{fcip::get_fcip_pe_references, fcip::get_fcip_pe_reference_names,
                                                 fcip_key, "ZANTO_FCPortProtocolEndPoint"};
constexpr ReferencesRow lan_endpoint_of_port{fcip::get_eth_port_references, fcip::get_eth_port_reference_names,
                                             port_key, "ZANTO_EthernetPortProtocolEndpoint"};

/// One end is an Ethernet port.
constexpr ReferencesRow references_with_ethernet_port[] = {
    {fcip::get_ip_pe_references, fcip::get_ip_pe_reference_names, ip_key, "ZANTO_IPEthernetEndpoint"},
    {fcip::get_lan_endpoint_references, fcip::get_lan_endpoint_reference_names, lan_key,
     "ZANTO_EthernetPortProtocolEndpoint"},
    lan_endpoint_of_port,
    {fcip::get_eth_port_references, fcip::get_eth_port_reference_names, port_key, "ZANTO_EthernetPortStatisticalData"},
    {fcip::get_eth_stat_references, fcip::get_eth_stat_reference_names, port_key, "ZANTO_EthernetPortStatisticalData"},
};

// ---------------------------------------------------------------------------------------------- ports

TEST_F(Failures, NoFibreChannelPortIsNoPartner) {
    the_switch().ports.at(fcip_3).fc_interface = false;
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_associators, fcip_key, "ZANTO_FCPortProtocolEndPoint")), nothing);
    EXPECT_TRUE(trace.ends_with("Exiting get_fcip_pe_associators\n"));
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_associator_names, fcip_key, "ZANTO_FCPortProtocolEndPoint")), nothing);
    const unsigned made = scope.objects_made();
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_references, fcip_key, "ZANTO_FCPortProtocolEndPoint")), failed);
    EXPECT_FALSE(printed("Exiting get_fcip_pe_references"));
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_reference_names, fcip_key, "ZANTO_FCPortProtocolEndPoint")), failed);
    EXPECT_EQ(scope.objects_made(), made); // -1 before any end is made
    EXPECT_FALSE(printed("Exiting get_fcip_pe_reference_names"));
}

TEST_F(Failures, AnIpEndpointsMissingPortGivesTheBuildersNull) {
    for (const Fault fault : {Fault::fail, Fault::succeed_without_record}) {
        EXPECT_EQ(summary(with_fault("pm_cim_get_port_info", fault, fcip::get_ip_pe_associators, ip_key,
                                     "ZANTO_IPEthernetEndpoint", 1)),
                  one_null);
        EXPECT_EQ(summary(with_fault("pm_cim_get_port_info", fault, fcip::get_ip_pe_associator_names, ip_key,
                                     "ZANTO_IPEthernetEndpoint", 1)),
                  one_null);
    }
    // Whether the port could be read is not looked at: a record that a failed read left counts.
    const auto outcome = with_fault("pm_cim_get_port_info", Fault::fail_leaving_record, fcip::get_ip_pe_associators,
                                    ip_key, "ZANTO_IPEthernetEndpoint", 1);
    EXPECT_EQ(summary(outcome), one_object);
    EXPECT_EQ(values(outcome.answer, "DeviceID"), std::vector<std::string>{"0"});
}

TEST_F(Failures, ReferencesWithoutThePortEndBeforeAnyPathIsMade) {
    for (const ReferencesRow& row : references_with_ethernet_port)
        for (const Fault fault : read_faults) {
            const unsigned made = scope.objects_made();
            expect_minus_one(row, {"pm_cim_get_port_info", fault, 1});
            EXPECT_EQ(scope.objects_made(), made);
        }
}

TEST_F(Failures, StatisticsOfAPortThatCannotBeReadAreNoPartner) {
    for (const Fault fault : read_faults) {
        const auto answered = [&](auto* member, const char* asked) {
            return summary(with_fault("pm_cim_get_port_info", fault, member, port_key, asked, 1));
        };
        EXPECT_EQ(answered(fcip::get_eth_port_associators, "ZANTO_EthernetPortStatisticalData"), nothing);
        EXPECT_EQ(answered(fcip::get_eth_port_associator_names, "ZANTO_EthernetPortStatistics"), nothing);
        EXPECT_EQ(answered(fcip::get_eth_stat_associators, "ZANTO_EthernetPortStatisticalData"), nothing);
        EXPECT_EQ(answered(fcip::get_eth_stat_associator_names, "ZANTO_EthernetPortStatisticalData"), nothing);
    }
}

TEST_F(Failures, ALanEndpointThatCannotBeBuiltIsHandedOnAsNull) {
    EXPECT_EQ(summary(run(fcip::get_eth_port_associators, "99", "ZANTO_EthernetPortProtocolEndpoint")), one_null);
    EXPECT_EQ(summary(run(fcip::get_eth_port_associator_names, "99", "ZANTO_EthernetPortProtocolEndpoint")), one_null);
}

TEST_F(Failures, ALanEndpointsPortThatIsNoEthernetPortIsNoPartner) {
    EXPECT_EQ(summary(run(fcip::get_lan_endpoint_associators, "99:x", "ZANTO_EthernetPortProtocolEndpoint")), nothing);
    EXPECT_EQ(summary(run(fcip::get_lan_endpoint_associator_names, "99:x", "ZANTO_EthernetPortProtocolEndpoint")),
              nothing);
    EXPECT_EQ(summary(run(fcip::get_lan_endpoint_associators, ":_", "ZANTO_EthernetPortProtocolEndpoint")), nothing);
    EXPECT_EQ(summary(run(fcip::get_lan_endpoint_associator_names, ":_", "ZANTO_EthernetPortProtocolEndpoint")),
              nothing);
    EXPECT_EQ(summary(run(fcip::get_lan_endpoint_references, ":_", "ZANTO_EthernetPortProtocolEndpoint")), failed);
    EXPECT_EQ(summary(run(fcip::get_lan_endpoint_reference_names, ":_", "ZANTO_EthernetPortProtocolEndpoint")), failed);
}

// ---------------------------------------------------------------------------------------------- profiles

TEST_F(Failures, NoProfileIsNoPartner) {
    for (const Fault fault : read_faults) {
        EXPECT_EQ(summary(with_fault("fcip_get_entity_entry", fault, fcip::get_fcip_pe_associators, fcip_key,
                                     "ZANTO_FCIPPEBasedOn")),
                  nothing);
        EXPECT_EQ(summary(with_fault("fcip_get_entity_entry", fault, fcip::get_fcip_pe_associator_names, fcip_key,
                                     "ZANTO_FCIPPEBasedOn")),
                  nothing);
    }
}

TEST_F(Failures, ReferencesWithoutTheProfileEndBeforeAnyPathIsMade) {
    for (const Fault fault : read_faults) {
        const unsigned made = scope.objects_made();
        expect_minus_one(
            {fcip::get_fcip_pe_references, fcip::get_fcip_pe_reference_names, fcip_key, "ZANTO_FCIPPEBasedOn"},
            {"fcip_get_entity_entry", fault, 1});
        expect_minus_one({fcip::get_profile_references, fcip::get_profile_reference_names, "3", "ZANTO_FCIPPEBasedOn"},
                         {"fcip_get_entity_entry", fault, 1});
        EXPECT_EQ(scope.objects_made(), made);
    }
}

// ---------------------------------------------------------------------------------------------- ends

TEST_F(Failures, AMissingFirstEndIsPrintedAndGivesMinusOne) {
    the_switch().profiles.erase(3);
    expect_minus_one({fcip::get_ip_pe_references, fcip::get_ip_pe_reference_names, ip_key, "ZANTO_TCPIPEndpoint"},
                     no_first_end);
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_references, fcip_key, "ZANTO_FCIPTCPEndpoint")), failed);
}

TEST_F(Failures, AMissingSecondEndIsMinusOneAfterBothWereMade) {
    // The first end reads the profile once, the second fails on its own read.
    const ReferencesRow settings{fcip::get_fcip_settings_references, fcip::get_fcip_settings_reference_names,
                                 "16777218", "ZANTO_FCIPElementSettingData"};
    for (const Fault fault : read_faults)
        expect_minus_one(settings, {"fcip_get_entity_entry", fault, 2}, no_second_end);
}

TEST_F(Failures, APortWithoutLanEndpointOrPathIsAMissingEnd) {
    // The port of the link is read first, the LAN endpoint reads its own.
    for (const Fault fault : read_faults) {
        expect_minus_one(lan_endpoint_of_port, {"pm_cim_get_port_info", fault, 2}, no_second_end);
    }
    expect_minus_one(fc_port_of_fcip_endpoint, {"fcport_fill_reference_pm", Fault::fail}, no_first_end);
    for (const ReferencesRow& row : references_with_ethernet_port)
        expect_minus_one(row, {"fcport_fill_reference_pm", Fault::fail}, no_first_end);
}

TEST_F(Failures, StatisticsOfALinkWithoutEthernetPortAreAMissingEnd) {
    tunnel(tunnel_3)->ethernet_if_index = 0;
    expect_minus_one(
        {fcip::get_ip_pe_references, fcip::get_ip_pe_reference_names, ip_key, "ZANTO_IPEndPointStatisticalData"},
        no_first_end); // where the statistics come first
    expect_minus_one(
        {fcip::get_tcp_pe_references, fcip::get_tcp_pe_reference_names, "16777218", "ZANTO_TCPEndPointStatisticalData"},
        no_second_end);
}

TEST_F(Failures, BothEndsAreMadeEvenIfTheFirstIsMissing) {
    with_fault("fcip_get_entity_entry", Fault::fail, fcip::get_fcip_settings_references, "16777218",
               "ZANTO_FCIPElementSettingData", 1);
    EXPECT_TRUE(trace.ends_with("swop : NULL\n")) << trace;
    EXPECT_EQ(switchsim::calls("fcip_get_entity_entry"), 2u);
}

TEST_F(Failures, AnUnknownSystemCountsAsAMissingEndInReferences) {
    the_switch().vsans.erase(1);
    expect_minus_one({fcip::get_fcip_pe_references, fcip::get_fcip_pe_reference_names, fcip_key,
                      "ZANTO_SwitchHostedFCIPAccessPoint"},
                     no_first_end);
    expect_minus_one(
        {fcip::get_ip_pe_references, fcip::get_ip_pe_reference_names, ip_key, "ZANTO_SwitchHostedIPAccessPoint"},
        no_second_end);
    expect_minus_one(
        {fcip::get_tcp_pe_references, fcip::get_tcp_pe_reference_names, "16777218", "ZANTO_SwitchHostedTCPAccessPoint"},
        no_second_end);
}

TEST_F(Failures, AnUnknownSystemIsHandedOnAsMinusOneByAssociators) {
    the_switch().vsans.erase(1);
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_associators, fcip_key, "ZANTO_SwitchHostedFCIPAccessPoint")), one_invalid);
    EXPECT_EQ(summary(run(fcip::get_fcip_pe_associator_names, fcip_key, "ZANTO_SwitchHostedFCIPAccessPoint")),
              one_invalid);
    EXPECT_EQ(summary(run(fcip::get_ip_pe_associators, ip_key, "ZANTO_SwitchHostedIPAccessPoint")), one_invalid);
    EXPECT_EQ(summary(run(fcip::get_tcp_pe_associators, "16777218", "ZANTO_SwitchHostedTCPAccessPoint")), one_invalid);
    EXPECT_EQ(summary(run(fcip::get_ip_pe_associator_names, ip_key, "ZANTO_NoSuchAssociation")), one_invalid);
    const auto settings_and_system = run(fcip::get_ip_pe_associator_names, ip_key, "ZANTO_IPElementSettingData");
    EXPECT_EQ(summary(settings_and_system), "0: 1 objects, 0 nulls, 1 invalid");
    EXPECT_EQ(paths(settings_and_system.answer), std::vector{instance_of_tunnel_3("ZANTO_IPSettings")});
}

TEST_F(Failures, ANullAssociationOfTwoPresentEndsIsHandedOn) {
    const unsigned before = scope.objects_made();
    run(fcip::get_fcip_settings_reference_names, "16777218", "ZANTO_FCIPElementSettingData");
    const unsigned objects = scope.objects_made() - before;
    scope.fail_object(objects); // the association's path is the last object made
    EXPECT_EQ(summary(run(fcip::get_fcip_settings_reference_names, "16777218", "ZANTO_FCIPElementSettingData")),
              one_null);
    EXPECT_TRUE(trace.ends_with("Exiting get_fcip_settings_reference_names\n"));
    scope.fail_object(objects + 1); // and the instance comes after it
    EXPECT_EQ(summary(run(fcip::get_fcip_settings_references, "16777218", "ZANTO_FCIPElementSettingData")), one_null);
    EXPECT_FALSE(printed("swop") || printed("peop"));
}

// ---------------------------------------------------------------------------------------------- link errors

TEST_F(Failures, StatisticsInstancesDoNotNeedTheLinkErrors) {
    const std::string ip_location = " Function : get_ip_pe_associators Line 2 \n";
    const std::string tcp_location = " Function : get_tcp_pe_associators Line 1 \n";
    for (const Fault fault : read_faults) {
        const bool leaves_record = fault == Fault::fail_leaving_record;
        EXPECT_EQ(summary(with_fault("fcip_snmp_get_link_errors", fault, fcip::get_ip_pe_associators, ip_key,
                                     "ZANTO_IPEndPointStatisticalData")),
                  one_object);
        EXPECT_EQ(trace.find(ip_location) != trace.rfind(ip_location), leaves_record) << trace; // printed twice
        EXPECT_EQ(summary(with_fault("fcip_snmp_get_link_errors", fault, fcip::get_tcp_pe_associators, "16777218",
                                     "ZANTO_TCPEndPointStatisticalData")),
                  one_object);
        EXPECT_EQ(trace.find(tcp_location) != trace.rfind(tcp_location), leaves_record) << trace;
    }
    EXPECT_EQ(switchsim::calls("fcip_snmp_get_link_errors"), 6u);
    run(fcip::get_tcp_pe_associators, "16777218", "ZANTO_TCPEndPointStatisticalData");
    EXPECT_TRUE(printed(tcp_location));
    EXPECT_EQ(trace.find(tcp_location), trace.rfind(tcp_location)) << "a record that was asked for with success";
}

TEST_F(Failures, StatisticsPathsNeedTheLinkErrors) {
    for (const Fault fault : read_faults) {
        EXPECT_EQ(summary(with_fault("fcip_snmp_get_link_errors", fault, fcip::get_ip_pe_associator_names, ip_key,
                                     "ZANTO_IPEndPointStatisticalData")),
                  nothing);
        EXPECT_EQ(summary(with_fault("fcip_snmp_get_link_errors", fault, fcip::get_tcp_pe_associator_names, "16777218",
                                     "ZANTO_TCPEndPointStatisticalData")),
                  nothing);
        const std::string location = " Function : get_tcp_pe_associator_names Line 1 \n";
        EXPECT_EQ(trace.find(location) != trace.rfind(location), fault == Fault::fail_leaving_record) << trace;
    }
}

// ---------------------------------------------------------------------------------------------- second reads

TEST_F(Failures, TcpSettingsAreNoPartnerIfTheLinkCannotBeReadAgain) {
    // Tunnel 3 is the second row: two reads of the lookup, then the second read of the same link.
    for (const Fault fault : read_faults) {
        EXPECT_EQ(summary(with_fault("fcip_get_link_entry", fault, fcip::get_tcp_pe_associators, "16777218",
                                     "ZANTO_TCPElementSettingData", 3)),
                  nothing);
        EXPECT_TRUE(trace.ends_with("Exiting get_fcip_link_entry_from\nExiting get_tcp_pe_associators\n")) << trace;
    }
}

TEST_F(Failures, SettingsNamesWithoutTheFirstLookupAreTheSystem) {
    // The first lookup finds a row and a key without a token; the second finds an empty table and a row of zeroes,
    // whose interface index 0 is given a port here.
    the_switch().ports[0] = the_switch().ports.at(fcip_1);
    const auto outcome = [&] {
        switchsim::inject("fcip_get_link_entry", Fault::fail, 2);
        auto result = run(fcip::get_ip_pe_associator_names, "_", "ZANTO_IPElementSettingData");
        switchsim::clear_faults();
        return result;
    }();
    EXPECT_EQ(summary(outcome), one_object);
    EXPECT_EQ(paths(outcome.answer), std::vector{vsan_1("ZANTO_LogicalComputerSystem")});
    EXPECT_TRUE(printed("Entering get_logical_computer_keys\n"));
    EXPECT_FALSE(printed("ip_settings_fill_reference"));
    // And when both fail, nothing.
    EXPECT_EQ(summary(run(fcip::get_ip_pe_associator_names, "_", "ZANTO_IPElementSettingData")), nothing);
}

TEST_F(Failures, SettingsNamesWithoutTheSecondLookupAreTheSettings) {
    // The other way round: the first lookup finds an empty table, the second a row and a key without a token. The row
    // of zeroes is given a link and a profile, which a walk that starts behind {0, 0} passes by.
    FcipLinkEntry link = *tunnel(tunnel_1);
    link.entity_id = 0;
    link.link_index = 0;
    the_switch().links[{0, 0}] = link;
    the_switch().profiles[0] = the_switch().profiles.at(3);
    switchsim::inject("fcip_get_link_entry", Fault::fail, 1);
    const auto outcome = run(fcip::get_ip_pe_associator_names, "_", "ZANTO_IPElementSettingData");
    switchsim::clear_faults();
    EXPECT_EQ(summary(outcome), one_object);
    EXPECT_EQ(paths(outcome.answer), std::vector<std::string>{R"(root/cimv2:ZANTO_IPSettings.InstanceID="0")"});
    EXPECT_FALSE(printed("Entering get_logical_computer_keys\n"));
}

TEST_F(Failures, ALinkThatATcpBuilderCannotReadAgainIsMinusOne) {
    // Tunnel 3 is the second row. Settings: two reads of the lookup, the second fetch, then the builder's walk.
    EXPECT_EQ(summary(with_fault("fcip_get_link_entry", Fault::fail, fcip::get_tcp_pe_associators, "16777218",
                                 "ZANTO_TCPElementSettingData", 4)),
              one_invalid);
    EXPECT_TRUE(printed("tcp_settings_build_instance Line 857 \nExiting get_tcp_pe_associators\n")) << trace;
    EXPECT_EQ(summary(with_fault("fcip_get_link_entry", Fault::fail, fcip::get_tcp_pe_associators, "16777218",
                                 "ZANTO_TCPEndPointStatisticalData", 3)),
              one_invalid);
    EXPECT_TRUE(printed("tcp_statistical_data_build_instance Line 963 \nExiting get_tcp_pe_associators\n")) << trace;
}

// ---------------------------------------------------------------------------------------------- everything at once

TEST_F(Failures, NoSinglePlatformFailureMakesAMemberCrashOrLeak) {
    whole_objects_expected = false; // what a fault leaves out is looked at elsewhere
    for (const Source& from : sources())
        for (const char* asked : association_classes)
            for (const Operation operation : {Operation::associators, Operation::associator_names,
                                              Operation::references, Operation::reference_names})
                for (const Fault fault : {Fault::fail_leaving_record, Fault::succeed_without_record}) {
                    switchsim::clear_counts();
                    walk(operation, from.path(), asked);
                    const unsigned calls = switchsim::total_calls();
                    for (unsigned nth = 1; nth <= calls; ++nth) {
                        switchsim::inject_at(nth, fault);
                        const auto answer = walk(operation, from.path(), asked);
                        switchsim::clear_faults();
                        EXPECT_EQ(answer.rc, 0);
                        EXPECT_FALSE(switchsim::lock_held());
                    }
                }
}

TEST_F(Failures, NoFailureUpsetsMembersThatNoOperationReaches) {
    tunnel(tunnel_1)->link_if_index = 0; // for the remote TCP port, whose key begins with it
    the_switch().ports[0] = the_switch().ports.at(fcip_1);
    struct {
        std::string member;
        const char* key_value;
        const char* asked;
        std::size_t answers;
    } const rows[] = {
        {"get_tcp_statical_data_associators", "3", "ZANTO_TCPEndPointStatistics", 1},
        {"get_tcp_statical_data_associator_names", "3", "ZANTO_TCPEndPointStatistics", 0},
        {"get_fcip_remote_pe_reference_names", "0_192.168.100.101", "ZANTO_SANFCIPEndpoint", 1},
        {"get_ip_remote_pe_reference_names", "0_192.168.100.101", "ZANTO_SANIPEndpoint", 1},
        {"get_tcp_remote_pe_reference_names", "0_16777218", "ZANTO_SANTCPEndpoint", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.member);
        const auto member = std::ranges::find(members(), row.member, &Member::name);
        ASSERT_NE(member, members().end());
        const auto ask = [&] {
            return std::visit([&](auto* function) { return run(function, row.key_value, row.asked); },
                              member->function);
        };
        const auto expect_no_more = [&](const Outcome& outcome) {
            const auto& out = outcome.answer;
            EXPECT_TRUE(outcome.status == 0 || (outcome.status == -1 && !member->is_associator()));
            EXPECT_LE(out.objects.size() + out.null_results + out.invalid_results,
                      outcome.status == 0 ? row.answers : 0);
            EXPECT_FALSE(switchsim::lock_held());
        };
        switchsim::clear_counts();
        const unsigned made = scope.objects_made();
        EXPECT_EQ(ask().answer.objects.size(), row.answers);
        const unsigned calls = switchsim::total_calls();
        const unsigned objects = scope.objects_made() - made;
        EXPECT_GT(calls, 2u);
        for (const Fault fault : read_faults)
            for (unsigned nth = 1; nth <= calls; ++nth) {
                switchsim::inject_at(nth, fault);
                expect_no_more(ask());
                switchsim::clear_faults();
            }
        for (unsigned nth = 1; nth <= objects; ++nth) {
            scope.fail_object(nth);
            expect_no_more(ask());
        }
        scope.fail_object(0);
        EXPECT_EQ(ask().answer.objects.size(), row.answers);
    }
}

} // namespace
