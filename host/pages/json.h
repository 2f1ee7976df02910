// An object in JSON, for scripts.
#pragma once

#include "host/cim/object.h"

#include <string>

namespace cmpihost::pages {

/// {"class": ..., "keys": {...}, "properties": {...}}. Bytes that are no UTF-8 are replaced. Integers are whole, which
/// readers that have doubles alone round beyond 2^53.
/// @param path of the instance: its class and its keys
std::string json_of(const Object& path, const Object& instance);

} // namespace cmpihost::pages
