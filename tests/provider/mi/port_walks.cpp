// The walks over the ports called directly: reads that fail on the way, and what the platform's builders are given.
#include "provider/mi/instance_enumerators.h"
#include "provider/mi/path_enumerators.h"

#include "tests/support/request_test.h"

namespace {

using namespace test;
using switchsim::Fault;

/// A walk over the ports, of instances or of paths; all have the two Ethernet ports first.
struct port_walk {
    const char* class_name;
    fcip::instance_enumerator* instances;
    fcip::path_enumerator* paths;
    unsigned second_read; ///< its number among all port reads: LAN endpoints' builders read their port again
};

constexpr port_walk walks[] = {
    {"ZANTO_EthernetPortStatistics", fcip::get_all_eth_stat_instances, nullptr, 2},
    {"ZANTO_LANEndPoint", fcip::get_all_lan_endpoint_instances, nullptr, 3},
    {"ZANTO_EthernetPortStatisticalData", fcip::get_all_eth_stat_data_instances, nullptr, 2},
    {"ZANTO_EthernetPortStatistics", nullptr, fcip::get_all_eth_stat_references, 2},
    {"ZANTO_LANEndPoint", nullptr, fcip::get_all_lan_endpoint_references, 3},
    {"ZANTO_EthernetPortStatisticalData", nullptr, fcip::get_all_eth_stat_data_references, 2},
};

class PortWalks : public RequestTest {
  protected:
    /// Runs a walk, under the lock, to an answer of its own.
    cmpihost::Answer run(const port_walk& walk, const char* class_name, const char* name_space,
                         const char** properties = nullptr) {
        scope.answer() = {};
        EXPECT_EQ(call([&] {
                      return walk.instances != nullptr
                                 ? walk.instances(class_name, scope.result(), properties, name_space)
                                 : walk.paths(class_name, scope.result(), name_space);
                  }),
                  0);
        return scope.answer();
    }
};

TEST_F(PortWalks, SecondReadThatFailsEndsTheWalkAndKeepsTheFirstPort) {
    for (const port_walk& walk : walks) {
        const auto whole = run(walk, walk.class_name, "root/cimv2").objects;
        const std::string whole_trace = trace;
        ASSERT_GE(whole.size(), 2u);
        for (const Fault fault : read_faults) {
            SCOPED_TRACE(std::string(walk.class_name) +
                         (walk.instances != nullptr ? " instances, fault " : " paths, fault ") +
                         std::to_string(static_cast<int>(fault)));
            switchsim::clear_counts();
            switchsim::inject("pm_cim_get_port_info", fault, walk.second_read);
            const auto answer = run(walk, walk.class_name, "root/cimv2");
            switchsim::clear_faults();
            ASSERT_EQ(answer.objects.size(), 1u);
            EXPECT_EQ(answer.objects[0], whole[0]);
            EXPECT_EQ(answer.null_results, 0u);
            EXPECT_EQ(trace, whole_trace.substr(0, trace.size()));
            EXPECT_EQ(trace.find("if_index -2096889856"), std::string::npos); // the second port
            EXPECT_EQ(switchsim::calls("pm_cim_get_port_info"), walk.second_read);
        }
    }
}

TEST_F(PortWalks, ReadThatFailedPrintsNothing) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail_leaving_record, 3);
    run(walks[1], "ZANTO_LANEndPoint", "root/cimv2");
    EXPECT_EQ(trace, "if_index -2097152000 \nExiting lan_endpoint_build_instance\n");
    switchsim::inject("pm_cim_get_port_info", Fault::fail_leaving_record, 2);
    run(walks[2], "ZANTO_EthernetPortStatisticalData", "root/cimv2");
    EXPECT_EQ(trace, "\n Entering get_all_eth_stat_data_instances \n "
                     "tol:if_index -2097152000 \n Call to fcport_build_instance_pm ");
}

TEST_F(PortWalks, PlatformsBuildersAreGivenTheNamespaceFirst) {
    // The platform takes the second text as the class where either could be one.
    for (const port_walk& walk : {walks[2], walks[5]}) {
        const auto answer = run(walk, "ZANTO_EthernetPort", "ZANTO_Namespace");
        ASSERT_GE(answer.objects.size(), 2u);
        for (const auto& object : answer.objects) {
            EXPECT_EQ(object.class_name, "ZANTO_EthernetPort");
            EXPECT_EQ(object.name_space, "ZANTO_Namespace");
        }
    }
}

TEST_F(PortWalks, PlatformsBuilderIsGivenThePropertyList) {
    // Asked for as a port, for an association is all keys, and the platform never drops those.
    const char* properties[] = {"Caption", nullptr};
    const auto answer = run(walks[2], "ZANTO_EthernetPort", "root/cimv2", properties);
    ASSERT_EQ(answer.objects.size(), 2u);
    EXPECT_EQ(values(answer, "Caption"), (std::vector<std::string>{"gigabitethernet1/1", "gigabitethernet2/1"}));
    EXPECT_EQ(values(answer, "ElementName"), (std::vector<std::string>{"(none)", "(none)"}));
}

} // namespace
