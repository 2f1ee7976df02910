#include "tests/simulator/simulator_test.h"

using Ipc = SimulatorTest;
using switchsim::Fault;
using switchsim::the_switch;
using Bytes = std::vector<std::uint8_t>;

namespace {

constexpr std::uint32_t tcp = 1920;
constexpr std::uint32_t ip = 1917;
constexpr std::uint32_t mac = 1918;
constexpr int wait_limit = 5;

void put(Bytes& bytes, std::size_t offset, std::initializer_list<int> values) {
    for (const int value : values)
        bytes.at(offset++) = static_cast<std::uint8_t>(value);
}

/// A well-formed request for the one Ethernet port.
Bytes request(std::uint32_t opcode) {
    Bytes bytes(opcode == tcp ? 40 : 32);
    put(bytes, 4, {0, 1});
    put(bytes, 24, {0x83, 0x01, 0x00, 0x01});
    if (opcode == tcp) {
        const std::uint32_t sap = mts_sap_get(mts_q);
        put(bytes, 28, {0, 1});
        put(bytes, 32,
            {static_cast<int>(sap >> 24), static_cast<int>(sap >> 16 & 0xFF), static_cast<int>(sap >> 8 & 0xFF),
             static_cast<int>(sap & 0xFF)});
    } else {
        put(bytes, 28, {0, 0, 0, 1});
    }
    return bytes;
}

/// Sends a request to slot 1's card and drops the description; gives the token, 0 if it could not be sent.
std::uint32_t send(std::uint32_t opcode, const Bytes& payload, std::uint32_t node = switchsim::node_of_slot(1)) {
    const mts_addr destination{node, 943};
    mts_msg sent{};
    if (mts_send(mts_q, &destination, opcode, payload.data(), static_cast<std::uint32_t>(payload.size()), &sent, 0,
                 0) != 0)
        return 0;
    const std::uint32_t token = mts_rr_token_get(&sent);
    mts_drop(mts_q, &sent);
    return token;
}

/// Receives a message with this token, and gives its payload; none if nothing came.
std::optional<Bytes> receive(std::uint32_t token) {
    const mts_recv_options options{{1, 0, wait_limit, token, 0, 0, 0, 0}};
    mts_msg received{};
    if (mts_recv(mts_q, &received, &options, wait_limit) != 0)
        return std::nullopt;
    const auto* bytes = static_cast<const std::uint8_t*>(mts_payload_get(&received));
    Bytes payload(bytes, bytes + mts_payload_size(&received));
    mts_drop(mts_q, &received);
    return payload;
}

int status_of(const std::optional<Bytes>& payload) {
    return payload && payload->size() >= 12 ? payload->at(10) << 8 | payload->at(11) : -1;
}

Bytes numbered(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 7 + 1);
    return bytes;
}

/// The same with the status of success.
Bytes with_status_0(Bytes bytes) {
    bytes[10] = bytes[11] = 0;
    return bytes;
}

Bytes continuation(int more) {
    Bytes bytes = with_status_0(numbered(38));
    put(bytes, 36, {more >> 8 & 0xFF, more & 0xFF});
    return bytes;
}

} // namespace

// ---------------------------------------------------------------------------------------------- requests and replies

TEST_F(Ipc, EachRequestGetsItsStatistics) {
    auto& port = the_switch().ports[gigabit];
    port.mac_statistics = numbered(256);
    port.ip_statistics = numbered(172);
    port.tcp_statistics = {numbered(1352)};
    EXPECT_EQ(receive(send(mac, request(mac))), with_status_0(numbered(256)));
    EXPECT_EQ(receive(send(ip, request(ip))), with_status_0(numbered(172)));
    EXPECT_EQ(receive(send(tcp, request(tcp))), with_status_0(numbered(1352)));
}

TEST_F(Ipc, SentRequestCanBeLookedAt) {
    EXPECT_EQ(switchsim::last_request().opcode, 0U);
    receive(send(tcp, request(tcp)));
    EXPECT_EQ(switchsim::last_request().opcode, tcp);
    EXPECT_EQ(switchsim::last_request().destination.node, switchsim::node_of_slot(1));
    EXPECT_EQ(switchsim::last_request().destination.sap, 943U);
    EXPECT_EQ(switchsim::last_request().payload, request(tcp));
}

TEST_F(Ipc, SentMessageHoldsTheRequest) {
    const mts_addr destination{switchsim::node_of_slot(1), 943};
    const Bytes payload = request(ip);
    mts_msg sent{};
    ASSERT_EQ(mts_send(mts_q, &destination, ip, payload.data(), 32, &sent, 0, 0), 0);
    EXPECT_EQ(mts_payload_size(&sent), 32U);
    EXPECT_EQ(std::memcmp(mts_payload_get(&sent), payload.data(), 32), 0);
    EXPECT_EQ(switchsim::undropped_messages(), 1U);
    mts_drop(mts_q, &sent);
    EXPECT_EQ(switchsim::undropped_messages(), 0U);
}

TEST_F(Ipc, TokensDiffer) {
    const auto first = send(ip, request(ip));
    const auto second = send(ip, request(ip));
    EXPECT_NE(first, 0U);
    EXPECT_NE(first, second);
    EXPECT_FALSE(receive(first));
    EXPECT_TRUE(receive(second));
}

TEST_F(Ipc, UnknownPortNumberIsServed) {
    Bytes payload = request(mac);
    put(payload, 4, {0xFF, 0xFF});
    EXPECT_EQ(status_of(receive(send(mac, payload))), 0);
}

TEST_F(Ipc, IpRequestFlagMayBeAnything) {
    Bytes payload = request(ip);
    put(payload, 28, {0, 0, 0, 0});
    EXPECT_EQ(status_of(receive(send(ip, payload))), 0);
}

TEST_F(Ipc, AccessPointIsTheOneThatTcpRequestsBear) {
    EXPECT_NE(mts_sap_get(mts_q), 0U);
    EXPECT_EQ(mts_sap_get(nullptr), 0U);
    EXPECT_EQ(take_complaint(), "mts_sap_get: the queue is not the one that init_mts() opened");
}

// ---------------------------------------------------------------------------------------------- continuations

TEST_F(Ipc, ContinuationsFollowForTokenZero) {
    the_switch().ports[gigabit].tcp_statistics = {numbered(1352), continuation(1), continuation(0)};
    const auto token = send(tcp, request(tcp));
    EXPECT_EQ(receive(token), with_status_0(numbered(1352)));
    EXPECT_EQ(receive(0), continuation(1));
    EXPECT_EQ(receive(0), continuation(0));
    EXPECT_FALSE(receive(0));
}

TEST_F(Ipc, UnreceivedContinuationsDoNotReachTheNextExchange) {
    the_switch().ports[gigabit].tcp_statistics = {numbered(1352), continuation(1), continuation(0)};
    receive(send(tcp, request(tcp)));
    const auto token = send(ip, request(ip));
    const auto reply = receive(0);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->size(), 172U);
    EXPECT_FALSE(receive(token));
}

// ---------------------------------------------------------------------------------------------- time-outs

TEST_F(Ipc, SlotsWithoutACardDoNotAnswer) {
    EXPECT_FALSE(receive(send(mac, request(mac), switchsim::node_of_slot(2))));
    EXPECT_FALSE(receive(send(mac, request(mac), 0)));
    the_switch().slots.clear();
    EXPECT_FALSE(receive(send(mac, request(mac))));
}

TEST_F(Ipc, PortsWithoutStatisticsDoNotAnswer) {
    auto& port = the_switch().ports[gigabit];
    port.mac_statistics.clear();
    port.ip_statistics.clear();
    port.tcp_statistics.clear();
    for (const std::uint32_t opcode : {mac, ip, tcp})
        EXPECT_FALSE(receive(send(opcode, request(opcode))));
}

TEST_F(Ipc, NothingSentNothingReceived) {
    EXPECT_FALSE(receive(0));
}

// ---------------------------------------------------------------------------------------------- refused requests

struct BadRequest {
    const char* name;
    std::uint32_t opcode;
    std::size_t length;
    std::size_t offset;
    std::initializer_list<int> bytes;
    int status;
    const char* complaint;
};

TEST_F(Ipc, MalformedRequestsAreRefusedAndComplainedAbout) {
    const char* wrong_field = "wrong constant at offset 28 or wrong access point at offset 32";
    const BadRequest rows[] = {
        {"unknown opcode", 1919, 32, 0, {}, 1, "unknown opcode"},
        {"TCP request too short", tcp, 39, 0, {}, 2, "wrong payload length"},
        {"TCP request too long", tcp, 41, 0, {}, 2, "wrong payload length"},
        {"IP request too long", ip, 40, 0, {}, 2, "wrong payload length"},
        {"MAC request empty", mac, 0, 0, {}, 2, "wrong payload length"},
        {"interface unknown", mac, 32, 24, {0x83, 1, 0, 9}, 3, "no such interface on this line card"},
        {"interface in the other byte order", mac, 32, 24, {1, 0, 1, 0x83}, 3, "no such interface on this line card"},
        {"port number of another port", mac, 32, 4, {0, 2}, 4, "the port number at offset 4 is not the interface's"},
        {"port number in the other byte order",
         ip,
         32,
         4,
         {1, 0},
         4,
         "the port number at offset 4 is not the interface's"},
        {"TCP constant", tcp, 40, 28, {0, 2}, 4, wrong_field},
        {"TCP access point", tcp, 40, 32, {0, 0, 0, 1}, 4, wrong_field},
        {"MAC constant", mac, 32, 28, {0, 0, 0, 0}, 4, wrong_field},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Bytes payload = request(row.opcode);
        payload.resize(row.length);
        put(payload, row.offset, row.bytes);
        const auto reply = receive(send(row.opcode, payload));
        EXPECT_EQ(status_of(reply), row.status);
        EXPECT_EQ(take_complaint(), std::string("mts_send: the line card refuses the request: ") + row.complaint);
    }
}

TEST_F(Ipc, InterfaceOfAnotherSlotIsRefused) {
    the_switch().slots = {1, 2};
    EXPECT_EQ(status_of(receive(send(mac, request(mac), switchsim::node_of_slot(2)))), 3);
    EXPECT_EQ(take_complaint(), "mts_send: the line card refuses the request: no such interface on this line card");
}

TEST_F(Ipc, SendArgumentsAreChecked) {
    const mts_addr good{switchsim::node_of_slot(1), 943};
    const mts_addr other_point{switchsim::node_of_slot(1), 944};
    const Bytes payload = request(ip);
    mts_msg sent{};
    EXPECT_NE(mts_send(mts_q, &other_point, ip, payload.data(), 32, &sent, 0, 0), 0);
    EXPECT_EQ(take_complaint(), "mts_send: the destination's access point is 944, expected 943");
    EXPECT_NE(mts_send(mts_q, &good, ip, payload.data(), 32, &sent, 1, 0), 0);
    EXPECT_EQ(take_complaint(), "mts_send: the first constant is 1, expected 0");
    EXPECT_NE(mts_send(mts_q, &good, ip, payload.data(), 32, &sent, 0, 1), 0);
    EXPECT_EQ(take_complaint(), "mts_send: the second constant is 1, expected 0");
}

TEST_F(Ipc, ReceiveOptionsAreChecked) {
    struct {
        mts_recv_options options;
        int wait;
        const char* complaint;
    } const rows[] = {
        {{{0, 0, 5, 0, 0, 0, 0, 0}}, 5, "the options' first word is 0, expected 1"},
        {{{1, 1, 5, 0, 0, 0, 0, 0}}, 5, "the options' second word is 1, expected 0"},
        {{{1, 0, 5, 0, 0, 0, 0, 0}}, 4, "the options' wait limit is 5, expected 4"},
        {{{1, 0, 5, 0, 1, 0, 0, 0}}, 5, "the options' last words is 1, expected 0"},
        {{{1, 0, 5, 0, 0, 0, 0, 8}}, 5, "the options' last words is 8, expected 0"},
    };
    mts_msg received{};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.complaint);
        EXPECT_NE(mts_recv(mts_q, &received, &row.options, row.wait), 0);
        EXPECT_EQ(take_complaint(), std::string("mts_recv: ") + row.complaint);
    }
}

// ---------------------------------------------------------------------------------------------- messages' lives

TEST_F(Ipc, MessageIsDroppedOnce) {
    send(ip, request(ip));
    const mts_recv_options options{{1, 0, wait_limit, 0, 0, 0, 0, 0}};
    mts_msg received{};
    ASSERT_EQ(mts_recv(mts_q, &received, &options, wait_limit), 0);
    mts_msg copy = received;
    mts_drop(mts_q, &received);
    mts_drop(mts_q, &received);
    EXPECT_EQ(take_complaint(), "mts_drop: the message was dropped before");
    mts_drop(mts_q, &copy);
    EXPECT_EQ(take_complaint(), "mts_drop: the message was dropped before");
    EXPECT_EQ(mts_payload_get(&copy), nullptr);
    EXPECT_EQ(take_complaint(), "mts_payload_get: the message was dropped before");
}

TEST_F(Ipc, NeverFilledMessagesAreNoticed) {
    mts_msg garbage;
    std::memset(&garbage, 0xA5, sizeof garbage);
    EXPECT_EQ(mts_payload_size(&garbage), 0U);
    EXPECT_EQ(take_complaint(), "mts_payload_size: the message was never sent or received");
    EXPECT_EQ(mts_rr_token_get(nullptr), 0U);
    EXPECT_EQ(take_complaint(), "mts_rr_token_get: the message is null");
}

TEST_F(Ipc, EmptyMessageHasNoPayloadAndMayBeDropped) {
    mts_msg empty{};
    EXPECT_EQ(mts_payload_get(&empty), nullptr);
    EXPECT_EQ(mts_payload_size(&empty), 0U);
    mts_drop(mts_q, &empty);
}

TEST_F(Ipc, UndroppedMessagesAreCounted) {
    send(ip, request(ip));
    const mts_recv_options options{{1, 0, wait_limit, 0, 0, 0, 0, 0}};
    mts_msg received{};
    ASSERT_EQ(mts_recv(mts_q, &received, &options, wait_limit), 0);
    EXPECT_EQ(switchsim::undropped_messages(), 1U);
    mts_drop(mts_q, &received);
}

// ---------------------------------------------------------------------------------------------- faults

TEST_F(Ipc, FaultsOnSendingBendAllReplies) {
    the_switch().ports[gigabit].tcp_statistics = {numbered(1352), continuation(0)};
    switchsim::inject("mts_send", Fault::wrong_status, 1, 0x1234);
    const auto token = send(tcp, request(tcp));
    EXPECT_EQ(status_of(receive(token)), 0x1234);
    EXPECT_EQ(status_of(receive(0)), 0x1234);
    switchsim::inject("mts_send", Fault::short_reply, 1, 20);
    EXPECT_EQ(receive(send(mac, request(mac)))->size(), 20U);
    switchsim::inject("mts_send", Fault::no_reply, 1);
    EXPECT_FALSE(receive(send(mac, request(mac))));
}

TEST_F(Ipc, FaultsOnReceivingBendThatReply) {
    the_switch().ports[gigabit].tcp_statistics = {numbered(1352), continuation(0)};
    switchsim::inject("mts_recv", Fault::wrong_status, 2, 7);
    const auto token = send(tcp, request(tcp));
    EXPECT_EQ(status_of(receive(token)), 0);
    EXPECT_EQ(status_of(receive(0)), 7);
    switchsim::inject("mts_recv", Fault::short_reply, 1, 0);
    EXPECT_EQ(receive(send(mac, request(mac))), Bytes{});
    switchsim::inject("mts_recv", Fault::no_reply, 1);
    EXPECT_FALSE(receive(send(mac, request(mac))));
}

TEST_F(Ipc, ShortReplyNeverGrowsOne) {
    switchsim::inject("mts_recv", Fault::short_reply, 1, 5000);
    EXPECT_EQ(receive(send(mac, request(mac)))->size(), 256U);
    switchsim::inject("mts_recv", Fault::short_reply, 1, -1);
    EXPECT_EQ(receive(send(mac, request(mac)))->size(), 0U);
}

TEST_F(Ipc, FailuresLeaveAnEmptyMessage) {
    const mts_addr destination{switchsim::node_of_slot(1), 943};
    const Bytes payload = request(ip);
    for (const Fault fault : test::read_faults) {
        mts_msg sent;
        std::memset(&sent, 0xA5, sizeof sent);
        switchsim::inject("mts_send", fault, 1, -3);
        EXPECT_EQ(mts_send(mts_q, &destination, ip, payload.data(), 32, &sent, 0, 0),
                  fault == Fault::succeed_without_record ? 0 : -3);
        mts_drop(mts_q, &sent);
    }
    EXPECT_EQ(switchsim::undropped_messages(), 0U);
    EXPECT_FALSE(receive(0));
}

// ---------------------------------------------------------------------------------------------- the queue

TEST_F(Ipc, QueueIsTheSameHoweverOftenItIsOpened) {
    mts_queue again = nullptr;
    EXPECT_EQ(init_mts(&again), 0);
    EXPECT_EQ(again, mts_q);
}

TEST_F(Ipc, QueueThatCouldNotBeOpenedFailsCallsQuietly) {
    mts_queue queue = nullptr;
    switchsim::inject("init_mts", Fault::fail, 1, -5);
    EXPECT_EQ(init_mts(&queue), -5);
    EXPECT_EQ(queue, nullptr);
    EXPECT_EQ(CSgetName(queue), nullptr);
    EXPECT_TRUE(switchsim::complaints().empty());
}
