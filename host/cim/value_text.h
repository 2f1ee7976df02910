// Values as text, for people and for MOF.
#pragma once

#include "host/cim/object.h"

namespace cmpihost {

/// A text for a terminal or a comment: control characters as escapes.
std::string printable(std::string_view text);

/// A value as text output shows it.
std::string text_value(const Property& property);

/// A value as a MOF initializer.
std::string mof_value(const Property& property);

} // namespace cmpihost
