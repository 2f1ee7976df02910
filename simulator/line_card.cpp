#include "simulator/line_card.h"

#include "simulator/bytes.h"
#include "simulator/state.h"

#include <algorithm>

namespace switchsim {
namespace {

using Payload = std::vector<std::uint8_t>;
using Replies = std::vector<Payload>;

// Where a request's fields stand.
constexpr std::size_t port_offset = 4;
constexpr std::size_t if_index_offset = 24;
constexpr std::size_t selector_offset = 28;
constexpr std::size_t access_point_offset = 32;

constexpr std::size_t status_offset = 10;
constexpr std::uint16_t unknown_port = 0xFFFF;

/// What a line card says of a request that it cannot serve.
enum Status : std::uint16_t {
    status_ok = 0,
    status_unknown_opcode = 1,
    status_wrong_length = 2,
    status_unknown_interface = 3,
    status_wrong_field = 4,
};

Status check_tcp(const std::uint8_t* request) {
    return get_big<std::uint16_t>(request, selector_offset) == 1 &&
                   get_big<std::uint32_t>(request, access_point_offset) == own_access_point
               ? status_ok
               : status_wrong_field;
}

Status check_ip(const std::uint8_t*) {
    return status_ok;
}

Status check_mac(const std::uint8_t* request) {
    return get_big<std::uint32_t>(request, selector_offset) == 1 ? status_ok : status_wrong_field;
}

Replies one_reply(const Payload& statistics) {
    return statistics.empty() ? Replies{} : Replies{statistics};
}

Replies tcp_replies(const Port& port) {
    return port.tcp_statistics;
}

Replies ip_replies(const Port& port) {
    return one_reply(port.ip_statistics);
}

Replies mac_replies(const Port& port) {
    return one_reply(port.mac_statistics);
}

/// A request that line cards serve.
struct Service {
    std::uint32_t opcode;
    std::size_t length;
    Status (*check)(const std::uint8_t* request);
    Replies (*replies)(const Port& port);
};

constexpr Service services[] = {
    {1920, 40, check_tcp, tcp_replies},
    {1917, 32, check_ip, ip_replies},
    {1918, 32, check_mac, mac_replies},
};

std::optional<std::uint8_t> slot_of_node(std::uint32_t node) {
    const auto& slots = current().slots;
    const auto slot =
        std::find_if(slots.begin(), slots.end(), [node](std::uint8_t one) { return node_of_slot(one) == node; });
    return slot == slots.end() ? std::nullopt : std::optional(*slot);
}

Replies refuse(Status status, const char* what) {
    complain(Function::mts_send, std::string("the line card refuses the request: ") + what);
    Payload payload(status_offset + sizeof(std::uint16_t));
    set_status(payload, status);
    return {payload};
}

/// Whether the request names the interface's own port number, or none.
bool port_matches(const std::uint8_t* request, const Port& port) {
    const auto number = get_big<std::uint16_t>(request, port_offset);
    return number == unknown_port || number == port.port;
}

} // namespace

void set_status(Payload& payload, std::uint16_t status) {
    if (payload.size() >= status_offset + sizeof status)
        put_big(payload.data(), status_offset, status);
}

Replies line_card_replies(const SentRequest& request) {
    const auto slot = slot_of_node(request.destination.node);
    if (!slot)
        return {};
    const auto* service = std::find_if(std::begin(services), std::end(services),
                                       [&](const Service& one) { return one.opcode == request.opcode; });
    if (service == std::end(services))
        return refuse(status_unknown_opcode, "unknown opcode");
    if (request.payload.size() != service->length)
        return refuse(status_wrong_length, "wrong payload length");
    const std::uint8_t* bytes = request.payload.data();
    const Port* port = find_port(get_big<std::uint32_t>(bytes, if_index_offset));
    if (!port || port->slot != slot)
        return refuse(status_unknown_interface, "no such interface on this line card");
    if (!port_matches(bytes, *port))
        return refuse(status_wrong_field, "the port number at offset 4 is not the interface's");
    if (const Status status = service->check(bytes); status != status_ok)
        return refuse(status, "wrong constant at offset 28 or wrong access point at offset 32");
    Replies replies = service->replies(*port);
    for (Payload& reply : replies)
        set_status(reply, status_ok);
    return replies;
}

} // namespace switchsim
