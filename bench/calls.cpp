#include "bench/calls.h"

#include <array>
#include <cstdio>
#include <cstring>

namespace bench {

namespace {

using Entry = std::array<std::uint8_t, 4096>;
using Text = std::array<char, 256>;

alignas(8) Entry entry;
Text written;

template <typename Record>
void release(Record* record) {
    std::free(record);
}

} // namespace

FcipLinkEntry* next_link(std::uint32_t entity_id, std::uint32_t link_index) {
    const std::uint32_t key[2] = {entity_id, link_index};
    FcipLinkEntry* link = nullptr;
    fcip_get_link_entry(mts_q, platform_next, key, &link, 30, 1);
    return link;
}

void find_link(std::uint32_t link_index) {
    for_each_link([link_index](const FcipLinkEntry& link) { return link.link_index != link_index; });
}

FcipEntityEntry* next_profile(std::uint32_t entity_id) {
    FcipEntityEntry* profile = nullptr;
    fcip_get_entity_entry(mts_q, platform_next, entity_id, &profile, 5);
    return profile;
}

FcipEntityEntry* profile_of(const FcipLinkEntry& link) {
    FcipEntityEntry* profile = nullptr;
    fcip_get_entity_entry(mts_q, platform_exact, link.entity_id, &profile, 5);
    return profile;
}

void read_profile(const FcipLinkEntry& link, int constant) {
    FcipEntityEntry* profile = nullptr;
    fcip_get_entity_entry(mts_q, platform_exact, link.entity_id, &profile, constant);
    release(profile);
}

PmPortInfo* port(int operation, std::uint32_t if_index) {
    PmPortInfo* record = nullptr;
    pm_cim_get_port_info(&record, operation, if_index, mts_q);
    return record;
}

std::uint32_t if_index_of(const PmPortInfo& port) {
    std::uint32_t if_index = 0;
    std::memcpy(&if_index, port.bytes, sizeof if_index);
    return if_index;
}

std::uint8_t kind_of(std::uint32_t if_index) {
    std::array<std::uint8_t, 16> type;
    return if_index_get_type(if_index, type.data()) == 0 ? type[0] : std::uint8_t{0};
}

void read_host_name() {
    getCSName();
}

void read_system_name(std::uint32_t if_index) {
    PmPortInfo* record = port(platform_exact, if_index);
    std::uint32_t vsan_id = 0;
    std::memcpy(&vsan_id, record->bytes + 213, sizeof vsan_id);
    release(record);
    dm_cim_get_dmEntry(mts_q, vsan_id, 1, entry.data());
    vsan_cim_get_vsan_admindomain_key(written.data(), entry.data());
}

void write_address(const ip_addr_value& address) {
    ip_addr_to_str(&address, written.data(), 128);
}

void write_switch_wwn() {
    std::uint8_t wwn[8];
    system_cim_get_switch_wwn(mts_q, wwn);
    cim_sprintf_wwn(written.data(), wwn);
}

void write_interface_name(std::uint32_t if_index) {
    sprintf_if_index(written.data(), if_index);
}

void read_ip_interface(std::uint32_t if_index) {
    void* record = nullptr;
    ipconf_get_intf_ip_address(mts_q, if_index, &record);
    release(record);
    record = nullptr;
    ipconf_get_if_inet_addrs(mts_q, if_index, &record);
    release(record);
    pm_get_clear_eth_stats(mts_q, if_index, if_index, 1, entry.data());
}

void read_connection(const FcipLinkEntry& link, const FcipEntityEntry& profile) {
    const FcipTcpConnKey key{link.entity_id, link.link_index, static_cast<std::uint16_t>(profile.listen_port),
                             static_cast<std::uint16_t>(link.remote_tcp_port)};
    FcipTcpConnEntry* connection = nullptr;
    fcip_get_tcpconn_entry(mts_q, platform_exact, &key, &connection, 15);
    release(connection);
}

void read_link_errors(const FcipLinkEntry& link) {
    const std::uint32_t key[2] = {link.entity_id, link.link_index};
    FcipLinkErrors* errors = nullptr;
    fcip_snmp_get_link_errors(mts_q, platform_exact, key, &errors, 10);
    release(errors);
}

void read_port_counters(std::uint32_t if_index) {
    PmPortCounters* counters = nullptr;
    pm_get_port_counters(mts_q, if_index, 0, 6, &counters);
    release(counters);
}

void read_ip_configuration() {
    void* reply = nullptr;
    std::uint32_t length = 8;
    cmi_req_resp(873, 1, 0, &reply, &length, 0, 0, 35, mts_q, 5);
    release(reply);
}

void read_kernel_counters() {
    static std::array<char, 1024> line;
    std::FILE* file = std::fopen("/proc/net/snmp", "r");
    if (file == nullptr)
        return;
    for (int lines = 0; lines < 2 * 4; ++lines) // a header and a line of values of IP, ICMP, TCP and UDP each
        if (std::fgets(line.data(), line.size(), file) == nullptr)
            break;
    std::fclose(file);
}

} // namespace bench
