#include "provider/classes/fcip/remote_fcip_port.h"

#include "provider/access/fcip_tables.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "tests/provider/classes/fcip/fcip_class_test.h"

namespace test {

namespace {

using fcip::fcip_remote_pe_build_instance;
using fcip::fcip_remote_pe_fill_reference;
using switchsim::Fault;

constexpr const char* long_address = "2001:db8:1111:2222:3333:4444:5555:6666";

using RemoteFcipPort = FcipClassTest;

TEST_F(RemoteFcipPort, InstanceHasItsPropertiesInOrder) {
    const Rows expected = {
        {"SystemCreationClassName", "string", "ZANTO_LogicalComputerSystem"},
        {"SystemName", "string", vsan_1_system},
        {"Name", "string", "4_10.1.1.2_10.1.1.1"},
        {"CreationClassName", "string", "ZANTO_RemoteFCIPPort"},
        {"NameFormat", "string", "Other"},
        {"RemoteIPAddress", "string", "10.1.1.1"},
        {"LocalIPAddress", "string", "10.1.1.2"},
        {"InfoFormat", "uint16", "1"},
        {"OtherInfoFormatDescription", "string", "Remote Entity ID_LocalIP_RemoteIP "},
        {"AccessInfo", "string", "10.1.1.2"},
        {"PortInfo", "string", "10.1.1.2"},
        {"PortProtocol", "uint16", "2"},
        {"OtherProtocolDescription", "string", "TCP"},
    };
    EXPECT_EQ(properties(build(fcip_remote_pe_build_instance, tunnel())), expected);
}

TEST_F(RemoteFcipPort, PathHasItsKeysInOrder) {
    const Rows expected = {
        {"SystemName", "string", vsan_1_system},
        {"SystemCreationClassName", "string", "ZANTO_LogicalComputerSystem"},
        {"CreationClassName", "string", "ZANTO_RemoteFCIPPort"},
        {"Name", "string", "0_10.1.1.2_10.1.1.1"},
    };
    EXPECT_EQ(keys(build(fcip_remote_pe_fill_reference, tunnel())), expected);
}

TEST_F(RemoteFcipPort, InstanceIsAskedForInTheOrderOfItsProperties) {
    build(fcip_remote_pe_build_instance, tunnel());
    const std::vector<std::string> expected = {"fcip_get_entity_entry",
                                               "getCSName",
                                               "pm_cim_get_port_info",
                                               "dm_cim_get_dmEntry",
                                               "vsan_cim_get_vsan_admindomain_key",
                                               "ip_addr_to_str",
                                               "ip_addr_to_str"};
    EXPECT_EQ(switchsim::recorded_calls(), expected);
}

TEST_F(RemoteFcipPort, InstanceTracesEntryAndExit) {
    build(fcip_remote_pe_build_instance, tunnel());
    EXPECT_EQ(trace, entering("fcip_remote_pe_build_instance") + exiting("fcip_remote_pe_build_instance"));
}

TEST_F(RemoteFcipPort, PathTracesNothing) {
    build(fcip_remote_pe_fill_reference, tunnel());
    EXPECT_EQ(trace, "");
}

TEST_F(RemoteFcipPort, InstanceHasTheSwitchAsHostAndThePathHasNone) {
    EXPECT_EQ(origin(build(fcip_remote_pe_build_instance, tunnel())), "ZANTO_AskedFor root/cimv2 switch-a");
    EXPECT_EQ(origin(build(fcip_remote_pe_fill_reference, tunnel())), "ZANTO_AskedFor root/cimv2 -");
}

TEST_F(RemoteFcipPort, EntityId4Peer10_0_0_2Local10_0_0_1GivesBothNames) {
    the_switch().profiles.at(3).local_address = address("10.0.0.1");
    tunnel().remote_address = address("10.0.0.2");
    tunnel().remote_entity_id = 4;
    EXPECT_EQ(property(build(fcip_remote_pe_build_instance, tunnel()), "Name"), "string 4_10.0.0.2_10.0.0.1");
    EXPECT_EQ(key(build(fcip_remote_pe_fill_reference, tunnel()), "Name"), "string 0_10.0.0.2_10.0.0.1");
}

TEST_F(RemoteFcipPort, EntityIdIsPrintedSigned) {
    tunnel().remote_entity_id = 0xFFFFFFFF;
    EXPECT_EQ(property(build(fcip_remote_pe_build_instance, tunnel()), "Name"), "string -1_10.1.1.2_10.1.1.1");
}

TEST_F(RemoteFcipPort, InstanceNameIsCutAfter30CharactersOnly) {
    the_switch().profiles.at(3).local_address = address(long_address);
    tunnel().remote_address = address(long_address);
    const CMPIInstance* instance = build(fcip_remote_pe_build_instance, tunnel());
    EXPECT_EQ(property(instance, "Name"), "string 4_2001:db8:1111:2222:3333:4444");
    EXPECT_EQ(property(instance, "LocalIPAddress"), std::string("string ") + long_address);
    EXPECT_EQ(property(instance, "RemoteIPAddress"), std::string("string ") + long_address);
}

TEST_F(RemoteFcipPort, PathNameHasAddressesCutTo19CharactersAndIsCutAfter30) {
    the_switch().profiles.at(3).local_address = address(long_address);
    tunnel().remote_address = address(long_address);
    EXPECT_EQ(key(build(fcip_remote_pe_fill_reference, tunnel()), "Name"), "string 0_2001:db8:1111:2222:_2001:db8");
}

const std::string type = "string "; // before a property's or a key's value

class RemoteFcipPortLookup : public FcipClassTest {
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
        return property(build(fcip_remote_pe_build_instance, row), "Name").substr(type.size());
    }
};

TEST_F(RemoteFcipPortLookup, PathNameLeadsBackToEachLink) {
    for (const auto& [_, row] : the_switch().links) {
        const std::string name = key(build(fcip_remote_pe_fill_reference, row), "Name").substr(type.size());
        SCOPED_TRACE(name);
        EXPECT_EQ(found_by(name), row.link_if_index);
    }
}

TEST_F(RemoteFcipPortLookup, InstanceNameLeadsBackOnlyWithEntityId0) {
    EXPECT_EQ(found_by(instance_name(tunnel())), 0u);
    tunnel().remote_entity_id = 0;
    EXPECT_EQ(found_by(instance_name(tunnel())), fcip_1);
}

TEST_F(RemoteFcipPort, LocalAndRemoteAreTheEndpointsTheOtherWayRound) {
    for (const auto& [_, row] : the_switch().links) {
        const CMPIInstance* peer = build(fcip_remote_pe_build_instance, row);
        const CMPIInstance* own = build(fcip::fcip_pe_build_instance, row);
        EXPECT_EQ(property(peer, "LocalIPAddress"), property(own, "RemoteIPAddress"));
        EXPECT_EQ(property(peer, "RemoteIPAddress"), property(own, "LocalIPAddress"));
        EXPECT_NE(property(peer, "LocalIPAddress"), property(peer, "RemoteIPAddress"));
    }
}

TEST_F(RemoteFcipPort, PortProtocolIs2AndTcpForEveryLink) {
    ASSERT_EQ(the_switch().links.size(), 3u);
    for (const auto& [_, row] : the_switch().links) {
        const CMPIInstance* instance = build(fcip_remote_pe_build_instance, row);
        EXPECT_EQ(property(instance, "PortProtocol"), "uint16 2");
        EXPECT_EQ(property(instance, "OtherProtocolDescription"), "string TCP");
    }
}

TEST_F(RemoteFcipPort, UnreadablePortGivesNoSystemName) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail);
    EXPECT_EQ(property(build(fcip_remote_pe_build_instance, tunnel()), "SystemName"), "string ");
    EXPECT_EQ(trace, entering("fcip_remote_pe_build_instance") + "error : pm_cim_get_port_info " +
                         exiting("fcip_remote_pe_build_instance"));
    EXPECT_EQ(key(build(fcip_remote_pe_fill_reference, tunnel()), "SystemName"), "string Unknown");
    EXPECT_EQ(trace, "error : pm_cim_get_port_info ");
}

TEST_F(RemoteFcipPort, UnreadableDomainGivesTheSystemNameNullInTheInstanceAndUnknownInThePath) {
    switchsim::inject("dm_cim_get_dmEntry", Fault::fail);
    EXPECT_EQ(property(build(fcip_remote_pe_build_instance, tunnel()), "SystemName"), "string NULL");
    EXPECT_EQ(key(build(fcip_remote_pe_fill_reference, tunnel()), "SystemName"), "string Unknown");
    EXPECT_EQ(trace, "error : dm_cim_get_dmEntry ");
}

} // namespace

} // namespace test
