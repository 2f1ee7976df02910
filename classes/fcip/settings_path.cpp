#include "classes/fcip/settings_path.h"

#include "common/text.h"
#include "common/trace.h"
#include "common/values.h"
#include "platform/fcip_tables.h"
#include "platform/systems.h"

namespace fcip {

CMPIObjectPath* settings_path(const char* function, int line, const char* class_name, const char* name_space,
                              const FcipLinkEntry& link) {
    trace_entering(function);
    if (profile_of(link) == nullptr)
        return nullptr;
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (!is_usable(path))
        return nullptr;
    set_switch_host(path);
    add_string_key(path, "InstanceID", index_text(link.link_if_index).data());
    trace_location(function, line);
    trace_exiting(function);
    return path;
}

} // namespace fcip
