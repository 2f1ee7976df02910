#include "host/http/reply_head.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace cmpihost::http {

namespace {

struct Reason {
    unsigned status;
    std::string_view text;
};

constexpr std::array reasons{
    Reason{200, "OK"},
    Reason{400, "Bad Request"},
    Reason{401, "Unauthorized"},
    Reason{403, "Forbidden"},
    Reason{404, "Not Found"},
    Reason{408, "Request Timeout"},
    Reason{411, "Length Required"},
    Reason{413, "Content Too Large"},
    Reason{421, "Misdirected Request"},
    Reason{429, "Too Many Requests"},
    Reason{431, "Request Header Fields Too Large"},
    Reason{500, "Internal Server Error"},
    Reason{501, "Not Implemented"},
    Reason{502, "Bad Gateway"},
    Reason{503, "Service Unavailable"},
    Reason{505, "HTTP Version Not Supported"},
    Reason{510, "Not Extended"},
};

/// This moment as HTTP writes it, whatever the locale.
std::string date() {
    constexpr std::array days{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d GMT",
                  days.at(static_cast<std::size_t>(parts.tm_wday)), parts.tm_mday,
                  months.at(static_cast<std::size_t>(parts.tm_mon)), parts.tm_year + 1900, parts.tm_hour, parts.tm_min,
                  parts.tm_sec);
    return text.data();
}

void append(std::string& head, std::string_view name, std::string_view value) {
    head.append(name).append(": ").append(value).append("\r\n");
}

std::string begin(unsigned status, Persistence persistence) {
    std::string head = "HTTP/1.1 " + std::to_string(status) + " ";
    head.append(reason_of(status)).append("\r\n");
    append(head, "Date", date());
    if (!persistence.keep_alive)
        append(head, "Connection", "close");
    else if (!persistence.version_1_1)
        append(head, "Connection", "keep-alive");
    return head;
}

void append_extension(std::string& head, const std::string& prefix) {
    if (prefix.empty())
        return;
    append(head, "Ext", "");
    append(head, "Man", "http://www.dmtf.org/cim/mapping/http/v1.0; ns=" + prefix.substr(0, prefix.size() - 1));
}

} // namespace

std::string_view reason_of(unsigned status) {
    const auto* found = std::ranges::find(reasons, status, &Reason::status);
    return found == reasons.end() ? "Error" : found->text;
}

std::string operation_head(const std::string& prefix, std::uint64_t bytes, std::chrono::microseconds took,
                           Persistence persistence) {
    std::string head = begin(200, persistence);
    append(head, "Content-Type", "application/xml; charset=\"utf-8\"");
    append(head, "Content-Length", std::to_string(bytes));
    append_extension(head, prefix);
    append(head, prefix + "CIMOperation", "MethodResponse");
    append(head, "WBEMServerResponseTime", std::to_string(took.count()));
    return head + "\r\n";
}

std::string page_head(unsigned status, const std::string& content_type, std::uint64_t bytes, Persistence persistence) {
    std::string head = begin(status, persistence);
    append(head, "Content-Type", content_type);
    append(head, "Content-Length", std::to_string(bytes));
    append(head, "Cache-Control", "no-store");
    append(head, "Content-Security-Policy",
           "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; "
           "form-action 'self'; base-uri 'none'; frame-ancestors 'none'");
    append(head, "X-Content-Type-Options", "nosniff");
    append(head, "Referrer-Policy", "no-referrer");
    append(head, "Cross-Origin-Resource-Policy", "same-origin");
    return head + "\r\n";
}

std::string refusal_head(const Refusal& refusal, Persistence persistence) {
    std::string head = begin(refusal.status, persistence);
    append(head, "Content-Length", "0");
    append_extension(head, refusal.prefix);
    if (!refusal.cim_error.empty())
        append(head, refusal.prefix + "CIMError", refusal.cim_error);
    for (const Field& field : refusal.headers)
        append(head, field.name, field.value);
    return head + "\r\n";
}

} // namespace cmpihost::http
