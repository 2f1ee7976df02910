#include "host/mof/builder.h"

#include "host/mof/inheritance.h"
#include "host/mof/refusal.h"
#include "host/mof/typed_value.h"

#include <algorithm>
#include <limits>

namespace cmpihost::mof {

namespace {

/// The type of a qualifier that nobody declared.
struct ValueType {
    std::string operator()(bool) const { return "boolean"; }
    std::string operator()(std::uint64_t value) const {
        return value > std::numeric_limits<std::uint32_t>::max() ? "uint64" : "uint32";
    }
    std::string operator()(std::int64_t value) const {
        return value < std::numeric_limits<std::int32_t>::min() ? "sint64" : "sint32";
    }
    std::string operator()(double) const { return "real64"; }
    std::string operator()(const Value::Array& values) const {
        return (values.empty() ? "string" : std::visit(*this, values.front().data)) + "[]";
    }
    template <class Other>
    std::string operator()(const Other& /*value*/) const {
        return "string";
    }
};

bool has_keys(const ClassDeclaration& declaration) {
    return std::any_of(declaration.properties.begin(), declaration.properties.end(),
                       [](const PropertyDeclaration& property) { return property.key; });
}

template <class Member>
void refuse_own_twice(const std::vector<Member>& members, const std::string& class_name) {
    NameMap<bool> seen;
    for (const Member& own : members)
        if (!seen.emplace(own.name, true).second)
            throw Refusal(own.place, described(own, class_name) + " is declared twice");
}

void check_references(const ClassDeclaration& declaration) {
    const auto references =
        std::count_if(declaration.properties.begin(), declaration.properties.end(),
                      [](const PropertyDeclaration& property) { return property.type == "reference"; });
    if (declaration.association && references < 2)
        throw Refusal(declaration.place, "association " + declaration.name + ", expected two references or more");
}

std::string listed(Scopes scopes) {
    std::string text;
    for (std::size_t i = 0; i < scopes.size(); ++i)
        if (scopes[i])
            text.append(text.empty() ? "" : ", ").append(scope_names[i]);
    return text;
}

Embedded embedded_of(const PropertyDeclaration& property) {
    if (property.type != "string" && property.type != "string[]")
        return Embedded::no;
    const Qualifier* instance = find_qualifier(property.qualifiers, "EmbeddedInstance");
    if (instance != nullptr && std::holds_alternative<std::string>(instance->value.data))
        return Embedded::instance;
    return is_on(property.qualifiers, "EmbeddedObject") ? Embedded::object : Embedded::no;
}

} // namespace

Builder::Builder() {
    for (const QualifierDeclaration& known : known_qualifiers())
        add(known);
}

// ---------------------------------------------------------------------------------------------- qualifiers

void Builder::add(QualifierDeclaration declaration) {
    const auto [at, is_new] = schema_.qualifier_index_.emplace(declaration.name, schema_.qualifiers_.size());
    if (is_new) {
        schema_.qualifiers_.push_back(std::move(declaration));
        return;
    }
    QualifierDeclaration& other = schema_.qualifiers_[at->second];
    if (other.place.line != 0)
        throw Refusal(declaration.place,
                      "qualifier " + declaration.name + " is declared twice, first at " + other.place.text());
    other = std::move(declaration);
}

Qualifier Builder::qualifier(const std::string& name, std::optional<Value> value, const Place& place) const {
    const QualifierDeclaration* declared = schema_.qualifier(name);
    if (declared == nullptr) {
        const Value given = value ? std::move(*value) : Value{true};
        const std::string type = std::visit(ValueType(), given.data);
        return {name, typed_value(type, given) ? type : "string[]", given, {}, false};
    }
    if (!value)
        value = declared->type == "boolean" ? Value{true} : Value{};
    auto typed = typed_value(declared->type, std::move(*value));
    if (!typed)
        throw Refusal(place, "qualifier " + name + ", expected a value of type " + declared->type);
    return {name, declared->type, std::move(*typed), declared->flavors, false};
}

void Builder::check_scope(const std::vector<Qualifier>& qualifiers, Scope scope, const Place& place,
                          const std::string& described) const {
    for (const Qualifier& qualifier : qualifiers) {
        const QualifierDeclaration* declared = schema_.qualifier(qualifier.name);
        if (declared != nullptr && !declared->scopes[static_cast<std::size_t>(scope)])
            throw Refusal(place, "qualifier " + qualifier.name + " at " + described + ", expected at " +
                                     listed(declared->scopes));
    }
}

void Builder::check_scopes(const ClassDeclaration& declaration) const {
    const Scope of_class = declaration.association                       ? Scope::association
                           : is_on(declaration.qualifiers, "Indication") ? Scope::indication
                                                                         : Scope::klass;
    check_scope(declaration.qualifiers, of_class, declaration.place, "class " + declaration.name);
    for (const PropertyDeclaration& own : declaration.properties)
        check_scope(own.qualifiers, own.type == "reference" ? Scope::reference : Scope::property, own.place,
                    described(own, declaration.name));
    for (const MethodDeclaration& own : declaration.methods) {
        const std::string what = described(own, declaration.name);
        check_scope(own.qualifiers, Scope::method, own.place, what);
        for (const ParameterDeclaration& parameter : own.parameters)
            check_scope(parameter.qualifiers, Scope::parameter, own.place,
                        "parameter " + parameter.name + " of " + what);
    }
}

// ---------------------------------------------------------------------------------------------- classes

void Builder::check_own_property(const ClassDeclaration& declaration, PropertyDeclaration& own,
                                 const ClassDeclaration* parent) const {
    own.key = is_on(own.qualifiers, "Key");
    own.required = is_on(own.qualifiers, "Required");
    own.origin = declaration.name;
    if (own.type == "reference" && !declaration.association)
        throw Refusal(own.place, described(own, declaration.name) + ", expected qualifier Association at the class");
    const PropertyDeclaration* inherited = parent == nullptr ? nullptr : parent->property(own.name);
    if (own.key && parent != nullptr && has_keys(*parent) && !(inherited != nullptr && inherited->key))
        throw Refusal(own.place,
                      described(own, declaration.name) + " is a key, expected no key beside those of " + parent->name);
}

const ClassDeclaration* Builder::superclass_of(const ClassDeclaration& declaration) const {
    if (declaration.superclass.empty())
        return nullptr;
    const ClassDeclaration* parent = schema_.find(declaration.superclass);
    if (parent == nullptr)
        throw Refusal(declaration.place, "superclass " + declaration.superclass + " of " + declaration.name +
                                             " is not declared, expected its declaration before");
    return parent;
}

void Builder::add(ClassDeclaration declaration) {
    if (const ClassDeclaration* other = schema_.find(declaration.name))
        throw Refusal(declaration.place,
                      "class " + declaration.name + " is declared twice, first at " + other->place.text());
    const ClassDeclaration* parent = superclass_of(declaration);
    declaration.association = is_on(declaration.qualifiers, "Association") || (parent && parent->association);
    declaration.abstract = is_on(declaration.qualifiers, "Abstract");
    refuse_own_twice(declaration.properties, declaration.name);
    refuse_own_twice(declaration.methods, declaration.name);
    check_scopes(declaration);
    for (PropertyDeclaration& own : declaration.properties)
        check_own_property(declaration, own, parent);
    for (MethodDeclaration& own : declaration.methods)
        own.origin = declaration.name;
    if (parent)
        inherit(declaration, *parent, schema_);
    check_references(declaration);
    for (std::size_t i = 0; i < declaration.properties.size(); ++i) {
        declaration.properties[i].embedded = embedded_of(declaration.properties[i]);
        declaration.property_index.emplace(declaration.properties[i].name, i);
    }
    schema_.index_.emplace(declaration.name, schema_.classes_.size());
    schema_.classes_.push_back(std::move(declaration));
}

Schema Builder::finish() {
    for (const ClassDeclaration& declaration : schema_.classes_)
        for (const PropertyDeclaration& property : declaration.properties)
            if (property.type == "reference" && !schema_.find(property.reference_class))
                throw Refusal(property.place, described(property, declaration.name) + " admits " +
                                                  property.reference_class + ", which is not declared");
    return std::move(schema_);
}

} // namespace cmpihost::mof
