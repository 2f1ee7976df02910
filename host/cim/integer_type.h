// The integer types of CIM.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace cmpihost {

struct IntegerType {
    std::string_view name;
    bool with_sign;
    unsigned bits;
};

constexpr std::array integer_types{IntegerType{"uint8", false, 8},   IntegerType{"uint16", false, 16},
                                   IntegerType{"uint32", false, 32}, IntegerType{"uint64", false, 64},
                                   IntegerType{"sint8", true, 8},    IntegerType{"sint16", true, 16},
                                   IntegerType{"sint32", true, 32},  IntegerType{"sint64", true, 64}};

/// The integer type of this name; null if it names none.
constexpr const IntegerType* integer_type(std::string_view name) {
    const auto* found = std::find_if(integer_types.begin(), integer_types.end(),
                                     [name](const IntegerType& each) { return each.name == name; });
    return found == integer_types.end() ? nullptr : found;
}

} // namespace cmpihost
