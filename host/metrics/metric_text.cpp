#include "host/metrics/metric_text.h"

#include "host/cimxml/characters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace cmpihost::metrics {

namespace {

constexpr std::uint64_t exact = std::uint64_t{1} << 53;  // integers below it are exact as doubles
constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD

/// Characters that stand for themselves everywhere.
constexpr std::array<bool, 256> plain_bytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t c = ' '; c <= '~'; ++c)
        plain[c] = c != '"' && c != '\\';
    return plain;
}();

/// Looks at all of it: to end at the first that is not plain would be slower.
bool is_plain(std::string_view text) {
    bool plain = true;
    for (const char c : text)
        plain &= plain_bytes[static_cast<unsigned char>(c)];
    return plain;
}

char* write_text(char* at, std::string_view text) {
    return std::copy(text.begin(), text.end(), at);
}

static_assert(longest_escaped == replacement.size());

/// What is no character, and controls, are replaced.
char* write_escaped(char* at, std::string_view text, bool quoted) {
    for (std::size_t from = 0; from < text.size(); from += cimxml::character_length(text, from)) {
        const std::size_t length = cimxml::xml_character_length(text, from);
        const char c = text[from];
        if (c == '\\' || (c == '"' && quoted))
            at = write_text(write_text(at, "\\"), text.substr(from, 1));
        else if (c == '\n')
            at = write_text(at, "\\n");
        else if (length == 0 || (length == 1 && (static_cast<unsigned char>(c) < ' ' || c == 0x7f)))
            at = write_text(at, replacement);
        else
            at = write_text(at, text.substr(from, length));
    }
    return at;
}

} // namespace

char* write_escaped(char* at, std::string_view value) {
    return is_plain(value) ? write_text(at, value) : write_escaped(at, value, true);
}

void append_head(Text& out, std::string_view name, std::string_view type, std::string_view help) {
    out.append("# HELP ").append(name).append(" ").append(help);
    out.append("\n# TYPE ").append(name).append(" ").append(type).append("\n");
}

Text escaped_help(std::string_view help) {
    Text out;
    out.end_at(write_escaped(out.room(longest_escaped * help.size()), help, false));
    return out;
}

void append_label(Text& out, std::string_view name, std::string_view value) {
    const bool is_first = out.size() == 0 || out.view().back() == '{';
    char* at = out.room(name.size() + longest_escaped * value.size() + 4);
    if (!is_first)
        *at++ = ',';
    at = write_text(write_text(at, name), "=\"");
    at = write_escaped(at, value);
    *at++ = '"';
    out.end_at(at);
}

Text only_label(std::string_view name, std::string_view value) {
    Text labels;
    labels.append("{");
    append_label(labels, name, value);
    labels.append("} ");
    return labels;
}

char* write_number(char* at, std::uint64_t number) {
    const auto small = static_cast<std::uint32_t>(number); // most are, and divided faster
    if (small == number)
        return std::to_chars(at, at + longest_number, small).ptr;
    return std::to_chars(at, at + longest_number, number).ptr;
}

char* write_number(char* at, double number) {
    const auto write = [at](std::string_view text) { return std::copy(text.begin(), text.end(), at); };
    if (std::isnan(number))
        return write("NaN");
    if (std::isinf(number))
        return write(number < 0 ? "-Inf" : "+Inf");
    return std::to_chars(at, at + longest_number, number).ptr;
}

void append_seconds(Text& out, std::chrono::microseconds time) {
    auto count = static_cast<std::uint64_t>(time.count());
    append_number(out, count / 1'000'000);
    std::array<char, 7> fraction{'.'};
    for (std::size_t place = fraction.size(); --place != 0; count /= 10)
        fraction.at(place) = static_cast<char>('0' + count % 10);
    out.append({fraction.data(), fraction.size()});
}

char* write_counter(char* at, std::uint64_t value, const Unit& unit) {
    const std::uint64_t scaled = value * unit.times % exact; // 2^64 is a multiple of 2^53
    return unit.by == 1 ? write_number(at, scaled)
                        : write_number(at, static_cast<double>(scaled) / static_cast<double>(unit.by));
}

} // namespace cmpihost::metrics
