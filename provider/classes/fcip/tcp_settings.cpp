#include "provider/classes/fcip/tcp_settings.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/kernel_counters.h"
#include "provider/access/statistics.h"
#include "provider/access/systems.h"
#include "provider/classes/fcip/settings_path.h"
#include "provider/common/results.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

#include <array>

namespace fcip {

namespace {

/// Asks for the TCP counters of the tunnel's Ethernet interface. No property comes from them; a failure leaves a trace.
void query_tcp_statistics(const FcipLinkEntry& link) {
    std::array<std::uint8_t, tcp_record_size> unused{};
    if (get_tcp_stats(link.ethernet_if_index, unused.data()) != 0)
        trace("******* Error ******** ");
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link) {
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    const auto id = index_text(link.link_if_index);
    set_string(instance, "InstanceID", id.data());
    set_string(instance, "Description", id.data());
    set_string(instance, "Caption", id.data());
    set_string(instance, "ElementName", id.data());
    ipv4_counters unused{}; // read, and no property comes from them
    ipconf_linux_get_ip_stats(unused.data(), nullptr, nullptr, nullptr);
    set_uint16(instance, "RetransmissionTimeoutMax", 5000); // milliseconds
    set_uint16(instance, "RetransmissionTimeoutMin", 200);  // milliseconds
    set_uint16(instance, "RetransmissionTimeoutAlgorithm", 4);
}

} // namespace

CMPIInstance* tcp_settings_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                          const char** properties) {
    trace_entering(__func__);
    CMPIInstance* instance = new_switch_instance(class_name, name_space);
    if (!is_usable(instance))
        return instance;
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    FcipLinkEntry current{}; // the first link with the index, whatever its profile
    if (get_link_from_link_index(mts_q, link->link_index, &current) != 0) {
        trace_location(__func__, 857);
        return minus_one<CMPIInstance>();
    }
    trace_location(__func__, 862);
    auto profile = profile_of(current); // only has to be there
    if (profile == nullptr)
        return nullptr;
    trace_location(__func__, 876);
    query_tcp_statistics(current);
    set_properties(instance, current);
    filter_properties(instance, properties);
    profile.reset();
    trace_location(__func__, 919);
    trace_exiting(__func__);
    return instance;
}

CMPIObjectPath* tcp_settings_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    return settings_path(__func__, 601, class_name, name_space, *link);
}

} // namespace fcip
