// What a schema says of objects beside what the provider says.
#pragma once

#include "host/broker/broker.h"
#include "host/mof/schema.h"

namespace cmpihost {

/// Gives an instance that came without keys those that its class declares, if it has a value for each. The instance
/// that was asked for by its path has the keys of that.
void add_keys(const mof::Schema& schema, const Request& request, Object& instance);

/// What a request names that its class does not declare: "class C is not in the schema" if the provider did not answer
/// for it either, "class C declares no property P". One text each.
std::vector<std::string> undeclared_names(const mof::Schema& schema, const Request& request, bool answered);

} // namespace cmpihost
