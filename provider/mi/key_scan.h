// Finds the key by which the object of a path is looked up.
#pragma once

#include "provider/common/broker.h"

#include <array>

namespace fcip {

/// The key that a scan found. The value is cut to 253 characters, and empty for a key that is no string.
struct found_key {
    bool found = false;
    std::array<char, 254> value{};
};

/// Looks through a path's keys, in their order, for the first that check_key_name() accepts for the class.
/// @param line_end what ends the line that is printed when it is a string
found_key scan_keys(const char* class_name, const CMPIObjectPath* path, const char* line_end);

/// The status of a get or association request whose path has no such key: OK, with the message "invalid key name".
CMPIStatus key_not_found();

/// The status of every other served request.
inline CMPIStatus served() {
    return {CMPI_RC_OK, nullptr};
}

} // namespace fcip
