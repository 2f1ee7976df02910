// An object in JSON, for scripts.
#pragma once

#include "host/mof/schema.h"

#include <string>

namespace cmpihost::pages {

/// {"class": ..., "keys": {...}, "properties": {...}, "texts": {...}}. Bytes that are no UTF-8 are replaced. Integers
/// are whole, which readers that have doubles alone round beyond 2^53. The texts are those that the page shows for what
/// it refreshes, but for integers and strings that such a reader shows alike.
/// @param path of the instance: its class and its keys
std::string json_of(const Object& path, const Object& instance, const mof::ClassDeclaration& declaration);

} // namespace cmpihost::pages
