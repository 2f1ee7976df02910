// What becomes of a request's frames.
#include "host/worker/exchange.h"
#include "host/worker/records.h"

#include <gtest/gtest.h>

namespace cmpihost::worker {
namespace {

class ExchangeTest : public testing::Test {
  protected:
    bool take(FrameKind kind, std::string_view payload, bool more = false) {
        return exchange_.take({kind, more, 1, payload});
    }

    std::string body() const {
        std::string text;
        for (const std::string& block : replies_.at(0).body)
            text += block;
        return text;
    }

    static std::string subject() {
        return encode(server::Subject{{"7", "1.0", "GetInstance", "root/test", std::nullopt}, "C"});
    }

    std::vector<Reply> replies_;
    std::shared_ptr<ReplyMemory> memory_ = std::make_shared<ReplyMemory>(ReplyMemory{20});
    Exchange exchange_{[this](Reply reply) { replies_.push_back(std::move(reply)); }, memory_, 10};
};

TEST_F(ExchangeTest, AnswersWithTheLastFrame) {
    EXPECT_FALSE(take(FrameKind::subject, subject()));
    EXPECT_FALSE(take(FrameKind::part, "12345"));
    EXPECT_FALSE(take(FrameKind::part, "67890"));
    EXPECT_TRUE(replies_.empty());
    EXPECT_TRUE(take(FrameKind::outcome, encode(server::Outcome{})));
    ASSERT_EQ(replies_.size(), 1u);
    EXPECT_EQ(body(), "1234567890");
    EXPECT_EQ(replies_[0].subject.class_name, "C");
}

TEST_F(ExchangeTest, RecordsMayComeInSeveralFrames) {
    const std::string text = subject();
    EXPECT_FALSE(take(FrameKind::subject, text.substr(0, 5), true));
    EXPECT_EQ(exchange_.name(), "a request");
    EXPECT_FALSE(take(FrameKind::subject, text.substr(5)));
    EXPECT_EQ(exchange_.name(), "GetInstance of C");
    const std::string outcome = encode(server::Outcome{});
    EXPECT_FALSE(take(FrameKind::outcome, outcome.substr(0, 1), true));
    EXPECT_TRUE(take(FrameKind::outcome, outcome.substr(1)));
}

TEST_F(ExchangeTest, MemoryIsHeldUntilTheReplyIsDropped) {
    take(FrameKind::part, "12345");
    take(FrameKind::outcome, encode(server::Outcome{}));
    EXPECT_EQ(memory_->used, 5u);
    replies_.clear();
    EXPECT_EQ(memory_->used, 0u);
}

TEST_F(ExchangeTest, DiscardedPartsHoldNoMemory) {
    take(FrameKind::part, "12345");
    take(FrameKind::discard, "");
    EXPECT_EQ(memory_->used, 0u);
    take(FrameKind::part, "1234567890");
    take(FrameKind::outcome, encode(server::Outcome{}));
    EXPECT_EQ(body(), "1234567890");
}

TEST_F(ExchangeTest, TooLargeReplyIsAnsweredOnceAndDropped) {
    take(FrameKind::subject, subject());
    take(FrameKind::part, "12345678901");
    ASSERT_EQ(replies_.size(), 1u);
    EXPECT_EQ(replies_[0].outcome.cim_status, 1u);
    EXPECT_EQ(replies_[0].outcome.notes,
              std::vector<std::string>{"the reply to GetInstance of C takes more than 10 bytes"});
    EXPECT_FALSE(take(FrameKind::part, "x"));
    EXPECT_TRUE(take(FrameKind::outcome, encode(server::Outcome{})));
    EXPECT_EQ(replies_.size(), 1u);
    EXPECT_EQ(memory_->used, 0u);
}

TEST_F(ExchangeTest, FailureIsAnsweredOnce) {
    exchange_.fail("one", 503);
    exchange_.fail("two");
    ASSERT_EQ(replies_.size(), 1u);
    EXPECT_EQ(replies_[0].outcome.http_status, 503u);
    EXPECT_EQ(replies_[0].outcome.notes, std::vector<std::string>{"one"});
}

TEST_F(ExchangeTest, FramesInDisorderAreRefused) {
    EXPECT_THROW(take(FrameKind::question, ""), BrokenFrame);
    EXPECT_THROW(take(FrameKind::ready, ""), BrokenFrame);
    take(FrameKind::subject, subject());
    EXPECT_THROW(take(FrameKind::subject, subject()), BrokenFrame);
    EXPECT_THROW(take(FrameKind::outcome, "x"), BrokenFrame);
}

} // namespace
} // namespace cmpihost::worker
