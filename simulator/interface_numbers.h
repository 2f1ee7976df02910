// How the simulated switch numbers its interfaces: the kind in the first byte, then slot and port.
#pragma once

#include <cstdint>

namespace switchsim {

// Ethernet ports come after 0x82FFFFFF, where walks over them begin, and port channels after them, where they end.
inline constexpr std::uint32_t fibre_channel_base = 0x01000000;
inline constexpr std::uint32_t fcip_base = 0x0A000000;
inline constexpr std::uint32_t ethernet_base = 0x83000000;
inline constexpr std::uint32_t port_channel_base = 0x84000000;

constexpr std::uint32_t slot_and_port(std::uint32_t base, std::uint8_t slot, std::uint8_t port) {
    return base | static_cast<std::uint32_t>(slot) << 16 | port;
}

} // namespace switchsim
