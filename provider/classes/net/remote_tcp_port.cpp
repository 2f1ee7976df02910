#include "provider/classes/net/remote_tcp_port.h"

#include "provider/access/addresses.h"
#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/classes/link_frames.h"
#include "provider/common/text.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

constexpr const char* creation_class_name = "ZANTO_RemoteTCPPort";

/// The key Name: always a zero first.
std::array<char, 31> name_text(const FcipLinkEntry& link) {
    return join_text<31>({"0_", index_text(link.link_if_index).data()});
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    system_name_text system{};
    if (get_vsan_wwn(link.link_if_index, system.data()) == 0)
        set_string(instance, "SystemName", system.data());
    set_string(instance, "Name", name_text(link).data());
    set_string(instance, "CreationClassName", creation_class_name);
    set_string(instance, "NameFormat", "Other");
    // Seen from the peer: the switch's port is the remote one.
    set_uint32(instance, "RemotePortNumber", profile.listen_port);
    set_uint32(instance, "PortNumber", link.remote_tcp_port);
}

} // namespace

CMPIInstance* tcp_remote_pe_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                           const char** properties) {
    return build_link_instance({.function = __func__, .set_properties = set_properties, .traces_missing_path = true},
                               class_name, name_space, *link, properties);
}

CMPIInstance* remote_service_ap_build_instance(const char* class_name, const char* name_space,
                                               const FcipLinkEntry* link, const char** properties) {
    return build_link_instance({.function = __func__, .set_properties = set_properties, .traces_missing_path = true},
                               class_name, name_space, *link, properties);
}

CMPIObjectPath* tcp_remote_pe_fill_reference(const char* class_name, const char* name_space,
                                             const FcipLinkEntry* link) {
    const auto profile = profile_of(*link); // only has to be there
    if (profile == nullptr)
        return nullptr;
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (path == nullptr)
        return nullptr;
    set_switch_host(path);
    add_system_name_key(path, link->link_if_index, "Unknown");
    address_text(link->remote_address); // the text is not used
    add_string_key(path, "Name", name_text(*link).data());
    add_string_key(path, "SystemCreationClassName", logical_computer_system);
    add_string_key(path, "CreationClassName", class_name); // the caller's, unlike the instance's
    return path;
}

CMPIObjectPath* remote_service_ap_fill_reference(const char* class_name, const char* name_space,
                                                 const FcipLinkEntry* link) {
    return tcp_remote_pe_fill_reference(class_name, name_space, link);
}

} // namespace fcip
