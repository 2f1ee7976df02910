// Plain values: comparing them and finding them by name.
#include "host/broker/names.h"

#include <algorithm>

namespace cmpihost {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

bool same_name(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return x == y || lower(x) == lower(y); });
}

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
