// Paths as a table of their keys, for people.
#pragma once

#include "host/cim/object.h"
#include "host/cli/table.h"

#include <optional>

namespace cmpihost {

/// Waits for some paths before it makes the columns, whose widths hold from then on. A path that does not fit into the
/// columns is a line of text, and so are all paths where the first ones have references as keys.
class PathTable {
  public:
    PathTable(std::string requested_class, bool colour)
        : requested_class_(std::move(requested_class)), colour_(colour) {}

    /// What can be shown now.
    std::string add(const Object& path);

    /// What still waits.
    std::string rest();

  private:
    std::string begin_table();
    std::string begin_lines();
    std::string row_or_line(const Object& path) const;
    Row row_of(const Object& path) const;

    std::string requested_class_;
    bool colour_;
    std::vector<Object> waiting_;
    bool lines_ = false;
    bool class_column_ = false;
    std::vector<std::string> names_;                 ///< of the columns for keys
    std::optional<std::vector<std::size_t>> widths_; ///< once the table has begun
};

} // namespace cmpihost
