// The walks over the link table called directly: their whole trace, where they end, classes that they do not know.
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"
#include "provider/mi/instance_enumerators.h"
#include "provider/mi/path_enumerators.h"

#include "tests/support/request_test.h"

namespace {

using namespace test;
using switchsim::Fault;

constexpr const char* name_space = "root/cimv2";

/// A walk over the link table, of instances or of paths.
struct link_walk {
    std::string name;
    fcip::instance_enumerator* instances;
    fcip::path_enumerator* paths;
    int before; ///< location printed before each row; 0 = none
    int after;  ///< and after each row
    std::vector<int> end;
    std::vector<int> end_with_row_left; ///< when the read that failed had left a row
    bool exits;                         ///< prints "Exiting"
};

const link_walk fcip_instances{
    "get_all_fcip_pe_instances", fcip::get_all_fcip_pe_instances, nullptr, 0, 0, {}, {}, false};
const link_walk ip_instances{
    "get_all_ip_pe_instances", fcip::get_all_ip_pe_instances, nullptr, 1856, 0, {}, {1851}, false};
const link_walk statistics{"get_all_statistics", fcip::get_all_statistics, nullptr, 0, 1817,
                           {1785, 1791},         {1785, 1789, 1791},       true};
const link_walk fcip_paths{
    "get_all_fcip_pe_references", nullptr, fcip::get_all_fcip_pe_references, 0, 0, {}, {}, false};
const link_walk ip_paths{"get_all_ip_pe_references", nullptr, fcip::get_all_ip_pe_references, 755, 0, {}, {750}, false};
const link_walk statistics_paths{
    "get_all_statistic_references", nullptr, fcip::get_all_statistic_references, 699, 0, {}, {}, true};

/// A class that a walk serves, and its builder.
struct served_class {
    const link_walk& walk;
    const char* class_name;
    fcip::link_instance_builder* build;
    fcip::link_path_builder* fill;
};

const served_class served[] = {
    {fcip_instances, "ZANTO_FCIPProtocolEndPoint", fcip::fcip_pe_build_instance, nullptr},
    {fcip_instances, "ZANTO_RemoteFCIPPort", fcip::fcip_remote_pe_build_instance, nullptr},
    {ip_instances, "ZANTO_IPProtocolEndPoint", fcip::ip_pe_build_instance, nullptr},
    {ip_instances, "ZANTO_RemoteIPServiceAccessPoint", fcip::ip_remote_pe_build_instance, nullptr},
    {ip_instances, "ZANTO_RemoteTCPPort", fcip::remote_service_ap_build_instance, nullptr},
    {ip_instances, "ZANTO_TCPProtocolEndPoint", fcip::tcp_pe_build_instance, nullptr},
    {ip_instances, "ZANTO_FCIPSettings", fcip::fcip_settings_build_instance, nullptr},
    {ip_instances, "ZANTO_IPSettings", fcip::ip_settings_build_instance, nullptr},
    {ip_instances, "ZANTO_TCPSettings", fcip::tcp_settings_build_instance, nullptr},
    {statistics, "ZANTO_IPEndPointStatistics", fcip::ip_statistics_build_instance, nullptr},
    {statistics, "ZANTO_TCPEndPointStatistics", fcip::tcp_statistics_build_instance, nullptr},
    {statistics, "ZANTO_TCPStatisticalData", fcip::tcp_statistical_data_build_instance, nullptr},
    {fcip_paths, "ZANTO_FCIPProtocolEndPoint", nullptr, fcip::fcip_pe_fill_reference},
    {fcip_paths, "ZANTO_RemoteFCIPPort", nullptr, fcip::fcip_remote_pe_fill_reference},
    {ip_paths, "ZANTO_IPProtocolEndPoint", nullptr, fcip::ip_pe_fill_reference},
    {ip_paths, "ZANTO_RemoteIPServiceAccessPoint", nullptr, fcip::ip_remote_pe_fill_reference},
    {ip_paths, "ZANTO_RemoteTCPPort", nullptr, fcip::remote_service_ap_fill_reference},
    {ip_paths, "ZANTO_TCPProtocolEndPoint", nullptr, fcip::tcp_pe_fill_reference},
    {ip_paths, "ZANTO_FCIPSettings", nullptr, fcip::fcip_settings_fill_reference},
    {ip_paths, "ZANTO_IPSettings", nullptr, fcip::ip_settings_fill_reference},
    {ip_paths, "ZANTO_TCPSettings", nullptr, fcip::ip_settings_fill_reference}, // the IP settings' builder
    {statistics_paths, "ZANTO_IPEndPointStatistics", nullptr, fcip::stat_fill_reference},
    {statistics_paths, "ZANTO_TCPEndPointStatistics", nullptr, fcip::stat_fill_reference},
    {statistics_paths, "ZANTO_TCPStatisticalData", nullptr, fcip::stat_fill_reference},
};

class LinkWalks : public RequestTest {
  protected:
    /// Runs a walk, under the lock, to an answer of its own.
    cmpihost::Answer run(const link_walk& walk, const char* class_name) {
        scope.answer() = {};
        EXPECT_EQ(call([&] {
                      return walk.instances != nullptr ? walk.instances(class_name, scope.result(), nullptr, name_space)
                                                       : walk.paths(class_name, scope.result(), name_space);
                  }),
                  0);
        return scope.answer();
    }

    /// What a class's builder prints of each tunnel, or of the first ones.
    std::vector<std::string> builder_traces(const served_class& of, std::size_t count = 3) {
        std::vector<std::string> traces;
        for (const auto& row : the_switch().links) {
            if (traces.size() == count)
                break;
            call([&] {
                if (of.build != nullptr)
                    of.build(of.class_name, name_space, &row.second, nullptr);
                else
                    of.fill(of.class_name, name_space, &row.second);
            });
            traces.push_back(trace);
        }
        return traces;
    }

    /// The trace of a walk over rows of which the builder prints this.
    static std::string trace_of(const link_walk& walk, const std::vector<std::string>& rows, bool row_left = false) {
        std::string text = "Entering " + walk.name + "\n";
        const auto location = [&](int line) {
            return line == 0 ? "" : " Function : " + walk.name + " Line " + std::to_string(line) + " \n";
        };
        for (const auto& row : rows)
            text += location(walk.before) + row + location(walk.after);
        for (const int line : row_left ? walk.end_with_row_left : walk.end)
            text += location(line);
        return text + (walk.exits ? "Exiting " + walk.name + "\n" : "");
    }
};

TEST_F(LinkWalks, WholeTraceOfEveryClassByteForByte) {
    for (const served_class& of : served) {
        SCOPED_TRACE(of.walk.name + " " + of.class_name);
        const auto rows = builder_traces(of);
        const auto answer = run(of.walk, of.class_name);
        EXPECT_EQ(answer.objects.size(), 3u);
        EXPECT_EQ(trace, trace_of(of.walk, rows));
    }
}

TEST_F(LinkWalks, WholeTraceOfAStatisticsWalkSpeltOut) {
    the_switch().links.erase(tunnel_7);
    const auto answer = run(statistics, "ZANTO_NoSuchClass"); // of which no builder prints anything
    EXPECT_EQ(answer.null_results, 2u);
    EXPECT_EQ(trace, "Entering get_all_statistics\n"
                     " Function : get_all_statistics Line 1817 \n"
                     " Function : get_all_statistics Line 1817 \n"
                     " Function : get_all_statistics Line 1785 \n"
                     " Function : get_all_statistics Line 1791 \n"
                     "Exiting get_all_statistics\n");
}

TEST_F(LinkWalks, ReadThatFailsOrBringsNoRowAfterTheFirstEndsTheWalk) {
    for (const served_class& of : served) {
        switchsim::clear_counts();
        const std::vector<std::string> first_row{builder_traces(of, 1).front()};
        const unsigned second_read = 2 + switchsim::calls("fcip_get_link_entry"); // some builders read links as well
        for (const Fault fault : read_faults) {
            SCOPED_TRACE(of.walk.name + " " + of.class_name + " " + std::to_string(static_cast<int>(fault)));
            switchsim::clear_counts();
            switchsim::inject("fcip_get_link_entry", fault, second_read);
            const auto answer = run(of.walk, of.class_name);
            switchsim::clear_faults();
            EXPECT_EQ(answer.objects.size(), 1u);
            EXPECT_EQ(answer.null_results, 0u);
            EXPECT_EQ(trace, trace_of(of.walk, first_row, fault == Fault::fail_leaving_record));
            EXPECT_EQ(switchsim::calls("fcip_get_link_entry"), second_read);
        }
    }
}

TEST_F(LinkWalks, ClassThatTheFcipWalksDoNotKnowIsSkippedRowByRow) {
    for (const link_walk& walk : {fcip_instances, fcip_paths}) {
        SCOPED_TRACE(walk.name);
        switchsim::clear_counts();
        const auto answer = run(walk, "ZANTO_TCPProtocolEndPoint");
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.null_results, 0u);
        EXPECT_EQ(trace, trace_of(walk, {"", "", ""}));
        EXPECT_EQ(switchsim::calls("fcip_get_link_entry"), 4u);
    }
}

TEST_F(LinkWalks, ClassThatTheOtherWalksDoNotKnowGetsANullPerRow) {
    for (const link_walk& walk : {ip_instances, statistics, ip_paths, statistics_paths}) {
        SCOPED_TRACE(walk.name);
        const auto answer = run(walk, "ZANTO_FCIPProtocolEndPoint");
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.null_results, 3u);
        EXPECT_EQ(trace, trace_of(walk, {"", "", ""}));
    }
}

} // namespace
