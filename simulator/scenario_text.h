// Scenario files as text, before they are parsed.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace switchsim {

/// A place in a text; both numbers begin with 1, columns count characters.
struct TextPlace {
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};

/// Where the first character beyond ASCII stands that is neither in a comment nor in a string of one line. TOML has no
/// use for such a character, and the parser's behaviour is not defined for all of them.
std::optional<TextPlace> stray_character(std::string_view toml);

} // namespace switchsim
