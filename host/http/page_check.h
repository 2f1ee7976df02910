// Requests of browsers and scrapers: which are for a page, and which are refused.
#pragma once

#include "host/http/request_check.h"
#include "host/server/question.h"

#include <span>

namespace cmpihost::http {

/// Whether a request is for one of the server's pages: GET or HEAD of a path that it has.
bool is_page(const RequestHead& head);

/// Whether a Host (or its like, with or without a port) is this server: localhost, an address in digits, or one of the
/// names. Any other name could be one that somebody else has made lead here.
bool is_own_host(std::string_view host, std::span<const std::string> names);

/// What a page's request asks for, or why it is refused.
std::variant<server::PageRequest, Refusal> check_page(const RequestHead& head, std::span<const std::string> names);

/// Whether a browser sends this on behalf of another site's page.
bool is_cross_site(const RequestHead& head, std::span<const std::string> names);

/// The path of a target, without its query.
std::string_view path_of(std::string_view target);

inline constexpr std::string_view metrics_path = "/metrics";

} // namespace cmpihost::http
