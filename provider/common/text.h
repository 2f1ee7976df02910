// Numbers and texts as they stand in CIM keys.
#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string_view>

namespace fcip {

/// A signed decimal number at the head of `text`: leading blanks and a sign allowed, trailing text ignored, no digits
/// give 0, values beyond 32 bits are clamped to the nearest 32-bit one.
std::int32_t parse_decimal(const char* text);

/// An index or id as keys and traces print it: the 32 bits as a signed number.
constexpr std::int32_t as_signed(std::uint32_t index) {
    return static_cast<std::int32_t>(index);
}

/// Texts put together, cut after Size - 1 characters.
template <std::size_t Size>
std::array<char, Size> join_text(std::initializer_list<std::string_view> parts) {
    std::array<char, Size> text{};
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.copy(text.data() + length, Size - 1 - length);
    return text;
}

/// Room for a text that the platform writes without being told a length: 255 characters at most. To be zeroed.
using platform_text = std::array<char, 256>;

/// The first Size - 1 characters of a text.
template <std::size_t Size>
std::array<char, Size> copy_text(const char* text) {
    std::array<char, Size> copy{};
    std::memcpy(copy.data(), text, strnlen(text, Size - 1));
    return copy;
}

/// An index in decimal, as it stands in InstanceID and Name keys.
inline std::array<char, 31> index_text(std::uint32_t index) {
    std::array<char, 31> text{};
    std::to_chars(text.data(), text.data() + text.size() - 1, as_signed(index));
    return text;
}

} // namespace fcip
