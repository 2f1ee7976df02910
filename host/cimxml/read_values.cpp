#include "host/cimxml/read_values.h"

#include "host/cimxml/typed_text.h"

#include <algorithm>

namespace cmpihost::cimxml {

namespace {

std::string_view attribute_or(const XmlElement& element, std::string_view name, std::string_view otherwise) {
    const std::string* value = element.attribute(name);
    return value == nullptr ? otherwise : std::string_view(*value);
}

/// The one key of a class; null if it has none or several.
const mof::PropertyDeclaration* only_key(const mof::ClassDeclaration& declaration) {
    const mof::PropertyDeclaration* only = nullptr;
    for (const mof::PropertyDeclaration& property : declaration.properties) {
        if (property.key && only != nullptr)
            return nullptr;
        if (property.key)
            only = &property;
    }
    return only;
}

/// By what the client says of its type.
Property described_key(const XmlElement& key_value) {
    const std::string_view kind = attribute_or(key_value, "VALUETYPE", "string");
    const std::string_view type = attribute_or(key_value, "TYPE", kind == "boolean" ? "boolean" : "");
    if (kind != "string" && kind != "boolean" && kind != "numeric")
        throw request_not_valid();
    if (is_text_type(type))
        if (auto value = parse_typed(type, key_value.text))
            return {"", std::string(type), std::move(*value)};
    if (kind == "string")
        return {"", "string", {key_value.text}};
    Property number = parse_number_of_any_type(key_value.text);
    if (kind == "boolean" || number.type.empty())
        throw request_not_valid();
    return number;
}

Property read_key_value(const XmlElement& element, const mof::PropertyDeclaration* declared) {
    if (declared != nullptr)
        if (auto value = parse_typed(declared->type, element.text))
            return {"", declared->type, std::move(*value)};
    return described_key(element);
}

Object object_of(std::string class_name) {
    Object object;
    object.class_name = std::move(class_name);
    return object;
}

Value as_value(Target target) {
    if (auto* name = std::get_if<ClassName>(&target))
        return {std::make_shared<const Object>(object_of(std::move(name->name)))};
    return {std::make_shared<const Object>(std::move(std::get<Object>(target)))};
}

Property read_key(const XmlElement& element, const mof::PropertyDeclaration* declared, const mof::Schema& schema) {
    if (element.is("VALUE.REFERENCE"))
        return {"", "reference", as_value(read_reference(element, schema))};
    return read_key_value(element, declared);
}

Object read_instance_name(const XmlElement& element, const mof::Schema& schema) {
    Object path = object_of(*element.attribute("CLASSNAME"));
    const mof::ClassDeclaration* declaration = schema.find(path.class_name);
    for (const XmlElement& child : element.children) {
        const mof::PropertyDeclaration* declared = nullptr;
        std::string name;
        if (child.is("KEYBINDING")) {
            name = *child.attribute("NAME");
            declared = declaration == nullptr ? nullptr : declaration->property(name);
        } else if (declaration != nullptr && (declared = only_key(*declaration)) != nullptr) {
            name = declared->name;
        }
        if (path.key(name) != nullptr)
            throw invalid_parameter("key " + name + " is there twice, expected once");
        const XmlElement& content = child.is("KEYBINDING") ? child.children.front() : child;
        path.keys.push_back(read_key(content, declared, schema));
        path.keys.back().name = std::move(name);
    }
    return path;
}

std::string namespace_of(const XmlElement& namespace_path, std::optional<std::string>& host) {
    if (namespace_path.is("LOCALNAMESPACEPATH"))
        return read_namespace(namespace_path);
    host = namespace_path.children.front().text;
    return read_namespace(namespace_path.children.back());
}

Value typed_or_refused(std::string_view type, const XmlElement& value) {
    auto typed = parse_typed(type, value.text);
    if (!typed)
        throw request_not_valid();
    return std::move(*typed);
}

Value read_array(std::string_view type, const XmlElement& array, const mof::Schema& schema) {
    Value::Array values;
    for (const XmlElement& element : array.children) {
        if (element.is("VALUE.NULL"))
            values.emplace_back();
        else if (element.is("VALUE.REFERENCE"))
            values.push_back(as_value(read_reference(element, schema)));
        else
            values.push_back(typed_or_refused(type, element));
    }
    return {std::move(values)};
}

/// Sets type and value from what may stand in a property or a parameter of a method.
void read_content(Property& property, std::string_view type, const XmlElement* content, const mof::Schema& schema) {
    property.type = type;
    if (content == nullptr)
        return;
    if (content->is("VALUE.REFERENCE")) {
        property.type = "reference";
        property.value = as_value(read_reference(*content, schema));
    } else if (content->is("VALUE")) {
        property.value = typed_or_refused(type, *content);
    } else {
        property.type = content->is("VALUE.REFARRAY") ? "reference[]" : property.type + "[]";
        property.value = read_array(type, *content, schema);
    }
}

Property read_property(const XmlElement& element, const mof::Schema& schema) {
    Property property{*element.attribute("NAME"), "", {}};
    const std::string_view type =
        element.is("PROPERTY.REFERENCE") ? "reference" : std::string_view(*element.attribute("TYPE"));
    if (!element.is("PROPERTY.REFERENCE") && !is_text_type(type))
        throw request_not_valid();
    const bool has_value = !element.children.empty() && !element.children.back().is("QUALIFIER");
    read_content(property, type, has_value ? &element.children.back() : nullptr, schema);
    if (!has_value && element.is("PROPERTY.ARRAY"))
        property.type += "[]";
    return property;
}

} // namespace

Refusal request_not_valid() {
    return {.http_status = 400, .cim_error = "request-not-valid"};
}

Refusal invalid_parameter(std::string description) {
    return {.code = static_cast<unsigned>(CimStatus::invalid_parameter), .description = std::move(description)};
}

std::string read_namespace(const XmlElement& local_namespace_path) {
    std::string name;
    for (const XmlElement& part : local_namespace_path.children) {
        if (!name.empty())
            name += '/';
        name += *part.attribute("NAME");
    }
    return name;
}

Object read_instance_path(const XmlElement& element, const mof::Schema& schema) {
    if (element.is("INSTANCENAME"))
        return read_instance_name(element, schema);
    Object path = read_instance_name(element.children.back(), schema);
    path.name_space = namespace_of(element.children.front(), path.host);
    return path;
}

Target read_reference(const XmlElement& value_reference, const mof::Schema& schema) {
    const XmlElement& path = value_reference.children.front();
    if (path.is("CLASSNAME"))
        return ClassName{*path.attribute("NAME")};
    if (path.is("CLASSPATH") || path.is("LOCALCLASSPATH"))
        return ClassName{*path.children.back().attribute("NAME")};
    return read_instance_path(path, schema);
}

Object read_instance(const XmlElement& element, const mof::Schema& schema) {
    Object instance = object_of(*element.attribute("CLASSNAME"));
    for (const XmlElement& child : element.children)
        if (!child.is("QUALIFIER"))
            instance.properties.push_back(read_property(child, schema));
    return instance;
}

Property read_method_parameter(const XmlElement& element, const mof::Schema& schema) {
    Property parameter{*element.attribute("NAME"), "", {}};
    const std::string_view type = attribute_or(element, "PARAMTYPE", "string");
    if (type != "reference" && !is_text_type(type))
        throw request_not_valid();
    read_content(parameter, type, element.children.empty() ? nullptr : &element.children.front(), schema);
    return parameter;
}

} // namespace cmpihost::cimxml
