// Numbers in frames, big-endian and unaligned.
#pragma once

#include <concepts>
#include <cstddef>

namespace cmpihost::worker {

template <std::unsigned_integral Number>
void write_number(char* bytes, Number number) {
    for (std::size_t index = sizeof number; index-- > 0; number = static_cast<Number>(number >> 8))
        bytes[index] = static_cast<char>(number & 0xff);
}

template <std::unsigned_integral Number>
Number read_number(const char* bytes) {
    Number number = 0;
    for (std::size_t index = 0; index < sizeof number; ++index)
        number = static_cast<Number>(number << 8 | static_cast<unsigned char>(bytes[index]));
    return number;
}

} // namespace cmpihost::worker
