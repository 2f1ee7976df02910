// A switch small enough to keep in one's head: two profiles, three tunnels, two Ethernet ports, one Fibre Channel
// port. Tests edit it where they need something else.
#pragma once

#include "simulator/switchsim.h"

namespace test {

// Interface indexes.
inline constexpr std::uint32_t ethernet_1 = 0x83000000;      // gigabitethernet1/1, "-2097152000"
inline constexpr std::uint32_t ethernet_2 = 0x83040000;      // gigabitethernet2/1, "-2096889856"
inline constexpr std::uint32_t fibre_channel_1 = 0x84000000; // fc1/1, "-2080374784": after the Ethernet ports
inline constexpr std::uint32_t fcip_1 = 16777216;            // tunnel 1
inline constexpr std::uint32_t fcip_3 = 16777218;            // tunnel 3
inline constexpr std::uint32_t fcip_7 = 16777222;            // tunnel 7

// Keys of the link table.
inline constexpr switchsim::LinkKey tunnel_1{3, 0}; // IPv4, 10.1.1.1 to 10.1.1.2
inline constexpr switchsim::LinkKey tunnel_3{3, 2}; // IPv4, 10.1.1.1 to 192.168.100.101
inline constexpr switchsim::LinkKey tunnel_7{7, 6}; // IPv6, 2001:db8::1 to 2001:db8::2

/// The names of VSAN 1, which tunnels 1 and 3 are in, and of VSAN 20, which tunnel 7 is in.
inline constexpr const char* vsan_1_system = "200100005EAA0001";
inline constexpr const char* vsan_20_system = "201400005EAA0001";

/// An address for tests: IPv4 or IPv6 from its usual text.
ip_addr_value address(const char* text);

/// Replaces the simulator's switch by this one and forgets faults, counts and complaints.
void use_small_switch();

} // namespace test
