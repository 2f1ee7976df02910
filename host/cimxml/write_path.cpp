#include "host/cimxml/write_path.h"

#include "host/cimxml/characters.h"
#include "host/cimxml/typed_text.h"

namespace cmpihost::cimxml {

namespace {

std::string_view value_type(const Property& key) {
    if (std::holds_alternative<bool>(key.value.data))
        return "boolean";
    const bool text = std::holds_alternative<std::string>(key.value.data) || key.type == "char16";
    return text ? "string" : "numeric";
}

bool can_be_key(const Property& key) {
    if (const auto* target = std::get_if<Value::Reference>(&key.value.data))
        return *target != nullptr && key.type == "reference";
    return !std::holds_alternative<std::monostate>(key.value.data) &&
           !std::holds_alternative<Value::Array>(key.value.data);
}

void append_key_value(std::string& out, const Property& key) {
    out += "<KEYVALUE";
    append_attribute(out, "VALUETYPE", value_type(key));
    out += '>';
    if (const auto* text = std::get_if<std::string>(&key.value.data))
        append_escaped(out, *text);
    else
        append_typed(out, key.type, key.value);
    out += "</KEYVALUE>";
}

/// False: there is none of the keys that the class declares, or it is not known.
bool append_declared_keys(std::string& out, const Object& object, const ReplyPlace& place) {
    const mof::ClassDeclaration* declaration = place.schema.find(object.class_name);
    if (declaration == nullptr)
        return false;
    const std::size_t before = out.size();
    for (const mof::PropertyDeclaration& declared : declaration->properties) {
        if (!declared.key)
            continue;
        const Property* key = object.key(declared.name);
        if (key == nullptr)
            key = object.property(declared.name);
        if (key != nullptr)
            append_key(out, declared.name, *key, place);
    }
    return out.size() > before;
}

} // namespace

void append_namespace_path(std::string& out, std::string_view host, std::string_view name_space) {
    out += "<NAMESPACEPATH><HOST>";
    append_escaped(out, host);
    out += "</HOST><LOCALNAMESPACEPATH>";
    for (;;) {
        const std::size_t slash = name_space.find('/');
        out += "<NAMESPACE";
        append_attribute(out, "NAME", name_space.substr(0, slash));
        out += "></NAMESPACE>";
        if (slash == std::string_view::npos)
            break;
        name_space.remove_prefix(slash + 1);
    }
    out += "</LOCALNAMESPACEPATH></NAMESPACEPATH>";
}

void append_key(std::string& out, std::string_view name, const Property& key, const ReplyPlace& place) {
    if (!can_be_key(key))
        return;
    out += "<KEYBINDING";
    append_attribute(out, "NAME", name);
    out += '>';
    if (const auto* target = std::get_if<Value::Reference>(&key.value.data))
        append_value_reference(out, **target, place);
    else
        append_key_value(out, key);
    out += "</KEYBINDING>";
}

void append_instance_name(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<INSTANCENAME";
    append_attribute(out, "CLASSNAME", object.class_name);
    out += '>';
    if (!append_declared_keys(out, object, place))
        for (const Property& key : object.keys)
            append_key(out, key.name, key, place);
    out += "</INSTANCENAME>";
}

void append_instance_path(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<INSTANCEPATH>";
    const bool has_host = object.host && !object.host->empty();
    append_namespace_path(out, has_host ? std::string_view(*object.host) : place.host,
                          object.name_space.empty() ? place.name_space : std::string_view(object.name_space));
    append_instance_name(out, object, place);
    out += "</INSTANCEPATH>";
}

void append_object_path(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<OBJECTPATH>";
    append_instance_path(out, object, place);
    out += "</OBJECTPATH>";
}

void append_value_reference(std::string& out, const Object& object, const ReplyPlace& place) {
    out += "<VALUE.REFERENCE>";
    append_instance_path(out, object, place);
    out += "</VALUE.REFERENCE>";
}

void append_class_path(std::string& out, std::string_view class_name, const ReplyPlace& place) {
    out += "<CLASSPATH>";
    append_namespace_path(out, place.host, place.name_space);
    out += "<CLASSNAME";
    append_attribute(out, "NAME", class_name);
    out += "></CLASSNAME></CLASSPATH>";
}

} // namespace cmpihost::cimxml
