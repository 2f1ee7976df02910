// Which file each reader of the kernel's counters opens, and what comes of a file that is not there. The program is
// linked so that it answers for every file that the readers open.
#include "provider/access/kernel_counters.h"

#include "tests/provider/access/access_test.h"

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

bool answering = false;
std::map<std::string, std::string> files; ///< what there is: name and contents
std::vector<std::string> opened;          ///< names and modes, in order

} // namespace

extern "C" std::FILE* __real_fopen(const char* name, const char* mode);
// Not hidden: a sanitizer's library refers to it, too.
extern "C" [[gnu::visibility("default")]] std::FILE* __wrap_fopen(const char* name, const char* mode);

std::FILE* __wrap_fopen(const char* name, const char* mode) {
    if (!answering)
        return __real_fopen(name, mode);
    opened.push_back(std::string(name) + " " + mode);
    const auto file = files.find(name);
    return file == files.end() ? nullptr : fmemopen(file->second.data(), file->second.size(), mode);
}

namespace fcip {
namespace {

using names = std::vector<std::string>;

const std::string ip_pairs = "Ip:\nIp: 1 64 7 8\nIcmp:\nIcmp: 21 22\nTcp:\nTcp: 31 32\nUdp:\nUdp: 41 42\n";

template <typename Counters>
Counters all(std::uint32_t value) {
    Counters counters;
    counters.fill(value);
    return counters;
}

/// Marks, but for the first two.
template <typename Counters>
Counters beginning_with(std::uint32_t first, std::uint32_t second) {
    Counters counters = all<Counters>(untouched);
    counters[0] = first;
    counters[1] = second;
    return counters;
}

class KernelCounterFiles : public AccessTest {
  protected:
    void SetUp() override {
        AccessTest::SetUp();
        files.clear();
        opened.clear();
    }

    /// Calls a reader while this program answers for the files.
    template <typename Reader>
    int read(Reader reader) {
        return call([&] {
            answering = true;
            const int result = reader();
            answering = false;
            return result;
        });
    }

    int read_ip() {
        return read([&] { return ipconf_linux_get_ip_stats(ip_.data(), icmp_.data(), tcp_.data(), udp_.data()); });
    }

    int read_ipv6(std::uint32_t if_index) {
        return read([&] { return ipconf_linux_get_ipv6_stats(if_index, ipv6_.data(), icmpv6_.data()); });
    }

    ipv4_counters ip_ = all<ipv4_counters>(untouched);
    icmp_counters icmp_ = all<icmp_counters>(untouched);
    tcp_counters tcp_ = all<tcp_counters>(untouched);
    udp_counters udp_ = all<udp_counters>(untouched);
    ipv6_counters ipv6_ = all<ipv6_counters>(untouched);
    icmpv6_counters icmpv6_ = all<icmpv6_counters>(untouched);
};

TEST_F(KernelCounterFiles, Ipv4CountersAreInTheSystemFile) {
    files["/proc/net/snmp"] = ip_pairs;
    EXPECT_EQ(read_ip(), 0);
    EXPECT_EQ(opened, (names{"/proc/net/snmp r"}));
    EXPECT_EQ(ip_, beginning_with<ipv4_counters>(7, 8));
    EXPECT_EQ(icmp_, beginning_with<icmp_counters>(21, 22));
    EXPECT_EQ(tcp_, beginning_with<tcp_counters>(31, 32));
    EXPECT_EQ(udp_, beginning_with<udp_counters>(41, 42));
    EXPECT_EQ(trace, "");
}

TEST_F(KernelCounterFiles, MissingIpv4FileLeavesTheRecordsAndPrintsNothing) {
    EXPECT_EQ(read_ip(), 0);
    EXPECT_EQ(opened, (names{"/proc/net/snmp r"}));
    EXPECT_EQ(ip_, all<ipv4_counters>(untouched));
    EXPECT_EQ(icmp_, all<icmp_counters>(untouched));
    EXPECT_EQ(tcp_, all<tcp_counters>(untouched));
    EXPECT_EQ(udp_, all<udp_counters>(untouched));
    EXPECT_EQ(trace, "");
}

TEST_F(KernelCounterFiles, SystemFileNeedsNoInterfaceName) {
    files["/proc/net/snmp6"] = "Ip6LastChange 5\nIp6InReceives 6\n";
    EXPECT_EQ(read_ipv6(0), 0);
    EXPECT_EQ(opened, (names{"/proc/net/snmp6 r"}));
    EXPECT_EQ(ipv6_[0], 5u);
    EXPECT_EQ(ipv6_[1], 6u);
    EXPECT_EQ(ipv6_[2], 0u);
    EXPECT_EQ(icmpv6_, icmpv6_counters{});
    EXPECT_EQ(calls("netcfg_print_ifname"), 0u);
    EXPECT_EQ(trace, "");
}

TEST_F(KernelCounterFiles, PerInterfaceFileBearsTheKernelsName) {
    the_switch().ports[12].kernel_name = "eth3";
    files["/proc/net/dev_snmp6/eth3"] = "ifIndex 2\nIp6LastChange 5\nIp6InReceives 6\n";
    EXPECT_EQ(read_ipv6(12), 0);
    EXPECT_EQ(opened, (names{"/proc/net/dev_snmp6/eth3 r"}));
    EXPECT_EQ(ipv6_[0], 5u);
    EXPECT_EQ(ipv6_[1], 6u);
    EXPECT_EQ(calls("netcfg_print_ifname"), 1u);
    EXPECT_EQ(trace, "");
}

TEST_F(KernelCounterFiles, KernelsNameMayHave255Characters) {
    constexpr std::size_t lengths[] = {1, 31, 32, 40, 200, 255};
    for (const std::size_t length : lengths) {
        const std::string name(length, 'k');
        ASSERT_EQ(switchsim::load_text("[switch]\nname = \"s\"\n[[port_channel]]\nslot = 1\nport = 1\nif_index = 12\n"
                                       "vsan_missing = true\nkernel_name = \"" +
                                           name + "\"\n",
                                       "test.toml"),
                  "");
        files = {{"/proc/net/dev_snmp6/" + name, "ifIndex 2\nIp6LastChange 5\nIp6InReceives 6\n"}};
        opened.clear();
        ipv6_.fill(untouched);
        EXPECT_EQ(read_ipv6(12), 0);
        EXPECT_EQ(opened, (names{"/proc/net/dev_snmp6/" + name + " r"}));
        EXPECT_EQ(ipv6_[1], 6u);
    }
}

TEST_F(KernelCounterFiles, MissingIpv6FileClearsTheRecordsAndPrintsNothing) {
    the_switch().ports[12].kernel_name = "eth3";
    for (const std::uint32_t if_index : {0u, 12u}) {
        ipv6_.fill(untouched);
        icmpv6_.fill(untouched);
        EXPECT_EQ(read_ipv6(if_index), 0);
        EXPECT_EQ(ipv6_, ipv6_counters{});
        EXPECT_EQ(icmpv6_, icmpv6_counters{});
        EXPECT_EQ(trace, "");
    }
    EXPECT_EQ(opened, (names{"/proc/net/snmp6 r", "/proc/net/dev_snmp6/eth3 r"}));
}

} // namespace
} // namespace fcip
