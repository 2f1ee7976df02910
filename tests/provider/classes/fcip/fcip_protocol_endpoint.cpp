// ZANTO_FCIPProtocolEndPoint: the instance builder and the path builder.
#include "provider/classes/fcip/fcip_protocol_endpoint.h"

#include "tests/support/class_test.h"
#include "tests/support/front_broker.h"

namespace test {

namespace {

using fcip::fcip_pe_build_instance;
using fcip::fcip_pe_fill_reference;

class FcipProtocolEndpoint : public ClassTest {
  protected:
    std::string property(const char* name, const FcipLinkEntry& row = link()) {
        return value_of(build(fcip_pe_build_instance, row), name);
    }

    std::string key(const char* name, const FcipLinkEntry& row = link()) {
        return value_of(build(fcip_pe_fill_reference, row), name);
    }
};

TEST_F(FcipProtocolEndpoint, InstanceTracesEntryAndExitAndThePathNothing) {
    build(fcip_pe_build_instance);
    EXPECT_EQ(trace, entering("fcip_pe_build_instance") + exiting("fcip_pe_build_instance"));
    build(fcip_pe_fill_reference);
    EXPECT_EQ(trace, "");
}

TEST_F(FcipProtocolEndpoint, LinkIndex0IsTunnel1) {
    profile().local_address = address("10.0.0.1");
    link().remote_address = address("10.0.0.2");
    EXPECT_EQ(property("Name"), "1_10.0.0.1_10.0.0.2");
    EXPECT_EQ(property("TunnelID"), "1");
}

TEST_F(FcipProtocolEndpoint, TunnelIdHas16BitsAndTheNameIsSigned) {
    const struct {
        std::uint32_t link_index;
        const char* tunnel_id;
        const char* name;
    } rows[] = {
        {65534, "65535", "65535_10.1.1.1_10.1.1.2"},   {65535, "0", "65536_10.1.1.1_10.1.1.2"},
        {65536, "1", "65537_10.1.1.1_10.1.1.2"},       {0x7FFFFFFF, "0", "-2147483648_10.1.1.1_10.1.1.2"},
        {0xFFFFFFFE, "65535", "-1_10.1.1.1_10.1.1.2"}, {0xFFFFFFFF, "0", "0_10.1.1.1_10.1.1.2"},
    };
    for (const auto& row : rows) {
        link().link_index = row.link_index;
        EXPECT_EQ(property("TunnelID"), row.tunnel_id) << row.link_index;
        EXPECT_EQ(property("Name"), row.name);
        EXPECT_EQ(key("Name"), row.name);
    }
}

TEST_F(FcipProtocolEndpoint, NameIsCutAfter30Characters) {
    link().link_index = 11;
    profile().local_address = address("192.168.100.100");
    link().remote_address = address("192.168.100.101");
    EXPECT_EQ(property("Name"), "12_192.168.100.100_192.168.100");
    EXPECT_EQ(key("Name"), "12_192.168.100.100_192.168.100");
}

TEST_F(FcipProtocolEndpoint, LongIpv6AddressIsCutTo19CharactersInThePathOnly) {
    FcipLinkEntry& row = link(tunnel_7);
    row.remote_address = address("fe80::1:2");
    profile(7).local_address = address("2001:db8:aaaa:bbbb:cccc:dddd:eeee:1");
    EXPECT_EQ(property("LocalIPAddress", row), "2001:db8:aaaa:bbbb:cccc:dddd:eeee:1");
    EXPECT_EQ(property("Name", row), "7_2001:db8:aaaa:bbbb:cccc:dddd"); // cut after 30
    EXPECT_EQ(key("Name", row), "7_2001:db8:aaaa:bbbb:_fe80::1:");
}

TEST_F(FcipProtocolEndpoint, RetransmitTimeIsTheSameForEveryTunnel) {
    ASSERT_EQ(the_switch().links.size(), 3u);
    for (const auto& [_, row] : the_switch().links) {
        EXPECT_EQ(property("RetransmitTime", row), "20340");
        EXPECT_EQ(property("ProtocolIFType", row), "56");
    }
}

TEST_F(FcipProtocolEndpoint, SackGivesSelectiveAckAndWanTov) {
    for (const auto& [sack, expected] : {std::pair{1u, "true"}, {0u, "false"}, {2u, "true"}, {0x100u, "false"}}) {
        profile().sack = sack;
        EXPECT_EQ(property("SelectiveACK"), expected) << sack;
        EXPECT_EQ(property("WAN_TOV"), expected) << sack;
    }
}

TEST_F(FcipProtocolEndpoint, FlagsReachTheBrokerAsTheLowByte) {
    const FrontBroker front;
    for (const std::uint32_t word : {0u, 1u, 2u, 0x80u, 0x100u, 0x101u, 0x01000000u, 0xFFFFFFFFu}) {
        profile().sack = word;
        profile().pmtu_discovery = word ^ 0x13;
        build(fcip_pe_build_instance);
        EXPECT_EQ(FrontBroker::flags().at("SelectiveACK"), word & 0xFF) << word;
        EXPECT_EQ(FrontBroker::flags().at("WAN_TOV"), word & 0xFF) << word;
        EXPECT_EQ(FrontBroker::flags().at("PathMTU"), (word & 0xFF) ^ 0x13) << word;
    }
}

TEST_F(FcipProtocolEndpoint, OnlyCompressionMode1IsNoCompression) {
    for (const auto& [mode, expected] : {std::pair{0u, "true"}, {1u, "false"}, {2u, "true"}}) {
        link().compression_mode = mode;
        EXPECT_EQ(property("Compression"), expected) << mode;
    }
}

TEST_F(FcipProtocolEndpoint, UnknownPortIsAnEmptySystemNameAndUnknownInThePath) {
    the_switch().ports.erase(fcip_1);
    EXPECT_EQ(property("SystemName"), "");
    EXPECT_EQ(trace,
              entering("fcip_pe_build_instance") + "error : pm_cim_get_port_info " + exiting("fcip_pe_build_instance"));
    EXPECT_EQ(key("SystemName"), "Unknown");
}

TEST_F(FcipProtocolEndpoint, UnknownDomainIsTheTextNullAndUnknownInThePath) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(property("SystemName"), "NULL");
    EXPECT_EQ(trace,
              entering("fcip_pe_build_instance") + "error : dm_cim_get_dmEntry " + exiting("fcip_pe_build_instance"));
    EXPECT_EQ(key("SystemName"), "Unknown");
}

TEST_F(FcipProtocolEndpoint, SwitchWithoutWwnHasAZeroLocalWwn) {
    switchsim::inject("system_cim_get_switch_wwn", switchsim::Fault::fail);
    EXPECT_EQ(property("LocalWWN"), "00:00:00:00:00:00:00:00");
}

} // namespace

} // namespace test
