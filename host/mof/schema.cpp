#include "host/mof/schema.h"

#include "host/mof/builder.h"
#include "host/mof/reader.h"
#include "host/mof/refusal.h"

#include <algorithm>

namespace cmpihost::mof {

std::string Place::text() const {
    return line == 0 ? file : file + ':' + std::to_string(line) + ':' + std::to_string(column);
}

std::string Error::text() const {
    return place.text() + ": " + what;
}

const PropertyDeclaration* ClassDeclaration::property(std::string_view property_name) const {
    const auto found = property_index.find(property_name);
    return found == property_index.end() ? nullptr : &properties[found->second];
}

const MethodDeclaration* ClassDeclaration::method(std::string_view method_name) const {
    const auto found = std::find_if(methods.begin(), methods.end(), [method_name](const MethodDeclaration& method) {
        return same_name(method.name, method_name);
    });
    return found == methods.end() ? nullptr : &*found;
}

const Value* InstanceDeclaration::value(std::string_view property_name) const {
    for (const NamedValue& property : properties)
        if (same_name(property.name, property_name))
            return &property.value;
    return nullptr;
}

std::variant<Schema, Error> Schema::read(std::span<const std::string> files) {
    try {
        Builder builder;
        for (const std::string& file : files)
            read_file(file, builder);
        return builder.finish();
    } catch (const Refusal& refusal) {
        return refusal.error();
    }
}

std::variant<Schema, Error> Schema::read_text(const std::string& name, std::string_view text) {
    try {
        Builder builder;
        mof::read_text(name, text, builder);
        return builder.finish();
    } catch (const Refusal& refusal) {
        return refusal.error();
    }
}

const ClassDeclaration* Schema::find(std::string_view name) const {
    const auto found = index_.find(name);
    return found == index_.end() ? nullptr : &classes_[found->second];
}

const QualifierDeclaration* Schema::qualifier(std::string_view name) const {
    const auto found = qualifier_index_.find(name);
    return found == qualifier_index_.end() ? nullptr : &qualifiers_[found->second];
}

bool Schema::is_a(std::string_view name, std::string_view ancestor) const {
    for (const ClassDeclaration* declaration = find(name); declaration; declaration = find(declaration->superclass))
        if (same_name(declaration->name, ancestor))
            return true;
    return false;
}

} // namespace cmpihost::mof
