#include "provider/mi/instance_operations.h"

#include "provider/access/lock.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"
#include "provider/mi/enumeration_routes.h"
#include "provider/mi/get_routes.h"
#include "provider/mi/key_scan.h"

namespace fcip {

CMPIStatus FCIP_EnumInstanceNames(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                                  const CMPIObjectPath* path) {
    const char* class_name = path_class_name(path);
    const char* name_space = path_name_space(path);
    const platform_lock lock;
    if (const auto enumerate = path_enumerator_of(class_name))
        enumerate(class_name, result, name_space);
    return served();
}

CMPIStatus FCIP_EnumInstances(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                              const CMPIObjectPath* path, const char** properties) {
    const char* class_name = path_class_name(path);
    const char* name_space = path_name_space(path);
    const platform_lock lock;
    if (const auto enumerate = instance_enumerator_of(class_name))
        enumerate(class_name, result, properties, name_space);
    return served();
}

CMPIStatus FCIP_GetInstance(CMPIInstanceMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                            const CMPIObjectPath* path, const char** properties) {
    const char* class_name = path_class_name(path);
    const char* name_space = path_name_space(path);
    trace_entering(__func__);
    const found_key key = scan_keys(class_name, path, "\n");
    if (!key.found) {
        trace("getInstance can't find key\n");
        return key_not_found();
    }
    {
        const platform_lock lock;
        dispatch_get(get_instance_routes(), {class_name, key.value.data(), name_space, path, result, properties});
    }
    trace_exiting(__func__);
    return served();
}

} // namespace fcip
