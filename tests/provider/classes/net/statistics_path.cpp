#include "provider/classes/net/statistics_path.h"

#include "provider/classes/net/tcp_statistics.h"
#include "tests/support/class_test.h"

using namespace test;
using switchsim::Fault;

namespace {

class StatisticsPath : public ClassTest {};

TEST_F(StatisticsPath, TracesEntryAndExit) {
    build(fcip::stat_fill_reference);
    EXPECT_EQ(trace, entering("stat_fill_reference") + "Exiting stat_fill_reference\n");
}

TEST_F(StatisticsPath, DiffersFromTheInstanceIdOfTheStatisticalData) {
    const Rows instance = rows_of(build(fcip::tcp_statistical_data_build_instance, link(tunnel_1)));
    EXPECT_EQ(value_in(instance, "InstanceID"), "1");
    EXPECT_EQ(value_of(build(fcip::stat_fill_reference, link(tunnel_1)), "InstanceID"), "16777216");
}

TEST_F(StatisticsPath, TakesTheIndexesOfTheTablesRow) {
    FcipLinkEntry row = link(tunnel_3);
    row.link_if_index = 99;
    row.ethernet_if_index = 0;
    EXPECT_EQ(value_of(build(fcip::stat_fill_reference, row), "InstanceID"), "16777218");
}

TEST_F(StatisticsPath, InterfaceIndexIsSigned) {
    link(tunnel_3).link_if_index = 0xFFFFFFFE;
    EXPECT_EQ(value_of(build(fcip::stat_fill_reference, link(tunnel_3)), "InstanceID"), "-2");
}

TEST_F(StatisticsPath, IsNullForALinkWithoutEthernetPort) {
    link(tunnel_3).ethernet_if_index = 0;
    EXPECT_EQ(build(fcip::stat_fill_reference, link(tunnel_3)), nullptr);
    EXPECT_EQ(trace, entering("stat_fill_reference"));
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(StatisticsPath, IsNullWithoutProfile) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(fcip::stat_fill_reference, link(tunnel_3)), nullptr);
        EXPECT_EQ(trace, entering("stat_fill_reference") + " Function : stat_fill_reference Line 435 \n");
        switchsim::clear_faults();
    }
}

TEST_F(StatisticsPath, IsNullWithoutLink) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_link_entry", fault);
        EXPECT_EQ(build(fcip::stat_fill_reference, link(tunnel_3)), nullptr);
        EXPECT_EQ(trace, entering("stat_fill_reference") + " Function : stat_fill_reference Line 448 \n");
        switchsim::clear_faults();
    }
}

} // namespace
