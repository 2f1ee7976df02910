#include "provider/classes/net/remote_ip_service_access_point.h"

#include "provider/access/addresses.h"
#include "provider/access/systems.h"
#include "provider/classes/link_frames.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

/// Whatever class the caller asks for.
constexpr const char* creation_class_name = "ZANTO_RemoteIPServiceAccessPoint";

/// The key Name: always a zero first, and the remote address ahead of the local one, whatever
/// OtherInfoFormatDescription says.
std::array<char, 59> name_text(const char* remote, const char* local) {
    return join_text<59>({"0_", remote, "_", local});
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    const auto remote = address_text(link.remote_address);
    const auto local = address_text(profile.local_address);
    set_string(instance, "Name", name_text(remote.data(), local.data()).data());
    set_string(instance, "CreationClassName", creation_class_name);
    set_string(instance, "NameFormat", "Other");
    set_string(instance, "IPv4Address", remote.data()); // an IPv6 address too
    set_string(instance, "OtherInfoFormatDescription", "Remote Entity ID_LocalIP_RemoteIP ");
    set_string(instance, "AccessInfo", remote.data());
    set_uint16(instance, "InfoFormat", 1);
    set_uint16(instance, "AddressOrigin", 3);
    set_uint16(instance, "ProtocolIFType", 4096);
}

void add_keys(CMPIObjectPath* path, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    add_system_name_key(path, link.link_if_index, "Unknown");
    set_switch_host(path);
    const auto local = address_text(profile.local_address);
    const auto remote = address_text(link.remote_address);
    vsan_system_name(link.link_if_index); // asked once more, for its traces only
    add_string_key(path, "SystemCreationClassName", logical_computer_system);
    add_string_key(path, "CreationClassName", creation_class_name);
    add_string_key(path, "Name", name_text(remote.data(), local.data()).data());
}

} // namespace

CMPIInstance* ip_remote_pe_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                          const char** properties) {
    return build_link_instance(
        {.function = __func__, .set_properties = set_properties, .traces_missing_path = true, .last_location = 579},
        class_name, name_space, *link, properties);
}

CMPIObjectPath* ip_remote_pe_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    trace_entering(__func__);
    return build_link_path(add_keys, class_name, name_space, *link);
}

} // namespace fcip
