// Numbers in records whose byte order is fixed. All readers take unaligned bytes.
#pragma once

#include <cstdint>
#include <cstring>

namespace fcip {

/// The 16-bit big-endian number at `bytes`.
inline std::uint16_t read_be16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

/// The 32-bit big-endian number at `bytes`.
inline std::uint32_t read_be32(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(read_be16(bytes)) << 16 | read_be16(bytes + 2);
}

/// The 64-bit big-endian number at `bytes`.
inline std::uint64_t read_be64(const std::uint8_t* bytes) {
    return static_cast<std::uint64_t>(read_be32(bytes)) << 32 | read_be32(bytes + 4);
}

/// Writes a 16-bit number big-endian.
inline void write_be16(std::uint8_t* bytes, std::uint16_t value) {
    bytes[0] = static_cast<std::uint8_t>(value >> 8);
    bytes[1] = static_cast<std::uint8_t>(value);
}

/// Writes a 32-bit number big-endian.
inline void write_be32(std::uint8_t* bytes, std::uint32_t value) {
    write_be16(bytes, static_cast<std::uint16_t>(value >> 16));
    write_be16(bytes + 2, static_cast<std::uint16_t>(value));
}

/// The 32-bit number at `bytes` in the host's order.
inline std::uint32_t read_host32(const std::uint8_t* bytes) {
    std::uint32_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

} // namespace fcip
