// Objects as JSON.
#pragma once

#include "host/cim/object.h"

#include <nlohmann/json.hpp>

namespace cmpihost {

/// With class, namespace, host, keys and properties.
nlohmann::ordered_json json_of_object(const Object& object);

} // namespace cmpihost
