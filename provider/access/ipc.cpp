#include "provider/access/ipc.h"

#include "provider/common/endian.h"

#include <algorithm>
#include <cstring>

namespace fcip {

namespace {

constexpr std::uint32_t status_offset = 10; ///< u16, big-endian; 0 = success

/// The status that a reply carries, or -1.
int status_of(const mts_msg* reply) {
    if (mts_payload_size(reply) < status_offset + 2)
        return -1;
    return read_be16(static_cast<const std::uint8_t*>(mts_payload_get(reply)) + status_offset);
}

} // namespace

int ipc_await_reply(mts_queue queue, mts_msg* reply, std::uint32_t token, int wait) {
    const mts_recv_options options{{1, 0, static_cast<std::uint32_t>(wait), token, 0, 0, 0, 0}};
    const int received = mts_recv(queue, reply, &options, wait);
    if (received != 0)
        return received;
    const int status = status_of(reply);
    if (status != 0)
        mts_drop(queue, reply);
    return status;
}

int ipc_request(mts_queue queue, const mts_addr& destination, std::uint32_t opcode, const void* payload,
                std::uint32_t length, mts_msg* reply, int wait) {
    const mts_addr address = destination;
    mts_msg sent{};
    if (mts_send(queue, &address, opcode, payload, length, &sent, 0, 0) != 0)
        return -1;
    const int status = ipc_await_reply(queue, reply, mts_rr_token_get(&sent), wait);
    mts_drop(queue, &sent);
    return status;
}

void ipc_copy_payload(const mts_msg* message, std::uint8_t* record, std::size_t size) {
    const std::size_t received = std::min<std::size_t>(mts_payload_size(message), size);
    std::memcpy(record, mts_payload_get(message), received);
    std::memset(record + received, 0, size - received);
}

} // namespace fcip
