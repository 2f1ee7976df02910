#include "provider/classes/fcip/fcip_settings.h"

#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "tests/support/class_test.h"
#include "tests/support/front_broker.h"

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

using FcipSettings = ClassTest;

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
        FcipLinkEntry row = link();
        row.*number.word = 0xF1E2D3C4;
        EXPECT_EQ(value_of(build(fcip_settings_build_instance, row), number.property), "4058174404") << number.property;
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
            FcipLinkEntry row = link();
            row.*flag.word = word;
            EXPECT_EQ(value_of(build(fcip_settings_build_instance, row), flag.property), word == 1 ? "true" : "false")
                << word;
        }
    }
}

TEST_F(FcipSettings, PassiveModeAndCheckTimestampAreTheLowByte) {
    const FrontBroker front;
    for (const std::uint32_t word : flag_words) {
        FcipLinkEntry row = link();
        row.passive_mode = word;
        row.check_timestamp = word ^ 0x13;
        build(fcip_settings_build_instance, row);
        EXPECT_EQ(FrontBroker::flags().at("PassiveMode"), word & 0xFF) << word;
        EXPECT_EQ(FrontBroker::flags().at("CheckTimestamp"), (word & 0xFF) ^ 0x13) << word;
    }
}

TEST_F(FcipSettings, WordOf2IsNoWriteAcceleratorButPassiveMode) {
    link().write_acceleration = 2;
    link().passive_mode = 2;
    const CMPIInstance* instance = build(fcip_settings_build_instance);
    EXPECT_EQ(value_of(instance, "WriteAccelerator"), "false");
    EXPECT_EQ(value_of(instance, "PassiveMode"), "true");
}

TEST_F(FcipSettings, LinkIndex0IsTunnel0HereAndTunnel1OnTheEndpoint) {
    ASSERT_EQ(link().link_index, 0u);
    EXPECT_EQ(value_of(build(fcip_settings_build_instance), "TunnelID"), "0");
    EXPECT_EQ(value_of(build(fcip::fcip_pe_build_instance), "TunnelID"), "1");
}

TEST_F(FcipSettings, IfIndexIsPrintedSigned) {
    FcipLinkEntry row = link();
    row.link_if_index = ethernet_1;
    const CMPIInstance* instance = build(fcip_settings_build_instance, row);
    EXPECT_EQ(value_of(instance, "InstanceID"), "-2097152000");
    EXPECT_EQ(value_of(instance, "ElementName"), "-2097152000");
}

TEST_F(FcipSettings, ProfileIsReadWithTheConstant5AndItsKeepAliveWith30) {
    entity_constants.clear();
    build(fcip_settings_build_instance);
    EXPECT_EQ(entity_constants, (std::vector<int>{5, 30}));
}

TEST_F(FcipSettings, InstanceTracesEntryAndExit) {
    build(fcip_settings_build_instance);
    EXPECT_EQ(trace, entering("fcip_settings_build_instance") + exiting("fcip_settings_build_instance"));
}

TEST_F(FcipSettings, KeepAliveIsLeftUnsetWhenItsReadFails) {
    const Rows whole = rows_of(build(fcip_settings_build_instance));
    const std::string expected_trace = entering("fcip_settings_build_instance") +
                                       " fcip_get_entity_entry returned error " +
                                       exiting("fcip_settings_build_instance");
    for (const Fault fault : {Fault::fail, Fault::fail_leaving_record}) {
        switchsim::inject("fcip_get_entity_entry", fault, 2);
        const CMPIInstance* instance = build(fcip_settings_build_instance);
        EXPECT_EQ(rows_of(instance), without(whole, "KeepAliveTimeout"));
        EXPECT_EQ(trace, expected_trace);
    }
}

TEST_F(FcipSettings, KeepAliveIs30WhenItsReadSucceedsWithoutARecord) {
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 2);
    EXPECT_EQ(value_of(build(fcip_settings_build_instance), "KeepAliveTimeout"), "30");
    EXPECT_EQ(trace, entering("fcip_settings_build_instance") + exiting("fcip_settings_build_instance"));
}

TEST_F(FcipSettings, UnreadablePortGivesNoSystemName) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail);
    EXPECT_EQ(value_of(build(fcip_settings_build_instance), "SystemName"), "");
    EXPECT_EQ(trace, entering("fcip_settings_build_instance") + "error : pm_cim_get_port_info " +
                         exiting("fcip_settings_build_instance"));
}

TEST_F(FcipSettings, UnreadableDomainGivesTheSystemNameNull) {
    switchsim::inject("dm_cim_get_dmEntry", Fault::fail);
    EXPECT_EQ(value_of(build(fcip_settings_build_instance), "SystemName"), "NULL");
    EXPECT_EQ(trace, entering("fcip_settings_build_instance") + "error : dm_cim_get_dmEntry " +
                         exiting("fcip_settings_build_instance"));
}

} // namespace

} // namespace test
