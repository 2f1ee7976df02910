#include "host/http/request_line.h"

namespace cmpihost::http {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// "HTTP/1.1" and its like; "HTTP/2" of later versions, too.
bool is_version(std::string_view text) {
    constexpr std::string_view name = "HTTP/";
    if (!text.starts_with(name))
        return false;
    text.remove_prefix(name.size());
    return (text.size() == 1 && is_digit(text[0])) ||
           (text.size() == 3 && is_digit(text[0]) && text[1] == '.' && is_digit(text[2]));
}

} // namespace

unsigned fault_of_first_line(std::string_view bytes) {
    const std::string_view method = bytes.substr(0, bytes.find(' '));
    for (const char c : method.substr(0, method.find('\r')))
        if (c <= ' ' || c > '~')
            return 400;
    const std::size_t end = bytes.find('\n');
    if (end == std::string_view::npos)
        return 0;
    if (end == 0 || bytes[end - 1] != '\r')
        return 400;
    const std::string_view line = bytes.substr(0, end - 1);
    const std::size_t blank = line.rfind(' ');
    if (blank == std::string_view::npos || !is_version(line.substr(blank + 1)))
        return 400;
    const std::string_view version = line.substr(blank + 1);
    return version == "HTTP/1.1" || version == "HTTP/1.0" ? 0 : 505;
}

} // namespace cmpihost::http
