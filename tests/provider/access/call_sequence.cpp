// Platform calls, trace lines and releases of records in one sequence: of queries, lookups and builders.
#include "provider/access/fcip_tables.h"
#include "provider/access/ports.h"
#include "provider/access/statistics.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"
#include "tests/provider/access/access_test.h"
#include "tests/provider/access/call_marks.h"

#include <cstdlib>
#include <functional>
#include <string>

namespace fcip {
namespace {

using test::ethernet_1;

const std::string exchange = "[node][send][token][receive][drop request][drop reply]";

/// The small switch, and each query's sequence in `trace`.
class CallSequence : public test::ProviderTest {
  protected:
    static switchsim::Port& port() { return the_switch().ports.at(ethernet_1); }

    int tcp() {
        std::array<std::uint8_t, tcp_record_size> record{};
        return call([&] { return get_tcp_stats(ethernet_1, record.data()); });
    }
};

// ---------------------------------------------------------------------------------------------- statistics

TEST_F(CallSequence, TcpQueryFillsItsRequestBetweenItsFirstTwoLines) {
    port().tcp_statistics = {std::vector<std::uint8_t>(1352), std::vector<std::uint8_t>(38)};
    EXPECT_EQ(tcp(), 0);
    EXPECT_EQ(trace, "Entering get_tcp_stats\n"
                     "[slot][port number][network order][own SAP]"
                     "\ntol : if_index -2097152000\n" +
                         exchange + "[receive][drop reply]Exiting get_tcp_stats\n");
}

TEST_F(CallSequence, TcpQueryThatIsRefusedDropsTheReplyAheadOfTheRequest) {
    switchsim::inject("mts_recv", switchsim::Fault::wrong_status, switchsim::every_call, 9);
    EXPECT_EQ(tcp(), -1);
    EXPECT_TRUE(trace.ends_with("[send][token][receive][drop reply][drop request]")) << trace;
}

TEST_F(CallSequence, EthernetQueryFillsItsRequestBetweenItsFirstTwoLines) {
    std::array<std::uint8_t, ethernet_record_size> record{};
    port().mac_statistics.assign(256, 0);
    EXPECT_EQ(call([&] { return get_ethernetport_statistics(ethernet_1, record.data()); }), 0);
    EXPECT_EQ(trace, "Entering get_ethernetport_statistics\n"
                     "[slot][port number][network order]"
                     "\ntol : if_index -2097152000\n" +
                         exchange + "Exiting get_ethernetport_statistics\n");
}

TEST_F(CallSequence, IpQueryPrintsItsLineAheadOfAllCalls) {
    std::uint8_t* reply = nullptr;
    port().ip_statistics.assign(172, 0);
    EXPECT_EQ(call([&] { return get_ip_stats(mts_q, ethernet_1, 1, &reply); }), 0);
    std::free(reply);
    EXPECT_EQ(trace, "\n inside get_ip_stats\n [slot][port number][network order]" + exchange);
}

// ---------------------------------------------------------------------------------------------- lookups

/// What a lookup prints between reading a row and releasing it.
std::string row(const std::string& lines) {
    return "[link]" + lines + "[release link]";
}

TEST_F(CallSequence, LookupPrintsTheLinesOfARowWhileItHoldsIt) {
    FcipLinkEntry destination{};
    call([&] { return get_fcip_link_entry_from("-2096889856:x", &destination, lookup_mode::ethernet_if_index); });
    const std::string key = " Function : get_fcip_link_entry_from Line 113 \nif_index : -2096889856 \n";
    const std::string other = row(key + " ret_entry->vrkFcipLinkExtEthIfIndex -2097152000 \n");
    const std::string found = row(key + " ret_entry->vrkFcipLinkExtEthIfIndex -2096889856 \nEntry Found");
    std::string expected;
    for (const auto& [table_key, link] : the_switch().links) {
        expected += link.ethernet_if_index == test::ethernet_2 ? found : other;
        if (link.ethernet_if_index == test::ethernet_2)
            break;
    }
    EXPECT_EQ(trace, "Entering get_fcip_link_entry_from\n" + expected + "Exiting get_fcip_link_entry_from\n");
}

TEST_F(CallSequence, LookupThatFindsNothingEndsWithTheReadThatFails) {
    FcipLinkEntry destination{};
    const std::string line = "tunnel id : 99 \n";
    call([&] { return get_fcip_link_entry_from("99_", &destination, lookup_mode::tunnel); });
    EXPECT_EQ(trace, "Entering get_fcip_link_entry_from\n" + row(line) + row(line) + row(line) +
                         "[link]Exiting get_fcip_link_entry_from\n");
}

TEST_F(CallSequence, LookupWithAShortKeyReleasesTheRow) {
    FcipLinkEntry destination{};
    call([&] { return get_fcip_link_entry_from("", &destination, lookup_mode::tunnel); });
    EXPECT_EQ(trace, "Entering get_fcip_link_entry_from\n[link][release link]");
}

TEST_F(CallSequence, LookupReleasesWhatAFailedReadLeftAheadOfExiting) {
    switchsim::inject("fcip_get_link_entry", switchsim::Fault::fail_leaving_record);
    FcipLinkEntry destination{};
    call([&] { return get_fcip_link_entry_from("1", &destination, lookup_mode::tunnel); });
    EXPECT_EQ(trace, "Entering get_fcip_link_entry_from\n[link][release link]Exiting get_fcip_link_entry_from\n");
}

// ---------------------------------------------------------------------------------------------- builders

struct build_case {
    std::function<void()> build;
    std::string end; ///< of its trace
};

void instance_of(link_instance_builder* build, const FcipLinkEntry& link) {
    build(test::made_up_class, "root/cimv2", &link, nullptr);
}

void path_of(link_path_builder* build, const FcipLinkEntry& link) {
    build(test::made_up_class, "root/cimv2", &link);
}

std::string location(const std::string& function, int line) {
    return " Function : " + function + " Line " + std::to_string(line) + " \n";
}

std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

TEST_F(CallSequence, BuildersReleaseTheirRecordsAheadOfExiting) {
    port().ip_statistics.assign(172, 0);
    const FcipLinkEntry link = the_switch().links.at(test::tunnel_1);
    PmPortInfo port_1{};
    call([&] { port_1 = *fetch_port(platform_exact, ethernet_1); });
    const build_case cases[] = {
        {[&] { instance_of(fcip_pe_build_instance, link); }, "[release profile]" + exiting("fcip_pe_build_instance")},
        {[&] { instance_of(fcip_settings_build_instance, link); },
         "[release profile]" + exiting("fcip_settings_build_instance")},
        {[&] { path_of(fcip_settings_fill_reference, link); },
         location("fcip_settings_fill_reference", 636) + "[release profile]" + exiting("fcip_settings_fill_reference")},
        {[&] { instance_of(ip_settings_build_instance, link); },
         "[release reply][release profile]" + exiting("ip_settings_build_instance")},
        {[&] { instance_of(tcp_settings_build_instance, link); },
         "[release profile]" + location("tcp_settings_build_instance", 919) + exiting("tcp_settings_build_instance")},
        {[&] { instance_of(ip_pe_build_instance, link); },
         location("ip_pe_build_instance", 497) + "[release profile]" + exiting("ip_pe_build_instance")},
        {[&] { path_of(ip_pe_fill_reference, link); }, "[release profile]" + exiting("ip_pe_fill_reference")},
        {[&] { instance_of(tcp_pe_build_instance, link); }, "[release profile]" + exiting("tcp_pe_build_instance")},
        {[&] { instance_of(tcp_statistics_build_instance, link); },
         "[release profile]" + exiting("tcp_statistics_build_instance")},
        {[&] { path_of(stat_fill_reference, link); },
         "[release profile][release link]" + exiting("stat_fill_reference")},
        {[&] { eth_statistics_build_instance(test::made_up_class, "root/cimv2", &port_1, nullptr); },
         "[release counters]" + exiting("eth_statistics_build_instance")},
        {[] { lan_endpoint_build_instance(test::made_up_class, "root/cimv2", ethernet_1, nullptr); },
         "[release port]" + exiting("lan_endpoint_build_instance")},
        {[] { lan_endpoint_fill_reference(test::made_up_class, "root/cimv2", ethernet_1); },
         "[release port]" + exiting("lan_endpoint_fill_reference")},
    };
    for (const auto& [build, end] : cases) {
        SCOPED_TRACE(end);
        call(build);
        EXPECT_TRUE(test::held_records().empty());
        EXPECT_TRUE(trace.ends_with(end)) << trace;
    }
}

TEST_F(CallSequence, BuildersThatLackARecordPrintTheirLineAheadOfReleasing) {
    const FcipLinkEntry link = the_switch().links.at(test::tunnel_1);
    const auto trace_without = [&](const char* function, const std::function<void()>& build) {
        switchsim::inject(function, switchsim::Fault::fail_leaving_record);
        call(build);
        switchsim::clear_faults();
        return trace;
    };
    const auto statistics = [&] { instance_of(tcp_statistics_build_instance, link); };
    const auto path = [&] { path_of(stat_fill_reference, link); };
    EXPECT_TRUE(trace_without("fcip_get_entity_entry", statistics)
                    .ends_with("[profile]" + location("tcp_statistics_build_instance", 738) + "[release profile]"))
        << trace;
    EXPECT_TRUE(trace_without("fcip_get_entity_entry", path)
                    .ends_with("[profile]" + location("stat_fill_reference", 435) + "[release profile]"))
        << trace;
    EXPECT_TRUE(trace_without("fcip_get_link_entry", path)
                    .ends_with("[link]" + location("stat_fill_reference", 448) + "[release link][release profile]"))
        << trace;
}

} // namespace
} // namespace fcip
