// What stands before the body of an HTTP request.
#pragma once

#include "host/http/secret.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cmpihost::http {

struct Field {
    std::string name;
    std::string value;
};

struct RequestHead {
    std::string method;
    std::string target;
    bool version_1_1 = true;
    std::vector<Field> fields;           ///< but for Authorization
    std::vector<Secret> authorizations;  ///< values of the headers of that name
    std::optional<std::uint64_t> length; ///< of the body, if it is announced
    bool keep_alive = true;

    /// The value of the first field of this name, in any case; null if there is none.
    const std::string* field(std::string_view name) const;

    /// How many fields have this name.
    std::size_t count(std::string_view name) const;
};

} // namespace cmpihost::http
