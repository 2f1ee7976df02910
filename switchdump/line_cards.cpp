#include "switchdump/line_cards.h"

#include "platform/services.h"
#include "simulator/statistics_layout.h"

#include <algorithm>

namespace switchdump {

namespace {

using switchsim::Payload;

constexpr std::uint32_t statistics_access_point = 943;
constexpr std::uint32_t opcode_ip = 1917;
constexpr std::uint32_t opcode_ethernet = 1918;
constexpr std::uint32_t opcode_tcp = 1920;
constexpr std::uint16_t unknown_port = 0xFFFF;
constexpr std::size_t status_offset = 10;
constexpr int wait_limit = 5; ///< seconds
constexpr std::size_t most_continuations = 1000;

/// A message that was sent or received; dropped at the end.
struct Message {
    mts_msg content{};
    bool held = false;

    Message() = default;
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;
    ~Message() {
        if (held)
            mts_drop(mts_q, &content);
    }
};

std::uint16_t port_number(std::uint32_t if_index) {
    std::uint8_t slot = 0;
    std::uint8_t port = 0;
    const bool known = if_index_get_slot(if_index, &slot) == 0 && if_index_get_port(if_index, &port) == 0;
    return known ? port : unknown_port;
}

Payload request(std::uint32_t if_index, std::size_t size) {
    Payload payload(size);
    switchsim::put_big(payload.data(), 4, port_number(if_index));
    switchsim::put_host(payload.data(), 24, hton_if_index(if_index));
    return payload;
}

mts_addr line_card_of(std::uint32_t if_index) {
    alignas(std::max_align_t) std::uint8_t record[4096] = {};
    idxmap_node_by_if_index(if_index, record);
    return {switchsim::get_host(record, 0), statistics_access_point};
}

/// Receives a reply of status 0, or nothing.
Payload receive(std::uint32_t token) {
    const mts_recv_options options{{1, 0, wait_limit, token, 0, 0, 0, 0}};
    Message reply;
    reply.held = mts_recv(mts_q, &reply.content, &options, wait_limit) == 0;
    if (!reply.held)
        return {};
    const auto* bytes = static_cast<const std::uint8_t*>(mts_payload_get(&reply.content));
    const std::size_t size = mts_payload_size(&reply.content);
    const bool good = size >= status_offset + 2 && switchsim::get_big<std::uint16_t>(bytes, status_offset) == 0;
    return good ? Payload(bytes, bytes + size) : Payload{};
}

/// The first reply to a request, of `size` bytes; nothing if there is none of status 0.
Payload ask(std::uint32_t if_index, std::uint32_t opcode, const Payload& payload, std::size_t size) {
    const mts_addr destination = line_card_of(if_index);
    Message sent;
    sent.held = mts_send(mts_q, &destination, opcode, payload.data(), static_cast<std::uint32_t>(payload.size()),
                         &sent.content, 0, 0) == 0;
    Payload reply = sent.held ? receive(mts_rr_token_get(&sent.content)) : Payload{};
    if (!reply.empty())
        reply.resize(size);
    return reply;
}

/// The further replies of the TCP exchange; none where they do not come to an end.
std::vector<Payload> continuations() {
    std::vector<Payload> replies;
    while (replies.size() < most_continuations) {
        Payload reply = receive(0);
        if (reply.empty())
            return {};
        reply.resize(switchsim::tcp_continuation_size);
        replies.push_back(std::move(reply));
        if (switchsim::get_big<std::uint16_t>(replies.back().data(), switchsim::tcp_more_offset) == 0)
            return replies;
    }
    return replies;
}

} // namespace

void read_line_card(std::uint32_t if_index, switchsim::Port& port) {
    Payload plain = request(if_index, 32);
    switchsim::put_big(plain.data(), 28, std::uint32_t{1});
    port.mac_statistics = ask(if_index, opcode_ethernet, plain, switchsim::mac_statistics_size);
    port.ip_statistics = ask(if_index, opcode_ip, plain, switchsim::ip_statistics_size);
    Payload tcp = request(if_index, 40);
    switchsim::put_big(tcp.data(), 28, std::uint16_t{1});
    switchsim::put_big(tcp.data(), 32, mts_sap_get(mts_q));
    Payload first = ask(if_index, opcode_tcp, tcp, switchsim::tcp_statistics_size);
    port.tcp_statistics.clear();
    if (first.empty())
        return;
    port.tcp_statistics = continuations();
    port.tcp_statistics.insert(port.tcp_statistics.begin(), std::move(first));
}

} // namespace switchdump
