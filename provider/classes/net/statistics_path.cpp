#include "provider/classes/net/statistics_path.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

CMPIObjectPath* stat_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    trace_entering(__func__);
    auto profile = fetch_entity(mts_q, platform_exact, link->entity_id); // only has to be there
    if (!profile) {
        trace_location(__func__, 435);
        return nullptr;
    }
    auto current = fetch_link(mts_q, platform_exact, key_of(*link));
    if (!current) {
        trace_location(__func__, 448);
        return nullptr;
    }
    if (current.row->ethernet_if_index == 0) // no Ethernet port, no statistics
        return nullptr;
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (path != nullptr) {
        set_switch_host(path);
        add_string_key(path, "InstanceID", index_text(current.row->link_if_index).data());
    }
    profile.row.reset();
    current.row.reset();
    trace_exiting(__func__);
    return path;
}

} // namespace fcip
