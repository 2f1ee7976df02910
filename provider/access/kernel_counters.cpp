#include "provider/access/kernel_counters.h"

#include "platform/services.h"
#include "provider/common/text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <span>
#include <string_view>

namespace {

using namespace fcip;

struct file_closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using open_file = std::unique_ptr<std::FILE, file_closer>;

/// A number of a file as "%lu" reads it where a long has 32 bits: one without room there is all ones, whatever its
/// sign; a minus sign else negates modulo 2^32.
std::uint32_t as_counter(long long number) {
    constexpr long long largest = 0xFFFFFFFF;
    return static_cast<std::uint32_t>(number < -largest || number > largest ? largest : number);
}

using line_text = std::array<char, 1024>;

/// Reads a header line, which is not looked at, and the line of values behind it. A missing line is empty.
line_text next_values(std::FILE* file) {
    line_text line{};
    for (int header_then_values = 0; header_then_values < 2; ++header_then_values) {
        if (std::fgets(line.data(), line.size(), file) == nullptr)
            return {};
    }
    return line;
}

/// Scans the numbers behind a line's name, up to the first that is none, skipping `skipped` and storing the rest.
void scan_values(const line_text& line, std::string_view name, std::size_t skipped, std::uint32_t* record,
                 std::size_t count) {
    if (record == nullptr || !std::string_view(line.data()).starts_with(name))
        return;
    const char* rest = line.data() + name.size();
    for (std::size_t position = 0; position < skipped + count; ++position) {
        long long number = 0;
        int length = 0;
        if (std::sscanf(rest, "%lld%n", &number, &length) != 1)
            return;
        if (position >= skipped)
            record[position - skipped] = as_counter(number);
        rest += length;
    }
}

/// Scans one "PREFIXNAME NUMBER" line. A line of another name stays unread from the first character that differs, so
/// that no later scan matches either.
void scan_line(std::FILE* file, std::string_view prefix, std::string_view name, std::uint32_t& counter) {
    const auto format = join_text<64>({prefix, name, " %lld\n"});
    long long number = 0;
    if (std::fscanf(file, format.data(), &number) == 1)
        counter = as_counter(number);
}

/// The IPv6 lines behind their "Ip6", in the order of the file and of the record.
constexpr std::string_view ipv6_lines[] = {
    "LastChange",      "InReceives",      "InHdrErrors",  "InTooBigErrors", "InNoRoutes",       "InAddrErrors",
    "InUnknownProtos", "InTruncatedPkts", "InDiscards",   "InDelivers",     "OutForwDatagrams", "OutRequests",
    "OutDiscards",     "OutNoRoutes",     "ReasmTimeout", "ReasmReqds",     "ReasmOKs",         "ReasmFails",
    "FragOKs",         "FragFails",       "FragCreates",  "InMcastPkts",    "OutMcastPkts",
};
static_assert(std::size(ipv6_lines) == std::tuple_size_v<ipv6_counters>);

/// The ICMPv6 counters of either direction, in the order of the record.
constexpr std::string_view icmpv6_record[] = {
    "Msgs",
    "Errors",
    "DestUnreachs",
    "PktTooBigs",
    "TimeExcds",
    "ParmProblems",
    "AdminProhibs",
    "Echos",
    "EchoReplies",
    "GroupMembQueries",
    "GroupMembResponses",
    "GroupMembReductions",
    "RouterSolicits",
    "RouterAdvertisements",
    "NeighborSolicits",
    "NeighborAdvertisements",
    "Redirects",
};

/// The same in the order of the file's lines.
constexpr std::string_view icmpv6_lines[] = {
    "Msgs",
    "Errors",
    "DestUnreachs",
    "AdminProhibs",
    "TimeExcds",
    "ParmProblems",
    "PktTooBigs",
    "Echos",
    "EchoReplies",
    "RouterSolicits",
    "RouterAdvertisements",
    "NeighborSolicits",
    "NeighborAdvertisements",
    "Redirects",
    "GroupMembQueries",
    "GroupMembResponses",
    "GroupMembReductions",
};
static_assert(2 * std::size(icmpv6_record) == std::tuple_size_v<icmpv6_counters>);
static_assert(std::ranges::is_permutation(icmpv6_record, icmpv6_lines));

void read_icmpv6_lines(std::FILE* file, const char* direction, std::uint32_t* record) {
    for (const std::string_view name : icmpv6_lines)
        scan_line(file, direction, name, record[std::ranges::find(icmpv6_record, name) - icmpv6_record]);
}

open_file open_ipv6_file(std::uint32_t if_index) {
    if (if_index == 0)
        return open_file(std::fopen("/proc/net/snmp6", "r"));
    std::array<char, 256> name{};
    netcfg_print_ifname(name.data(), if_index);
    return open_file(std::fopen(join_text<512>({"/proc/net/dev_snmp6/", name.data()}).data(), "r"));
}

void copy_out(std::span<const std::uint32_t> counters, std::uint32_t* record) {
    if (record != nullptr)
        std::copy(counters.begin(), counters.end(), record);
}

} // namespace

namespace fcip {

void read_ip_counters(std::FILE* file, std::uint32_t* ip, std::uint32_t* icmp, std::uint32_t* tcp, std::uint32_t* udp) {
    scan_values(next_values(file), "Ip:", 2, ip, std::tuple_size_v<ipv4_counters>);
    scan_values(next_values(file), "Icmp:", 0, icmp, std::tuple_size_v<icmp_counters>);
    scan_values(next_values(file), "Tcp:", 0, tcp, std::tuple_size_v<tcp_counters>);
    scan_values(next_values(file), "Udp:", 0, udp, std::tuple_size_v<udp_counters>);
}

void read_ipv6_counters(std::FILE* file, bool per_interface, ipv6_counters& ip, icmpv6_counters& icmp) {
    if (per_interface) {
        std::uint32_t discarded = 0;
        scan_line(file, "", "ifIndex", discarded);
    }
    for (std::size_t position = 0; position < ip.size(); ++position)
        scan_line(file, "Ip6", ipv6_lines[position], ip[position]);
    read_icmpv6_lines(file, "Icmp6In", icmp.data());
    read_icmpv6_lines(file, "Icmp6Out", icmp.data() + std::size(icmpv6_record));
}

} // namespace fcip

int ipconf_linux_get_ip_stats(std::uint32_t* ip, std::uint32_t* icmp, std::uint32_t* tcp, std::uint32_t* udp) {
    open_file file(std::fopen("/proc/net/snmp", "r"));
    if (file == nullptr)
        return 0;
    read_ip_counters(file.get(), ip, icmp, tcp, udp);
    return std::fclose(file.release());
}

int ipconf_linux_get_ipv6_stats(std::uint32_t if_index, std::uint32_t* ip, std::uint32_t* icmp) {
    ipv6_counters ip_record{};
    icmpv6_counters icmp_record{};
    int result = 0;
    if (open_file file = open_ipv6_file(if_index); file != nullptr) {
        read_ipv6_counters(file.get(), if_index != 0, ip_record, icmp_record);
        result = std::fclose(file.release());
    }
    copy_out(ip_record, ip);
    copy_out(icmp_record, icmp);
    return result;
}
