#include "provider/access/dumps.h"

#include "provider/access/addresses.h"
#include "provider/access/fcip_tables.h"
#include "provider/access/ports.h"
#include "provider/common/text.h"
#include "provider/common/values.h"

#include <algorithm>
#include <cstdio>

namespace {

using namespace fcip;

bool is_enabled(std::uint32_t flag) {
    return flag == 1;
}

const char* enabled_text(std::uint32_t flag) {
    return is_enabled(flag) ? "enabled" : "disabled";
}

void print_interface(const char* format, std::uint32_t if_index) {
    std::array<char, 256> name{};
    std::printf(format, text_or_empty(fcip_if_str(if_index, name.data())));
}

bool is_configured(const ip_addr_value& address) {
    constexpr ip_addr_value no_ipv6{ip_family_ipv6, {}};
    switch (address.family) {
    case ip_family_ipv4:
        return std::any_of(address.address, address.address + 4, [](std::uint8_t byte) { return byte != 0; });
    case ip_family_ipv6:
        return ip_addr_compare(&address, &no_ipv6) != 0;
    default:
        return false;
    }
}

void print_address(const FcipEntityEntry& profile) {
    if (!is_configured(profile.local_address)) {
        std::printf("    Internet address is not configured\n");
        return;
    }
    std::printf("    Internet Address is %s", address_text(profile.local_address).data());
    if (profile.address_if_index != 0)
        print_interface("  (interface %s)", profile.address_if_index);
    std::printf("\n");
}

/// @param if_indexes those of the tunnels, as many as `count`: an array, or the platform's reply
template <typename IfIndexes>
void print_tunnels(std::uint32_t count, const IfIndexes& if_indexes) {
    if (count == 0)
        return;
    std::printf("    Tunnels Using this Profile:");
    for (std::uint32_t position = 0; position < count; ++position)
        print_interface(" %s", if_indexes[position]);
    std::printf("\n");
}

/// A flag's line, whose end tells a setting when the flag is on and the setting is not zero.
void print_flag(const char* flag_format, std::uint32_t flag, const char* setting_format, std::uint32_t setting) {
    std::printf(flag_format, enabled_text(flag));
    if (is_enabled(flag) && setting != 0)
        std::printf(setting_format, as_signed(setting));
    else
        std::printf("\n");
}

void print_tcp_parameters(const FcipEntityEntry& profile) {
    std::printf("    TCP parameters\n");
    std::printf("        SACK is %s\n", enabled_text(profile.sack));
    print_flag("        PMTU discovery is %s", profile.pmtu_discovery, ", reset timeout is %d sec\n",
               profile.pmtu_reset_timeout);
    std::printf("        Keep alive is %d sec\n", as_signed(profile.keep_alive));
    std::printf("        Minimum retransmission timeout is %d ms\n", as_signed(profile.minimum_retransmit_time));
    std::printf("        Maximum number of re-transmissions is %d\n", as_signed(profile.maximum_retransmissions));
    std::printf("        Send buffer size is %d KB\n", as_signed(profile.send_buffer_size));
    for (int twice = 0; twice < 2; ++twice) // the switch's display repeats this line
        std::printf("        Maximum allowed bandwidth is %d kbps\n", as_signed(profile.maximum_bandwidth));
    std::printf("        Minimum available bandwidth is %d kbps\n", as_signed(profile.minimum_bandwidth));
    std::printf("        Configured round trip time is %d usec\n", as_signed(profile.round_trip_time));
    print_flag("        Congestion window monitoring is %s", profile.cwm, ", burst size is %d KB\n",
               profile.burst_size);
    if (profile.maximum_jitter != 0)
        std::printf("        Configured maximum jitter is %d us\n", as_signed(profile.maximum_jitter));
    else
        std::printf("        Auto jitter detection is enabled\n");
}

template <typename IfIndexes>
void print_profile(const FcipEntityEntry& profile, std::uint32_t tunnels, const IfIndexes& if_indexes) {
    std::printf("FCIP Profile %d\n", as_signed(profile.entity_id));
    print_address(profile);
    print_tunnels(tunnels, if_indexes);
    std::printf("    Listen Port is %d\n", as_signed(profile.listen_port));
    print_tcp_parameters(profile);
}

} // namespace

int get_all_fcip_entities(mts_queue queue) {
    int result = 0;
    walk_entities(
        queue,
        [&](const FcipEntityEntry& profile) {
            const interface_list interfaces = fcip_get_ifs_for_this_profile(profile.entity_id, queue);
            if (!interfaces) {
                result = 1;
                return walk::stop;
            }
            print_profile(profile, interfaces.count, interfaces);
            return walk::go_on;
        },
        patient);
    return result;
}

void fcip_print_entity(const FcipEntityEntry* profile, const std::uint32_t* interfaces) {
    print_profile(*profile, interfaces[0], interfaces + 1);
}

int fcip_print_link_entity_brief(const FcipLinkEntry* link) {
    std::printf("vrkFcipEntityId : %d\n", as_signed(link->entity_id));
    std::printf("vrkFcipLinkExtTcpRemPort : %d\n", as_signed(link->remote_tcp_port));
    std::printf("vrkFcipLinkRemFcipEntityAddress, : %s\n", address_text(link->remote_address).data());
    std::printf("vrkFcipLinkIndex (fcip index)  : %d\n", as_signed(link->link_index));
    std::printf("vrkFcipLinkIfIndex (fcip if-index) : %d\n", as_signed(link->link_if_index));
    std::printf("vrkFcipLinkCost: %d\n", as_signed(link->cost));
    std::printf("vrkFcipLinkStatus : %d\n", as_signed(link->status));
    std::printf("vrkFcipLinkExtEthIfIndex (Gigabit ifIndex) : %d\n", as_signed(link->ethernet_if_index));
    std::printf("vrkFcipLinkExtPhyIfIndex:(Gigabit ifIndex) : %d\n", as_signed(link->physical_if_index));
    std::uint32_t vsan_id = 0;
    return get_vsan_from_ifindex(link->link_if_index, &vsan_id);
}
