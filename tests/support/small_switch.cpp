#include "tests/support/small_switch.h"

#include <arpa/inet.h>

#include <cstring>

namespace test {

namespace {

void put_big_endian(std::uint8_t* bytes, std::uint64_t value, int width) {
    for (int byte = width - 1; byte >= 0; --byte, value >>= 8)
        bytes[byte] = static_cast<std::uint8_t>(value);
}

FcipEntityEntry profile_3() {
    FcipEntityEntry profile{};
    profile.entity_id = 3;
    profile.local_address = address("10.1.1.1");
    profile.listen_port = 3225;
    profile.sack = 1;
    profile.sequence_number_wrap = 1;
    profile.pmtu_discovery = 1;
    profile.pmtu_reset_timeout = 3600;
    profile.keep_alive = 60;
    profile.minimum_retransmit_time = 200;
    profile.maximum_retransmissions = 4;
    profile.send_buffer_size = 64;
    profile.round_trip_time = 1000;
    profile.maximum_bandwidth = 1000000;
    profile.minimum_bandwidth = 500000;
    profile.address_if_index = ethernet_1;
    profile.cwm = 1;
    profile.burst_size = 50;
    return profile;
}

FcipEntityEntry profile_7() {
    FcipEntityEntry profile{};
    profile.entity_id = 7;
    profile.local_address = address("2001:db8::1");
    profile.listen_port = 3226;
    profile.phb_support = 1;
    profile.keep_alive = 90;
    profile.minimum_retransmit_time = 300;
    profile.maximum_retransmissions = 8;
    profile.maximum_bandwidth = 200000;
    profile.minimum_bandwidth = 100000;
    profile.maximum_jitter = 1000;
    return profile;
}

FcipLinkEntry link(switchsim::LinkKey key, std::uint32_t if_index, const char* peer, std::uint32_t ethernet) {
    FcipLinkEntry row{};
    row.entity_id = key.first;
    row.link_index = key.second;
    row.link_if_index = if_index;
    row.cost = 10;
    const std::uint8_t wwn[8] = {0x20, 0, 0, 0x00, 0x5e, 0xbb, 0, static_cast<std::uint8_t>(key.second + 1)};
    std::memcpy(row.remote_wwn, wwn, sizeof wwn);
    row.remote_entity_id = 4;
    row.remote_address = address(peer);
    row.status = 1;
    row.tcp_connections = 2;
    row.timestamp_tolerance = 2000;
    row.remote_tcp_port = 3300 + key.second;
    row.local_port_enable = 1;
    row.control_qos = 46;
    row.data_qos = 26;
    row.ethernet_if_index = ethernet;
    row.write_acceleration = 1;
    row.compression_mode = 1;
    row.flow_control_buffer_size = 256;
    row.physical_if_index = ethernet;
    return row;
}

/// A reply payload whose 32-bit word at every offset o from `from` on is `base` + o.
std::vector<std::uint8_t> counting_words(std::size_t size, std::size_t from, std::uint32_t base) {
    std::vector<std::uint8_t> bytes(size, 0);
    for (std::size_t offset = from; offset + 4 <= size; offset += 4)
        put_big_endian(&bytes[offset], base + offset, 4);
    return bytes;
}

/// The Ethernet statistics reply: slot n of the block behind the 32-byte head holds (n + 1) << 32 | (100 + n).
std::vector<std::uint8_t> mac_statistics() {
    std::vector<std::uint8_t> bytes(256, 0);
    for (std::size_t slot = 0; slot < 28; ++slot)
        put_big_endian(&bytes[32 + 8 * slot], std::uint64_t{slot + 1} << 32 | (100 + slot), 8);
    return bytes;
}

/// Port counters: each field holds its own offset.
PmPortCounters port_counters() {
    PmPortCounters counters{};
    for (const int offset : {259, 263, 267, 271})
        put_big_endian(counters.bytes + offset, static_cast<std::uint64_t>(offset), 4);
    for (const int offset : {275, 283, 307, 315})
        put_big_endian(counters.bytes + offset, static_cast<std::uint64_t>(offset) << 33, 8);
    return counters;
}

switchsim::Port ethernet_port(const char* name, std::uint8_t slot, const char* mac) {
    switchsim::Port port;
    port.kind = switchsim::kind_ethernet;
    port.name = name;
    port.kernel_name = "eth" + std::to_string(slot);
    port.slot = slot;
    port.port = std::uint8_t{0};
    port.mtu = 2300;
    port.network_address = mac;
    port.subnet_mask = {255, 255, 255, 0};
    port.prefix_length = std::uint8_t{24};
    port.eth_stats_mtu = 2300;
    port.counters = port_counters();
    port.mac_statistics = mac_statistics();
    port.ip_statistics = counting_words(172, 32, 1000);
    port.tcp_statistics = {counting_words(1352, 32, 5000), std::vector<std::uint8_t>(38, 0)};
    return port;
}

switchsim::Port fcip_port(const char* name, std::uint32_t vsan_id) {
    switchsim::Port port;
    port.kind = switchsim::kind_fcip;
    port.name = name;
    port.kernel_name = name;
    port.vsan_id = vsan_id;
    port.fc_interface = true;
    return port;
}

FcipTcpConnEntry connection(std::uint32_t purpose) {
    FcipTcpConnEntry row{};
    row.purpose = purpose;
    row.receiver_window_size = 65536;
    row.maximum_segment_size = 1460;
    row.connection_timeout = 30;
    return row;
}

/// Error counters: the counter at offset o holds o << 32 | o.
FcipLinkErrors link_errors() {
    FcipLinkErrors errors{};
    for (std::uint64_t offset = 8; offset < sizeof errors.bytes; offset += 8)
        put_big_endian(errors.bytes + offset, offset << 32 | offset, 8);
    return errors;
}

} // namespace

ip_addr_value address(const char* text) {
    ip_addr_value value{};
    if (inet_pton(AF_INET, text, value.address) == 1)
        value.family = ip_family_ipv4;
    else if (inet_pton(AF_INET6, text, value.address) == 1)
        value.family = ip_family_ipv6;
    return value;
}

void use_small_switch() {
    switchsim::reset();
    switchsim::Switch& sw = switchsim::the_switch();
    sw.name = "switch-a";
    sw.system_name = "200000005EAA0001";
    sw.wwn = {0x20, 0x00, 0x00, 0x00, 0x5e, 0xaa, 0x00, 0x01};
    sw.profiles = {{3, profile_3()}, {7, profile_7()}};
    sw.links = {{tunnel_1, link(tunnel_1, fcip_1, "10.1.1.2", ethernet_1)},
                {tunnel_3, link(tunnel_3, fcip_3, "192.168.100.101", ethernet_1)},
                {tunnel_7, link(tunnel_7, fcip_7, "2001:db8::2", ethernet_2)}};
    sw.connections = {
        {{3, 0, 3225, 3300}, connection(1)}, {{3, 2, 3225, 3302}, connection(2)}, {{7, 6, 3226, 3306}, connection(3)}};
    for (const auto& [key, row] : sw.links)
        sw.link_errors[key] = link_errors();
    sw.ports[ethernet_1] = ethernet_port("gigabitethernet1/1", 1, "02:00:00:aa:00:01");
    sw.ports[ethernet_2] = ethernet_port("gigabitethernet2/1", 2, "02:00:00:aa:00:02");
    sw.ports[fibre_channel_1] = fcip_port("fc1/1", 1);
    sw.ports[fibre_channel_1].kind = switchsim::kind_fibre_channel;
    sw.ports[fcip_1] = fcip_port("fcip1", 1);
    sw.ports[fcip_3] = fcip_port("fcip3", 1);
    sw.ports[fcip_7] = fcip_port("fcip7", 20);
    sw.vsans = {{1, {"VSAN0001", vsan_1_system}}, {20, {"VSAN0020", vsan_20_system}}};
    sw.slots = {1, 2};
    sw.ip_configuration = switchsim::IpConfiguration{1, 64};
}

} // namespace test
