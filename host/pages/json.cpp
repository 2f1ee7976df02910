#include "host/pages/json.h"

#include "host/cim/path_text.h"
#include "host/cimxml/characters.h"
#include "host/pages/objects.h"

#include <nlohmann/json.hpp>

namespace cmpihost::pages {

namespace {

using Json = nlohmann::ordered_json;

struct JsonValue {
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(const Value::Reference& object) const { return object ? Json(path_text(*object)) : Json(nullptr); }
    Json operator()(const Value::Array& values) const {
        Json array = Json::array();
        for (const Value& value : values)
            array.push_back(std::visit(*this, value.data));
        return array;
    }
    template <class Simple>
    Json operator()(const Simple& value) const {
        return value;
    }
};

Json json_of(const std::vector<Property>& properties) {
    Json json = Json::object();
    for (const Property& property : properties)
        json[property.name] = std::visit(JsonValue(), property.value.data);
    return json;
}

/// A string or an integer as a reader that has doubles alone would show it; nothing for what it could not, and for
/// other values.
std::optional<std::string> plain_text(const Property& property) {
    constexpr std::int64_t most = std::int64_t{1} << 53;
    if (const auto* text = std::get_if<std::string>(&property.value.data))
        return *text;
    const auto* natural = std::get_if<std::uint64_t>(&property.value.data);
    if (natural != nullptr && *natural <= most)
        return std::to_string(*natural);
    const auto* integer = std::get_if<std::int64_t>(&property.value.data);
    const bool plain = integer != nullptr && *integer <= most && *integer >= -most;
    return plain ? std::optional(std::to_string(*integer)) : std::nullopt;
}

Json texts_of(const Object& instance, const mof::ClassDeclaration& declaration) {
    Json json = Json::object();
    for (const Property& property : instance.properties) {
        const mof::PropertyDeclaration* declared = declaration.property(property.name);
        if (!is_refreshed(declared, property))
            continue;
        const std::string text = cimxml::carried(value_text(declared, property));
        if (text != plain_text(property))
            json[property.name] = text;
    }
    return json;
}

} // namespace

std::string json_of(const Object& path, const Object& instance, const mof::ClassDeclaration& declaration) {
    const Json json{{"class", path.class_name},
                    {"keys", json_of(path.keys)},
                    {"properties", json_of(instance.properties)},
                    {"texts", texts_of(instance, declaration)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace cmpihost::pages
