#include "host/mof/inheritance.h"

#include "host/mof/refusal.h"

#include <algorithm>

namespace cmpihost::mof {

namespace {

/// Those that spread, as a subclass has them.
std::vector<Qualifier> spread(const std::vector<Qualifier>& qualifiers) {
    std::vector<Qualifier> found;
    std::copy_if(qualifiers.begin(), qualifiers.end(), std::back_inserter(found),
                 [](const Qualifier& qualifier) { return qualifier.flavors.to_subclass; });
    for (Qualifier& qualifier : found)
        qualifier.propagated = true;
    return found;
}

/// Adds what spreads from a superclass and is not said anew.
void inherit_qualifiers(std::vector<Qualifier>& own, const std::vector<Qualifier>& inherited, const Place& place,
                        const std::string& what) {
    const std::size_t own_ones = own.size();
    for (Qualifier& qualifier : spread(inherited)) {
        const Qualifier* again = find_qualifier({own.data(), own_ones}, qualifier.name);
        if (again == nullptr)
            own.push_back(std::move(qualifier));
        else if (!qualifier.flavors.overridable && again->value != qualifier.value)
            throw Refusal(place, "qualifier " + qualifier.name + " at " + what +
                                     ", expected the value that it has in the superclass (DisableOverride)");
    }
}

PropertyDeclaration propagated(PropertyDeclaration property) {
    property.qualifiers = spread(property.qualifiers);
    property.propagated = true;
    return property;
}

MethodDeclaration propagated(MethodDeclaration method) {
    method.qualifiers = spread(method.qualifiers);
    for (ParameterDeclaration& parameter : method.parameters)
        parameter.qualifiers = spread(parameter.qualifiers);
    method.propagated = true;
    return method;
}

/// What holds for properties and methods.
template <class Member>
void override_member(const std::string& class_name, Member& own, const Member& inherited) {
    const std::string what = described(own, class_name);
    if (own.type != inherited.type)
        throw Refusal(own.place,
                      what + " is " + own.type + ", expected " + inherited.type + " as in " + inherited.origin);
    if (find_qualifier(own.qualifiers, "Override") == nullptr)
        throw Refusal(own.place, what + " is inherited from " + inherited.origin + ", expected qualifier Override");
    inherit_qualifiers(own.qualifiers, inherited.qualifiers, own.place, what);
    own.origin = inherited.origin;
}

void override_with(const ClassDeclaration& declaration, PropertyDeclaration& own, const PropertyDeclaration& inherited,
                   const Schema& schema) {
    override_member(declaration.name, own, inherited);
    if (own.type == "reference" && !schema.is_a(own.reference_class, inherited.reference_class))
        throw Refusal(own.place, described(own, declaration.name) + " admits " + own.reference_class + ", expected " +
                                     inherited.reference_class + " or a subclass of it");
    own.key = own.key || inherited.key;
    own.required = own.required || inherited.required;
}

void override_with(const ClassDeclaration& declaration, MethodDeclaration& own, const MethodDeclaration& inherited,
                   const Schema& /*schema*/) {
    override_member(declaration.name, own, inherited);
    for (ParameterDeclaration& parameter : own.parameters) {
        const auto same = std::find_if(inherited.parameters.begin(), inherited.parameters.end(),
                                       [&](const auto& each) { return same_name(each.name, parameter.name); });
        if (same != inherited.parameters.end())
            inherit_qualifiers(parameter.qualifiers, same->qualifiers, own.place,
                               "parameter " + parameter.name + " of " + described(own, declaration.name));
    }
}

/// Puts a class's own members behind the inherited ones, or in place of those that they override.
template <class Member>
void inherit_members(const ClassDeclaration& declaration, std::vector<Member>& members,
                     const std::vector<Member>& inherited, const Schema& schema) {
    std::vector<Member> own = std::move(members);
    members.clear();
    for (const Member& each : inherited)
        members.push_back(propagated(each));
    for (Member& each : own) {
        const auto overridden = std::find_if(members.begin(), members.end(),
                                             [&](const Member& other) { return same_name(other.name, each.name); });
        if (overridden == members.end()) {
            members.push_back(std::move(each));
        } else {
            override_with(declaration, each, *overridden, schema);
            *overridden = std::move(each);
        }
    }
}

} // namespace

std::string described(const PropertyDeclaration& property, const std::string& class_name) {
    return (property.type == "reference" ? "reference " : "property ") + property.name + " of " + class_name;
}

std::string described(const MethodDeclaration& method, const std::string& class_name) {
    return "method " + method.name + " of " + class_name;
}

void inherit(ClassDeclaration& declaration, const ClassDeclaration& parent, const Schema& schema) {
    inherit_qualifiers(declaration.qualifiers, parent.qualifiers, declaration.place, "class " + declaration.name);
    inherit_members(declaration, declaration.properties, parent.properties, schema);
    inherit_members(declaration, declaration.methods, parent.methods, schema);
}

} // namespace cmpihost::mof
