// Whole traces of one request per family, byte for byte, and of the ways in which a member can end early.
#include "provider/associations/binds_to.h"
#include "tests/provider/associations/association_test.h"

namespace {

using namespace test;
using switchsim::Fault;

class Traces : public AssociationTest {};

TEST_F(Traces, OfAssociators) {
    run(fcip::get_fcip_pe_associators, "1_10.1.1.1_10.1.1.2", "ZANTO_FCIPTCPEndpoint");
    EXPECT_EQ(trace, "Entering get_fcip_pe_associators\n"
                     " Function : get_fcip_pe_associators Line 2 \n"
                     "Entering get_fcip_link_entry_from\n"
                     "tunnel id : 1 \n"
                     "Entry FoundExiting get_fcip_link_entry_from\n"
                     "Entering tcp_pe_build_instance\n"
                     "Exiting tcp_pe_build_instance\n"
                     "Exiting get_fcip_pe_associators\n");
}

TEST_F(Traces, OfAssociatorsOfAnIpEndpoint) {
    run(fcip::get_ip_pe_associators, "16777216_x", "ZANTO_SwitchHostedIPAccessPoint");
    EXPECT_EQ(trace, "Entering get_ip_pe_associators\n"
                     "Association Class ZANTO_SwitchHostedIPAccessPoint \n"
                     " Function : get_ip_pe_associators Line 5 \n"
                     "Entering get_fcip_link_entry_from\n"
                     " Function : get_fcip_link_entry_from Line 76 \n"
                     "if_index : 16777216 \n"
                     "Entry FoundExiting get_fcip_link_entry_from\n"
                     "Entering get_logical_computer_instance\n"
                     "vsan_index 1 \n"
                     "Exiting get_ip_pe_associators\n");
}

TEST_F(Traces, OfAssociatorNames) {
    run(fcip::get_ip_pe_associator_names, "16777216_x", "ZANTO_IPElementSettingData");
    EXPECT_TRUE(trace.starts_with("Entering get_ip_pe_associator_names\n"
                                  "Association Class ZANTO_IPElementSettingData \n"
                                  " Function : get_ip_pe_associator_names Line 1 \n"
                                  "Entering get_fcip_link_entry_from\n"
                                  " Function : get_fcip_link_entry_from Line 76 \n"
                                  "if_index : 16777216 \n"
                                  "Entry FoundExiting get_fcip_link_entry_from\n"))
        << trace;
    EXPECT_TRUE(trace.ends_with("Entering get_fcip_link_entry_from\n"
                                " Function : get_fcip_link_entry_from Line 76 \n"
                                "if_index : 16777216 \n"
                                "Entry FoundExiting get_fcip_link_entry_from\n"
                                "Entering get_logical_computer_keys\n"
                                "vsan_index 1 \n"
                                "Exiting get_ip_pe_associator_names\n"))
        << trace;
}

TEST_F(Traces, SecondPathOfIpSettingsHasNoLocation) {
    const auto outcome = run(fcip::get_ip_pe_associator_names, "16777216_x", "ZANTO_IPElementSettingData");
    EXPECT_EQ(outcome.answer.objects.size(), 2u);
    const std::string location = " Function : get_ip_pe_associator_names Line ";
    EXPECT_NE(trace.find(location), std::string::npos);
    EXPECT_EQ(trace.find(location), trace.rfind(location)) << trace;
}

TEST_F(Traces, OfReferencesAndTheirNames) {
    run(fcip::get_fcip_pe_references, "1_10.1.1.1_10.1.1.2", "ZANTO_FCIPPEBasedOn");
    EXPECT_EQ(trace, "Entering get_fcip_pe_references\n"
                     " ****** Result Class :ZANTO_FCIPPEBasedOn  ********** \n"
                     " Function : get_fcip_pe_references Line 5 \n"
                     "Entering get_fcip_link_entry_from\n"
                     "tunnel id : 1 \n"
                     "Entry FoundExiting get_fcip_link_entry_from\n"
                     "get_profile_from_link_entry : Error\n"
                     "Exiting get_fcip_pe_references\n");
    run(fcip::get_fcip_pe_reference_names, "1_10.1.1.1_10.1.1.2", "ZANTO_SwitchHostedFCIPAccessPoint");
    EXPECT_EQ(trace, "Entering get_fcip_pe_reference_names\n"
                     " ****** Result Class :ZANTO_SwitchHostedFCIPAccessPoint  ********** \n"
                     " Function : get_fcip_pe_reference_names Line 6 \n"
                     "Entering get_fcip_link_entry_from\n"
                     "tunnel id : 1 \n"
                     "Entry FoundExiting get_fcip_link_entry_from\n"
                     "Entering get_logical_computer_keys\n"
                     "vsan_index 1 \n"
                     "Exiting get_fcip_pe_reference_names\n");
}

TEST_F(Traces, OfEnumeratedAssociations) {
    the_switch().links.erase(tunnel_3);
    the_switch().links.erase(tunnel_7);
    the_switch().links.erase(tunnel_8);
    call([&] { return fcip::get_all_binds_to_references("ZANTO_FCIPPEBasedOn", scope.result(), "root/cimv2"); });
    EXPECT_EQ(trace, "Entering get_all_binds_to_references\n"
                     "get_profile_from_link_entry : Error\n"
                     "Exiting get_all_binds_to_references\n");
    call(
        [&] { return fcip::get_all_binds_to_instances("ZANTO_FCIPPEBasedOn", scope.result(), "root/cimv2", nullptr); });
    EXPECT_EQ(trace, "Entering get_all_binds_to_instances\n"
                     "get_profile_from_link_entry : Error\n"
                     "Exiting get_all_binds_to_instances\n");
}

TEST_F(Traces, EnumeratedIpEthernetEndpointsBeginWithTheirLocation) {
    call([&] { return fcip::get_all_binds_to_references("ZANTO_IPEthernetEndpoint", scope.result(), "root/cimv2"); });
    EXPECT_TRUE(trace.starts_with("Entering get_all_binds_to_references\n"
                                  " Function : get_all_binds_to_references Line 6 \n"
                                  "Entering lan_endpoint_fill_reference\n"))
        << trace;
    call([&] {
        return fcip::get_all_binds_to_instances("ZANTO_IPEthernetEndpoint", scope.result(), "root/cimv2", nullptr);
    });
    EXPECT_TRUE(trace.starts_with("Entering get_all_binds_to_instances\n"
                                  " Function : get_all_binds_to_instances Line 6 \n"
                                  "Entering lan_endpoint_fill_reference\n"))
        << trace;
}

TEST_F(Traces, OfAWholeRequest) {
    walk(Operation::reference_names, path_of("ZANTO_FCIPProfile", {{"InstanceID", "3"}}), "ZANTO_FCIPPEBasedOn");
    EXPECT_EQ(trace, "Entering FCIP_ReferenceNames\n"
                     "\tfound key InstanceID : 3 \n"
                     "Entering get_profile_reference_names\n"
                     " Function : get_profile_reference_names Line 1 \n"
                     "Entering get_fcip_link_entry_from\n"
                     "Entry FoundExiting get_fcip_link_entry_from\n"
                     "get_profile_from_link_entry : Error\n"
                     "Exiting get_profile_reference_names\n"
                     "Exiting FCIP_ReferenceNames\n");
}

TEST_F(Traces, AFailedLookupExitsInAssociatorsOnly) {
    run(fcip::get_fcip_pe_associators, "_", "ZANTO_FCIPTCPEndpoint");
    EXPECT_EQ(trace, "Entering get_fcip_pe_associators\n"
                     " Function : get_fcip_pe_associators Line 2 \n"
                     "Entering get_fcip_link_entry_from\n"
                     "Exiting get_fcip_pe_associators\n");
    EXPECT_EQ(run(fcip::get_fcip_pe_references, "_", "ZANTO_FCIPTCPEndpoint").status, 0);
    EXPECT_EQ(trace, "Entering get_fcip_pe_references\n"
                     " ****** Result Class :ZANTO_FCIPTCPEndpoint  ********** \n"
                     " Function : get_fcip_pe_references Line 2 \n"
                     "Entering get_fcip_link_entry_from\n");
    EXPECT_EQ(run(fcip::get_ip_pe_references, "_", "ZANTO_TCPIPEndpoint").status, -1);
    EXPECT_EQ(trace, "Entering get_ip_pe_references\n"
                     "Result Class :ZANTO_TCPIPEndpoint \n"
                     " Function : get_ip_pe_references Line 3 \n"
                     "Entering get_fcip_link_entry_from\n"
                     " Function : get_fcip_link_entry_from Line 76 \n");
}

TEST_F(Traces, AMissingEndEndsReferencesWithItsLine) {
    the_switch().profiles.erase(3);
    run(fcip::get_fcip_pe_reference_names, "1_x", "ZANTO_FCIPElementSettingData");
    EXPECT_TRUE(trace.starts_with("Entering get_fcip_pe_reference_names\n"
                                  " ****** Result Class :ZANTO_FCIPElementSettingData  ********** \n"
                                  " Function : get_fcip_pe_reference_names Line 1 \n"
                                  "Entering get_fcip_link_entry_from\n"
                                  "tunnel id : 1 \n"
                                  "Entry FoundExiting get_fcip_link_entry_from\n"))
        << trace;
    EXPECT_TRUE(trace.ends_with("swop : NULL\n")) << trace;
}

TEST_F(Traces, AFailedErrorsRecordIsReleasedWithTheBranchsNumber) {
    switchsim::inject("fcip_snmp_get_link_errors", Fault::fail_leaving_record);
    run(fcip::get_ip_pe_associator_names, "16777216_x", "ZANTO_IPEndPointStatisticalData");
    EXPECT_EQ(trace, "Entering get_ip_pe_associator_names\n"
                     "Association Class ZANTO_IPEndPointStatisticalData \n"
                     " Function : get_ip_pe_associator_names Line 2 \n"
                     "Entering get_fcip_link_entry_from\n"
                     " Function : get_fcip_link_entry_from Line 76 \n"
                     "if_index : 16777216 \n"
                     "Entry FoundExiting get_fcip_link_entry_from\n"
                     " Function : get_ip_pe_associator_names Line 2 \n"
                     "Exiting get_ip_pe_associator_names\n");
}

} // namespace
