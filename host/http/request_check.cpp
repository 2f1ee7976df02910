#include "host/http/request_check.h"

#include "host/http/text.h"

#include <algorithm>

namespace cmpihost::http {

namespace {

constexpr std::string_view cim_path = "/cimom";
constexpr std::string_view extension = "http://www.dmtf.org/cim/mapping/http/v1.0";
constexpr std::size_t longest_host = 255;

Refusal refused(unsigned status, std::string cim_error = {}) {
    return {status, std::move(cim_error), {}, {}};
}

/// Takes the text up to the next separator off, without blanks around it.
std::string_view take_part(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view part = trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

std::string_view unquoted(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

/// The value of a parameter `name=value`; nothing if this is another one.
std::optional<std::string_view> parameter(std::string_view text, std::string_view name) {
    const std::string_view found = take_part(text, '=');
    return same_name(found, name) ? std::optional(unquoted(trimmed(text))) : std::nullopt;
}

/// XML in UTF-8, under one of its two names.
bool is_xml(const std::string* content_type) {
    if (content_type == nullptr)
        return false;
    std::string_view rest = *content_type;
    const std::string_view type = take_part(rest, ';');
    if (!same_name(type, "application/xml") && !same_name(type, "text/xml"))
        return false;
    while (!rest.empty()) {
        const auto charset = parameter(take_part(rest, ';'), "charset");
        if (charset && !same_name(*charset, "utf-8"))
            return false;
    }
    return true;
}

/// The prefix that the header Man gives to the names of CIM headers. Nothing if it names no extension of ours.
std::optional<std::string> prefix_in(const RequestHead& head) {
    const std::string* man = head.field("Man");
    if (man == nullptr || head.count("Man") > 1)
        return std::nullopt;
    std::string_view rest = *man;
    if (unquoted(take_part(rest, ';')) != extension)
        return std::nullopt;
    while (!rest.empty()) {
        const auto ns = parameter(take_part(rest, ';'), "ns");
        if (ns && ns->size() == 2 && std::ranges::all_of(*ns, [](char c) { return c >= '0' && c <= '9'; }))
            return std::string(*ns) + "-";
    }
    return std::nullopt;
}

std::variant<CimHeaders, Refusal> check_cim_headers(const RequestHead& head, const std::string& prefix) {
    const auto is_doubled = [&](const char* name) { return head.count(prefix + name) > 1; };
    if (is_doubled("CIMOperation") || is_doubled("CIMMethod") || is_doubled("CIMObject"))
        return refused(400);
    const std::string* operation = head.field(prefix + "CIMOperation");
    if (operation == nullptr)
        return refused(400);
    if (!same_name(*operation, "MethodCall"))
        return refused(400, "unsupported-operation");
    if (head.field(prefix + "CIMBatch") != nullptr)
        return refused(501, "multiple-requests-unsupported");
    const std::string* method = head.field(prefix + "CIMMethod");
    const std::string* object = head.field(prefix + "CIMObject");
    if (method == nullptr || object == nullptr)
        return refused(400, "header-mismatch");
    return CimHeaders{*method, *object, prefix};
}

std::variant<CimHeaders, Refusal> check_content(const RequestHead& head, const std::string& prefix) {
    if (!head.length && head.field("Transfer-Encoding") == nullptr)
        return refused(411);
    if (!is_xml(head.field("Content-Type")) || head.count("Content-Type") > 1)
        return refused(400);
    return check_cim_headers(head, prefix);
}

} // namespace

unsigned framing_fault(const RequestHead& head) {
    const std::string* encoding = head.field("Transfer-Encoding");
    const bool chunked = encoding != nullptr && head.count("Transfer-Encoding") == 1 &&
                         same_name(trimmed(*encoding), "chunked") && head.version_1_1 && !head.length;
    return encoding == nullptr || chunked ? 0 : 400;
}

std::optional<std::string> host_of(const RequestHead& head) {
    const std::string* host = head.field("Host");
    if (host == nullptr)
        return head.version_1_1 ? std::nullopt : std::optional(std::string());
    const auto fits = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("-._:[]").find(c) != std::string_view::npos;
    };
    if (head.count("Host") > 1 || host->size() > longest_host || !std::ranges::all_of(*host, fits))
        return std::nullopt;
    return *host;
}

std::variant<CimHeaders, Refusal> check_request(const RequestHead& head) {
    if (!host_of(head))
        return refused(400);
    const bool extended = head.method == "M-POST";
    const bool page = head.method == "GET" || head.method == "HEAD";
    if (!extended && !page && head.method != "POST")
        return Refusal{501, {}, {{"Allow", "POST, M-POST, GET, HEAD"}}, {}};
    if (extended && !head.version_1_1)
        return refused(400);
    if (page || head.target != cim_path)
        return refused(404);
    if (!extended)
        return check_content(head, {});
    const auto prefix = prefix_in(head);
    if (!prefix)
        return refused(510);
    auto checked = check_content(head, *prefix);
    if (auto* refusal = std::get_if<Refusal>(&checked))
        refusal->prefix = *prefix;
    return checked;
}

} // namespace cmpihost::http
