// Addresses as text, by hand: inet_ntop() takes ten times as long, and every row of an answer has some.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace switchsim {

/// Room for the longest address and a terminator.
using AddressText = std::array<char, 46>;

/// As inet_ntop() writes them: "192.0.2.1", "2001:db8::1", "::ffff:192.0.2.1".
AddressText ipv4_text(std::span<const std::uint8_t, 4> address);
AddressText ipv6_text(std::span<const std::uint8_t, 16> address);

} // namespace switchsim
