#include "host/pages/target.h"

#include "host/cim/whole_number.h"

#include <algorithm>

namespace cmpihost::pages {

namespace {

std::optional<char> escaped_character(std::string_view digits) {
    const auto code = whole_number<unsigned char>(digits, 16);
    return digits.size() == 2 && code ? std::optional(static_cast<char>(*code)) : std::nullopt;
}

/// @param plus whether + stands for a blank, as forms write it
std::optional<std::string> decoded(std::string_view text, bool plus) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            out += plus && text[at] == '+' ? ' ' : text[at];
            continue;
        }
        const auto character = escaped_character(text.substr(at + 1, 2));
        if (!character)
            return std::nullopt;
        out += *character;
        at += 2;
    }
    return out;
}

bool read_pair(std::string_view text, Target& target) {
    const std::size_t end = std::min(text.find('='), text.size());
    auto name = decoded(text.substr(0, end), true);
    auto value = decoded(text.substr(std::min(end + 1, text.size())), true);
    if (!name || !value)
        return false;
    target.query.emplace_back(std::move(*name), std::move(*value));
    return true;
}

bool is_unreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~").find(c) != std::string_view::npos;
}

std::string encoded_but_for(std::string_view text, std::string_view left) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (is_unreserved(c) || left.find(c) != std::string_view::npos)
            out += c;
        else
            out.append({'%', digits[code >> 4U], digits[code & 15U]});
    }
    return out;
}

} // namespace

std::string Target::value(std::string_view name) const {
    const auto found =
        std::find_if(query.begin(), query.end(), [name](const auto& pair) { return pair.first == name; });
    return found == query.end() ? std::string() : found->second;
}

std::optional<Target> read_target(std::string_view text) {
    const std::size_t end = std::min(text.find('?'), text.size());
    auto path = decoded(text.substr(0, end), false);
    if (!path)
        return std::nullopt;
    Target target{std::move(*path), {}};
    std::string_view rest = text.substr(std::min(end + 1, text.size()));
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('&'), rest.size());
        if (length > 0 && !read_pair(rest.substr(0, length), target))
            return std::nullopt;
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return target;
}

std::string encoded(std::string_view text) {
    return encoded_but_for(text, "");
}

std::string encoded_path(std::string_view text) {
    return encoded_but_for(text, "/:=,;'()*!$@");
}

} // namespace cmpihost::pages
