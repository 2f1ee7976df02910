// A graph as a drawing.
#pragma once

#include "host/graph/layout.h"

#include <functional>

namespace cmpihost::pages {

/// SVG with a link at each object. Colours come from the style sheet, by class names.
/// @param url of an object's page
std::string svg_of(const Graph& graph, const Layout& layout, const mof::Schema& schema, const std::string& title,
                   const std::function<std::string(const Object&)>& url);

} // namespace cmpihost::pages
