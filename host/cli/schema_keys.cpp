#include "host/cli/schema_keys.h"

namespace cmpihost {

namespace {

std::vector<Property> declared_keys(const mof::ClassDeclaration& declaration, const Object& instance) {
    std::vector<Property> keys;
    for (const mof::PropertyDeclaration& declared : declaration.properties) {
        if (!declared.key)
            continue;
        const Property* value = instance.property(declared.name);
        if (value == nullptr || std::holds_alternative<std::monostate>(value->value.data))
            return {};
        keys.push_back(*value);
    }
    return keys;
}

} // namespace

void add_keys(const mof::Schema& schema, const Request& request, Object& instance) {
    const mof::ClassDeclaration* declaration = schema.find(instance.class_name);
    if (declaration == nullptr || !instance.keys.empty())
        return;
    instance.keys = declared_keys(*declaration, instance);
    if (instance.keys.empty() && request.operation == Request::Operation::get_instance &&
        same_name(instance.class_name, request.path.class_name))
        instance.keys = request.path.keys;
}

std::vector<std::string> undeclared_names(const mof::Schema& schema, const Request& request, bool answered) {
    const mof::ClassDeclaration* declaration = schema.find(request.path.class_name);
    if (declaration == nullptr && answered)
        return {};
    if (declaration == nullptr)
        return {"class " + request.path.class_name + " is not in the schema"};
    std::vector<std::string> texts;
    const auto look_for = [&](const std::string& name) {
        if (declaration->property(name) == nullptr)
            texts.push_back("class " + declaration->name + " declares no property " + name);
    };
    const bool of_results = request.operation == Request::Operation::associators ||
                            request.operation == Request::Operation::references; // whose classes are others
    if (request.properties && !of_results)
        for (const std::string& name : *request.properties)
            look_for(name);
    else
        for (const Property& value : request.values)
            look_for(value.name);
    return texts;
}

} // namespace cmpihost
