// The diagnostic dumps, line by line.
#include "provider/access/dumps.h"
#include "tests/provider/access/access_test.h"

namespace fcip {
namespace {

using switchsim::Fault;

constexpr std::uint32_t port_1 = 0x83000000;

class Dumps : public AccessTest {
  protected:
    void SetUp() override {
        AccessTest::SetUp();
        the_switch().ports[port_1].name = "GigabitEthernet1/1";
        the_switch().ports[101].name = "fcip1";
        the_switch().ports[102].name = "fcip2";
    }

    /// What fcip_print_entity prints of a profile.
    std::string printed(const FcipEntityEntry& row, const std::vector<std::uint32_t>& interfaces = {0}) {
        call([&] { fcip_print_entity(&row, interfaces.data()); });
        return trace;
    }

    /// The same, the line that begins with these words only.
    std::string line(const FcipEntityEntry& row, const std::string& beginning) {
        const std::string text = printed(row);
        const std::size_t start = text.find(beginning);
        return start == std::string::npos ? "" : text.substr(start, text.find('\n', start) + 1 - start);
    }
};

/// A profile with all of its settings.
FcipEntityEntry full_profile() {
    FcipEntityEntry row{};
    row.entity_id = 3;
    row.local_address = test::address("10.1.1.1");
    row.listen_port = 3225;
    row.sack = 1;
    row.pmtu_discovery = 1;
    row.pmtu_reset_timeout = 3600;
    row.keep_alive = 60;
    row.minimum_retransmit_time = 200;
    row.maximum_retransmissions = 4;
    row.send_buffer_size = 64;
    row.round_trip_time = 1000;
    row.maximum_bandwidth = 1000000;
    row.minimum_bandwidth = 500000;
    row.address_if_index = port_1;
    row.cwm = 1;
    row.burst_size = 50;
    row.maximum_jitter = 1500;
    return row;
}

const char* const full_text = "FCIP Profile 3\n"
                              "    Internet Address is 10.1.1.1  (interface GigabitEthernet1/1)\n"
                              "    Tunnels Using this Profile: fcip1 fcip2\n"
                              "    Listen Port is 3225\n"
                              "    TCP parameters\n"
                              "        SACK is enabled\n"
                              "        PMTU discovery is enabled, reset timeout is 3600 sec\n"
                              "        Keep alive is 60 sec\n"
                              "        Minimum retransmission timeout is 200 ms\n"
                              "        Maximum number of re-transmissions is 4\n"
                              "        Send buffer size is 64 KB\n"
                              "        Maximum allowed bandwidth is 1000000 kbps\n"
                              "        Maximum allowed bandwidth is 1000000 kbps\n"
                              "        Minimum available bandwidth is 500000 kbps\n"
                              "        Configured round trip time is 1000 usec\n"
                              "        Congestion window monitoring is enabled, burst size is 50 KB\n"
                              "        Configured maximum jitter is 1500 us\n";

// A profile of zeros: nothing is configured or enabled.
const char* const zero_text = "FCIP Profile 0\n"
                              "    Internet address is not configured\n"
                              "    Listen Port is 0\n"
                              "    TCP parameters\n"
                              "        SACK is disabled\n"
                              "        PMTU discovery is disabled\n"
                              "        Keep alive is 0 sec\n"
                              "        Minimum retransmission timeout is 0 ms\n"
                              "        Maximum number of re-transmissions is 0\n"
                              "        Send buffer size is 0 KB\n"
                              "        Maximum allowed bandwidth is 0 kbps\n"
                              "        Maximum allowed bandwidth is 0 kbps\n"
                              "        Minimum available bandwidth is 0 kbps\n"
                              "        Configured round trip time is 0 usec\n"
                              "        Congestion window monitoring is disabled\n"
                              "        Auto jitter detection is enabled\n";

// ---------------------------------------------------------------------------------------------- profiles

TEST_F(Dumps, ProfileWithEverything) {
    EXPECT_EQ(printed(full_profile(), {2, 101, 102}), full_text);
}

TEST_F(Dumps, ProfileWithNothing) {
    EXPECT_EQ(printed({}), zero_text);
}

TEST_F(Dumps, ProfileWithoutTunnelsPrintsNoTunnelLine) {
    EXPECT_EQ(printed(full_profile(), {0, 101}).find("Tunnels"), std::string::npos);
}

TEST_F(Dumps, NumbersPrintSigned) {
    FcipEntityEntry row{};
    row.entity_id = 0xFFFFFFFF;
    row.maximum_bandwidth = 0x80000000;
    EXPECT_EQ(line(row, "FCIP Profile"), "FCIP Profile -1\n");
    EXPECT_EQ(line(row, "        Maximum allowed"), "        Maximum allowed bandwidth is -2147483648 kbps\n");
}

TEST_F(Dumps, AddressLine) {
    struct row {
        ip_addr_value address;
        std::uint32_t if_index;
        const char* line;
    };
    const char* none = "    Internet address is not configured\n";
    const row rows[] = {
        {test::address("10.1.1.1"), 0, "    Internet Address is 10.1.1.1\n"},
        {test::address("10.1.1.1"), 102, "    Internet Address is 10.1.1.1  (interface fcip2)\n"},
        {test::address("0.0.0.1"), 0, "    Internet Address is 0.0.0.1\n"},
        {test::address("1.0.0.0"), 0, "    Internet Address is 1.0.0.0\n"},
        {{ip_family_ipv4, {0, 0, 0, 0, 1}}, 102, none}, // beyond an IPv4 address
        {test::address("2001:db8::1"), 0, "    Internet Address is 2001:db8::1\n"},
        {test::address("::1"), 102, "    Internet Address is ::1  (interface fcip2)\n"},
        {{ip_family_ipv6, {}}, 102, none},
        {{ip_family_none, {}}, 102, none},
        {{ip_family_none, {10, 1, 1, 1}}, 102, none},
        {{3, {10, 1, 1, 1}}, 102, none},
    };
    for (const row& one : rows) {
        FcipEntityEntry profile{};
        profile.local_address = one.address;
        profile.address_if_index = one.if_index;
        EXPECT_EQ(line(profile, "    Internet"), one.line);
    }
}

TEST_F(Dumps, InterfaceNamesMayHaveAnyLength) {
    constexpr std::size_t lengths[] = {0, 1, 31, 32, 40, 200, 255};
    for (const std::size_t length : lengths) {
        const std::string name(length, 'n');
        the_switch().ports[port_1].name = name;
        const FcipEntityEntry row = full_profile();
        EXPECT_EQ(line(row, "    Internet"), "    Internet Address is 10.1.1.1  (interface " + name + ")\n");
        EXPECT_NE(printed(row, {2, 101, port_1}).find("    Tunnels Using this Profile: fcip1 " + name + "\n"),
                  std::string::npos);
    }
}

TEST_F(Dumps, FlagIsEnabledForExactly1) {
    for (const std::uint32_t flag : {0u, 2u, 0xFFFFFFFFu, 0x01000000u}) {
        FcipEntityEntry row = full_profile();
        row.sack = row.pmtu_discovery = row.cwm = flag;
        EXPECT_EQ(line(row, "        SACK"), "        SACK is disabled\n");
        EXPECT_EQ(line(row, "        PMTU"), "        PMTU discovery is disabled\n");
        EXPECT_EQ(line(row, "        Congestion"), "        Congestion window monitoring is disabled\n");
    }
}

TEST_F(Dumps, PmtuDiscoveryWithoutResetTimeoutHasNoTimeoutClause) {
    FcipEntityEntry row = full_profile();
    row.pmtu_reset_timeout = 0;
    EXPECT_EQ(line(row, "        PMTU"), "        PMTU discovery is enabled\n");
}

TEST_F(Dumps, CwmWithoutBurstSizeHasNoBurstClause) {
    FcipEntityEntry row = full_profile();
    row.burst_size = 0;
    EXPECT_EQ(line(row, "        Congestion"), "        Congestion window monitoring is enabled\n");
}

TEST_F(Dumps, ProfileWhoseJitterIs0EndsWithAutoJitterDetection) {
    FcipEntityEntry row = full_profile();
    row.maximum_jitter = 0;
    EXPECT_TRUE(printed(row).ends_with("burst size is 50 KB\n        Auto jitter detection is enabled\n"));
}

// ---------------------------------------------------------------------------------------------- all profiles

class AllProfiles : public Dumps {
  protected:
    int print_all() {
        return call([] { return get_all_fcip_entities(mts_q); });
    }
};

TEST_F(AllProfiles, ArePrintedInOrderWithTheirTunnels) {
    the_switch().profiles[3] = full_profile();
    profile(9);
    link(3, 0, 101);
    link(3, 1, 102);
    EXPECT_EQ(print_all(), 0);
    std::string nine = zero_text;
    nine.replace(nine.find(" 0"), 2, " 9");
    EXPECT_EQ(trace, full_text + nine);
}

TEST_F(AllProfiles, EmptyTablePrintsNothing) {
    EXPECT_EQ(print_all(), 0);
    EXPECT_EQ(trace, "");
}

TEST_F(AllProfiles, MissingInterfaceListEndsTheDumpWith1) {
    profile(1);
    profile(2);
    profile(3);
    switchsim::inject("fcip_send_recv_with_mts_q", Fault::no_reply, 2);
    EXPECT_EQ(print_all(), 1);
    std::string one = zero_text;
    one.replace(one.find(" 0"), 2, " 1");
    EXPECT_EQ(trace, one);
    EXPECT_EQ(calls("fcip_get_entity_entry"), 2u);
}

TEST_F(AllProfiles, InterfaceListTooShortForItsCountEndsTheDumpWith1) {
    profile(1);
    switchsim::inject("fcip_send_recv_with_mts_q", Fault::short_reply, switchsim::every_call, 3);
    EXPECT_EQ(print_all(), 1);
    EXPECT_EQ(trace, "");
}

TEST_F(AllProfiles, ShortInterfaceListPrintsTheTunnelsThatItHolds) {
    profile(1);
    link(1, 0, 101);
    link(1, 1, 102);
    switchsim::inject("fcip_send_recv_with_mts_q", Fault::short_reply, switchsim::every_call, 8);
    EXPECT_EQ(print_all(), 0);
    EXPECT_NE(trace.find("    Tunnels Using this Profile: fcip1\n"), std::string::npos) << trace;
}

TEST_F(AllProfiles, ReadThatBringsNoRowIsRepeatedWithTheSameKey) {
    profile(1);
    profile(2);
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 2);
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 3);
    EXPECT_EQ(print_all(), 0);
    EXPECT_NE(trace.find("FCIP Profile 1\n"), std::string::npos);
    EXPECT_NE(trace.find("FCIP Profile 2\n"), std::string::npos);
    EXPECT_EQ(calls("fcip_get_entity_entry"), 5u);
}

TEST_F(AllProfiles, ReadThatNeverBringsARowIsRepeated100Times) {
    profile(1);
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record);
    EXPECT_EQ(print_all(), 0);
    EXPECT_EQ(calls("fcip_get_entity_entry"), 101u);
}

TEST_F(AllProfiles, FailedReadIsTheEndOfTheTable) {
    profile(1);
    switchsim::inject("fcip_get_entity_entry", Fault::fail_leaving_record);
    EXPECT_EQ(print_all(), 0);
    EXPECT_EQ(trace, "");
}

// ---------------------------------------------------------------------------------------------- links

/// A link whose fields all differ.
FcipLinkEntry some_link() {
    FcipLinkEntry row{};
    row.entity_id = 3;
    row.link_index = 4;
    row.link_if_index = 101;
    row.cost = 10;
    row.remote_address = test::address("2001:db8::2");
    row.status = 1;
    row.remote_tcp_port = 3225;
    row.ethernet_if_index = port_1;
    row.physical_if_index = 7;
    return row;
}

const char* const link_text = "vrkFcipEntityId : 3\n"
                              "vrkFcipLinkExtTcpRemPort : 3225\n"
                              "vrkFcipLinkRemFcipEntityAddress, : 2001:db8::2\n"
                              "vrkFcipLinkIndex (fcip index)  : 4\n"
                              "vrkFcipLinkIfIndex (fcip if-index) : 101\n"
                              "vrkFcipLinkCost: 10\n"
                              "vrkFcipLinkStatus : 1\n"
                              "vrkFcipLinkExtEthIfIndex (Gigabit ifIndex) : -2097152000\n"
                              "vrkFcipLinkExtPhyIfIndex:(Gigabit ifIndex) : 7\n";

TEST_F(Dumps, LinkPrintsItsFieldsThenItsVsan) {
    the_switch().ports[101].vsan_id = 20;
    the_switch().ports[101].config_word = 21;
    const FcipLinkEntry row = some_link();
    EXPECT_EQ(call([&] { return fcip_print_link_entity_brief(&row); }), 0);
    EXPECT_EQ(trace,
              std::string(link_text) + " fcip interface is in the vsan 20 \n fcip interface is in the vsan 21 \n");
}

TEST_F(Dumps, LinkWhoseVsanCannotBeReadIsMinusOne) {
    switchsim::inject("pm_cmi_get_port_config", Fault::fail_leaving_record);
    const FcipLinkEntry row = some_link();
    EXPECT_EQ(call([&] { return fcip_print_link_entity_brief(&row); }), -1);
    EXPECT_EQ(trace, link_text);
}

} // namespace
} // namespace fcip
