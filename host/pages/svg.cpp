#include "host/pages/svg.h"

#include "host/graph/labels.h"
#include "host/pages/html.h"

namespace cmpihost::pages {

namespace {

constexpr std::size_t box_width = 190;
constexpr std::size_t box_height = 38;
constexpr std::size_t column_width = 270;
constexpr std::size_t row_height = 56;
constexpr std::size_t margin = 10;
constexpr std::size_t longest_label = 24; // characters that a box has room for

/// A text cut to fit, between characters.
std::string fitted(const std::string& text) {
    std::size_t end = 0;
    std::size_t characters = 0;
    while (end < text.size() && characters < longest_label) {
        ++end;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80)
            ++end;
        ++characters;
    }
    return end < text.size() ? text.substr(0, end) + "\xE2\x80\xA6" : text;
}

struct Point {
    std::size_t x;
    std::size_t y;
};

Point corner(const Cell& cell) {
    return {margin + cell.column * column_width, margin + cell.row * row_height};
}

std::string number(std::size_t value) {
    return std::to_string(value);
}

/// From the right side of one box to the left side of the other; within a column, around the right side.
std::string tie(const GraphEdge& edge, const Layout& layout) {
    Cell first = layout.cells[edge.from];
    Cell second = layout.cells[edge.to];
    if (second.column < first.column)
        std::swap(first, second);
    const Point begin = {corner(first).x + box_width, corner(first).y + box_height / 2};
    const bool aside = first.column == second.column;
    const Point end = {corner(second).x + (aside ? box_width : 0), corner(second).y + box_height / 2};
    const std::size_t bend = (column_width - box_width) / 2;
    return "<path class=\"tie\" d=\"M" + number(begin.x) + " " + number(begin.y) + "C" + number(begin.x + bend) + " " +
           number(begin.y) + " " + number(aside ? end.x + bend : end.x - bend) + " " + number(end.y) + " " +
           number(end.x) + " " + number(end.y) + "\"><title>" + escaped(short_name(edge.association)) +
           "</title></path>\n";
}

std::string box(const Cell& cell, const Label& label, const std::string& url) {
    const Point at = corner(cell);
    return "<a href=\"" + escaped(url) + "\"><title>" + escaped(label.class_name + " " + label.keys) +
           "</title><rect class=\"box\" x=\"" + number(at.x) + "\" y=\"" + number(at.y) + "\" width=\"" +
           number(box_width) + "\" height=\"" + number(box_height) + "\" rx=\"5\"/><text class=\"class\" x=\"" +
           number(at.x + 8) + "\" y=\"" + number(at.y + 16) + "\">" + escaped(fitted(label.class_name)) +
           "</text><text x=\"" + number(at.x + 8) + "\" y=\"" + number(at.y + 31) + "\">" +
           escaped(fitted(label.keys)) + "</text></a>\n";
}

} // namespace

std::string svg_of(const Graph& graph, const Layout& layout, const mof::Schema& schema, const std::string& title,
                   const std::function<std::string(const Object&)>& url) {
    const std::vector<Label> labels = labels_of(graph, schema);
    const std::string width = number(margin * 2 + layout.columns * column_width - (column_width - box_width) / 2);
    const std::string height = number(margin * 2 + layout.rows * row_height);
    std::string svg = "<svg role=\"group\" aria-labelledby=\"drawing\" width=\"" + width + "\" height=\"" + height +
                      "\" viewBox=\"0 0 " + width + " " + height + "\">\n<title id=\"drawing\">" + escaped(title) +
                      "</title>\n";
    for (const GraphEdge& edge : graph.edges)
        svg += tie(edge, layout);
    for (std::size_t object = 0; object < graph.objects.size(); ++object)
        svg += box(layout.cells[object], labels[object], url(graph.objects[object]));
    return svg + "</svg>\n";
}

} // namespace cmpihost::pages
