#include "host/cimxml/write_value.h"

#include "host/cimxml/characters.h"
#include "host/cimxml/typed_text.h"
#include "host/cimxml/write_instance.h"
#include "host/cimxml/write_path.h"

namespace cmpihost::cimxml {

namespace {

void append_text_value(std::string& out, std::string_view type, const Value& value) {
    out += "<VALUE>";
    if (const auto* text = std::get_if<std::string>(&value.data))
        append_escaped(out, *text);
    else
        append_typed(out, type, value);
    out += "</VALUE>";
}

/// A path, or the XML of an embedded instance as text.
void append_object_value(std::string& out, std::string_view type, const Value::Reference& object,
                         const ReplyPlace& place) {
    if (object == nullptr)
        return;
    if (type == "reference") {
        append_value_reference(out, *object, place);
        return;
    }
    std::string xml;
    append_instance(xml, *object, place);
    out += "<VALUE>";
    append_escaped(out, xml);
    out += "</VALUE>";
}

void append_element(std::string& out, std::string_view type, const Value& value, const ReplyPlace& place) {
    if (const auto* object = std::get_if<Value::Reference>(&value.data))
        append_object_value(out, type, *object, place);
    else if (!std::holds_alternative<std::monostate>(value.data) && !std::holds_alternative<Value::Array>(value.data))
        append_text_value(out, type, value);
}

} // namespace

void append_attribute(std::string& out, std::string_view name, std::string_view value) {
    out.append(" ").append(name).append("=\"");
    append_escaped(out, value);
    out += '"';
}

std::string_view element_type(std::string_view type) {
    return type.ends_with("[]") ? type.substr(0, type.size() - 2) : type;
}

void append_value(std::string& out, std::string_view type, const Value& value, const ReplyPlace& place) {
    const auto* values = std::get_if<Value::Array>(&value.data);
    const std::string_view element = element_type(type);
    if (values == nullptr) {
        append_element(out, element, value, place);
        return;
    }
    const std::string_view tag = element == "reference" ? "VALUE.REFARRAY>" : "VALUE.ARRAY>";
    out.append("<").append(tag);
    for (const Value& each : *values) {
        if (element == "string" && std::holds_alternative<std::monostate>(each.data))
            out += "<VALUE></VALUE>";
        else
            append_element(out, element, each, place);
    }
    out.append("</").append(tag);
}

} // namespace cmpihost::cimxml
