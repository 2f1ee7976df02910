#include "provider/classes/fcip/tcp_settings.h"

#include "provider/common/results.h"
#include "tests/provider/classes/kernel_counter_reads.h"
#include "tests/support/class_test.h"

namespace test {

namespace {

using fcip::tcp_settings_build_instance;
using switchsim::Fault;

constexpr const char* builder = "tcp_settings_build_instance";
const std::string statistics_entry = entering("get_tcp_stats") + "\ntol : if_index -2097152000\n";
const std::string statistics_trace = statistics_entry + exiting("get_tcp_stats");

using TcpSettings = ClassTest;

TEST_F(TcpSettings, InstanceTracesItsSteps) {
    build(tcp_settings_build_instance);
    EXPECT_EQ(trace, entering(builder) + location(builder, 862) + location(builder, 876) + statistics_trace +
                         location(builder, 919) + exiting(builder));
}

TEST_F(TcpSettings, KernelsIpCountersAreReadOnceBehindTheSystemName) {
    kernel_counter_reads.clear();
    calls_of([&] { build(tcp_settings_build_instance); });
    EXPECT_EQ(kernel_counter_reads, (std::vector<std::string>{"vsan_cim_get_vsan_admindomain_key"}));
}

TEST_F(TcpSettings, StatisticsAreAskedOfTheEthernetInterface) {
    build(tcp_settings_build_instance);
    const switchsim::SentRequest& request = switchsim::last_request();
    EXPECT_EQ(request.opcode, 1920u);
    ASSERT_EQ(request.payload.size(), 40u);
    const std::vector<std::uint8_t> if_index(request.payload.begin() + 24, request.payload.begin() + 28);
    EXPECT_EQ(if_index, (std::vector<std::uint8_t>{0x83, 0, 0, 0}));
}

TEST_F(TcpSettings, RetransmissionIsAlways5000And200And4) {
    the_switch().profiles.at(3).minimum_retransmit_time = 1;
    the_switch().profiles.at(3).maximum_retransmissions = 9;
    ASSERT_EQ(the_switch().links.size(), 3u);
    for (const auto& [_, row] : the_switch().links) {
        const CMPIInstance* instance = build(tcp_settings_build_instance, row);
        EXPECT_EQ(value_of(instance, "RetransmissionTimeoutMax"), "5000");
        EXPECT_EQ(value_of(instance, "RetransmissionTimeoutMin"), "200");
        EXPECT_EQ(value_of(instance, "RetransmissionTimeoutAlgorithm"), "4");
    }
}

TEST_F(TcpSettings, TheRowIsReadAnewByItsLinkIndex) {
    FcipLinkEntry row{};
    row.link_index = tunnel_7.second;
    const CMPIInstance* instance = build(tcp_settings_build_instance, row);
    EXPECT_EQ(value_of(instance, "InstanceID"), "16777222");
    EXPECT_EQ(value_of(instance, "SystemName"), vsan_20_system);
    EXPECT_NE(trace.find("\ntol : if_index -2096889856\n"), std::string::npos) << trace;
}

TEST_F(TcpSettings, TheFirstLinkWithTheIndexWinsWhateverItsProfile) {
    FcipLinkEntry other = link();
    other.entity_id = 1;
    other.link_if_index = 16777300;
    the_switch().links[{1, 0}] = other;
    the_switch().profiles[1] = the_switch().profiles.at(3);
    EXPECT_EQ(value_of(build(tcp_settings_build_instance), "InstanceID"), "16777300");
}

TEST_F(TcpSettings, ARowThatIsStillZeroAnswersWithTheFirstLinkOfIndex0) {
    EXPECT_EQ(rows_of(build(tcp_settings_build_instance, FcipLinkEntry{})),
              rows_of(build(tcp_settings_build_instance)));
}

TEST_F(TcpSettings, AMissingLinkGivesMinusOne) {
    FcipLinkEntry row = link();
    row.link_index = 99;
    EXPECT_EQ(build(tcp_settings_build_instance, row), fcip::minus_one<CMPIInstance>());
    EXPECT_EQ(trace, entering(builder) + location(builder, 857));
}

TEST_F(TcpSettings, AnUnreadableLinkTableGivesMinusOne) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_link_entry", fault);
        EXPECT_EQ(build(tcp_settings_build_instance), fcip::minus_one<CMPIInstance>());
        EXPECT_EQ(trace, entering(builder) + location(builder, 857));
        switchsim::clear_faults();
    }
}

TEST_F(TcpSettings, AMissingProfileOfTheLinkReadAnewGivesNull) {
    FcipLinkEntry other = link();
    other.entity_id = 1;
    the_switch().links[{1, 0}] = other; // the first with the index; profile 1 does not exist
    EXPECT_EQ(build(tcp_settings_build_instance), nullptr);
    EXPECT_EQ(trace, entering(builder) + location(builder, 862));
}

TEST_F(TcpSettings, StatisticsNeverDecideTheOutcome) {
    const struct {
        const char* function;
        Fault fault;
        unsigned nth;
    } cases[] = {
        {"mts_send", Fault::fail, 1},         {"mts_send", Fault::no_reply, 1}, {"mts_recv", Fault::fail, 1},
        {"mts_recv", Fault::wrong_status, 1}, {"mts_recv", Fault::fail, 2}, // the reply came, its continuation did not
    };
    const Rows undisturbed = rows_of(build(tcp_settings_build_instance));
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.function) + " " + std::to_string(static_cast<int>(one.fault)));
        switchsim::inject(one.function, one.fault, one.nth, 7);
        EXPECT_EQ(rows_of(build(tcp_settings_build_instance)), undisturbed);
        EXPECT_EQ(trace, entering(builder) + location(builder, 862) + location(builder, 876) + statistics_entry +
                             "******* Error ******** " + location(builder, 919) + exiting(builder));
        switchsim::clear_faults();
    }
}

TEST_F(TcpSettings, UnreadableDomainGivesTheSystemNameNull) {
    switchsim::inject("dm_cim_get_dmEntry", Fault::fail);
    EXPECT_EQ(value_of(build(tcp_settings_build_instance), "SystemName"), "NULL");
    EXPECT_EQ(trace, entering(builder) + location(builder, 862) + location(builder, 876) + statistics_trace +
                         "error : dm_cim_get_dmEntry " + location(builder, 919) + exiting(builder));
}

TEST_F(TcpSettings, UnreadablePortGivesNoSystemName) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail);
    EXPECT_EQ(value_of(build(tcp_settings_build_instance), "SystemName"), "");
}

} // namespace

} // namespace test
