#include "host/cli/graph_output.h"

#include "host/cim/path_text.h"
#include "host/cli/json_object.h"
#include "host/cli/output.h"
#include "host/cli/table.h"

#include <map>

namespace cmpihost {

namespace {

/// A name without the prefix of its schema.
std::string short_name(const std::string& name) {
    return name.substr(name.find('_') + 1); // the whole name if there is no prefix
}

std::string value_of(const Property& key) {
    const auto* text = std::get_if<std::string>(&key.value.data);
    return text == nullptr || text->empty() ? text_value(key) : printable(*text);
}

/// Class and keys of an object, apart so that an output can put them on two lines.
struct Label {
    std::string class_name;
    std::string keys;
};

std::string all_keys(const Object& object) {
    std::string text;
    for (const Property& key : object.keys)
        text += (text.empty() ? "" : ", ") + key.name + "=" + value_of(key);
    return text;
}

/// The key that tells objects of a class apart on most systems.
std::string main_key(const Object& object) {
    for (const char* name : {"Name", "InstanceID", "DeviceID"})
        if (const Property* key = object.key(name))
            return value_of(*key);
    return all_keys(object);
}

/// Labels of all objects; all keys where the main one is not enough.
std::vector<Label> labels_of(const Graph& graph, const mof::Schema& schema) {
    std::vector<Label> labels;
    std::map<std::string, unsigned> uses;
    for (const Object& object : graph.objects) {
        const mof::ClassDeclaration* declaration = schema.find(object.class_name);
        labels.push_back({short_name(declaration ? declaration->name : object.class_name), main_key(object)});
        ++uses[labels.back().class_name + ' ' + labels.back().keys];
    }
    for (std::size_t i = 0; i < labels.size(); ++i)
        if (uses[labels[i].class_name + ' ' + labels[i].keys] > 1)
            labels[i].keys = all_keys(graph.objects[i]);
    return labels;
}

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
