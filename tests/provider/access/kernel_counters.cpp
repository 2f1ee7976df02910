// The readers of the kernel's counter files, fed with captured files and run on this machine's own.
#include "provider/access/kernel_counters.h"

#include "simulator/switchsim.h"
#include "tests/provider/access/access_test.h"

#include <algorithm>
#include <climits>
#include <fstream>
#include <memory>
#include <numeric>
#include <sstream>
#include <string>

namespace fcip {
namespace {

/// A captured file as an open stream.
class captured_file {
  public:
    explicit captured_file(std::string text)
        : text_(std::move(text)), file_(text_.empty() ? std::tmpfile() : fmemopen(text_.data(), text_.size(), "r")) {}
    ~captured_file() { std::fclose(file_); }
    captured_file(const captured_file&) = delete;
    captured_file& operator=(const captured_file&) = delete;
    std::FILE* get() const { return file_; }

  private:
    std::string text_;
    std::FILE* file_;
};

/// "NAME: first first+1 ..."
std::string numbers(const char* name, int first, int count) {
    std::ostringstream line;
    line << name;
    for (int number = first; number < first + count; ++number)
        line << ' ' << number;
    line << '\n';
    return line.str();
}

const std::string ip_pair = "Ip: Forwarding DefaultTTL InReceives InHdrErrors\n" + numbers("Ip:", 99, 19);
const std::string icmp_pair = "Icmp: InMsgs InErrors\n" + numbers("Icmp:", 201, 26);
const std::string icmp_msg_pair = "IcmpMsg: InType3 OutType3\nIcmpMsg: 5 6\n";
const std::string tcp_pair = "Tcp: RtoAlgorithm RtoMin\n" + numbers("Tcp:", 301, 14);
const std::string udp_pair = "Udp: InDatagrams NoPorts\n" + numbers("Udp:", 401, 4);

/// The four IPv4-side records, filled with a mark.
struct ip_records {
    ipv4_counters ip;
    icmp_counters icmp;
    tcp_counters tcp;
    udp_counters udp;

    ip_records() {
        ip.fill(untouched);
        icmp.fill(untouched);
        tcp.fill(untouched);
        udp.fill(untouched);
    }
};

ip_records read_ip(const std::string& text) {
    ip_records records;
    const captured_file file(text);
    read_ip_counters(file.get(), records.ip.data(), records.icmp.data(), records.tcp.data(), records.udp.data());
    return records;
}

template <std::size_t Count>
std::array<std::uint32_t, Count> counting_from(std::uint32_t first) {
    std::array<std::uint32_t, Count> values;
    std::iota(values.begin(), values.end(), first);
    return values;
}

template <std::size_t Count>
std::array<std::uint32_t, Count> all(std::uint32_t value) {
    std::array<std::uint32_t, Count> values;
    values.fill(value);
    return values;
}

TEST(KernelIpCounters, FourPairsFillTheirRecordsInOrder) {
    const ip_records records = read_ip(ip_pair + icmp_pair + tcp_pair + udp_pair);
    EXPECT_EQ(records.ip, counting_from<17>(101)) << "forwarding (99) and default TTL (100) are skipped";
    EXPECT_EQ(records.icmp, counting_from<26>(201));
    EXPECT_EQ(records.tcp, counting_from<14>(301));
    EXPECT_EQ(records.udp, counting_from<4>(401));
}

TEST(KernelIpCounters, UdpTakesTheFirstFourValuesOnly) {
    const ip_records records = read_ip(ip_pair + icmp_pair + tcp_pair + "Udp: A B\nUdp: 1 2 3 4 5 6 7\n");
    EXPECT_EQ(records.udp, (udp_counters{1, 2, 3, 4}));
}

TEST(KernelIpCounters, IcmpMsgAsThirdPairLeavesTheTcpRecordUnchanged) {
    const ip_records records = read_ip(ip_pair + icmp_pair + icmp_msg_pair + tcp_pair + udp_pair);
    EXPECT_EQ(records.ip, counting_from<17>(101));
    EXPECT_EQ(records.icmp, counting_from<26>(201));
    EXPECT_EQ(records.tcp, all<14>(untouched));
    EXPECT_EQ(records.udp, all<4>(untouched)) << "the fourth pair is Tcp's";
}

TEST(KernelIpCounters, TruncatedLineLeavesTheRestOfTheRecordUnchanged) {
    const ip_records records = read_ip("Ip: Forwarding\nIp: 1 64 7 8 9");
    ipv4_counters expected = all<17>(untouched);
    expected[0] = 7;
    expected[1] = 8;
    expected[2] = 9;
    EXPECT_EQ(records.ip, expected);
    EXPECT_EQ(records.icmp, all<26>(untouched));
    EXPECT_EQ(records.tcp, all<14>(untouched));
    EXPECT_EQ(records.udp, all<4>(untouched));
}

TEST(KernelIpCounters, ValueThatIsNoNumberEndsTheLine) {
    const ip_records records = read_ip("Ip:\nIp: 1 64 7 many 9\n");
    EXPECT_EQ(records.ip[0], 7u);
    EXPECT_EQ(records.ip[1], untouched);
    EXPECT_EQ(records.ip[2], untouched);
}

TEST(KernelIpCounters, LineOfAnotherNameLeavesItsRecordOnlyUnchanged) {
    const ip_records records = read_ip("Ip:\nIP: 1 64 7 8\n" + icmp_pair + tcp_pair + udp_pair);
    EXPECT_EQ(records.ip, all<17>(untouched));
    EXPECT_EQ(records.icmp, counting_from<26>(201));
}

TEST(KernelIpCounters, EmptyFileLeavesAllRecordsUnchanged) {
    const ip_records records = read_ip("");
    EXPECT_EQ(records.ip, all<17>(untouched));
    EXPECT_EQ(records.icmp, all<26>(untouched));
    EXPECT_EQ(records.tcp, all<14>(untouched));
    EXPECT_EQ(records.udp, all<4>(untouched));
}

TEST(KernelIpCounters, HeaderWithoutItsValuesLeavesTheRecordUnchanged) {
    const ip_records records = read_ip("Ip: 1 64 7 8 9\n");
    EXPECT_EQ(records.ip, all<17>(untouched)) << "the header is not taken for values";
}

/// A number in a file, and the counter that comes of it on hosts of every width.
struct number_row {
    const char* text;
    std::uint32_t counter;
};
constexpr number_row number_rows[] = {
    {"0", 0},
    {"-0", 0},
    {"+7", 7},
    {"007", 7},
    {"2147483647", 0x7FFFFFFF},
    {"2147483648", 0x80000000},
    {"4294967294", 0xFFFFFFFE},
    {"4294967295", 0xFFFFFFFF},
    {"4294967296", 0xFFFFFFFF},
    {"4294967297", 0xFFFFFFFF},
    {"9223372036854775807", 0xFFFFFFFF},
    {"9223372036854775808", 0xFFFFFFFF},
    {"18446744073709551614", 0xFFFFFFFF},
    {"18446744073709551615", 0xFFFFFFFF},
    {"18446744073709551617", 0xFFFFFFFF},
    {"99999999999999999999999999", 0xFFFFFFFF},
    {"-1", 0xFFFFFFFF},
    {"-2", 0xFFFFFFFE},
    {"-2147483648", 0x80000000},
    {"-4294967294", 2},
    {"-4294967295", 1},
    {"-4294967296", 0xFFFFFFFF},
    {"-4294967297", 0xFFFFFFFF},
    {"-9223372036854775808", 0xFFFFFFFF},
    {"-9223372036854775809", 0xFFFFFFFF},
    {"-18446744073709551615", 0xFFFFFFFF},
    {"-99999999999999999999999999", 0xFFFFFFFF},
};

TEST(KernelIpCounters, NumbersAreReadWith32BitsOnEveryHost) {
    for (const number_row& row : number_rows) {
        const ip_records records = read_ip(std::string("Ip:\nIp: 1 64 ") + row.text + " 5\n");
        EXPECT_EQ(records.ip[0], row.counter) << row.text;
        EXPECT_EQ(records.ip[1], 5u) << row.text;
    }
}

// Holds the table against the C library, where its unsigned long is the switch's.
#if ULONG_MAX == 0xFFFFFFFF
TEST(KernelIpCounters, NumbersAreReadAsTheLibraryReadsThem) {
    for (const number_row& row : number_rows) {
        unsigned long number = 0;
        ASSERT_EQ(std::sscanf(row.text, "%lu", &number), 1) << row.text;
        EXPECT_EQ(number, row.counter) << row.text;
    }
}
#endif

TEST(KernelIpCounters, UnlimitedTcpConnectionsAreStoredAsAllOnes) {
    const ip_records records = read_ip(ip_pair + icmp_pair + "Tcp:\nTcp: 1 200 120000 -1 5\n");
    EXPECT_EQ(records.tcp[2], 120000u);
    EXPECT_EQ(records.tcp[3], 0xFFFFFFFFu);
    EXPECT_EQ(records.tcp[4], 5u);
}

TEST(KernelIpCounters, LineIsReadInPiecesOf1023Characters) {
    // The 1023 characters of the value line's head are taken as the values, its tail as the next pair's header.
    std::string line = "Ip: 1 64 7";
    line.append(1023 - line.size(), ' ');
    const ip_records records = read_ip("Ip:\n" + line + "8 9\n" + "Icmp: 1 2 3\n" + tcp_pair + udp_pair);
    EXPECT_EQ(records.ip[0], 7u);
    EXPECT_EQ(records.ip[1], untouched);
    EXPECT_EQ(records.icmp[0], 1u);
    EXPECT_EQ(records.icmp[3], untouched);
}

TEST(KernelIpCounters, EachRecordMayBeNull) {
    const std::string text = ip_pair + icmp_pair + tcp_pair + udp_pair;
    for (int missing = 0; missing < 4; ++missing) {
        SCOPED_TRACE(missing);
        ip_records records;
        const captured_file file(text);
        read_ip_counters(file.get(), missing == 0 ? nullptr : records.ip.data(),
                         missing == 1 ? nullptr : records.icmp.data(), missing == 2 ? nullptr : records.tcp.data(),
                         missing == 3 ? nullptr : records.udp.data());
        EXPECT_EQ(records.ip, missing == 0 ? all<17>(untouched) : counting_from<17>(101));
        EXPECT_EQ(records.icmp, missing == 1 ? all<26>(untouched) : counting_from<26>(201));
        EXPECT_EQ(records.tcp, missing == 2 ? all<14>(untouched) : counting_from<14>(301));
        EXPECT_EQ(records.udp, missing == 3 ? all<4>(untouched) : counting_from<4>(401));
    }
}

TEST(KernelIpCounters, AllRecordsNullStillReadsTheFile) {
    const captured_file file(ip_pair + icmp_pair + tcp_pair + udp_pair + "Last:\n");
    read_ip_counters(file.get(), nullptr, nullptr, nullptr, nullptr);
    std::array<char, 64> rest{};
    ASSERT_NE(std::fgets(rest.data(), rest.size(), file.get()), nullptr);
    EXPECT_STREQ(rest.data(), "Last:\n") << "four pairs were read";
    EXPECT_EQ(ipconf_linux_get_ip_stats(nullptr, nullptr, nullptr, nullptr), 0);
}

/// The counters of the machine's "Ip:" line, saturated; as the reader leaves them where there is no such file.
ipv4_counters ip_of_this_machine() {
    std::ifstream file("/proc/net/snmp");
    std::string line;
    std::getline(file, line);
    std::getline(file, line);
    std::istringstream values(line);
    std::string name;
    std::uint64_t value = 0;
    values >> name >> value >> value;
    ipv4_counters counters = all<17>(untouched);
    for (std::uint32_t& counter : counters) {
        if (values >> value)
            counter = static_cast<std::uint32_t>(std::min<std::uint64_t>(value, 0xFFFFFFFF));
    }
    return counters;
}

TEST(KernelIpCounters, ReadsThisMachinesFile) {
    const ipv4_counters before = ip_of_this_machine();
    ip_records records;
    ASSERT_EQ(ipconf_linux_get_ip_stats(records.ip.data(), records.icmp.data(), records.tcp.data(), records.udp.data()),
              0);
    const ipv4_counters after = ip_of_this_machine();
    for (std::size_t position = 0; position < before.size(); ++position) {
        EXPECT_LE(before[position], records.ip[position]) << "position " << position;
        EXPECT_GE(after[position], records.ip[position]) << "position " << position;
    }
}

// ---------------------------------------------------------------------------------------------- IPv6

/// The lines of the file: 23 of IPv6, then 34 of ICMPv6, in the file's order.
const char* const ipv6_lines[] = {"Ip6LastChange",  "Ip6InReceives",   "Ip6InHdrErrors",      "Ip6InTooBigErrors",
                                  "Ip6InNoRoutes",  "Ip6InAddrErrors", "Ip6InUnknownProtos",  "Ip6InTruncatedPkts",
                                  "Ip6InDiscards",  "Ip6InDelivers",   "Ip6OutForwDatagrams", "Ip6OutRequests",
                                  "Ip6OutDiscards", "Ip6OutNoRoutes",  "Ip6ReasmTimeout",     "Ip6ReasmReqds",
                                  "Ip6ReasmOKs",    "Ip6ReasmFails",   "Ip6FragOKs",          "Ip6FragFails",
                                  "Ip6FragCreates", "Ip6InMcastPkts",  "Ip6OutMcastPkts"};

/// The ICMPv6 counters after "Icmp6In" and "Icmp6Out": their order in the file, and where the record has them.
struct icmpv6_row {
    const char* name;
    std::size_t in;
    std::size_t out;
};
constexpr icmpv6_row icmpv6_rows[] = {
    {"Msgs", 0, 17},
    {"Errors", 1, 18},
    {"DestUnreachs", 2, 19},
    {"AdminProhibs", 6, 23},
    {"TimeExcds", 4, 21},
    {"ParmProblems", 5, 22},
    {"PktTooBigs", 3, 20},
    {"Echos", 7, 24},
    {"EchoReplies", 8, 25},
    {"RouterSolicits", 12, 29},
    {"RouterAdvertisements", 13, 30},
    {"NeighborSolicits", 14, 31},
    {"NeighborAdvertisements", 15, 32},
    {"Redirects", 16, 33},
    {"GroupMembQueries", 9, 26},
    {"GroupMembResponses", 10, 27},
    {"GroupMembReductions", 11, 28},
};

using named_lines = std::vector<std::pair<std::string, std::string>>;

/// All 57 lines, numbered 1001 to 1057.
named_lines full_file() {
    named_lines lines;
    const auto add = [&](const std::string& name) { lines.emplace_back(name, std::to_string(1001 + lines.size())); };
    for (const char* name : ipv6_lines)
        add(name);
    for (const char* direction : {"Icmp6In", "Icmp6Out"}) {
        for (const icmpv6_row& row : icmpv6_rows)
            add(std::string(direction) + row.name);
    }
    return lines;
}

std::string text_of(const named_lines& lines, const std::string& head = "") {
    std::string text = head;
    for (const auto& [name, value] : lines)
        text.append(name).append(32 - name.size(), ' ').append("\t").append(value).append("\n");
    return text;
}

struct ipv6_records {
    ipv6_counters ip{};
    icmpv6_counters icmp{};
};

ipv6_records read_ipv6(const std::string& text, bool per_interface = false) {
    ipv6_records records;
    const captured_file file(text);
    read_ipv6_counters(file.get(), per_interface, records.ip, records.icmp);
    return records;
}

void expect_full(const ipv6_records& records) {
    EXPECT_EQ(records.ip, counting_from<23>(1001));
    std::uint32_t in = 1024;
    std::uint32_t out = 1041;
    for (const icmpv6_row& row : icmpv6_rows) {
        EXPECT_EQ(records.icmp.at(row.in), in++) << "In" << row.name;
        EXPECT_EQ(records.icmp.at(row.out), out++) << "Out" << row.name;
    }
}

TEST(KernelIpv6Counters, EachLineGoesToItsPlaceInTheRecord) {
    expect_full(read_ipv6(text_of(full_file())));
}

TEST(KernelIpv6Counters, PerInterfaceFileIsReadAfterItsIfIndexLine) {
    const std::string text = text_of(full_file(), "ifIndex                         \t2\n");
    expect_full(read_ipv6(text, true));
    const ipv6_records as_system = read_ipv6(text, false);
    EXPECT_EQ(as_system.ip, ipv6_counters{}) << "without the skip nothing matches";
    EXPECT_EQ(as_system.icmp, icmpv6_counters{});
}

TEST(KernelIpv6Counters, FileWithoutLastChangeYieldsAllZeroRecords) {
    named_lines lines = full_file();
    lines.erase(lines.begin());
    const ipv6_records records = read_ipv6(text_of(lines));
    EXPECT_EQ(records.ip, ipv6_counters{});
    EXPECT_EQ(records.icmp, icmpv6_counters{});
}

TEST(KernelIpv6Counters, OnceALineDiffersItAndAllAfterItStayZero) {
    const named_lines whole = full_file();
    for (std::size_t missing = 0; missing + 1 < whole.size(); ++missing) {
        SCOPED_TRACE(whole[missing].first);
        named_lines lines = whole;
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(missing));
        const ipv6_records records = read_ipv6(text_of(lines));
        for (std::size_t position = 0; position < records.ip.size(); ++position)
            EXPECT_EQ(records.ip[position], position < missing ? 1001 + position : 0) << "IPv6 position " << position;
        std::size_t line = records.ip.size();
        for (auto place : {&icmpv6_row::in, &icmpv6_row::out}) {
            for (const icmpv6_row& row : icmpv6_rows) {
                EXPECT_EQ(records.icmp.at(row.*place), line < missing ? 1001 + line : 0) << "line " << line;
                ++line;
            }
        }
    }
}

TEST(KernelIpv6Counters, ModernFileWithMoreIpLinesHasNoIcmpCounters) {
    named_lines lines = full_file();
    lines.insert(lines.begin() + 23, {"Ip6InOctets", "77"});
    const ipv6_records records = read_ipv6(text_of(lines));
    EXPECT_EQ(records.ip, counting_from<23>(1001));
    EXPECT_EQ(records.icmp, icmpv6_counters{});
}

TEST(KernelIpv6Counters, EmptyFileYieldsAllZeroRecords) {
    const ipv6_records records = read_ipv6("");
    EXPECT_EQ(records.ip, ipv6_counters{});
    EXPECT_EQ(records.icmp, icmpv6_counters{});
}

TEST(KernelIpv6Counters, TruncatedFileKeepsWhatWasRead) {
    named_lines lines = full_file();
    lines.resize(3);
    const ipv6_records records = read_ipv6(text_of(lines) + "Ip6InTooBigErr");
    EXPECT_EQ(records.ip[2], 1003u);
    EXPECT_EQ(records.ip[3], 0u);
    EXPECT_EQ(records.icmp, icmpv6_counters{});
}

TEST(KernelIpv6Counters, NumbersAreReadWith32BitsOnEveryHost) {
    for (const number_row& row : number_rows) {
        named_lines lines = full_file();
        lines[1].second = row.text;
        const ipv6_records records = read_ipv6(text_of(lines));
        EXPECT_EQ(records.ip[1], row.counter) << row.text;
        EXPECT_EQ(records.ip[2], 1003u) << row.text;
    }
}

class KernelIpv6Files : public AccessTest {
  protected:
    ipv6_counters ip_ = all<23>(untouched);
    icmpv6_counters icmp_ = all<34>(untouched);

    int get(std::uint32_t if_index, std::uint32_t* ip, std::uint32_t* icmp) {
        return call([=] { return ipconf_linux_get_ipv6_stats(if_index, ip, icmp); });
    }
};

TEST_F(KernelIpv6Files, RecordsAreClearedEvenWithoutTheFile) {
    the_switch().ports[12].kernel_name = "no-such-interface";
    EXPECT_EQ(get(12, ip_.data(), icmp_.data()), 0);
    EXPECT_EQ(ip_, ipv6_counters{});
    EXPECT_EQ(icmp_, icmpv6_counters{});
    EXPECT_EQ(calls("netcfg_print_ifname"), 1u);
}

TEST_F(KernelIpv6Files, EachRecordMayBeNull) {
    EXPECT_EQ(get(0, nullptr, icmp_.data()), 0);
    EXPECT_NE(icmp_, all<34>(untouched));
    EXPECT_EQ(ip_, all<23>(untouched));
    EXPECT_EQ(get(0, ip_.data(), nullptr), 0);
    EXPECT_NE(ip_, all<23>(untouched));
    EXPECT_EQ(get(0, nullptr, nullptr), 0);
}

TEST_F(KernelIpv6Files, InterfaceWithoutANameReadsNothing) {
    switchsim::inject("netcfg_print_ifname", switchsim::Fault::fail);
    EXPECT_EQ(get(12, ip_.data(), icmp_.data()), 0);
    EXPECT_EQ(ip_, ipv6_counters{});
    EXPECT_EQ(icmp_, icmpv6_counters{});
}

} // namespace
} // namespace fcip
