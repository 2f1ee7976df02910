// What objects of a graph are called.
#pragma once

#include "host/graph/graph.h"

namespace cmpihost {

/// A name without the prefix of its schema.
std::string short_name(const std::string& name);

/// Class and keys of an object, apart so that an output can put them on two lines.
struct Label {
    std::string class_name;
    std::string keys;
};

/// Labels of all objects; all keys where the main one is not enough.
std::vector<Label> labels_of(const Graph& graph, const mof::Schema& schema);

} // namespace cmpihost
