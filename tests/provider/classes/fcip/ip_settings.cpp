#include "provider/classes/fcip/ip_settings.h"

#include "tests/provider/classes/fcip/fcip_class_test.h"
#include "tests/provider/classes/kernel_counter_reads.h"

namespace test {

namespace {

using fcip::ip_settings_build_instance;
using switchsim::Fault;

const std::string entry = entering("ip_settings_build_instance");
const std::string statistics_trace = "\n inside get_ip_stats\n ";
const std::string exit_line = exiting("ip_settings_build_instance");

const std::string abandoned_trace = entry + statistics_trace;
const std::string whole_trace = abandoned_trace + exit_line;

class IpSettings : public FcipClassTest {
  protected:
    const Rows expected = {
        {"Caption", "string", "fcip1"},
        {"Description", "string", "fcip1"},
        {"ElementName", "string", "16777216"},
        {"InstanceID", "string", "16777216"},
        {"EnableIPForwarding", "boolean", "true"},
        {"FragmentationTimeout", "uint32", "500"},
        {"DefaultTimeToLive", "uint32", "64"},
    };

    /// The instance with the forwarding word, built anew.
    CMPIInstance* with_forwarding(std::uint32_t word) {
        the_switch().ip_configuration->forwarding = word;
        return build(ip_settings_build_instance, tunnel());
    }
};

TEST_F(IpSettings, InstanceHasItsPropertiesInOrder) {
    EXPECT_EQ(properties(build(ip_settings_build_instance, tunnel())), expected);
}

TEST_F(IpSettings, InstanceTracesTheStatisticsRequest) {
    build(ip_settings_build_instance, tunnel());
    EXPECT_EQ(trace, whole_trace);
}

TEST_F(IpSettings, InstanceIsAskedForInTheOrderOfItsProperties) {
    build(ip_settings_build_instance, tunnel());
    std::vector<std::string> asked;
    for (const std::string& name : switchsim::recorded_calls())
        if (!name.starts_with("mts_") || name == "mts_send" || name == "mts_recv")
            asked.push_back(name);
    const std::vector<std::string> expected_calls = {"fcip_get_entity_entry",
                                                     "getCSName",
                                                     "sprintf_if_index",
                                                     "if_index_get_slot",
                                                     "if_index_get_port",
                                                     "hton_if_index",
                                                     "idxmap_node_by_if_index",
                                                     "mts_send",
                                                     "mts_recv",
                                                     "cmi_req_resp"};
    EXPECT_EQ(asked, expected_calls);
}

TEST_F(IpSettings, KernelsIpCountersAreReadOnceBehindTheConfiguration) {
    kernel_counter_reads.clear();
    build(ip_settings_build_instance, tunnel());
    EXPECT_EQ(kernel_counter_reads, (std::vector<std::string>{"cmi_req_resp"}));
}

TEST_F(IpSettings, KernelsCountersAreNotReadWithoutTheConfiguration) {
    kernel_counter_reads.clear();
    the_switch().ip_configuration.reset();
    build(ip_settings_build_instance, tunnel());
    EXPECT_EQ(kernel_counter_reads, std::vector<std::string>{});
}

TEST_F(IpSettings, StatisticsAreAskedOfTheEthernetInterfaceWithFlag1) {
    build(ip_settings_build_instance, tunnel());
    const switchsim::SentRequest& request = switchsim::last_request();
    EXPECT_EQ(request.opcode, 1917u);
    ASSERT_EQ(request.payload.size(), 32u);
    const std::vector<std::uint8_t> if_index_and_flag(request.payload.begin() + 24, request.payload.end());
    EXPECT_EQ(if_index_and_flag, (std::vector<std::uint8_t>{0x83, 0, 0, 0, 0, 0, 0, 1}));
}

TEST_F(IpSettings, ForwardingIsTheLowByteOfItsWord) {
    EXPECT_EQ(property(with_forwarding(0), "EnableIPForwarding"), "boolean false");
    EXPECT_EQ(property(with_forwarding(2), "EnableIPForwarding"), "boolean true");
    EXPECT_EQ(property(with_forwarding(0x80), "EnableIPForwarding"), "boolean true");
    EXPECT_EQ(property(with_forwarding(0x100), "EnableIPForwarding"), "boolean false");
    EXPECT_EQ(property(with_forwarding(0x01000000), "EnableIPForwarding"), "boolean false");
}

TEST_F(IpSettings, TimeToLiveIsOneUnsignedByte) {
    the_switch().ip_configuration->default_ttl = 255;
    EXPECT_EQ(property(build(ip_settings_build_instance, tunnel()), "DefaultTimeToLive"), "uint32 255");
}

TEST_F(IpSettings, ShortConfigurationReplyLeavesTheRestZero) {
    switchsim::inject("cmi_req_resp", Fault::short_reply, switchsim::every_call, 4);
    const CMPIInstance* instance = build(ip_settings_build_instance, tunnel());
    EXPECT_EQ(property(instance, "EnableIPForwarding"), "boolean true");
    EXPECT_EQ(property(instance, "DefaultTimeToLive"), "uint32 0");
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
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.function) + " " + std::to_string(static_cast<int>(one.fault)));
        switchsim::inject(one.function, one.fault, switchsim::every_call, one.code);
        EXPECT_EQ(properties(build(ip_settings_build_instance, tunnel())), expected);
        EXPECT_EQ(trace, whole_trace);
        switchsim::clear_faults();
    }
}

TEST_F(IpSettings, UnreadableConfigurationAbandonsTheInstance) {
    for (const Fault fault : read_faults) {
        switchsim::inject("cmi_req_resp", fault);
        EXPECT_EQ(build(ip_settings_build_instance, tunnel()), nullptr);
        EXPECT_EQ(trace, abandoned_trace);
        switchsim::clear_faults();
    }
    the_switch().ip_configuration.reset();
    EXPECT_EQ(build(ip_settings_build_instance, tunnel()), nullptr);
    EXPECT_EQ(trace, abandoned_trace);
}

TEST_F(IpSettings, UnknownInterfaceNameIsEmpty) {
    switchsim::inject("sprintf_if_index", Fault::fail);
    const CMPIInstance* instance = build(ip_settings_build_instance, tunnel());
    EXPECT_EQ(property(instance, "Caption"), "string ");
    EXPECT_EQ(property(instance, "Description"), "string ");
    EXPECT_EQ(property(instance, "InstanceID"), "string 16777216");
}

} // namespace

} // namespace test
