#include "host/http/request_head.h"

#include "host/cim/names.h"

#include <algorithm>

namespace cmpihost::http {

const std::string* RequestHead::field(std::string_view name) const {
    const auto found = std::ranges::find_if(fields, [name](const Field& field) { return same_name(field.name, name); });
    return found == fields.end() ? nullptr : &found->value;
}

std::size_t RequestHead::count(std::string_view name) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(fields, [name](const Field& field) { return same_name(field.name, name); }));
}

} // namespace cmpihost::http
