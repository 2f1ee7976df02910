#include "host/cim/object.h"

#include "host/cim/names.h"

#include <algorithm>

namespace cmpihost {

const Property* find_by_name(const std::vector<Property>& values, std::string_view name) {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [name](const Property& value) { return same_name(value.name, name); });
    return found == values.end() ? nullptr : &*found;
}

bool Value::operator==(const Value& other) const {
    const auto* mine = std::get_if<Reference>(&data);
    const auto* theirs = std::get_if<Reference>(&other.data);
    if (mine == nullptr || theirs == nullptr || *mine == nullptr || *theirs == nullptr)
        return data == other.data;
    return **mine == **theirs;
}

const Property* Object::key(std::string_view key_name) const {
    return find_by_name(keys, key_name);
}

const Property* Object::property(std::string_view property_name) const {
    return find_by_name(properties, property_name);
}

} // namespace cmpihost
