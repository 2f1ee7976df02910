// A provider library, loaded as a CIM server does it.
#pragma once

#include "host/broker/broker.h"

#include <stdexcept>

namespace cmpihost {

/// A library that cannot be used. what() is one line.
class LoadError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A loaded provider library. Its MIs' cleanup functions are called, and the library is closed, at the end.
class Library {
  public:
    /// Loads the library with every symbol resolved. A name without a slash is looked for in the working folder, then
    /// where the system's loader looks.
    /// @throws LoadError: no such file, no library, or the symbol that stays unresolved
    explicit Library(const std::string& file);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// What takes scenarios for the simulated platform under the provider: the same for all libraries over one
    /// platform. Null: there is no such platform.
    const void* platform() const;

    /// Hands a scenario to the simulated platform under the provider, through its C function switchsim_load_scenario().
    /// Call it before create(): a provider's factories already ask the platform.
    /// @throws LoadError: the library brings no such function, or the function's own message
    void load_scenario(const std::string& file);

    /// Calls the factories `<name>_Create_InstanceMI`, `..._AssociationMI`, `..._MethodMI` and `..._PropertyMI`, or
    /// `_Generic_Create_...` with the name where the library has only that. Some may be absent. Function tables of
    /// version 100 are served, and the later ones up to 200, which only add slots behind those of version 100.
    /// @throws LoadError: no factory is there (those that are get named), one made no MI, or an MI's table is absent or
    /// of another version
    void create(const std::string& name);

    const Provider& provider() const { return provider_; }

  private:
    void* symbol(const std::string& name) const;

    std::string file_;
    void* handle_;
    Provider provider_;
};

} // namespace cmpihost
