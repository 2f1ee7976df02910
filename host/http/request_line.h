// The first line of an HTTP request.
#pragma once

#include <string_view>

namespace cmpihost::http {

/// What the first bytes of a request show: 0 while nothing speaks against them, 400 if they are no HTTP, 505 if they
/// are of a version other than 1.0 and 1.1.
unsigned fault_of_first_line(std::string_view bytes);

} // namespace cmpihost::http
