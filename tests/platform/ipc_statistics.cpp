// The statistics queries over the IPC service: every byte of every request, the order of the service's calls, and what
// becomes of good, refused, short and missing replies.
#include "common/memory.h"
#include "platform/ipc.h"
#include "platform/statistics.h"
#include "tests/platform/ipc_fake.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace fcip {
namespace {

using bytes = std::vector<std::uint8_t>;
using sizes = std::initializer_list<std::size_t>;

constexpr std::uint32_t if_index = 0x8A0B0C0D;

/// A payload of so many bytes with a status; its other bytes count up from 1.
bytes payload_of(std::size_t size, std::uint16_t status = 0) {
    bytes payload(size);
    for (std::size_t offset = 0; offset < size; ++offset)
        payload[offset] = static_cast<std::uint8_t>(offset % 251 + 1);
    if (size >= 12) {
        payload[10] = static_cast<std::uint8_t>(status >> 8);
        payload[11] = static_cast<std::uint8_t>(status);
    }
    return payload;
}

/// A further TCP reply whose 16-bit word at offset 36 says whether more follow.
bytes further(std::uint8_t high, std::uint8_t low) {
    bytes payload = payload_of(38);
    payload[36] = high;
    payload[37] = low;
    return payload;
}

class IpcStatistics : public testing::Test {
  protected:
    IpcStatistics() { the_fake = {}; }

    static void reply(bytes payload) { the_fake.replies.push_back({0, std::move(payload)}); }
    static void fail_to_receive(int code) { the_fake.replies.push_back({code, {}}); }

    /// The log without the calls that find the port number and the node.
    static std::vector<std::string> exchange() {
        std::vector<std::string> calls;
        for (const std::string& call : the_fake.log) {
            if (call != "slot" && call != "port" && !call.starts_with("node"))
                calls.push_back(call);
        }
        return calls;
    }
};

using calls = std::vector<std::string>;
const std::string send_on_q0 = "send q0 0 0";
const std::string receive_reply = "recv q0 1 0 5 28752 0 0 0 0 wait 5"; // 28752: the request's token
const std::string receive_any = "recv q0 1 0 5 0 0 0 0 0 wait 5";
const std::string token = "token of request";
const std::string drop_request = "drop q0 request";
const std::string drop_reply = "drop q0 reply";

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

TEST_F(IpcStatistics, TcpRequestByteForByte) {
    std::uint8_t record[tcp_record_size];
    printed_by([&] { get_tcp_stats(if_index, record); });
    ASSERT_EQ(the_fake.sent.size(), 1u);
    const sent_request& request = the_fake.sent[0];
    EXPECT_EQ(request.opcode, 1920u);
    EXPECT_EQ(request.destination.node, 0x0102u);
    EXPECT_EQ(request.destination.sap, 943u);
    EXPECT_EQ(request.payload,
              (bytes{0, 0, 0, 0, 0,    7,    0,    0,    0, 0, 0, 0, 0,    0,    0,    0,    0, 0, 0, 0,
                     0, 0, 0, 0, 0x8A, 0x0B, 0x0C, 0x0D, 0, 1, 0, 0, 0x01, 0x02, 0x03, 0x04, 0, 0, 0, 0}));
}

TEST_F(IpcStatistics, IpRequestByteForByte) {
    std::uint8_t* record = nullptr;
    printed_by([&] { get_ip_stats(fake_queue(1), if_index, 0x11223344, &record); });
    ASSERT_EQ(the_fake.sent.size(), 1u);
    const sent_request& request = the_fake.sent[0];
    EXPECT_EQ(request.opcode, 1917u);
    EXPECT_EQ(request.destination.node, 0x0102u);
    EXPECT_EQ(request.destination.sap, 943u);
    EXPECT_EQ(request.payload, (bytes{0, 0, 0, 0, 0, 7, 0, 0, 0,    0,    0,    0,    0,    0,    0,    0,
                                      0, 0, 0, 0, 0, 0, 0, 0, 0x8A, 0x0B, 0x0C, 0x0D, 0x11, 0x22, 0x33, 0x44}));
}

TEST_F(IpcStatistics, EthernetRequestByteForByte) {
    std::uint8_t record[ethernet_record_size];
    printed_by([&] { get_ethernetport_statistics(if_index, record); });
    ASSERT_EQ(the_fake.sent.size(), 1u);
    const sent_request& request = the_fake.sent[0];
    EXPECT_EQ(request.opcode, 1918u);
    EXPECT_EQ(request.destination.node, 0x0102u);
    EXPECT_EQ(request.destination.sap, 943u);
    EXPECT_EQ(request.payload, (bytes{0, 0, 0, 0, 0, 7, 0, 0, 0,    0,    0,    0,    0, 0, 0, 0,
                                      0, 0, 0, 0, 0, 0, 0, 0, 0x8A, 0x0B, 0x0C, 0x0D, 0, 0, 0, 1}));
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

TEST_F(IpcStatistics, InterfaceWithoutSlotIsAskedForWithPort0xFFFFAndNoPortQuery) {
    the_fake.slot = std::nullopt;
    send_all_requests();
    ASSERT_EQ(the_fake.sent.size(), 3u);
    for (const sent_request& request : the_fake.sent) {
        EXPECT_EQ(request.payload[4], 0xFF) << request.opcode;
        EXPECT_EQ(request.payload[5], 0xFF) << request.opcode;
    }
    EXPECT_EQ(std::count(the_fake.log.begin(), the_fake.log.end(), "slot"), 3);
    EXPECT_EQ(std::count(the_fake.log.begin(), the_fake.log.end(), "port"), 0);
}

TEST_F(IpcStatistics, InterfaceWithoutPortNumberIsAskedForWithPort0xFFFF) {
    the_fake.port = std::nullopt;
    send_all_requests();
    ASSERT_EQ(the_fake.sent.size(), 3u);
    for (const sent_request& request : the_fake.sent) {
        EXPECT_EQ(request.payload[4], 0xFF) << request.opcode;
        EXPECT_EQ(request.payload[5], 0xFF) << request.opcode;
    }
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

// ---------------------------------------------------------------------------------------------- TCP

class TcpStatistics : public IpcStatistics {
  protected:
    TcpStatistics() { std::fill(std::begin(record_), std::end(record_), 0xEE); }

    /// Calls get_tcp_stats; the answer goes to status_, what it prints is returned.
    std::string get() {
        return printed_by([this] { status_ = get_tcp_stats(12, record_); });
    }
    bytes record() const { return {std::begin(record_), std::end(record_)}; }

    std::uint8_t record_[tcp_record_size];
    int status_ = 99;
};

TEST_F(TcpStatistics, TwoFurtherRepliesTheLastWith0Return0AfterThreeReceives) {
    reply(payload_of(1352));
    reply(further(0, 1));
    reply(further(0, 0));
    EXPECT_EQ(get(), "Entering get_tcp_stats\n\ntol : if_index 12\nExiting get_tcp_stats\n");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(record(), payload_of(1352));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply, receive_any, drop_reply,
                                 receive_any, drop_reply}));
}

TEST_F(TcpStatistics, FieldOfMoreRepliesIsSixteenBitsWide) {
    reply(payload_of(1352));
    reply(further(0x80, 0)); // negative
    reply(further(0x01, 0));
    reply(further(0, 0));
    reply(further(0, 0));
    get();
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(the_fake.replies.size(), 1u) << "the reply behind the last one is left alone";
}

TEST_F(TcpStatistics, MissingFieldOfMoreRepliesReads0) {
    for (const std::size_t size : sizes{12, 36, 37}) {
        the_fake = {};
        reply(payload_of(1352));
        reply(payload_of(size));
        get();
        EXPECT_EQ(status_, 0) << size;
        EXPECT_EQ(the_fake.log.back(), drop_reply) << size;
    }
}

TEST_F(TcpStatistics, NoFurtherReplyIsAFailureWithTheRecordFilled) {
    reply(payload_of(1352));
    EXPECT_EQ(get(), "Entering get_tcp_stats\n\ntol : if_index 12\n");
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(record(), payload_of(1352));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply, receive_any}));
}

TEST_F(TcpStatistics, RefusedFurtherReplyIsAFailureAndDropped) {
    reply(payload_of(1352));
    reply(further(0, 1));
    reply(payload_of(38, 5));
    get();
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply, receive_any, drop_reply,
                                 receive_any, drop_reply}));
}

TEST_F(TcpStatistics, FurtherReplyWithoutAStatusIsAFailureAndDropped) {
    reply(payload_of(1352));
    reply(payload_of(4));
    get();
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(the_fake.log.back(), drop_reply);
}

TEST_F(TcpStatistics, LongReplyIsCutToTheRecord) {
    reply(payload_of(2000));
    reply(further(0, 0));
    get();
    EXPECT_EQ(status_, 0);
    bytes expected = payload_of(2000);
    expected.resize(1352);
    EXPECT_EQ(record(), expected);
}

TEST_F(TcpStatistics, ShortReplyIsCopiedAsFarAsItGoesAndTheRestIsZero) {
    for (const std::size_t size : sizes{12, 700, 1351}) {
        the_fake = {};
        std::fill(std::begin(record_), std::end(record_), 0xEE);
        reply(payload_of(size));
        reply(further(0, 0));
        get();
        EXPECT_EQ(status_, 0) << size;
        bytes expected = payload_of(size);
        expected.resize(1352);
        EXPECT_EQ(record(), expected) << size;
    }
}

/// How a first exchange fails, for each of the three queries.
struct failure {
    const char* name;
    int send_code;
    std::vector<scripted_reply> replies;
    int ip_status; ///< what get_ip_stats answers
    calls expected;
};

const failure failures[] = {
    {"send", 3, {}, -1, {send_on_q0}},
    {"receive", 0, {{-42, {}}}, -42, {send_on_q0, token, receive_reply, drop_request}},
    {"status",
     0,
     {{0, payload_of(1352, 0x0102)}},
     0x0102,
     {send_on_q0, token, receive_reply, drop_reply, drop_request}},
    {"short", 0, {{0, payload_of(11)}}, -1, {send_on_q0, token, receive_reply, drop_reply, drop_request}},
};

void arm(const failure& one) {
    the_fake = {};
    the_fake.send_code = one.send_code;
    the_fake.replies.assign(one.replies.begin(), one.replies.end());
}

TEST_F(TcpStatistics, EveryFailureOfTheFirstExchangeIsMinusOneWithTheRecordUntouched) {
    for (const failure& one : failures) {
        SCOPED_TRACE(one.name);
        arm(one);
        EXPECT_EQ(get(), "Entering get_tcp_stats\n\ntol : if_index 12\n");
        EXPECT_EQ(status_, -1);
        EXPECT_EQ(record(), bytes(1352, 0xEE));
        EXPECT_EQ(exchange(), one.expected);
    }
}

TEST_F(TcpStatistics, InterfaceIndexIsPrintedSigned) {
    EXPECT_EQ(printed_by([this] { get_tcp_stats(0x82FFFFFF, record_); }),
              "Entering get_tcp_stats\n\ntol : if_index -2097152001\n");
}

// ---------------------------------------------------------------------------------------------- IP

class IpStatistics : public IpcStatistics {
  protected:
    /// Calls get_ip_stats with a reply pointer that is not null; the answers go to status_ and record_.
    std::string get(std::uint32_t flag) {
        std::uint8_t stale = 0;
        std::uint8_t* block = &stale;
        std::string text = printed_by([&] { status_ = get_ip_stats(mts_q, 12, flag, &block); });
        record_.reset(block);
        return text;
    }
    bytes record(std::size_t size) const { return {record_.get(), record_.get() + size}; }

    platform_ptr<std::uint8_t> record_;
    int status_ = 99;
};

TEST_F(IpStatistics, ReplyIsHandedOutWholeAndDropped) {
    reply(payload_of(172));
    EXPECT_EQ(get(1), "\n inside get_ip_stats\n ");
    EXPECT_EQ(status_, 0);
    ASSERT_NE(record_, nullptr);
    EXPECT_EQ(record(172), payload_of(172));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply}));
}

TEST_F(IpStatistics, LongReplyIsHandedOutWhole) {
    reply(payload_of(500));
    get(1);
    ASSERT_NE(record_, nullptr);
    EXPECT_EQ(record(500), payload_of(500));
}

TEST_F(IpStatistics, BlockOfAShortReplyIsZeroUpTo172Bytes) {
    for (const std::size_t size : sizes{12, 32, 100, 171}) {
        the_fake = {};
        reply(payload_of(size));
        get(1);
        EXPECT_EQ(status_, 0) << size;
        ASSERT_NE(record_, nullptr) << size;
        bytes expected = payload_of(size);
        expected.resize(172);
        EXPECT_EQ(record(172), expected) << size;
    }
}

TEST_F(IpStatistics, Flag0ReturnsTheStatusLeavesTheReplyPointerNullAndDropsTheReply) {
    reply(payload_of(172));
    EXPECT_EQ(get(0), "\n inside get_ip_stats\n ");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(record_, nullptr);
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply}));
    the_fake = {};
    reply(payload_of(172, 9));
    get(0);
    EXPECT_EQ(status_, 9);
    EXPECT_EQ(record_, nullptr);
}

TEST_F(IpStatistics, EveryFailureIsReturnedWithANullReplyPointer) {
    for (const failure& one : failures) {
        SCOPED_TRACE(one.name);
        arm(one);
        EXPECT_EQ(get(1), "\n inside get_ip_stats\n ");
        EXPECT_EQ(status_, one.ip_status);
        EXPECT_EQ(record_, nullptr);
        EXPECT_EQ(exchange(), one.expected);
    }
}

TEST_F(IpStatistics, QueueOfTheCallerIsUsedThroughout) {
    reply(payload_of(172));
    std::uint8_t* block = nullptr;
    printed_by([&] { get_ip_stats(fake_queue(2), 12, 1, &block); });
    std::free(block);
    EXPECT_EQ(exchange(),
              (calls{"send q2 0 0", token, "recv q2 1 0 5 28752 0 0 0 0 wait 5", "drop q2 request", "drop q2 reply"}));
}

// ---------------------------------------------------------------------------------------------- Ethernet

class EthernetStatistics : public IpcStatistics {
  protected:
    EthernetStatistics() { std::fill(std::begin(record_), std::end(record_), 0xEE); }

    std::string get() {
        return printed_by([this] { status_ = get_ethernetport_statistics(12, record_); });
    }
    bytes record() const { return {std::begin(record_), std::end(record_)}; }

    std::uint8_t record_[ethernet_record_size];
    int status_ = 99;
};

TEST_F(EthernetStatistics, FirstReplyFillsTheRecordAndNoneIsDrained) {
    reply(payload_of(256));
    reply(payload_of(256));
    EXPECT_EQ(get(), "Entering get_ethernetport_statistics\n\ntol : if_index 12\n"
                     "Exiting get_ethernetport_statistics\n");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(record(), payload_of(256));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply}));
}

TEST_F(EthernetStatistics, ReplyIsCutOrFilledWithZerosToTheRecord) {
    for (const std::size_t size : sizes{12, 255, 257, 1000}) {
        the_fake = {};
        std::fill(std::begin(record_), std::end(record_), 0xEE);
        reply(payload_of(size));
        get();
        EXPECT_EQ(status_, 0) << size;
        bytes expected = payload_of(size);
        expected.resize(256);
        EXPECT_EQ(record(), expected) << size;
    }
}

TEST_F(EthernetStatistics, EveryFailureIsPrintedWithoutALineEndAndLeavesTheRecord) {
    for (const failure& one : failures) {
        SCOPED_TRACE(one.name);
        arm(one);
        EXPECT_EQ(get(), "Entering get_ethernetport_statistics\n\ntol : if_index 12\n"
                         "Failed retrieval of mac stats information from linecard");
        EXPECT_EQ(status_, -1);
        EXPECT_EQ(record(), bytes(256, 0xEE));
        EXPECT_EQ(exchange(), one.expected);
    }
}

// ---------------------------------------------------------------------------------------------- IP configuration

class IpConfiguration : public IpcStatistics {
  protected:
    ip_configuration configuration_{7, 8, {9, 10, 11}};

    void expect_untouched() const {
        EXPECT_EQ(configuration_.forwarding, 7u);
        EXPECT_EQ(configuration_.default_ttl, 8);
        EXPECT_EQ(configuration_.unused[2], 11);
    }
};

TEST_F(IpConfiguration, ReplyIsBigEndian) {
    the_fake.configuration = bytes{0x00, 0x01, 0x02, 0x03, 0x40, 0x50, 0x60, 0x70};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 0x00010203u);
    EXPECT_EQ(configuration_.default_ttl, 0x40);
    EXPECT_EQ(configuration_.unused[0], 0x50);
    EXPECT_EQ(configuration_.unused[1], 0x60);
    EXPECT_EQ(configuration_.unused[2], 0x70);
    EXPECT_EQ(the_fake.log, (calls{"configuration 873 1 0 length 8 0 0 35 q0 wait 5"}));
}

TEST_F(IpConfiguration, ShortReplyIsFilledWithZeros) {
    the_fake.configuration = bytes{0, 0, 0, 1};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 1u);
    EXPECT_EQ(configuration_.default_ttl, 0);
    EXPECT_EQ(configuration_.unused[2], 0);
    the_fake.configuration = bytes{};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 0u);
}

TEST_F(IpConfiguration, LongReplyIsCut) {
    the_fake.configuration = bytes{0, 0, 0, 2, 64, 0, 0, 0, 1, 2, 3, 4, 5, 6};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 2u);
    EXPECT_EQ(configuration_.default_ttl, 64);
}

TEST_F(IpConfiguration, FailureThatLeavesAReplyIsMinusOneAndTheReplyIsFreed) {
    the_fake.configuration = bytes{0, 0, 0, 2, 64, 0, 0, 0};
    the_fake.configuration_code = 4;
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), -1);
    expect_untouched();
}

TEST_F(IpConfiguration, SuccessWithoutAReplyIsMinusOne) {
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), -1);
    expect_untouched();
}

} // namespace
} // namespace fcip
