// What stands before the body of an HTTP reply.
#pragma once

#include "host/http/request_check.h"

#include <chrono>

namespace cmpihost::http {

/// Whether the connection goes on after the reply, and whether the client has to be told.
struct Persistence {
    bool keep_alive = true;
    bool version_1_1 = true; ///< of the client
};

/// Of a reply to an operation, with a body of so many bytes.
/// @param took since the request's last byte
std::string operation_head(const std::string& prefix, std::uint64_t bytes, std::chrono::microseconds took,
                           Persistence persistence);

/// Of a page, or an error that is told by one.
std::string page_head(unsigned status, const std::string& content_type, std::uint64_t bytes, Persistence persistence);

/// Of a reply without a body.
std::string refusal_head(const Refusal& refusal, Persistence persistence);

/// "Not Found" and its like.
std::string_view reason_of(unsigned status);

} // namespace cmpihost::http
