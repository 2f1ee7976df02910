#include "provider/classes/net/ip_protocol_endpoint.h"

#include "provider/access/addresses.h"
#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/classes/link_frames.h"
#include "provider/common/endian.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

#include <arpa/inet.h>

#include <utility>

namespace fcip {

namespace {

constexpr const char* creation_class_name = "ZANTO_IPProtocolEndPoint";

constexpr std::uint32_t default_mtu = 1500;

/// What stands in an address property for the family that the address is not of.
constexpr const char* no_address = "NULL";

using address_buffer = std::array<char, 128>;

/// The key Name, cut after 58 characters; if-index lookups read its first token back.
std::array<char, 59> name_text(const FcipLinkEntry& link, const char* local, const char* remote) {
    return join_text<59>({index_text(link.link_if_index).data(), "_", local, "_", remote});
}

/// Sets IPv4Address and IPv6Address; neither for the null address, which leaves the family unknown.
/// @return the address as text; empty when it cannot be written
address_buffer set_addresses(CMPIInstance* instance, const ip_addr_value& address) {
    address_buffer text{};
    int is_ipv6 = -1;
    if (ip_addr_to_str_type(&address, text.data(), static_cast<int>(text.size()), &is_ipv6) != 0) {
        set_string(instance, "IPv4Address", no_address);
        set_string(instance, "IPv6Address", no_address);
    } else if (is_ipv6 == 0) {
        trace("\ntol :type :IPv4 \n ");
        set_string(instance, "IPv4Address", text.data());
        set_string(instance, "IPv6Address", no_address);
    } else if (is_ipv6 == 1) {
        trace("\ntol :type :IPv6 \n ");
        set_string(instance, "IPv4Address", no_address);
        set_string(instance, "IPv6Address", text.data());
    }
    return text;
}

/// One read of an interface's IP configuration; null when it fails.
platform_ptr<std::uint8_t> read_ip_configuration(int (*query)(mts_queue, std::uint32_t, void**),
                                                 std::uint32_t if_index) {
    void* record = nullptr;
    const int status = query(mts_q, if_index, &record);
    platform_ptr<std::uint8_t> bytes(static_cast<std::uint8_t*>(record));
    return status == 0 ? std::move(bytes) : nullptr;
}

/// The mask stands at offset 4, in network order.
void set_subnet_mask(CMPIInstance* instance, std::uint32_t if_index) {
    const auto record = read_ip_configuration(ipconf_get_intf_ip_address, if_index);
    if (record == nullptr)
        return;
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, record.get() + 4, text, sizeof text);
    set_string(instance, "SubnetMask", text);
}

/// The length is the low byte of the word at offset 32.
void set_prefix_length(CMPIInstance* instance, std::uint32_t if_index) {
    const auto record = read_ip_configuration(ipconf_get_if_inet_addrs, if_index);
    if (record != nullptr)
        set_uint8(instance, "PrefixLength", static_cast<std::uint8_t>(read_host32(record.get() + 32)));
}

/// The interface's MTU; a query that fails also sets the property to the default, ahead of its other setters.
std::uint32_t query_mtu(CMPIInstance* instance, std::uint32_t if_index) {
    constexpr std::size_t mtu_offset = 28;
    platform_storage<4096> counters;
    write_be32(counters.data() + mtu_offset, default_mtu); // stays where the query fills nothing in
    if (pm_get_clear_eth_stats(mts_q, if_index, if_index, 1, counters.data()) != 0)
        set_uint32(instance, "MaxTransmissionUnit", default_mtu);
    return read_be32(counters.data() + mtu_offset);
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    const auto local = set_addresses(instance, profile.local_address);
    const auto remote = address_text(link.remote_address);
    set_string(instance, "Name", name_text(link, local.data(), remote.data()).data());
    set_string(instance, "CreationClassName", creation_class_name);
    set_string(instance, "NameFormat", "Other");
    set_subnet_mask(instance, link.ethernet_if_index);
    set_prefix_length(instance, link.ethernet_if_index);
    const std::uint32_t mtu = query_mtu(instance, link.ethernet_if_index);
    set_uint16(instance, "AddressOrigin", 3);
    set_uint16(instance, "ProtocolIFType", 4096);
    set_uint32(instance, "MaxTransmissionUnit", mtu); // after a failed query for the second time
    set_boolean(instance, "EnableIPForwarding", false);
    set_boolean(instance, "PathMTUDiscovery", profile.pmtu_discovery == 1);
    set_boolean(instance, "FragmentationEnabled", false);
}

/// Adds the keys, with the host name between the first two.
void add_keys(CMPIObjectPath* path, const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    add_system_name_key(path, link.link_if_index, "Unknown");
    set_switch_host(path);
    const auto local = address_text(profile.local_address);
    const auto remote = address_text(link.remote_address);
    const auto name = name_text(link, local.data(), remote.data());
    trace(name.data(), " \n");
    add_string_key(path, "SystemCreationClassName", logical_computer_system);
    add_string_key(path, "CreationClassName", creation_class_name);
    add_string_key(path, "Name", name.data());
}

} // namespace

CMPIInstance* ip_pe_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                   const char** properties) {
    return build_link_instance(
        {.function = __func__, .set_properties = set_properties, .traces_missing_path = true, .last_location = 497},
        class_name, name_space, *link, properties);
}

CMPIObjectPath* ip_pe_fill_reference(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    trace_entering(__func__);
    if (link == nullptr)
        return nullptr;
    auto profile = fetch_entity(mts_q, platform_exact, link->entity_id);
    if (profile.status != 0) {
        trace("Error \n");
        return nullptr;
    }
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (path != nullptr && profile.row != nullptr) // a profile that came without a row leaves the path without keys
        add_keys(path, *link, *profile.row);
    profile.row.reset();
    trace_exiting(__func__);
    return path;
}

} // namespace fcip
