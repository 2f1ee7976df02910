// The header Authorization of the scheme Basic.
#pragma once

#include "host/http/secret.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cmpihost::http {

/// Limits of what is decoded, in bytes.
inline constexpr std::size_t max_credentials = 1'023;
inline constexpr std::size_t max_password = 512;

struct Credentials {
    std::string user;
    Secret password;
};

/// Reads `Basic BASE64`. Nothing if it is of another scheme, malformed or too long, without a colon, or if user or
/// password have control characters.
std::optional<Credentials> read_basic(std::string_view header);

} // namespace cmpihost::http
