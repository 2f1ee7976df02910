#include "host/graph/layout.h"

#include "host/cim/names.h"

#include <algorithm>

namespace cmpihost {

namespace {

using Indices = std::vector<std::size_t>;

/// The class of each object, as a number in the order in which the classes were found.
Indices classes_of(const Graph& graph) {
    NameMap<std::size_t> numbers;
    Indices classes;
    for (const Object& object : graph.objects)
        classes.push_back(numbers.emplace(object.class_name, numbers.size()).first->second);
    return classes;
}

/// The place of each class: the first one that was found, then always the one with the most ties to those placed last.
Indices order_classes(const Graph& graph, const Indices& classes) {
    const std::size_t count = classes.empty() ? 0 : *std::max_element(classes.begin(), classes.end()) + 1;
    std::vector<Indices> ties(count, Indices(count));
    for (const GraphEdge& edge : graph.edges) {
        ++ties[classes[edge.from]][classes[edge.to]];
        ++ties[classes[edge.to]][classes[edge.from]];
    }
    Indices places(count);
    std::vector<std::size_t> weights(count);
    std::vector<bool> placed(count);
    std::size_t next = 0;
    for (std::size_t place = 0; place < count; ++place) {
        places[next] = place;
        placed[next] = true;
        for (std::size_t other = 0; other < count; ++other)
            weights[other] = weights[other] / 4 + 4 * ties[next][other];
        for (std::size_t other = 0; other < count; ++other)
            if (!placed[other] && (placed[next] || weights[other] > weights[next]))
                next = other;
    }
    return places;
}

/// The objects of a column in the order of the middle of those that they are tied to in columns before it.
void order_column(Indices& objects, const Graph& graph, Layout& layout, const std::vector<Indices>& neighbours) {
    std::vector<double> middles(graph.objects.size());
    for (const std::size_t object : objects) {
        double sum = 0;
        std::size_t count = 0;
        for (const std::size_t other : neighbours[object])
            if (layout.cells[other].column < layout.cells[object].column) {
                sum += static_cast<double>(layout.cells[other].row);
                ++count;
            }
        middles[object] = count == 0 ? static_cast<double>(objects.size()) : sum / static_cast<double>(count);
    }
    std::stable_sort(objects.begin(), objects.end(),
                     [&middles](std::size_t a, std::size_t b) { return middles[a] < middles[b]; });
    for (std::size_t row = 0; row < objects.size(); ++row)
        layout.cells[objects[row]].row = row;
}

} // namespace

Layout layout_of(const Graph& graph) {
    const Indices classes = classes_of(graph);
    const Indices places = order_classes(graph, classes);
    Layout layout;
    layout.cells.resize(graph.objects.size());
    layout.columns = places.size();
    std::vector<Indices> columns(places.size());
    for (std::size_t object = 0; object < classes.size(); ++object) {
        layout.cells[object].column = places[classes[object]];
        columns[places[classes[object]]].push_back(object);
    }
    std::vector<Indices> neighbours(graph.objects.size());
    for (const GraphEdge& edge : graph.edges) {
        neighbours[edge.from].push_back(edge.to);
        neighbours[edge.to].push_back(edge.from);
    }
    for (Indices& column : columns) {
        order_column(column, graph, layout, neighbours);
        layout.rows = std::max(layout.rows, column.size());
    }
    return layout;
}

Layout star_of(const Graph& graph) {
    Layout layout;
    layout.columns = graph.objects.size() > 1 ? 2 : graph.objects.size();
    layout.rows = std::max<std::size_t>(graph.objects.size(), 2) - 1;
    layout.cells.push_back({0, (layout.rows - 1) / 2});
    for (std::size_t object = 1; object < graph.objects.size(); ++object)
        layout.cells.push_back({1, object - 1});
    return layout;
}

} // namespace cmpihost
