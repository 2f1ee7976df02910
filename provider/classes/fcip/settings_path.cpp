#include "provider/classes/fcip/settings_path.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

CMPIObjectPath* settings_path(const char* function, int line, const char* class_name, const char* name_space,
                              const FcipLinkEntry& link) {
    trace_entering(function);
    auto profile = profile_of(link); // only has to be there
    if (profile == nullptr)
        return nullptr;
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (!is_usable(path))
        return nullptr;
    set_switch_host(path);
    add_string_key(path, "InstanceID", index_text(link.link_if_index).data());
    trace_location(function, line);
    profile.reset();
    trace_exiting(function);
    return path;
}

} // namespace fcip
