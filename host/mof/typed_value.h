// Values of MOF as their declared types have them.
#pragma once

#include "host/cim/object.h"

namespace cmpihost::mof {

/// The value as one of this type ("sint16", "string[]", "reference"): integers in range and with a sign if the type has
/// one, reals as double; strings stand for texts, characters, date-times and references. NULL is of every type. Nothing
/// if the value is of another type.
std::optional<Value> typed_value(std::string_view type, Value value);

} // namespace cmpihost::mof
