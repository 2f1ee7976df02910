// Instances, object paths and what they hold, as plain values.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cmpihost {

struct Object;

/// A CIM value. monostate is NULL. A reference is an Object with keys only, an embedded instance one with properties.
struct Value {
    using Array = std::vector<Value>;
    using Reference = std::shared_ptr<const Object>;
    std::variant<std::monostate, bool, std::uint64_t, std::int64_t, double, std::string, Reference, Array> data;

    bool operator==(const Value& other) const;
};

/// A key or a property: name, CIM type name ("string", "uint16", "reference", "uint8[]", ...) and value.
struct Property {
    std::string name;
    std::string type;
    Value value;

    bool operator==(const Property&) const = default;
};

/// The value of this name, without regard to case; null if there is none.
const Property* find_by_name(const std::vector<Property>& values, std::string_view name);

/// An instance or an object path, keys and properties in the order in which the provider set them.
struct Object {
    std::string class_name;
    std::string name_space;
    std::optional<std::string> host;
    std::vector<Property> keys;
    std::vector<Property> properties;

    bool operator==(const Object&) const = default;
    const Property* key(std::string_view name) const;      ///< without regard to case; null if absent
    const Property* property(std::string_view name) const; ///< without regard to case; null if absent
};

} // namespace cmpihost
