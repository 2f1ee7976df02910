#include "provider/classes/fcip/fcip_settings.h"

#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "tests/provider/classes/fcip/fcip_class_test.h"

#include <dlfcn.h>

namespace {

/// The last argument of each read of the entity table, in order.
std::vector<int> entity_constants;

} // namespace

/// Stands before the simulator's function, notes the constant and passes the call on.
extern "C" int fcip_get_entity_entry(mts_queue queue, int operation, std::uint32_t entity_id, FcipEntityEntry** row,
                                     int constant) {
    entity_constants.push_back(constant);
    static const auto simulated =
        reinterpret_cast<decltype(&fcip_get_entity_entry)>(dlsym(RTLD_NEXT, "fcip_get_entity_entry"));
    return simulated(queue, operation, entity_id, row, constant);
}

namespace test {

namespace {

using fcip::fcip_settings_build_instance;
using switchsim::Fault;

using FcipSettings = FcipClassTest;

const std::string entry = entering("fcip_settings_build_instance");
const std::string exit_line = exiting("fcip_settings_build_instance");

TEST_F(FcipSettings, InstanceHasItsPropertiesInOrder) {
    const Rows expected = {
        {"SystemCreationClassName", "string", "ZANTO_LogicalComputerSystem"},
        {"SystemName", "string", vsan_1_system},
        {"ElementName", "string", "16777216"},
        {"InstanceID", "string", "16777216"},
        {"CreationClassName", "string", "ZANTO_FCIPSettings"},
        {"ConnectionUsageFlags", "uint16", "2"},
        {"SpecialFrameTimeout", "uint32", "90"},
        {"KeepAliveTimeout", "uint32", "60"},
        {"TunnelID", "uint32", "0"},
        {"PassiveMode", "boolean", "false"},
        {"NumTcpConnections", "uint32", "2"},
        {"CheckTimestamp", "boolean", "false"},
        {"TimeStampTolerance", "uint32", "2000"},
        {"TcpRemPort", "uint32", "3300"},
        {"LocalPortEnable", "boolean", "true"},
        {"SpecialFrameEnable", "boolean", "false"},
        {"BPortKAEnable", "boolean", "false"},
        {"CntrlQOSField", "uint32", "46"},
        {"DataQOSField", "uint32", "26"},
        {"EthIfIndex", "uint32", "2197815296"},
        {"WriteAccelerator", "boolean", "true"},
        {"TapeAccelerator", "boolean", "false"},
        {"IPSec", "boolean", "false"},
        {"WriteAccOper", "boolean", "false"},
        {"TapeAccOper", "boolean", "false"},
        {"TapeAccReadOper", "boolean", "false"},
        {"IPComp", "uint32", "1"},
        {"FlowCtrlBufSize", "uint32", "256"},
    };
    EXPECT_EQ(properties(build(fcip_settings_build_instance, tunnel())), expected);
}

TEST_F(FcipSettings, EachNumberIsItsOwnWordOfTheLink) {
    const struct {
        std::uint32_t FcipLinkEntry::*word;
        const char* property;
    } numbers[] = {
        {&FcipLinkEntry::link_index, "TunnelID"},
        {&FcipLinkEntry::tcp_connections, "NumTcpConnections"},
        {&FcipLinkEntry::timestamp_tolerance, "TimeStampTolerance"},
        {&FcipLinkEntry::remote_tcp_port, "TcpRemPort"},
        {&FcipLinkEntry::control_qos, "CntrlQOSField"},
        {&FcipLinkEntry::data_qos, "DataQOSField"},
        {&FcipLinkEntry::ethernet_if_index, "EthIfIndex"},
        {&FcipLinkEntry::compression_mode, "IPComp"},
        {&FcipLinkEntry::flow_control_buffer_size, "FlowCtrlBufSize"},
    };
    for (const auto& number : numbers) {
        FcipLinkEntry row = tunnel();
        row.*number.word = 0xF1E2D3C4;
        EXPECT_EQ(property(build(fcip_settings_build_instance, row), number.property), "uint32 4058174404")
            << number.property;
    }
}

constexpr std::uint32_t flag_words[] = {0, 1, 2, 0x100, 0x101, 0x01000000, 0xFFFFFFFF};

TEST_F(FcipSettings, OnlyTheWord1SetsANormalisedFlag) {
    const struct {
        std::uint32_t FcipLinkEntry::*word;
        const char* property;
    } flags[] = {
        {&FcipLinkEntry::local_port_enable, "LocalPortEnable"},
        {&FcipLinkEntry::special_frame_enable, "SpecialFrameEnable"},
        {&FcipLinkEntry::bport_keep_alive_enable, "BPortKAEnable"},
        {&FcipLinkEntry::write_acceleration, "WriteAccelerator"},
        {&FcipLinkEntry::tape_acceleration, "TapeAccelerator"},
        {&FcipLinkEntry::ipsec, "IPSec"},
        {&FcipLinkEntry::write_acceleration_operational, "WriteAccOper"},
        {&FcipLinkEntry::tape_acceleration_operational, "TapeAccOper"},
        {&FcipLinkEntry::tape_read_acceleration_operational, "TapeAccReadOper"},
    };
    for (const auto& flag : flags) {
        SCOPED_TRACE(flag.property);
        for (const std::uint32_t word : flag_words) {
            FcipLinkEntry row = tunnel();
            row.*flag.word = word;
            EXPECT_EQ(property(build(fcip_settings_build_instance, row), flag.property),
                      word == 1 ? "boolean true" : "boolean false")
                << word;
        }
    }
}

TEST_F(FcipSettings, AnyLowByteSetsPassiveModeAndCheckTimestamp) {
    const struct {
        std::uint32_t FcipLinkEntry::*word;
        const char* property;
    } flags[] = {
        {&FcipLinkEntry::passive_mode, "PassiveMode"},
        {&FcipLinkEntry::check_timestamp, "CheckTimestamp"},
    };
    for (const auto& flag : flags) {
        SCOPED_TRACE(flag.property);
        for (const std::uint32_t word : flag_words) {
            FcipLinkEntry row = tunnel();
            row.*flag.word = word;
            const bool expected = word == 1 || word == 2 || word == 0x101 || word == 0xFFFFFFFF;
            EXPECT_EQ(property(build(fcip_settings_build_instance, row), flag.property),
                      expected ? "boolean true" : "boolean false")
                << word;
        }
    }
}

TEST_F(FcipSettings, WordOf2IsNoWriteAcceleratorButPassiveMode) {
    tunnel().write_acceleration = 2;
    tunnel().passive_mode = 2;
    const CMPIInstance* instance = build(fcip_settings_build_instance, tunnel());
    EXPECT_EQ(property(instance, "WriteAccelerator"), "boolean false");
    EXPECT_EQ(property(instance, "PassiveMode"), "boolean true");
}

TEST_F(FcipSettings, LinkIndex0IsTunnel0HereAndTunnel1OnTheEndpoint) {
    ASSERT_EQ(tunnel().link_index, 0u);
    EXPECT_EQ(property(build(fcip_settings_build_instance, tunnel()), "TunnelID"), "uint32 0");
    EXPECT_EQ(property(build(fcip::fcip_pe_build_instance, tunnel()), "TunnelID"), "uint16 1");
}

TEST_F(FcipSettings, IfIndexIsPrintedSigned) {
    FcipLinkEntry row = tunnel();
    row.link_if_index = ethernet_1;
    const CMPIInstance* instance = build(fcip_settings_build_instance, row);
    EXPECT_EQ(property(instance, "InstanceID"), "string -2097152000");
    EXPECT_EQ(property(instance, "ElementName"), "string -2097152000");
}

TEST_F(FcipSettings, InstanceIsAskedForInTheOrderOfItsProperties) {
    build(fcip_settings_build_instance, tunnel());
    const std::vector<std::string> expected = {"fcip_get_entity_entry",
                                               "getCSName",
                                               "pm_cim_get_port_info",
                                               "dm_cim_get_dmEntry",
                                               "vsan_cim_get_vsan_admindomain_key",
                                               "fcip_get_entity_entry"};
    EXPECT_EQ(switchsim::recorded_calls(), expected);
}

TEST_F(FcipSettings, ProfileIsReadWithTheConstant5AndItsKeepAliveWith30) {
    entity_constants.clear();
    build(fcip_settings_build_instance, tunnel());
    EXPECT_EQ(entity_constants, (std::vector<int>{5, 30}));
}

TEST_F(FcipSettings, InstanceTracesEntryAndExit) {
    build(fcip_settings_build_instance, tunnel());
    EXPECT_EQ(trace, entry + exit_line);
}

TEST_F(FcipSettings, KeepAliveIsLeftUnsetWhenItsReadFails) {
    const std::string expected_trace = entry + " fcip_get_entity_entry returned error " + exit_line;
    for (const Fault fault : {Fault::fail, Fault::fail_leaving_record}) {
        switchsim::inject("fcip_get_entity_entry", fault, 2);
        const CMPIInstance* instance = build(fcip_settings_build_instance, tunnel());
        ASSERT_NE(instance, nullptr);
        EXPECT_EQ(properties(instance).size(), 27u);
        EXPECT_EQ(property(instance, "KeepAliveTimeout"), "absent");
        EXPECT_EQ(trace, expected_trace);
    }
}

TEST_F(FcipSettings, KeepAliveIs30WhenItsReadSucceedsWithoutARecord) {
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 2);
    EXPECT_EQ(property(build(fcip_settings_build_instance, tunnel()), "KeepAliveTimeout"), "uint32 30");
    EXPECT_EQ(trace, entry + exit_line);
}

TEST_F(FcipSettings, UnreadablePortGivesNoSystemName) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail);
    EXPECT_EQ(property(build(fcip_settings_build_instance, tunnel()), "SystemName"), "string ");
    EXPECT_EQ(trace, entry + "error : pm_cim_get_port_info " + exit_line);
}

TEST_F(FcipSettings, UnreadableDomainGivesTheSystemNameNull) {
    switchsim::inject("dm_cim_get_dmEntry", Fault::fail);
    EXPECT_EQ(property(build(fcip_settings_build_instance, tunnel()), "SystemName"), "string NULL");
    EXPECT_EQ(trace, entry + "error : dm_cim_get_dmEntry " + exit_line);
}

} // namespace

} // namespace test
