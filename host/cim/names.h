// CIM names: compared without regard to case, also as keys of a map.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace cmpihost {

/// An ASCII letter in lower case, whatever the locale.
constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether two CIM names are the same.
constexpr bool same_name(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lower(a[i]) != lower(b[i]))
            return false;
    return true;
}

/// Hashes and compares names as they are looked up.
struct NameTraits {
    using is_transparent = void;

    std::size_t operator()(std::string_view name) const {
        std::size_t hash = 5381;
        for (const char c : name)
            hash = hash * 33 + static_cast<unsigned char>(lower(c));
        return hash;
    }
    bool operator()(std::string_view a, std::string_view b) const { return same_name(a, b); }
};

template <class T>
using NameMap = std::unordered_map<std::string, T, NameTraits, NameTraits>;

} // namespace cmpihost
