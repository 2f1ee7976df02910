#include "host/http/page_check.h"

#include "host/cim/names.h"
#include "host/cim/whole_number.h"

#include <algorithm>
#include <array>

namespace cmpihost::http {

namespace {

/// Without a port. An IPv6 address keeps its brackets.
std::string_view without_port(std::string_view host) {
    const std::size_t colon = host.rfind(':');
    const bool in_brackets = colon != std::string_view::npos && host.find(']', colon) != std::string_view::npos;
    return colon == std::string_view::npos || in_brackets ? host : host.substr(0, colon);
}

bool is_address(std::string_view host) {
    if (host.size() > 2 && host.front() == '[' && host.back() == ']')
        return true;
    return !host.empty() && host.find_first_not_of("0123456789.") == std::string_view::npos;
}

/// Whether a browser says that another site's page is behind this. Others do not say anything.
bool comes_from_elsewhere(const RequestHead& head) {
    const std::string* site = head.field("Sec-Fetch-Site");
    return site != nullptr && !same_name(*site, "same-origin") && !same_name(*site, "none");
}

/// Seconds that the scraper waits; 0 if it does not say, or nothing that could be meant.
std::chrono::milliseconds time_limit(const RequestHead& head) {
    const std::string* text = head.field("X-Prometheus-Scrape-Timeout-Seconds");
    if (text == nullptr)
        return {};
    const auto time = whole_number<double>(*text);
    constexpr double longest = 3600;
    if (!time || !(*time > 0) || *time > longest)
        return {};
    return std::chrono::milliseconds(static_cast<std::int64_t>(*time * 1000));
}

/// Whether a browser gets this for another site's page, and not for somebody who follows a link from there.
bool is_fetched_elsewhere(const RequestHead& head) {
    const std::string* mode = head.field("Sec-Fetch-Mode");
    return comes_from_elsewhere(head) && (mode == nullptr || !same_name(*mode, "navigate"));
}

} // namespace

std::string_view path_of(std::string_view target) {
    return target.substr(0, target.find('?'));
}

bool is_page(const RequestHead& head) {
    static constexpr std::array pages{std::string_view("/"), std::string_view("/graph"), metrics_path};
    static constexpr std::array folders{std::string_view("/class/"), std::string_view("/object/"),
                                        std::string_view("/assets/")};
    if (head.method != "GET" && head.method != "HEAD")
        return false;
    const std::string_view path = path_of(head.target);
    return std::ranges::find(pages, path) != pages.end() ||
           std::ranges::any_of(folders, [path](std::string_view folder) { return path.starts_with(folder); });
}

bool is_own_host(std::string_view host, std::span<const std::string> names) {
    const std::string_view name = without_port(host);
    return is_address(name) || same_name(name, "localhost") ||
           std::ranges::any_of(names, [name](const std::string& own) { return same_name(own, name); });
}

std::variant<server::PageRequest, Refusal> check_page(const RequestHead& head, std::span<const std::string> names) {
    const auto host = host_of(head);
    if (!host)
        return Refusal{400};
    if (!host->empty() && !is_own_host(*host, names))
        return Refusal{421};
    if (is_fetched_elsewhere(head))
        return Refusal{403};
    return server::PageRequest{head.target, time_limit(head)};
}

bool is_cross_site(const RequestHead& head, std::span<const std::string> names) {
    if (comes_from_elsewhere(head))
        return true;
    const std::string* origin = head.field("Origin");
    if (origin == nullptr)
        return false;
    const std::size_t scheme = origin->find("://");
    const std::string_view from = std::string_view(*origin).substr(scheme == std::string::npos ? 0 : scheme + 3);
    const std::string* host = head.field("Host");
    return scheme == std::string::npos || host == nullptr || !same_name(from, *host) || !is_own_host(from, names);
}

} // namespace cmpihost::http
