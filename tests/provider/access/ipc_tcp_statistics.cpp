// The TCP statistics query: its reply, the further ones that are drained, and failures.
#include "provider/access/statistics.h"
#include "tests/provider/access/ipc_test.h"

#include <algorithm>

namespace fcip {
namespace {

class TcpStatistics : public IpcStatistics {
  protected:
    TcpStatistics() { std::fill(std::begin(record_), std::end(record_), 0xEE); }

    /// Calls get_tcp_stats; the answer goes to status_, what it prints is returned.
    std::string get() {
        return printed_by([this] { status_ = get_tcp_stats(12, record_); });
    }
    bytes record() const { return {std::begin(record_), std::end(record_)}; }

    std::uint8_t record_[tcp_record_size];
    int status_ = 99;
};

TEST_F(TcpStatistics, TwoFurtherRepliesTheLastWith0TakeThreeReceives) {
    reply(payload_of(1352));
    reply(further(0, 1));
    reply(further(0, 0));
    EXPECT_EQ(get(), "Entering get_tcp_stats\n\ntol : if_index 12\nExiting get_tcp_stats\n");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(record(), payload_of(1352));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply, receive_any, drop_reply,
                                 receive_any, drop_reply}));
}

TEST_F(TcpStatistics, FieldOfMoreRepliesIsSixteenBitsWide) {
    reply(payload_of(1352));
    reply(further(0x80, 0)); // negative
    reply(further(0x01, 0));
    reply(further(0, 0));
    reply(further(0, 0));
    get();
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(the_fake.replies.size(), 1u) << "the reply behind the last one is left alone";
}

TEST_F(TcpStatistics, MissingFieldOfMoreRepliesReads0) {
    for (const std::size_t size : sizes{12, 36, 37}) {
        the_fake = {};
        reply(payload_of(1352));
        reply(payload_of(size));
        get();
        EXPECT_EQ(status_, 0) << size;
        EXPECT_EQ(the_fake.log.back(), drop_reply) << size;
    }
}

TEST_F(TcpStatistics, NoFurtherReplyIsAFailureWithTheRecordFilled) {
    reply(payload_of(1352));
    EXPECT_EQ(get(), "Entering get_tcp_stats\n\ntol : if_index 12\n");
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(record(), payload_of(1352));
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply, receive_any}));
}

TEST_F(TcpStatistics, RefusedFurtherReplyIsAFailureAndDropped) {
    reply(payload_of(1352));
    reply(further(0, 1));
    reply(payload_of(38, 5));
    get();
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(exchange(), (calls{send_on_q0, token, receive_reply, drop_request, drop_reply, receive_any, drop_reply,
                                 receive_any, drop_reply}));
}

TEST_F(TcpStatistics, FurtherReplyWithoutAStatusIsAFailureAndDropped) {
    reply(payload_of(1352));
    reply(payload_of(4));
    get();
    EXPECT_EQ(status_, -1);
    EXPECT_EQ(the_fake.log.back(), drop_reply);
}

TEST_F(TcpStatistics, LongReplyIsCutToTheRecord) {
    reply(payload_of(2000));
    reply(further(0, 0));
    get();
    EXPECT_EQ(status_, 0);
    bytes expected = payload_of(2000);
    expected.resize(1352);
    EXPECT_EQ(record(), expected);
}

TEST_F(TcpStatistics, ShortReplyIsCopiedAsFarAsItGoesAndTheRestIsZero) {
    for (const std::size_t size : sizes{12, 700, 1351}) {
        the_fake = {};
        std::fill(std::begin(record_), std::end(record_), 0xEE);
        reply(payload_of(size));
        reply(further(0, 0));
        get();
        EXPECT_EQ(status_, 0) << size;
        bytes expected = payload_of(size);
        expected.resize(1352);
        EXPECT_EQ(record(), expected) << size;
    }
}

TEST_F(TcpStatistics, FailuresOfTheFirstExchangeLeaveTheRecord) {
    for (const failure& one : failures) {
        SCOPED_TRACE(one.name);
        arm(one);
        EXPECT_EQ(get(), "Entering get_tcp_stats\n\ntol : if_index 12\n");
        EXPECT_EQ(status_, -1);
        EXPECT_EQ(record(), bytes(1352, 0xEE));
        EXPECT_EQ(exchange(), one.expected);
    }
}

TEST_F(TcpStatistics, InterfaceIndexIsPrintedSigned) {
    EXPECT_EQ(printed_by([this] { get_tcp_stats(0x82FFFFFF, record_); }),
              "Entering get_tcp_stats\n\ntol : if_index -2097152001\n");
}

} // namespace
} // namespace fcip
