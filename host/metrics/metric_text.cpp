#include "host/metrics/metric_text.h"

#include "host/cimxml/characters.h"

#include <charconv>
#include <cmath>

namespace cmpihost::metrics {

namespace {

constexpr std::uint64_t exact = std::uint64_t{1} << 53; // integers below it are exact as doubles

/// Writes them where they stay: copying what was written byte by byte a moment ago would wait for it.
template <class Number>
void append_digits(std::string& out, Number number) {
    constexpr std::size_t most = 32;
    const std::size_t begin = out.size();
    out.resize(begin + most);
    const char* const end = std::to_chars(&out[begin], &out[begin] + most, number).ptr;
    out.resize(static_cast<std::size_t>(end - out.data()));
}

bool is_plain(std::string_view text) {
    for (const char c : text)
        if (c < ' ' || c > '~' || c == '"' || c == '\\')
            return false;
    return true;
}

constexpr std::uint32_t replacement = 0xFFFD;

/// What is no character, and controls, are replaced.
void append_escaped(std::string& out, std::string_view text, bool quoted) {
    if (is_plain(text)) {
        out.append(text);
        return;
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = cimxml::xml_character_length(text, at);
        const char c = text[at];
        if (c == '\\' || (c == '"' && quoted))
            out.append(1, '\\').append(1, c);
        else if (c == '\n')
            out += "\\n";
        else if (length == 0 || (length == 1 && (static_cast<unsigned char>(c) < ' ' || c == 0x7f)))
            cimxml::append_utf8(out, replacement);
        else
            out.append(text.substr(at, length));
        at += length == 0 ? 1 : length;
    }
}

} // namespace

void append_head(std::string& out, std::string_view name, std::string_view type, std::string_view help) {
    out.append("# HELP ").append(name).append(" ");
    append_escaped(out, help, false);
    out.append("\n# TYPE ").append(name).append(" ").append(type).append("\n");
}

void append_label(std::string& out, std::string_view name, std::string_view value) {
    if (!out.empty() && out.back() != '{')
        out += ',';
    out.append(name).append("=\"");
    append_escaped(out, value, true);
    out += '"';
}

void append_number(std::string& out, std::uint64_t number) {
    append_digits(out, number);
}

void append_number(std::string& out, std::int64_t number) {
    append_digits(out, number);
}

void append_number(std::string& out, double number) {
    if (std::isnan(number))
        out += "NaN";
    else if (std::isinf(number))
        out += number < 0 ? "-Inf" : "+Inf";
    else
        append_digits(out, number);
}

void append_counter(std::string& out, std::uint64_t value, const Unit& unit) {
    const std::uint64_t scaled = value * unit.times % exact; // 2^64 is a multiple of 2^53
    if (unit.by == 1)
        append_digits(out, scaled);
    else
        append_number(out, static_cast<double>(scaled) / static_cast<double>(unit.by));
}

} // namespace cmpihost::metrics
