// Where a graph's objects are drawn.
#include "host/graph/layout.h"

#include <gtest/gtest.h>

#include <set>

namespace cmpihost {
namespace {

Object object_of(const std::string& class_name) {
    Object object;
    object.class_name = class_name;
    return object;
}

std::string shown(const Layout& layout) {
    std::string text;
    for (const Cell& cell : layout.cells)
        text += std::to_string(cell.column) + "/" + std::to_string(cell.row) + " ";
    return text;
}

TEST(Layouts, ColumnsHoldAClassEach) {
    Graph graph;
    for (const char* name : {"A", "B", "a", "C"})
        graph.objects.push_back(object_of(name));
    const Layout layout = layout_of(graph);
    EXPECT_EQ(layout.columns, 3U);
    EXPECT_EQ(layout.rows, 2U);
    EXPECT_EQ(shown(layout), "0/0 1/0 0/1 2/0 ");
}

TEST(Layouts, TiedClassesStandSideBySideAndObjectsBesideTheirs) {
    Graph graph;
    for (const char* name : {"A", "A", "B", "C", "C"}) // A is tied to C, crosswise
        graph.objects.push_back(object_of(name));
    graph.edges = {{"X", 0, 4, false}, {"X", 1, 3, false}, {"X", 3, 2, false}};
    EXPECT_EQ(shown(layout_of(graph)), "0/0 0/1 2/0 1/1 1/0 ");
}

TEST(Layouts, NoTwoObjectsShareAPlace) {
    Graph graph;
    for (int i = 0; i < 40; ++i)
        graph.objects.push_back(object_of("C" + std::to_string(i % 7)));
    for (std::size_t i = 0; i < 39; ++i)
        graph.edges.push_back({"X", i, (i * 5) % 40, false});
    std::set<std::pair<std::size_t, std::size_t>> places;
    for (const Cell& cell : layout_of(graph).cells)
        EXPECT_TRUE(places.emplace(cell.column, cell.row).second);
}

TEST(Layouts, StarHasItsFirstObjectInTheMiddle) {
    Graph graph;
    EXPECT_EQ(layout_of(graph).columns, 0U);
    for (int i = 0; i < 4; ++i)
        graph.objects.push_back(object_of("A"));
    EXPECT_EQ(shown(star_of(graph)), "0/1 1/0 1/1 1/2 ");
    graph.objects.resize(1);
    EXPECT_EQ(shown(star_of(graph)), "0/0 ");
    EXPECT_EQ(star_of(graph).columns, 1U);
}

} // namespace
} // namespace cmpihost
