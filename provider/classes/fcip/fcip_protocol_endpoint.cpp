#include "provider/classes/fcip/fcip_protocol_endpoint.h"

#include "provider/access/addresses.h"
#include "provider/access/systems.h"
#include "provider/classes/link_frames.h"
#include "provider/common/text.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

constexpr const char* creation_class_name = "ZANTO_FCIPProtocolEndPoint";

/// The first two letters of "Other", big-endian: what clients have always been given for the retransmit time.
constexpr std::uint16_t retransmit_time = 'O' << 8 | 't';
static_assert(retransmit_time == 20340);

std::uint32_t tunnel_number(const FcipLinkEntry& link) {
    return link.link_index + 1;
}

/// The key Name, cut after 30 characters; tunnel lookups read its first token back.
std::array<char, 31> name_text(const FcipLinkEntry& link, const char* local, const char* remote) {
    return join_text<31>({index_text(tunnel_number(link)).data(), "_", local, "_", remote});
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    const auto local = address_text(profile.local_address);
    const auto remote = address_text(link.remote_address);
    set_string(instance, "Name", name_text(link, local.data(), remote.data()).data());
    set_string(instance, "CreationClassName", creation_class_name);
    set_string(instance, "NameFormat", "Other");
    set_uint16(instance, "TunnelID", static_cast<std::uint16_t>(tunnel_number(link)));
    set_string(instance, "RemoteIPAddress", remote.data());
    set_string(instance, "LocalIPAddress", local.data());
    set_string(instance, "RemoteWWN", wwn_text(link.remote_wwn).data());
    set_string(instance, "LocalWWN", switch_wwn_text().data());
    set_uint32(instance, "CommittedRate", profile.maximum_bandwidth);
    set_boolean(instance, "Compression", link.compression_mode != 1);
    set_boolean(instance, "SelectiveACK", low_byte(profile.sack));
    set_boolean(instance, "WAN_TOV", low_byte(profile.sack)); // the SACK flag, not a timeout
    set_boolean(instance, "PathMTU", low_byte(profile.pmtu_discovery));
    set_uint32(instance, "MaxRetransmissions", profile.maximum_retransmissions);
    set_uint32(instance, "KeepAliveTimeout", profile.keep_alive);
    set_uint16(instance, "RetransmitTime", retransmit_time);
    set_uint16(instance, "ProtocolIFType", 56);
}

void add_keys(CMPIObjectPath* path, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    add_system_name_key(path, link.link_if_index, "Unknown");
    add_string_key(path, "SystemCreationClassName", logical_computer_system);
    add_string_key(path, "CreationClassName", creation_class_name);
    const auto remote = address_text<20>(link.remote_address); // an IPv6 address is cut
    const auto local = address_text<20>(profile.local_address);
    add_string_key(path, "Name", name_text(link, local.data(), remote.data()).data());
}

} // namespace

CMPIInstance* fcip_pe_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                     const char** properties) {
    return build_link_instance({.function = __func__, .set_properties = set_properties}, class_name, name_space, *link,
                               properties);
}

CMPIObjectPath* fcip_pe_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    return build_link_path(add_keys, class_name, name_space, *link);
}

} // namespace fcip
