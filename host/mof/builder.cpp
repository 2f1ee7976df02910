#include "host/mof/builder.h"

#include "host/mof/refusal.h"

#include <algorithm>

namespace cmpihost::mof {

namespace {

bool has(const std::vector<NamedValue>& qualifiers, std::string_view name) {
    return std::any_of(qualifiers.begin(), qualifiers.end(),
                       [&](const NamedValue& qualifier) { return same_name(qualifier.name, name); });
}

/// A qualifier that is there and not said to be false.
bool is_on(const std::vector<NamedValue>& qualifiers, std::string_view name) {
    return std::any_of(qualifiers.begin(), qualifiers.end(), [&](const NamedValue& qualifier) {
        const bool* value = std::get_if<bool>(&qualifier.value.data);
        return same_name(qualifier.name, name) && value && *value;
    });
}

bool has_keys(const ClassDeclaration& declaration) {
    return std::any_of(declaration.properties.begin(), declaration.properties.end(),
                       [](const PropertyDeclaration& property) { return property.key; });
}

std::string described(const PropertyDeclaration& property, const ClassDeclaration& declaration) {
    return (property.type == "reference" ? "reference " : "property ") + property.name + " of " + declaration.name;
}

void refuse_own_twice(const ClassDeclaration& declaration) {
    NameMap<bool> seen;
    for (const PropertyDeclaration& own : declaration.properties)
        if (!seen.emplace(own.name, true).second)
            throw Refusal(own.place, described(own, declaration) + " is declared twice");
}

void check_references(const ClassDeclaration& declaration) {
    const auto references =
        std::count_if(declaration.properties.begin(), declaration.properties.end(),
                      [](const PropertyDeclaration& property) { return property.type == "reference"; });
    if (declaration.association && references < 2)
        throw Refusal(declaration.place, "association " + declaration.name + ", expected two references or more");
}

/// Puts a class's own properties behind the inherited ones, or in place of those that they override.
void inherit(ClassDeclaration& declaration, const ClassDeclaration& parent) {
    std::vector<PropertyDeclaration> own = std::move(declaration.properties);
    declaration.properties = parent.properties;
    declaration.property_index = parent.property_index;
    for (PropertyDeclaration& property : own) {
        const auto overridden = declaration.property_index.find(property.name);
        if (overridden != declaration.property_index.end())
            declaration.properties[overridden->second] = std::move(property);
        else
            declaration.properties.push_back(std::move(property));
    }
}

} // namespace

void Builder::check_override(const ClassDeclaration& declaration, PropertyDeclaration& own,
                             const PropertyDeclaration& inherited) const {
    const std::string property = described(own, declaration);
    if (own.type != inherited.type)
        throw Refusal(own.place,
                      property + " is " + own.type + ", expected " + inherited.type + " as in " + inherited.origin);
    if (!has(own.qualifiers, "Override"))
        throw Refusal(own.place, property + " is inherited from " + inherited.origin + ", expected qualifier Override");
    if (own.type == "reference" && !schema_.is_a(own.reference_class, inherited.reference_class))
        throw Refusal(own.place, property + " admits " + own.reference_class + ", expected " +
                                     inherited.reference_class + " or a subclass of it");
    own.key = own.key || inherited.key;
    own.required = own.required || inherited.required;
    own.origin = inherited.origin;
}

void Builder::check_own_property(const ClassDeclaration& declaration, PropertyDeclaration& own,
                                 const ClassDeclaration* parent) const {
    own.key = is_on(own.qualifiers, "Key");
    own.required = is_on(own.qualifiers, "Required");
    own.origin = declaration.name;
    if (own.type == "reference" && !declaration.association)
        throw Refusal(own.place, described(own, declaration) + ", expected qualifier Association at the class");
    if (parent == nullptr)
        return;
    const bool adds_key = own.key && has_keys(*parent);
    const PropertyDeclaration* inherited = parent->property(own.name);
    if (inherited)
        check_override(declaration, own, *inherited);
    if (adds_key && !(inherited && inherited->key))
        throw Refusal(own.place,
                      described(own, declaration) + " is a key, expected no key beside those of " + parent->name);
}

void Builder::add(ClassDeclaration declaration) {
    if (const ClassDeclaration* other = schema_.find(declaration.name))
        throw Refusal(declaration.place,
                      "class " + declaration.name + " is declared twice, first at " + other->place.text());
    const ClassDeclaration* parent = nullptr;
    if (!declaration.superclass.empty()) {
        parent = schema_.find(declaration.superclass);
        if (!parent)
            throw Refusal(declaration.place, "superclass " + declaration.superclass + " of " + declaration.name +
                                                 " is not declared, expected its declaration before");
    }
    declaration.association = is_on(declaration.qualifiers, "Association") || (parent && parent->association);
    declaration.abstract = is_on(declaration.qualifiers, "Abstract");
    refuse_own_twice(declaration);
    for (PropertyDeclaration& own : declaration.properties)
        check_own_property(declaration, own, parent);
    if (parent)
        inherit(declaration, *parent);
    check_references(declaration);
    for (std::size_t i = 0; i < declaration.properties.size(); ++i)
        declaration.property_index.emplace(declaration.properties[i].name, i);
    schema_.index_.emplace(declaration.name, schema_.classes_.size());
    schema_.classes_.push_back(std::move(declaration));
}

Schema Builder::finish() {
    for (const ClassDeclaration& declaration : schema_.classes_)
        for (const PropertyDeclaration& property : declaration.properties)
            if (property.type == "reference" && !schema_.find(property.reference_class))
                throw Refusal(property.place, described(property, declaration) + " admits " + property.reference_class +
                                                  ", which is not declared");
    return std::move(schema_);
}

} // namespace cmpihost::mof
