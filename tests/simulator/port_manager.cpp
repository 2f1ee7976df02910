#include "tests/simulator/simulator_test.h"

using PortManager = SimulatorTest;
using switchsim::the_switch;

namespace {

std::uint32_t word_at(const std::uint8_t* bytes, std::size_t offset) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes + offset, sizeof word);
    return word;
}

Owned<PmPortInfo> info(int operation, std::uint32_t if_index) {
    PmPortInfo* record = nullptr;
    const int result = pm_cim_get_port_info(&record, operation, if_index, mts_q);
    EXPECT_EQ(result == 0, record != nullptr);
    return Owned<PmPortInfo>(record);
}

} // namespace

TEST_F(PortManager, PortInfoHoldsIndexMtuAndVsanInHostOrder) {
    const auto record = info(platform_exact, gigabit);
    ASSERT_TRUE(record);
    EXPECT_EQ(word_at(record->bytes, 0), gigabit);
    EXPECT_EQ(word_at(record->bytes, 28), 2300U);
    EXPECT_EQ(word_at(record->bytes, 213), 1U);
    EXPECT_FALSE(info(platform_exact, 77));
}

TEST_F(PortManager, PortInfoWalksInUnsignedOrder) {
    the_switch().ports[0x7FFFFFFF];
    the_switch().ports[0xFFFFFFFF];
    std::vector<std::uint32_t> indexes;
    std::uint32_t key = 0;
    while (const auto record = info(platform_next_port, key))
        indexes.push_back(key = word_at(record->bytes, 0));
    EXPECT_EQ(indexes, (std::vector<std::uint32_t>{fcip1, 0x7FFFFFFF, gigabit, 0xFFFFFFFF}));
}

TEST_F(PortManager, EthernetPortsFollowTheStartOfTheirWalks) {
    const auto record = info(platform_next_port, 0x82FFFFFF);
    ASSERT_TRUE(record);
    EXPECT_EQ(word_at(record->bytes, 0), gigabit);
}

TEST_F(PortManager, PortInfoOperationIsExactOrItsOwnNext) {
    EXPECT_FALSE(info(platform_next, gigabit));
    EXPECT_EQ(take_complaint(), "pm_cim_get_port_info: the operation is 2, expected 1 or 0");
}

TEST_F(PortManager, PortConfigHoldsTheVsanTwice) {
    const std::uint32_t key[2] = {gigabit, gigabit};
    for (const std::optional<std::uint32_t> second : {std::optional<std::uint32_t>{}, {4094U}}) {
        the_switch().ports[gigabit].config_word = second;
        std::uint32_t aux = 7;
        PmPortConfig* record = nullptr;
        ASSERT_EQ(pm_cmi_get_port_config(mts_q, 1, 1, key, &aux, &record, 4), 0);
        const Owned<PmPortConfig> owned(record);
        EXPECT_EQ(word_at(record->bytes, 213), 1U);
        EXPECT_EQ(word_at(record->bytes, 217), second.value_or(1));
    }
}

TEST_F(PortManager, PortConfigOfNoPortFails) {
    const std::uint32_t key[2] = {5, 5};
    std::uint32_t aux = 0;
    PmPortConfig* record = nullptr;
    EXPECT_NE(pm_cmi_get_port_config(mts_q, 1, 1, key, &aux, &record, 4), 0);
    EXPECT_EQ(record, nullptr);
}

TEST_F(PortManager, PortConfigArgumentsAreChecked) {
    const std::uint32_t key[2] = {gigabit, gigabit};
    const std::uint32_t two_indexes[2] = {gigabit, 5};
    std::uint32_t aux = 0;
    PmPortConfig* record = nullptr;
    EXPECT_NE(pm_cmi_get_port_config(mts_q, 0, 1, key, &aux, &record, 4), 0);
    EXPECT_EQ(take_complaint(), "pm_cmi_get_port_config: the first constant is 0, expected 1");
    EXPECT_NE(pm_cmi_get_port_config(mts_q, 1, 2, key, &aux, &record, 4), 0);
    EXPECT_EQ(take_complaint(), "pm_cmi_get_port_config: the second constant is 2, expected 1");
    EXPECT_NE(pm_cmi_get_port_config(mts_q, 1, 1, key, &aux, &record, 5), 0);
    EXPECT_EQ(take_complaint(), "pm_cmi_get_port_config: the third constant is 5, expected 4");
    EXPECT_NE(pm_cmi_get_port_config(mts_q, 1, 1, two_indexes, &aux, &record, 4), 0);
    EXPECT_EQ(take_complaint(), "pm_cmi_get_port_config: the second key word is 5, expected 2197880833");
    EXPECT_EQ(record, nullptr);
}

TEST_F(PortManager, FibreChannelInterfaceIsFoundBehindAnFcipInterface) {
    const Owned<PmPortInfo> record(pm_cim_find_interface(platform_exact, fcip1, mts_q));
    ASSERT_TRUE(record);
    EXPECT_EQ(word_at(record->bytes, 0), fcip1);
}

TEST_F(PortManager, FibreChannelInterfaceIsNotFoundElsewhere) {
    EXPECT_EQ(pm_cim_find_interface(platform_exact, gigabit, mts_q), nullptr);
    EXPECT_EQ(pm_cim_find_interface(platform_exact, 77, mts_q), nullptr);
    EXPECT_EQ(pm_cim_find_interface(platform_next_port, fcip1, mts_q), nullptr);
    EXPECT_EQ(take_complaint(), "pm_cim_find_interface: the operation is 0, expected 1");
}

TEST_F(PortManager, NetworkAddressIsWrittenIfThereIsOne) {
    const auto port = info(platform_exact, gigabit);
    char text[256] = "before";
    EXPECT_EQ(pm_cim_get_network_address(text, port.get(), 2), 0);
    EXPECT_STREQ(text, "02:00:00:aa:bb:cc");
    the_switch().ports[gigabit].network_address.clear();
    char untouched[32] = "before";
    EXPECT_EQ(pm_cim_get_network_address(untouched, port.get(), 2), 0);
    EXPECT_STREQ(untouched, "before");
}

TEST_F(PortManager, NetworkAddressOfAnUnknownPortFails) {
    const PmPortInfo unknown{};
    char text[256] = "before";
    EXPECT_NE(pm_cim_get_network_address(text, &unknown, 2), 0);
    EXPECT_STREQ(text, "before");
}

TEST_F(PortManager, EthernetStatisticsFillTheWholeBuffer) {
    std::vector<std::uint8_t> counters(4096, 0xEE);
    ASSERT_EQ(pm_get_clear_eth_stats(mts_q, gigabit, gigabit, 1, counters.data()), 0);
    std::vector<std::uint8_t> expected(4096);
    expected[30] = 2300 >> 8;
    expected[31] = 2300 & 0xFF;
    EXPECT_EQ(counters, expected);
}

TEST_F(PortManager, EthernetStatisticsMayBeMissing) {
    std::vector<std::uint8_t> counters(4096, 0xEE);
    const auto before = counters;
    the_switch().ports[gigabit].eth_stats_mtu.reset();
    EXPECT_NE(pm_get_clear_eth_stats(mts_q, gigabit, gigabit, 1, counters.data()), 0);
    EXPECT_NE(pm_get_clear_eth_stats(mts_q, 77, 77, 1, counters.data()), 0);
    EXPECT_EQ(counters, before);
}

TEST_F(PortManager, EthernetStatisticsArgumentsAreChecked) {
    std::vector<std::uint8_t> counters(4096);
    EXPECT_NE(pm_get_clear_eth_stats(mts_q, 5, 6, 1, counters.data()), 0);
    EXPECT_EQ(take_complaint(), "pm_get_clear_eth_stats: the second interface index is 6, expected 5");
    EXPECT_NE(pm_get_clear_eth_stats(mts_q, 5, 5, 0, counters.data()), 0);
    EXPECT_EQ(take_complaint(), "pm_get_clear_eth_stats: the constant is 0, expected 1");
}

TEST_F(PortManager, PortCountersAreBigEndianAtTheirOffsets) {
    PmPortCounters* record = nullptr;
    ASSERT_EQ(pm_get_port_counters(mts_q, gigabit, 0, 6, &record), 0);
    const Owned<PmPortCounters> owned(record);
    const std::vector<std::uint8_t> tail(record->bytes + 259, record->bytes + 323);
    EXPECT_EQ(tail, (std::vector<std::uint8_t>{
                        0, 0, 0, 11, 0,    0,    0,    33, 0, 0, 0, 22, 0, 0, 0,    44, // multicast, broadcast; in, out
                        0, 0, 0, 1,  0x2A, 0x05, 0xF2, 0,  0, 0, 0, 0,  0, 1, 0x11, 0x70, // 5 * 10^9, 70000
                        0, 0, 0, 0,  0,    0,    0,    0,  0, 0, 0, 0,  0, 0, 0,    0,
                        0, 0, 0, 1,  0x65, 0xA0, 0xBC, 0,  0, 0, 0, 0,  0, 1, 0x38, 0x80})); // 6 * 10^9, 80000
}

TEST_F(PortManager, PortCountersMayBeMissing) {
    the_switch().ports[gigabit].counters.reset();
    PmPortCounters* record = nullptr;
    EXPECT_NE(pm_get_port_counters(mts_q, gigabit, 0, 6, &record), 0);
    EXPECT_NE(pm_get_port_counters(mts_q, 77, 0, 6, &record), 0);
    EXPECT_EQ(record, nullptr);
}

TEST_F(PortManager, PortCountersConstantsAreZeroAndSix) {
    PmPortCounters* record = nullptr;
    EXPECT_NE(pm_get_port_counters(mts_q, gigabit, 1, 6, &record), 0);
    EXPECT_EQ(take_complaint(), "pm_get_port_counters: the first constant is 1, expected 0");
    EXPECT_NE(pm_get_port_counters(mts_q, gigabit, 0, 5, &record), 0);
    EXPECT_EQ(take_complaint(), "pm_get_port_counters: the second constant is 5, expected 6");
}
