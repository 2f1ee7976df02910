// What a service is made of.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace cmpihost::server {

/// A provider library and the prefix of its factories. It is asked for every class that no registration file names.
struct ProviderFile {
    std::string library;
    std::string name;
};

struct Settings {
    std::vector<std::string> schema;        ///< MOF files in the order of their declarations
    std::string interop_schema;             ///< MOF file of the interop namespace's classes and instances
    std::vector<ProviderFile> providers;    ///< asked for all classes that no registration names
    std::vector<std::string> registrations; ///< files in the form of sfcb's registration
    std::string provider_folder;            ///< where the registrations' libraries are looked for; empty: the loader's
    std::string scenario;                   ///< for a simulated platform; empty: none
    std::string name_space = "root/cimv2";  ///< of providers without registration
    std::size_t max_reply = std::size_t{256} << 20;        ///< bytes of one reply
    std::size_t max_contexts = 100;                        ///< open enumerations
    std::size_t max_context_bytes = std::size_t{64} << 20; ///< that all open enumerations hold
    std::size_t max_pull = 10'000;                         ///< objects in the answer to a pull
    std::chrono::seconds context_timeout{40};              ///< where the client asks for none
    std::chrono::seconds max_context_timeout{90};
};

} // namespace cmpihost::server
