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

/// What is no character, and controls, are replaced.
void append_escaped(Text& out, std::string_view text, bool quoted) {
    if (is_plain(text)) {
        out.append(text);
        return;
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = cimxml::xml_character_length(text, at);
        const char c = text[at];
        if (c == '\\' || (c == '"' && quoted))
            out.append("\\").append(text.substr(at, 1));
        else if (c == '\n')
            out.append("\\n");
        else if (length == 0 || (length == 1 && (static_cast<unsigned char>(c) < ' ' || c == 0x7f)))
            out.append(replacement);
        else
            out.append(text.substr(at, length));
        at += length == 0 ? 1 : length;
    }
}

} // namespace

void append_head(Text& out, std::string_view name, std::string_view type, std::string_view help) {
    out.append("# HELP ").append(name).append(" ").append(help);
    out.append("\n# TYPE ").append(name).append(" ").append(type).append("\n");
}

Text escaped_help(std::string_view help) {
    Text out;
    append_escaped(out, help, false);
    return out;
}

void append_label(Text& out, std::string_view name, std::string_view value) {
    if (out.size() != 0 && out.view().back() != '{')
        out.append(",");
    out.append(name).append("=\"");
    append_escaped(out, value, true);
    out.append("\"");
}

Text only_label(std::string_view name, std::string_view value) {
    Text labels;
    labels.append("{");
    append_label(labels, name, value);
    labels.append("} ");
    return labels;
}

char* write_number(char* at, std::uint64_t number) {
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
