// The supervisor kernel's own protocol counters, from the files under /proc/net. Counters are 32 bits wide on every
// host; a number in a file whose magnitude is larger is stored as 0xFFFFFFFF, and -N as 2^32 - N.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>

namespace fcip {

/// The IPv4 record: the values of the "Ip:" line without its first two (forwarding and default TTL), that is
/// InReceives, InHdrErrors, InAddrErrors, ForwDatagrams, InUnknownProtos, InDiscards, InDelivers, OutRequests,
/// OutDiscards, OutNoRoutes, ReasmTimeout, ReasmReqds, ReasmOKs, ReasmFails, FragOKs, FragFails, FragCreates.
using ipv4_counters = std::array<std::uint32_t, 17>;

/// The ICMP, TCP and UDP records: the first values of the "Icmp:", "Tcp:" and "Udp:" lines, in the file's order.
using icmp_counters = std::array<std::uint32_t, 26>;
using tcp_counters = std::array<std::uint32_t, 14>;
using udp_counters = std::array<std::uint32_t, 4>;

/// The IPv6 record, in the order of the "Ip6" lines.
using ipv6_counters = std::array<std::uint32_t, 23>;

/// The ICMPv6 record, in the order of RFC 2466's ipv6IfIcmpTable, which is not the file's: 17 counters of what came in,
/// then the same of what went out.
using icmpv6_counters = std::array<std::uint32_t, 34>;

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
