#include "host/cli/output.h"

#include <nlohmann/json.hpp>

namespace cmpihost {

namespace {

using Json = nlohmann::ordered_json;

Json json_of_object(const Object& object);

struct JsonValue {
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(const Value::Reference& object) const { return json_of_object(*object); }
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

Json json_of_value(const Property& property) {
    return std::visit(JsonValue(), property.value.data);
}

Json json_of_list(const std::vector<Property>& properties) {
    Json list = Json::array();
    for (const Property& property : properties)
        list.push_back({{"name", property.name}, {"type", property.type}, {"value", json_of_value(property)}});
    return list;
}

Json json_of_text(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json json_of_object(const Object& object) {
    return {{"class", object.class_name},
            {"namespace", object.name_space},
            {"host", json_of_text(object.host)},
            {"keys", json_of_list(object.keys)},
            {"properties", json_of_list(object.properties)}};
}

} // namespace

std::string json_of(const Answer& answer) {
    Json objects = Json::array();
    for (const Object& object : answer.objects)
        objects.push_back(json_of_object(object));
    Json json{{"status", {{"rc", answer.rc}, {"message", json_of_text(answer.message)}}},
              {"objects", std::move(objects)},
              {"nullResults", answer.null_results},
              {"invalidResults", answer.invalid_results}};
    if (answer.returned)
        json["returned"] = {{"type", answer.returned->type}, {"value", json_of_value(*answer.returned)}};
    if (!answer.arguments.empty())
        json["arguments"] = json_of_list(answer.arguments);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace cmpihost
