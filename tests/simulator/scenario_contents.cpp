// What the keys of a scenario put into the tables, and what is there without them.
#include "tests/simulator/scenario_lines.h"

using ScenarioContents = SimulatorTest;
using switchsim::the_switch;

TEST_F(ScenarioContents, DefaultsOfTheSwitch) {
    load_ok("");
    EXPECT_EQ(the_switch().name, "sw");
    EXPECT_EQ(the_switch().system_name, "");
    EXPECT_TRUE(the_switch().has_name);
    EXPECT_EQ(the_switch().wwn, (std::array<std::uint8_t, 8>{}));
    EXPECT_EQ(the_switch().slots, std::vector<std::uint8_t>{1});
    EXPECT_FALSE(the_switch().ip_configuration);
    EXPECT_TRUE(the_switch().ports.empty());
}

TEST_F(ScenarioContents, IpTableAndVsans) {
    load_ok("[ip]\nforwarding = 7\n[[vsan]]\nid = 4094\ndomain = false\n");
    EXPECT_EQ(the_switch().ip_configuration->forwarding, 7U);
    EXPECT_EQ(the_switch().ip_configuration->default_ttl, 64);
    EXPECT_EQ(the_switch().vsans.at(4094).name, "VSAN4094");
    EXPECT_FALSE(the_switch().vsans.at(4094).domain);
}

TEST_F(ScenarioContents, DefaultsOfAProfile) {
    load_ok("[[profile]]\nid = 9\naddress = \"2001:db8::9\"\n");
    const FcipEntityEntry& row = the_switch().profiles.at(9);
    FcipEntityEntry expected{};
    expected.entity_id = 9;
    expected.local_address.family = ip_family_ipv6;
    const std::uint8_t bytes[16] = {0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9};
    std::memcpy(expected.local_address.address, bytes, sizeof bytes);
    expected.listen_port = 3225;
    expected.sack = 1;
    expected.sequence_number_wrap = 1;
    expected.pmtu_discovery = 1;
    expected.pmtu_reset_timeout = 3600;
    expected.keep_alive = 60;
    expected.minimum_retransmit_time = 200;
    expected.maximum_retransmissions = 4;
    expected.round_trip_time = 1000;
    expected.maximum_bandwidth = 1000000;
    expected.minimum_bandwidth = 500000;
    expected.cwm = 1;
    expected.burst_size = 50;
    EXPECT_EQ(std::memcmp(&row, &expected, sizeof row), 0);
}

TEST_F(ScenarioContents, EveryWordOfAProfile) {
    load_ok("[[profile]]\nid = 9\naddress = \"none\"\nport = 1\nsack = 2\nsequence_number_wrap = 3\nphb_support = 4\n"
            "pmtu_discovery = 5\npmtu_reset_timeout = 6\nkeep_alive = 7\nminimum_retransmit_time = 8\n"
            "maximum_retransmissions = 9\nsend_buffer_size = 10\nround_trip_time = 11\nmaximum_bandwidth = 12\n"
            "minimum_bandwidth = 13\naddress_if_index = 14\ncwm = 15\nburst_size = 16\nmaximum_jitter = 17\n");
    std::uint32_t words[24];
    std::memcpy(words, &the_switch().profiles.at(9), sizeof words);
    EXPECT_EQ(
        std::vector<std::uint32_t>(words, words + 24),
        (std::vector<std::uint32_t>{9, 0, 0, 0, 0, 0, 1, 2, 3, 4, 0, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST_F(ScenarioContents, DefaultsOfATunnel) {
    load_ok("[[vsan]]\nid = 1\ndomain = \"d\"\n[[profile]]\nid = 9\naddress = \"10.0.0.1\"\n"
            "[[tunnel]]\nprofile = 9\nindex = 3\nremote_address = \"10.0.0.2\"\n");
    const FcipLinkEntry& row = the_switch().links.at({9, 3});
    FcipLinkEntry expected{};
    expected.entity_id = 9;
    expected.link_index = 3;
    expected.link_if_index = 0x0A000003;
    expected.cost = 1000;
    expected.remote_entity_id = 9;
    expected.remote_address = {ip_family_ipv4, {10, 0, 0, 2}};
    expected.status = 1;
    expected.tcp_connections = 2;
    expected.timestamp_tolerance = 2000;
    expected.remote_tcp_port = 3225;
    expected.local_port_enable = 1;
    expected.compression_mode = 1;
    EXPECT_EQ(std::memcmp(&row, &expected, sizeof row), 0);
    EXPECT_TRUE(the_switch().connections.empty());
    EXPECT_TRUE(the_switch().link_errors.empty());
    const switchsim::Port& port = the_switch().ports.at(0x0A000003);
    EXPECT_EQ(port.kind, switchsim::kind_fcip);
    EXPECT_EQ(port.name, "fcip4");
    EXPECT_EQ(port.kernel_name, "fcip4");
    EXPECT_EQ(port.mtu, 2300U);
    EXPECT_TRUE(port.fc_interface);
    EXPECT_FALSE(port.slot);
}

TEST_F(ScenarioContents, EveryWordOfATunnel) {
    load_ok("[[tunnel]]\nprofile = 9\nprofile_missing = true\nindex = 1\nif_index = 2\ncost = 3\n"
            "remote_wwn = \"01:02:03:04:05:06:07:08\"\nremote_profile = 5\nremote_address = \"none\"\nstatus = 6\n"
            "passive_mode = 7\ntcp_connections = 8\ncheck_timestamp = 9\ntimestamp_tolerance = 10\nremote_port = 11\n"
            "local_port_enable = 12\nspecial_frame_enable = 13\nword_88 = 14\nbport_keep_alive_enable = 15\n"
            "control_qos = 16\ndata_qos = 17\nethernet_if_index = 18\nwrite_acceleration = 19\n"
            "compression_mode = 20\ntape_acceleration = 21\nflow_control_buffer_size = 22\nipsec = 23\n"
            "physical_if_index = 24\nwrite_acceleration_operational = 25\ntape_acceleration_operational = 26\n"
            "tape_read_acceleration_operational = 27\nvsan_missing = true\n");
    std::uint32_t words[36];
    std::memcpy(words, &the_switch().links.at({9, 1}), sizeof words);
    const std::vector<std::uint32_t> before(words, words + 5);
    EXPECT_EQ(before, (std::vector<std::uint32_t>{9, 1, 2, 3, 0}));
    const std::uint8_t* wwn = the_switch().links.at({9, 1}).remote_wwn;
    EXPECT_EQ(std::vector<int>(wwn, wwn + 8), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
    const std::vector<std::uint32_t> after(words + 7, words + 36);
    EXPECT_EQ(after, (std::vector<std::uint32_t>{5,  0,  0,  0,  0,  0,  0,  6,  7,  8,  9,  10, 11, 12, 13,
                                                 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27}));
}

TEST_F(ScenarioContents, TunnelsConnectionErrorsAndInterface) {
    load_ok("[[vsan]]\nid = 5\ndomain = \"d\"\n[[vsan]]\nid = 1\ndomain = \"d\"\n"
            "[[ethernet]]\nslot = 1\nport = 4\n"
            "[[profile]]\nid = 9\naddress = \"10.0.0.1\"\nport = 0x1000C\n"
            "[[tunnel]]\nprofile = 9\nindex = 0\nremote_address = \"10.0.0.2\"\nremote_port = 0x2000D\n"
            "ethernet = \"1/4\"\nphysical_if_index = 6\nname = \"wan\"\nkernel_name = \"wan0\"\nvsan = 5\nmtu = 9000\n"
            "type_known = false\nfc_interface = false\nconfig_word = 8\n"
            "[tunnel.connection]\npurpose = 2\nreceiver_window_size = 3\nmaximum_segment_size = 4\ntimeout = 5\n"
            "[tunnel.errors]\ntimestamp_expiries = \"18446744073709551615\"\nlost_synchronisation = 258\n");
    EXPECT_EQ(the_switch().links.at({9, 0}).ethernet_if_index, 0x83010004U);
    EXPECT_EQ(the_switch().links.at({9, 0}).physical_if_index, 6U);
    const FcipTcpConnEntry& connection = the_switch().connections.at({9, 0, 0xC, 0xD});
    EXPECT_EQ(connection.purpose, 2U);
    EXPECT_EQ(connection.receiver_window_size, 3U);
    EXPECT_EQ(connection.maximum_segment_size, 4U);
    EXPECT_EQ(connection.connection_timeout, 5U);
    const FcipLinkErrors& errors = the_switch().link_errors.at({9, 0});
    EXPECT_EQ(std::vector<int>(errors.bytes + 8, errors.bytes + 16), (std::vector<int>{0, 0, 0, 0, 0, 0, 1, 2}));
    EXPECT_EQ(std::vector<int>(errors.bytes + 72, errors.bytes + 80), std::vector<int>(8, 255));
    const switchsim::Port& port = the_switch().ports.at(0x0A000000);
    EXPECT_EQ(port.name, "wan");
    EXPECT_EQ(port.kernel_name, "wan0");
    EXPECT_EQ(port.vsan_id, 5U);
    EXPECT_EQ(port.mtu, 9000U);
    EXPECT_EQ(port.slot, 1);
    EXPECT_EQ(port.port, 4);
    EXPECT_EQ(port.config_word, 8U);
    EXPECT_FALSE(port.type_known);
    EXPECT_FALSE(port.fc_interface);
}

TEST_F(ScenarioContents, TunnelMayBeUnknownToThePortManager) {
    load_ok("[[tunnel]]\nprofile = 9\nprofile_missing = true\nindex = 0\nremote_address = \"none\"\n"
            "vsan_missing = true\nport_row = false\n");
    EXPECT_EQ(the_switch().links.size(), 1U);
    EXPECT_TRUE(the_switch().ports.empty());
}

TEST_F(ScenarioContents, DefaultsOfPorts) {
    load_ok("[[vsan]]\nid = 1\ndomain = \"d\"\n[[ethernet]]\nslot = 1\nport = 2\n[[fibre_channel]]\nslot = 1\n"
            "port = 3\n[[port_channel]]\nslot = 1\nport = 4\n[port_channel.counters]\nbroadcast_received = 5\n");
    const switchsim::Port& gig = the_switch().ports.at(0x83010002);
    EXPECT_EQ(gig.kind, switchsim::kind_ethernet);
    EXPECT_EQ(gig.name, "GigabitEthernet1/2");
    EXPECT_EQ(gig.kernel_name, "eth1_2");
    EXPECT_EQ(gig.mtu, 1500U);
    EXPECT_EQ(gig.eth_stats_mtu, 1500U);
    EXPECT_EQ(gig.network_address, "");
    EXPECT_FALSE(gig.fc_interface);
    EXPECT_FALSE(gig.subnet_mask || gig.prefix_length || gig.counters);
    EXPECT_TRUE(gig.mac_statistics.empty() && gig.ip_statistics.empty() && gig.tcp_statistics.empty());
    const switchsim::Port& fc = the_switch().ports.at(0x01010003);
    EXPECT_EQ(fc.kind, switchsim::kind_fibre_channel);
    EXPECT_EQ(fc.name, "fc1/3");
    EXPECT_EQ(fc.mtu, 2112U);
    EXPECT_TRUE(fc.fc_interface);
    const switchsim::Port& channel = the_switch().ports.at(0x84010004);
    EXPECT_EQ(channel.kind, switchsim::kind_port_channel);
    EXPECT_EQ(channel.name, "port-channel1/4");
    EXPECT_EQ(channel.kernel_name, "po1_4");
    EXPECT_EQ(channel.counters.value().bytes[266], 5); // offset 263, big-endian
}

TEST_F(ScenarioContents, EthernetPortsFacts) {
    load_ok("[[vsan]]\nid = 1\ndomain = \"d\"\n[[ethernet]]\nslot = 3\nport = false\ncard_missing = true\n"
            "if_index = 0x83000099\nmac = \"02:00:00:AA:bb:cc\"\nmtu = 9000\ncounter_mtu = 9216\n"
            "subnet_mask = \"255.255.0.0\"\nprefix_length = 128\n[ethernet.counters]\nmulticast_received = 258\n"
            "unicast_transmitted = 259\n[ethernet.mac_statistics]\nbytes_transmitted = 260\nalignment_errors = 261\n"
            "[ethernet.ip_statistics]\nreceived = 262\ndiscards = 263\n[ethernet.tcp_statistics]\nactive_opens = 264\n"
            "receive_errors_5 = 265\nsent_resets = 266\ncontinuations = 2\n");
    const switchsim::Port& port = the_switch().ports.at(0x83000099);
    EXPECT_EQ(port.slot, 3);
    EXPECT_FALSE(port.port);
    EXPECT_EQ(port.network_address, "02:00:00:AA:bb:cc");
    EXPECT_EQ(port.eth_stats_mtu, 9216U);
    EXPECT_EQ(port.subnet_mask, (std::array<std::uint8_t, 4>{255, 255, 0, 0}));
    EXPECT_EQ(port.prefix_length, 128);
    const auto at = [](const std::uint8_t* bytes, std::size_t last) { return bytes[last - 1] << 8 | bytes[last]; };
    EXPECT_EQ(at(port.counters->bytes, 262), 258);
    EXPECT_EQ(at(port.counters->bytes, 322), 259);
    ASSERT_EQ(port.mac_statistics.size(), 256U);
    EXPECT_EQ(at(port.mac_statistics.data(), 32 + 7), 260);
    EXPECT_EQ(at(port.mac_statistics.data(), 32 + 8 * 20 + 7), 261);
    ASSERT_EQ(port.ip_statistics.size(), 172U);
    EXPECT_EQ(at(port.ip_statistics.data(), 39), 262);
    EXPECT_EQ(at(port.ip_statistics.data(), 155), 263);
    ASSERT_EQ(port.tcp_statistics.size(), 3U);
    ASSERT_EQ(port.tcp_statistics[0].size(), 1352U);
    EXPECT_EQ(at(port.tcp_statistics[0].data(), 39), 264);
    EXPECT_EQ(at(port.tcp_statistics[0].data(), 327), 265);
    EXPECT_EQ(at(port.tcp_statistics[0].data(), 671), 266);
    ASSERT_EQ(port.tcp_statistics[1].size(), 38U);
    EXPECT_EQ(at(port.tcp_statistics[1].data(), 37), 1);
    ASSERT_EQ(port.tcp_statistics[2].size(), 38U);
    EXPECT_EQ(at(port.tcp_statistics[2].data(), 37), 0);
}

TEST_F(ScenarioContents, EthernetCountersMayBeUnreadable) {
    load_ok("[[vsan]]\nid = 1\ndomain = \"d\"\n[[ethernet]]\nslot = 1\nport = 2\ncounter_mtu = false\n");
    EXPECT_FALSE(the_switch().ports.at(0x83010002).eth_stats_mtu);
}

TEST_F(ScenarioContents, SectionsMayComeInAnyOrder) {
    EXPECT_EQ(switchsim::load_text(
                  "tunnel = [{profile = 1, index = 0, remote_address = \"10.0.0.2\", ethernet = \"1/1\"}]\n"
                  "profile = [{id = 1, address = \"10.0.0.1\", address_interface = \"1/1\"}]\n"
                  "ethernet = [{slot = 1, port = 1}]\nvsan = [{id = 1, domain = \"d\"}]\n[switch]\nname = \"sw\"\n",
                  "test.toml"),
              "");
    EXPECT_EQ(the_switch().links.at({1, 0}).ethernet_if_index, gigabit);
    EXPECT_EQ(the_switch().profiles.at(1).address_if_index, gigabit);
}
