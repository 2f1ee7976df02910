// The generator: switches of any size.
#include "tests/simulator/scenario_lines.h"

#include "simulator/statistics_layout.h"

#include <algorithm>
#include <array>
#include <set>
#include <span>

using Generator = SimulatorTest;
using switchsim::the_switch;

namespace {

std::string text_of(const ip_addr_value& address) {
    char text[64];
    return ip_addr_to_str(&address, text, sizeof text);
}

/// The values of a record's counters.
std::vector<std::uint64_t> counters_of(std::span<const switchsim::CounterField> fields, const std::uint8_t* record) {
    std::vector<std::uint64_t> values;
    for (const auto& field : fields)
        values.push_back(field.bits == 64 ? switchsim::get_big<std::uint64_t>(record, field.offset)
                                          : switchsim::get_big<std::uint32_t>(record, field.offset));
    return values;
}

/// No counter is zero, and none has another's value.
void expect_values_of_their_own(std::vector<std::uint64_t> values) {
    std::sort(values.begin(), values.end());
    EXPECT_GT(values.front(), 0U);
    EXPECT_EQ(std::adjacent_find(values.begin(), values.end()), values.end());
}

} // namespace

TEST_F(Generator, TunnelsShareProfilesPortsAndVsans) {
    load_ok("[generate]\ntunnels = 8\nprofiles = 4\nethernet_ports = 3\nvsans = 3\n");
    struct row {
        std::uint32_t link_index;
        std::uint32_t profile;
        const char* local;
        const char* remote;
        std::uint32_t ethernet_if_index;
        std::uint32_t vsan;
        const char* interface;
        std::uint32_t compression;
        std::uint32_t purpose;
    };
    const row rows[] = {
        {0, 1, "10.0.0.1", "172.0.0.1", 0x83010001, 1, "fcip1", 1, 1},
        {1, 1, "10.0.0.1", "172.0.0.2", 0x83010001, 2, "fcip2", 2, 2},
        {2, 2, "10.0.0.2", "172.0.0.3", 0x83020001, 3, "fcip3", 3, 3},
        {3, 2, "10.0.0.2", "172.0.0.4", 0x83020001, 1, "fcip4", 4, 1},
        {4, 3, "10.0.0.3", "172.0.0.5", 0x83010002, 2, "fcip5", 1, 2},
        {5, 3, "10.0.0.3", "172.0.0.6", 0x83010002, 3, "fcip6", 2, 3},
        {6, 4, "2001:db8:1::4", "2001:db8:2::7", 0x83010001, 1, "fcip7", 3, 1},
        {7, 4, "2001:db8:1::4", "2001:db8:2::8", 0x83010001, 2, "fcip8", 4, 2},
    };
    ASSERT_EQ(the_switch().links.size(), std::size(rows));
    for (const row& each : rows) {
        SCOPED_TRACE(each.link_index);
        const FcipLinkEntry& link = the_switch().links.at({each.profile, each.link_index});
        const FcipEntityEntry& profile = the_switch().profiles.at(each.profile);
        const switchsim::Port& port = the_switch().ports.at(link.link_if_index);
        EXPECT_EQ(text_of(profile.local_address), each.local);
        EXPECT_EQ(text_of(link.remote_address), each.remote);
        EXPECT_EQ(link.ethernet_if_index, each.ethernet_if_index);
        EXPECT_EQ(link.physical_if_index, each.ethernet_if_index);
        EXPECT_EQ(profile.address_if_index, each.ethernet_if_index);
        EXPECT_EQ(link.remote_entity_id, each.profile);
        EXPECT_EQ(link.compression_mode, each.compression);
        EXPECT_EQ(link.remote_wwn[7], each.link_index);
        EXPECT_EQ(profile.listen_port, 3225U);
        EXPECT_EQ(link.remote_tcp_port, 3225U);
        EXPECT_EQ(port.name, each.interface);
        EXPECT_EQ(port.kernel_name, each.interface);
        EXPECT_EQ(port.kind, switchsim::kind_fcip);
        EXPECT_TRUE(port.fc_interface);
        EXPECT_EQ(port.vsan_id, each.vsan);
        EXPECT_EQ(port.slot, the_switch().ports.at(each.ethernet_if_index).slot);
        EXPECT_EQ(port.port, the_switch().ports.at(each.ethernet_if_index).port);
        EXPECT_EQ(the_switch().connections.at({each.profile, each.link_index, 3225, 3225}).purpose, each.purpose);
        expect_values_of_their_own(counters_of(switchsim::link_error_fields,
                                               the_switch().link_errors.at({each.profile, each.link_index}).bytes));
    }
    EXPECT_EQ(the_switch().vsans.at(3).name, "VSAN3");
    EXPECT_EQ(the_switch().vsans.at(3).domain, "20:00:00:00:5e:00:1003");
}

TEST_F(Generator, EthernetPortsAlternateBetweenTwoLineCards) {
    load_ok("[generate]\ntunnels = 1\nethernet_ports = 3\n");
    struct row {
        std::uint32_t if_index;
        std::uint8_t slot;
        std::uint8_t port;
        const char* name;
        const char* kernel_name;
        const char* network_address;
    };
    const row rows[] = {
        {0x83010001, 1, 1, "GigabitEthernet1/1", "eth1_1", "02:00:00:00:01:01"},
        {0x83010002, 1, 2, "GigabitEthernet1/2", "eth1_2", "02:00:00:00:01:02"},
        {0x83020001, 2, 1, "GigabitEthernet2/1", "eth2_1", "02:00:00:00:02:01"},
    };
    for (const row& each : rows) {
        SCOPED_TRACE(each.name);
        const switchsim::Port& port = the_switch().ports.at(each.if_index);
        EXPECT_EQ(port.slot, each.slot);
        EXPECT_EQ(port.port, each.port);
        EXPECT_EQ(port.name, each.name);
        EXPECT_EQ(port.kernel_name, each.kernel_name);
        EXPECT_EQ(port.network_address, each.network_address);
        EXPECT_EQ(port.subnet_mask, (std::array<std::uint8_t, 4>{255, 255, 255, 0}));
        EXPECT_EQ(port.prefix_length, 24U);
        EXPECT_EQ(port.mtu, 2300U);
        EXPECT_EQ(port.eth_stats_mtu, 2300U);
    }
}

TEST_F(Generator, EachPortCountsForItself) {
    switchsim::generate(4);
    std::set<std::vector<std::uint64_t>> seen;
    unsigned ports = 0;
    for (const auto& [if_index, port] : the_switch().ports) {
        if (port.kind != switchsim::kind_ethernet)
            continue;
        ++ports;
        ASSERT_TRUE(port.counters);
        for (const auto& counters :
             {counters_of(switchsim::port_counter_fields, port.counters->bytes),
              counters_of(switchsim::mac_statistics_fields, port.mac_statistics.data()),
              counters_of(switchsim::ip_statistics_fields, port.ip_statistics.data()),
              counters_of(switchsim::tcp_statistics_fields, port.tcp_statistics.front().data())}) {
            expect_values_of_their_own(counters);
            EXPECT_TRUE(seen.insert(counters).second) << "another port's";
        }
    }
    EXPECT_EQ(seen.size(), 4 * ports);
}

TEST_F(Generator, EnumeratesCompletelyAndInOrder) {
    switchsim::generate(10000);
    std::uint32_t key[2] = {0, 0};
    std::set<std::uint32_t> indexes;
    unsigned rows = 0;
    for (;;) {
        FcipLinkEntry* row = nullptr;
        if (fcip_get_link_entry(mts_q, platform_next, key, &row, 30, 1) != 0)
            break;
        const Owned<FcipLinkEntry> owned(row);
        ++rows;
        indexes.insert(row->link_if_index);
        key[0] = row->entity_id;
        key[1] = row->link_index;
        ASSERT_TRUE(the_switch().profiles.contains(row->entity_id));
        ASSERT_TRUE(the_switch().ports.contains(row->ethernet_if_index));
        const auto& port = the_switch().ports.at(row->link_if_index);
        ASSERT_TRUE(the_switch().vsans.at(port.vsan_id).domain);
        ASSERT_TRUE(the_switch().link_errors.contains({key[0], key[1]}));
    }
    EXPECT_EQ(rows, 10000U);
    EXPECT_EQ(indexes.size(), 10000U);
    EXPECT_EQ(switchsim::calls("fcip_get_link_entry"), 10001U);
    EXPECT_EQ(the_switch().connections.size(), 10000U);
}

TEST_F(Generator, MakesAnySize) {
    for (const unsigned tunnels : {0U, 1U, 10U, 100U, 1000U}) {
        switchsim::generate(tunnels);
        EXPECT_EQ(the_switch().links.size(), tunnels);
        EXPECT_GE(the_switch().profiles.size(), 1U);
    }
}

TEST_F(Generator, TakesItsSizesFromTheScenario) {
    load_ok(
        "system_name = \"sw.example.net\"\nhas_name = false\nwwn = \"20:00:00:00:5e:00:00:02\"\n[ip]\ndefault_ttl = 9\n"
        "[generate]\ntunnels = 7\nprofiles = 3\nethernet_ports = 5\nvsans = 2\n");
    EXPECT_EQ(the_switch().name, "sw");
    EXPECT_EQ(the_switch().system_name, "sw.example.net");
    EXPECT_FALSE(the_switch().has_name);
    EXPECT_EQ(the_switch().wwn[7], 2);
    EXPECT_EQ(the_switch().ip_configuration->default_ttl, 9);
    EXPECT_EQ(the_switch().links.size(), 7U);
    EXPECT_EQ(the_switch().profiles.size(), 3U);
    EXPECT_EQ(the_switch().vsans.size(), 2U);
    EXPECT_EQ(the_switch().ports.size(), 7U + 5U);
    EXPECT_EQ(the_switch().slots, (std::vector<std::uint8_t>{1, 2}));
    load_ok("slots = [2]\n[generate]\ntunnels = 1\n");
    EXPECT_EQ(the_switch().slots, (std::vector<std::uint8_t>{2}));
}

TEST_F(Generator, LineCardsAnswerForItsPorts) {
    switchsim::generate(4);
    unsigned ethernet_ports = 0;
    for (const auto& [if_index, port] : the_switch().ports) {
        if (port.kind != switchsim::kind_ethernet)
            continue;
        ++ethernet_ports;
        EXPECT_EQ(port.mac_statistics.size(), 256U);
        EXPECT_EQ(port.ip_statistics.size(), 172U);
        EXPECT_EQ(port.tcp_statistics.size(), 2U);
        EXPECT_TRUE(port.counters);
    }
    EXPECT_EQ(ethernet_ports, 4u);
}
