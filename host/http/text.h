// Texts of headers.
#pragma once

#include "host/cim/names.h"

#include <string_view>

namespace cmpihost::http {

/// Without blanks and tabs around it.
constexpr std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

} // namespace cmpihost::http
