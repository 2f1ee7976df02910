#include "provider/common/results.h"

namespace fcip {

namespace {

#ifdef FCIP_GUARD_RESULTS
constexpr bool guarded = true;
#else
constexpr bool guarded = false;
#endif

} // namespace

bool is_object(const void* object) {
    return object != nullptr && object != minus_one<void>();
}

void return_instance(const CMPIResult* result, const CMPIInstance* instance) {
    if (!guarded || is_object(instance))
        result->ft->returnInstance(result, instance);
}

void return_path(const CMPIResult* result, const CMPIObjectPath* path) {
    if (!guarded || is_object(path))
        result->ft->returnObjectPath(result, path);
}

} // namespace fcip
