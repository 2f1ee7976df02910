// CIM names: compared without regard to case.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// Whether two CIM names are the same (ASCII letters without regard to case, whatever the locale).
bool same_name(std::string_view a, std::string_view b);

/// The value of this name; null if there is none.
const Property* find_by_name(const std::vector<Property>& values, std::string_view name);

} // namespace cmpihost
