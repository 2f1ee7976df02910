// How classes are shown and measured: what a file beside their MOF says.
#pragma once

#include "host/mof/schema.h"

#include <map>
#include <string>
#include <vector>

namespace cmpihost::views {

/// What is said of a class.
struct ClassView {
    std::string name;
    std::vector<std::string> columns{}; ///< properties that tables show first
    std::vector<std::string> curves{};  ///< counters that are worth a curve
    bool metrics = false;               ///< measured unless the command line names other classes
    std::string note{};                 ///< what who reads its metrics has to know; empty: nothing
    std::map<std::string, std::map<std::string, std::string>> states{}; ///< property to value to the state's name
    bool slow = false; ///< takes long to enumerate where there are many objects
};

struct Views {
    std::vector<std::string> acronyms; ///< words that stay together in names of metrics
    std::vector<ClassView> classes;

    /// What is said of the class itself, whose name is in any case; null: nothing.
    const ClassView* find(std::string_view class_name) const;

    /// What holds for a class: what is said of it, and of what is not, what is said of its nearest superclass. Whether
    /// it is measured is its own alone.
    ClassView of(const mof::ClassDeclaration& declaration, const mof::Schema& schema) const;
};

/// Reads a file in the form of TOML. It may speak of more classes than the schema has: those are left out.
/// @throws std::runtime_error one line: it cannot be read, is no such file, or names a property that its class lacks
Views read_views(const std::string& file, const mof::Schema& schema);

} // namespace cmpihost::views
