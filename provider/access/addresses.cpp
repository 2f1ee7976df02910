#include "provider/access/addresses.h"

#include <arpa/inet.h>

#include <cstdio>
#include <cstring>

namespace fcip {

std::uint32_t get_ip_addr_type(const ip_addr_value* address) {
    return address->family;
}

int ip_addr_to_str_type(const ip_addr_value* address, char* buffer, int length, int* is_ipv6) {
    const auto size = static_cast<socklen_t>(length);
    switch (get_ip_addr_type(address)) {
    case ip_family_ipv4:
        *is_ipv6 = 0;
        return inet_ntop(AF_INET, address->address, buffer, size) != nullptr ? 0 : -1;
    case ip_family_ipv6:
        *is_ipv6 = 1;
        return inet_ntop(AF_INET6, address->address, buffer, size) != nullptr ? 0 : -1;
    case ip_family_none:
        if (std::memcmp(address, &inet_addr_null, sizeof inet_addr_null) != 0)
            return -1;
        std::snprintf(buffer, size, "null");
        return 0;
    default:
        return -1;
    }
}

} // namespace fcip
