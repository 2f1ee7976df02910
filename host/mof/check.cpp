#include "host/mof/check.h"

#include <algorithm>

namespace cmpihost::mof {

namespace {

bool is_null(const Property& property) {
    return std::holds_alternative<std::monostate>(property.value.data);
}

/// The references by which an object came to be looked at, innermost first.
struct Trail {
    const Trail* outer;
    std::string_view class_name;
    std::string_view role;

    std::string text() const {
        return (outer ? outer->text() : std::string()) + std::string(class_name) + '.' + std::string(role) + " > ";
    }
};

class Check {
  public:
    Check(const Schema& schema, std::vector<std::string>& findings) : schema_(schema), findings_(findings) {}

    void object(const Object& object, Kind kind, const Trail* trail);

  private:
    /// One object, with the class that it claims.
    struct Subject {
        const ClassDeclaration& declaration;
        const Trail* trail;
    };

    void values(const Subject& subject, const std::vector<Property>& values, bool keys);
    void type(const Subject& subject, const PropertyDeclaration& declared, const Property& value);
    void reference(const Subject& subject, const PropertyDeclaration& declared, const Object& target);
    void presence(const Subject& subject, const PropertyDeclaration& declared, const char* what, const Property* value);
    void completeness(const Subject& subject, const std::vector<Property>& values, bool is_path);
    void report(const Subject& subject, std::string_view name, const std::string& what);

    const Schema& schema_;
    std::vector<std::string>& findings_;
};

void Check::report(const Subject& subject, std::string_view name, const std::string& what) {
    std::string line = subject.trail ? subject.trail->text() : std::string();
    line += subject.declaration.name;
    if (!name.empty())
        line.append(".").append(name);
    findings_.push_back(line + ": " + what);
}

void Check::reference(const Subject& subject, const PropertyDeclaration& declared, const Object& target) {
    const ClassDeclaration* target_class = schema_.find(target.class_name);
    if (target_class && !schema_.is_a(target.class_name, declared.reference_class))
        report(subject, declared.name, "refers to " + target_class->name + ", expected " + declared.reference_class);
    const Trail trail{subject.trail, subject.declaration.name, declared.name};
    object(target, Kind::path, &trail);
}

/// A string that is declared to hold an object may be one.
bool is_embedded(const PropertyDeclaration& declared, const std::string& type) {
    return declared.embedded != Embedded::no && type == (declared.type == "string" ? "instance" : "instance[]");
}

void Check::type(const Subject& subject, const PropertyDeclaration& declared, const Property& value) {
    if (value.type != declared.type && !is_embedded(declared, value.type))
        return report(subject, declared.name, "type " + value.type + ", expected " + declared.type);
    const auto* target = std::get_if<Value::Reference>(&value.value.data);
    if (target && *target && declared.type == "reference")
        reference(subject, declared, **target);
}

void Check::values(const Subject& subject, const std::vector<Property>& values, bool keys) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Property& value = values[i];
        const PropertyDeclaration* declared = subject.declaration.property(value.name);
        if (!declared) {
            report(subject, value.name, "is not declared");
            continue;
        }
        if (find_by_name(values, value.name) != &value)
            report(subject, declared->name, "is there twice");
        if (keys && !declared->key)
            report(subject, declared->name, "is no key");
        type(subject, *declared, value);
    }
}

void Check::presence(const Subject& subject, const PropertyDeclaration& declared, const char* what,
                     const Property* value) {
    if (!value)
        report(subject, declared.name, std::string(what) + " is missing");
    else if (is_null(*value))
        report(subject, declared.name, std::string(what) + " is NULL");
}

/// Servers rebuild an instance's path from its properties, so its keys must be there like what is required.
void Check::completeness(const Subject& subject, const std::vector<Property>& values, bool is_path) {
    for (const PropertyDeclaration& declared : subject.declaration.properties) {
        if (declared.key)
            presence(subject, declared, "key", find_by_name(values, declared.name));
        else if (declared.required && !is_path)
            presence(subject, declared, "required value", find_by_name(values, declared.name));
    }
}

void Check::object(const Object& object, Kind kind, const Trail* trail) {
    const ClassDeclaration* declaration = schema_.find(object.class_name);
    if (!declaration) {
        findings_.push_back((trail ? trail->text() : std::string()) + object.class_name + ": class is not declared");
        return;
    }
    const bool is_path = kind == Kind::path;
    const Subject subject{*declaration, trail};
    if (declaration->abstract)
        report(subject, {}, "class is abstract");
    values(subject, object.keys, true);
    if (!is_path)
        values(subject, object.properties, false);
    if (kind != Kind::partial_instance)
        completeness(subject, is_path ? object.keys : object.properties, is_path);
}

} // namespace

std::vector<std::string> check(const Schema& schema, const Object& object, Kind kind) {
    std::vector<std::string> findings;
    Check(schema, findings).object(object, kind, nullptr);
    return findings;
}

} // namespace cmpihost::mof
