#include "host/cimxml/write_qualifier.h"

namespace cmpihost::cimxml {

namespace {

void append_flavors(std::string& out, const mof::Flavors& flavors) {
    if (!flavors.overridable)
        append_attribute(out, "OVERRIDABLE", "false");
    if (!flavors.to_subclass)
        append_attribute(out, "TOSUBCLASS", "false");
    if (flavors.to_instance)
        append_attribute(out, "TOINSTANCE", "true");
    if (flavors.translatable)
        append_attribute(out, "TRANSLATABLE", "true");
}

/// One attribute for each scope, named as the scope is.
void append_scopes(std::string& out, mof::Scopes scopes) {
    out += "<SCOPE";
    for (std::size_t i = 0; i < scopes.size(); ++i) {
        std::string name(mof::scope_names[i]);
        for (char& c : name)
            c = static_cast<char>(c - 'a' + 'A');
        if (scopes[i])
            append_attribute(out, name, "true");
    }
    out += "></SCOPE>";
}

} // namespace

void append_qualifier(std::string& out, const mof::Qualifier& qualifier, const ReplyPlace& place) {
    out += "<QUALIFIER";
    append_attribute(out, "NAME", qualifier.name);
    append_attribute(out, "TYPE", element_type(qualifier.type));
    if (qualifier.propagated)
        append_attribute(out, "PROPAGATED", "true");
    append_flavors(out, qualifier.flavors);
    out += '>';
    append_value(out, qualifier.type, qualifier.value, place);
    out += "</QUALIFIER>";
}

void append_qualifier_declaration(std::string& out, const mof::QualifierDeclaration& declaration,
                                  const ReplyPlace& place) {
    out += "<QUALIFIER.DECLARATION";
    append_attribute(out, "NAME", declaration.name);
    append_attribute(out, "TYPE", element_type(declaration.type));
    append_attribute(out, "ISARRAY", declaration.type.ends_with("[]") ? "true" : "false");
    if (declaration.array_size != 0)
        append_attribute(out, "ARRAYSIZE", std::to_string(declaration.array_size));
    append_flavors(out, declaration.flavors);
    out += '>';
    append_scopes(out, declaration.scopes);
    append_value(out, declaration.type, declaration.default_value, place);
    out += "</QUALIFIER.DECLARATION>";
}

} // namespace cmpihost::cimxml
