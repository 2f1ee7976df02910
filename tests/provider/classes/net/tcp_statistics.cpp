#include "provider/classes/net/tcp_statistics.h"

#include "provider/common/endian.h"
#include "provider/common/results.h"
#include "tests/support/class_test.h"

using namespace test;
using switchsim::Fault;

namespace {

const std::string query_trace = "Entering get_tcp_stats\n"
                                "\ntol : if_index -2097152000\n"
                                "Exiting get_tcp_stats\n";
const std::string failed_query_trace = "Entering get_tcp_stats\n"
                                       "\ntol : if_index -2097152000\n"
                                       "******* Error ******** ";

/// The words of a link row that the statistics of the endpoint join in pairs.
void set_link_words(FcipLinkEntry& link) {
    link.local_port_enable = 1;
    link.special_frame_enable = 2;
    link.unread_88 = 0xFFFFFFFF;
    link.bport_keep_alive_enable = 4;
    link.control_qos = 46;
    link.data_qos = 26;
    link.write_acceleration = 7;
}

class TcpEndpointStatistics : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        set_link_words(link(tunnel_3));
        endpoint_properties = made_by([&] { return build_it(); });
    }
    CMPIInstance* build_it(switchsim::LinkKey key = tunnel_3) {
        return build(fcip::tcp_statistics_build_instance, link(key));
    }

    Rows endpoint_properties; ///< of tunnel 3, as long as nothing is changed
};

class TcpStatisticalData : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        data_properties = made_by([&] { return build_it(); });
    }
    CMPIInstance* build_it(switchsim::LinkKey key = tunnel_3) {
        return build(fcip::tcp_statistical_data_build_instance, link(key));
    }

    Rows data_properties; ///< of tunnel 3, as long as nothing is changed
};

TEST_F(TcpEndpointStatistics, FourCountersArePairsOfLinkWords) {
    EXPECT_EQ(value_in(endpoint_properties, "TooManyErrors"), "4294967298");              // 1 and 2
    EXPECT_EQ(value_in(endpoint_properties, "KeepAliveTimeOut"), "18446744069414584324"); // all ones and 4
    EXPECT_EQ(value_in(endpoint_properties, "DatagramsDropped"), "197568495642");         // 46 and 26
    EXPECT_EQ(value_in(endpoint_properties, "SaParamMismatch"), "9439544818968559623");   // the Ethernet index and 7
}

TEST_F(TcpEndpointStatistics, InstanceTracesItsQuery) {
    build_it();
    EXPECT_EQ(trace,
              "Entering tcp_statistics_build_instance\n" + query_trace + "Exiting tcp_statistics_build_instance\n");
}

TEST_F(TcpEndpointStatistics, CountersReadZeroWhateverTheLineCardCounts) {
    port().tcp_statistics[0].assign(1352, 0xFF);
    const Rows rows = rows_of(build_it());
    EXPECT_EQ(rows, endpoint_properties);
    EXPECT_EQ(switchsim::last_request().opcode, 1920U); // though it was asked
}

TEST_F(TcpEndpointStatistics, LinkWordsAreTheCallersAndTheRestTheTables) {
    FcipLinkEntry row = link(tunnel_3);
    row.ethernet_if_index = 5;
    row.write_acceleration = 6;
    row.link_if_index = 99;
    EXPECT_EQ(rows_of(build(fcip::tcp_statistics_build_instance, row)),
              with(endpoint_properties, "SaParamMismatch", "21474836486")); // 5 and 6
    EXPECT_EQ(trace,
              "Entering tcp_statistics_build_instance\n" + query_trace + "Exiting tcp_statistics_build_instance\n");
}

TEST_F(TcpEndpointStatistics, FirstLinkOfTheIndexCountsWhateverItsProfile) {
    FcipLinkEntry row = link(tunnel_3);
    row.entity_id = 7; // the table has no {7, 2}
    row.remote_tcp_port = 1;
    EXPECT_EQ(value_of(build(fcip::tcp_statistics_build_instance, row), "InstanceID"), "16777218");
}

TEST_F(TcpEndpointStatistics, UnknownSystemIsFourZeros) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(rows_of(build_it()), with(endpoint_properties, "SystemName", "0000"));
    EXPECT_EQ(trace, "Entering tcp_statistics_build_instance\n" + query_trace +
                         "error : dm_cim_get_dmEntry Exiting tcp_statistics_build_instance\n");
    the_switch().ports.erase(fcip_3);
    EXPECT_EQ(rows_of(build_it()), with(endpoint_properties, "SystemName", "0000"));
}

TEST_F(TcpEndpointStatistics, LineCardThatDoesNotAnswerChangesTheTraceOnly) {
    for (const Fault fault : {Fault::fail, Fault::no_reply, Fault::wrong_status}) {
        switchsim::inject("mts_send", fault);
        EXPECT_EQ(rows_of(build_it()), endpoint_properties);
        EXPECT_EQ(trace, "Entering tcp_statistics_build_instance\n" + failed_query_trace + "\n" +
                             "Exiting tcp_statistics_build_instance\n");
        switchsim::clear_faults();
    }
}

TEST_F(TcpEndpointStatistics, IsNullWithoutLink) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_link_entry", fault);
        EXPECT_EQ(build_it(), nullptr);
        EXPECT_EQ(trace, "Entering tcp_statistics_build_instance\n"
                         " Function : tcp_statistics_build_instance Line 728 \n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(TcpEndpointStatistics, IsNullWithoutProfile) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build_it(), nullptr);
        EXPECT_EQ(trace, "Entering tcp_statistics_build_instance\n"
                         " Function : tcp_statistics_build_instance Line 738 \n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(TcpEndpointStatistics, CallersProfileNeedNotExist) {
    FcipLinkEntry row = link(tunnel_3);
    row.entity_id = 99;
    EXPECT_EQ(rows_of(build(fcip::tcp_statistics_build_instance, row)), endpoint_properties);
}

TEST_F(TcpEndpointStatistics, IsNullWithoutTheProfileOfTheLinkReadAnew) {
    const FcipLinkEntry row = link(tunnel_3);
    FcipLinkEntry other = row;
    other.entity_id = 1;
    the_switch().links[{1, 2}] = other; // the first with the index; profile 1 does not exist
    EXPECT_EQ(build(fcip::tcp_statistics_build_instance, row), nullptr);
    EXPECT_EQ(trace, "Entering tcp_statistics_build_instance\n"
                     " Function : tcp_statistics_build_instance Line 738 \n");
}

TEST_F(TcpStatisticalData, InstanceTracesItsSteps) {
    build_it();
    EXPECT_EQ(trace, "Entering tcp_statistical_data_build_instance\n"
                     " Function : tcp_statistical_data_build_instance Line 959 \n" +
                         query_trace +
                         " Function : tcp_statistical_data_build_instance Line 1024 \n"
                         "Exiting tcp_statistical_data_build_instance\n");
}

TEST_F(TcpStatisticalData, InstanceIdOfLinkIndex0Is1) {
    EXPECT_EQ(value_of(build_it(tunnel_1), "InstanceID"), "1");
}

TEST_F(TcpStatisticalData, InstanceIdWrapsAroundBehindTheLastIndex) {
    switchsim::LinkKey last{3, 0xFFFFFFFF};
    the_switch().links[last] = link(tunnel_3);
    link(last).link_index = 0xFFFFFFFF;
    EXPECT_EQ(value_of(build_it(last), "InstanceID"), "0");
}

TEST_F(TcpStatisticalData, CountersReadZeroWhateverTheLineCardCounts) {
    port().tcp_statistics[0].assign(1352, 0xFF);
    EXPECT_EQ(rows_of(build_it()), data_properties);
    EXPECT_EQ(switchsim::last_request().opcode, 1920U); // though it was asked
}

TEST_F(TcpStatisticalData, SystemNameIsSetWhateverTheQuestionComesTo) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(rows_of(build_it()), with(data_properties, "SystemName", "NULL"));
    the_switch().ports.erase(fcip_3);
    EXPECT_EQ(rows_of(build_it()), with(data_properties, "SystemName", ""));
}

TEST_F(TcpStatisticalData, SystemAndCountersAreThoseOfTheTablesLink) {
    FcipLinkEntry row = link(tunnel_3);
    row.link_if_index = 99;
    row.ethernet_if_index = 98;
    EXPECT_EQ(rows_of(build(fcip::tcp_statistical_data_build_instance, row)), data_properties);
    EXPECT_NE(trace.find("\ntol : if_index -2097152000\n"), std::string::npos);
}

TEST_F(TcpStatisticalData, NeedsNoProfile) {
    the_switch().profiles.clear();
    EXPECT_EQ(rows_of(build_it()), data_properties);
}

TEST_F(TcpStatisticalData, LineCardThatDoesNotAnswerChangesTheTraceOnly) {
    the_switch().slots.clear();
    EXPECT_EQ(rows_of(build_it()), data_properties);
    EXPECT_EQ(trace, "Entering tcp_statistical_data_build_instance\n"
                     " Function : tcp_statistical_data_build_instance Line 959 \n" +
                         failed_query_trace +
                         " Function : tcp_statistical_data_build_instance Line 1024 \n"
                         "Exiting tcp_statistical_data_build_instance\n");
}

TEST_F(TcpStatisticalData, IsMinusOneWithoutLink) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_link_entry", fault);
        EXPECT_EQ(build_it(), fcip::minus_one<CMPIInstance>());
        EXPECT_EQ(trace, "Entering tcp_statistical_data_build_instance\n"
                         " Function : tcp_statistical_data_build_instance Line 959 \n"
                         " Function : tcp_statistical_data_build_instance Line 963 \n");
        switchsim::clear_faults();
    }
}

} // namespace
