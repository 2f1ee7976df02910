#include "provider/associations/shapes.h"

#include "provider/access/systems.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

bool is_end(const CMPIObjectPath* end) {
    return is_object(end) && is_usable(end);
}

/// Whether both ends are there; prints which is not.
bool has_ends(const CMPIObjectPath* first, const CMPIObjectPath* second) {
    if (!is_end(first)) {
        trace("swop : NULL\n");
        return false;
    }
    if (!is_end(second)) {
        trace("peop : NULL\n");
        return false;
    }
    return true;
}

CMPIObjectPath* new_association_path(const char* class_name, const char* name_space, const CMPIBroker* broker) {
    CMPIObjectPath* path = new_path(name_space, class_name, broker);
    return is_usable(path) ? path : nullptr;
}

CMPIObjectPath* fill_reference(const association_roles& roles, const char* class_name, const char* name_space,
                               CMPIObjectPath* first, CMPIObjectPath* second, const CMPIBroker* broker) {
    CMPIObjectPath* path = new_association_path(class_name, name_space, broker);
    if (path == nullptr || !has_ends(first, second))
        return nullptr;
    set_switch_host(path);
    add_reference_key(path, roles.first, first);
    add_reference_key(path, roles.second, second);
    if (roles.are_of_setting) { // no roles, but keys all the same
        add_uint16_key(path, "IsDefault", 1);
        add_uint16_key(path, "IsCurrent", 1);
    }
    return path;
}

CMPIInstance* build_instance(const association_roles& roles, const char* class_name, const char* name_space,
                             CMPIObjectPath* first, CMPIObjectPath* second, const CMPIBroker* broker) {
    CMPIObjectPath* path = new_association_path(class_name, name_space, broker);
    if (path == nullptr)
        return nullptr;
    set_switch_host(path);
    CMPIInstance* instance = new_instance(path, broker);
    if (!is_usable(instance) || !has_ends(first, second))
        return nullptr;
    set_reference(instance, roles.first, first);
    set_reference(instance, roles.second, second);
    if (roles.are_of_setting) {
        set_uint16(instance, "IsDefault", 1);
        set_uint16(instance, "IsCurrent", 1);
    }
    return instance;
}

} // namespace

CMPIObjectPath* realize_fill_reference(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                       CMPIObjectPath* second, const CMPIBroker* broker) {
    return fill_reference(realize_roles, class_name, name_space, first, second, broker);
}

CMPIObjectPath* group_part_fill_reference(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                          CMPIObjectPath* second, const CMPIBroker* broker) {
    return fill_reference(group_part_roles, class_name, name_space, first, second, broker);
}

CMPIObjectPath* managed_stats_fill_reference(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                             CMPIObjectPath* second, const CMPIBroker* broker) {
    return fill_reference(managed_stats_roles, class_name, name_space, first, second, broker);
}

CMPIObjectPath* managed_setting_fill_reference(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                               CMPIObjectPath* second, const CMPIBroker* broker) {
    return fill_reference(managed_setting_roles, class_name, name_space, first, second, broker);
}

CMPIInstance* realize_build_instance(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                     CMPIObjectPath* second, const CMPIBroker* broker) {
    return build_instance(realize_roles, class_name, name_space, first, second, broker);
}

CMPIInstance* group_part_build_instance(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                        CMPIObjectPath* second, const CMPIBroker* broker) {
    return build_instance(group_part_roles, class_name, name_space, first, second, broker);
}

CMPIInstance* managed_stats_build_instance(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                           CMPIObjectPath* second, const CMPIBroker* broker) {
    return build_instance(managed_stats_roles, class_name, name_space, first, second, broker);
}

CMPIInstance* managed_setting_build_instance(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                             CMPIObjectPath* second, const CMPIBroker* broker) {
    return build_instance(managed_setting_roles, class_name, name_space, first, second, broker);
}

CMPIInstance* hba_si_build_instance(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                    CMPIObjectPath* second, const CMPIBroker* broker) {
    return build_instance(system_software_roles, class_name, name_space, first, second, broker);
}

} // namespace fcip
