// What a request is answered with that nobody answered.
#pragma once

#include "host/server/question.h"

namespace cmpihost::worker {

/// "EnumerateInstances of X"; "EnumerateInstances" without a class; "a request" if nothing is known of it.
std::string request_name(const server::Subject* subject);

/// The HTTP status of a request that no provider has seen.
inline constexpr unsigned service_unavailable = 503;

struct Failure {
    server::Outcome outcome;
    std::string body; ///< of the reply; empty if there is none
};

/// CIM error 1 with this text, as a reply to the subject. Without a subject there is nothing to reply to by CIM:
/// the HTTP status tells that it failed.
Failure failure(const server::Subject* subject, std::string_view text, unsigned http_status = 500);

} // namespace cmpihost::worker
