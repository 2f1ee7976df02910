#include "host/cli/graph_output.h"

#include "host/cim/path_text.h"
#include "host/cli/json_object.h"
#include "host/cli/output.h"
#include "host/cli/table.h"
#include "host/graph/labels.h"

#include <map>

namespace cmpihost {

namespace {

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string dot_quoted(const std::string& text) {
    std::string out;
    for (const char c : printable(text)) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    return out;
}

struct Family {
    const char* ancestor;
    const char* colour;
};

/// Classes of the standard that tell families apart, and what is drawn in their colour. The first one counts.
constexpr Family families[] = {
    {"CIM_System", "#f4cccc"},
    {"CIM_RemoteServiceAccessPoint", "#d9d2e9"},
    {"CIM_ServiceAccessPoint", "#cfe2f3"},
    {"CIM_LogicalDevice", "#fce5cd"},
    {"CIM_SettingData", "#d9ead3"},
    {"CIM_StatisticalData", "#fff2cc"},
};

const char* colour_of(const Object& object, const mof::Schema& schema) {
    for (const Family& family : families)
        if (schema.is_a(object.class_name, family.ancestor))
            return family.colour;
    return "#eeeeee";
}

} // namespace

std::string text_of(const Graph& graph, const mof::Schema& schema) {
    const std::vector<Label> labels = labels_of(graph, schema);
    std::vector<std::vector<Row>> ties(graph.objects.size());
    const auto tie = [&](std::size_t object, const GraphEdge& edge, const char* arrow, std::size_t other) {
        ties[object].push_back(
            {"  " + short_name(edge.association), arrow, labels[other].class_name + " " + labels[other].keys});
    };
    for (const GraphEdge& edge : graph.edges) {
        tie(edge.from, edge, edge.both ? "<->" : "->", edge.to);
        if (edge.from != edge.to)
            tie(edge.to, edge, edge.both ? "<->" : "<-", edge.from);
    }
    std::string text;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        text += labels[i].class_name + " " + labels[i].keys + "\n";
        for (const std::string& line : aligned(ties[i]))
            text += line + "\n";
        text += "\n";
    }
    return text + counted(graph.objects.size(), "object") + ", " + counted(graph.edges.size(), "association") + "\n";
}

std::string dot_of(const Graph& graph, const mof::Schema& schema) {
    std::string dot = "digraph objects {\n"
                      "    rankdir=LR;\n"
                      "    node [shape=box, style=\"rounded,filled\", fontname=\"Helvetica\", fontsize=11];\n"
                      "    edge [fontname=\"Helvetica\", fontsize=9, color=\"#666666\", fontcolor=\"#444444\"];\n";
    const std::vector<Label> labels = labels_of(graph, schema);
    for (std::size_t i = 0; i < labels.size(); ++i)
        dot += "    o" + std::to_string(i + 1) + " [label=\"" + dot_quoted(labels[i].class_name) + "\\n" +
               dot_quoted(labels[i].keys) + "\", fillcolor=\"" + colour_of(graph.objects[i], schema) +
               "\", tooltip=\"" + dot_quoted(path_text(graph.objects[i])) + "\"];\n";
    for (const GraphEdge& edge : graph.edges)
        dot += "    o" + std::to_string(edge.from + 1) + " -> o" + std::to_string(edge.to + 1) + " [label=\"" +
               dot_quoted(short_name(edge.association)) + "\"" + (edge.both ? ", dir=both" : "") + "];\n";
    return dot + "}\n";
}

std::string json_of(const Graph& graph) {
    using Json = nlohmann::ordered_json;
    Json objects = Json::array();
    for (const Object& object : graph.objects)
        objects.push_back(json_of_object(object));
    Json associations = Json::array();
    for (const GraphEdge& edge : graph.edges)
        associations.push_back(
            {{"class", edge.association}, {"from", edge.from}, {"to", edge.to}, {"both", edge.both}});
    const Json json{{"objects", std::move(objects)}, {"associations", std::move(associations)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace cmpihost
