// The objects of the interop namespace: what a client discovers the server by.
#pragma once

#include "host/broker/broker.h"
#include "host/mof/schema.h"

namespace cmpihost::server {

/// Instances that a MOF file declares, and one of CIM_Namespace, tied to the object manager, for each namespace that is
/// served. They are asked as a provider is.
class Interop {
  public:
    /// @param schema the interop namespace's classes and instances; must outlive this
    /// @param namespaces all that are served, the interop namespaces among them; one that is there twice counts once
    /// @param system_name the host's name, for keys and properties SystemName that the MOF leaves open
    /// @throws std::runtime_error whose what() is one line: an instance of no class, a key without a value
    Interop(const mof::Schema& schema, const std::vector<std::string>& namespaces, const std::string& system_name);

    /// Answers enumerations and gets of one class (not its subclasses), and association requests, whose class filters
    /// take subclasses too; anything else is not supported. Paths carry the request's namespace.
    Answer answer(const Request& request) const;

  private:
    Answer enumerate(const Request& request) const;
    Answer get(const Request& request) const;
    Answer associators(const Request& request) const;
    Answer references(const Request& request) const;

    const Object* find(const Object& path) const;
    bool is_a(std::string_view class_name, const std::optional<std::string>& filter) const;
    template <class Take>
    void each_tie(const Request& request, Take take) const;

    const mof::Schema& schema_;
    std::vector<Object> instances_; ///< keys and properties; no namespaces yet
};

} // namespace cmpihost::server
