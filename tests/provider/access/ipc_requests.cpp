// The requests over the IPC service: every byte, the order of the calls, and what becomes of refused replies.
#include "provider/access/ipc.h"
#include "provider/access/statistics.h"
#include "tests/provider/access/ipc_test.h"

#include <algorithm>

namespace fcip {
namespace {

// ---------------------------------------------------------------------------------------------- the private steps

TEST_F(IpcStatistics, AwaitHoldsAGoodReplyForTheCaller) {
    reply(payload_of(12));
    mts_msg message{};
    EXPECT_EQ(ipc_await_reply(mts_q, &message, 99, 8), 0);
    EXPECT_EQ(the_fake.log, (calls{"recv q0 1 0 8 99 0 0 0 0 wait 8"}));
    EXPECT_EQ(mts_payload_size(&message), 12u);
}

TEST_F(IpcStatistics, AwaitReturnsTheReceiveCode) {
    fail_to_receive(-42);
    mts_msg message{};
    EXPECT_EQ(ipc_await_reply(mts_q, &message, 99, 5), -42);
    EXPECT_EQ(the_fake.log.size(), 1u) << "there is nothing to drop";
}

TEST_F(IpcStatistics, AwaitDropsARefusalAndReturnsItsStatus) {
    for (const std::uint16_t status : std::initializer_list<std::uint16_t>{1, 0x0100, 0xFFFF}) {
        the_fake = {};
        reply(payload_of(12, status));
        mts_msg message{};
        EXPECT_EQ(ipc_await_reply(mts_q, &message, 99, 5), status);
        EXPECT_EQ(the_fake.log.back(), drop_reply);
    }
}

TEST_F(IpcStatistics, AwaitDropsAReplyTooShortForAStatus) {
    for (const std::size_t size : sizes{0, 1, 10, 11}) {
        the_fake = {};
        reply(payload_of(size));
        mts_msg message{};
        EXPECT_EQ(ipc_await_reply(mts_q, &message, 99, 5), -1) << size;
        EXPECT_EQ(the_fake.log.back(), drop_reply) << size;
    }
}

TEST_F(IpcStatistics, RequestTakesTokenThenReplyThenDropsWhatWasSent) {
    reply(payload_of(12));
    mts_msg message{};
    const mts_addr destination{5, 6};
    EXPECT_EQ(ipc_request(fake_queue(1), destination, 70, "abc", 3, &message, 9), 0);
    EXPECT_EQ(the_fake.log, (calls{"send q1 0 0", token, "recv q1 1 0 9 28752 0 0 0 0 wait 9", "drop q1 request"}));
    ASSERT_EQ(the_fake.sent.size(), 1u);
    EXPECT_EQ(the_fake.sent[0].destination.node, 5u);
    EXPECT_EQ(the_fake.sent[0].destination.sap, 6u);
    EXPECT_EQ(the_fake.sent[0].opcode, 70u);
    EXPECT_EQ(the_fake.sent[0].payload, (bytes{'a', 'b', 'c'}));
}

TEST_F(IpcStatistics, RequestThatCannotBeSentIsMinusOne) {
    the_fake.send_code = 17;
    mts_msg message{};
    EXPECT_EQ(ipc_request(mts_q, {5, 6}, 70, "abc", 3, &message, 5), -1);
    EXPECT_EQ(the_fake.log, (calls{send_on_q0})) << "nothing was sent, so nothing is dropped";
}

TEST_F(IpcStatistics, RequestDropsWhatWasSentAlsoWithoutAReply) {
    fail_to_receive(-42);
    mts_msg message{};
    EXPECT_EQ(ipc_request(mts_q, {5, 6}, 70, "abc", 3, &message, 5), -42);
    EXPECT_EQ(the_fake.log, (calls{send_on_q0, token, receive_reply, drop_request}));
}

// ---------------------------------------------------------------------------------------------- the requests

/// One request was sent, to the statistics service of the interface's node.
void expect_one_request(std::uint32_t opcode, const bytes& payload) {
    ASSERT_EQ(the_fake.sent.size(), 1u);
    const sent_request& request = the_fake.sent[0];
    EXPECT_EQ(request.opcode, opcode);
    EXPECT_EQ(request.destination.node, 0x0102u);
    EXPECT_EQ(request.destination.sap, 943u);
    EXPECT_EQ(request.payload, payload);
}

TEST_F(IpcStatistics, TcpRequestByteForByte) {
    std::uint8_t record[tcp_record_size];
    printed_by([&] { get_tcp_stats(if_index, record); });
    expect_one_request(1920, bytes{0, 0, 0, 0, 0,    7,    0,    0,    0, 0, 0, 0, 0,    0,    0,    0,    0, 0, 0, 0,
                                   0, 0, 0, 0, 0x8A, 0x0B, 0x0C, 0x0D, 0, 1, 0, 0, 0x01, 0x02, 0x03, 0x04, 0, 0, 0, 0});
}

TEST_F(IpcStatistics, IpRequestByteForByte) {
    std::uint8_t* record = nullptr;
    printed_by([&] { get_ip_stats(fake_queue(1), if_index, 0x11223344, &record); });
    expect_one_request(1917, bytes{0, 0, 0, 0, 0, 7, 0, 0, 0,    0,    0,    0,    0,    0,    0,    0,
                                   0, 0, 0, 0, 0, 0, 0, 0, 0x8A, 0x0B, 0x0C, 0x0D, 0x11, 0x22, 0x33, 0x44});
}

TEST_F(IpcStatistics, EthernetRequestByteForByte) {
    std::uint8_t record[ethernet_record_size];
    printed_by([&] { get_ethernetport_statistics(if_index, record); });
    expect_one_request(1918, bytes{0, 0, 0, 0, 0, 7, 0, 0, 0,    0,    0,    0,    0, 0, 0, 0,
                                   0, 0, 0, 0, 0, 0, 0, 0, 0x8A, 0x0B, 0x0C, 0x0D, 0, 0, 0, 1});
}

/// Sends each of the three requests.
void send_all_requests() {
    std::uint8_t record[tcp_record_size];
    std::uint8_t* block = nullptr;
    printed_by([&] {
        get_tcp_stats(if_index, record);
        get_ip_stats(mts_q, if_index, 1, &block);
        get_ethernetport_statistics(if_index, record);
    });
    std::free(block);
}

/// Each of the three requests was sent, and asks for port 0xFFFF.
void expect_port_0xffff() {
    ASSERT_EQ(the_fake.sent.size(), 3u);
    for (const sent_request& request : the_fake.sent) {
        EXPECT_EQ(request.payload[4], 0xFF) << request.opcode;
        EXPECT_EQ(request.payload[5], 0xFF) << request.opcode;
    }
}

TEST_F(IpcStatistics, InterfaceWithoutSlotIsPort0xFFFFWithoutAPortQuery) {
    the_fake.slot = std::nullopt;
    send_all_requests();
    expect_port_0xffff();
    EXPECT_EQ(std::count(the_fake.log.begin(), the_fake.log.end(), "slot"), 3);
    EXPECT_EQ(std::count(the_fake.log.begin(), the_fake.log.end(), "port"), 0);
}

TEST_F(IpcStatistics, InterfaceWithoutPortNumberIsPort0xFFFF) {
    the_fake.port = std::nullopt;
    send_all_requests();
    expect_port_0xffff();
}

TEST_F(IpcStatistics, SlotIsAskedForBeforeThePort) {
    send_all_requests();
    const auto slot = std::find(the_fake.log.begin(), the_fake.log.end(), "slot");
    ASSERT_NE(slot, the_fake.log.end());
    EXPECT_EQ(*std::next(slot), "port");
}

TEST_F(IpcStatistics, InterfaceWithoutANodeIsAskedForAtNode0) {
    the_fake.node_code = -1;
    send_all_requests();
    ASSERT_EQ(the_fake.sent.size(), 3u);
    for (const sent_request& request : the_fake.sent) {
        EXPECT_EQ(request.destination.node, 0u) << request.opcode;
        EXPECT_EQ(request.destination.sap, 943u) << request.opcode;
    }
}

} // namespace
} // namespace fcip
