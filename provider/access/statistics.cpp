#include "provider/access/statistics.h"

#include "provider/access/ipc.h"
#include "provider/common/endian.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace fcip {

namespace {

constexpr std::uint32_t statistics_sap = 943; ///< answers statistics requests on every line card

constexpr std::uint32_t opcode_ip = 1917;
constexpr std::uint32_t opcode_ethernet = 1918;
constexpr std::uint32_t opcode_tcp = 1920;
constexpr std::uint32_t opcode_ip_configuration = 873;

constexpr std::uint16_t unknown_port = 0xFFFF;

/// A request's payload, big-endian; the bytes between the fields are zero.
template <std::size_t Size>
using request = platform_storage<Size>;
constexpr std::size_t port_field = 4;      ///< u16, the interface's port number on its line card
constexpr std::size_t if_index_field = 24; ///< u32
constexpr std::size_t argument_field = 28; ///< u16 in the TCP request, u32 in the others
constexpr std::size_t sap_field = 32;      ///< u32, TCP request only

/// A further reply of the TCP exchange: s16, non-zero while more follow.
constexpr std::uint32_t more_field = 36;

/// The port number of an interface. The slot is only asked for as a check; an interface without one is asked for all
/// the same.
std::uint16_t port_number(std::uint32_t if_index) {
    std::uint8_t slot = 0;
    std::uint8_t port = 0;
    const bool known = if_index_get_slot(if_index, &slot) == 0 && if_index_get_port(if_index, &port) == 0;
    return known ? port : unknown_port;
}

template <std::size_t Size>
request<Size> request_for(std::uint32_t if_index) {
    request<Size> payload;
    write_be16(payload.data() + port_field, port_number(if_index));
    const std::uint32_t network_order = hton_if_index(if_index); // its bytes go out as they are
    std::memcpy(payload.data() + if_index_field, &network_order, sizeof network_order);
    return payload;
}

/// Where statistics requests for an interface go. A node that cannot be had is node 0.
mts_addr line_card_of(std::uint32_t if_index) {
    platform_storage<4096> record;
    idxmap_node_by_if_index(if_index, record.data());
    return {read_host32(record.data()), statistics_sap};
}

template <std::size_t Size>
int ask_line_card(mts_queue queue, std::uint32_t if_index, std::uint32_t opcode, const request<Size>& payload,
                  mts_msg& reply) {
    return ipc_request(queue, line_card_of(if_index), opcode, payload.bytes.data(), Size, &reply, ipc_wait_limit);
}

bool more_follow(const mts_msg& message) {
    if (mts_payload_size(&message) < more_field + 2)
        return false;
    return read_be16(static_cast<const std::uint8_t*>(mts_payload_get(&message)) + more_field) != 0;
}

/// Receives and drops the further replies of a TCP exchange; there is at least one. @return 0 or -1
int drain_replies() {
    bool more = true;
    while (more) {
        mts_msg message{};
        if (ipc_await_reply(mts_q, &message, 0, ipc_wait_limit) != 0)
            return -1;
        more = more_follow(message);
        mts_drop(mts_q, &message);
    }
    return 0;
}

void trace_interface(std::uint32_t if_index) {
    trace("\ntol : if_index ", as_signed(if_index), "\n");
}

} // namespace

int get_tcp_stats(std::uint32_t if_index, std::uint8_t record[tcp_record_size]) {
    trace_entering(__func__);
    auto payload = request_for<40>(if_index);
    write_be16(payload.data() + argument_field, 1);
    write_be32(payload.data() + sap_field, mts_sap_get(mts_q));
    trace_interface(if_index);
    mts_msg reply{};
    if (ask_line_card(mts_q, if_index, opcode_tcp, payload, reply) != 0)
        return -1;
    ipc_copy_payload(&reply, record, tcp_record_size);
    mts_drop(mts_q, &reply);
    if (drain_replies() != 0)
        return -1;
    trace_exiting(__func__);
    return 0;
}

int get_ip_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t flag, std::uint8_t** reply) {
    trace("\n inside get_ip_stats\n ");
    auto payload = request_for<32>(if_index);
    write_be32(payload.data() + argument_field, flag);
    *reply = nullptr;
    mts_msg message{};
    const int status = ask_line_card(queue, if_index, opcode_ip, payload, message);
    if (status != 0)
        return status;
    if (flag != 0) {
        const std::size_t size = std::max<std::size_t>(mts_payload_size(&message), ip_record_size);
        *reply = static_cast<std::uint8_t*>(std::malloc(size));
        if (*reply != nullptr)
            ipc_copy_payload(&message, *reply, size);
    }
    mts_drop(queue, &message);
    return status;
}

int get_ethernetport_statistics(std::uint32_t if_index, std::uint8_t record[ethernet_record_size]) {
    trace_entering(__func__);
    auto payload = request_for<32>(if_index);
    write_be32(payload.data() + argument_field, 1);
    trace_interface(if_index);
    mts_msg reply{};
    if (ask_line_card(mts_q, if_index, opcode_ethernet, payload, reply) != 0) {
        trace("Failed retrieval of mac stats information from linecard");
        return -1;
    }
    ipc_copy_payload(&reply, record, ethernet_record_size);
    mts_drop(mts_q, &reply);
    trace_exiting(__func__);
    return 0;
}

int get_ip_misc_cfg(ip_configuration* configuration) {
    void* block = nullptr;
    std::uint32_t length = sizeof(ip_configuration);
    const int status = cmi_req_resp(opcode_ip_configuration, 1, 0, &block, &length, 0, 0, 35, mts_q, ipc_wait_limit);
    const platform_ptr<std::uint8_t> reply(static_cast<std::uint8_t*>(block));
    if (status != 0 || reply == nullptr)
        return -1;
    std::array<std::uint8_t, sizeof(ip_configuration)> bytes{};
    std::memcpy(bytes.data(), reply.get(), std::min<std::size_t>(length, bytes.size()));
    *configuration = {read_be32(bytes.data()), bytes[4], {bytes[5], bytes[6], bytes[7]}};
    return 0;
}

} // namespace fcip
