// Who answers for which class in which namespace.
#pragma once

#include "host/broker/broker.h"
#include "host/mof/schema.h"
#include "host/server/settings.h"

#include <chrono>
#include <functional>

namespace cmpihost::server {

/// Runs an operation with a provider, or with what is asked as one. Several threads may call it.
using Ask = std::function<Answer(const Request& request, const Sink& sink)>;

/// What a provider was asked so far.
struct ProviderFigures {
    std::string name; ///< of its library's file, with folders where two have the same, and the prefix of its factories
    std::uint64_t calls = 0;
    std::uint64_t failures = 0; ///< calls that answered another status than OK
    std::chrono::microseconds time{};
};

/// Who answers.
struct ProviderPlace {
    ProviderFile file;      ///< as it was loaded
    bool simulated = false; ///< over a platform that takes scenarios
};

/// A class that somebody serves.
struct ServedClass {
    ServedClass(const mof::Schema& schema, const mof::ClassDeclaration& served, const Ask& whom);

    /// Whether it is `ancestor` or derives from it.
    bool is_a(const mof::ClassDeclaration& ancestor) const;

    const mof::ClassDeclaration* declaration;
    std::vector<const mof::ClassDeclaration*> ancestors; ///< all superclasses
    const Ask* ask;
    bool instances = false;    ///< enumerated, got, written
    bool associations = false; ///< walked along
    bool methods = false;      ///< called
};

/// A namespace with its classes. A class that several serve is there several times.
struct Namespace {
    std::string name;
    const mof::Schema& schema;
    std::vector<ServedClass> classes;
};

/// What is loaded: schemas, providers and the interop namespaces. Does not change once it is made.
class Catalogue {
  public:
    /// @throws std::runtime_error whose what() is one line
    explicit Catalogue(const Settings& settings);
    ~Catalogue();
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    /// The namespace of this name, in any case; null if there is none.
    const Namespace* find(std::string_view name) const;

    /// All namespaces: those of providers, then the interop namespaces.
    std::vector<const Namespace*> namespaces() const;

    /// Whether it is one of the server's own namespaces, which no provider serves.
    bool is_interop(const Namespace& space) const;

    /// The provider that is asked so; nothing for the server's own classes.
    std::optional<ProviderPlace> provider_of(const Ask& ask) const;

    /// Each provider, with what it was asked until now.
    std::vector<ProviderFigures> providers() const;

    /// The schema that the keys of a request in this namespace are read by.
    const mof::Schema& schema_of(std::string_view name_space) const;

  private:
    struct Content;
    std::unique_ptr<Content> content_;
};

} // namespace cmpihost::server
