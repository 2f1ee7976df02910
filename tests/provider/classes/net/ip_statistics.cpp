#include "provider/classes/net/ip_statistics.h"

#include "provider/common/endian.h"
#include "tests/support/class_test.h"
#include "tests/support/front_broker.h"

using namespace test;
using switchsim::Fault;

namespace {

using fcip::ip_statistics_build_instance;

class IpStatistics : public ClassTest {};

/// Every property as it is set. The small switch's counter word at offset o holds 1000 + o.
const Rows all_set = {
    {"InstanceID", "string", "16777216"},
    {"SystemName", "string", "200100005EAA0001"},
    {"CreationClassName", "string", "ZANTO_IPEndPointStatistics"},
    {"ReceivedPDUs", "uint32", "1036"},
    {"ReceivedPDUHeaderErrors", "uint32", "6476"}, // the words at 64, 68, 72, 76, 56 and 140
    {"ReceivedPDUAddressErrors", "uint32", "1080"},
    {"ReceivedPDUForwards", "uint32", "1092"},
    {"ReceivedPDUUnknownProtocolErrors", "uint32", "1108"},
    {"ReceivedPDUDiscards", "uint32", "1152"},
    {"PDUDelivers", "uint32", "1044"},
    {"SentPDUs", "uint32", "1052"},
    {"SentPDUDiscards", "uint32", "1084"},
    {"SentPDUNoRouteErrors", "uint32", "1136"},
    {"ReassemblyRequireds", "uint32", "4294967260"}, // the word at 80 less the one at 116
    {"ReassembledPackets", "uint32", "1116"},
    {"ReassemblyFailed", "uint32", "1148"},
    {"Fragmentation", "uint32", "1120"},
    {"FragmentationFaileds", "uint32", "1128"},
    {"FragmentedPDUCreates", "uint32", "1124"},
    {"FragmentationFaileds", "uint32", "1128"},
    {"RouteEntriesDiscards", "uint32", "1152"},
};

/// The counter words from offset `from` on read 0.
Rows zero_from(Rows rows, std::uint32_t from) {
    for (Row& row : rows)
        if (row[1] == "uint32" && std::stoul(row[2]) >= 1000 + from && std::stoul(row[2]) < 2000)
            row[2] = "0";
    return rows;
}

TEST_F(IpStatistics, InstanceTracesItsQuery) {
    build(ip_statistics_build_instance);
    EXPECT_EQ(trace, "Entering ip_statistics_build_instance\n"
                     "\n inside get_ip_stats\n "
                     "Great!!!\n"
                     "Exiting ip_statistics_build_instance\n");
}

TEST_F(IpStatistics, FragmentationFailuresAreSetTwice) {
    const FrontBroker front;
    build(ip_statistics_build_instance);
    EXPECT_EQ(FrontBroker::set(), all_set);
}

TEST_F(IpStatistics, HasNoSystemCreationClassName) {
    EXPECT_EQ(value_of(build(ip_statistics_build_instance), "SystemCreationClassName"), not_set);
}

TEST_F(IpStatistics, SumsAndDifferencesWrapAroundAt32Bits) {
    std::uint8_t* record = port().ip_statistics.data();
    fcip::write_be32(record, 0x00FF0000); // the head is no counter
    for (const int offset : {56, 64, 68, 72, 76, 140})
        fcip::write_be32(record + offset, 0x80000001);
    fcip::write_be32(record + 80, 5);
    fcip::write_be32(record + 116, 7);
    const Rows rows = rows_of(build(ip_statistics_build_instance));
    EXPECT_EQ(value_in(rows, "ReceivedPDUHeaderErrors"), "6");
    EXPECT_EQ(value_in(rows, "ReassemblyRequireds"), "4294967294");
    EXPECT_EQ(value_in(rows, "ReceivedPDUAddressErrors"), "5");
    EXPECT_EQ(value_in(rows, "ReassembledPackets"), "7");
}

TEST_F(IpStatistics, CountersAreThePortsButIndexAndSystemTheLinks) {
    fcip::write_be32(port(ethernet_2).ip_statistics.data() + 36, 77);
    const Rows rows = rows_of(build(ip_statistics_build_instance, link(tunnel_7)));
    EXPECT_EQ(value_in(rows, "InstanceID"), "16777222");
    EXPECT_EQ(value_in(rows, "SystemName"), "201400005EAA0001");
    EXPECT_EQ(value_in(rows, "ReceivedPDUs"), "77");
}

TEST_F(IpStatistics, AsksTheLineCardWithTheFlag1) {
    build(ip_statistics_build_instance);
    EXPECT_EQ(switchsim::last_request().opcode, 1917U);
    EXPECT_EQ(fcip::read_be32(switchsim::last_request().payload.data() + 28), 1U);
}

TEST_F(IpStatistics, SystemNameIsSetWhateverTheQuestionComesTo) {
    the_switch().ports.erase(fcip_1);
    EXPECT_EQ(value_of(build(ip_statistics_build_instance), "SystemName"), "");
    the_switch().ports[fcip_1] = port(fcip_3);
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(value_of(build(ip_statistics_build_instance), "SystemName"), "NULL");
}

TEST_F(IpStatistics, IsNullWhenNoCountersCameBack) {
    for (const Fault fault : {Fault::fail, Fault::no_reply, Fault::wrong_status}) {
        switchsim::inject("mts_send", fault);
        EXPECT_EQ(build(ip_statistics_build_instance), nullptr);
        EXPECT_EQ(trace, "Entering ip_statistics_build_instance\n"
                         "\n inside get_ip_stats\n "
                         "\ntol : some problem in get_ip_stats\n ");
        switchsim::clear_faults();
    }
}

TEST_F(IpStatistics, ReplyThatIsCutShortReadsZeroBehindItsEnd) {
    Rows expected = zero_from(rows_of(build(ip_statistics_build_instance)), 60);
    switchsim::inject("mts_send", Fault::short_reply, switchsim::every_call, 60);
    expected = with(with(expected, "ReceivedPDUHeaderErrors", "1056"), "ReassemblyRequireds", "0");
    EXPECT_EQ(rows_of(build(ip_statistics_build_instance)), expected);
    EXPECT_EQ(value_in(expected, "SentPDUs"), "1052"); // the last whole word ahead of it
}

TEST_F(IpStatistics, IsNullForNoLink) {
    EXPECT_EQ(call([] { return ip_statistics_build_instance(made_up_class, name_space, nullptr, nullptr); }), nullptr);
    EXPECT_EQ(trace, "Entering ip_statistics_build_instance\n");
    EXPECT_EQ(scope.objects_made(), 2U); // the instance is abandoned
    EXPECT_EQ(switchsim::calls("mts_send"), 0U);
}

} // namespace
