// What the values of enumerated properties mean.
#pragma once

#include "host/mof/schema.h"

namespace cmpihost {

/// The text that the qualifiers ValueMap and Values give to a value of the property; empty if they give none. Without a
/// ValueMap, Values begin with that of 0.
std::string mapped_text(const mof::PropertyDeclaration& declaration, const Value& value);

} // namespace cmpihost
