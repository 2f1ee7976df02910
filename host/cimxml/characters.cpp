#include "host/cimxml/characters.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace cmpihost::cimxml {

namespace {

constexpr unsigned byte_at(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

struct Decoded {
    std::uint32_t code = 0;
    std::size_t length = 0; ///< 0: no UTF-8
};

std::size_t announced_length(unsigned lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xc2 && lead < 0xe0)
        return 2;
    if (lead >= 0xe0 && lead < 0xf0)
        return 3;
    return lead >= 0xf0 && lead < 0xf5 ? 4 : 0;
}

Decoded decode(std::string_view text, std::size_t at) {
    static constexpr std::array<std::uint32_t, 5> lowest{0, 0, 0x80, 0x800, 0x10000};
    const unsigned lead = byte_at(text, at);
    const std::size_t length = announced_length(lead);
    if (length < 2)
        return {lead, length};
    if (text.size() - at < length)
        return {};
    std::uint32_t code = lead & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte_at(text, at + i) & 0xc0U) != 0x80)
            return {};
        code = code << 6 | (byte_at(text, at + i) & 0x3fU);
    }
    const bool surrogate = code >= 0xd800 && code < 0xe000;
    if (code < lowest[length] || code > 0x10ffff || surrogate)
        return {};
    return {code, length};
}

/// What stands for a character in XML text; empty for itself.
constexpr std::string_view entity(char c) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    default:
        return {};
    }
}

constexpr std::string_view replacement = "\xef\xbf\xbd";

/// Bytes that need a second look: controls, those to be escaped, and all beyond ASCII.
constexpr std::array<bool, 256> special_bytes = [] {
    std::array<bool, 256> special{};
    for (std::size_t c = 0; c < special.size(); ++c)
        special[c] =
            c >= 0x80 || (c < 0x20 && c != '\t' && c != '\n' && c != '\r') || !entity(static_cast<char>(c)).empty();
    return special;
}();

constexpr std::size_t word_size = sizeof(std::uint64_t);

constexpr std::uint64_t in_each_byte(std::uint64_t byte) {
    return byte * 0x0101010101010101U;
}

/// A mark in the first byte that is zero; none if there is none.
constexpr std::uint64_t zeroes(std::uint64_t word) {
    return (word - in_each_byte(0x01)) & ~word & in_each_byte(0x80);
}

/// Whether none of the eight bytes there needs a second look. Tabs and line ends count as controls here.
bool is_plain_word(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, word_size);
    const std::uint64_t controls = (word - in_each_byte(0x20)) & ~word;
    const std::uint64_t angles = zeroes((word | in_each_byte('<' ^ '>')) ^ in_each_byte('>'));
    const std::uint64_t quotes = zeroes((word | in_each_byte('"' ^ '&')) ^ in_each_byte('&'));
    return ((word | controls | angles | quotes) & in_each_byte(0x80)) == 0;
}

} // namespace

bool is_xml_character(std::uint32_t code) {
    if (code < 0x20)
        return code == '\t' || code == '\n' || code == '\r';
    return code < 0xd800 || (code >= 0xe000 && code < 0xfffe) || (code >= 0x10000 && code <= 0x10ffff);
}

std::size_t xml_character_length(std::string_view text, std::size_t at) {
    const Decoded decoded = decode(text, at);
    return is_xml_character(decoded.code) ? decoded.length : 0;
}

std::size_t character_length(std::string_view text, std::size_t at) {
    return std::max<std::size_t>(decode(text, at).length, 1);
}

std::string carried(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); at += character_length(text, at)) {
        const std::size_t length = xml_character_length(text, at);
        out += length == 0 ? replacement : text.substr(at, length);
    }
    return out;
}

bool is_utf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = byte_at(text, at) < 0x80 ? 1 : decode(text, at).length;
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

void append_utf8(std::string& out, std::uint32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
        return;
    }
    const unsigned following = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const unsigned marks = 0xf00U >> (following + 1) & 0xffU;
    out += static_cast<char>(marks | code >> (6 * following));
    for (unsigned i = following; i-- > 0;)
        out += static_cast<char>(0x80U | (code >> (6 * i) & 0x3fU));
}

void append_escaped(std::string& out, std::string_view text) {
    std::size_t run = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        if (text.size() - at >= word_size && is_plain_word(text.data() + at)) {
            at += word_size;
            continue;
        }
        if (!special_bytes[byte_at(text, at)]) {
            ++at;
            continue;
        }
        const std::string_view escape = entity(text[at]);
        const std::size_t length = escape.empty() ? xml_character_length(text, at) : 0;
        if (length > 0) {
            at += length;
            continue;
        }
        out.append(text, run, at - run).append(escape.empty() ? replacement : escape);
        at += character_length(text, at);
        run = at;
    }
    out.append(text, run);
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool is_cim_name(std::string_view text) {
    return !text.empty() && !is_digit(text.front()) && std::all_of(text.begin(), text.end(), is_name_part);
}

} // namespace cmpihost::cimxml
