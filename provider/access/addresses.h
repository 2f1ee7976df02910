// IP addresses as text.
#pragma once

#include "platform/services.h"

#include <array>

namespace fcip {

/// An address as the platform writes it, cut to Size - 1 characters.
template <std::size_t Size = 128>
std::array<char, Size> address_text(const ip_addr_value& address) {
    std::array<char, Size> text{};
    ip_addr_to_str(&address, text.data(), static_cast<int>(Size));
    return text;
}

/// The address's family word.
std::uint32_t get_ip_addr_type(const ip_addr_value* address);

/// Writes an address as text: "null" for the null address.
/// @param is_ipv6 out: 0 for IPv4, 1 for IPv6; set before the conversion; untouched for other families
/// @return 0, or -1 for an address that cannot be written
int ip_addr_to_str_type(const ip_addr_value* address, char* buffer, int length, int* is_ipv6);

} // namespace fcip
