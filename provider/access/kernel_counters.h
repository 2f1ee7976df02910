// The supervisor kernel's own protocol counters, from the files under /proc/net. Counters are 32 bits wide on every
// host; a number in a file whose magnitude is larger is stored as 0xFFFFFFFF, and -N as 2^32 - N.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>

namespace fcip {

/// The IPv4 record: the values of the "Ip:" line without its first two (forwarding and default TTL).
using ipv4_counters = std::array<std::uint32_t, 17>;

/// Positions in the IPv4 record.
enum : std::size_t {
    ipv4_in_receives,
    ipv4_in_hdr_errors,
    ipv4_in_addr_errors,
    ipv4_forw_datagrams,
    ipv4_in_unknown_protos,
    ipv4_in_discards,
    ipv4_in_delivers,
    ipv4_out_requests,
    ipv4_out_discards,
    ipv4_out_no_routes,
    ipv4_reasm_timeout,
    ipv4_reasm_reqds,
    ipv4_reasm_oks,
    ipv4_reasm_fails,
    ipv4_frag_oks,
    ipv4_frag_fails,
    ipv4_frag_creates,
};
static_assert(ipv4_frag_creates + 1 == std::tuple_size_v<ipv4_counters>);

/// The ICMP, TCP and UDP records: the first values of the "Icmp:", "Tcp:" and "Udp:" lines, in the file's order.
using icmp_counters = std::array<std::uint32_t, 26>;
using tcp_counters = std::array<std::uint32_t, 14>;
using udp_counters = std::array<std::uint32_t, 4>;

/// The IPv6 record, in the order of the "Ip6" lines.
using ipv6_counters = std::array<std::uint32_t, 23>;

/// Positions in the IPv6 record.
enum : std::size_t {
    ipv6_last_change,
    ipv6_in_receives,
    ipv6_in_hdr_errors,
    ipv6_in_too_big_errors,
    ipv6_in_no_routes,
    ipv6_in_addr_errors,
    ipv6_in_unknown_protos,
    ipv6_in_truncated_pkts,
    ipv6_in_discards,
    ipv6_in_delivers,
    ipv6_out_forw_datagrams,
    ipv6_out_requests,
    ipv6_out_discards,
    ipv6_out_no_routes,
    ipv6_reasm_timeout,
    ipv6_reasm_reqds,
    ipv6_reasm_oks,
    ipv6_reasm_fails,
    ipv6_frag_oks,
    ipv6_frag_fails,
    ipv6_frag_creates,
    ipv6_in_mcast_pkts,
    ipv6_out_mcast_pkts,
};
static_assert(ipv6_out_mcast_pkts + 1 == std::tuple_size_v<ipv6_counters>);

/// The ICMPv6 record, in the order of RFC 2466's ipv6IfIcmpTable, which is not the file's.
using icmpv6_counters = std::array<std::uint32_t, 34>;

/// Positions in the ICMPv6 record.
enum : std::size_t {
    icmpv6_in_msgs,
    icmpv6_in_errors,
    icmpv6_in_dest_unreachs,
    icmpv6_in_pkt_too_bigs,
    icmpv6_in_time_excds,
    icmpv6_in_parm_problems,
    icmpv6_in_admin_prohibs,
    icmpv6_in_echos,
    icmpv6_in_echo_replies,
    icmpv6_in_group_memb_queries,
    icmpv6_in_group_memb_responses,
    icmpv6_in_group_memb_reductions,
    icmpv6_in_router_solicits,
    icmpv6_in_router_advertisements,
    icmpv6_in_neighbor_solicits,
    icmpv6_in_neighbor_advertisements,
    icmpv6_in_redirects,
    icmpv6_out_msgs,
    icmpv6_out_errors,
    icmpv6_out_dest_unreachs,
    icmpv6_out_pkt_too_bigs,
    icmpv6_out_time_excds,
    icmpv6_out_parm_problems,
    icmpv6_out_admin_prohibs,
    icmpv6_out_echos,
    icmpv6_out_echo_replies,
    icmpv6_out_group_memb_queries,
    icmpv6_out_group_memb_responses,
    icmpv6_out_group_memb_reductions,
    icmpv6_out_router_solicits,
    icmpv6_out_router_advertisements,
    icmpv6_out_neighbor_solicits,
    icmpv6_out_neighbor_advertisements,
    icmpv6_out_redirects,
};
static_assert(icmpv6_out_redirects + 1 == std::tuple_size_v<icmpv6_counters>);

/// Reads the four first line pairs of an open "/proc/net/snmp": Ip, Icmp, Tcp, Udp. A value that is not where it is
/// expected keeps what the record held. Any record may be null.
void read_ip_counters(std::FILE* file, std::uint32_t* ip, std::uint32_t* icmp, std::uint32_t* tcp, std::uint32_t* udp);

/// Reads an open "/proc/net/snmp6", or a per-interface file with its ifIndex line first. A line that is not where it is
/// expected, and those after it, leave their counters as they were.
void read_ipv6_counters(std::FILE* file, bool per_interface, ipv6_counters& ip, icmpv6_counters& icmp);

} // namespace fcip

extern "C" {

/// Reads the kernel's IPv4 counters into the caller's records of 17, 26, 14 and 4 words; any may be null to skip that
/// group. Values that the file lacks, or all of them without the file, keep what the record held.
/// @return the result of closing the file, 0 also when it could not be opened
__attribute__((visibility("default"))) int ipconf_linux_get_ip_stats(std::uint32_t* ip, std::uint32_t* icmp,
                                                                     std::uint32_t* tcp, std::uint32_t* udp);

/// Reads the kernel's IPv6 counters into the caller's records of 23 and 34 words, cleared first; either may be null.
/// @param if_index the interface; 0 = the whole system
/// @return the result of closing the file, 0 also when it could not be opened
__attribute__((visibility("default"))) int ipconf_linux_get_ipv6_stats(std::uint32_t if_index, std::uint32_t* ip,
                                                                       std::uint32_t* icmp);

} // extern "C"
