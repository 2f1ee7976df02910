#include "provider/classes/net/ethernet_port_statistics.h"

#include "provider/common/endian.h"
#include "tests/provider/classes/builder_calls.h"
#include "tests/support/front_broker.h"

using namespace test;
using switchsim::Fault;

namespace {

class EthernetPortStatistics : public ClassTest {
  protected:
    CMPIInstance* build_port(const char** names = nullptr) {
        const PmPortInfo record = port_record(ethernet_1);
        return call([&] { return fcip::eth_statistics_build_instance(made_up_class, name_space, &record, names); });
    }

    /// Writes a counter into the line card's reply.
    static void set_slot(std::size_t slot, std::uint32_t high, std::uint32_t low) {
        std::uint8_t* bytes = port().mac_statistics.data() + 32 + 8 * slot;
        fcip::write_be32(bytes, high);
        fcip::write_be32(bytes + 4, low);
    }
};

/// What the port manager's record gives. In the small switch a 32-bit counter at offset o holds o, a 64-bit one o
/// << 33.
const Rows port_manager_properties = {
    {"InstanceID", "string", "-2097152000"},
    {"Caption", "string", "gigabitethernet1/1"},
    {"ElementName", "string", "gigabitethernet1/1"},
    {"Description", "string", "gigabitethernet1/1"},
    {"BroadcastFramesReceived", "uint64", "263"},
    {"BroadcastFramesTransmitted", "uint64", "271"},
    {"MulticastFramesTransmitted", "uint64", "267"},
    {"MulticastFramesReceived", "uint64", "259"},
    {"UnicastFramesTransmitted", "uint64", "2705829396480"}, // 315
    {"PacketsTransmitted", "uint64", "2705829396480"},
    {"UnicastFramesReceived", "uint64", "2430951489536"}, // 283
    {"PacketsReceived", "uint64", "2430951489536"},
    {"BytesTransmitted", "uint64", "2637109919744"}, // 307
    {"BytesReceived", "uint64", "2362232012800"},    // 275
};

/// What the line card's reply gives. In the small switch slot n holds (n + 1) << 32 | (100 + n).
const Rows line_card_properties = {
    {"BytesTransmitted", "uint64", "4294967396"},    // slot 0
    {"BytesReceived", "uint64", "47244640366"},      // slot 10
    {"PacketsTransmitted", "uint64", "34359738475"}, // slot 7
    {"PacketsReceived", "uint64", "64424509554"},    // slot 14
    {"SymbolErrors", "uint32", "20"},                // slot 19, high half
    {"AlignmentErrors", "uint64", "90194313336"},    // slot 20
    {"FCSErrors", "uint64", "21474836584"},          // slot 4
    {"SingleCollisionFrames", "uint32", "2"},        // slot 1, high half
    {"MultipleCollisionFrames", "uint32", "2"},
    {"DeferredTransmissions", "uint32", "2"},
    {"LateCollissions", "uint64", "12884901990"},      // slot 2
    {"ExcessiveCollissions", "uint64", "17179869287"}, // slot 3
    {"InternalMACTransmitErrors", "uint32", "4"},      // slot 3, high half
    {"InternalMACReceiveErrors", "uint32", "4"},
    {"CarrierSenseErrors", "uint32", "4"},
    {"FrameTooLongs", "uint32", "4"},
};

const std::string before_reply = "Entering eth_statistics_build_instance\n"
                                 "Entering get_ethernetport_statistics\n"
                                 "\ntol : if_index -2097152000\n";

TEST_F(EthernetPortStatistics, InstanceTracesItsQuery) {
    build_port();
    EXPECT_EQ(trace, before_reply + "Exiting get_ethernetport_statistics\n"
                                    "\ntol : ret_code = 0\n "
                                    "Bytes Tran 100 \n"
                                    "Bytes Received 110\n"
                                    "Exiting eth_statistics_build_instance\n");
}

TEST_F(EthernetPortStatistics, LineCardsValuesAreSetBehindThePortManagers) {
    const FrontBroker front;
    build_port();
    Rows expected = port_manager_properties;
    expected.insert(expected.end(), line_card_properties.begin(), line_card_properties.end());
    EXPECT_EQ(FrontBroker::set(), expected);
}

TEST_F(EthernetPortStatistics, SilentLineCardLeavesThePortManagersValues) {
    for (const Fault fault : {Fault::fail, Fault::no_reply, Fault::wrong_status}) {
        switchsim::inject("mts_send", fault);
        EXPECT_EQ(rows_of(build_port()), port_manager_properties);
        EXPECT_EQ(trace, before_reply + "Failed retrieval of mac stats information from linecard"
                                        "Exiting eth_statistics_build_instance\n");
        switchsim::clear_faults();
    }
}

TEST_F(EthernetPortStatistics, PropertyListIsAppliedOnlyWhenTheLineCardAnswers) {
    const char* names[] = {"Caption", nullptr};
    EXPECT_EQ(rows_of(build_port(names)), (Rows{{"Caption", "string", "gigabitethernet1/1"}}));
    switchsim::inject("mts_send", Fault::no_reply);
    EXPECT_EQ(rows_of(build_port(names)), port_manager_properties);
}

TEST_F(EthernetPortStatistics, SymbolErrorsShowOnlyFrom2ToThe32On) {
    set_slot(19, 0, 5);
    EXPECT_EQ(value_of(build_port(), "SymbolErrors"), "0");
    set_slot(19, 1, 0);
    EXPECT_EQ(value_of(build_port(), "SymbolErrors"), "1");
}

TEST_F(EthernetPortStatistics, PacketsComeFromTheLineCardWhereItAnswers) {
    EXPECT_EQ(value_of(build_port(), "PacketsTransmitted"), "34359738475");
    port().mac_statistics.clear();
    const Rows rows = rows_of(build_port());
    EXPECT_EQ(value_in(rows, "PacketsTransmitted"), "2705829396480");
    EXPECT_EQ(value_in(rows, "UnicastFramesTransmitted"), "2705829396480");
}

TEST_F(EthernetPortStatistics, BytesAreTracedAsTheLowHalfAndSigned) {
    set_slot(0, 1, 0xFFFFFFFE);
    set_slot(10, 9, 0x80000000);
    build_port();
    EXPECT_NE(trace.find("\n Bytes Tran -2 \nBytes Received -2147483648\n"), std::string::npos);
}

TEST_F(EthernetPortStatistics, CountersKeepAll64Bits) {
    set_slot(0, 0xFFFFFFFF, 0xFFFFFFFF);
    fcip::write_be32(port().counters->bytes + 263, 0xFFFFFFFF); // widened, not sign-extended
    const Rows rows = rows_of(build_port());
    EXPECT_EQ(value_in(rows, "BytesTransmitted"), "18446744073709551615");
    EXPECT_EQ(value_in(rows, "BroadcastFramesReceived"), "4294967295");
}

TEST_F(EthernetPortStatistics, ReplyThatIsCutShortReadsZeroBehindItsEnd) {
    switchsim::inject("mts_send", Fault::short_reply, switchsim::every_call, 48); // slots 0 and 1
    const Rows rows = rows_of(build_port());
    EXPECT_EQ(value_in(rows, "BytesTransmitted"), "4294967396");
    EXPECT_EQ(value_in(rows, "SingleCollisionFrames"), "2");
    EXPECT_EQ(value_in(rows, "LateCollissions"), "0");
    EXPECT_EQ(value_in(rows, "PacketsReceived"), "0");
}

TEST_F(EthernetPortStatistics, NameThatCannotBeHadIsEmpty) {
    const Rows whole = rows_of(build_port());
    switchsim::inject("sprintf_if_index", Fault::fail);
    EXPECT_EQ(rows_of(build_port()), with(with(with(whole, "Caption", ""), "ElementName", ""), "Description", ""));
}

TEST_F(EthernetPortStatistics, IsNullWithoutPortCounters) {
    for (const Fault fault : read_faults) {
        switchsim::inject("pm_get_port_counters", fault);
        EXPECT_EQ(build_port(), nullptr);
        EXPECT_EQ(trace, "Entering eth_statistics_build_instance\n"
                         "\ntol:Error in pm_get_port_counters\n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(EthernetPortStatistics, PathTracesEntryAndExit) {
    const PmPortInfo record = port_record(ethernet_2);
    call([&] { return fcip::eth_statistics_fill_reference(made_up_class, name_space, &record); });
    EXPECT_EQ(trace, entering("eth_statistics_fill_reference") + exiting("eth_statistics_fill_reference"));
}

} // namespace
