// Hashes of passwords, by yescrypt.
#pragma once

#include "host/http/secret.h"

#include <string>
#include <string_view>

namespace cmpihost::http {

/// Hashes a password with a new salt, at the cost that the library takes by default (about 30 ms and 16 MiB).
/// @throws std::runtime_error whose what() is one line
std::string hash_password(const Secret& password);

/// Whether this is a yescrypt hash whose cost is bounded: four times the default at most.
bool is_usable_hash(std::string_view hash);

/// Of a usable hash: the order of their costs.
unsigned cost_of(std::string_view hash);

/// A hash of the same cost that no password has.
std::string decoy_of(std::string_view hash);

/// Hashes the password as the stored one was, and compares in constant time. Takes as long as the stored hash asks for.
bool matches(const Secret& password, const std::string& hash);

} // namespace cmpihost::http
