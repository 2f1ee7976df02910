#include "host/pages/json.h"

#include "host/cim/path_text.h"

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

} // namespace

std::string json_of(const Object& path, const Object& instance) {
    const Json json{
        {"class", path.class_name}, {"keys", json_of(path.keys)}, {"properties", json_of(instance.properties)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace cmpihost::pages
