// Where the counters stand in the records and replies of the line cards, the port manager and the FCIP service, all
// big-endian, with the names that scenarios give them.
#pragma once

#include "simulator/bytes.h"

#include <cstdint>
#include <span>
#include <vector>

namespace switchsim {

using Payload = std::vector<std::uint8_t>;

inline constexpr std::size_t mac_statistics_size = 256;
inline constexpr std::size_t ip_statistics_size = 172;
inline constexpr std::size_t tcp_statistics_size = 1352;
inline constexpr std::size_t tcp_continuation_size = 38;
inline constexpr std::size_t tcp_more_offset = 36; ///< of a continuation: 16 bits, non-zero while more follow

/// One counter of a record.
struct CounterField {
    const char* key;
    std::size_t offset;
    unsigned bits; ///< 32 or 64

    void put(std::uint8_t* record, std::uint64_t value) const {
        if (bits == 64)
            put_big(record, offset, value);
        else
            put_big(record, offset, static_cast<std::uint32_t>(value));
    }
};

/// The Ethernet reply: a head of 32 bytes, then 28 counters.
constexpr CounterField mac_slot(const char* key, std::size_t slot) {
    return {key, 32 + 8 * slot, 64};
}

inline constexpr CounterField mac_statistics_fields[] = {
    mac_slot("bytes_transmitted", 0),    mac_slot("collisions", 1),        mac_slot("late_collisions", 2),
    mac_slot("excessive_collisions", 3), mac_slot("fcs_errors", 4),        mac_slot("packets_transmitted", 7),
    mac_slot("bytes_received", 10),      mac_slot("packets_received", 14), mac_slot("symbol_errors", 19),
    mac_slot("alignment_errors", 20),
};

inline constexpr CounterField ip_statistics_fields[] = {
    {"received", 36, 32},
    {"delivered", 44, 32},
    {"sent", 52, 32},
    {"header_errors_1", 56, 32},
    {"header_errors_2", 64, 32},
    {"header_errors_3", 68, 32},
    {"header_errors_4", 72, 32},
    {"header_errors_5", 76, 32},
    {"address_errors", 80, 32},
    {"sent_discards", 84, 32},
    {"forwarded", 92, 32},
    {"unknown_protocols", 108, 32},
    {"reassembled", 116, 32},
    {"fragmented", 120, 32},
    {"fragments_created", 124, 32},
    {"fragmentation_failures", 128, 32},
    {"no_routes", 136, 32},
    {"header_errors_6", 140, 32},
    {"reassembly_failures", 148, 32},
    {"discards", 152, 32},
};

inline constexpr CounterField tcp_statistics_fields[] = {
    {"active_opens", 36, 32},      {"passive_opens", 44, 32},     {"established", 52, 32},
    {"attempt_failures", 68, 32},  {"retransmitted", 196, 32},    {"received", 268, 32},
    {"receive_errors_1", 288, 64}, {"receive_errors_2", 296, 64}, {"receive_errors_3", 304, 64},
    {"receive_errors_4", 312, 64}, {"receive_errors_5", 320, 64}, {"established_resets", 664, 32},
    {"sent_resets", 668, 32},
};

inline constexpr CounterField port_counter_fields[] = {
    {"multicast_received", 259, 32},    {"broadcast_received", 263, 32},  {"multicast_transmitted", 267, 32},
    {"broadcast_transmitted", 271, 32}, {"bytes_received", 275, 64},      {"unicast_received", 283, 64},
    {"bytes_transmitted", 307, 64},     {"unicast_transmitted", 315, 64},
};

inline constexpr CounterField link_error_fields[] = {
    {"lost_synchronisation", 8, 64},
    {"special_frames_not_received", 16, 64},
    {"special_frame_responses_not_received", 24, 64},
    {"special_frame_response_mismatches", 32, 64},
    {"special_frame_invalid_nonces", 40, 64},
    {"duplicate_special_frames", 48, 64},
    {"special_frame_invalid_wwns", 56, 64},
    {"bb2_keep_alive_timeouts", 64, 64},
    {"timestamp_expiries", 72, 64},
};

} // namespace switchsim
