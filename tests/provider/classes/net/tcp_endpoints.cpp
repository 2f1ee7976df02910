// The two ends of a tunnel's TCP transport.
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "tests/support/class_test.h"

using namespace test;
using switchsim::Fault;

namespace {

class TcpProtocolEndpoint : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        local_properties = made_by([&] { return build(fcip::tcp_pe_build_instance, link(tunnel_3)); });
        local_keys = made_by([&] { return build(fcip::tcp_pe_fill_reference, link(tunnel_3)); });
    }

    Rows local_properties; ///< of tunnel 3, as long as nothing is changed
    Rows local_keys;
};

class RemoteTcpPort : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        remote_properties = made_by([&] { return build(fcip::tcp_remote_pe_build_instance, link(tunnel_3)); });
        remote_keys = made_by([&] { return build(fcip::tcp_remote_pe_fill_reference, link(tunnel_3)); });
    }

    Rows remote_properties; ///< of tunnel 3, as long as nothing is changed
    Rows remote_keys;
};

Rows without_connection(Rows rows) {
    for (const char* name : {"MaximumSegmentSize", "ReceiverWindowSize", "ConnectionTimeOut", "ConnectionPurpose"})
        rows = without(rows, name);
    return rows;
}

TEST_F(TcpProtocolEndpoint, InstanceTracesEntryAndExit) {
    build(fcip::tcp_pe_build_instance);
    EXPECT_EQ(trace, "Entering tcp_pe_build_instance\nExiting tcp_pe_build_instance\n");
}

TEST_F(TcpProtocolEndpoint, PathDoesNotTraceItsExit) {
    build(fcip::tcp_pe_fill_reference);
    EXPECT_EQ(trace, "Entering tcp_pe_fill_reference\n");
}

TEST_F(TcpProtocolEndpoint, ConnectionPurposeIsSetFrom1To3Only) {
    for (const auto& [purpose, text] :
         {std::pair{0U, not_set}, {1U, "1"}, {2U, "2"}, {3U, "3"}, {4U, not_set}, {0xFFFFFFFFU, not_set}}) {
        the_switch().connections.at({3, 2, 3225, 3302}).purpose = purpose;
        const Rows rows = rows_of(build(fcip::tcp_pe_build_instance, link(tunnel_3)));
        EXPECT_EQ(value_in(rows, "ConnectionPurpose"), text) << purpose;
        EXPECT_EQ(value_in(rows, "ConnectionTimeOut"), "30");
    }
}

TEST_F(TcpProtocolEndpoint, UnreadableConnectionLeavesItsFourPropertiesOut) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_tcpconn_entry", fault);
        EXPECT_EQ(rows_of(build(fcip::tcp_pe_build_instance, link(tunnel_3))), without_connection(local_properties));
        EXPECT_EQ(trace, "Entering tcp_pe_build_instance\nExiting tcp_pe_build_instance\n");
        switchsim::clear_faults();
    }
}

TEST_F(TcpProtocolEndpoint, PortsAbove65535AreCutInTheLookupOnly) {
    profile().listen_port = 0x10000 + 3225;
    link(tunnel_3).remote_tcp_port = 0x70000 + 3302;
    EXPECT_EQ(rows_of(build(fcip::tcp_pe_build_instance, link(tunnel_3))),
              with(with(local_properties, "PortNumber", "68761"), "RemotePortNumber", "462054"));
}

TEST_F(TcpProtocolEndpoint, ConnectionIsLookedUpByProfileLinkAndBothPorts) {
    const auto row = the_switch().connections.at({3, 2, 3225, 3302});
    for (const switchsim::ConnectionKey& other :
         {switchsim::ConnectionKey{4, 2, 3225, 3302}, {3, 1, 3225, 3302}, {3, 2, 3226, 3302}, {3, 2, 3225, 3303}}) {
        the_switch().connections = {{other, row}};
        EXPECT_EQ(rows_of(build(fcip::tcp_pe_build_instance, link(tunnel_3))), without_connection(local_properties));
    }
}

TEST_F(TcpProtocolEndpoint, UnknownSystemIsLeftOutAndTheClassInThePath) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(rows_of(build(fcip::tcp_pe_build_instance, link(tunnel_3))), without(local_properties, "SystemName"));
    EXPECT_EQ(rows_of(build(fcip::tcp_pe_fill_reference, link(tunnel_3))),
              with(local_keys, "SystemName", "LogicalComputerSystem"));
    EXPECT_EQ(trace, "Entering tcp_pe_fill_reference\nerror : dm_cim_get_dmEntry ");
}

TEST_F(TcpProtocolEndpoint, NameIsTheInterfaceIndex) {
    FcipLinkEntry row = link(tunnel_3);
    for (const auto& [if_index, name] : {std::pair{17U, "17"}, {0xFFFFFFFFU, "-1"}, {0x80000000U, "-2147483648"}}) {
        row.link_if_index = if_index;
        EXPECT_EQ(value_of(build(fcip::tcp_pe_build_instance, row), "Name"), name);
        EXPECT_EQ(value_of(build(fcip::tcp_pe_fill_reference, row), "Name"), name);
    }
}

TEST_F(TcpProtocolEndpoint, BothAreNullWithoutProfile) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(fcip::tcp_pe_build_instance), nullptr);
        EXPECT_EQ(trace, "Entering tcp_pe_build_instance\n");
        EXPECT_EQ(build(fcip::tcp_pe_fill_reference), nullptr);
        EXPECT_EQ(trace, "Entering tcp_pe_fill_reference\n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(RemoteTcpPort, InstanceTracesEntryAndExit) {
    build(fcip::tcp_remote_pe_build_instance);
    EXPECT_EQ(trace, "Entering tcp_remote_pe_build_instance\nExiting tcp_remote_pe_build_instance\n");
}

TEST_F(RemoteTcpPort, SecondNameOfTheInstanceDiffersInItsTracesOnly) {
    EXPECT_EQ(rows_of(build(fcip::remote_service_ap_build_instance, link(tunnel_3))), remote_properties);
    EXPECT_EQ(trace, "Entering remote_service_ap_build_instance\nExiting remote_service_ap_build_instance\n");
}

TEST_F(RemoteTcpPort, PathHasTheCallersClassUnderBothNames) {
    EXPECT_EQ(value_in(remote_keys, "CreationClassName"), made_up_class);
    for (const auto builder : {fcip::tcp_remote_pe_fill_reference, fcip::remote_service_ap_fill_reference}) {
        EXPECT_EQ(rows_of(build(builder, link(tunnel_3))), remote_keys);
        EXPECT_EQ(trace, "");
    }
}

TEST_F(RemoteTcpPort, PortsAreCrossedAgainstTheLocalEndpoint) {
    profile().listen_port = 3225;
    link(tunnel_3).remote_tcp_port = 3226;
    const Rows local = rows_of(build(fcip::tcp_pe_build_instance, link(tunnel_3)));
    const Rows remote = rows_of(build(fcip::tcp_remote_pe_build_instance, link(tunnel_3)));
    EXPECT_EQ(value_in(local, "PortNumber"), "3225");
    EXPECT_EQ(value_in(local, "RemotePortNumber"), "3226");
    EXPECT_EQ(value_in(remote, "PortNumber"), "3226");
    EXPECT_EQ(value_in(remote, "RemotePortNumber"), "3225");
}

TEST_F(RemoteTcpPort, NameIsAZeroAndTheInterfaceIndex) {
    FcipLinkEntry row = link(tunnel_3);
    for (const auto& [if_index, name] : {std::pair{17U, "0_17"}, {0xFFFFFFFFU, "0_-1"}}) {
        row.link_if_index = if_index;
        EXPECT_EQ(value_of(build(fcip::tcp_remote_pe_build_instance, row), "Name"), name);
        EXPECT_EQ(value_of(build(fcip::tcp_remote_pe_fill_reference, row), "Name"), name);
    }
}

TEST_F(RemoteTcpPort, UnknownSystemIsInThePathOnlyAsUnknown) {
    the_switch().ports.erase(fcip_3);
    EXPECT_EQ(rows_of(build(fcip::tcp_remote_pe_build_instance, link(tunnel_3))),
              without(remote_properties, "SystemName"));
    EXPECT_EQ(rows_of(build(fcip::tcp_remote_pe_fill_reference, link(tunnel_3))),
              with(remote_keys, "SystemName", "Unknown"));
    EXPECT_EQ(trace, "error : pm_cim_get_port_info ");
}

TEST_F(RemoteTcpPort, AllAreNullWithoutProfile) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(fcip::tcp_remote_pe_build_instance), nullptr);
        EXPECT_EQ(trace, "Entering tcp_remote_pe_build_instance\n");
        EXPECT_EQ(build(fcip::remote_service_ap_build_instance), nullptr);
        EXPECT_EQ(trace, "Entering remote_service_ap_build_instance\n");
        EXPECT_EQ(build(fcip::tcp_remote_pe_fill_reference), nullptr);
        EXPECT_EQ(build(fcip::remote_service_ap_fill_reference), nullptr);
        EXPECT_EQ(trace, "");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

} // namespace
