// ZANTO_FCIPProtocolEndPoint: the instance builder and the path builder.
#include "provider/classes/fcip/fcip_protocol_endpoint.h"

#include "tests/support/provider_test.h"

namespace {

using namespace test;
using switchsim::Fault;

class FcipProtocolEndpoint : public ProviderTest {
  protected:
    CMPIInstance* build(const switchsim::LinkKey& key = tunnel_1, const char** properties = nullptr) {
        return call([&] {
            return fcip::fcip_pe_build_instance("zanto_fcipprotocolendpoint", "root/cimv2", &the_switch().links.at(key),
                                                properties);
        });
    }

    CMPIObjectPath* fill(const switchsim::LinkKey& key = tunnel_1) {
        return call([&] {
            return fcip::fcip_pe_fill_reference("zanto_fcipprotocolendpoint", "root/cimv2",
                                                &the_switch().links.at(key));
        });
    }

    std::string property(const char* name, const switchsim::LinkKey& key = tunnel_1) {
        return text_of(cmpihost::describe(build(key)).property(name)->value);
    }

    FcipLinkEntry& link() { return the_switch().links.at(tunnel_1); }
    FcipEntityEntry& profile() { return the_switch().profiles.at(3); }
};

TEST_F(FcipProtocolEndpoint, InstanceHasNineteenPropertiesInOrder) {
    EXPECT_EQ(properties(build()), (Rows{
                                       {"SystemCreationClassName", "string", "ZANTO_LogicalComputerSystem"},
                                       {"SystemName", "string", vsan_1_system},
                                       {"Name", "string", "1_10.1.1.1_10.1.1.2"},
                                       {"CreationClassName", "string", "ZANTO_FCIPProtocolEndPoint"},
                                       {"NameFormat", "string", "Other"},
                                       {"TunnelID", "uint16", "1"},
                                       {"RemoteIPAddress", "string", "10.1.1.2"},
                                       {"LocalIPAddress", "string", "10.1.1.1"},
                                       {"RemoteWWN", "string", "20:00:00:00:5e:bb:00:01"},
                                       {"LocalWWN", "string", "20:00:00:00:5e:aa:00:01"},
                                       {"CommittedRate", "uint32", "1000000"},
                                       {"Compression", "boolean", "false"},
                                       {"SelectiveACK", "boolean", "true"},
                                       {"WAN_TOV", "boolean", "true"},
                                       {"PathMTU", "boolean", "true"},
                                       {"MaxRetransmissions", "uint32", "4"},
                                       {"KeepAliveTimeout", "uint32", "60"},
                                       {"RetransmitTime", "uint16", "20340"},
                                       {"ProtocolIFType", "uint16", "56"},
                                   }));
    EXPECT_EQ(trace, "Entering fcip_pe_build_instance\nExiting fcip_pe_build_instance\n");
}

TEST_F(FcipProtocolEndpoint, InstanceTakesClassAndNamespaceOfTheRequestAndTheSwitchAsHost) {
    const auto object = cmpihost::describe(build());
    EXPECT_EQ(object.class_name, "zanto_fcipprotocolendpoint");
    EXPECT_EQ(object.name_space, "root/cimv2");
    EXPECT_EQ(object.host, "switch-a");
}

TEST_F(FcipProtocolEndpoint, PathHasFourKeysInOrderAndNoHost) {
    const auto path = fill();
    EXPECT_EQ(keys(path), (Rows{
                              {"SystemName", "string", vsan_1_system},
                              {"SystemCreationClassName", "string", "ZANTO_LogicalComputerSystem"},
                              {"CreationClassName", "string", "ZANTO_FCIPProtocolEndPoint"},
                              {"Name", "string", "1_10.1.1.1_10.1.1.2"},
                          }));
    EXPECT_EQ(cmpihost::describe(path).host, std::nullopt);
    EXPECT_EQ(cmpihost::describe(path).class_name, "zanto_fcipprotocolendpoint");
    EXPECT_EQ(trace, "");
}

TEST_F(FcipProtocolEndpoint, PropertyListFiltersTheInstance) {
    const char* wanted[] = {"tunnelid", "LocalIPAddress", nullptr};
    EXPECT_EQ(properties(build(tunnel_1, wanted)), (Rows{
                                                       {"TunnelID", "uint16", "1"},
                                                       {"LocalIPAddress", "string", "10.1.1.1"},
                                                   }));
}

TEST_F(FcipProtocolEndpoint, LinkIndex0IsTunnel1) {
    profile().local_address = address("10.0.0.1");
    link().remote_address = address("10.0.0.2");
    EXPECT_EQ(property("Name"), "1_10.0.0.1_10.0.0.2");
    EXPECT_EQ(property("TunnelID"), "1");
}

TEST_F(FcipProtocolEndpoint, NameIsCutAfter30Characters) {
    link().link_index = 11;
    profile().local_address = address("192.168.100.100");
    link().remote_address = address("192.168.100.101");
    EXPECT_EQ(property("Name"), "12_192.168.100.100_192.168.100");
    EXPECT_EQ(rows(cmpihost::describe(fill()).keys)[3][2], "12_192.168.100.100_192.168.100");
}

TEST_F(FcipProtocolEndpoint, LongIpv6AddressIsCutTo19CharactersInThePathOnly) {
    the_switch().links.at(tunnel_7).remote_address = address("fe80::1:2");
    the_switch().profiles.at(7).local_address = address("2001:db8:aaaa:bbbb:cccc:dddd:eeee:1");
    EXPECT_EQ(property("LocalIPAddress", tunnel_7), "2001:db8:aaaa:bbbb:cccc:dddd:eeee:1");
    EXPECT_EQ(property("Name", tunnel_7), "7_2001:db8:aaaa:bbbb:cccc:dddd"); // cut after 30
    EXPECT_EQ(rows(cmpihost::describe(fill(tunnel_7)).keys)[3][2], "7_2001:db8:aaaa:bbbb:_fe80::1:");
}

TEST_F(FcipProtocolEndpoint, DeletedProfileGivesNeitherInstanceNorPath) {
    the_switch().profiles.erase(3);
    EXPECT_EQ(build(), nullptr);
    EXPECT_EQ(trace, "Entering fcip_pe_build_instance\n");
    EXPECT_EQ(fill(), nullptr);
}

TEST_F(FcipProtocolEndpoint, ProfileReadThatFailsOrBringsNoRecordGivesNothing) {
    for (const Fault fault : {Fault::fail, Fault::fail_leaving_record, Fault::succeed_without_record}) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(), nullptr);
        EXPECT_EQ(fill(), nullptr);
        switchsim::clear_faults();
    }
}

TEST_F(FcipProtocolEndpoint, RetransmitTimeAndInterfaceTypeAreTheSameForEveryTunnel) {
    for (const auto& [key, row] : the_switch().links) {
        EXPECT_EQ(property("RetransmitTime", key), "20340");
        EXPECT_EQ(property("ProtocolIFType", key), "56");
    }
}

TEST_F(FcipProtocolEndpoint, SackGivesSelectiveAckAndWanTov) {
    for (const auto& [sack, expected] : {std::pair{1u, "true"}, {0u, "false"}, {2u, "true"}, {0x100u, "false"}}) {
        profile().sack = sack;
        EXPECT_EQ(property("SelectiveACK"), expected) << sack;
        EXPECT_EQ(property("WAN_TOV"), expected) << sack;
    }
}

TEST_F(FcipProtocolEndpoint, PathMtuIsTheLowByteOfThePmtuWord) {
    for (const auto& [word, expected] : {std::pair{1u, "true"}, {0u, "false"}, {2u, "true"}, {0x100u, "false"}}) {
        profile().pmtu_discovery = word;
        EXPECT_EQ(property("PathMTU"), expected) << word;
    }
}

TEST_F(FcipProtocolEndpoint, OnlyCompressionMode1IsNoCompression) {
    for (const auto& [mode, expected] : {std::pair{0u, "true"}, {1u, "false"}, {2u, "true"}}) {
        link().compression_mode = mode;
        EXPECT_EQ(property("Compression"), expected) << mode;
    }
}

TEST_F(FcipProtocolEndpoint, UnknownPortGivesEmptySystemNameInTheInstanceAndUnknownInThePath) {
    the_switch().ports.erase(fcip_1);
    EXPECT_EQ(property("SystemName"), "");
    EXPECT_EQ(trace, "Entering fcip_pe_build_instance\n"
                     "error : pm_cim_get_port_info "
                     "Exiting fcip_pe_build_instance\n");
    EXPECT_EQ(rows(cmpihost::describe(fill()).keys)[0][2], "Unknown");
}

TEST_F(FcipProtocolEndpoint, UnknownDomainGivesTheTextNullInTheInstanceAndUnknownInThePath) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(property("SystemName"), "NULL");
    EXPECT_EQ(trace, "Entering fcip_pe_build_instance\n"
                     "error : dm_cim_get_dmEntry "
                     "Exiting fcip_pe_build_instance\n");
    EXPECT_EQ(rows(cmpihost::describe(fill()).keys)[0][2], "Unknown");
}

TEST_F(FcipProtocolEndpoint, SwitchWithoutWwnHasAZeroLocalWwn) {
    switchsim::inject("system_cim_get_switch_wwn", Fault::fail);
    EXPECT_EQ(property("LocalWWN"), "00:00:00:00:00:00:00:00");
}

TEST_F(FcipProtocolEndpoint, SwitchWithoutNameHasAnEmptyHost) {
    the_switch().has_name = false;
    EXPECT_EQ(cmpihost::describe(build()).host, "");
}

TEST_F(FcipProtocolEndpoint, BrokerThatMakesNoPathOrNoInstanceGivesNull) {
    for (const unsigned nth : {1u, 2u}) { // the path, the instance
        scope.fail_object(nth);
        EXPECT_EQ(build(), nullptr) << nth;
        EXPECT_EQ(trace, "Entering fcip_pe_build_instance\n") << nth;
    }
    scope.fail_object(1);
    EXPECT_EQ(fill(), nullptr);
}

} // namespace
