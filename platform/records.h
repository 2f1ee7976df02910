// The records that the switch's services and the provider share. Their layouts are fixed by the services; every size
// and offset is asserted here. Unless a comment says otherwise, integers are in the host's byte order.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

// ---------------------------------------------------------------------------------------------- IP addresses

/// Address families of an ip_addr_value.
enum : std::uint32_t { ip_family_none = 0, ip_family_ipv4 = 1, ip_family_ipv6 = 2 };

/// The platform's IP address. An IPv4 address fills the first four bytes, in network order.
struct ip_addr_value {
    std::uint32_t family; ///< ip_family_none, ip_family_ipv4 or ip_family_ipv6
    std::uint8_t address[16];
};
static_assert(sizeof(ip_addr_value) == 20);
static_assert(offsetof(ip_addr_value, address) == 4);

// ---------------------------------------------------------------------------------------------- FCIP service

/// One FCIP profile: a row of the entity table. Flags are on when the word is 1.
struct FcipEntityEntry {
    std::uint32_t entity_id;               ///< profile number (vrkFcipEntityId), the table's key
    ip_addr_value local_address;           ///< address on which tunnels are accepted
    std::uint32_t listen_port;             ///< local TCP port
    std::uint32_t sack;                    ///< selective acknowledgement, flag
    std::uint32_t sequence_number_wrap;    ///< flag
    std::uint32_t phb_support;             ///< per-hop behaviour, flag
    std::uint32_t unread_40;               ///< not read by the provider
    std::uint32_t pmtu_discovery;          ///< path-MTU discovery, flag
    std::uint32_t pmtu_reset_timeout;      ///< seconds; 0 = none
    std::uint32_t keep_alive;              ///< seconds
    std::uint32_t minimum_retransmit_time; ///< milliseconds
    std::uint32_t maximum_retransmissions; ///< count
    std::uint32_t send_buffer_size;        ///< KB
    std::uint32_t round_trip_time;         ///< configured, microseconds
    std::uint32_t maximum_bandwidth;       ///< kbit/s
    std::uint32_t minimum_bandwidth;       ///< kbit/s
    std::uint32_t address_if_index;        ///< interface that holds the local address; 0 = none
    std::uint32_t cwm;                     ///< congestion-window monitoring, flag
    std::uint32_t burst_size;              ///< KB
    std::uint32_t maximum_jitter;          ///< configured, microseconds; 0 = detected automatically
};
static_assert(sizeof(FcipEntityEntry) == 96);
static_assert(offsetof(FcipEntityEntry, local_address) == 4);
static_assert(offsetof(FcipEntityEntry, listen_port) == 24);
static_assert(offsetof(FcipEntityEntry, sack) == 28);
static_assert(offsetof(FcipEntityEntry, sequence_number_wrap) == 32);
static_assert(offsetof(FcipEntityEntry, phb_support) == 36);
static_assert(offsetof(FcipEntityEntry, pmtu_discovery) == 44);
static_assert(offsetof(FcipEntityEntry, pmtu_reset_timeout) == 48);
static_assert(offsetof(FcipEntityEntry, keep_alive) == 52);
static_assert(offsetof(FcipEntityEntry, minimum_retransmit_time) == 56);
static_assert(offsetof(FcipEntityEntry, maximum_retransmissions) == 60);
static_assert(offsetof(FcipEntityEntry, send_buffer_size) == 64);
static_assert(offsetof(FcipEntityEntry, round_trip_time) == 68);
static_assert(offsetof(FcipEntityEntry, maximum_bandwidth) == 72);
static_assert(offsetof(FcipEntityEntry, minimum_bandwidth) == 76);
static_assert(offsetof(FcipEntityEntry, address_if_index) == 80);
static_assert(offsetof(FcipEntityEntry, cwm) == 84);
static_assert(offsetof(FcipEntityEntry, burst_size) == 88);
static_assert(offsetof(FcipEntityEntry, maximum_jitter) == 92);

/// One FCIP interface, that is one tunnel: a row of the link table, keyed by {entity_id, link_index}.
struct FcipLinkEntry {
    std::uint32_t entity_id;        ///< profile that the link uses (vrkFcipEntityId), first key word
    std::uint32_t link_index;       ///< zero-based (vrkFcipLinkIndex), second key word; tunnel number - 1
    std::uint32_t link_if_index;    ///< interface index of the FCIP interface (vrkFcipLinkIfIndex)
    std::uint32_t cost;             ///< vrkFcipLinkCost
    std::uint32_t unread_16;        ///< not read by the provider
    std::uint8_t remote_wwn[8];     ///< WWN of the peer switch
    std::uint32_t remote_entity_id; ///< the peer's profile number
    ip_addr_value remote_address;   ///< peer's address (vrkFcipLinkRemFcipEntityAddress)
    std::uint32_t unread_52;        ///< not read by the provider
    std::uint32_t status;           ///< vrkFcipLinkStatus
    std::uint32_t passive_mode;
    std::uint32_t tcp_connections; ///< number of TCP connections
    std::uint32_t check_timestamp;
    std::uint32_t timestamp_tolerance;
    std::uint32_t remote_tcp_port; ///< peer's TCP port (vrkFcipLinkExtTcpRemPort)
    std::uint32_t local_port_enable;
    std::uint32_t special_frame_enable;
    std::uint32_t unread_88; ///< not read by the provider but as part of the words at 80 to 111
    std::uint32_t bport_keep_alive_enable;
    std::uint32_t control_qos;
    std::uint32_t data_qos;
    std::uint32_t ethernet_if_index; ///< Gigabit Ethernet interface that carries the link (vrkFcipLinkExtEthIfIndex)
    std::uint32_t write_acceleration;
    std::uint32_t compression_mode; ///< 1 = no compression
    std::uint32_t tape_acceleration;
    std::uint32_t flow_control_buffer_size;
    std::uint32_t ipsec;
    std::uint32_t physical_if_index; ///< vrkFcipLinkExtPhyIfIndex
    std::uint32_t write_acceleration_operational;
    std::uint32_t tape_acceleration_operational;
    std::uint32_t tape_read_acceleration_operational;
    std::uint8_t unread_144[1032]; ///< carried along unread
};
static_assert(sizeof(FcipLinkEntry) == 1176);
static_assert(offsetof(FcipLinkEntry, link_if_index) == 8);
static_assert(offsetof(FcipLinkEntry, cost) == 12);
static_assert(offsetof(FcipLinkEntry, remote_wwn) == 20);
static_assert(offsetof(FcipLinkEntry, remote_entity_id) == 28);
static_assert(offsetof(FcipLinkEntry, remote_address) == 32);
static_assert(offsetof(FcipLinkEntry, status) == 56);
static_assert(offsetof(FcipLinkEntry, passive_mode) == 60);
static_assert(offsetof(FcipLinkEntry, tcp_connections) == 64);
static_assert(offsetof(FcipLinkEntry, check_timestamp) == 68);
static_assert(offsetof(FcipLinkEntry, timestamp_tolerance) == 72);
static_assert(offsetof(FcipLinkEntry, remote_tcp_port) == 76);
static_assert(offsetof(FcipLinkEntry, local_port_enable) == 80);
static_assert(offsetof(FcipLinkEntry, special_frame_enable) == 84);
static_assert(offsetof(FcipLinkEntry, bport_keep_alive_enable) == 92);
static_assert(offsetof(FcipLinkEntry, control_qos) == 96);
static_assert(offsetof(FcipLinkEntry, data_qos) == 100);
static_assert(offsetof(FcipLinkEntry, ethernet_if_index) == 104);
static_assert(offsetof(FcipLinkEntry, write_acceleration) == 108);
static_assert(offsetof(FcipLinkEntry, compression_mode) == 112);
static_assert(offsetof(FcipLinkEntry, tape_acceleration) == 116);
static_assert(offsetof(FcipLinkEntry, flow_control_buffer_size) == 120);
static_assert(offsetof(FcipLinkEntry, ipsec) == 124);
static_assert(offsetof(FcipLinkEntry, physical_if_index) == 128);
static_assert(offsetof(FcipLinkEntry, write_acceleration_operational) == 132);
static_assert(offsetof(FcipLinkEntry, tape_acceleration_operational) == 136);
static_assert(offsetof(FcipLinkEntry, tape_read_acceleration_operational) == 140);

/// Key of the TCP connection table.
struct FcipTcpConnKey {
    std::uint32_t entity_id;
    std::uint32_t link_index;
    std::uint16_t local_port;  ///< the profile's listen port, low 16 bits
    std::uint16_t remote_port; ///< the link's remote TCP port, low 16 bits
};
static_assert(sizeof(FcipTcpConnKey) == 12);
static_assert(offsetof(FcipTcpConnKey, local_port) == 8);
static_assert(offsetof(FcipTcpConnKey, remote_port) == 10);

/// One TCP connection of a link.
struct FcipTcpConnEntry {
    std::uint8_t unread_0[16];          ///< the service's own
    std::uint32_t purpose;              ///< 1, 2 or 3; other values are not reported
    std::uint32_t receiver_window_size; ///< bytes
    std::uint32_t maximum_segment_size; ///< bytes
    std::uint32_t connection_timeout;   ///< as the service counts it
};
static_assert(sizeof(FcipTcpConnEntry) == 32);
static_assert(offsetof(FcipTcpConnEntry, purpose) == 16);
static_assert(offsetof(FcipTcpConnEntry, receiver_window_size) == 20);
static_assert(offsetof(FcipTcpConnEntry, maximum_segment_size) == 24);
static_assert(offsetof(FcipTcpConnEntry, connection_timeout) == 28);

/// Error counters of a link: eight unread bytes, then nine 64-bit counters, big-endian, on hosts of either order.
struct FcipLinkErrors {
    std::uint8_t bytes[80];
};
static_assert(sizeof(FcipLinkErrors) == 80);

// ---------------------------------------------------------------------------------------------- port manager

/// What the port manager knows of a port. Packed: the words at 0 (interface index), 28 (MTU, bytes) and 213 (VSAN id)
/// are read with memcpy, in host order.
struct PmPortInfo {
    std::uint8_t bytes[217];
};
static_assert(sizeof(PmPortInfo) == 217 && alignof(PmPortInfo) == 1);

/// A port's configuration. Packed, host order: the VSAN id at 213, and a word at 217 that is printed beside it.
struct PmPortConfig {
    std::uint8_t bytes[221];
};
static_assert(sizeof(PmPortConfig) == 221 && alignof(PmPortConfig) == 1);

/// A port's frame counters. Packed and big-endian on hosts of either order: 32-bit counters at 259 (multicast frames
/// received), 263 (broadcast received), 267 (multicast transmitted), 271 (broadcast transmitted); 64-bit counters at
/// 275 (bytes received), 283 (unicast frames received), 307 (bytes transmitted), 315 (unicast frames transmitted).
struct PmPortCounters {
    std::uint8_t bytes[323];
};
static_assert(sizeof(PmPortCounters) == 323 && alignof(PmPortCounters) == 1);

// ---------------------------------------------------------------------------------------------- IPC service

/// The response queue's handle; only the IPC service looks inside.
typedef struct mts_queue_handle* mts_queue;

/// Where a message goes: the node (a line card or the supervisor) and the service access point on it.
struct mts_addr {
    std::uint32_t node;
    std::uint32_t sap;
};
static_assert(sizeof(mts_addr) == 8);

/// Describes one message that was sent or received. The caller's storage, the IPC service's contents.
struct mts_msg {
    alignas(std::max_align_t) std::uint8_t opaque[256];
};
static_assert(sizeof(mts_msg) == 256);

/// How to receive: the first word is 1, the third the wait limit, the fourth the token (0 = any), the rest 0.
struct mts_recv_options {
    std::uint32_t words[8];
};
static_assert(sizeof(mts_recv_options) == 32);

} // extern "C"
