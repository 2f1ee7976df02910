// The statistics queries against the simulated line cards, which decode the requests and answer with bytes.
#include "provider/access/statistics.h"
#include "provider/common/endian.h"
#include "provider/common/memory.h"
#include "tests/provider/access/access_test.h"

#include <algorithm>
#include <cstring>

namespace fcip {
namespace {

using switchsim::Fault;
using bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t if_index = 0x83000000;

/// A reply payload that counts up; its status is the line card's to set.
bytes counting(std::size_t size) {
    bytes payload(size);
    for (std::size_t offset = 0; offset < size; ++offset)
        payload[offset] = static_cast<std::uint8_t>(offset + 1);
    return payload;
}

/// The same as it arrives, with status 0.
bytes arrived(std::size_t size, std::size_t record_size) {
    bytes payload = counting(size);
    payload[10] = payload[11] = 0;
    payload.resize(record_size);
    return payload;
}

class LineCardStatistics : public AccessTest {
  protected:
    void SetUp() override {
        AccessTest::SetUp();
        the_switch().slots = {2};
        switchsim::Port& port = the_switch().ports[if_index];
        port.slot = std::uint8_t{2};
        port.port = std::uint8_t{7};
        port.tcp_statistics = {counting(1352), bytes(38, 0)};
        port.ip_statistics = counting(172);
        port.mac_statistics = counting(256);
        std::fill(std::begin(record_), std::end(record_), 0xEE);
    }

    static switchsim::Port& port() { return the_switch().ports[if_index]; }

    int tcp() {
        return call([this] { return get_tcp_stats(if_index, record_); });
    }

    int ethernet() {
        return call([this] { return get_ethernetport_statistics(if_index, record_); });
    }

    int ip(std::uint32_t flag = 1) {
        std::uint8_t* block = nullptr;
        const int status = call([&] { return get_ip_stats(mts_q, if_index, flag, &block); });
        block_.reset(block);
        return status;
    }

    bytes record(std::size_t size) const { return {record_, record_ + size}; }

    std::uint8_t record_[tcp_record_size];
    platform_ptr<std::uint8_t> block_;
};

TEST_F(LineCardStatistics, EachQueryReturnsWhatTheLineCardAnswers) {
    EXPECT_EQ(tcp(), 0);
    EXPECT_EQ(record(1352), arrived(1352, 1352));
    EXPECT_EQ(ethernet(), 0);
    EXPECT_EQ(record(256), arrived(256, 256));
    EXPECT_EQ(ip(), 0);
    ASSERT_NE(block_, nullptr);
    EXPECT_EQ(bytes(block_.get(), block_.get() + 172), arrived(172, 172));
}

TEST_F(LineCardStatistics, RequestsGoToTheInterfacesLineCard) {
    const auto expect_last = [](std::uint32_t opcode, std::size_t length) {
        SCOPED_TRACE(opcode);
        const switchsim::SentRequest& request = switchsim::last_request();
        EXPECT_EQ(request.destination.node, switchsim::node_of_slot(2));
        EXPECT_EQ(request.destination.sap, 943u);
        EXPECT_EQ(request.opcode, opcode);
        ASSERT_EQ(request.payload.size(), length);
        EXPECT_EQ(read_be16(request.payload.data() + 4), 7u);
        EXPECT_EQ(read_be32(request.payload.data() + 24), if_index);
    };
    tcp();
    expect_last(1920, 40);
    ip();
    expect_last(1917, 32);
    ethernet();
    expect_last(1918, 32);
}

TEST_F(LineCardStatistics, InterfaceWithoutAPortNumberIsQueriedWith0xFFFF) {
    port().port = std::nullopt;
    EXPECT_EQ(ip(), 0);
    EXPECT_EQ(read_be16(switchsim::last_request().payload.data() + 4), 0xFFFFu);
}

TEST_F(LineCardStatistics, InterfaceWithoutASlotIsStillQueried) {
    port().slot = std::nullopt;
    EXPECT_LT(ip(), 0);
    EXPECT_EQ(tcp(), -1);
    EXPECT_EQ(ethernet(), -1);
    EXPECT_EQ(calls("mts_send"), 3u);
    EXPECT_EQ(read_be16(switchsim::last_request().payload.data() + 4), 0xFFFFu);
    EXPECT_EQ(calls("if_index_get_port"), 0u);
}

TEST_F(LineCardStatistics, SlotWithoutALineCardTimesOut) {
    the_switch().slots.clear();
    EXPECT_EQ(tcp(), -1);
    EXPECT_EQ(ethernet(), -1);
    EXPECT_LT(ip(), 0);
    EXPECT_EQ(block_, nullptr);
    EXPECT_EQ(record(1352), bytes(1352, 0xEE));
}

TEST_F(LineCardStatistics, AllContinuationsAreDrained) {
    bytes more(38, 0);
    more[37] = 1;
    port().tcp_statistics = {counting(1352), more, bytes(38, 0)};
    EXPECT_EQ(tcp(), 0);
    EXPECT_EQ(calls("mts_recv"), 3u);
    EXPECT_EQ(calls("mts_drop"), 4u) << "three replies and the request";
}

TEST_F(LineCardStatistics, TcpReplyWithoutAContinuationIsMinusOne) {
    port().tcp_statistics = {counting(1352)};
    EXPECT_EQ(tcp(), -1);
    EXPECT_EQ(record(1352), arrived(1352, 1352));
}

TEST_F(LineCardStatistics, ShortRepliesAreFilledWithZeros) {
    switchsim::inject("mts_recv", Fault::short_reply, switchsim::every_call, 100);
    EXPECT_EQ(tcp(), 0);
    EXPECT_EQ(record(1352), arrived(100, 1352));
    EXPECT_EQ(ethernet(), 0);
    EXPECT_EQ(record(256), arrived(100, 256));
    EXPECT_EQ(ip(), 0);
    ASSERT_NE(block_, nullptr);
    EXPECT_EQ(bytes(block_.get(), block_.get() + 172), arrived(100, 172));
}

TEST_F(LineCardStatistics, FaultsOfEveryKindFailEveryQueryAndLeaveNoMessage) {
    struct row {
        const char* function;
        Fault fault;
        int code;
    };
    const row rows[] = {{"mts_send", Fault::fail, 4},          {"mts_recv", Fault::fail, -6},
                        {"mts_recv", Fault::wrong_status, 77}, {"mts_recv", Fault::short_reply, 11},
                        {"mts_send", Fault::no_reply, 0},      {"mts_recv", Fault::short_reply, 0}};
    for (const row& one : rows) {
        SCOPED_TRACE(std::string(one.function) + " " + std::to_string(one.code));
        switchsim::clear_faults();
        switchsim::inject(one.function, one.fault, switchsim::every_call, one.code);
        EXPECT_EQ(tcp(), -1);
        EXPECT_EQ(ethernet(), -1);
        EXPECT_NE(ip(), 0);
        EXPECT_EQ(block_, nullptr);
        EXPECT_EQ(switchsim::undropped_messages(), 0u);
        EXPECT_EQ(record(1352), bytes(1352, 0xEE));
    }
}

TEST_F(LineCardStatistics, RefusalIsReturnedByTheIpQuery) {
    switchsim::inject("mts_recv", Fault::wrong_status, switchsim::every_call, 77);
    EXPECT_EQ(ip(), 77);
    EXPECT_EQ(ip(0), 77);
}

TEST_F(LineCardStatistics, IpQueryWithFlag0LeavesNoBlockAndNoMessage) {
    EXPECT_EQ(ip(0), 0);
    EXPECT_EQ(block_, nullptr);
    EXPECT_EQ(read_be32(switchsim::last_request().payload.data() + 28), 0u);
}

TEST_F(LineCardStatistics, IpConfigurationIsTheSwitchs) {
    the_switch().ip_configuration = switchsim::IpConfiguration{0x01020304, 63};
    ip_configuration configuration{};
    EXPECT_EQ(call([&] { return get_ip_misc_cfg(&configuration); }), 0);
    EXPECT_EQ(configuration.forwarding, 0x01020304u);
    EXPECT_EQ(configuration.default_ttl, 63);
    EXPECT_EQ(trace, "");
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("cmi_req_resp", fault);
        EXPECT_EQ(call([&] { return get_ip_misc_cfg(&configuration); }), -1);
        EXPECT_EQ(configuration.default_ttl, 63) << "untouched";
    }
}

} // namespace
} // namespace fcip
