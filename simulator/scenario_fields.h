// The keys of a scenario that reader and writer share, with what stands in their place when they are not there.
#pragma once

#include "simulator/interface_numbers.h"
#include "simulator/switchsim.h"

#include <algorithm>
#include <limits>

namespace switchsim {

/// A word of a record that a key sets.
template <class Row>
struct WordField {
    const char* key;
    std::uint32_t Row::*word;
    std::uint32_t fallback;
    bool is_flag = false;
    std::uint32_t highest = std::numeric_limits<std::uint32_t>::max();
};

inline constexpr WordField<FcipEntityEntry> profile_words[] = {
    {"port", &FcipEntityEntry::listen_port, 3225},
    {"sack", &FcipEntityEntry::sack, 1, true},
    {"sequence_number_wrap", &FcipEntityEntry::sequence_number_wrap, 1, true},
    {"phb_support", &FcipEntityEntry::phb_support, 0, true},
    {"pmtu_discovery", &FcipEntityEntry::pmtu_discovery, 1, true},
    {"pmtu_reset_timeout", &FcipEntityEntry::pmtu_reset_timeout, 3600},
    {"keep_alive", &FcipEntityEntry::keep_alive, 60},
    {"minimum_retransmit_time", &FcipEntityEntry::minimum_retransmit_time, 200},
    {"maximum_retransmissions", &FcipEntityEntry::maximum_retransmissions, 4},
    {"send_buffer_size", &FcipEntityEntry::send_buffer_size, 0},
    {"round_trip_time", &FcipEntityEntry::round_trip_time, 1000},
    {"maximum_bandwidth", &FcipEntityEntry::maximum_bandwidth, 1000000},
    {"minimum_bandwidth", &FcipEntityEntry::minimum_bandwidth, 500000},
    {"cwm", &FcipEntityEntry::cwm, 1, true},
    {"burst_size", &FcipEntityEntry::burst_size, 50},
    {"maximum_jitter", &FcipEntityEntry::maximum_jitter, 0},
};

inline constexpr WordField<FcipLinkEntry> link_words[] = {
    {"cost", &FcipLinkEntry::cost, 1000},
    {"status", &FcipLinkEntry::status, 1},
    {"passive_mode", &FcipLinkEntry::passive_mode, 0, true},
    {"tcp_connections", &FcipLinkEntry::tcp_connections, 2},
    {"check_timestamp", &FcipLinkEntry::check_timestamp, 0, true},
    {"timestamp_tolerance", &FcipLinkEntry::timestamp_tolerance, 2000},
    {"remote_port", &FcipLinkEntry::remote_tcp_port, 3225},
    {"local_port_enable", &FcipLinkEntry::local_port_enable, 1, true},
    {"special_frame_enable", &FcipLinkEntry::special_frame_enable, 0, true},
    {"word_88", &FcipLinkEntry::unread_88, 0},
    {"bport_keep_alive_enable", &FcipLinkEntry::bport_keep_alive_enable, 0, true},
    {"control_qos", &FcipLinkEntry::control_qos, 0},
    {"data_qos", &FcipLinkEntry::data_qos, 0},
    {"write_acceleration", &FcipLinkEntry::write_acceleration, 0, true},
    {"compression_mode", &FcipLinkEntry::compression_mode, 1},
    {"tape_acceleration", &FcipLinkEntry::tape_acceleration, 0, true},
    {"flow_control_buffer_size", &FcipLinkEntry::flow_control_buffer_size, 0},
    {"ipsec", &FcipLinkEntry::ipsec, 0, true},
    {"write_acceleration_operational", &FcipLinkEntry::write_acceleration_operational, 0, true},
    {"tape_acceleration_operational", &FcipLinkEntry::tape_acceleration_operational, 0, true},
    {"tape_read_acceleration_operational", &FcipLinkEntry::tape_read_acceleration_operational, 0, true},
};

inline constexpr WordField<FcipTcpConnEntry> connection_words[] = {
    {"purpose", &FcipTcpConnEntry::purpose, 1},
    {"receiver_window_size", &FcipTcpConnEntry::receiver_window_size, 65535},
    {"maximum_segment_size", &FcipTcpConnEntry::maximum_segment_size, 1460},
    {"timeout", &FcipTcpConnEntry::connection_timeout, 30},
};

/// A kind of port that a scenario lists.
struct PortKind {
    const char* section;
    std::uint8_t kind;
    std::uint32_t base;      ///< of derived interface indexes
    std::uint32_t lowest;    ///< interface index that is allowed
    const char* name;        ///< before slot and port
    const char* kernel_name; ///< before slot and port
    std::uint32_t mtu;       ///< bytes
    bool has_fc_interface;
};

inline constexpr PortKind port_kinds[] = {
    {"ethernet", kind_ethernet, ethernet_base, ethernet_base, "GigabitEthernet", "eth", 1500, false},
    {"fibre_channel", kind_fibre_channel, fibre_channel_base, 1, "fc", "fc", 2112, true},
    {"port_channel", kind_port_channel, port_channel_base, 1, "port-channel", "po", 2112, true},
};

inline constexpr std::uint32_t fcip_mtu = 2300; ///< bytes, where a tunnel says nothing else

/// A slot or port number as it stands in names; "" for none.
inline std::string number_text(const std::optional<std::uint8_t>& number) {
    return number ? std::to_string(*number) : "";
}

/// The names that a port has where the scenario gives none.
inline std::string default_name(const PortKind& kind, const Port& port) {
    return kind.name + number_text(port.slot) + "/" + number_text(port.port);
}
inline std::string default_kernel_name(const PortKind& kind, const Port& port) {
    return kind.kernel_name + number_text(port.slot) + "_" + number_text(port.port);
}

/// Likewise display name and kernel name of a tunnel's FCIP interface.
inline std::string default_name(const FcipLinkEntry& link) {
    return "fcip" + std::to_string(std::uint64_t{link.link_index} + 1);
}

/// Whether a port's network address is a MAC address like "02:00:00:aa:bb:cc".
inline bool is_mac(const std::string& text) {
    constexpr std::string_view form = "xx:xx:xx:xx:xx:xx";
    return text.size() == form.size() && std::equal(text.begin(), text.end(), form.begin(), [](char one, char wanted) {
               return wanted == ':' ? one == ':'
                                    : std::string_view("0123456789abcdefABCDEF").find(one) != std::string::npos;
           });
}

/// How the system-identity service writes a WWN for which it knows no other text.
inline std::string plain_text(const Wwn& wwn) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t octet : wwn)
        text += std::string(text.empty() ? "" : ":") + digits[octet >> 4] + digits[octet & 15];
    return text;
}

} // namespace switchsim
