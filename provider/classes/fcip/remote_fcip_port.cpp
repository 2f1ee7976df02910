#include "provider/classes/fcip/remote_fcip_port.h"

#include "provider/access/addresses.h"
#include "provider/access/systems.h"
#include "provider/classes/link_frames.h"
#include "provider/common/text.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

constexpr const char* creation_class_name = "ZANTO_RemoteFCIPPort";

/// The Name, cut after 30 characters.
std::array<char, 31> name_text(std::uint32_t id, const char* peer, const char* own) {
    return join_text<31>({index_text(id).data(), "_", peer, "_", own});
}

/// Seen from the remote port the peer is local, and this switch is remote.
void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    const auto peer = address_text(link.remote_address);
    const auto own = address_text(profile.local_address);
    set_string(instance, "Name", name_text(link.remote_entity_id, peer.data(), own.data()).data());
    set_string(instance, "CreationClassName", creation_class_name);
    set_string(instance, "NameFormat", "Other");
    set_string(instance, "RemoteIPAddress", own.data());
    set_string(instance, "LocalIPAddress", peer.data());
    set_uint16(instance, "InfoFormat", 1);
    set_string(instance, "OtherInfoFormatDescription", "Remote Entity ID_LocalIP_RemoteIP "); // the blank belongs to it
    set_string(instance, "AccessInfo", peer.data());
    set_string(instance, "PortInfo", peer.data());
    set_uint16(instance, "PortProtocol", 2);
    set_string(instance, "OtherProtocolDescription", "TCP");
}

void add_keys(CMPIObjectPath* path, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    add_system_name_key(path, link.link_if_index, "Unknown");
    add_string_key(path, "SystemCreationClassName", logical_computer_system);
    add_string_key(path, "CreationClassName", creation_class_name);
    const auto peer = address_text<20>(link.remote_address); // an IPv6 address is cut
    const auto own = address_text<20>(profile.local_address);
    // 0, not the peer's entity id as in the instance: it is what the lookup by peer address reads back.
    add_string_key(path, "Name", name_text(0, peer.data(), own.data()).data());
}

} // namespace

CMPIInstance* fcip_remote_pe_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                            const char** properties) {
    return build_link_instance({.function = __func__, .set_properties = set_properties}, class_name, name_space, *link,
                               properties);
}

CMPIObjectPath* fcip_remote_pe_fill_reference(const char* class_name, const char* name_space,
                                              const FcipLinkEntry* link) {
    return build_link_path(add_keys, class_name, name_space, *link);
}

} // namespace fcip
