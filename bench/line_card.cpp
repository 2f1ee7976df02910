// The exchanges with a line card.
#include "bench/calls.h"

#include <array>
#include <cstring>

namespace bench {

namespace {

constexpr std::uint32_t statistics_sap = 943;
constexpr int wait_limit = 5; // seconds

template <std::size_t Size>
using Request = std::array<std::uint8_t, Size>;

void put_big(std::uint8_t* bytes, std::uint32_t value) {
    for (int byte = 0; byte < 4; ++byte)
        bytes[byte] = static_cast<std::uint8_t>(value >> (24 - 8 * byte));
}

template <std::size_t Size>
Request<Size> request_for(std::uint32_t if_index) {
    std::uint8_t slot = 0;
    std::uint8_t port = 0;
    if_index_get_slot(if_index, &slot);
    if_index_get_port(if_index, &port);
    Request<Size> payload{};
    payload[5] = port;
    const std::uint32_t network_order = hton_if_index(if_index);
    std::memcpy(payload.data() + 24, &network_order, sizeof network_order);
    return payload;
}

/// The bytes of a reply that are looked at: whether more follow.
bool look_at(const mts_msg& message) {
    const std::uint32_t size = mts_payload_size(&message);
    const auto* payload = static_cast<const std::uint8_t*>(mts_payload_get(&message));
    return size >= 38 && (payload[36] != 0 || payload[37] != 0);
}

void receive(mts_msg& reply, std::uint32_t token) {
    const mts_recv_options options{{1, 0, static_cast<std::uint32_t>(wait_limit), token, 0, 0, 0, 0}};
    mts_recv(mts_q, &reply, &options, wait_limit);
    look_at(reply); // its status
}

template <std::size_t Size>
void exchange(std::uint32_t if_index, std::uint32_t opcode, const Request<Size>& payload, mts_msg& reply) {
    alignas(8) static std::array<std::uint8_t, 4096> record;
    idxmap_node_by_if_index(if_index, record.data());
    mts_addr address{0, statistics_sap};
    std::memcpy(&address.node, record.data(), sizeof address.node);
    mts_msg sent;
    mts_send(mts_q, &address, opcode, payload.data(), Size, &sent, 0, 0);
    receive(reply, mts_rr_token_get(&sent));
    mts_drop(mts_q, &sent);
}

} // namespace

void ask_ip_statistics(std::uint32_t if_index) {
    auto payload = request_for<32>(if_index);
    put_big(payload.data() + 28, 1);
    mts_msg reply;
    exchange(if_index, 1917, payload, reply);
    mts_payload_size(&reply); // how much the caller's block has to hold
    look_at(reply);
    mts_drop(mts_q, &reply);
}

void ask_ethernet_statistics(std::uint32_t if_index) {
    auto payload = request_for<32>(if_index);
    put_big(payload.data() + 28, 1);
    mts_msg reply;
    exchange(if_index, 1918, payload, reply);
    look_at(reply);
    mts_drop(mts_q, &reply);
}

void ask_tcp_statistics(std::uint32_t if_index) {
    auto payload = request_for<40>(if_index);
    payload[29] = 1;
    put_big(payload.data() + 32, mts_sap_get(mts_q));
    mts_msg reply;
    exchange(if_index, 1920, payload, reply);
    look_at(reply);
    mts_drop(mts_q, &reply);
    for (bool more = true; more;) {
        mts_msg further;
        receive(further, 0);
        more = look_at(further);
        mts_drop(mts_q, &further);
    }
}

} // namespace bench
