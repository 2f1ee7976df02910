// Which provider serves which class, as sfcb's registration files tell it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cmpihost::server {

/// One stanza: a class, and who serves it.
struct RegisteredClass {
    std::string class_name;
    std::string provider;                ///< prefix of the factories
    std::string location;                ///< library's name without "lib" and ".so"
    std::vector<std::string> types;      ///< "instance", "association", "method" ...
    std::vector<std::string> namespaces; ///< one at least
};

/// The library that serves it.
/// @param folder where it is; empty: where the system looks
std::string library_file(const std::string& folder, const RegisteredClass& registered);

/// Reads a file's text:
///
///     [Class]
///        provider: FACTORY_PREFIX
///        location: LIBRARY_BASE_NAME
///        type: instance association
///        namespace: root/cimv2
///     #
///
/// Stanzas end with # or with the next one; other keys are read over.
/// @throws std::runtime_error "FILE:LINE: what is wrong, what was expected"
std::vector<RegisteredClass> read_registration(const std::string& file, std::string_view text);

/// The same from the file itself. @throws also "FILE: cannot be read, expected a file with text"
std::vector<RegisteredClass> read_registration_file(const std::string& file);

} // namespace cmpihost::server
