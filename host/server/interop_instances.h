// The instances of the interop namespace, made of MOF and of what the server knows.
#pragma once

#include "host/mof/schema.h"

namespace cmpihost::server {

/// What Interop is made of, in the order of the MOF; then a CIM_Namespace and a CIM_NamespaceInManager for each
/// namespace. The parameters are those of Interop, and so is what is thrown.
std::vector<Object> interop_instances(const mof::Schema& schema, const std::vector<std::string>& namespaces,
                                      const std::string& system_name);

} // namespace cmpihost::server
