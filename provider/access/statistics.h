// Counters that live on the line cards, asked for over the IPC service, and the switch-wide IP configuration.
#pragma once

#include "platform/services.h"

namespace fcip {

/// The TCP counter record of an interface, as the line card replied: big-endian on every host.
inline constexpr std::size_t tcp_record_size = 1352;

/// The IP counter record of an interface, as the line card replied: a header of 32 bytes, then the counters,
/// big-endian.
inline constexpr std::size_t ip_record_size = 172;

/// The MAC counter record of an Ethernet interface, as the line card replied: big-endian.
inline constexpr std::size_t ethernet_record_size = 256;

/// The switch-wide IP configuration, in host order.
struct ip_configuration {
    std::uint32_t forwarding; ///< IP forwarding flag
    std::uint8_t default_ttl; ///< default time-to-live of datagrams, hops
    std::uint8_t unused[3];   ///< as the service sent them
};
static_assert(sizeof(ip_configuration) == 8);

/// Asks the line card for the TCP counters of an interface.
/// @param record filled after a success; a reply shorter than the record leaves zeros behind it. It may also be filled
/// after a failure, when the reply came but what should follow it did not.
/// @return 0, or -1 on any failure
int get_tcp_stats(std::uint32_t if_index, std::uint8_t record[tcp_record_size]);

/// Asks the line card for the IP counters of an interface.
/// @param flag what the request asks for; 0 = only the status is wanted
/// @param reply out: null, or after a success with a flag other than 0 a block for the caller to free (hold it in a
/// platform_ptr<std::uint8_t>): the whole reply, at least ip_record_size bytes, zero behind what was received
/// @return 0; -1 when the exchange failed; the line card's status when it refused
int get_ip_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t flag, std::uint8_t** reply);

/// Asks the line card for the MAC counters of an Ethernet interface.
/// @param record filled after a success, zeros behind a short reply; otherwise untouched
/// @return 0, or -1 on any failure
int get_ethernetport_statistics(std::uint32_t if_index, std::uint8_t record[ethernet_record_size]);

/// Asks the configuration service for the IP forwarding flag and the default time-to-live.
/// @param configuration filled after a success, zeros behind a short reply; otherwise untouched
/// @return 0, or -1 on any failure
int get_ip_misc_cfg(ip_configuration* configuration);

} // namespace fcip
