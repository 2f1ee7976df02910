#include "provider/associations/rebuilders.h"

#include "platform/services.h"
#include "provider/associations/shapes.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

#include <strings.h>

namespace fcip {

namespace {

/// The reference that a role key carries. Any other value is handed on as if it were one; with FCIP_GUARD_RESULTS it
/// counts as missing.
CMPIObjectPath* reference_of(const CMPIData& key) {
#ifdef FCIP_GUARD_RESULTS
    if (key.type != CMPI_ref)
        return nullptr;
#endif
    return key.value.ref;
}

int rebuild(const association_roles& roles, const CMPIObjectPath* path, const CMPIResult* result, bool prints_keys) {
    const char* class_name = path_class_name(path);
    const char* name_space = path_name_space(path);
    CMPIObjectPath* first = nullptr;
    CMPIObjectPath* second = nullptr;
    const CMPICount count = key_count(path);
    for (CMPICount index = 0; index < count; ++index) {
        const path_key key = key_at(path, index);
        const char* role = key.name.data();
        if (prints_keys)
            trace("Key ", role, " \n");
        if (strcasecmp(role, roles.first) == 0)
            first = reference_of(key.data);
        else if (strcasecmp(role, roles.second) == 0)
            second = reference_of(key.data);
    }
    if (first == nullptr || second == nullptr)
        return -1;
    return_instance(result, association_class_build_instance_path(class_name, name_space, first, second, roles.first,
                                                                  roles.second, _broker));
    return 0;
}

} // namespace

int get_ant_dep_instance(const CMPIObjectPath* path, const CMPIResult* result, const char** /*properties*/) {
    return rebuild(realize_roles, path, result, false);
}

int get_group_part_instance(const CMPIObjectPath* path, const CMPIResult* result, const char** /*properties*/) {
    return rebuild(group_part_roles, path, result, true);
}

int get_managed_stats_instance(const CMPIObjectPath* path, const CMPIResult* result, const char** /*properties*/) {
    return rebuild(managed_stats_roles, path, result, false);
}

int get_managed_setting_instance(const CMPIObjectPath* path, const CMPIResult* result, const char** /*properties*/) {
    return rebuild(managed_setting_roles, path, result, false);
}

} // namespace fcip
