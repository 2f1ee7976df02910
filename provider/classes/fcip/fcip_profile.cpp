#include "provider/classes/fcip/fcip_profile.h"

#include "provider/access/addresses.h"
#include "provider/access/systems.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

void set_properties(CMPIInstance* instance, const FcipEntityEntry& profile, const char* id) {
    set_string(instance, "InstanceID", id);
    set_string(instance, "Name", id);
    set_string(instance, "Caption", id);
    set_string(instance, "ElementName", id);
    set_string(instance, "FcipEntityAddress", address_text(profile.local_address).data());
    set_uint32(instance, "FcipEntityTcpConnPort", profile.listen_port);
    set_boolean(instance, "FcipEntitySeqNumWrap", profile.sequence_number_wrap == 1);
    set_boolean(instance, "FcipEntitySACKOption", profile.sack == 1);
    set_boolean(instance, "FcipEntityPHBSupport", profile.phb_support == 1);
}

} // namespace

CMPIInstance* fcip_profile_build_instance(const char* class_name, const char* name_space,
                                          const FcipEntityEntry* profile, const char** properties) {
    trace_entering(__func__);
    CMPIInstance* instance = new_switch_instance(class_name, name_space, __func__);
    if (!is_usable(instance))
        return instance;
    const auto id = index_text(profile->entity_id);
    trace(" wwn_str ", id.data(), " \n"); // the profile's id, not a WWN
    set_properties(instance, *profile, id.data());
    filter_properties(instance, properties);
    trace_exiting(__func__);
    return instance;
}

CMPIObjectPath* fcip_profile_fill_reference(const char* class_name, const char* name_space,
                                            const FcipEntityEntry* profile) {
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (path == nullptr)
        return nullptr;
    // Eight characters at most, unlike the instance's InstanceID.
    add_string_key(path, "InstanceID", copy_text<9>(index_text(profile->entity_id).data()).data());
    return path;
}

} // namespace fcip
