// The objects of the interop namespace: what a client discovers the server by.
#pragma once

#include "host/broker/broker.h"
#include "host/mof/schema.h"

namespace cmpihost::server {

/// Instances that a MOF file declares, and one of CIM_Namespace, tied to the object manager, for each namespace that is
/// served. They are asked as a provider is.
class Interop {
  public:
    /// @param schema the interop namespace's classes and instances
    /// @param namespaces all that are served, the interop namespaces among them
    /// @param system_name the host's name, for keys and properties of that name that the MOF leaves open
    /// @throws std::runtime_error whose what() is one line: an instance of no class, a key without a value
    Interop(const mof::Schema& schema, const std::vector<std::string>& namespaces, const std::string& system_name);

    /// Answers enumerations, gets and association requests for one class (not its subclasses) or, without a class
    /// filter, for all; anything else is not supported. Paths carry the request's namespace.
    Answer answer(const Request& request) const;

  private:
    const mof::Schema& schema_;
    std::vector<Object> instances_;
};

} // namespace cmpihost::server
