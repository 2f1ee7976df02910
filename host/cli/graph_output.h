// A graph of objects as text and for Graphviz.
#pragma once

#include "host/graph/graph.h"

namespace cmpihost {

/// For people: every object with the associations that it has, and how many there are.
std::string text_of(const Graph& graph, const mof::Schema& schema);

/// In the language of dot: objects as boxes in the colour of their family.
std::string dot_of(const Graph& graph, const mof::Schema& schema);

/// One JSON object: objects as in answers, and associations with the numbers of their ends among them.
std::string json_of(const Graph& graph);

} // namespace cmpihost
