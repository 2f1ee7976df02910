#include "provider/classes/fcip/remote_fcip_port.h"

#include "provider/access/fcip_tables.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "tests/support/class_test.h"

namespace test {

namespace {

using fcip::fcip_remote_pe_build_instance;
using fcip::fcip_remote_pe_fill_reference;
using switchsim::Fault;

constexpr const char* long_address = "2001:db8:1111:2222:3333:4444:5555:6666";

using RemoteFcipPort = ClassTest;

TEST_F(RemoteFcipPort, InstanceTracesEntryAndExit) {
    build(fcip_remote_pe_build_instance);
    EXPECT_EQ(trace, entering("fcip_remote_pe_build_instance") + exiting("fcip_remote_pe_build_instance"));
}

TEST_F(RemoteFcipPort, PathTracesNothing) {
    build(fcip_remote_pe_fill_reference);
    EXPECT_EQ(trace, "");
}

TEST_F(RemoteFcipPort, EntityId4Peer10_0_0_2Local10_0_0_1GivesBothNames) {
    the_switch().profiles.at(3).local_address = address("10.0.0.1");
    link().remote_address = address("10.0.0.2");
    link().remote_entity_id = 4;
    EXPECT_EQ(value_of(build(fcip_remote_pe_build_instance), "Name"), "4_10.0.0.2_10.0.0.1");
    EXPECT_EQ(value_of(build(fcip_remote_pe_fill_reference), "Name"), "0_10.0.0.2_10.0.0.1");
}

TEST_F(RemoteFcipPort, EntityIdIsPrintedSigned) {
    link().remote_entity_id = 0xFFFFFFFF;
    EXPECT_EQ(value_of(build(fcip_remote_pe_build_instance), "Name"), "-1_10.1.1.2_10.1.1.1");
}

TEST_F(RemoteFcipPort, InstanceNameIsCutAfter30CharactersOnly) {
    the_switch().profiles.at(3).local_address = address(long_address);
    link().remote_address = address(long_address);
    const CMPIInstance* instance = build(fcip_remote_pe_build_instance);
    EXPECT_EQ(value_of(instance, "Name"), "4_2001:db8:1111:2222:3333:4444");
    EXPECT_EQ(value_of(instance, "LocalIPAddress"), long_address);
    EXPECT_EQ(value_of(instance, "RemoteIPAddress"), long_address);
}

TEST_F(RemoteFcipPort, PathNameCutsAddressesTo19CharactersAndItselfTo30) {
    the_switch().profiles.at(3).local_address = address(long_address);
    link().remote_address = address(long_address);
    EXPECT_EQ(value_of(build(fcip_remote_pe_fill_reference), "Name"), "0_2001:db8:1111:2222:_2001:db8");
}

class RemoteFcipPortLookup : public ClassTest {
  protected:
    /// The if-index of the link that the Name leads back to; 0 = none.
    std::uint32_t found_by(const std::string& name) {
        FcipLinkEntry row{};
        EXPECT_EQ(
            call([&] { return fcip::get_fcip_link_entry_from(name.c_str(), &row, fcip::lookup_mode::peer_address); }),
            0);
        return row.link_if_index;
    }

    std::string instance_name(const FcipLinkEntry& row) {
        return value_of(build(fcip_remote_pe_build_instance, row), "Name");
    }
};

TEST_F(RemoteFcipPortLookup, PathNameLeadsBackToEachLink) {
    for (const auto& [_, row] : the_switch().links) {
        const std::string name = value_of(build(fcip_remote_pe_fill_reference, row), "Name");
        SCOPED_TRACE(name);
        EXPECT_EQ(found_by(name), row.link_if_index);
    }
}

TEST_F(RemoteFcipPortLookup, InstanceNameLeadsBackOnlyWithEntityId0) {
    EXPECT_EQ(found_by(instance_name(link())), 0u);
    link().remote_entity_id = 0;
    EXPECT_EQ(found_by(instance_name(link())), fcip_1);
}

TEST_F(RemoteFcipPort, LocalAndRemoteAreTheEndpointsTheOtherWayRound) {
    for (const auto& [_, row] : the_switch().links) {
        const CMPIInstance* peer = build(fcip_remote_pe_build_instance, row);
        const CMPIInstance* own = build(fcip::fcip_pe_build_instance, row);
        EXPECT_EQ(value_of(peer, "LocalIPAddress"), value_of(own, "RemoteIPAddress"));
        EXPECT_EQ(value_of(peer, "RemoteIPAddress"), value_of(own, "LocalIPAddress"));
        EXPECT_NE(value_of(peer, "LocalIPAddress"), value_of(peer, "RemoteIPAddress"));
    }
}

TEST_F(RemoteFcipPort, PortProtocolIs2AndTcpForEveryLink) {
    ASSERT_EQ(the_switch().links.size(), 3u);
    for (const auto& [_, row] : the_switch().links) {
        const CMPIInstance* instance = build(fcip_remote_pe_build_instance, row);
        EXPECT_EQ(value_of(instance, "PortProtocol"), "2");
        EXPECT_EQ(value_of(instance, "OtherProtocolDescription"), "TCP");
    }
}

TEST_F(RemoteFcipPort, UnreadablePortGivesNoSystemName) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail);
    EXPECT_EQ(value_of(build(fcip_remote_pe_build_instance), "SystemName"), "");
    EXPECT_EQ(trace, entering("fcip_remote_pe_build_instance") + "error : pm_cim_get_port_info " +
                         exiting("fcip_remote_pe_build_instance"));
    EXPECT_EQ(value_of(build(fcip_remote_pe_fill_reference), "SystemName"), "Unknown");
    EXPECT_EQ(trace, "error : pm_cim_get_port_info ");
}

TEST_F(RemoteFcipPort, UnreadableDomainIsTheTextNullAndUnknownInThePath) {
    switchsim::inject("dm_cim_get_dmEntry", Fault::fail);
    EXPECT_EQ(value_of(build(fcip_remote_pe_build_instance), "SystemName"), "NULL");
    EXPECT_EQ(value_of(build(fcip_remote_pe_fill_reference), "SystemName"), "Unknown");
    EXPECT_EQ(trace, "error : dm_cim_get_dmEntry ");
}

} // namespace

} // namespace test
