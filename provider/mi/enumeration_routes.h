// Which walk serves an enumeration of a class.
#pragma once

#include "provider/common/class_row.h"
#include "provider/mi/instance_enumerators.h"
#include "provider/mi/path_enumerators.h"

#include <span>

namespace fcip {

/// The rows of enumerate-instance-names, in test order; null = nothing is returned.
std::span<const class_row<path_enumerator*>> path_routes();

/// The rows of enumerate-instances, in test order; null = nothing is returned.
std::span<const class_row<instance_enumerator*>> instance_routes();

/// The walk for a class: the first row whose class it is, or the walk over associations. Null = nothing is returned.
path_enumerator* path_enumerator_of(const char* class_name);

/// The walk for a class: the first row whose class it is, or the walk over associations. Null = nothing is returned.
instance_enumerator* instance_enumerator_of(const char* class_name);

} // namespace fcip
