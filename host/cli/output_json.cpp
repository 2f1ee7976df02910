#include "host/cli/json_object.h"
#include "host/cli/output.h"

namespace cmpihost {

using Json = nlohmann::ordered_json;

namespace {

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

} // namespace

Json json_of_object(const Object& object) {
    return {{"class", object.class_name},
            {"namespace", object.name_space},
            {"host", json_of_text(object.host)},
            {"keys", json_of_list(object.keys)},
            {"properties", json_of_list(object.properties)}};
}

namespace {

/// A value of the outermost object, moved in to where it stands.
std::string indented(const Json& json, int depth) {
    const std::string text = json.dump(2, ' ', false, Json::error_handler_t::replace);
    std::string out;
    for (const char c : text) { // a newline in a text is escaped
        out += c;
        if (c == '\n')
            out.append(2 * static_cast<std::size_t>(depth), ' ');
    }
    return out;
}

class JsonAnswer : public AnswerText {
  public:
    std::string begin() override { return "{\n  \"objects\": ["; }

    std::string object(const Object& object) override {
        const std::string separator = empty_ ? "\n    " : ",\n    ";
        empty_ = false;
        return separator + indented(json_of_object(object), 2);
    }

    std::string end(const Answer& answer, const std::string& failure) override {
        std::string text = empty_ ? "]" : "\n  ]";
        const Json rest = members(answer, failure);
        for (const auto& [name, value] : rest.items())
            text += ",\n  \"" + name + "\": " + indented(value, 1);
        return text + "\n}\n";
    }

  private:
    static Json members(const Answer& answer, const std::string& failure) {
        Json status{{"rc", answer.rc}, {"message", json_of_text(answer.message)}};
        if (!failure.empty())
            status = {{"rc", nullptr}, {"message", failure}};
        Json json{{"status", std::move(status)},
                  {"nullResults", answer.null_results},
                  {"invalidResults", answer.invalid_results}};
        if (answer.returned)
            json["returned"] = {{"type", answer.returned->type}, {"value", json_of_value(*answer.returned)}};
        if (!answer.arguments.empty())
            json["arguments"] = json_of_list(answer.arguments);
        return json;
    }

    bool empty_ = true;
};

} // namespace

std::unique_ptr<AnswerText> json_answer() {
    return std::make_unique<JsonAnswer>();
}

} // namespace cmpihost
