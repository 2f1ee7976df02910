#include "host/cimxml/write_instance.h"

#include "host/cimxml/characters.h"
#include "host/cimxml/typed_text.h"
#include "host/cimxml/write_path.h"

namespace cmpihost::cimxml {

namespace {

/// The type to be written, "reference" and "instance" among them; string where nobody knows one.
std::string_view known_type(const Property& property, const mof::ClassDeclaration* declaration) {
    const std::string_view element = element_type(property.type);
    if (is_text_type(element) || element == "reference" || element == "instance")
        return property.type;
    const auto* declared = declaration == nullptr ? nullptr : declaration->property(property.name);
    return declared == nullptr ? std::string_view("string") : std::string_view(declared->type);
}

std::string_view tag_of(std::string_view type) {
    if (type == "reference")
        return "PROPERTY.REFERENCE";
    return type.ends_with("[]") ? "PROPERTY.ARRAY" : "PROPERTY";
}

/// Whether the value has the shape that the type's element admits.
bool fits(std::string_view type, const Value& value) {
    if (std::holds_alternative<std::monostate>(value.data))
        return true;
    const std::string_view element = element_type(type);
    if (type.ends_with("[]") != std::holds_alternative<Value::Array>(value.data))
        return false;
    const bool of_objects = element == "reference" || element == "instance";
    return type.ends_with("[]") || of_objects == std::holds_alternative<Value::Reference>(value.data);
}

void append_property_of_type(std::string& out, const Property& property, std::string_view type,
                             const ReplyPlace& place) {
    const std::string_view tag = tag_of(type);
    const std::string_view element = element_type(type);
    out.append("<").append(tag);
    append_attribute(out, "NAME", property.name);
    if (element != "reference")
        append_attribute(out, "TYPE", element == "instance" ? "string" : element);
    if (element == "instance")
        append_attribute(out, "EmbeddedObject", "instance");
    out += '>';
    if (fits(type, property.value))
        append_value(out, type, property.value, place);
    out.append("</").append(tag).append(">");
}

} // namespace

void append_property(std::string& out, const Property& property, const mof::ClassDeclaration* declaration,
                     const ReplyPlace& place) {
    const std::string_view type = known_type(property, declaration);
    if (type != "reference[]")
        append_property_of_type(out, property, type, place);
}

void append_instance(std::string& out, const Object& object, const ReplyPlace& place) {
    const mof::ClassDeclaration* declaration = place.schema.find(object.class_name);
    out += "<INSTANCE";
    append_attribute(out, "CLASSNAME", object.class_name);
    out += '>';
    for (const Property& property : object.properties)
        append_property(out, property, declaration, place);
    out += "</INSTANCE>";
}

void append_named_instance(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<VALUE.NAMEDINSTANCE>";
    append_instance_name(out, object, place);
    append_instance(out, object, place);
    out += "</VALUE.NAMEDINSTANCE>";
}

void append_instance_with_path(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<VALUE.INSTANCEWITHPATH>";
    append_instance_path(out, object, place);
    append_instance(out, object, place);
    out += "</VALUE.INSTANCEWITHPATH>";
}

void append_object_with_path(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<VALUE.OBJECTWITHPATH>";
    append_instance_path(out, object, place);
    append_instance(out, object, place);
    out += "</VALUE.OBJECTWITHPATH>";
}

} // namespace cmpihost::cimxml
