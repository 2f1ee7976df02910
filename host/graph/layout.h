// Where a graph's objects are drawn.
#pragma once

#include "host/graph/graph.h"

namespace cmpihost {

/// A place on a grid: columns hold the objects of one class each.
struct Cell {
    std::size_t column = 0;
    std::size_t row = 0;
};

struct Layout {
    std::vector<Cell> cells; ///< of each object of the graph
    std::size_t columns = 0;
    std::size_t rows = 0;
};

/// Classes that have many ties to each other stand side by side, and objects beside those that they are tied to.
Layout layout_of(const Graph& graph);

/// The first object in the middle of one column, all others in a second one.
Layout star_of(const Graph& graph);

} // namespace cmpihost
