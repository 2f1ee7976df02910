#include "provider/classes/net/statistics_path.h"

#include "provider/classes/net/tcp_statistics.h"
#include "tests/provider/classes/net/net_test.h"

using namespace test;
using switchsim::Fault;

namespace {

class StatisticsPath : public NetTest {};

const std::string entering = "Entering stat_fill_reference\n";

} // namespace

TEST_F(StatisticsPath, HasTheInterfaceIndexAsItsOnlyKey) {
    EXPECT_EQ(rows_of(fill(fcip::stat_fill_reference, tunnel_3)), (Rows{{"InstanceID", "string", "16777218"}}));
    EXPECT_EQ(trace, entering + "Exiting stat_fill_reference\n");
}

TEST_F(StatisticsPath, DiffersFromTheInstanceIdOfTheStatisticalData) {
    const Rows instance = rows_of(build(fcip::tcp_statistical_data_build_instance, tunnel_1));
    EXPECT_EQ(value_in(instance, "InstanceID"), "1");
    EXPECT_EQ(value_in(rows_of(fill(fcip::stat_fill_reference, tunnel_1)), "InstanceID"), "16777216");
}

TEST_F(StatisticsPath, TakesTheIndexesOfTheTablesRow) {
    FcipLinkEntry row = link(tunnel_3);
    row.link_if_index = 99;
    row.ethernet_if_index = 0;
    EXPECT_EQ(value_in(rows_of(fill_from(fcip::stat_fill_reference, row)), "InstanceID"), "16777218");
}

TEST_F(StatisticsPath, InterfaceIndexIsSigned) {
    link(tunnel_3).link_if_index = 0xFFFFFFFE;
    EXPECT_EQ(value_in(rows_of(fill(fcip::stat_fill_reference, tunnel_3)), "InstanceID"), "-2");
}

TEST_F(StatisticsPath, IsNullForALinkWithoutEthernetPort) {
    link(tunnel_3).ethernet_if_index = 0;
    EXPECT_EQ(fill(fcip::stat_fill_reference, tunnel_3), nullptr);
    EXPECT_EQ(trace, entering);
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(StatisticsPath, IsNullWithoutProfile) {
    for (const Fault fault : no_row) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(fill(fcip::stat_fill_reference, tunnel_3), nullptr);
        EXPECT_EQ(trace, entering + " Function : stat_fill_reference Line 435 \n");
        switchsim::clear_faults();
    }
}

TEST_F(StatisticsPath, IsNullWithoutLink) {
    for (const Fault fault : no_row) {
        switchsim::inject("fcip_get_link_entry", fault);
        EXPECT_EQ(fill(fcip::stat_fill_reference, tunnel_3), nullptr);
        EXPECT_EQ(trace, entering + " Function : stat_fill_reference Line 448 \n");
        switchsim::clear_faults();
    }
}

TEST_F(StatisticsPath, ReadsProfileAndLinkOnceEach) {
    EXPECT_EQ(calls_of([&] { fill(fcip::stat_fill_reference, tunnel_3); }),
              (std::vector<std::string>{"fcip_get_entity_entry", "fcip_get_link_entry", "getCSName"}));
}
