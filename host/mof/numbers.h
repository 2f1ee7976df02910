// Numbers as MOF writes them.
#pragma once

#include "host/cim/object.h"

namespace cmpihost::mof {

/// The value of 17, -17, 021 (octal), 0x11, 10001b, 17.0 or 1.7e1: std::int64_t where there is a minus sign, double
/// where there is a point or exponent, else std::uint64_t. Empty if the text is none of these or too large for 64 bits.
std::optional<Value> parse_number(std::string_view text);

} // namespace cmpihost::mof
