#include "provider/classes/fcip/fcip_settings.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/classes/fcip/settings_path.h"
#include "provider/classes/link_frames.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

constexpr std::uint32_t special_frame_timeout = 90;      // seconds
constexpr std::uint32_t keep_alive_without_profile = 30; // seconds

/// Reads the profile's keep-alive anew: a read that fails leaves the property unset, one that succeeds without a row
/// gives the default.
void set_keep_alive(CMPIInstance* instance, std::uint32_t entity_id) {
    const fetched<FcipEntityEntry> profile = fetch_entity(mts_q, platform_exact, entity_id, 30);
    if (profile.status != 0) {
        trace(" fcip_get_entity_entry returned error ");
        return;
    }
    const FcipEntityEntry* row = profile.row.get();
    set_uint32(instance, "KeepAliveTimeout", row != nullptr ? row->keep_alive : keep_alive_without_profile);
}

/// Two flags carry the low byte of their word, the others are on when the word is 1.
void set_options(CMPIInstance* instance, const FcipLinkEntry& link) {
    set_boolean(instance, "PassiveMode", low_byte(link.passive_mode));
    set_uint32(instance, "NumTcpConnections", link.tcp_connections);
    set_boolean(instance, "CheckTimestamp", low_byte(link.check_timestamp));
    set_uint32(instance, "TimeStampTolerance", link.timestamp_tolerance);
    set_uint32(instance, "TcpRemPort", link.remote_tcp_port);
    set_boolean(instance, "LocalPortEnable", link.local_port_enable == 1);
    set_boolean(instance, "SpecialFrameEnable", link.special_frame_enable == 1);
    set_boolean(instance, "BPortKAEnable", link.bport_keep_alive_enable == 1);
    set_uint32(instance, "CntrlQOSField", link.control_qos);
    set_uint32(instance, "DataQOSField", link.data_qos);
    set_uint32(instance, "EthIfIndex", link.ethernet_if_index);
    set_boolean(instance, "WriteAccelerator", link.write_acceleration == 1);
    set_boolean(instance, "TapeAccelerator", link.tape_acceleration == 1);
    set_boolean(instance, "IPSec", link.ipsec == 1);
    set_boolean(instance, "WriteAccOper", link.write_acceleration_operational == 1);
    set_boolean(instance, "TapeAccOper", link.tape_acceleration_operational == 1);
    set_boolean(instance, "TapeAccReadOper", link.tape_read_acceleration_operational == 1);
    set_uint32(instance, "IPComp", link.compression_mode);
    set_uint32(instance, "FlowCtrlBufSize", link.flow_control_buffer_size);
}

/// The profile only has to be there.
void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& /*profile*/) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    const auto id = index_text(link.link_if_index);
    set_string(instance, "ElementName", id.data());
    set_string(instance, "InstanceID", id.data());
    set_string(instance, "CreationClassName", "ZANTO_FCIPSettings");
    set_uint16(instance, "ConnectionUsageFlags", 2);
    set_uint32(instance, "SpecialFrameTimeout", special_frame_timeout);
    set_keep_alive(instance, link.entity_id);
    set_uint32(instance, "TunnelID", link.link_index); // zero-based here, one less than the endpoint's TunnelID
    set_options(instance, link);
}

} // namespace

CMPIInstance* fcip_settings_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                           const char** properties) {
    return build_link_instance({.function = __func__, .set_properties = set_properties}, class_name, name_space, *link,
                               properties);
}

CMPIObjectPath* fcip_settings_fill_reference(const char* class_name, const char* name_space,
                                             const FcipLinkEntry* link) {
    return settings_path(__func__, 636, class_name, name_space, *link);
}

} // namespace fcip
