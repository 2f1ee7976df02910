// How the one object that a key value names is found, built and returned: what the tables of gets share.
#pragma once

#include "provider/access/fcip_tables.h"
#include "provider/associations/rebuilders.h"
#include "provider/classes/builders.h"
#include "provider/common/class_row.h"

#include <span>

namespace fcip {

/// A get request whose key was found.
struct get_request {
    const char* class_name; ///< as requested
    const char* key_value;
    const char* name_space;
    const CMPIObjectPath* path;
    const CMPIResult* result;
    const char** properties; ///< null = all
};

/// What one class's get does: looks the key up and returns at most one instance to the request's result.
using get_function = void(const get_request& request);

/// How a class is served. One of the pointers is set; without any nothing is returned.
struct get_route {
    lookup_mode mode{};
    link_instance_builder* build = nullptr;   ///< of the link row that the key names in `mode`
    const char* fixed_class = nullptr;        ///< the class that is built; null = the one requested
    get_function* get = nullptr;              ///< does all by itself
    association_rebuilder* rebuild = nullptr; ///< of the request's own path
};

/// Routes, for tables that read like what they say.
constexpr get_route from_link(lookup_mode mode, const link_class& built, const char* fixed_class = nullptr) {
    return {mode, built.build, fixed_class, nullptr, nullptr};
}
constexpr get_route through(get_function* get) {
    return {{}, nullptr, nullptr, get, nullptr};
}
constexpr get_route from_path(association_rebuilder* rebuild) {
    return {{}, nullptr, nullptr, nullptr, rebuild};
}
inline constexpr get_route nothing{};

/// Serves the request by the first row whose class it is; without one nothing is returned.
void dispatch_get(std::span<const class_row<get_route>> routes, const get_request& request);

/// Finds the link row that the request's key names. Storage starts zeroed and stays so when the key names no row: a
/// well-formed key always reaches the builder. @return false for a key too short for the mode
bool look_up_link(const get_request& request, lookup_mode mode, FcipLinkEntry& link);

/// Returns a tunnel's TCP statistical data. The link's error counters are fetched before it is built, and released
/// before it is returned.
/// @param function whose name the trace of a failed query carries
void return_tcp_statistics(const get_request& request, lookup_mode mode, const char* function);

} // namespace fcip
