// The services that answer with single values: VSANs, identity, interface indexes, IP configuration, addresses.
#include "tests/simulator/simulator_test.h"

#include <arpa/inet.h>

#include <random>

using VsanService = SimulatorTest;
using Identity = SimulatorTest;
using InterfaceIndex = SimulatorTest;
using IpConfiguration = SimulatorTest;
using IpUtility = SimulatorTest;
using switchsim::the_switch;

namespace {

using Entry = std::array<std::uint8_t, 4096>;

Entry keyed_entry(std::uint32_t id) {
    Entry entry{};
    std::memcpy(entry.data(), &id, sizeof id);
    return entry;
}

ip_addr_value address(std::uint32_t family, std::initializer_list<std::uint8_t> bytes) {
    ip_addr_value value{};
    value.family = family;
    std::copy(bytes.begin(), bytes.end(), value.address);
    return value;
}

std::string text_of(const ip_addr_value& value, int length = 128) {
    char buffer[128];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(ip_addr_to_str(&value, buffer, length), buffer);
    return std::string(buffer, strnlen(buffer, sizeof buffer));
}

struct ConfigurationReply {
    int result = 0;
    std::vector<std::uint8_t> bytes;
    std::uint32_t length = 8;
};

ConfigurationReply ask_configuration() {
    ConfigurationReply got;
    void* reply = nullptr;
    got.result = cmi_req_resp(873, 1, 0, &reply, &got.length, 0, 0, 35, mts_q, 5);
    const Owned<void> owned(reply);
    if (reply) {
        const auto* bytes = static_cast<const std::uint8_t*>(reply);
        got.bytes.assign(bytes, bytes + got.length);
    }
    return got;
}

} // namespace

// ---------------------------------------------------------------------------------------------- VSANs and domains

/// The keys that the entries of VSAN 1 and of its domain give.
void expect_keys_of_vsan_1(const std::string& vsan_key, const std::string& domain_key) {
    Entry vsan = keyed_entry(1);
    Entry domain{};
    char key[256];
    ASSERT_EQ(vsan_cim_get_vsanEntry(mts_q, platform_exact, vsan.data()), 0);
    ASSERT_EQ(dm_cim_get_dmEntry(mts_q, 1, 1, domain.data()), 0);
    ASSERT_EQ(vsan_cim_get_vsan_key(key, vsan.data(), domain.data()), 0);
    EXPECT_EQ(key, vsan_key);
    ASSERT_EQ(vsan_cim_get_vsan_admindomain_key(key, domain.data()), 0);
    EXPECT_EQ(key, domain_key);
}

TEST_F(VsanService, KeysComeFromTheEntries) {
    the_switch().vsans[1] = {"the VSAN's key", "the domain's key"};
    expect_keys_of_vsan_1("the VSAN's key", "the domain's key");
}

TEST_F(VsanService, LongKeysAreCutTo255Characters) {
    the_switch().vsans[1] = {std::string(300, 'v'), std::string(300, 'd')};
    expect_keys_of_vsan_1(std::string(255, 'v'), std::string(255, 'd'));
}

TEST_F(VsanService, UnknownVsansHaveNoEntries) {
    Entry vsan = keyed_entry(2);
    Entry domain{};
    EXPECT_NE(vsan_cim_get_vsanEntry(mts_q, platform_exact, vsan.data()), 0);
    EXPECT_NE(dm_cim_get_dmEntry(mts_q, 2, 1, domain.data()), 0);
    EXPECT_EQ(vsan, keyed_entry(2));
    EXPECT_EQ(domain, Entry{});
}

TEST_F(VsanService, VsanWithoutADomainHasNoDomainEntry) {
    the_switch().vsans[1].domain.reset();
    Entry vsan = keyed_entry(1);
    Entry domain{};
    EXPECT_EQ(vsan_cim_get_vsanEntry(mts_q, platform_exact, vsan.data()), 0);
    EXPECT_NE(dm_cim_get_dmEntry(mts_q, 1, 1, domain.data()), 0);
}

TEST_F(VsanService, UnfilledEntriesGiveNoKey) {
    const Entry vsan = keyed_entry(1);
    const Entry domain{};
    char key[256] = "before";
    EXPECT_NE(vsan_cim_get_vsan_key(key, vsan.data(), domain.data()), 0);
    EXPECT_NE(vsan_cim_get_vsan_admindomain_key(key, domain.data()), 0);
    EXPECT_STREQ(key, "before");
}

TEST_F(VsanService, ArgumentsAreChecked) {
    Entry entry = keyed_entry(1);
    EXPECT_NE(vsan_cim_get_vsanEntry(mts_q, platform_next, entry.data()), 0);
    EXPECT_EQ(take_complaint(), "vsan_cim_get_vsanEntry: the operation is 2, expected 1");
    EXPECT_NE(dm_cim_get_dmEntry(mts_q, 1, 0, entry.data()), 0);
    EXPECT_EQ(take_complaint(), "dm_cim_get_dmEntry: the constant is 0, expected 1");
}

// ---------------------------------------------------------------------------------------------- identity

TEST_F(Identity, SystemNameIsTheSwitchNameUnlessGiven) {
    EXPECT_STREQ(getCSName(), "edge-sw1");
    EXPECT_STREQ(CSgetName(mts_q), "edge-sw1");
    the_switch().system_name = "edge-sw1.example.net";
    EXPECT_STREQ(getCSName(), "edge-sw1");
    EXPECT_STREQ(CSgetName(mts_q), "edge-sw1.example.net");
}

TEST_F(Identity, NamelessSwitchAnswersNull) {
    the_switch().has_name = false;
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_EQ(CSgetName(mts_q), nullptr);
}

TEST_F(Identity, SystemNameNeedsTheQueue) {
    EXPECT_EQ(CSgetName(nullptr), nullptr);
    EXPECT_EQ(take_complaint(), "CSgetName: the queue is not the one that init_mts() opened");
}

TEST_F(Identity, WwnIsReadAndPrinted) {
    std::uint8_t wwn[8];
    char text[256];
    ASSERT_EQ(system_cim_get_switch_wwn(mts_q, wwn), 0);
    ASSERT_EQ(cim_sprintf_wwn(text, wwn), 0);
    EXPECT_STREQ(text, "20:00:00:00:5e:11:22:33");
}

// ---------------------------------------------------------------------------------------------- interface indexes

TEST_F(InterfaceIndex, SlotAndPortAreThePortsOwn) {
    std::uint8_t value = 99;
    EXPECT_EQ(if_index_get_slot(gigabit, &value), 0);
    EXPECT_EQ(value, 1);
    the_switch().ports[gigabit].port = 7;
    EXPECT_EQ(if_index_get_port(gigabit, &value), 0);
    EXPECT_EQ(value, 7);
}

TEST_F(InterfaceIndex, SlotAndPortMayBeMissing) {
    the_switch().ports[gigabit].slot.reset();
    the_switch().ports[gigabit].port.reset();
    std::uint8_t value = 99;
    for (const std::uint32_t if_index : {gigabit, 77U}) {
        EXPECT_NE(if_index_get_slot(if_index, &value), 0);
        EXPECT_NE(if_index_get_port(if_index, &value), 0);
    }
    EXPECT_EQ(value, 99);
}

TEST_F(InterfaceIndex, TypeIsTheFirstByteAlone) {
    std::array<std::uint8_t, 16> type{};
    ASSERT_EQ(if_index_get_type(gigabit, type.data()), 0);
    EXPECT_EQ(type, (std::array<std::uint8_t, 16>{2}));
    ASSERT_EQ(if_index_get_type(fcip1, type.data()), 0);
    EXPECT_EQ(type[0], switchsim::kind_fcip);
}

TEST_F(InterfaceIndex, TypeMayBeUnknown) {
    the_switch().ports[gigabit].type_known = false;
    std::array<std::uint8_t, 16> type{};
    EXPECT_NE(if_index_get_type(gigabit, type.data()), 0);
    EXPECT_NE(if_index_get_type(77, type.data()), 0);
    EXPECT_EQ(type, (std::array<std::uint8_t, 16>{}));
}

TEST_F(InterfaceIndex, NetworkOrderIsInTheBytes) {
    const std::uint32_t swapped = hton_if_index(0x83010002);
    std::uint8_t bytes[4];
    std::memcpy(bytes, &swapped, sizeof bytes);
    EXPECT_EQ(std::vector<int>(bytes, bytes + 4), (std::vector<int>{0x83, 0x01, 0x00, 0x02}));
}

TEST_F(InterfaceIndex, NodeIsThatOfTheSlot) {
    Entry record{};
    ASSERT_EQ(idxmap_node_by_if_index(gigabit, record.data()), 0);
    std::uint32_t node = 0;
    std::memcpy(&node, record.data(), sizeof node);
    EXPECT_EQ(node, switchsim::node_of_slot(1));
    EXPECT_NE(switchsim::node_of_slot(1), switchsim::node_of_slot(2));
    EXPECT_NE(switchsim::node_of_slot(0), 0U);
}

TEST_F(InterfaceIndex, NodeOfAnInterfaceWithoutSlotFails) {
    the_switch().ports[gigabit].slot.reset();
    Entry record{};
    EXPECT_NE(idxmap_node_by_if_index(gigabit, record.data()), 0);
    EXPECT_NE(idxmap_node_by_if_index(77, record.data()), 0);
    EXPECT_EQ(record, Entry{});
}

TEST_F(InterfaceIndex, NamesAreWrittenAndCut) {
    the_switch().ports[gigabit].name = std::string(300, 'n');
    the_switch().ports[gigabit].kernel_name = std::string(300, 'k');
    char text[256];
    ASSERT_EQ(sprintf_if_index(text, gigabit), 0);
    EXPECT_EQ(text, std::string(255, 'n'));
    ASSERT_EQ(netcfg_print_ifname(text, gigabit), 0);
    EXPECT_EQ(text, std::string(255, 'k'));
    ASSERT_EQ(netcfg_print_ifname(text, fcip1), 0);
    EXPECT_STREQ(text, "fcip1");
}

TEST_F(InterfaceIndex, UnknownInterfacesHaveNoNames) {
    char text[256] = "before";
    EXPECT_NE(sprintf_if_index(text, 77), 0);
    EXPECT_NE(netcfg_print_ifname(text, 77), 0);
    EXPECT_STREQ(text, "before");
}

// ---------------------------------------------------------------------------------------------- IP configuration

TEST_F(IpConfiguration, SubnetMaskStandsAtOffset4InNetworkOrder) {
    void* record = nullptr;
    ASSERT_EQ(ipconf_get_intf_ip_address(mts_q, gigabit, &record), 0);
    const Owned<void> owned(record);
    const auto* bytes = static_cast<const std::uint8_t*>(record);
    EXPECT_EQ(std::vector<int>(bytes + 4, bytes + 8), (std::vector<int>{255, 255, 255, 0}));
}

TEST_F(IpConfiguration, PrefixLengthIsTheHostWordAtOffset32) {
    void* record = nullptr;
    ASSERT_EQ(ipconf_get_if_inet_addrs(mts_q, gigabit, &record), 0);
    const Owned<void> owned(record);
    std::uint32_t word = 0;
    std::memcpy(&word, static_cast<const std::uint8_t*>(record) + 32, sizeof word);
    EXPECT_EQ(word, 24U);
}

TEST_F(IpConfiguration, InterfacesWithoutAddressesFail) {
    void* record = nullptr;
    for (const std::uint32_t if_index : {fcip1, 77U}) {
        EXPECT_NE(ipconf_get_intf_ip_address(mts_q, if_index, &record), 0);
        EXPECT_NE(ipconf_get_if_inet_addrs(mts_q, if_index, &record), 0);
    }
    EXPECT_EQ(record, nullptr);
}

TEST_F(IpConfiguration, ForwardingAndTimeToLiveAreBigEndian) {
    the_switch().ip_configuration = switchsim::IpConfiguration{0x01020304, 63};
    const auto got = ask_configuration();
    EXPECT_EQ(got.result, 0);
    EXPECT_EQ(got.bytes, (std::vector<std::uint8_t>{1, 2, 3, 4, 63, 0, 0, 0}));
}

TEST_F(IpConfiguration, ServiceMayBeMissing) {
    the_switch().ip_configuration.reset();
    const auto got = ask_configuration();
    EXPECT_NE(got.result, 0);
    EXPECT_TRUE(got.bytes.empty());
}

TEST_F(IpConfiguration, RepliesCanBeShortOrMissing) {
    switchsim::inject("cmi_req_resp", switchsim::Fault::short_reply, 1, 5);
    EXPECT_EQ(ask_configuration().bytes, (std::vector<std::uint8_t>{0, 0, 0, 1, 64}));
    switchsim::inject("cmi_req_resp", switchsim::Fault::no_reply, 1);
    EXPECT_NE(ask_configuration().result, 0);
}

TEST_F(IpConfiguration, RequestArgumentsAreChecked) {
    struct {
        std::uint32_t opcode;
        int constants[5];
        std::uint32_t length;
        int wait;
        const char* complaint;
    } const rows[] = {
        {874, {1, 0, 0, 0, 35}, 8, 5, "the opcode is 874, expected 873"},
        {873, {0, 0, 0, 0, 35}, 8, 5, "the second argument is 0, expected 1"},
        {873, {1, 1, 0, 0, 35}, 8, 5, "the third argument is 1, expected 0"},
        {873, {1, 0, 1, 0, 35}, 8, 5, "the sixth argument is 1, expected 0"},
        {873, {1, 0, 0, 1, 35}, 8, 5, "the seventh argument is 1, expected 0"},
        {873, {1, 0, 0, 0, 34}, 8, 5, "the eighth argument is 34, expected 35"},
        {873, {1, 0, 0, 0, 35}, 9, 5, "the reply length is 9, expected 8"},
        {873, {1, 0, 0, 0, 35}, 8, 0, "whether the wait limit is above 0 is 0, expected 1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.complaint);
        void* reply = nullptr;
        std::uint32_t length = row.length;
        EXPECT_NE(cmi_req_resp(row.opcode, row.constants[0], row.constants[1], &reply, &length, row.constants[2],
                               row.constants[3], row.constants[4], mts_q, row.wait),
                  0);
        EXPECT_EQ(reply, nullptr);
        EXPECT_EQ(take_complaint(), std::string("cmi_req_resp: ") + row.complaint);
    }
}

// ---------------------------------------------------------------------------------------------- addresses

TEST_F(IpUtility, AddressesPrintAsUsual) {
    EXPECT_EQ(text_of(address(ip_family_ipv4, {10, 0, 0, 1})), "10.0.0.1");
    EXPECT_EQ(text_of(address(ip_family_ipv6, {0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xAB})),
              "2001:db8::ab");
    EXPECT_EQ(text_of(address(ip_family_ipv6, {})), "::");
    EXPECT_EQ(text_of(address(ip_family_ipv4, {})), "0.0.0.0");
}

/// Addresses whose groups are often zero, so that runs of zeroes of every length and at every place are among them.
TEST_F(IpUtility, AddressesReadAsTheSystemWritesThem) {
    std::mt19937 random(1);
    for (int turn = 0; turn < 20'000; ++turn) {
        ip_addr_value value{};
        value.family = turn % 2 == 0 ? ip_family_ipv4 : ip_family_ipv6;
        for (std::uint8_t& byte : value.address)
            byte = random() % 4 == 0 ? static_cast<std::uint8_t>(random()) : 0;
        if (turn % 8 == 1) // an IPv4 address as an IPv6 one
            std::fill(std::fill_n(value.address, 10, std::uint8_t{0}), value.address + 12, std::uint8_t{0xff});
        char expected[INET6_ADDRSTRLEN];
        inet_ntop(turn % 2 == 0 ? AF_INET : AF_INET6, value.address, expected, sizeof expected);
        ASSERT_EQ(text_of(value), expected);
    }
}

TEST_F(IpUtility, AddressesOfNoFamilyPrintAsNull) {
    EXPECT_EQ(text_of(inet_addr_null), "null");
    EXPECT_EQ(text_of(address(3, {1, 2, 3, 4})), "null");
}

TEST_F(IpUtility, TextIsCutAndTerminated) {
    const auto value = address(ip_family_ipv4, {192, 168, 100, 200});
    EXPECT_EQ(text_of(value, 8), "192.168");
    EXPECT_EQ(text_of(value, 1), "");
    EXPECT_EQ(text_of(value, 16), "192.168.100.200");
    EXPECT_EQ(text_of(value, 0), std::string(128, '#'));
    EXPECT_EQ(text_of(value, -1), std::string(128, '#'));
}

TEST_F(IpUtility, ComparingLooksAtFamilyAndAddress) {
    const auto one = address(ip_family_ipv4, {10, 0, 0, 1});
    auto same = one;
    same.address[15] = 9; // no part of an IPv4 address
    EXPECT_EQ(ip_addr_compare(&one, &same), 0);
    const auto other = address(ip_family_ipv4, {10, 0, 0, 2});
    EXPECT_LT(ip_addr_compare(&one, &other), 0);
    EXPECT_GT(ip_addr_compare(&other, &one), 0);
    const auto zero6 = address(ip_family_ipv6, {});
    EXPECT_NE(ip_addr_compare(&zero6, &inet_addr_null), 0);
    EXPECT_NE(ip_addr_compare(&inet_addr_null, &zero6), 0);
    auto six = zero6;
    six.address[15] = 1;
    EXPECT_NE(ip_addr_compare(&zero6, &six), 0);
}
