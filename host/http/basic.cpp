#include "host/http/basic.h"

#include "host/http/text.h"

#include <algorithm>

namespace cmpihost::http {

namespace {

int digit_of(char c) {
    if (c >= 'A' && c <= 'Z')
        return c - 'A';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 26;
    if (c >= '0' && c <= '9')
        return c - '0' + 52;
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

/// Text of four characters a group, the last one padded. Nothing but this form is taken.
bool decode_base64(std::string_view text, std::vector<char>& out) {
    if (text.empty() || text.size() % 4 != 0)
        return false;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    text.remove_suffix(padding);
    unsigned bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        const int digit = digit_of(c);
        if (digit < 0)
            return false;
        bits = ((bits << 6) | static_cast<unsigned>(digit)) & 0xffff;
        count += 6;
        if (count >= 8) {
            count -= 8;
            out.push_back(static_cast<char>((bits >> count) & 0xff));
        }
    }
    return (bits & ((1U << count) - 1)) == 0; // what is left over has to be zero
}

bool has_controls(std::string_view text) {
    return std::ranges::any_of(text, [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

std::optional<Credentials> split(std::string_view decoded) {
    const std::size_t colon = decoded.find(':');
    if (decoded.size() > max_credentials || colon == std::string_view::npos || has_controls(decoded))
        return std::nullopt;
    const std::string_view password = decoded.substr(colon + 1);
    if (password.size() > max_password)
        return std::nullopt;
    return Credentials{std::string(decoded.substr(0, colon)), Secret(password)};
}

} // namespace

std::optional<Credentials> read_basic(std::string_view header) {
    constexpr std::string_view scheme = "Basic ";
    if (!same_name(header.substr(0, scheme.size()), scheme))
        return std::nullopt;
    header = trimmed(header.substr(scheme.size()));
    if (header.size() > (max_credentials + 2) / 3 * 4)
        return std::nullopt;
    std::vector<char> decoded;
    decoded.reserve(header.size());
    auto credentials = decode_base64(header, decoded) ? split({decoded.data(), decoded.size()}) : std::nullopt;
    OPENSSL_cleanse(decoded.data(), decoded.size());
    return credentials;
}

} // namespace cmpihost::http
