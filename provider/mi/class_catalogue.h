// The classes that requests are answered for, and the key by which each is looked up.
#pragma once

#include "provider/common/class_row.h"

#include <span>

namespace fcip {

/// The key name of classes that are looked up by whatever key comes first.
inline constexpr const char* any_key = nullptr;

/// The classes whose objects can be looked up by a key, each with the key's name, in the order in which they are
/// tested.
std::span<const class_row<const char*>> class_keys();

/// Whether a key is the one by which objects of the class are looked up: 1 or 0. Names are compared without regard to
/// case.
int check_key_name(const char* class_name, const char* key_name);

} // namespace fcip
