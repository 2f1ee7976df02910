#include "provider/classes/net/tcp_protocol_endpoint.h"

#include "provider/access/addresses.h"
#include "provider/access/systems.h"
#include "provider/classes/link_frames.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

constexpr const char* creation_class_name = "ZANTO_TCPProtocolEndPoint";

/// The link's TCP connection; null when it cannot be read. Its key has room for 16 bits of each port.
platform_ptr<FcipTcpConnEntry> connection_of(const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    const FcipTcpConnKey key{link.entity_id, link.link_index, static_cast<std::uint16_t>(profile.listen_port),
                             static_cast<std::uint16_t>(link.remote_tcp_port)};
    const auto query = [&](FcipTcpConnEntry** row) {
        return fcip_get_tcpconn_entry(mts_q, platform_exact, &key, row, 15);
    };
    return fetch<FcipTcpConnEntry>(query).take();
}

void set_connection_properties(CMPIInstance* instance, const FcipTcpConnEntry& connection) {
    set_uint32(instance, "MaximumSegmentSize", connection.maximum_segment_size);
    set_uint32(instance, "ReceiverWindowSize", connection.receiver_window_size);
    set_uint32(instance, "ConnectionTimeOut", connection.connection_timeout);
    if (connection.purpose >= 1 && connection.purpose <= 3)
        set_string(instance, "ConnectionPurpose", index_text(connection.purpose).data());
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    system_name_text system{};
    if (get_vsan_wwn(link.link_if_index, system.data()) == 0)
        set_string(instance, "SystemName", system.data());
    set_string(instance, "Name", index_text(link.link_if_index).data());
    set_string(instance, "CreationClassName", creation_class_name);
    set_string(instance, "NameFormat", "Other");
    set_uint32(instance, "PortNumber", profile.listen_port);
    set_uint32(instance, "RemotePortNumber", link.remote_tcp_port);
    address_text(profile.local_address); // the text is not used
    if (const auto connection = connection_of(link, profile))
        set_connection_properties(instance, *connection);
}

void add_keys(CMPIObjectPath* path, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_switch_host(path);
    address_text(profile.local_address); // neither text is used
    address_text(link.remote_address);
    add_system_name_key(path, link.link_if_index, "LogicalComputerSystem");
    add_string_key(path, "SystemCreationClassName", logical_computer_system);
    add_string_key(path, "CreationClassName", creation_class_name);
    add_string_key(path, "Name", index_text(link.link_if_index).data());
}

} // namespace

CMPIInstance* tcp_pe_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                    const char** properties) {
    return build_link_instance({.function = __func__, .set_properties = set_properties, .traces_missing_path = true},
                               class_name, name_space, *link, properties);
}

CMPIObjectPath* tcp_pe_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    trace_entering(__func__);
    return build_link_path(add_keys, class_name, name_space, *link);
}

} // namespace fcip
