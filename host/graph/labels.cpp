#include "host/graph/labels.h"

#include "host/cim/value_text.h"

#include <map>

namespace cmpihost {

namespace {

std::string value_of(const Property& key) {
    const auto* text = std::get_if<std::string>(&key.value.data);
    return text == nullptr || text->empty() ? text_value(key) : printable(*text);
}

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

} // namespace

std::string short_name(const std::string& name) {
    return name.substr(name.find('_') + 1); // the whole name if there is no prefix
}

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

} // namespace cmpihost
