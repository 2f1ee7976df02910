// Tables by class: the one shape of a row, and the one way to find it.
#pragma once

#include <iterator>

#include <strings.h>

namespace fcip {

/// A row of a table by class: the class that is tested, and what serves it.
template <typename Service>
struct class_row {
    const char* class_name;
    Service serves;
};

/// The first row whose class_name it is, without regard to case; null if there is none, and for a null class name.
/// @param rows an array or span, of class_row or of any rows with a class_name
template <typename Rows>
auto row_for(const Rows& rows, const char* class_name) {
    const auto* const end = std::data(rows) + std::size(rows);
    for (const auto* row = std::data(rows); row != end; ++row)
        if (class_name != nullptr && strcasecmp(row->class_name, class_name) == 0)
            return row;
    return static_cast<decltype(std::data(rows) + 0)>(nullptr);
}

} // namespace fcip
