// The classes that requests are answered for, and the key by which each is looked up.
#pragma once

#include <span>

namespace fcip {

/// A class whose keys are recognised. A null key name means that any key will do.
struct class_key {
    const char* class_name;
    const char* key_name;
};

/// The classes whose objects can be looked up by a key, in the order in which they are tested.
std::span<const class_key> class_keys();

/// The class's row, its name compared without regard to case; null for a class without one.
const class_key* key_of(const char* class_name);

/// Whether a key is the one of the row, compared without regard to case. No key is one of a null row.
bool is_key(const class_key* row, const char* key_name);

/// Whether a key is the one by which objects of the class are looked up: 1 or 0. Names are compared without regard to
/// case.
int check_key_name(const char* class_name, const char* key_name);

} // namespace fcip
