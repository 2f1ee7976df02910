#include "host/cimxml/write_class.h"

#include "host/cimxml/write_qualifier.h"

#include <algorithm>

namespace cmpihost::cimxml {

namespace {

/// Writes one class.
class ClassWriter {
  public:
    ClassWriter(std::string& out, const ClassOptions& options, const ReplyPlace& place)
        : out_(out), options_(options), place_(place) {}

    void write(const mof::ClassDeclaration& declaration);

  private:
    void attribute(std::string_view name, std::string_view value) { append_attribute(out_, name, value); }
    void qualifiers(const std::vector<mof::Qualifier>& qualifiers);
    void type(std::string_view type, std::string_view reference_class, std::uint32_t array_size);
    void origin(std::string_view origin, bool propagated);
    void property(const mof::PropertyDeclaration& property);
    void parameter(const mof::ParameterDeclaration& parameter);
    void method(const mof::MethodDeclaration& method);
    bool is_wanted(const mof::PropertyDeclaration& property) const;

    std::string& out_;
    const ClassOptions& options_;
    const ReplyPlace& place_;
};

void ClassWriter::qualifiers(const std::vector<mof::Qualifier>& qualifiers) {
    if (!options_.qualifiers)
        return;
    for (const mof::Qualifier& qualifier : qualifiers)
        if (!(qualifier.propagated && options_.local_only))
            append_qualifier(out_, qualifier, place_);
}

void ClassWriter::type(std::string_view type, std::string_view reference_class, std::uint32_t array_size) {
    if (reference_class.empty())
        attribute("TYPE", element_type(type));
    else
        attribute("REFERENCECLASS", reference_class);
    if (array_size != 0)
        attribute("ARRAYSIZE", std::to_string(array_size));
}

void ClassWriter::origin(std::string_view origin, bool propagated) {
    if (options_.class_origin)
        attribute("CLASSORIGIN", origin);
    if (propagated)
        attribute("PROPAGATED", "true");
}

std::string_view property_tag(std::string_view type) {
    if (type == "reference")
        return "PROPERTY.REFERENCE";
    return type.ends_with("[]") ? "PROPERTY.ARRAY" : "PROPERTY";
}

void ClassWriter::property(const mof::PropertyDeclaration& property) {
    const std::string_view tag = property_tag(property.type);
    out_.append("<").append(tag);
    attribute("NAME", property.name);
    type(property.type, property.reference_class, property.array_size);
    origin(property.origin, property.propagated);
    if (property.embedded != mof::Embedded::no && property.type == "string") // refused at an array by some clients
        attribute("EmbeddedObject", property.embedded == mof::Embedded::instance ? "instance" : "object");
    out_ += '>';
    qualifiers(property.qualifiers);
    if (property.reference_class.empty()) // a reference's default is text, which no element holds
        append_value(out_, property.type, property.default_value, place_);
    out_.append("</").append(tag).append(">");
}

std::string_view parameter_tag(std::string_view type) {
    if (type.starts_with("reference"))
        return type.ends_with("[]") ? "PARAMETER.REFARRAY" : "PARAMETER.REFERENCE";
    return type.ends_with("[]") ? "PARAMETER.ARRAY" : "PARAMETER";
}

void ClassWriter::parameter(const mof::ParameterDeclaration& parameter) {
    const std::string_view tag = parameter_tag(parameter.type);
    out_.append("<").append(tag);
    attribute("NAME", parameter.name);
    type(parameter.type, parameter.reference_class, parameter.array_size);
    out_ += '>';
    qualifiers(parameter.qualifiers);
    out_.append("</").append(tag).append(">");
}

void ClassWriter::method(const mof::MethodDeclaration& method) {
    out_ += "<METHOD";
    attribute("NAME", method.name);
    attribute("TYPE", method.type);
    origin(method.origin, method.propagated);
    out_ += '>';
    qualifiers(method.qualifiers);
    for (const mof::ParameterDeclaration& each : method.parameters)
        parameter(each);
    out_ += "</METHOD>";
}

bool ClassWriter::is_wanted(const mof::PropertyDeclaration& property) const {
    if (property.propagated && options_.local_only)
        return false;
    return options_.property_list == nullptr ||
           std::any_of(options_.property_list->begin(), options_.property_list->end(),
                       [&](const std::string& name) { return same_name(name, property.name); });
}

void ClassWriter::write(const mof::ClassDeclaration& declaration) {
    out_ += "<CLASS";
    attribute("NAME", declaration.name);
    if (!declaration.superclass.empty())
        attribute("SUPERCLASS", declaration.superclass);
    out_ += '>';
    qualifiers(declaration.qualifiers);
    for (const mof::PropertyDeclaration& each : declaration.properties)
        if (is_wanted(each))
            property(each);
    for (const mof::MethodDeclaration& each : declaration.methods)
        if (!(each.propagated && options_.local_only))
            method(each);
    out_ += "</CLASS>";
}

} // namespace

void append_class_name(std::string& out, std::string_view name) {
    out += "<CLASSNAME";
    append_attribute(out, "NAME", name);
    out += "></CLASSNAME>";
}

void append_class(std::string& out, const mof::ClassDeclaration& declaration, const ClassOptions& options,
                  const ReplyPlace& place) {
    ClassWriter(out, options, place).write(declaration);
}

} // namespace cmpihost::cimxml
