#include "simulator/bytes.h"
#include "simulator/interface_numbers.h"
#include "simulator/scenario.h"
#include "simulator/statistics_layout.h"

#include <algorithm>
#include <cstdio>

namespace switchsim {
namespace {

constexpr std::uint8_t generated_slots = 2;
constexpr std::uint32_t listen_port = 3225;

ip_addr_value ipv4(std::uint8_t first, std::uint32_t number) {
    ip_addr_value value{};
    value.family = ip_family_ipv4;
    put_big(value.address, 0, number);
    value.address[0] = first;
    return value;
}

ip_addr_value ipv6(std::uint16_t site, std::uint32_t number) {
    ip_addr_value value{};
    value.family = ip_family_ipv6;
    put_big(value.address, 0, std::uint32_t{0x20010DB8});
    put_big(value.address, 4, site);
    put_big(value.address, 12, number);
    return value;
}

/// Every fourth profile speaks IPv6, and so do its tunnels' peers.
bool speaks_ipv6(std::uint32_t entity_id) {
    return entity_id % 4 == 0;
}

std::uint32_t ethernet_index(std::uint32_t number) {
    const auto slot = static_cast<std::uint8_t>(number % generated_slots + 1);
    return slot_and_port(ethernet_base, slot, static_cast<std::uint8_t>(number / generated_slots + 1));
}

/// A payload in which every named counter has a value of its own.
Payload counted_payload(std::size_t size, std::span<const CounterField> fields, std::uint64_t seed) {
    Payload payload(size);
    for (const CounterField& field : fields)
        field.put(payload.data(), seed += 7);
    return payload;
}

Port ethernet_port(std::uint32_t if_index) {
    Port port;
    port.slot = static_cast<std::uint8_t>(if_index >> 16);
    port.port = static_cast<std::uint8_t>(if_index);
    const std::string place = std::to_string(*port.slot) + "/" + std::to_string(*port.port);
    port.name = "GigabitEthernet" + place;
    port.kernel_name = "eth" + std::to_string(*port.slot) + "_" + std::to_string(*port.port);
    char mac[18];
    std::snprintf(mac, sizeof mac, "02:00:00:00:%02x:%02x", *port.slot, *port.port);
    port.network_address = mac;
    port.subnet_mask = {255, 255, 255, 0};
    port.prefix_length = 24;
    port.eth_stats_mtu = 2300;
    port.mtu = 2300;
    port.counters.emplace();
    std::uint64_t seed = if_index & 0xFFFFFF;
    for (const CounterField& field : port_counter_fields)
        field.put(port.counters->bytes, seed += 11);
    port.mac_statistics = counted_payload(mac_statistics_size, mac_statistics_fields, seed);
    port.ip_statistics = counted_payload(ip_statistics_size, ip_statistics_fields, seed);
    port.tcp_statistics = {counted_payload(tcp_statistics_size, tcp_statistics_fields, seed),
                           Payload(tcp_continuation_size)};
    return port;
}

FcipEntityEntry profile(std::uint32_t entity_id, std::uint32_t ethernet_ports) {
    FcipEntityEntry row{};
    row.entity_id = entity_id;
    row.local_address = speaks_ipv6(entity_id) ? ipv6(1, entity_id) : ipv4(10, entity_id);
    row.listen_port = listen_port;
    row.sack = entity_id % 2;
    row.sequence_number_wrap = 1;
    row.pmtu_discovery = 1;
    row.pmtu_reset_timeout = 3600;
    row.keep_alive = 60 + entity_id % 60;
    row.minimum_retransmit_time = 200;
    row.maximum_retransmissions = 4;
    row.round_trip_time = 1000;
    row.maximum_bandwidth = 1000000;
    row.minimum_bandwidth = 500000;
    row.address_if_index = ethernet_index((entity_id - 1) % ethernet_ports);
    row.cwm = 1;
    row.burst_size = 50;
    return row;
}

FcipLinkEntry link(const FcipEntityEntry& profile, std::uint32_t link_index) {
    FcipLinkEntry row{};
    row.entity_id = profile.entity_id;
    row.link_index = link_index;
    row.link_if_index = fcip_base + link_index;
    row.cost = 1000;
    put_big(row.remote_wwn, 0, std::uint64_t{0x200000005E000000} + link_index);
    row.remote_entity_id = profile.entity_id;
    row.remote_address = speaks_ipv6(profile.entity_id) ? ipv6(2, link_index + 1) : ipv4(172, link_index + 1);
    row.status = 1;
    row.passive_mode = link_index % 2;
    row.tcp_connections = 2;
    row.timestamp_tolerance = 2000;
    row.remote_tcp_port = listen_port;
    row.data_qos = link_index % 64;
    row.ethernet_if_index = profile.address_if_index;
    row.compression_mode = 1 + link_index % 4;
    row.flow_control_buffer_size = 256;
    row.physical_if_index = profile.address_if_index;
    return row;
}

Port fcip_interface(const FcipLinkEntry& link, std::uint32_t vsans) {
    Port port;
    port.kind = kind_fcip;
    port.name = "fcip" + std::to_string(link.link_index + 1);
    port.kernel_name = port.name;
    port.slot = static_cast<std::uint8_t>(link.ethernet_if_index >> 16);
    port.port = static_cast<std::uint8_t>(link.ethernet_if_index);
    port.vsan_id = 1 + link.link_index % vsans;
    port.mtu = 2300;
    port.fc_interface = true;
    return port;
}

void add_tunnel(Switch& made, const FcipEntityEntry& profile, std::uint32_t link_index, std::uint32_t vsans) {
    const FcipLinkEntry row = link(profile, link_index);
    const LinkKey key{row.entity_id, row.link_index};
    made.links[key] = row;
    made.ports[row.link_if_index] = fcip_interface(row, vsans);
    FcipTcpConnEntry connection{};
    connection.purpose = 1 + link_index % 3;
    connection.receiver_window_size = 65535;
    connection.maximum_segment_size = 1460;
    connection.connection_timeout = 30;
    made.connections[{row.entity_id, row.link_index, static_cast<std::uint16_t>(profile.listen_port),
                      static_cast<std::uint16_t>(row.remote_tcp_port)}] = connection;
    std::uint64_t seed = link_index;
    for (const CounterField& field : link_error_fields)
        field.put(made.link_errors[key].bytes, seed += 3);
}

} // namespace

Switch generate_switch(GeneratorSizes sizes) {
    Switch made;
    made.name = "generated";
    made.wwn = {0x20, 0x00, 0x00, 0x00, 0x5E, 0x00, 0x00, 0x01};
    made.slots = {1, generated_slots};
    made.ip_configuration.emplace();
    const std::uint32_t profiles = sizes.profiles > 0 ? sizes.profiles : std::max(sizes.tunnels / 100, 1U);
    for (std::uint32_t number = 0; number < sizes.ethernet_ports; ++number)
        made.ports[ethernet_index(number)] = ethernet_port(ethernet_index(number));
    for (std::uint32_t id = 1; id <= sizes.vsans; ++id)
        made.vsans[id] = {"VSAN" + std::to_string(id), "20:00:00:00:5e:00:" + std::to_string(1000 + id)};
    for (std::uint32_t id = 1; id <= profiles; ++id)
        made.profiles[id] = profile(id, sizes.ethernet_ports);
    for (std::uint32_t index = 0; index < sizes.tunnels; ++index) {
        // Neighbouring tunnels share a profile; 64 bits, since the product may be large.
        const std::uint64_t id = 1 + static_cast<std::uint64_t>(index) * profiles / sizes.tunnels;
        add_tunnel(made, made.profiles.at(static_cast<std::uint32_t>(id)), index, sizes.vsans);
    }
    return made;
}

} // namespace switchsim
