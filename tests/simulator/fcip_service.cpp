#include "tests/simulator/simulator_test.h"

using FcipService = SimulatorTest;
using switchsim::the_switch;

namespace {

Owned<FcipEntityEntry> entity(int operation, std::uint32_t id, int constant = 5) {
    FcipEntityEntry* row = nullptr;
    const int result = fcip_get_entity_entry(mts_q, operation, id, &row, constant);
    EXPECT_EQ(result == 0, row != nullptr);
    return Owned<FcipEntityEntry>(row);
}

Owned<FcipLinkEntry> link(int operation, std::uint32_t id, std::uint32_t index) {
    const std::uint32_t key[2] = {id, index};
    FcipLinkEntry* row = nullptr;
    const int result = fcip_get_link_entry(mts_q, operation, key, &row, 30, 1);
    EXPECT_EQ(result == 0, row != nullptr);
    return Owned<FcipLinkEntry>(row);
}

void add_profile(std::uint32_t id) {
    the_switch().profiles[id].entity_id = id;
}

void add_link(std::uint32_t id, std::uint32_t index, std::uint32_t if_index) {
    FcipLinkEntry& row = the_switch().links[{id, index}];
    row.entity_id = id;
    row.link_index = index;
    row.link_if_index = if_index;
}

struct ListReply {
    int result = 0;
    std::vector<std::uint32_t> words;
    bool set = false;
    std::uint32_t length = 0;
};

ListReply ask_interface_list(std::uint32_t id) {
    const mts_addr destination{0xFE000000, 60};
    char scratch[256];
    void* reply = nullptr;
    ListReply got;
    got.result = fcip_send_recv_with_mts_q(8946, &destination, &id, sizeof id, mts_q, &reply, &got.length, scratch);
    const Owned<void> owned(reply);
    got.set = reply != nullptr;
    got.words.resize(got.length / 4);
    if (reply != nullptr && !got.words.empty())
        std::memcpy(got.words.data(), reply, got.words.size() * 4);
    return got;
}

} // namespace

TEST_F(FcipService, EntityExactGivesTheRowWithThatId) {
    const auto row = entity(platform_exact, 1);
    ASSERT_TRUE(row);
    EXPECT_EQ(std::memcmp(row.get(), &the_switch().profiles.at(1), sizeof *row), 0);
    EXPECT_EQ(row->listen_port, 3225U);
    EXPECT_FALSE(entity(platform_exact, 2));
}

TEST_F(FcipService, EntityConstantIsFiveOrThirty) {
    EXPECT_TRUE(entity(platform_exact, 1, 30));
    EXPECT_FALSE(entity(platform_exact, 1, 6));
    EXPECT_EQ(take_complaint(), "fcip_get_entity_entry: the constant is 6, expected 5 or 30");
}

TEST_F(FcipService, EntityNextWalksInUnsignedOrder) {
    for (const std::uint32_t id : {0xFFFFFFFFU, 0x80000000U, 7U})
        add_profile(id);
    std::vector<std::uint32_t> ids;
    std::uint32_t key = 0;
    while (const auto row = entity(platform_next, key))
        ids.push_back(key = row->entity_id);
    EXPECT_EQ(ids, (std::vector<std::uint32_t>{1, 7, 0x80000000, 0xFFFFFFFF}));
}

TEST_F(FcipService, EntityNextOfAnEmptyTableFails) {
    the_switch().profiles.clear();
    EXPECT_FALSE(entity(platform_next, 0));
}

TEST_F(FcipService, EntityOperationIsExactOrNext) {
    EXPECT_FALSE(entity(0, 1));
    EXPECT_EQ(take_complaint(), "fcip_get_entity_entry: the operation is 0, expected 1 or 2");
}

TEST_F(FcipService, EntityRecordPointerMustBeNullBefore) {
    FcipEntityEntry stale{};
    FcipEntityEntry* row = &stale;
    EXPECT_NE(fcip_get_entity_entry(mts_q, platform_exact, 1, &row, 5), 0);
    EXPECT_EQ(row, &stale);
    EXPECT_EQ(take_complaint(), "fcip_get_entity_entry: the record pointer set before is 1, expected 0");
}

TEST_F(FcipService, EntityQueueMustBeTheOpenOne) {
    FcipEntityEntry* row = nullptr;
    EXPECT_NE(fcip_get_entity_entry(nullptr, platform_exact, 1, &row, 5), 0);
    EXPECT_EQ(take_complaint(), "fcip_get_entity_entry: the queue is not the one that init_mts() opened");
}

TEST_F(FcipService, LinkExactNeedsBothKeyWords) {
    const auto row = link(platform_exact, 1, 0);
    ASSERT_TRUE(row);
    EXPECT_EQ(std::memcmp(row.get(), &the_switch().links.at({1, 0}), sizeof *row), 0);
    EXPECT_FALSE(link(platform_exact, 1, 1));
    EXPECT_FALSE(link(platform_exact, 2, 0));
}

TEST_F(FcipService, LinkNextIsOrderedByEntityThenIndex) {
    add_link(2, 0, 102);
    add_link(1, 0x80000000, 101);
    add_link(0x80000000, 3, 103);
    std::vector<std::pair<std::uint32_t, std::uint32_t>> keys;
    std::pair<std::uint32_t, std::uint32_t> key{0, 0};
    while (const auto row = link(platform_next, key.first, key.second))
        keys.push_back(key = {row->entity_id, row->link_index});
    EXPECT_EQ(keys,
              (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{1, 0}, {1, 0x80000000}, {2, 0}, {0x80000000, 3}}));
}

TEST_F(FcipService, LinkConstantsAreThirtyAndOne) {
    const std::uint32_t key[2] = {1, 0};
    FcipLinkEntry* row = nullptr;
    EXPECT_NE(fcip_get_link_entry(mts_q, platform_exact, key, &row, 31, 1), 0);
    EXPECT_EQ(take_complaint(), "fcip_get_link_entry: the first constant is 31, expected 30");
    EXPECT_NE(fcip_get_link_entry(mts_q, platform_exact, key, &row, 30, 0), 0);
    EXPECT_EQ(take_complaint(), "fcip_get_link_entry: the second constant is 0, expected 1");
    EXPECT_EQ(row, nullptr);
}

TEST_F(FcipService, ConnectionIsFoundByAllFourKeyParts) {
    for (const auto& [key, found] : std::vector<std::pair<FcipTcpConnKey, bool>>{{{1, 0, 3225, 3225}, true},
                                                                                 {{2, 0, 3225, 3225}, false},
                                                                                 {{1, 1, 3225, 3225}, false},
                                                                                 {{1, 0, 3226, 3225}, false},
                                                                                 {{1, 0, 3225, 3226}, false}}) {
        FcipTcpConnEntry* row = nullptr;
        EXPECT_EQ(fcip_get_tcpconn_entry(mts_q, platform_exact, &key, &row, 15) == 0, found);
        const Owned<FcipTcpConnEntry> owned(row);
        EXPECT_EQ(row != nullptr, found);
        if (row) {
            EXPECT_EQ(row->purpose, 1U);
            EXPECT_EQ(row->receiver_window_size, 65535U);
        }
    }
}

TEST_F(FcipService, ConnectionIsReadExactlyAndWithFifteen) {
    const FcipTcpConnKey key{1, 0, 3225, 3225};
    FcipTcpConnEntry* row = nullptr;
    EXPECT_NE(fcip_get_tcpconn_entry(mts_q, platform_next, &key, &row, 15), 0);
    EXPECT_EQ(take_complaint(), "fcip_get_tcpconn_entry: the operation is 2, expected 1");
    EXPECT_NE(fcip_get_tcpconn_entry(mts_q, platform_exact, &key, &row, 5), 0);
    EXPECT_EQ(take_complaint(), "fcip_get_tcpconn_entry: the constant is 5, expected 15");
}

TEST_F(FcipService, LinkErrorsAreBigEndianCounters) {
    const std::uint32_t key[2] = {1, 0};
    FcipLinkErrors* record = nullptr;
    ASSERT_EQ(fcip_snmp_get_link_errors(mts_q, platform_exact, key, &record, 10), 0);
    const Owned<FcipLinkErrors> owned(record);
    FcipLinkErrors expected{};
    expected.bytes[15] = 1;
    EXPECT_EQ(std::memcmp(record, &expected, sizeof expected), 0);
}

TEST_F(FcipService, LinkErrorsOfAnotherLinkFail) {
    const std::uint32_t key[2] = {1, 1};
    FcipLinkErrors* record = nullptr;
    EXPECT_NE(fcip_snmp_get_link_errors(mts_q, platform_exact, key, &record, 10), 0);
    EXPECT_EQ(record, nullptr);
}

TEST_F(FcipService, LinkErrorsAreReadExactlyAndWithTen) {
    const std::uint32_t key[2] = {1, 0};
    FcipLinkErrors* record = nullptr;
    EXPECT_NE(fcip_snmp_get_link_errors(mts_q, platform_next, key, &record, 10), 0);
    EXPECT_EQ(take_complaint(), "fcip_snmp_get_link_errors: the operation is 2, expected 1");
    EXPECT_NE(fcip_snmp_get_link_errors(mts_q, platform_exact, key, &record, 15), 0);
    EXPECT_EQ(take_complaint(), "fcip_snmp_get_link_errors: the constant is 15, expected 10");
}

TEST_F(FcipService, InterfaceListNamesTheProfilesInterfaces) {
    add_profile(2);
    add_link(1, 4, 0x0A000004);
    add_link(2, 1, 0x0A000001);
    const auto got = ask_interface_list(1);
    EXPECT_EQ(got.result, 0);
    EXPECT_EQ(got.length, 12U);
    EXPECT_EQ(got.words, (std::vector<std::uint32_t>{2, fcip1, 0x0A000004}));
}

TEST_F(FcipService, InterfaceListOfAnUnusedProfileIsEmpty) {
    add_profile(2);
    const auto got = ask_interface_list(2);
    EXPECT_EQ(got.result, 0);
    EXPECT_EQ(got.words, std::vector<std::uint32_t>{0});
}

TEST_F(FcipService, InterfaceListOfNoProfileFails) {
    const auto got = ask_interface_list(9);
    EXPECT_NE(got.result, 0);
    EXPECT_FALSE(got.set);
}

TEST_F(FcipService, InterfaceListRepliesCanBeShortOrMissing) {
    switchsim::inject("fcip_send_recv_with_mts_q", switchsim::Fault::short_reply, 1, 3);
    EXPECT_EQ(ask_interface_list(1).length, 3U);
    switchsim::inject("fcip_send_recv_with_mts_q", switchsim::Fault::no_reply, 1);
    const auto got = ask_interface_list(1);
    EXPECT_NE(got.result, 0);
    EXPECT_FALSE(got.set);
}

TEST_F(FcipService, InterfaceListRequestIsChecked) {
    const std::uint32_t id = 1;
    const mts_addr good{0xFE000000, 60};
    const mts_addr other_node{0xFE000001, 60};
    const mts_addr other_point{0xFE000000, 61};
    char scratch[256];
    void* reply = nullptr;
    std::uint32_t length = 0;
    EXPECT_NE(fcip_send_recv_with_mts_q(8947, &good, &id, 4, mts_q, &reply, &length, scratch), 0);
    EXPECT_EQ(take_complaint(), "fcip_send_recv_with_mts_q: the opcode is 8947, expected 8946");
    EXPECT_NE(fcip_send_recv_with_mts_q(8946, &other_node, &id, 4, mts_q, &reply, &length, scratch), 0);
    EXPECT_EQ(take_complaint(), "fcip_send_recv_with_mts_q: the destination's node is 4261412865, expected 4261412864");
    EXPECT_NE(fcip_send_recv_with_mts_q(8946, &other_point, &id, 4, mts_q, &reply, &length, scratch), 0);
    EXPECT_EQ(take_complaint(), "fcip_send_recv_with_mts_q: the destination's access point is 61, expected 60");
    EXPECT_NE(fcip_send_recv_with_mts_q(8946, &good, &id, 8, mts_q, &reply, &length, scratch), 0);
    EXPECT_EQ(take_complaint(), "fcip_send_recv_with_mts_q: the payload length is 8, expected 4");
    EXPECT_EQ(reply, nullptr);
}

TEST_F(FcipService, InterfaceTextIsTheDisplayName) {
    char text[256];
    EXPECT_EQ(fcip_if_str(gigabit, text), text);
    EXPECT_STREQ(text, "GigabitEthernet1/1");
    EXPECT_STREQ(fcip_if_str(0x1234, text), "interface 0x00001234");
    the_switch().ports[gigabit].name = std::string(300, 'x');
    EXPECT_EQ(fcip_if_str(gigabit, text), std::string(255, 'x'));
}
