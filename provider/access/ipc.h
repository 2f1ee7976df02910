// One request and its reply over the IPC service. Private to the statistics queries.
#pragma once

#include "platform/services.h"

namespace fcip {

/// How long an exchange may take, in seconds.
inline constexpr int ipc_wait_limit = 5;

/// Receives the next message that carries the token (0 = any) and checks its status. A reply that reports an error, or
/// is too short to carry a status, is dropped.
/// @param reply out: after a success the message, for the caller to drop
/// @return 0; the status that the reply carries; -1 for a reply without a status; mts_recv's code
int ipc_await_reply(mts_queue queue, mts_msg* reply, std::uint32_t token, int wait);

/// Sends a request and waits for the reply that belongs to it.
/// @return as ipc_await_reply; -1 when the request cannot be sent
int ipc_request(mts_queue queue, const mts_addr& destination, std::uint32_t opcode, const void* payload,
                std::uint32_t length, mts_msg* reply, int wait);

/// Copies a message's payload into a record: what does not fit is left out, what is missing becomes zero.
void ipc_copy_payload(const mts_msg* message, std::uint8_t* record, std::size_t size);

} // namespace fcip
