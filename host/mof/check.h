// Holds what a provider answers against the declarations of its classes.
#pragma once

#include "host/mof/schema.h"

namespace cmpihost::mof {

/// What an object is, and so which of its keys must be there.
enum class Kind {
    path,             ///< every key of the class, and nothing else
    instance,         ///< every key as a property (servers rebuild the path from them), and what is required
    partial_instance, ///< any of these may be absent, as where the client asked for some properties
};

/// What is wrong with an object, one line each; empty if nothing is. Names are as declared, values are left out, so
/// that the same fault gives the same line:
///
///     CLASS: class is not declared
///     CLASS: class is abstract
///     CLASS.NAME: is not declared
///     CLASS.NAME: is there twice
///     CLASS.NAME: type uint16, expected string
///     CLASS.NAME: is no key
///     CLASS.NAME: key is missing
///     CLASS.NAME: key is NULL
///     CLASS.NAME: required value is missing
///     CLASS.NAME: required value is NULL
///     CLASS.NAME: refers to CLASS, expected CLASS
///
/// The path behind a reference is checked likewise; its lines begin with "CLASS.NAME > ". Embedded objects are not
/// looked into.
std::vector<std::string> check(const Schema& schema, const Object& object, Kind kind);

} // namespace cmpihost::mof
