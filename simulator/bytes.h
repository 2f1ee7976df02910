// Integers at any offset of a byte block: big-endian as messages and counter records carry them, or in host order as
// the packed port records do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace switchsim {

template <class Integer>
void put_big(std::uint8_t* bytes, std::size_t offset, Integer value) {
    for (std::size_t i = 0; i < sizeof(Integer); ++i)
        bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * (sizeof(Integer) - 1 - i)));
}

template <class Integer>
Integer get_big(const std::uint8_t* bytes, std::size_t offset) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(Integer); ++i)
        value = value << 8 | bytes[offset + i];
    return static_cast<Integer>(value);
}

inline void put_host(std::uint8_t* bytes, std::size_t offset, std::uint32_t value) {
    std::memcpy(bytes + offset, &value, sizeof value);
}

inline std::uint32_t get_host(const std::uint8_t* bytes, std::size_t offset) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes + offset, sizeof value);
    return value;
}

} // namespace switchsim
