#include "provider/classes/fcip/ip_settings.h"

#include "tests/provider/classes/kernel_counter_reads.h"
#include "tests/support/class_test.h"
#include "tests/support/front_broker.h"

namespace test {

namespace {

using fcip::ip_settings_build_instance;
using switchsim::Fault;

const std::string statistics_trace = "\n inside get_ip_stats\n ";

const std::string abandoned_trace = entering("ip_settings_build_instance") + statistics_trace;
const std::string whole_trace = abandoned_trace + exiting("ip_settings_build_instance");

using IpSettings = ClassTest;

TEST_F(IpSettings, InstanceTracesTheStatisticsRequest) {
    build(ip_settings_build_instance);
    EXPECT_EQ(trace, whole_trace);
}

TEST_F(IpSettings, KernelsIpCountersAreReadOnceBehindTheConfiguration) {
    kernel_counter_reads.clear();
    calls_of([&] { build(ip_settings_build_instance); });
    EXPECT_EQ(kernel_counter_reads, (std::vector<std::string>{"cmi_req_resp"}));
}

TEST_F(IpSettings, KernelsCountersAreNotReadWithoutTheConfiguration) {
    kernel_counter_reads.clear();
    the_switch().ip_configuration.reset();
    calls_of([&] { build(ip_settings_build_instance); });
    EXPECT_EQ(kernel_counter_reads, std::vector<std::string>{});
}

TEST_F(IpSettings, StatisticsAreAskedOfTheEthernetInterfaceWithFlag1) {
    build(ip_settings_build_instance);
    const switchsim::SentRequest& request = switchsim::last_request();
    EXPECT_EQ(request.opcode, 1917u);
    ASSERT_EQ(request.payload.size(), 32u);
    const std::vector<std::uint8_t> if_index_and_flag(request.payload.begin() + 24, request.payload.end());
    EXPECT_EQ(if_index_and_flag, (std::vector<std::uint8_t>{0x83, 0, 0, 0, 0, 0, 0, 1}));
}

TEST_F(IpSettings, ForwardingIsTheLowByteOfItsWord) {
    const FrontBroker front;
    for (const std::uint32_t word : {0u, 1u, 2u, 0x80u, 0x100u, 0x101u, 0x01000000u, 0xFFFFFFFFu}) {
        the_switch().ip_configuration->forwarding = word;
        build(ip_settings_build_instance);
        EXPECT_EQ(FrontBroker::flags().at("EnableIPForwarding"), word & 0xFF) << word;
    }
}

TEST_F(IpSettings, TimeToLiveIsOneUnsignedByte) {
    the_switch().ip_configuration->default_ttl = 255;
    EXPECT_EQ(value_of(build(ip_settings_build_instance), "DefaultTimeToLive"), "255");
}

TEST_F(IpSettings, ShortConfigurationReplyLeavesTheRestZero) {
    switchsim::inject("cmi_req_resp", Fault::short_reply, switchsim::every_call, 4);
    const CMPIInstance* instance = build(ip_settings_build_instance);
    EXPECT_EQ(value_of(instance, "EnableIPForwarding"), "true");
    EXPECT_EQ(value_of(instance, "DefaultTimeToLive"), "0");
}

TEST_F(IpSettings, StatisticsNeverDecideTheOutcome) {
    const struct {
        const char* function;
        Fault fault;
        int code;
    } cases[] = {
        {"mts_send", Fault::fail, -1},          {"mts_send", Fault::no_reply, 0},
        {"mts_recv", Fault::fail, -1},          {"mts_recv", Fault::wrong_status, 7},
        {"mts_recv", Fault::short_reply, 4},    {"mts_recv", Fault::short_reply, 40},
        {"if_index_get_slot", Fault::fail, -1}, {"if_index_get_port", Fault::fail, -1},
    };
    const Rows undisturbed = rows_of(build(ip_settings_build_instance));
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.function) + " " + std::to_string(static_cast<int>(one.fault)));
        switchsim::inject(one.function, one.fault, switchsim::every_call, one.code);
        EXPECT_EQ(rows_of(build(ip_settings_build_instance)), undisturbed);
        EXPECT_EQ(trace, whole_trace);
        switchsim::clear_faults();
    }
}

TEST_F(IpSettings, UnreadableConfigurationAbandonsTheInstance) {
    for (const Fault fault : read_faults) {
        switchsim::inject("cmi_req_resp", fault);
        EXPECT_EQ(build(ip_settings_build_instance), nullptr);
        EXPECT_EQ(trace, abandoned_trace);
        switchsim::clear_faults();
    }
    the_switch().ip_configuration.reset();
    EXPECT_EQ(build(ip_settings_build_instance), nullptr);
    EXPECT_EQ(trace, abandoned_trace);
}

TEST_F(IpSettings, UnknownInterfaceNameIsEmpty) {
    switchsim::inject("sprintf_if_index", Fault::fail);
    const CMPIInstance* instance = build(ip_settings_build_instance);
    EXPECT_EQ(value_of(instance, "Caption"), "");
    EXPECT_EQ(value_of(instance, "Description"), "");
    EXPECT_EQ(value_of(instance, "InstanceID"), "16777216");
}

} // namespace

} // namespace test
