#include "provider/classes/fcip/ip_settings.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/kernel_counters.h"
#include "provider/access/ports.h"
#include "provider/access/statistics.h"
#include "provider/access/systems.h"
#include "provider/classes/fcip/settings_path.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

constexpr std::uint32_t fragmentation_timeout = 500;

/// What the request asks of the line card's IP statistics.
constexpr std::uint32_t whole_reply = 1;

/// Sets the properties in order; the platform is asked for each where it is set. False when the switch's IP
/// configuration cannot be read. The line card's and the kernel's IP counters are read, and no property comes from
/// them.
/// @param unused_statistics out: the line card's reply
bool set_properties(CMPIInstance* instance, const FcipLinkEntry& link, platform_ptr<std::uint8_t>& unused_statistics) {
    const platform_text name = interface_name(link.link_if_index);
    set_string(instance, "Caption", name.data());
    set_string(instance, "Description", name.data());

    std::uint8_t* reply = nullptr;
    get_ip_stats(mts_q, link.ethernet_if_index, whole_reply, &reply);
    unused_statistics.reset(reply);
    const auto id = index_text(link.link_if_index);
    set_string(instance, "ElementName", id.data());
    set_string(instance, "InstanceID", id.data());

    ip_configuration configuration{};
    if (get_ip_misc_cfg(&configuration) != 0)
        return false;
    ipv4_counters unused_counters{};
    ipconf_linux_get_ip_stats(unused_counters.data(), nullptr, nullptr, nullptr);
    set_boolean(instance, "EnableIPForwarding", low_byte(configuration.forwarding));
    set_uint32(instance, "FragmentationTimeout", fragmentation_timeout);
    set_uint32(instance, "DefaultTimeToLive", configuration.default_ttl);
    return true;
}

} // namespace

CMPIInstance* ip_settings_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                         const char** properties) {
    trace_entering(__func__);
    auto profile = profile_of(*link); // only has to be there
    if (profile == nullptr)
        return nullptr;
    CMPIInstance* instance = new_switch_instance(class_name, name_space);
    if (!is_usable(instance))
        return instance;
    platform_ptr<std::uint8_t> statistics;
    if (!set_properties(instance, *link, statistics))
        return nullptr;
    filter_properties(instance, properties);
    statistics.reset();
    profile.reset();
    trace_exiting(__func__);
    return instance;
}

CMPIObjectPath* ip_settings_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    return settings_path(__func__, 562, class_name, name_space, *link);
}

} // namespace fcip
