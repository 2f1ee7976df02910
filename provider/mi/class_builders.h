// Which builder serves a class.
#pragma once

#include <span>

#include <strings.h>

namespace fcip {

/// A row of an enumerator's table: the class that is tested and its builder.
template <typename Builder>
struct class_builder {
    const char* class_name;
    Builder* build;
};

/// The builder of the first row whose class it is, without regard to case; null if there is none.
template <typename Builder>
Builder* builder_of(std::span<const class_builder<Builder>> rows, const char* class_name) {
    for (const auto& row : rows)
        if (strcasecmp(row.class_name, class_name) == 0)
            return row.build;
    return nullptr;
}

} // namespace fcip
