// Numbers and texts as they stand in CIM keys.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>

namespace fcip {

/// A signed decimal number at the head of `text`: leading blanks and a sign allowed, trailing text ignored, no digits
/// give 0, values beyond 32 bits are clamped to the nearest 32-bit one.
std::int32_t parse_decimal(const char* text);

/// An index or id as keys and traces print it: the 32 bits as a signed number.
constexpr std::int32_t as_signed(std::uint32_t index) {
    return static_cast<std::int32_t>(index);
}

/// A text of at most Size - 1 characters, formatted as printf does and cut where it is longer.
template <std::size_t Size, typename... Arguments>
std::array<char, Size> format_text(const char* format, Arguments... arguments) {
    std::array<char, Size> text{};
    if (std::snprintf(text.data(), text.size(), format, arguments...) < 0) // looked at: else gcc warns of wanted cuts
        text = {};
    return text;
}

/// An index in decimal, as it stands in InstanceID and Name keys.
inline std::array<char, 31> index_text(std::uint32_t index) {
    return format_text<31>("%d", as_signed(index));
}

} // namespace fcip
