// The platform calls of which the bare loops are made. What the platform writes is looked at only where the next call
// needs it; buffers are reused and not cleared.
#pragma once

#include "platform/services.h"

#include <cstdlib>

namespace bench {

/// The link table's next row; null at its end. The caller frees it.
FcipLinkEntry* next_link(std::uint32_t entity_id, std::uint32_t link_index);

/// Calls `visit` with the link table's rows until it answers false.
template <typename Visit>
void for_each_link(Visit visit) {
    std::uint32_t entity_id = 0;
    std::uint32_t link_index = 0;
    while (FcipLinkEntry* link = next_link(entity_id, link_index)) {
        const bool more = visit(*link);
        entity_id = link->entity_id;
        link_index = link->link_index;
        std::free(link);
        if (!more)
            return;
    }
}

/// Walks the link table up to the first row with the index, and asks for nothing about it.
void find_link(std::uint32_t link_index);

/// The entity table's next row; null at its end. The caller frees it.
FcipEntityEntry* next_profile(std::uint32_t entity_id);

/// A link's profile, for the caller to free.
FcipEntityEntry* profile_of(const FcipLinkEntry& link);

/// The same, only read. @param constant 5, or 30 as the FCIP settings ask
void read_profile(const FcipLinkEntry& link, int constant = 5);

/// One read of the port table; null at its end. The caller frees it.
PmPortInfo* port(int operation, std::uint32_t if_index);

std::uint32_t if_index_of(const PmPortInfo& port);

/// An interface's kind; 0 where it cannot be told.
std::uint8_t kind_of(std::uint32_t if_index);

void read_host_name();
void read_system_name(std::uint32_t if_index);
void write_address(const ip_addr_value& address);
void write_switch_wwn();
void write_interface_name(std::uint32_t if_index);

/// An interface's IPv4 configuration, IPv6 addresses and cleared counters.
void read_ip_interface(std::uint32_t if_index);

void read_connection(const FcipLinkEntry& link, const FcipEntityEntry& profile);
void read_link_errors(const FcipLinkEntry& link);
void read_port_counters(std::uint32_t if_index);
void read_ip_configuration();

/// Exchanges with a line card.
void ask_ip_statistics(std::uint32_t if_index);
void ask_tcp_statistics(std::uint32_t if_index);
void ask_ethernet_statistics(std::uint32_t if_index);

/// Reads the lines of the kernel's IP counters that the provider reads, and parses none.
void read_kernel_counters();

} // namespace bench
