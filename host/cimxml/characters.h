// Characters that XML can carry, in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace cmpihost::cimxml {

/// Whether XML 1.0 can carry a character: not most controls, no surrogates, not U+FFFE or U+FFFF.
bool is_xml_character(std::uint32_t code);

/// The length in bytes (1 to 4) of the UTF-8 character at text[at], which XML can carry; 0 if there is none such.
std::size_t xml_character_length(std::string_view text, std::size_t at);

/// The length in bytes of the UTF-8 character at text[at], whether XML can carry it or not; 1 for what is none.
std::size_t character_length(std::string_view text, std::size_t at);

/// Text as a reader of XML has it: what XML cannot carry is replaced by U+FFFD.
std::string carried(std::string_view text);

/// Whether a text is UTF-8, whatever its characters.
bool is_utf8(std::string_view text);

/// Appends a character in UTF-8. The code is at most 0x10FFFF and no surrogate.
void append_utf8(std::string& out, std::uint32_t code);

/// Appends text for an element or an attribute in double quotes: & < > " escaped, what XML cannot carry replaced by
/// U+FFFD. Tabs and line ends stand as they are, since some clients read no numeric references; a client reads carriage
/// returns as line feeds.
void append_escaped(std::string& out, std::string_view text);

/// A blank, tab or line end.
constexpr bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// What a CIM name may have behind its first character.
constexpr bool is_name_part(char c) {
    return is_digit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (c & 0x80) != 0;
}

/// Text without the blanks around it.
std::string_view trimmed(std::string_view text);

/// Whether text is a CIM name: a letter, '_' or a character beyond ASCII, then also digits.
bool is_cim_name(std::string_view text);

} // namespace cmpihost::cimxml
