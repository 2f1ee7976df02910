// Text to a number. The host has the like: nothing of it is known here, and nothing of this there.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace switchsim {

/// The number that a text is from its first to its last character; null if it is none, or out of the type's range.
/// @param base of an integer, if not 10
template <class Number, class... Base>
std::optional<Number> whole_number(std::string_view text, Base... base) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base...);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace switchsim
