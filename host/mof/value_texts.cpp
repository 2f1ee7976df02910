#include "host/mof/value_texts.h"

namespace cmpihost {

namespace {

/// The texts of a qualifier that is an array of them.
std::vector<std::string> texts_of(const mof::PropertyDeclaration& declaration, std::string_view name) {
    std::vector<std::string> texts;
    for (const auto& qualifier : declaration.qualifiers) {
        const auto* values = std::get_if<Value::Array>(&qualifier.value.data);
        if (!same_name(qualifier.name, name) || values == nullptr || !texts.empty())
            continue;
        for (const Value& value : *values) {
            const auto* text = std::get_if<std::string>(&value.data);
            texts.push_back(text ? *text : std::string());
        }
    }
    return texts;
}

/// As ValueMap writes it; empty for what no ValueMap has.
std::string written(const Value& value) {
    if (const auto* natural = std::get_if<std::uint64_t>(&value.data))
        return std::to_string(*natural);
    if (const auto* integer = std::get_if<std::int64_t>(&value.data))
        return std::to_string(*integer);
    const auto* text = std::get_if<std::string>(&value.data);
    return text ? *text : std::string();
}

} // namespace

std::string mapped_text(const mof::PropertyDeclaration& declaration, const Value& value) {
    const std::vector<std::string> texts = texts_of(declaration, "Values");
    if (texts.empty())
        return {};
    if (const auto* values = std::get_if<Value::Array>(&value.data)) {
        std::string all;
        for (const Value& element : *values)
            all += (all.empty() ? "" : ", ") + mapped_text(declaration, element);
        return all;
    }
    const std::vector<std::string> map = texts_of(declaration, "ValueMap");
    const std::string wanted = written(value);
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (!wanted.empty() && wanted == (map.empty() ? std::to_string(i) : i < map.size() ? map[i] : std::string()))
            return texts[i];
    return {};
}

} // namespace cmpihost
