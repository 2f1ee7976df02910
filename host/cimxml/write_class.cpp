#include "host/cimxml/write_class.h"

#include <algorithm>
#include <limits>

namespace cmpihost::cimxml {

namespace {

/// The type of a qualifier, which MOF declares apart: the widest that its value may have.
struct QualifierType {
    std::string_view operator()(bool) const { return "boolean"; }
    std::string_view operator()(std::uint64_t value) const {
        return value > std::numeric_limits<std::uint32_t>::max() ? "uint64" : "uint32";
    }
    std::string_view operator()(std::int64_t value) const {
        return value < std::numeric_limits<std::int32_t>::min() ? "sint64" : "sint32";
    }
    std::string_view operator()(double) const { return "real64"; }
    std::string_view operator()(const Value::Array& values) const {
        return values.empty() ? "string" : std::visit(*this, values.front().data);
    }
    template <class Other>
    std::string_view operator()(const Other& /*value*/) const {
        return "string";
    }
};

void append_qualifiers(std::string& out, const std::vector<mof::NamedValue>& qualifiers, const ReplyPlace& place) {
    for (const mof::NamedValue& qualifier : qualifiers) {
        const std::string_view type = std::visit(QualifierType(), qualifier.value.data);
        out += "<QUALIFIER";
        append_attribute(out, "NAME", qualifier.name);
        append_attribute(out, "TYPE", type);
        out += '>';
        append_value(out, type, qualifier.value, place);
        out += "</QUALIFIER>";
    }
}

std::string_view tag_of(std::string_view type) {
    if (type == "reference")
        return "PROPERTY.REFERENCE";
    return type.ends_with("[]") ? "PROPERTY.ARRAY" : "PROPERTY";
}

void append_property(std::string& out, const mof::PropertyDeclaration& property, bool inherited,
                     const ClassOptions& options, const ReplyPlace& place) {
    const std::string_view tag = tag_of(property.type);
    out.append("<").append(tag);
    append_attribute(out, "NAME", property.name);
    if (property.type == "reference")
        append_attribute(out, "REFERENCECLASS", property.reference_class);
    else
        append_attribute(out, "TYPE", element_type(property.type));
    if (options.class_origin)
        append_attribute(out, "CLASSORIGIN", property.origin);
    if (inherited)
        append_attribute(out, "PROPAGATED", "true");
    out += '>';
    if (options.qualifiers)
        append_qualifiers(out, property.qualifiers, place);
    append_value(out, property.type, property.default_value, place);
    out.append("</").append(tag).append(">");
}

bool is_wanted(const mof::PropertyDeclaration& property, bool inherited, const ClassOptions& options) {
    if (inherited && options.local_only)
        return false;
    return options.property_list == nullptr ||
           std::any_of(options.property_list->begin(), options.property_list->end(),
                       [&](const std::string& name) { return same_name(name, property.name); });
}

} // namespace

void append_class_name(std::string& out, std::string_view name) {
    out += "<CLASSNAME";
    append_attribute(out, "NAME", name);
    out += "></CLASSNAME>";
}

void append_class(std::string& out, const mof::ClassDeclaration& declaration, const ClassOptions& options,
                  const ReplyPlace& place) {
    out += "<CLASS";
    append_attribute(out, "NAME", declaration.name);
    if (!declaration.superclass.empty())
        append_attribute(out, "SUPERCLASS", declaration.superclass);
    out += '>';
    if (options.qualifiers)
        append_qualifiers(out, declaration.qualifiers, place);
    for (const mof::PropertyDeclaration& property : declaration.properties) {
        const bool inherited = !same_name(property.origin, declaration.name);
        if (is_wanted(property, inherited, options))
            append_property(out, property, inherited, options, place);
    }
    out += "</CLASS>";
}

} // namespace cmpihost::cimxml
