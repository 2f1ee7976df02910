// Which walk serves an enumeration of a class.
#pragma once

#include "provider/mi/instance_enumerators.h"
#include "provider/mi/path_enumerators.h"

#include <span>

namespace fcip {

/// A row of a route table: the class that is tested, and the walk that serves it; null = nothing is returned.
template <typename Enumerator>
struct enumeration_route {
    const char* class_name;
    Enumerator* enumerate;
};

/// The rows of enumerate-instance-names, in test order.
std::span<const enumeration_route<path_enumerator>> path_routes();

/// The rows of enumerate-instances, in test order.
std::span<const enumeration_route<instance_enumerator>> instance_routes();

/// The walk for a class: the first row whose class it is, or the walk over associations. Null = nothing is returned.
path_enumerator* path_enumerator_of(const char* class_name);

/// The walk for a class: the first row whose class it is, or the walk over associations. Null = nothing is returned.
instance_enumerator* instance_enumerator_of(const char* class_name);

} // namespace fcip
