// CIM status codes, and what an operation ends with.
#pragma once

#include <string>

namespace cmpihost::server {

/// The standard's codes that this server answers with by itself; a provider's codes are handed on as they are.
enum class CimCode : unsigned {
    ok = 0,
    failed = 1,
    access_denied = 2,
    invalid_namespace = 3,
    invalid_parameter = 4,
    invalid_class = 5,
    not_found = 6,
    not_supported = 7,
    no_such_property = 12,
    query_language_not_supported = 14,
    invalid_query = 15,
    method_not_available = 16,
    method_not_found = 17,
    invalid_enumeration_context = 21,
    invalid_operation_timeout = 22,
    filtered_enumeration_not_supported = 25,
    continuation_on_error_not_supported = 26,
    server_limits_exceeded = 27,
};

struct Status {
    CimCode code = CimCode::ok;
    std::string description{}; ///< empty: the code's own name stands for it
};

} // namespace cmpihost::server
