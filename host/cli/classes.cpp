#include "host/cli/classes.h"

#include "host/cli/schema_files.h"
#include "host/cli/table.h"
#include "host/mof/provider_classes.h"

#include <nlohmann/json.hpp>

namespace cmpihost {

namespace {

using Json = nlohmann::ordered_json;
using Classes = std::vector<mof::ClassDeclaration>;

/// The classes to list, each with its keys alone.
Classes listed_classes(const mof::Schema& schema) {
    Classes classes;
    for (const mof::ClassDeclaration& declaration : schema.classes()) {
        if (!mof::is_provider_class(declaration))
            continue;
        classes.push_back(declaration);
        std::erase_if(classes.back().properties,
                      [](const mof::PropertyDeclaration& property) { return !property.key; });
    }
    return classes;
}

std::string names_of(const Classes& classes) {
    std::string text;
    for (const mof::ClassDeclaration& declaration : classes)
        text += declaration.name + "\n";
    return text;
}

std::string text_of(const Classes& classes, bool colour) {
    std::vector<Row> rows{{"CLASS", "KEYS", "SUPERCLASS"}};
    for (const mof::ClassDeclaration& declaration : classes) {
        std::string keys;
        for (const mof::PropertyDeclaration& key : declaration.properties)
            keys += (keys.empty() ? "" : ", ") + key.name;
        rows.push_back({declaration.name, keys.empty() ? "-" : keys,
                        declaration.superclass.empty() ? "-" : declaration.superclass});
    }
    return table_text(rows, colour);
}

std::string mof_of(const Classes& classes) {
    std::string text;
    for (const mof::ClassDeclaration& declaration : classes) {
        text += (text.empty() ? "" : "\n") + std::string(declaration.association ? "[Association]\n" : "");
        text += "class " + declaration.name;
        text += (declaration.superclass.empty() ? "" : " : " + declaration.superclass) + " {\n";
        for (const mof::PropertyDeclaration& key : declaration.properties)
            text += "    [Key] " + (key.type == "reference" ? key.reference_class + " REF" : key.type) + " " +
                    key.name + ";\n";
        text += "};\n";
    }
    return text;
}

std::string json_of(const Classes& classes) {
    Json list = Json::array();
    for (const mof::ClassDeclaration& declaration : classes) {
        Json keys = Json::array();
        for (const mof::PropertyDeclaration& key : declaration.properties)
            keys.push_back({{"name", key.name}, {"type", key.type}});
        list.push_back({{"name", declaration.name},
                        {"superclass", declaration.superclass.empty() ? Json() : Json(declaration.superclass)},
                        {"association", declaration.association},
                        {"keys", std::move(keys)}});
    }
    return Json{{"classes", std::move(list)}}.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// A class and those that derive from it, each a step further in.
std::string branch_of(const std::vector<mof::ClassDeclaration>& all, const mof::ClassDeclaration& root, int depth) {
    std::string text = std::string(static_cast<std::size_t>(2 * depth), ' ') + root.name +
                       (root.abstract ? " (abstract)" : "") + (root.association ? " (association)" : "") + "\n";
    for (const mof::ClassDeclaration& declaration : all)
        if (same_name(declaration.superclass, root.name))
            text += branch_of(all, declaration, depth + 1);
    return text;
}

/// All classes of the schema, those of the standard too: without them there would be no tree.
std::string tree_of(const mof::Schema& schema) {
    std::string text;
    for (const mof::ClassDeclaration& declaration : schema.classes())
        if (declaration.superclass.empty())
            text += branch_of(schema.classes(), declaration, 0);
    return text;
}

std::string shown(const Classes& classes, const Options& options, std::FILE* out) {
    if (options.format == Format::json)
        return json_of(classes);
    if (options.format == Format::mof)
        return mof_of(classes);
    const bool table = options.format_given || is_terminal(out);
    return table ? text_of(classes, wants_colour(options.colour, out)) : names_of(classes);
}

} // namespace

bool is_listed(const mof::ClassDeclaration& declaration) {
    return !declaration.abstract && std::filesystem::path(declaration.place.file).filename() != "dmtf.mof";
}

int list_classes(const Options& options, const Streams& streams) {
    const mof::Schema schema = load_schema(options);
    return print(streams, options.tree ? tree_of(schema) : shown(listed_classes(schema), options, streams.out));
}

} // namespace cmpihost
