// Text to a number.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace cmpihost {

/// The number that a text is from its first to its last character; null if it is none, or out of the type's range.
/// @param form the base of an integer, if not 10; a std::chars_format of a real, if not any
template <class Number, class... Form>
std::optional<Number> whole_number(std::string_view text, Form... form) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, form...);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace cmpihost
