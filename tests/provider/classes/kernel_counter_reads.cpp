#include "tests/provider/classes/kernel_counter_reads.h"

#include "simulator/switchsim.h"

#include <cstdint>

std::vector<std::string> test::kernel_counter_reads;

extern "C" {

int __real_ipconf_linux_get_ip_stats(std::uint32_t* ip, std::uint32_t* icmp, std::uint32_t* tcp, std::uint32_t* udp);

/// Takes the place of the provider's reader: notes the read and passes it on.
int __wrap_ipconf_linux_get_ip_stats(std::uint32_t* ip, std::uint32_t* icmp, std::uint32_t* tcp, std::uint32_t* udp) {
    const bool ip_alone = ip != nullptr && icmp == nullptr && tcp == nullptr && udp == nullptr;
    const auto& calls = switchsim::recorded_calls();
    test::kernel_counter_reads.push_back(!ip_alone ? "other groups" : calls.empty() ? "" : calls.back());
    return __real_ipconf_linux_get_ip_stats(ip, icmp, tcp, udp);
}

} // extern "C"
