#include "provider/classes/link_frames.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

CMPIInstance* build_link_instance(const link_instance_frame& frame, const char* class_name, const char* name_space,
                                  const FcipLinkEntry& link, const char** properties) {
    trace_entering(frame.function);
    auto profile = profile_of(link);
    if (profile == nullptr)
        return nullptr;
    CMPIInstance* instance =
        new_switch_instance(class_name, name_space, frame.traces_missing_path ? frame.function : nullptr);
    if (!is_usable(instance))
        return instance;
    frame.set_properties(instance, link, *profile);
    filter_properties(instance, properties);
    if (frame.last_location != 0)
        trace_location(frame.function, frame.last_location);
    profile.reset();
    trace_exiting(frame.function);
    return instance;
}

CMPIObjectPath* build_link_path(key_adder* add_keys, const char* class_name, const char* name_space,
                                const FcipLinkEntry& link) {
    const auto profile = profile_of(link);
    if (profile == nullptr)
        return nullptr;
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (path != nullptr)
        add_keys(path, link, *profile);
    return path;
}

} // namespace fcip
