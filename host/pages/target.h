// The target of a request: path and query, and how both are written.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cmpihost::pages {

struct Target {
    std::string path;
    std::vector<std::pair<std::string, std::string>> query;

    /// The value of this name; empty if there is none.
    std::string value(std::string_view name) const;
};

/// Reads what stands in a request line. Nothing: an escape in it is none.
std::optional<Target> read_target(std::string_view text);

/// Text as a part of a path or of a query: all but letters, digits and -._~ as %XX.
std::string encoded(std::string_view text);

/// Likewise, but with what a path may have besides left as it is: / : = , ; ' ( ) * ! $ @
std::string encoded_path(std::string_view text);

} // namespace cmpihost::pages
