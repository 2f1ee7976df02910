// The IP and Ethernet statistics queries and the IP configuration: good, short, long and missing replies.
#include "provider/access/statistics.h"
#include "provider/common/memory.h"
#include "tests/provider/access/ipc_test.h"

#include <algorithm>

namespace fcip {
namespace {

// ---------------------------------------------------------------------------------------------- IP

class IpStatistics : public IpcStatistics {
  protected:
    /// Calls get_ip_stats with a reply pointer that is not null; the answers go to status_ and record_.
    std::string get(std::uint32_t flag) {
        std::uint8_t stale = 0;
        std::uint8_t* block = &stale;
        std::string text = printed_by([&] { status_ = get_ip_stats(mts_q, 12, flag, &block); });
        record_.reset(block);
        return text;
    }
    bytes record(std::size_t size) const { return {record_.get(), record_.get() + size}; }

    platform_ptr<std::uint8_t> record_;
    int status_ = 99;
};

TEST_F(IpStatistics, ReplyIsHandedOutWholeAndDropped) {
    reply(payload_of(172));
    EXPECT_EQ(get(1), "\n inside get_ip_stats\n ");
    EXPECT_EQ(status_, 0);
    ASSERT_NE(record_, nullptr);
    EXPECT_EQ(record(172), payload_of(172));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply}));
}

TEST_F(IpStatistics, LongReplyIsHandedOutWhole) {
    reply(payload_of(500));
    get(1);
    ASSERT_NE(record_, nullptr);
    EXPECT_EQ(record(500), payload_of(500));
}

TEST_F(IpStatistics, BlockOfAShortReplyIsZeroUpTo172Bytes) {
    for (const std::size_t size : sizes{12, 32, 100, 171}) {
        the_fake = {};
        reply(payload_of(size));
        get(1);
        EXPECT_EQ(status_, 0) << size;
        ASSERT_NE(record_, nullptr) << size;
        bytes expected = payload_of(size);
        expected.resize(172);
        EXPECT_EQ(record(172), expected) << size;
    }
}

TEST_F(IpStatistics, Flag0ReturnsTheStatusAndDropsTheReply) {
    reply(payload_of(172));
    EXPECT_EQ(get(0), "\n inside get_ip_stats\n ");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(record_, nullptr);
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply}));
    the_fake = {};
    reply(payload_of(172, 9));
    get(0);
    EXPECT_EQ(status_, 9);
    EXPECT_EQ(record_, nullptr);
}

TEST_F(IpStatistics, EveryFailureIsReturnedWithANullReplyPointer) {
    for (const failure& one : failures) {
        SCOPED_TRACE(one.name);
        arm(one);
        EXPECT_EQ(get(1), "\n inside get_ip_stats\n ");
        EXPECT_EQ(status_, one.ip_status);
        EXPECT_EQ(record_, nullptr);
        EXPECT_EQ(exchange(), one.expected);
    }
}

TEST_F(IpStatistics, QueueOfTheCallerIsUsedThroughout) {
    reply(payload_of(172));
    std::uint8_t* block = nullptr;
    printed_by([&] { get_ip_stats(fake_queue(2), 12, 1, &block); });
    std::free(block);
    EXPECT_EQ(exchange(),
              (calls{"send q2 0 0", token, "recv q2 1 0 5 28752 0 0 0 0 wait 5", "drop q2 request", "drop q2 reply"}));
}

// ---------------------------------------------------------------------------------------------- Ethernet

class EthernetStatistics : public IpcStatistics {
  protected:
    EthernetStatistics() { std::fill(std::begin(record_), std::end(record_), 0xEE); }

    std::string get() {
        return printed_by([this] { status_ = get_ethernetport_statistics(12, record_); });
    }
    bytes record() const { return {std::begin(record_), std::end(record_)}; }

    std::uint8_t record_[ethernet_record_size];
    int status_ = 99;
};

TEST_F(EthernetStatistics, FirstReplyFillsTheRecordAndNoneIsDrained) {
    reply(payload_of(256));
    reply(payload_of(256));
    EXPECT_EQ(get(), "Entering get_ethernetport_statistics\n\ntol : if_index 12\n"
                     "Exiting get_ethernetport_statistics\n");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(record(), payload_of(256));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply}));
}

TEST_F(EthernetStatistics, ReplyIsCutOrFilledWithZerosToTheRecord) {
    for (const std::size_t size : sizes{12, 255, 257, 1000}) {
        the_fake = {};
        std::fill(std::begin(record_), std::end(record_), 0xEE);
        reply(payload_of(size));
        get();
        EXPECT_EQ(status_, 0) << size;
        bytes expected = payload_of(size);
        expected.resize(256);
        EXPECT_EQ(record(), expected) << size;
    }
}

TEST_F(EthernetStatistics, FailuresPrintNoLineEndAndLeaveTheRecord) {
    for (const failure& one : failures) {
        SCOPED_TRACE(one.name);
        arm(one);
        EXPECT_EQ(get(), "Entering get_ethernetport_statistics\n\ntol : if_index 12\n"
                         "Failed retrieval of mac stats information from linecard");
        EXPECT_EQ(status_, -1);
        EXPECT_EQ(record(), bytes(256, 0xEE));
        EXPECT_EQ(exchange(), one.expected);
    }
}

// ---------------------------------------------------------------------------------------------- IP configuration

class IpConfiguration : public IpcStatistics {
  protected:
    ip_configuration configuration_{7, 8, {9, 10, 11}};

    void expect_untouched() const {
        EXPECT_EQ(configuration_.forwarding, 7u);
        EXPECT_EQ(configuration_.default_ttl, 8);
        EXPECT_EQ(configuration_.unused[2], 11);
    }
};

TEST_F(IpConfiguration, ReplyIsBigEndian) {
    the_fake.configuration = bytes{0x00, 0x01, 0x02, 0x03, 0x40, 0x50, 0x60, 0x70};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 0x00010203u);
    EXPECT_EQ(configuration_.default_ttl, 0x40);
    EXPECT_EQ(configuration_.unused[0], 0x50);
    EXPECT_EQ(configuration_.unused[1], 0x60);
    EXPECT_EQ(configuration_.unused[2], 0x70);
    EXPECT_EQ(the_fake.log, (calls{"configuration 873 1 0 length 8 0 0 35 q0 wait 5"}));
}

TEST_F(IpConfiguration, ShortReplyIsFilledWithZeros) {
    the_fake.configuration = bytes{0, 0, 0, 1};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 1u);
    EXPECT_EQ(configuration_.default_ttl, 0);
    EXPECT_EQ(configuration_.unused[2], 0);
    the_fake.configuration = bytes{};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 0u);
}

TEST_F(IpConfiguration, LongReplyIsCut) {
    the_fake.configuration = bytes{0, 0, 0, 2, 64, 0, 0, 0, 1, 2, 3, 4, 5, 6};
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), 0);
    EXPECT_EQ(configuration_.forwarding, 2u);
    EXPECT_EQ(configuration_.default_ttl, 64);
}

TEST_F(IpConfiguration, FailureThatLeavesAReplyIsMinusOneAndFreesIt) {
    the_fake.configuration = bytes{0, 0, 0, 2, 64, 0, 0, 0};
    the_fake.configuration_code = 4;
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), -1);
    expect_untouched();
}

TEST_F(IpConfiguration, SuccessWithoutAReplyIsMinusOne) {
    EXPECT_EQ(get_ip_misc_cfg(&configuration_), -1);
    expect_untouched();
}

} // namespace
} // namespace fcip
