// The only way out: every instance and every path that the provider answers leaves through these two functions.
#pragma once

#include "provider/common/broker.h"

#include <cstdint>

namespace fcip {

/// Whether an object can be used: neither null nor the -1 that some builders answer as a pointer.
bool is_object(const void* object);

/// The -1 that some functions answer in place of an object when a platform query fails.
template <typename T>
T* minus_one() {
    return reinterpret_cast<T*>(static_cast<std::intptr_t>(-1));
}

/// Hands an instance to the CIM server as it is, null and -1 included. Built with FCIP_GUARD_RESULTS, drops both.
void return_instance(const CMPIResult* result, const CMPIInstance* instance);

/// Hands an object path to the CIM server as it is, null and -1 included. Built with FCIP_GUARD_RESULTS, drops both.
void return_path(const CMPIResult* result, const CMPIObjectPath* path);

} // namespace fcip
